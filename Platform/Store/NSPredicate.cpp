#include "NSPredicate.h"

#include "PredicateNode.h"

using quib::PredicateExpression;
using quib::PredicateNode;
using quib::PredicateNodeRef;

namespace {

NSPredicate::Ref made(const PredicateNodeRef &node)
{
    return node ? std::make_shared<const NSPredicate>(node) : nullptr;
}

/// Calls visit for every expression that starts from the evaluated object.
template <typename Visit> void forEachOwnExpression(const PredicateNode &node, const Visit &visit)
{
    for (const PredicateNodeRef &child : node.children) {
        forEachOwnExpression(*child, visit);
    }
    if (node.kind != PredicateNode::Kind::Comparison) {
        return;
    }
    for (const PredicateExpression *expression : {&node.left, &node.right}) {
        if (expression->kind != PredicateExpression::Kind::Constant && expression->variable.isEmpty()) {
            visit(node, *expression);
        }
    }
}

} // namespace

NSPredicate::Ref NSPredicate::predicateWithFormat(const QString &format, const QList<NSPredicateArgument> &arguments,
                                                  NSError *error)
{
    return made(quib::parsePredicate(format, arguments, error));
}

NSPredicate::Ref NSPredicate::andPredicateWithSubpredicates(const QList<Ref> &subpredicates)
{
    QList<PredicateNodeRef> nodes;
    for (const Ref &predicate : subpredicates) {
        nodes.append(predicate->m_root);
    }
    return made(quib::joinedNode(PredicateNode::Kind::And, nodes));
}

NSPredicate::Ref NSPredicate::orPredicateWithSubpredicates(const QList<Ref> &subpredicates)
{
    QList<PredicateNodeRef> nodes;
    for (const Ref &predicate : subpredicates) {
        nodes.append(predicate->m_root);
    }
    return made(quib::joinedNode(PredicateNode::Kind::Or, nodes));
}

NSPredicate::Ref NSPredicate::notPredicateWithSubpredicate(const Ref &subpredicate)
{
    auto node = std::make_shared<PredicateNode>();
    node->kind = PredicateNode::Kind::Not;
    node->children.append(subpredicate->m_root);
    return made(node);
}

NSPredicate::Ref NSPredicate::predicateWithValue(bool value)
{
    auto node = std::make_shared<PredicateNode>();
    node->kind = value ? PredicateNode::Kind::True : PredicateNode::Kind::False;
    return made(node);
}

QString NSPredicate::predicateFormat() const
{
    return quib::printPredicate(*m_root);
}

bool NSPredicate::evaluateWithObject(const quib::KeyValueObject &object) const
{
    return quib::evaluatePredicate(*m_root, object);
}

bool NSPredicate::evaluateWithString(const QString &string) const
{
    return quib::evaluatePredicate(*m_root, string);
}

QList<QString> NSPredicate::relationshipKeys() const
{
    QList<QString> keys;
    forEachOwnExpression(*m_root, [&keys](const PredicateNode &node, const PredicateExpression &expression) {
        const bool looksThrough = expression.kind != PredicateExpression::Kind::KeyPath || expression.path.size() > 1 ||
                                  node.isAny || node.operation == quib::PredicateOperator::In;
        if (looksThrough && !expression.path.isEmpty() && !keys.contains(expression.path.constFirst())) {
            keys.append(expression.path.constFirst());
        }
    });
    return keys;
}

QList<QString> NSPredicate::attributeKeys() const
{
    QList<QString> keys;
    forEachOwnExpression(*m_root, [&keys](const PredicateNode &, const PredicateExpression &expression) {
        if (!expression.path.isEmpty() && !keys.contains(expression.path.constFirst())) {
            keys.append(expression.path.constFirst());
        }
    });
    return keys;
}

#include "PredicateNode.h"

#include <algorithm>
#include <limits>

namespace quib {

namespace {

/// The variables of the sub-queries around, innermost first; a chain on the stack.
struct Scope
{
    const QString *name = nullptr;
    const KeyValueObject *object = nullptr;
    const Scope *outer = nullptr;
};

/// What an expression gives on an object: a value, an object or nothing, or a constant collection.
struct Operand
{
    Value value;
    std::optional<NSManagedObjectID> objectID;
    const NSPredicateArgument *collection = nullptr;
    /// A to-many relationship that the path ends in.
    const KeyValueObject *relationOwner = nullptr;
    QString relation;

    [[nodiscard]] bool isNil() const
    {
        return isNothing(value) && !objectID && collection == nullptr && relationOwner == nullptr;
    }
};

class Evaluation
{
public:
    Evaluation(const KeyValueObject *object, const QString *string, const Scope *scope = nullptr)
        : m_object(object)
        , m_string(string)
        , m_scope(scope)
    {
    }

    [[nodiscard]] bool holds(const PredicateNode &node) const
    {
        switch (node.kind) {
        case PredicateNode::Kind::True:
            return true;
        case PredicateNode::Kind::False:
            return false;
        case PredicateNode::Kind::Not:
            return !holds(*node.children.constFirst());
        case PredicateNode::Kind::And:
            return std::all_of(node.children.begin(), node.children.end(),
                               [this](const PredicateNodeRef &child) { return holds(*child); });
        case PredicateNode::Kind::Or:
            return std::any_of(node.children.begin(), node.children.end(),
                               [this](const PredicateNodeRef &child) { return holds(*child); });
        case PredicateNode::Kind::Comparison:
            return node.isAny ? anyHolds(node)
                              : compare(node, operand(node.left, enoughFor(node)), operand(node.right));
        }
        return false;
    }

private:
    /// OPTIMIZATION: how far a sub-query has to count for a comparison with a whole number: all counts above the number
    /// compare alike.
    [[nodiscard]] static qint64 enoughFor(const PredicateNode &node)
    {
        const auto *value =
            node.right.kind == PredicateExpression::Kind::Constant ? std::get_if<Value>(&node.right.constant) : nullptr;
        const auto *number = value != nullptr ? std::get_if<qint64>(value) : nullptr;
        const bool isOrder = node.operation <= PredicateOperator::GreaterOrEqual;
        return isOrder && number != nullptr && *number >= 0 && *number < kEverything ? *number + 1 : kEverything;
    }
    static constexpr qint64 kEverything = std::numeric_limits<qint64>::max();

    /// The object that a path starts from, or null for an unknown variable or a plain string.
    [[nodiscard]] const KeyValueObject *start(const QString &variable) const
    {
        if (variable.isEmpty()) {
            return m_object;
        }
        for (const Scope *scope = m_scope; scope != nullptr; scope = scope->outer) {
            if (*scope->name == variable) {
                return scope->object;
            }
        }
        return nullptr;
    }

    /// Follows to-one relationships along all components but the last.
    [[nodiscard]] static const KeyValueObject *follow(const KeyValueObject *object, const QStringList &path)
    {
        for (qsizetype i = 0; object != nullptr && i + 1 < path.size(); ++i) {
            object =
                object->kindOfKey(path[i]) == KeyValueObject::KeyKind::ToOne ? object->targetForKey(path[i]) : nullptr;
        }
        return object;
    }

    [[nodiscard]] Operand operandAt(const KeyValueObject *object, const QStringList &path) const
    {
        Operand result;
        if (path.isEmpty()) {
            if (object != nullptr) {
                result.objectID = object->objectID();
            }
            return result;
        }
        object = follow(object, path);
        if (object == nullptr) {
            return result;
        }
        const QString &last = path.constLast();
        switch (object->kindOfKey(last)) {
        case KeyValueObject::KeyKind::Attribute:
            result.value = object->attributeForKey(last);
            break;
        case KeyValueObject::KeyKind::ToOne:
            if (const auto *target = object->targetForKey(last)) {
                result.objectID = target->objectID();
            }
            break;
        case KeyValueObject::KeyKind::ToMany:
            result.relationOwner = object;
            result.relation = last;
            break;
        case KeyValueObject::KeyKind::Unknown:
            break;
        }
        return result;
    }

    [[nodiscard]] Operand operand(const PredicateExpression &expression, qint64 enough = kEverything) const
    {
        Operand result;
        switch (expression.kind) {
        case PredicateExpression::Kind::Constant:
            if (const auto *value = std::get_if<Value>(&expression.constant)) {
                result.value = *value;
            } else if (const auto *objectID = std::get_if<NSManagedObjectID>(&expression.constant)) {
                if (!objectID->isNull()) {
                    result.objectID = *objectID;
                }
            } else {
                result.collection = &expression.constant;
            }
            return result;
        case PredicateExpression::Kind::KeyPath:
            if (m_string != nullptr && expression.path.isEmpty() && expression.variable.isEmpty()) {
                result.value = *m_string;
                return result;
            }
            return operandAt(start(expression.variable), expression.path);
        case PredicateExpression::Kind::Count: {
            const Operand relation = operandAt(start(expression.variable), expression.path);
            if (relation.relationOwner != nullptr) {
                result.value = relation.relationOwner->countForKey(relation.relation);
            }
            return result;
        }
        case PredicateExpression::Kind::SubqueryCount: {
            const Operand relation = operandAt(start(expression.variable), expression.path);
            if (relation.relationOwner == nullptr) {
                return result;
            }
            qint64 count = 0;
            relation.relationOwner->forEachTarget(relation.relation, [&](const KeyValueObject &target) {
                const Scope scope{&expression.conditionVariable, &target, m_scope};
                count += Evaluation(m_object, m_string, &scope).holds(*expression.condition) ? 1 : 0;
                return count < enough;
            });
            result.value = count;
            return result;
        }
        }
        return result;
    }

    /// ANY path op right: the path's first to-many relationship is walked, the rest of the path asked of each target.
    [[nodiscard]] bool anyHolds(const PredicateNode &node) const
    {
        const KeyValueObject *object = start(node.left.variable);
        for (qsizetype i = 0; object != nullptr && i < node.left.path.size(); ++i) {
            const QString &key = node.left.path[i];
            const auto kind = object->kindOfKey(key);
            if (kind == KeyValueObject::KeyKind::ToOne) {
                object = object->targetForKey(key);
                continue;
            }
            if (kind != KeyValueObject::KeyKind::ToMany) {
                return compare(node, operand(node.left), operand(node.right));
            }
            const Operand right = operand(node.right);
            const QStringList rest = node.left.path.mid(i + 1);
            bool isFound = false;
            object->forEachTarget(key, [&](const KeyValueObject &target) {
                isFound = compare(node, operandAt(&target, rest), right);
                return !isFound;
            });
            return isFound;
        }
        return false;
    }

    [[nodiscard]] static bool isEqual(const Operand &a, const Operand &b, FoldOption fold)
    {
        if (a.objectID || b.objectID) {
            return a.objectID == b.objectID && isNothing(a.value) && isNothing(b.value);
        }
        if (a.relationOwner != nullptr || b.relationOwner != nullptr || a.collection != nullptr ||
            b.collection != nullptr) {
            return false;
        }
        return valuesEqual(a.value, b.value, fold);
    }

    [[nodiscard]] static bool valuesEqual(const Value &a, const Value &b, FoldOption fold)
    {
        const auto *left = std::get_if<QString>(&a);
        const auto *right = std::get_if<QString>(&b);
        if (left != nullptr && right != nullptr) {
            return fold == FoldOption::Exact ? *left == *right
                                             : foldedString(*left, fold) == foldedString(*right, fold);
        }
        const auto order = compareValues(a, b);
        return order.has_value() && *order == 0;
    }

    [[nodiscard]] bool compare(const PredicateNode &node, const Operand &left, const Operand &right) const
    {
        switch (node.operation) {
        case PredicateOperator::Equal:
            return isEqual(left, right, node.fold);
        case PredicateOperator::NotEqual:
            return !isEqual(left, right, node.fold);
        case PredicateOperator::In:
            return isIn(left, right, node.fold);
        case PredicateOperator::BeginsWith:
        case PredicateOperator::EndsWith:
        case PredicateOperator::Contains:
            return stringHolds(node.operation, left.value, right.value, node.fold);
        default:
            return isOrdered(node.operation, left, right);
        }
    }

    [[nodiscard]] static bool isOrdered(PredicateOperator operation, const Operand &left, const Operand &right)
    {
        if (isNothing(left.value) || isNothing(right.value)) {
            return false;
        }
        const auto order = compareValues(left.value, right.value);
        if (!order) {
            return false;
        }
        switch (operation) {
        case PredicateOperator::Less:
            return *order < 0;
        case PredicateOperator::LessOrEqual:
            return *order <= 0;
        case PredicateOperator::Greater:
            return *order > 0;
        default:
            return *order >= 0;
        }
    }

    [[nodiscard]] static bool bytesHold(PredicateOperator operation, const QByteArray &text, const QByteArray &part)
    {
        if (operation == PredicateOperator::BeginsWith) {
            return text.startsWith(part);
        }
        return operation == PredicateOperator::EndsWith ? text.endsWith(part) : text.contains(part);
    }

    [[nodiscard]] static bool stringHolds(PredicateOperator operation, const Value &left, const Value &right,
                                          FoldOption fold)
    {
        const auto *text = std::get_if<QString>(&left);
        const auto *part = std::get_if<QString>(&right);
        if (text == nullptr || part == nullptr) {
            return false;
        }
        const QString foldedText = fold == FoldOption::Exact ? *text : foldedString(*text, fold);
        const QString foldedPart = fold == FoldOption::Exact ? *part : foldedString(*part, fold);
        const bool splitsPair =
            !foldedPart.isEmpty() && (foldedPart.front().isLowSurrogate() || foldedPart.back().isHighSurrogate());
        if (splitsPair) {
            // Half a pair is no part of a whole one: compared as the bytes that the store compares.
            return bytesHold(operation, toUtf8Lossless(foldedText), toUtf8Lossless(foldedPart));
        }
        if (operation == PredicateOperator::BeginsWith) {
            return foldedText.startsWith(foldedPart);
        }
        return operation == PredicateOperator::EndsWith ? foldedText.endsWith(foldedPart)
                                                        : foldedText.contains(foldedPart);
    }

    [[nodiscard]] static bool isIn(const Operand &left, const Operand &right, FoldOption fold)
    {
        if (right.relationOwner != nullptr) {
            return left.objectID && right.relationOwner->relationContains(right.relation, *left.objectID);
        }
        if (right.collection == nullptr) {
            return false;
        }
        if (const auto *identities = std::get_if<QList<NSManagedObjectID>>(right.collection)) {
            return left.objectID && identities->contains(*left.objectID);
        }
        const auto *values = std::get_if<QList<Value>>(right.collection);
        return values != nullptr && !left.objectID && !isNothing(left.value) &&
               std::any_of(values->begin(), values->end(),
                           [&](const Value &value) { return valuesEqual(left.value, value, fold); });
    }

    const KeyValueObject *m_object;
    const QString *m_string;
    const Scope *m_scope;
};

/// A boolean or a number as a double; nothing for other kinds.
std::optional<double> number(const Value &value)
{
    if (const auto *flag = std::get_if<bool>(&value)) {
        return *flag ? 1.0 : 0.0;
    }
    if (const auto *whole = std::get_if<qint64>(&value)) {
        return static_cast<double>(*whole);
    }
    const auto *real = std::get_if<double>(&value);
    return real != nullptr ? std::optional(*real) : std::nullopt;
}

std::optional<qint64> wholeNumber(const Value &value)
{
    if (const auto *flag = std::get_if<bool>(&value)) {
        return *flag ? 1 : 0;
    }
    const auto *whole = std::get_if<qint64>(&value);
    return whole != nullptr ? std::optional(*whole) : std::nullopt;
}

template <typename T> int order(const T &a, const T &b)
{
    return a < b ? -1 : b < a ? 1 : 0;
}

} // namespace

std::optional<int> compareValues(const Value &a, const Value &b)
{
    if (isNothing(a) || isNothing(b)) {
        return isNothing(a) && isNothing(b) ? std::optional(0) : std::nullopt;
    }
    if (const auto left = wholeNumber(a), right = wholeNumber(b); left && right) {
        return order(*left, *right);
    }
    if (const auto left = number(a), right = number(b); left && right) {
        return order(*left, *right);
    }
    if (const auto *left = std::get_if<QString>(&a), *right = std::get_if<QString>(&b);
        left != nullptr && right != nullptr) {
        // By code point, as the bytes of UTF-8 compare in the store: QString's own order goes by UTF-16 unit.
        const QByteArray leftBytes = toUtf8Lossless(*left);
        const QByteArray rightBytes = toUtf8Lossless(*right);
        return order(leftBytes, rightBytes);
    }
    if (const auto *left = std::get_if<NSDate>(&a), *right = std::get_if<NSDate>(&b);
        left != nullptr && right != nullptr) {
        return order(left->timeIntervalSince1970(), right->timeIntervalSince1970());
    }
    if (const auto *left = std::get_if<QByteArray>(&a), *right = std::get_if<QByteArray>(&b);
        left != nullptr && right != nullptr) {
        return order(*left, *right);
    }
    return std::nullopt;
}

bool evaluatePredicate(const PredicateNode &node, const KeyValueObject &object)
{
    return Evaluation(&object, nullptr).holds(node);
}

bool evaluatePredicate(const PredicateNode &node, const QString &string)
{
    return Evaluation(nullptr, &string).holds(node);
}

} // namespace quib

#include "NSManagedObjectModel.h"
#include "PredicateNode.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr double kSecondsFrom1970To2001 = 978307200;

QString printString(const QString &text)
{
    QString printed(u"\""_s);
    for (const QChar character : text) {
        switch (character.unicode()) {
        case u'"':
        case u'\\':
            printed += u'\\';
            printed += character;
            break;
        case u'\n':
            printed += u"\\n"_s;
            break;
        case u'\r':
            printed += u"\\r"_s;
            break;
        case u'\t':
            printed += u"\\t"_s;
            break;
        default:
            if (character.unicode() < 0x20 || character.isSurrogate()) {
                printed += u"\\u%1"_s.arg(character.unicode(), 4, 16, QChar(u'0'));
            } else {
                printed += character;
            }
        }
    }
    return QString(printed % u'"');
}

/// The shortest text that reads back as the same number and reads as a number with a fraction.
QString printDouble(double number)
{
    QString text = QString::number(number, 'g', QLocale::FloatingPointShortest);
    if (!text.contains(u'.') && !text.contains(u'e')) {
        text += u".0"_s;
    }
    return text;
}

QString printValue(const Value &value)
{
    struct Printer
    {
        QString operator()(std::monostate) const { return u"nil"_s; }
        QString operator()(bool flag) const { return flag ? u"YES"_s : u"NO"_s; }
        QString operator()(qint64 number) const { return QString::number(number); }
        QString operator()(double number) const { return printDouble(number); }
        QString operator()(const QString &text) const { return printString(text); }
        QString operator()(NSDate date) const
        {
            return QString(u"CAST(" % printDouble(date.timeIntervalSince1970() - kSecondsFrom1970To2001) %
                           u", \"NSDate\")");
        }
        QString operator()(const QByteArray &bytes) const
        {
            return QString(u'<' % QString::fromLatin1(bytes.toHex()) % u'>');
        }
    };
    return std::visit(Printer(), value);
}

QString printObject(const NSManagedObjectID &objectID)
{
    const QString name = objectID.entity() != nullptr ? objectID.entity()->name() : u"nil"_s;
    return QString(u'<' % name % u'/' % QString::number(objectID.key()) % u'>');
}

template <typename List, typename Print> QString printList(const List &list, Print print)
{
    QStringList items;
    for (const auto &item : list) {
        items.append(print(item));
    }
    return QString(u'{' % items.join(u", "_s) % u'}');
}

QString printConstant(const NSPredicateArgument &constant)
{
    if (const auto *value = std::get_if<Value>(&constant)) {
        return printValue(*value);
    }
    if (const auto *objectID = std::get_if<NSManagedObjectID>(&constant)) {
        return printObject(*objectID);
    }
    if (const auto *values = std::get_if<QList<Value>>(&constant)) {
        return printList(*values, printValue);
    }
    return printList(std::get<QList<NSManagedObjectID>>(constant), printObject);
}

QString printPath(const PredicateExpression &expression)
{
    QStringList parts;
    if (!expression.variable.isEmpty()) {
        parts.append(QString(u'$' % expression.variable));
    }
    parts += expression.path;
    return parts.isEmpty() ? u"SELF"_s : parts.join(u'.');
}

QString printExpression(const PredicateExpression &expression)
{
    switch (expression.kind) {
    case PredicateExpression::Kind::Constant:
        return printConstant(expression.constant);
    case PredicateExpression::Kind::KeyPath:
        return printPath(expression);
    case PredicateExpression::Kind::Count:
        return QString(printPath(expression) % u".@count");
    case PredicateExpression::Kind::SubqueryCount:
        return QString(u"SUBQUERY(" % printPath(expression) % u", $" % expression.conditionVariable % u", " %
                       printPredicate(*expression.condition) % u").@count");
    }
    return {};
}

QLatin1StringView operatorName(PredicateOperator operation)
{
    switch (operation) {
    case PredicateOperator::Equal:
        return "=="_L1;
    case PredicateOperator::NotEqual:
        return "!="_L1;
    case PredicateOperator::Less:
        return "<"_L1;
    case PredicateOperator::LessOrEqual:
        return "<="_L1;
    case PredicateOperator::Greater:
        return ">"_L1;
    case PredicateOperator::GreaterOrEqual:
        return ">="_L1;
    case PredicateOperator::BeginsWith:
        return "BEGINSWITH"_L1;
    case PredicateOperator::EndsWith:
        return "ENDSWITH"_L1;
    case PredicateOperator::Contains:
        return "CONTAINS"_L1;
    case PredicateOperator::In:
        return "IN"_L1;
    }
    return {};
}

QLatin1StringView foldName(FoldOption fold)
{
    switch (fold) {
    case FoldOption::Exact:
        return {};
    case FoldOption::Case:
        return "[c]"_L1;
    case FoldOption::Diacritic:
        return "[d]"_L1;
    case FoldOption::CaseAndDiacritic:
        return "[cd]"_L1;
    }
    return {};
}

bool isCompound(const PredicateNode &node)
{
    return node.kind == PredicateNode::Kind::And || node.kind == PredicateNode::Kind::Or;
}

} // namespace

QString printPredicate(const PredicateNode &node)
{
    const auto parenthesised = [](const PredicateNode &child, bool isNeeded) {
        const QString printed = printPredicate(child);
        return isNeeded ? QString(u'(' % printed % u')') : printed;
    };
    switch (node.kind) {
    case PredicateNode::Kind::True:
        return u"TRUEPREDICATE"_s;
    case PredicateNode::Kind::False:
        return u"FALSEPREDICATE"_s;
    case PredicateNode::Kind::Not:
        return QString(u"NOT " % parenthesised(*node.children.constFirst(), isCompound(*node.children.constFirst())));
    case PredicateNode::Kind::And:
    case PredicateNode::Kind::Or: {
        QStringList parts;
        for (const PredicateNodeRef &child : node.children) {
            parts.append(
                parenthesised(*child, node.kind == PredicateNode::Kind::And && child->kind == PredicateNode::Kind::Or));
        }
        return parts.join(node.kind == PredicateNode::Kind::And ? u" AND "_s : u" OR "_s);
    }
    case PredicateNode::Kind::Comparison:
        return QString((node.isAny ? u"ANY "_s : u""_s) % printExpression(node.left) % u' ' %
                       operatorName(node.operation) % foldName(node.fold) % u' ' % printExpression(node.right));
    }
    return {};
}

} // namespace quib

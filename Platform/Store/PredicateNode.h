#pragma once

#include "NSPredicate.h"

#include <Text/Folding.h>

#include <QStringList>

#include <memory>

namespace quib {

/// One side of a comparison. A value, immutable inside a predicate.
struct PredicateExpression
{
    enum class Kind : quint8
    {
        Constant,
        /// A key path from the evaluated object, or from a sub-query's variable. An empty path is the object itself.
        KeyPath,
        /// path.@count
        Count,
        /// SUBQUERY(path, $conditionVariable, condition).@count
        SubqueryCount,
    };
    Kind kind = Kind::Constant;
    NSPredicateArgument constant;
    QStringList path;
    /// The sub-query variable that the path starts from, without "$"; empty for the evaluated object.
    QString variable;
    std::shared_ptr<const struct PredicateNode> condition;
    QString conditionVariable;

    [[nodiscard]] bool isNil() const
    {
        const auto *value = std::get_if<Value>(&constant);
        return kind == Kind::Constant && value != nullptr && isNothing(*value);
    }
};

enum class PredicateOperator : quint8
{
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    BeginsWith,
    EndsWith,
    Contains,
    In,
};

/// A predicate's tree. And and Or hold two children or more, none of their own kind; Not holds one.
struct PredicateNode
{
    enum class Kind : quint8
    {
        True,
        False,
        And,
        Or,
        Not,
        Comparison
    };
    Kind kind = Kind::True;
    QList<std::shared_ptr<const PredicateNode>> children;
    PredicateOperator operation = PredicateOperator::Equal;
    FoldOption fold = FoldOption::Exact;
    /// ANY: true when one target of the left path's to-many relationship meets the comparison.
    bool isAny = false;
    PredicateExpression left;
    PredicateExpression right;
};

using PredicateNodeRef = std::shared_ptr<const PredicateNode>;

/// The deepest nesting that is parsed.
inline constexpr int kMaximumPredicateDepth = 200;

/// Joins nodes under And or Or, taking in children of the same kind; one node stands for itself, none for True or
/// False.
[[nodiscard]] PredicateNodeRef joinedNode(PredicateNode::Kind kind, const QList<PredicateNodeRef> &nodes);

// PredicateParser.cpp
[[nodiscard]] PredicateNodeRef parsePredicate(const QString &format, const QList<NSPredicateArgument> &arguments,
                                              NSError *error);
// PredicatePrinter.cpp
[[nodiscard]] QString printPredicate(const PredicateNode &node);
// PredicateEvaluator.cpp
[[nodiscard]] bool evaluatePredicate(const PredicateNode &node, const KeyValueObject &object);
[[nodiscard]] bool evaluatePredicate(const PredicateNode &node, const QString &string);

/// How two values compare: -1, 0, 1, or nullopt when they are of kinds that have no order between them. Booleans and
/// numbers are of one kind. Nothing compares with nothing only.
[[nodiscard]] std::optional<int> compareValues(const Value &a, const Value &b);

} // namespace quib

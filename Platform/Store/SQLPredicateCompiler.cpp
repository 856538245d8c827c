#include "SQLPredicateCompiler.h"

#include "PredicateNode.h"
#include "SQLFunctions.h"
#include "SQLNames.h"

#include <Text/Folding.h>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Items of lists, all lists of a condition together, that are variables of their own, so that an index serves them.
/// SQLite takes three times as many, which leaves enough for everything else.
constexpr qsizetype kMaximumVariables = 10'000;

/// What an expression is in SQL: a scalar with its kind, the key of an object, or a to-many relationship of a row.
struct Scalar
{
    enum class Kind : quint8
    {
        Nil,
        Number,
        Date,
        String,
        Binary,
        Object,
        Relation
    };
    Kind kind = Kind::Nil;
    QByteArray sql;
    QList<Value> bindings;
    /// For strings that lie in a fold-indexed column of the row itself: that column.
    QByteArray foldedColumn;
    /// For Relation: which, and the SQL of its row's key in sql.
    const NSRelationshipDescription *relationship = nullptr;
    /// For Object: the entity of the row, which its key alone does not tell.
    const NSEntityDescription *entity = nullptr;
};

/// Keys of two tables have nothing to do with each other.
bool isOfOtherTable(const NSEntityDescription *a, const NSEntityDescription *b)
{
    return a != nullptr && b != nullptr && a->rootEntity() != b->rootEntity();
}

struct Scope
{
    QString variable;
    QByteArray alias;
    const NSEntityDescription *entity = nullptr;
    const Scope *outer = nullptr;
};

Scalar::Kind kindOfType(NSAttributeType type)
{
    switch (type) {
    case NSAttributeType::Date:
        return Scalar::Kind::Date;
    case NSAttributeType::String:
        return Scalar::Kind::String;
    case NSAttributeType::Binary:
        return Scalar::Kind::Binary;
    default:
        return Scalar::Kind::Number;
    }
}

Scalar::Kind kindOfValue(const Value &value)
{
    if (std::holds_alternative<QString>(value)) {
        return Scalar::Kind::String;
    }
    if (std::holds_alternative<NSDate>(value)) {
        return Scalar::Kind::Date;
    }
    if (std::holds_alternative<QByteArray>(value)) {
        return Scalar::Kind::Binary;
    }
    return isNothing(value) ? Scalar::Kind::Nil : Scalar::Kind::Number;
}

class Compiler
{
public:
    explicit Compiler(const NSEntityDescription *entity)
        : m_root{{}, kSQLRootAlias, entity, nullptr}
    {
    }

    QString fault;

    SQLFragment compile(const PredicateNode &node) { return compile(node, &m_root); }

    Scalar path(const QStringList &path, const Scope *scope)
    {
        QByteArray key = scope->alias + "._pk";
        QByteArray alias = scope->alias; // empty once the row is reached through a key only
        const NSEntityDescription *entity = scope->entity;
        if (path.isEmpty()) {
            return {Scalar::Kind::Object, key, {}, {}, nullptr, entity};
        }
        for (qsizetype i = 0; i < path.size(); ++i) {
            const bool isLast = i + 1 == path.size();
            if (const auto *attribute = attributeNamed(entity, path[i])) {
                if (!isLast) {
                    return fail(path[i]);
                }
                return attributeScalar(*attribute, entity, key, alias);
            }
            const auto *relationship = entity->relationshipNamed(path[i]);
            if (relationship == nullptr || (relationship->isToMany && !isLast)) {
                return fail(path[i]);
            }
            if (relationship->isToMany) {
                return {Scalar::Kind::Relation, key, {}, {}, relationship};
            }
            key = columnOf(SQLNames::column(relationship->name), SQLNames::table(entity), key, alias);
            alias.clear();
            entity = relationship->destinationEntity;
        }
        return {Scalar::Kind::Object, key, {}, {}, nullptr, entity};
    }

private:
    /// Attributes of entities below count too: a fetch of the parent may ask for them.
    static const NSAttributeDescription *attributeNamed(const NSEntityDescription *entity, const QString &name)
    {
        for (const auto *candidate : entity->withSubentities()) {
            if (const auto *attribute = candidate->attributeNamed(name)) {
                return attribute;
            }
        }
        return nullptr;
    }

    Scalar fail(const QString &key)
    {
        if (fault.isEmpty()) {
            fault = u"no way along \"%1\""_s.arg(key);
        }
        return {};
    }

    static QByteArray columnOf(const QByteArray &column, const QByteArray &table, const QByteArray &key,
                               const QByteArray &alias)
    {
        if (!alias.isEmpty()) {
            return alias + '.' + column;
        }
        return "(SELECT " + column + " FROM " + table + " WHERE _pk = " + key + ')';
    }

    static Scalar attributeScalar(const NSAttributeDescription &attribute, const NSEntityDescription *entity,
                                  const QByteArray &key, const QByteArray &alias)
    {
        Scalar scalar;
        scalar.kind = kindOfType(attribute.type);
        scalar.sql = attribute.isLazy ? columnOf(SQLNames::column(attribute.name),
                                                 SQLNames::lazyTable(entity, attribute.name), key, {})
                                      : columnOf(SQLNames::column(attribute.name), SQLNames::table(entity), key, alias);
        if (attribute.isFoldIndexed) {
            scalar.foldedColumn = columnOf(SQLNames::foldedColumn(attribute.name), SQLNames::table(entity), key, alias);
        }
        return scalar;
    }

    const Scope *scopeOf(const QString &variable, const Scope *scope)
    {
        for (const Scope *at = scope; at != nullptr; at = at->outer) {
            if (at->variable == variable) {
                return at;
            }
        }
        fail(u"$"_s + variable);
        return scope;
    }

    // Rows behind a to-many relationship: FROM ... WHERE ... of those that belong to the key, under an alias.
    struct RelatedRows
    {
        QByteArray from;
        QByteArray alias;
    };
    RelatedRows relatedRows(const Scalar &relation)
    {
        const auto *relationship = relation.relationship;
        const QByteArray alias = 't' + QByteArray::number(++m_aliases);
        const QByteArray table = SQLNames::table(relationship->destinationEntity);
        if (relationship->isManyToMany()) {
            const QByteArray join = 'j' + QByteArray::number(m_aliases);
            return {" FROM " + SQLNames::joinTable(relationship) + ' ' + join + " JOIN " + table + ' ' + alias +
                        " ON " + alias + "._pk = " + join + '.' + SQLNames::joinOtherColumn(relationship) + " WHERE " +
                        join + '.' + SQLNames::joinOwnColumn(relationship) + " = " + relation.sql,
                    alias};
        }
        return {" FROM " + table + ' ' + alias + " WHERE " + alias + '.' + SQLNames::column(relationship->inverseName) +
                    " = " + relation.sql,
                alias};
    }

    Scalar constant(const Value &value) { return {kindOfValue(value), "?", {value}, {}, nullptr}; }

    Scalar scalar(const PredicateExpression &expression, const Scope *scope)
    {
        switch (expression.kind) {
        case PredicateExpression::Kind::Constant:
            if (const auto *value = std::get_if<Value>(&expression.constant)) {
                return isNothing(*value) ? Scalar() : constant(*value);
            }
            if (const auto *objectID = std::get_if<NSManagedObjectID>(&expression.constant)) {
                return objectID->isNull() ? Scalar()
                                          : Scalar{Scalar::Kind::Object, "?", {Value(objectID->key())}, {}, nullptr,
                                                   objectID->entity()};
            }
            return fail(u"a collection"_s);
        case PredicateExpression::Kind::KeyPath:
            return path(expression.path, scopeOf(expression.variable, scope));
        case PredicateExpression::Kind::Count:
        case PredicateExpression::Kind::SubqueryCount: {
            const Scalar relation = path(expression.path, scopeOf(expression.variable, scope));
            if (relation.kind != Scalar::Kind::Relation) {
                return fail(u"@count"_s);
            }
            const Counted rows = countedRows(expression, relation, scope);
            QByteArray count = "(SELECT COUNT(*)" + rows.sql + ')';
            if (expression.path.size() > 1) {
                // A path through a to-one relationship that leads nowhere gives nothing, not a count of 0.
                count = "(CASE WHEN " + relation.sql + " IS NULL THEN NULL ELSE " + count + " END)";
            }
            return {Scalar::Kind::Number, count, rows.bindings, {}, nullptr};
        }
        }
        return {};
    }

    struct Counted
    {
        QByteArray sql;
        QList<Value> bindings;
    };
    Counted countedRows(const PredicateExpression &expression, const Scalar &relation, const Scope *scope)
    {
        Counted counted;
        if (expression.kind == PredicateExpression::Kind::Count && relation.relationship->isManyToMany()) {
            counted.sql = " FROM " + SQLNames::joinTable(relation.relationship) + " WHERE " +
                          SQLNames::joinOwnColumn(relation.relationship) + " = " + relation.sql;
            return counted;
        }
        const RelatedRows rows = relatedRows(relation);
        counted.sql = rows.from;
        if (expression.kind == PredicateExpression::Kind::SubqueryCount) {
            const Scope inner{expression.conditionVariable, rows.alias, relation.relationship->destinationEntity,
                              scope};
            const SQLFragment condition = compile(*expression.condition, &inner);
            counted.sql += " AND " + condition.sql;
            counted.bindings = condition.bindings;
        }
        return counted;
    }

    SQLFragment compile(const PredicateNode &node, const Scope *scope)
    {
        switch (node.kind) {
        case PredicateNode::Kind::True:
            return {"1", {}};
        case PredicateNode::Kind::False:
            return {"0", {}};
        case PredicateNode::Kind::Not: {
            SQLFragment inner = compile(*node.children.constFirst(), scope);
            inner.sql = "(NOT " + inner.sql + ')';
            return inner;
        }
        case PredicateNode::Kind::And:
        case PredicateNode::Kind::Or: {
            SQLFragment joined;
            const char *word = node.kind == PredicateNode::Kind::And ? " AND " : " OR ";
            // Long chains are joined as a balanced tree: SQLite bounds the depth of an expression.
            QList<QByteArray> parts;
            for (const PredicateNodeRef &child : node.children) {
                const SQLFragment part = compile(*child, scope);
                parts.append(part.sql);
                joined.bindings += part.bindings;
            }
            while (parts.size() > 1) {
                QList<QByteArray> halved;
                for (qsizetype i = 0; i < parts.size(); i += 2) {
                    halved.append(i + 1 < parts.size() ? QByteArray('(' + parts[i] + word + parts[i + 1] + ')')
                                                       : parts[i]);
                }
                parts = halved;
            }
            joined.sql = parts.constFirst();
            return joined;
        }
        case PredicateNode::Kind::Comparison:
            return node.isAny ? any(node, scope) : comparison(node, scope);
        }
        return {};
    }

    /// ANY path op right: some row behind the path's first to-many relationship meets the comparison.
    SQLFragment any(const PredicateNode &node, const Scope *scope)
    {
        const Scope *at = scopeOf(node.left.variable, scope);
        for (qsizetype i = 0; i < node.left.path.size(); ++i) {
            Scalar relation = path(node.left.path.mid(0, i + 1), at);
            if (!fault.isEmpty()) {
                return {};
            }
            if (relation.kind != Scalar::Kind::Relation) {
                continue;
            }
            if (const auto direct = anyObject(node, relation, i)) {
                return *direct;
            }
            const RelatedRows rows = relatedRows(relation);
            const Scope inner{u"\u0001any"_s, rows.alias, relation.relationship->destinationEntity, scope};
            const Scalar left = path(node.left.path.mid(i + 1), &inner);
            const SQLFragment condition = compare(node, left, scope);
            return {"EXISTS(SELECT 1" + rows.from + " AND " + condition.sql + ')', condition.bindings};
        }
        return comparison(node, scope);
    }

    /// The rows that a many-to-many relationship joins with some others. OPTIMIZATION: asked from the other side, so
    /// that a fetch begins with the few rows that are joined, not with a look at every row there is.
    static SQLFragment members(const Scalar &relation, const QByteArray &others, const QList<Value> &bindings)
    {
        const auto *relationship = relation.relationship;
        const QByteArray sql = relation.sql + " IN (SELECT " + SQLNames::joinOwnColumn(relationship) + " FROM " +
                               SQLNames::joinTable(relationship) + " WHERE " + SQLNames::joinOtherColumn(relationship) +
                               others + ')';
        // Behind a to-one relationship the row may be missing, and nothing is in no list.
        const bool isOwn = relation.sql.endsWith("._pk");
        return {!isOwn ? QByteArray("IFNULL(" + sql + ", 0)") : QByteArray('(' + sql + ')'), bindings};
    }

    /// ANY relationship == object, and ANY relationship IN objects, where the relationship is the row's own.
    std::optional<SQLFragment> anyObject(const PredicateNode &node, const Scalar &relation, qsizetype place)
    {
        const bool isWhole = place + 1 == node.left.path.size() && relation.relationship->isManyToMany() &&
                             node.right.kind == PredicateExpression::Kind::Constant;
        if (!isWhole || (node.operation != PredicateOperator::Equal && node.operation != PredicateOperator::In)) {
            return std::nullopt;
        }
        const auto *destination = relation.relationship->destinationEntity;
        if (const auto *objectID = std::get_if<NSManagedObjectID>(&node.right.constant)) {
            if (isOfOtherTable(objectID->entity(), destination)) {
                return SQLFragment{"0", {}};
            }
            return node.operation == PredicateOperator::Equal && !objectID->isNull()
                       ? std::optional(members(relation, " = ?", {Value(objectID->key())}))
                       : std::nullopt;
        }
        const auto *identities = std::get_if<QList<NSManagedObjectID>>(&node.right.constant);
        if (identities == nullptr) {
            return std::nullopt;
        }
        const QList<Value> keys = keysOf(*identities, destination);
        if (keys.isEmpty() || !takeVariables(keys.size())) {
            return std::nullopt;
        }
        return members(relation, " IN (" + marks(keys.size()) + ')', keys);
    }

    static QList<Value> keysOf(const QList<NSManagedObjectID> &identities, const NSEntityDescription *entity)
    {
        QList<Value> keys;
        for (const NSManagedObjectID &objectID : identities) {
            if (!isOfOtherTable(objectID.entity(), entity)) {
                keys.append(Value(objectID.key()));
            }
        }
        return keys;
    }

    static QByteArray marks(qsizetype count)
    {
        QByteArray marks = QByteArray("?, ").repeated(count);
        marks.chop(2);
        return marks;
    }

    /// Whether that many items of a list may still be variables.
    bool takeVariables(qsizetype count)
    {
        if (count > kMaximumVariables - m_listVariables) {
            return false;
        }
        m_listVariables += count;
        return true;
    }

    SQLFragment comparison(const PredicateNode &node, const Scope *scope)
    {
        if (node.left.kind == PredicateExpression::Kind::Count ||
            node.left.kind == PredicateExpression::Kind::SubqueryCount) {
            if (const auto exists = existence(node, scope)) {
                return *exists;
            }
        }
        return compare(node, scalar(node.left, scope), scope);
    }

    /// A count compared with 0 asks only whether there is a row.
    std::optional<SQLFragment> existence(const PredicateNode &node, const Scope *scope)
    {
        const auto *value = std::get_if<Value>(&node.right.constant);
        const auto *number = value != nullptr ? std::get_if<qint64>(value) : nullptr;
        if (node.right.kind != PredicateExpression::Kind::Constant || number == nullptr || *number != 0 ||
            node.left.path.size() != 1) {
            return std::nullopt;
        }
        const bool isThere =
            node.operation == PredicateOperator::Greater || node.operation == PredicateOperator::NotEqual;
        if (!isThere && node.operation != PredicateOperator::Equal &&
            node.operation != PredicateOperator::LessOrEqual) {
            return std::nullopt;
        }
        const Scalar relation = path(node.left.path, scopeOf(node.left.variable, scope));
        if (relation.kind != Scalar::Kind::Relation) {
            fail(u"@count"_s);
            return SQLFragment();
        }
        const Counted rows = countedRows(node.left, relation, scope);
        return SQLFragment{(isThere ? "EXISTS(SELECT 1" : "NOT EXISTS(SELECT 1") + rows.sql + ')', rows.bindings};
    }

    SQLFragment compare(const PredicateNode &node, const Scalar &left, const Scope *scope)
    {
        if (!fault.isEmpty()) {
            return {};
        }
        if (node.operation == PredicateOperator::In) {
            return in(node, left, scope);
        }
        const Scalar right = scalar(node.right, scope);
        if (!fault.isEmpty()) {
            return {};
        }
        if (left.kind == Scalar::Kind::Relation || right.kind == Scalar::Kind::Relation) {
            fail(u"a to-many relationship"_s);
            return {};
        }
        const bool isNegated = node.operation == PredicateOperator::NotEqual;
        switch (node.operation) {
        case PredicateOperator::Equal:
        case PredicateOperator::NotEqual: {
            SQLFragment equal = equality(node.fold, left, right);
            if (isNegated) {
                equal.sql = "(NOT " + equal.sql + ')';
            }
            if (isFlagThatIsMostlyOff(node)) {
                // NOTE: a hint to the planner, which would otherwise think that it narrows the rows down.
                equal.sql = "likelihood(" + equal.sql + ", 0.95)";
            }
            return equal;
        }
        case PredicateOperator::BeginsWith:
        case PredicateOperator::EndsWith:
        case PredicateOperator::Contains:
            return stringTest(node.operation, node.fold, left, right);
        default:
            return ordering(node.operation, left, right);
        }
    }

    /// "trashed == NO" and its like, which hold for nearly every row.
    static bool isFlagThatIsMostlyOff(const PredicateNode &node)
    {
        const auto *value = std::get_if<Value>(&node.right.constant);
        const auto *flag = value != nullptr ? std::get_if<bool>(value) : nullptr;
        return node.operation == PredicateOperator::Equal && node.right.kind == PredicateExpression::Kind::Constant &&
               flag != nullptr && !*flag;
    }

    static SQLFragment joined(const QByteArray &before, const Scalar &left, const QByteArray &between,
                              const Scalar &right, const QByteArray &after)
    {
        return {before + left.sql + between + right.sql + after, left.bindings + right.bindings};
    }

    static SQLFragment equality(FoldOption fold, const Scalar &left, const Scalar &right)
    {
        if (left.kind == Scalar::Kind::Nil || right.kind == Scalar::Kind::Nil) {
            const Scalar &other = left.kind == Scalar::Kind::Nil ? right : left;
            return other.kind == Scalar::Kind::Nil ? SQLFragment{"1", {}}
                                                   : SQLFragment{'(' + other.sql + " IS NULL)", other.bindings};
        }
        if (left.kind != right.kind || isOfOtherTable(left.entity, right.entity)) {
            // Values of two kinds are equal only where both are absent, which a constant never is.
            return joined("(", left, " IS NULL AND ", right, " IS NULL)");
        }
        if (left.kind == Scalar::Kind::String && fold != FoldOption::Exact) {
            return joined("(", folded(left, fold), " IS ", folded(right, fold), ")");
        }
        return joined("(", left, " IS ", right, ")");
    }

    static SQLFragment ordering(PredicateOperator operation, const Scalar &left, const Scalar &right)
    {
        if (left.kind != right.kind || left.kind == Scalar::Kind::Nil || left.kind == Scalar::Kind::Object) {
            return {"0", {}};
        }
        static const QHash<PredicateOperator, QByteArray> symbols{{PredicateOperator::Less, " < "},
                                                                  {PredicateOperator::LessOrEqual, " <= "},
                                                                  {PredicateOperator::Greater, " > "},
                                                                  {PredicateOperator::GreaterOrEqual, " >= "}};
        return joined("IFNULL(", left, symbols.value(operation), right, ", 0)");
    }

    /// The folded form of a string, as bytes: a constant is folded now, an indexed column has its folded column.
    static Scalar folded(const Scalar &scalar, FoldOption fold)
    {
        Scalar result = scalar;
        result.kind = Scalar::Kind::Binary;
        const auto *text = scalar.bindings.size() == 1 && scalar.sql == "?"
                               ? std::get_if<QString>(&scalar.bindings.constFirst())
                               : nullptr;
        if (text != nullptr) {
            result.bindings = {Value(toUtf8Lossless(foldedString(*text, fold)))};
        } else if (fold == FoldOption::CaseAndDiacritic && !scalar.foldedColumn.isEmpty()) {
            result.sql = scalar.foldedColumn;
        } else if (fold == FoldOption::CaseAndDiacritic) {
            result.sql = kSQLFold + ('(' + scalar.sql + ')');
        } else {
            result.sql = kSQLFoldWith + ('(' + scalar.sql + ", ") + QByteArray::number(static_cast<int>(fold)) + ')';
        }
        return result;
    }

    static SQLFragment stringTest(PredicateOperator operation, FoldOption fold, const Scalar &left, const Scalar &right)
    {
        if (left.kind != Scalar::Kind::String || right.kind != Scalar::Kind::String) {
            return {"0", {}};
        }
        const QByteArray function = operation == PredicateOperator::BeginsWith ? kSQLBeginsWith
                                    : operation == PredicateOperator::EndsWith ? kSQLEndsWith
                                                                               : kSQLContains;
        if (fold == FoldOption::Exact) {
            return joined(function + '(', left, ", ", right, ")");
        }
        if (fold == FoldOption::CaseAndDiacritic && operation == PredicateOperator::Contains &&
            left.foldedColumn.isEmpty()) {
            return joined(kSQLContainsFolded + QByteArray("("), left, ", ", folded(right, fold), ")");
        }
        const Scalar needle = folded(right, fold);
        if (fold == FoldOption::CaseAndDiacritic && operation == PredicateOperator::BeginsWith &&
            !left.foldedColumn.isEmpty() && needle.sql == "?") {
            return prefixRange(left, needle);
        }
        return joined(function + '(', folded(left, fold), ", ", needle, ")");
    }

    /// Folded text begins with the needle exactly when it lies between the needle and the needle followed by the
    /// highest byte, which no folded text holds: a range that the index answers.
    static SQLFragment prefixRange(const Scalar &left, const Scalar &needle)
    {
        const auto low = std::get<QByteArray>(needle.bindings.constFirst());
        return {"IFNULL(" + left.foldedColumn + " >= ? AND " + left.foldedColumn + " < ?, 0)",
                {Value(low.isNull() ? QByteArray("") : low), Value(QByteArray(low + '\xFF'))}};
    }

    SQLFragment in(const PredicateNode &node, const Scalar &left, const Scope *scope)
    {
        if (node.right.kind != PredicateExpression::Kind::Constant) {
            const Scalar relation = scalar(node.right, scope);
            if (relation.kind != Scalar::Kind::Relation) {
                fail(u"IN of something that is no collection"_s);
                return {};
            }
            if (left.kind != Scalar::Kind::Object ||
                isOfOtherTable(left.entity, relation.relationship->destinationEntity)) {
                return {"0", {}};
            }
            if (relation.relationship->isManyToMany()) {
                return members(relation, " = " + left.sql, left.bindings);
            }
            const RelatedRows rows = relatedRows(relation);
            return {"EXISTS(SELECT 1" + rows.from + " AND " + rows.alias + "._pk = " + left.sql + ')', left.bindings};
        }
        QList<Value> values;
        Scalar::Kind kind = Scalar::Kind::Object;
        if (const auto *identities = std::get_if<QList<NSManagedObjectID>>(&node.right.constant)) {
            values = keysOf(*identities, left.entity);
        } else if (const auto *given = std::get_if<QList<Value>>(&node.right.constant)) {
            kind = left.kind;
            for (const Value &value : *given) {
                if (kindOfValue(value) == left.kind) {
                    values.append(value);
                }
            }
        } else {
            fail(u"IN of something that is no collection"_s);
            return {};
        }
        if (kind != left.kind || values.isEmpty() || left.kind == Scalar::Kind::Nil) {
            return {"0", {}};
        }
        return listed(left, values, node.fold);
    }

    SQLFragment listed(const Scalar &left, const QList<Value> &values, FoldOption fold)
    {
        Scalar subject = left;
        QList<Value> keys = values;
        if (left.kind == Scalar::Kind::String && fold != FoldOption::Exact) {
            subject = folded(left, fold);
            for (Value &value : keys) {
                value = toUtf8Lossless(foldedString(std::get<QString>(value), fold));
            }
        }
        const bool isPackable = left.kind == Scalar::Kind::Object || left.kind == Scalar::Kind::String;
        if (isPackable && fold == FoldOption::Exact && !takeVariables(keys.size())) {
            return {kSQLIn + QByteArray("(") + subject.sql + ", ?)", subject.bindings + QList<Value>{packedList(keys)}};
        }
        return {"IFNULL(" + subject.sql + " IN (" + marks(keys.size()) + "), 0)", subject.bindings + keys};
    }

    Scope m_root;
    int m_aliases = 0;
    qsizetype m_listVariables = 0;
};

} // namespace

std::optional<SQLFragment> compilePredicate(const NSPredicate &predicate, const NSEntityDescription *entity,
                                            NSError *error)
{
    Compiler compiler(entity);
    SQLFragment fragment = compiler.compile(predicate.root());
    if (!compiler.fault.isEmpty()) {
        NSError::fill(error, u"NSPredicate"_s, 2, u"%1: %2"_s.arg(entity->name(), compiler.fault));
        return std::nullopt;
    }
    return fragment;
}

std::optional<QByteArray> compileOrder(const QList<NSSortDescriptor> &descriptors, const NSEntityDescription *entity,
                                       TieOrder ties, NSError *error)
{
    Compiler compiler(entity);
    const Scope root{{}, kSQLRootAlias, entity, nullptr};
    QByteArray order;
    for (const NSSortDescriptor &descriptor : descriptors) {
        const Scalar scalar = compiler.path(descriptor.key().split(u'.'), &root);
        if (!compiler.fault.isEmpty() || scalar.kind == Scalar::Kind::Relation) {
            NSError::fill(error, u"NSPredicate"_s, 2,
                          u"%1: no order by \"%2\""_s.arg(entity->name(), descriptor.key()));
            return std::nullopt;
        }
        order += scalar.sql;
        if (descriptor.comparison() == NSSortDescriptor::Comparison::LocalizedStandard) {
            order += QByteArray(" COLLATE ") + kSQLLocalizedStandard;
        }
        order += descriptor.ascending() ? " ASC, " : " DESC, ";
    }
    if (ties == TieOrder::Any && !order.isEmpty()) {
        order.chop(2);
        return order;
    }
    return order + kSQLRootAlias + "._pk ASC";
}

} // namespace quib

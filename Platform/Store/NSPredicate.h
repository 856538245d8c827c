#pragma once

#include "KeyValueObject.h"
#include "Value.h"

#include <Foundation/NSError.h>

#include <QList>
#include <QString>

#include <memory>
#include <variant>

namespace quib {
struct PredicateNode;
}

/// What a %@ of a predicate's format stands for: a value, an object, or a collection of either.
using NSPredicateArgument = std::variant<quib::Value, NSManagedObjectID, QList<quib::Value>, QList<NSManagedObjectID>>;

/// A condition on an object: parsed from text into a tree that prints back, evaluates in memory and compiles to SQL
/// with the same rows. Immutable, any thread.
class NSPredicate
{
public:
    using Ref = std::shared_ptr<const NSPredicate>;

    /// Parses a format; each %@ takes the next argument, %K (a key path) too, where it is a string value.
    /// Errors: null for a format that does not parse (with the place), for missing or surplus arguments, and for
    /// nesting deeper than 200; work is linear in the format's size.
    [[nodiscard]] static Ref predicateWithFormat(const QString &format,
                                                 const QList<NSPredicateArgument> &arguments = {},
                                                 NSError *error = nullptr);
    [[nodiscard]] static Ref andPredicateWithSubpredicates(const QList<Ref> &subpredicates);
    [[nodiscard]] static Ref orPredicateWithSubpredicates(const QList<Ref> &subpredicates);
    [[nodiscard]] static Ref notPredicateWithSubpredicate(const Ref &subpredicate);
    [[nodiscard]] static Ref predicateWithValue(bool value);

    /// The printed form: parses back to an equal predicate, but for object arguments, which print for the reader only.
    /// Parentheses stand only where precedence needs them; a compound at the top has none around it.
    [[nodiscard]] QString predicateFormat() const;
    /// Whether an object meets the condition. Queue: the object's.
    [[nodiscard]] bool evaluateWithObject(const quib::KeyValueObject &object) const;
    /// The same for a string, which "self" stands for.
    [[nodiscard]] bool evaluateWithString(const QString &string) const;

    /// Names of the relationships that the condition looks through ("tags", "note", "notes"), for the caller who must
    /// know which objects a change elsewhere can move in or out.
    [[nodiscard]] QList<QString> relationshipKeys() const;
    /// Names of all keys that the condition reads on the object itself, first components of key paths.
    [[nodiscard]] QList<QString> attributeKeys() const;

    [[nodiscard]] const quib::PredicateNode &root() const { return *m_root; }
    explicit NSPredicate(std::shared_ptr<const quib::PredicateNode> root)
        : m_root(std::move(root))
    {
    }

private:
    std::shared_ptr<const quib::PredicateNode> m_root;
};

/// The first argument form of a plain list of strings, as fetches by identifier use it.
[[nodiscard]] inline NSPredicateArgument predicateArgument(const QStringList &strings)
{
    QList<quib::Value> values;
    values.reserve(strings.size());
    for (const QString &string : strings) {
        values.append(quib::Value(string));
    }
    return values;
}
[[nodiscard]] inline NSPredicateArgument predicateArgument(const QString &string)
{
    return quib::Value(string);
}

#pragma once

#include "KeyValueObject.h"

#include <QList>
#include <QString>

/// One key of an order: key path, direction, and for strings the comparison. Dates compare by instant, numbers by
/// value, booleans false before true, strings by code unit or by the locale's natural order; nothing comes before
/// everything. A value.
class NSSortDescriptor
{
public:
    enum class Comparison : quint8
    {
        Default,
        LocalizedStandard
    };

    NSSortDescriptor(QString key, bool ascending, Comparison comparison = Comparison::Default)
        : m_key(std::move(key))
        , m_ascending(ascending)
        , m_comparison(comparison)
    {
    }
    [[nodiscard]] const QString &key() const { return m_key; }
    [[nodiscard]] bool ascending() const { return m_ascending; }
    [[nodiscard]] Comparison comparison() const { return m_comparison; }
    /// <0, 0, >0 in the descriptor's direction.
    [[nodiscard]] int compareObject(const quib::KeyValueObject &object, const quib::KeyValueObject &toObject) const;
    /// The two halves of it, for whoever keeps the values of an object that is compared many times.
    [[nodiscard]] quib::Value valueOfObject(const quib::KeyValueObject &object) const;
    [[nodiscard]] int compareValue(const quib::Value &value, const quib::Value &toValue) const;
    friend bool operator==(const NSSortDescriptor &a, const NSSortDescriptor &b) = default;

    /// -1, 0 or 1 by the first descriptor that tells two objects apart.
    [[nodiscard]] static int compare(const QList<NSSortDescriptor> &descriptors, const quib::KeyValueObject &a,
                                     const quib::KeyValueObject &b);

private:
    QString m_key;
    bool m_ascending = true;
    Comparison m_comparison = Comparison::Default;
};

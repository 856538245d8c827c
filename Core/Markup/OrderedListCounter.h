#pragma once

#include <QStringView>
#include <QtGlobal>

#include <limits>
#include <vector>

namespace quib {

/// The numbers of an ordered list, each indentation for itself: an item that is further in than the one before starts a
/// count of its own at 1, one that is less far in goes on with its level. A value.
class OrderedListCounter
{
public:
    static constexpr qint64 kLargest = std::numeric_limits<qint64>::max();

    /// The number of the next item; the largest number stays.
    [[nodiscard]] qint64 nextNumber(qint64 columns);
    /// Takes an item with its own number, as the first of a list has.
    void setNumber(qint64 number, qint64 columns);

    /// The number that a text begins with, in any script's decimal digits; 0 without one, kLargest for larger ones.
    /// digits becomes the units that it takes.
    [[nodiscard]] static qint64 leadingNumber(QStringView text, qint64 *digits);
    /// How far in an indentation of blanks and tabs moves a line. Units: blanks; a tab goes on to the next fourth one.
    [[nodiscard]] static qint64 columns(QStringView indentation);

private:
    struct Level
    {
        qint64 columns = 0;
        qint64 number = 0;
    };

    void leaveLevelsBeyond(qint64 columns);

    /// Further in from one to the next.
    std::vector<Level> m_levels;
};

} // namespace quib

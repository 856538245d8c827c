#pragma once

#include <Foundation/NSRange.h>

#include <QString>
#include <QStringView>

namespace quib {

/// A text that is edited in place: UTF-16 units with a gap at the place of the last edit, so that typing costs the same
/// in a text of any length. Reading a range costs nothing unless the gap lies in it; the gap then moves to the nearer
/// end. A value; also reading one instance belongs to one thread at a time.
class GapText
{
public:
    GapText() = default;
    /// Shares the string until the first edit.
    explicit GapText(QString string)
        : m_buffer(std::move(string))
    {
    }

    [[nodiscard]] qint64 length() const { return m_buffer.size() - m_gapLength; }
    /// Requires: 0 <= position < length.
    [[nodiscard]] char16_t at(qint64 position) const
    {
        return m_buffer.at(position < m_gapStart ? position : position + m_gapLength).unicode();
    }
    /// The units of a range that lies in the text. Valid until the next edit or view.
    [[nodiscard]] QStringView view(NSRange range) const;
    [[nodiscard]] QStringView view() const { return view({0, length()}); }
    /// The place of the first unit at a place or behind it that ends a paragraph; the length for none.
    [[nodiscard]] qint64 firstParagraphEnd(qint64 position) const;
    /// The place of the last unit before a place that ends a paragraph; -1 for none.
    [[nodiscard]] qint64 lastParagraphEnd(qint64 before) const;
    /// A copy of a range that lies in the text.
    [[nodiscard]] QString copy(NSRange range) const;

    /// Gives the units away, all in one piece, and is empty then.
    [[nodiscard]] QString take();
    /// Shape: range lies in the text; string may be a part of this text.
    void replace(NSRange range, QStringView string);

private:
    [[nodiscard]] QChar *units() const { return m_buffer.data(); }
    void moveGapTo(qint64 position) const;
    void growGap(qint64 needed);

    /// The text before the gap, the gap, the text behind it.
    mutable QString m_buffer;
    /// In the text; also the index in the buffer.
    mutable qint64 m_gapStart = 0;
    qint64 m_gapLength = 0;
};

} // namespace quib

#include "GapText.h"

#include "NSStringHelpers.h"

#include <Foundation/Assert.h>

#include <algorithm>
#include <cstring>

namespace quib {

namespace {

/// A gap that was used up comes back as a part of the text, so that growing costs little a unit: one sixteenth, in
/// units at least this many. It bounds what an edited text takes beyond its units.
constexpr qint64 kSmallestGap = 64;
constexpr qint64 kGapPart = 16;

void moveUnits(QChar *to, const QChar *from, qint64 count)
{
    std::memmove(to, from, static_cast<size_t>(count) * sizeof(QChar));
}

/// Whether one of so many units ends a paragraph. Without a branch a unit, so that the compiler takes many at once.
constexpr qint64 kBlock = 64;
bool blockHasParagraphEnd(const char16_t *units)
{
    unsigned found = 0;
    for (qint64 index = 0; index < kBlock; ++index) {
        found |= static_cast<unsigned>(isParagraphEnd(units[index]));
    }
    return found != 0;
}

/// The index of the first unit that ends a paragraph; count for none.
qint64 firstParagraphEndIn(const char16_t *units, qint64 count)
{
    qint64 index = 0;
    for (; index + kBlock <= count && !blockHasParagraphEnd(units + index); index += kBlock) {
    }
    while (index < count && !isParagraphEnd(units[index])) {
        ++index;
    }
    return index;
}

/// The index of the last unit that ends a paragraph; -1 for none.
qint64 lastParagraphEndIn(const char16_t *units, qint64 count)
{
    qint64 limit = count;
    for (; limit >= kBlock && !blockHasParagraphEnd(units + limit - kBlock); limit -= kBlock) {
    }
    while (limit > 0 && !isParagraphEnd(units[limit - 1])) {
        --limit;
    }
    return limit - 1;
}

} // namespace

qint64 GapText::firstParagraphEnd(qint64 position) const
{
    QUIB_ASSERT(position >= 0 && position <= length());
    const auto *units = reinterpret_cast<const char16_t *>(m_buffer.constData());
    if (position < m_gapStart) {
        const qint64 found = position + firstParagraphEndIn(units + position, m_gapStart - position);
        if (found < m_gapStart) {
            return found;
        }
        position = m_gapStart;
    }
    return position + firstParagraphEndIn(units + position + m_gapLength, length() - position);
}

qint64 GapText::lastParagraphEnd(qint64 before) const
{
    QUIB_ASSERT(before >= 0 && before <= length());
    const auto *units = reinterpret_cast<const char16_t *>(m_buffer.constData());
    if (before > m_gapStart) {
        const qint64 found = lastParagraphEndIn(units + m_gapStart + m_gapLength, before - m_gapStart);
        if (found >= 0) {
            return m_gapStart + found;
        }
        before = m_gapStart;
    }
    return lastParagraphEndIn(units, before);
}

QStringView GapText::view(NSRange range) const
{
    QUIB_ASSERT(range.location >= 0 && range.length >= 0 && range.limit() <= length());
    if (range.limit() > m_gapStart && range.location < m_gapStart && m_gapLength > 0) {
        moveGapTo(m_gapStart - range.location < range.limit() - m_gapStart ? range.location : range.limit());
    }
    const qint64 start = range.location < m_gapStart ? range.location : range.location + m_gapLength;
    return QStringView(m_buffer).sliced(std::min<qint64>(start, m_buffer.size() - range.length), range.length);
}

QString GapText::copy(NSRange range) const
{
    if (range.location == 0 && range.length == m_buffer.size()) {
        return m_buffer;
    }
    QString result(range.length, Qt::Uninitialized);
    const qint64 before = std::clamp<qint64>(m_gapStart - range.location, 0, range.length);
    const QChar *from = m_buffer.constData() + range.location;
    std::copy_n(from, before, result.data());
    std::copy_n(from + before + (before < range.length ? m_gapLength : 0), range.length - before,
                result.data() + before);
    return result;
}

QString GapText::take()
{
    QString taken = m_gapLength == 0 ? std::move(m_buffer) : copy({0, length()});
    *this = GapText();
    return taken;
}

void GapText::replace(NSRange range, QStringView string)
{
    QUIB_ASSERT(range.location >= 0 && range.length >= 0 && range.limit() <= length());
    const QChar *start = m_buffer.constData();
    if (std::less_equal<>()(start, string.data()) && std::less<>()(string.data(), start + m_buffer.size())) {
        replace(range, string.toString());
        return;
    }
    // 1. The gap takes in the range.
    if (m_gapStart < range.location) {
        moveGapTo(range.location);
    } else if (m_gapStart > range.limit()) {
        moveGapTo(range.limit());
    }
    m_gapStart = range.location;
    m_gapLength += range.length;
    // 2. The string goes to its start.
    if (string.size() > m_gapLength) {
        growGap(string.size());
    }
    if (!string.isEmpty()) {
        moveUnits(units() + m_gapStart, string.data(), string.size());
        m_gapStart += string.size();
        m_gapLength -= string.size();
    }
    // 3. What a large removal left goes back.
    if (m_gapLength > kSmallestGap * kGapPart && m_gapLength > length()) {
        m_buffer = copy({0, length()});
        m_gapStart = 0;
        m_gapLength = 0;
    }
}

void GapText::moveGapTo(qint64 position) const
{
    if (m_gapLength > 0) {
        QChar *buffer = units();
        if (position < m_gapStart) {
            moveUnits(buffer + position + m_gapLength, buffer + position, m_gapStart - position);
        } else {
            moveUnits(buffer + m_gapStart, buffer + m_gapStart + m_gapLength, position - m_gapStart);
        }
    }
    m_gapStart = position;
}

void GapText::growGap(qint64 needed)
{
    const qint64 textLength = length();
    const qint64 gap =
        needed + (textLength < kSmallestGap ? needed + textLength : std::max(kSmallestGap, textLength / kGapPart));
    QString buffer(textLength + gap, Qt::Uninitialized);
    std::copy_n(m_buffer.constData(), m_gapStart, buffer.data());
    std::copy_n(m_buffer.constData() + m_gapStart + m_gapLength, textLength - m_gapStart,
                buffer.data() + m_gapStart + gap);
    m_buffer = std::move(buffer);
    m_gapLength = gap;
}

} // namespace quib

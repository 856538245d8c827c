#include "OrderedListCounter.h"

#include <Text/DecimalDigits.h>

#include <QChar>

namespace quib {

namespace {

constexpr qint64 kTabColumns = 4;

} // namespace

qint64 OrderedListCounter::nextNumber(qint64 columns)
{
    leaveLevelsBeyond(columns);
    if (m_levels.empty() || m_levels.back().columns < columns) {
        m_levels.push_back({columns, 0});
    }
    qint64 &number = m_levels.back().number;
    number = number == kLargest ? number : number + 1;
    return number;
}

void OrderedListCounter::setNumber(qint64 number, qint64 columns)
{
    leaveLevelsBeyond(columns - 1);
    m_levels.push_back({columns, number});
}

qint64 OrderedListCounter::leadingNumber(QStringView text, qint64 *digits)
{
    qint64 number = 0;
    qint64 place = 0;
    while (place < text.size()) {
        const bool isPair =
            text[place].isHighSurrogate() && place + 1 < text.size() && text[place + 1].isLowSurrogate();
        const char32_t codePoint =
            isPair ? QChar::surrogateToUcs4(text[place], text[place + 1]) : char32_t{text[place].unicode()};
        const int digit = decimalDigitValue(codePoint);
        if (digit < 0) {
            break;
        }
        number = number > (kLargest - digit) / 10 ? kLargest : number * 10 + digit;
        place += isPair ? 2 : 1;
    }
    *digits = place;
    return number;
}

qint64 OrderedListCounter::columns(QStringView indentation)
{
    qint64 columns = 0;
    for (const QChar unit : indentation) {
        columns = unit == u'\t' ? (columns / kTabColumns + 1) * kTabColumns : columns + 1;
    }
    return columns;
}

void OrderedListCounter::leaveLevelsBeyond(qint64 columns)
{
    while (!m_levels.empty() && m_levels.back().columns > columns) {
        m_levels.pop_back();
    }
}

} // namespace quib

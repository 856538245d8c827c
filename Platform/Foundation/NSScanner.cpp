#include "NSScanner.h"

#include "Assert.h"

#include <limits>

NSScanner::NSScanner(QString string)
    : m_string(std::move(string))
{
}

void NSScanner::setScanLocation(qint64 scanLocation)
{
    QUIB_REQUIRE(scanLocation >= 0 && scanLocation <= m_string.size());
    m_location = scanLocation;
}

void NSScanner::setCaseSensitive(bool caseSensitive)
{
    m_caseSensitivity = caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
}

qint64 NSScanner::startOfPiece() const
{
    qint64 start = m_location;
    while (m_skipped && start < m_string.size() && m_skipped(m_string[start].unicode())) {
        ++start;
    }
    return start;
}

bool NSScanner::isAtEnd() const
{
    return startOfPiece() == m_string.size();
}

void NSScanner::take(qint64 start, qint64 limit, QString *intoString)
{
    if (intoString != nullptr) {
        *intoString = m_string.sliced(start, limit - start);
    }
    m_location = limit;
}

bool NSScanner::scanString(QStringView string, QString *intoString)
{
    const qint64 start = startOfPiece();
    if (string.isEmpty() || !QStringView(m_string).sliced(start).startsWith(string, m_caseSensitivity)) {
        return false;
    }
    take(start, start + string.size(), intoString);
    return true;
}

bool NSScanner::scanUpToString(QStringView string, QString *intoString)
{
    const qint64 start = startOfPiece();
    const qint64 found = string.isEmpty() ? -1 : m_string.indexOf(string, start, m_caseSensitivity);
    const qint64 limit = found < 0 ? m_string.size() : found;
    if (limit == start) {
        return false;
    }
    take(start, limit, intoString);
    return true;
}

bool NSScanner::scanCharactersFromSet(const CharacterSet &set, QString *intoString)
{
    const qint64 start = startOfPiece();
    qint64 limit = start;
    while (limit < m_string.size() && set(m_string[limit].unicode())) {
        ++limit;
    }
    if (limit == start) {
        return false;
    }
    take(start, limit, intoString);
    return true;
}

bool NSScanner::scanUpToCharactersFromSet(const CharacterSet &set, QString *intoString)
{
    return scanCharactersFromSet([&set](char16_t unit) { return !set(unit); }, intoString);
}

bool NSScanner::scanInteger(qint64 *value)
{
    constexpr qint64 kLargest = std::numeric_limits<qint64>::max();
    constexpr qint64 kSmallest = std::numeric_limits<qint64>::min();
    qint64 location = startOfPiece();
    const bool isSigned = location < m_string.size() && (m_string[location] == u'-' || m_string[location] == u'+');
    const bool isNegative = isSigned && m_string[location] == u'-';
    location += isSigned ? 1 : 0;
    const qint64 firstDigit = location;
    // Counted below zero, where one more number lies than above.
    qint64 number = 0;
    bool isTooLarge = false;
    for (; location < m_string.size() && m_string[location] >= u'0' && m_string[location] <= u'9'; ++location) {
        const qint64 digit = m_string[location].unicode() - u'0';
        isTooLarge = isTooLarge || number < (kSmallest + digit) / 10;
        number = isTooLarge ? number : number * 10 - digit;
    }
    if (location == firstDigit) {
        return false;
    }
    isTooLarge = isTooLarge || (!isNegative && number == kSmallest);
    if (value != nullptr) {
        *value = isTooLarge ? (isNegative ? kSmallest : kLargest) : (isNegative ? number : -number);
    }
    m_location = location;
    return true;
}

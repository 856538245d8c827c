#include "LinkScanner.h"

#include "HostNames.h"
#include "LinkCharacters.h"

#include <algorithm>
#include <array>

namespace quib {

namespace {

constexpr qsizetype kLongestUserInfo = 128;
constexpr std::u16string_view kOpeners = u"([{";
constexpr std::u16string_view kClosers = u")]}";

bool isUserInfoUnit(char16_t unit)
{
    return isAsciiLetter(unit) || isAsciiDigit(unit) || QStringView(u"-._~%!$&*+=:").contains(QChar(unit));
}

} // namespace

qsizetype LinkScanner::userInfoLimit(qsizetype start) const
{
    const qsizetype last = std::min(m_text.size(), start + kLongestUserInfo);
    for (qsizetype index = start; index < last; ++index) {
        const char16_t unit = unitAt(index);
        if (unit == u'@') {
            return index > start ? index + 1 : start;
        }
        if (!isUserInfoUnit(unit)) {
            break;
        }
    }
    return start;
}

// A name ends at a seam of scripts: "example.com에서" is a name and its particle.
qsizetype LinkScanner::hostLimit(qsizetype start) const
{
    constexpr qsizetype kLongestIPv6Address = 48;
    if (unitAt(start) == u'[') {
        const qsizetype last = std::min(m_text.size(), start + kLongestIPv6Address);
        for (qsizetype index = start + 1; index < last; ++index) {
            const char16_t unit = unitAt(index);
            if (unit == u']') {
                return index > start + 2 ? index + 1 : start;
            }
            if (!isAsciiDigit(unit) && !isAsciiLetter(unit) && unit != u':' && unit != u'.' && unit != u'%') {
                break;
            }
        }
        return start;
    }
    qsizetype index = start;
    ScriptSeam seam;
    while (index < m_text.size() && index - start <= kLongestHostName + 1) {
        const CodePoint point = codePointAt(m_text, index);
        ++m_work;
        const bool isPart =
            isWordCharacter(point.value) || point.value == U'.' || point.value == U'-' || point.value == U'_';
        if (!isPart || seam.isBefore(point.value)) {
            break;
        }
        index += point.size;
    }
    return index;
}

qsizetype LinkScanner::portLimit(qsizetype start) const
{
    constexpr uint kLargestPort = 65535;
    constexpr qsizetype kMostDigits = 5;
    if (unitAt(start) != u':') {
        return start;
    }
    qsizetype index = start + 1;
    while (index - start <= kMostDigits + 1 && isAsciiDigit(unitAt(index))) {
        ++index;
    }
    const qsizetype digits = index - start - 1;
    return digits >= 1 && digits <= kMostDigits && part(start + 1, index).toUInt() <= kLargestPort ? index : start;
}

bool LinkScanner::beginsTail(qsizetype index) const
{
    const char16_t unit = unitAt(index);
    return unit == u'/' || unit == u'?' || unit == u'#';
}

bool LinkScanner::beginsAnotherLink(qsizetype index) const
{
    const QStringView rest = part(index, std::min(m_text.size(), index + 8));
    m_work += rest.size();
    return rest.startsWith(u"http://", Qt::CaseInsensitive) || rest.startsWith(u"https://", Qt::CaseInsensitive);
}

char16_t LinkScanner::openerBefore(qsizetype linkStart) const
{
    if (linkStart == 0) {
        return 0;
    }
    const char16_t opener = unitAt(linkStart - 1);
    if (opener == u'\'') {
        return opener;
    }
    if (!QStringView(u"_-~/").contains(QChar(opener))) {
        return 0;
    }
    const bool isAtWord = linkStart > 1 && isWordCharacter(characterBefore(linkStart - 1));
    return isAtWord ? u'\0' : opener;
}

qsizetype LinkScanner::tailLimit(qsizetype linkStart, qsizetype start, qsizetype *end) const
{
    std::array<qsizetype, kOpeners.size()> open{};
    const char16_t quote = openerBefore(linkStart) == u'\'' ? u'\'' : u'\0';
    bool isWhole = false;
    qsizetype index = start;
    while (index < m_text.size() && !isWhole) {
        const CodePoint point = codePointAt(m_text, index);
        ++m_work;
        if (endsLinks(point.value)) {
            break;
        }
        if (point.value < 128) {
            const auto unit = static_cast<char16_t>(point.value);
            const size_t opener = kOpeners.find(unit);
            const size_t closer = kClosers.find(unit);
            if (opener != std::u16string_view::npos) {
                ++open[opener];
            } else if (closer != std::u16string_view::npos) {
                isWhole = open[closer]-- == 0;
            } else if (unit == u',' || unit == u';') {
                isWhole = beginsAnotherLink(index + 1);
            } else if (quote != 0) {
                isWhole = unit == quote;
            }
        }
        index += isWhole ? 0 : point.size;
    }
    *end = index;
    return index - linkStart > kLongestLink ? -1 : trimmedLimit(linkStart, start, index);
}

qsizetype LinkScanner::trimmedLimit(qsizetype linkStart, qsizetype start, qsizetype limit) const
{
    const char16_t marker = openerBefore(linkStart);
    while (limit > start) {
        const CodePoint point = codePointBefore(m_text, limit);
        ++m_work;
        if (!isTrailingPunctuation(point.value) && (marker == 0 || point.value != marker)) {
            break;
        }
        limit -= point.size;
    }
    return limit;
}

} // namespace quib

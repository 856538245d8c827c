// Holds what the detectors of links and addresses find to its rules on any text and range; the first two bytes choose
// the range.

#include <Text/LinkScanner.h>
#include <Text/NSDataDetector.h>

#include <QString>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

void checkMatches(const NSDataDetector &detector, const QString &text, NSRange range)
{
    const bool hasLinks = detector.checkingType() == NSDataDetector::CheckingType::Link;
    const QString part = text.mid(range.location, range.length);
    const auto matches = detector.matchesInString(text, 0, range);
    const auto alone = detector.matchesInString(part, 0, {0, part.size()});
    require(matches.size() == alone.size());
    qint64 done = range.location;
    for (qsizetype i = 0; i < matches.size(); ++i) {
        const NSRange found = matches[i].range();
        require(found.location >= done && found.length > 0 && found.limit() <= range.limit());
        require(alone[i].range() == NSRange{found.location - range.location, found.length});
        done = found.limit();
        if (hasLinks) {
            require(matches[i].URL().isValid() && !matches[i].URL().isRelative());
            require(detector.rangeOfFirstMatchInString(text, 0, found) == found);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, size_t size)
{
    if (size < 2) {
        return 0;
    }
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data + 2), static_cast<qsizetype>(size - 2));
    const qint64 location = data[0] % (text.size() + 1);
    const NSRange range{location, std::max<qint64>(0, text.size() - location - data[1] % 8)};
    for (const auto type : {NSDataDetector::CheckingType::Link, NSDataDetector::CheckingType::Address}) {
        checkMatches(NSDataDetector::sharedDetector(type), text, range);
    }
    quib::LinkScanner scanner(text);
    while (scanner.next()) {
    }
    constexpr qint64 kLooksPerUnit = 100;
    require(scanner.workDone() <= kLooksPerUnit * (text.size() + 1));
    return 0;
}

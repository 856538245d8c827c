#include "NSDataDetector.h"

#include "AddressScanner.h"
#include "LinkScanner.h"
#include "NSStringHelpers.h"

using namespace Qt::StringLiterals;

namespace {

NSRange movedBy(NSRange range, qint64 distance)
{
    return {range.location + distance, range.length};
}

} // namespace

// The pattern matches nothing: the scanners are the definition.
NSDataDetector::NSDataDetector(CheckingType type)
    : NSRegularExpression(u"(?!)"_s)
    , m_type(type)
{
}

const NSDataDetector &NSDataDetector::sharedDetector(CheckingType type)
{
    static const NSDataDetector addresses(CheckingType::Address);
    static const NSDataDetector links(CheckingType::Link);
    return type == CheckingType::Address ? addresses : links;
}

void NSDataDetector::enumerateMatchesInString(QStringView string, Options matchingOptions, NSRange range,
                                              const MatchCallback &usingBlock) const
{
    static_cast<void>(matchingOptions);
    const auto searched = quib::rangeCutToString(string, range);
    if (!searched) {
        return;
    }
    const QStringView text = string.sliced(searched->location, searched->length);
    bool stop = false;
    if (m_type == CheckingType::Link) {
        quib::LinkScanner scanner(text);
        for (auto link = scanner.next(); link && !stop; link = stop ? std::nullopt : scanner.next()) {
            usingBlock(NSTextCheckingResult({movedBy(link->range, searched->location)}, link->url), &stop);
        }
        return;
    }
    quib::AddressScanner scanner(text);
    for (auto found = scanner.next(); found && !stop; found = stop ? std::nullopt : scanner.next()) {
        usingBlock(NSTextCheckingResult({movedBy(*found, searched->location)}), &stop);
    }
}

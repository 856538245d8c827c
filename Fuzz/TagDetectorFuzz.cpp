// Holds the tag scanner to its pattern on any text and range; the first two bytes choose the range.

#include <Tags/QBTagDataDetector.h>

#include <cstdint>
#include <cstdlib>

namespace {

class PatternDetector : public QBTagDataDetector
{
public:
    void enumerateMatchesInString(QStringView string, Options, NSRange range,
                                  const MatchCallback &usingBlock) const override
    {
        enumeratePatternMatches(string, range, usingBlock);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, size_t size)
{
    static const PatternDetector pattern;
    static const QBTagDataDetector scanner;
    if (size < 2) {
        return 0;
    }
    // One byte a unit keeps the hashes and blanks frequent; the upper half stands for wider units.
    QString text;
    for (size_t i = 2; i < size; ++i) {
        text.append(QChar(static_cast<char16_t>(data[i] < 0x80 ? data[i] : data[i] * 0x0101)));
    }
    const NSRange range{data[0] % (text.size() + 1), text.size() - data[1] % (text.size() + 1)};
    if (pattern.matchesInString(text, 0, range) != scanner.matchesInString(text, 0, range)) {
        std::abort();
    }
    QString removed = text;
    scanner.removeTagsInString(removed, range);
    return QBTagDataDetector::stringByReplacingHashtag(QStringLiteral("#a"), QString(), text).size() <= text.size()
               ? 0
               : (std::abort(), 0);
}

// Holds every scanner of the markup against the pattern that defines it: the same matches, groups and all, in a text
// and in a part of it. The first two bytes choose the part; the others are the text.

#include <Markup/Syntax/StylerSyntax.h>
#include <Tags/QBTagDataDetector.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <span>
#include <vector>

namespace {

using namespace quib::syntax;

/// Some patterns take the cube of their text's length.
constexpr size_t kLongestText = 400;

struct Subject
{
    const NSRegularExpression *scanner;
    std::unique_ptr<const NSRegularExpression> definition;
    /// What a tag is says the whole match; the groups of its pattern are others.
    bool hasSameGroups;
};

const std::vector<Subject> &subjects()
{
    static const auto all = [] {
        std::vector<Subject> made;
        const auto add = [&made](const NSRegularExpression *expression, bool hasSameGroups = true) {
            if (expression != nullptr) {
                made.push_back({expression,
                                std::make_unique<NSRegularExpression>(expression->pattern(), expression->options()),
                                hasSameGroups});
            }
        };
        for (int syntax = 0; syntax < 2; ++syntax) {
            for (int i = 0; i < kConstructCount; ++i) {
                const auto construct = static_cast<Construct>(i);
                // Italics have no pattern: their detector is the definition.
                if (construct != Construct::Italic) {
                    add(&stylerRegularExpression(construct, syntax));
                }
                add(attachmentRegularExpression(construct, syntax));
            }
            add(&uncheckedRegularExpression(syntax));
            add(&checkedRegularExpression(syntax));
        }
        add(&sectionRegularExpression());
        add(&markdownImageTitleRegularExpression());
        add(&QBTagDataDetector::singleTagRegularExpression());
        add(&QBTagDataDetector::sharedDetector(), /*hasSameGroups=*/false);
        return made;
    }();
    return all;
}

/// One byte a unit keeps the markup frequent; the upper half stands for wider units: surrogates, line ends, blanks and
/// U+FFFC among them.
QString textOf(std::span<const std::uint8_t> bytes)
{
    constexpr char16_t kWide[] = {0xFFFC, 0xD83D, 0xDE00, 0x2028, 0x2029, 0x0085, 0x00A0, 0x3000,
                                  0x2022, 0x0663, 0x2026, 0x060C, 0x3001, 0xFEFF, 0x0301, 0x00E9};
    QString text(QLatin1StringView(""));
    for (const std::uint8_t byte : bytes) {
        text.append(QChar(byte < 0x80 ? char16_t(byte) : kWide[byte % std::size(kWide)]));
    }
    return text;
}

void compare(const Subject &subject, const QString &text, NSRange range)
{
    const auto found = subject.scanner->matchesInString(text, 0, range);
    const auto expected = subject.definition->matchesInString(text, 0, range);
    bool isSame =
        found.size() == expected.size() && subject.scanner->numberOfMatchesInString(text, 0, range) == expected.size();
    for (qsizetype i = 0; isSame && i < found.size(); ++i) {
        isSame = subject.hasSameGroups ? found[i] == expected[i] : found[i].range() == expected[i].range();
    }
    if (!isSame) {
        qWarning("%s differs in %lld+%lld", qPrintable(subject.scanner->pattern()),
                 static_cast<long long>(range.location), static_cast<long long>(range.length));
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, size_t size)
{
    if (size < 2) {
        return 0;
    }
    const QString text = textOf({data + 2, std::min(size - 2, kLongestText)});
    const qint64 start = data[0] % (text.size() + 1);
    const NSRange part{start, data[1] % (text.size() - start + 1)};
    for (const Subject &subject : subjects()) {
        compare(subject, text, {0, text.size()});
        compare(subject, text, part);
    }
    return 0;
}

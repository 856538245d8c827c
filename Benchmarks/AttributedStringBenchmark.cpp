// Does a styled text of a million units cost more to edit than a small one, and what does it take to make, hold and
// read?
//
// Workloads (one note of 1,000,000 units and one of 10,000, a construct in every line and one in every four words, so
// some 300,000 runs; unit: seconds):
//   style: default attributes over all, then three dictionaries a construct from front to back, as a load does (the
//   small note stays in the caches of the processor, hence the factor of 2);
//   attachments: one in every second line, placed in one pass;
//   key: one unit typed in the middle, the line's attributes removed and set again, the line read; also at a place of
//   its own for each key;
//   expand: the plain text with every attachment replaced by its own.
// Baselines, in the same run: the same in the small note; a copy of the text in memory; the stated bytes a unit.

#include <Support/CorpusGenerator.h>
#include <Support/Measure.h>

#include <Text/NSMutableAttributedString.h>
#include <Text/NSParagraphStyle.h>
#include <Text/NSTextAttachment.h>

#include <array>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;
using namespace quib;
using namespace quib::benchmarks;

namespace {

inline constinit const NSAttributeName kConstructName{u"Construct"};
inline constinit const NSAttributeName kMarkerName{u"Marker"};
inline constinit const NSAttributeName kGuardName{u"Guard"};

class MarkedAttachment : public NSTextAttachment
{
public:
    QString representedText;
};

/// What one styler sets.
struct Style
{
    AttributeSet content;
    AttributeSet marker;
};

struct Styles
{
    AttributeSet standard;
    std::vector<Style> constructs;
    std::array<NSAttributeName, 6> removed{kConstructName,      kMarkerName,         kGuardName,
                                           NSLinkAttributeName, NSKernAttributeName, NSUnderlineStyleAttributeName};

    Styles()
    {
        NSMutableParagraphStyle paragraph;
        paragraph.lineSpacing = 3;
        standard = {{NSFontAttributeName, 15}, {NSForegroundColorAttributeName, 1}};
        standard.insert(NSParagraphStyleAttributeName, paragraph.copy());
        for (int number = 0; number < 8; ++number) {
            constructs.push_back({{{kConstructName, number}, {NSFontAttributeName, 16 + number}, {kGuardName, 1}},
                                  {{kMarkerName, 1}, {NSForegroundColorAttributeName, 2 + number}}});
        }
    }
};

/// Styles the words of a range: every fourth is a construct with a marker at both ends.
qint64 styleConstructs(NSMutableAttributedString &text, NSRange range, const Styles &styles)
{
    const QString words = text.stringInRange(range).toString();
    qint64 count = 0;
    qint64 word = 0;
    qint64 start = 0;
    for (qint64 place = 0; place < words.size(); ++place) {
        if (words.at(place) != u' ' && words.at(place) != u'\n') {
            continue;
        }
        if (++word % 4 == 0 && place - start >= 3) {
            const Style &style = styles.constructs[static_cast<size_t>(count) % styles.constructs.size()];
            text.addAttributes(style.content, {range.location + start + 1, place - start - 2});
            text.addAttributes(style.marker, {range.location + start, 1});
            text.addAttributes(style.marker, {range.location + place - 1, 1});
            ++count;
        }
        start = place + 1;
    }
    return count;
}

NSMutableAttributedString styled(const QString &string, const Styles &styles)
{
    NSMutableAttributedString text(string);
    text.addAttributes(styles.standard, text.fullRange());
    keep(styleConstructs(text, text.fullRange(), styles));
    return text;
}

std::vector<NSMutableAttributedString::Replacement> attachments(const NSAttributedString &text, const Styles &styles)
{
    std::vector<NSMutableAttributedString::Replacement> replacements;
    qint64 line = 0;
    for (NSRange paragraph; paragraph.limit() < text.length();) {
        paragraph = text.paragraphRangeForRange({paragraph.limit(), 0});
        if (++line % 2 == 0 && paragraph.length > 2) {
            const auto attachment = std::make_shared<MarkedAttachment>();
            attachment->representedText = text.stringInRange({paragraph.location, 1}).toString();
            AttributeSet attributes = styles.standard;
            attributes.insert(NSAttachmentAttributeName, attachment);
            replacements.push_back({{paragraph.location, 1}, NSTextAttachment::placeholderString(), attributes});
        }
    }
    return replacements;
}

QString expanded(const NSAttributedString &text)
{
    QString result;
    result.reserve(text.length());
    const QStringView units = text.string();
    text.enumerateAttribute(NSAttachmentAttributeName, text.fullRange(), NSAttributedStringEnumerationOptions::Forward,
                            [&](const AttributeValue &value, NSRange range, bool *) {
                                if (const auto *attachment = value.as<MarkedAttachment>()) {
                                    result.append(attachment->representedText);
                                } else {
                                    result.append(units.sliced(range.location, range.length));
                                }
                            });
    return result;
}

/// One key: the unit goes in, its line is styled anew and read; then it is taken out again, so that the text stays.
void typeKey(NSMutableAttributedString &text, qint64 place, const Styles &styles)
{
    text.replaceCharactersInRange({place, 0}, u"x");
    const NSRange line = text.paragraphRangeForRange({place, 1});
    NSMutableAttributedString part(text.attributedSubstringFromRange(line));
    part.removeAttributes(styles.removed, part.fullRange());
    part.addAttributes(styles.standard, part.fullRange());
    keep(styleConstructs(part, part.fullRange(), styles));
    text.replaceCharactersInRange(line, part);
    text.fixAttributesInRange(line);
    text.deleteCharactersInRange({place, 1});
}

/// Lines of the generated note, cut to the lengths that people write.
QString noteOf(qsizetype units)
{
    const CorpusGenerator generator;
    QString text;
    for (qsizetype index = 0; text.size() < units; ++index) {
        text.append(generator.text(index));
    }
    text.truncate(units);
    for (qsizetype place = 300; place < text.size(); place += 300) {
        text[place] = u'\n';
    }
    return text;
}

} // namespace

int main()
{
    const Styles styles;
    const QString small = noteOf(sizeForRun(10'000, 2'000));
    const QString large = noteOf(sizeForRun(1'000'000, 20'000));
    Report report(u"a styled text of a million units"_s);

    // 1. Styling, a unit of text each.
    const auto perUnit = [](const Timing &timing, const QString &text) {
        return timing.minimum * 1e9 / static_cast<double>(text.size());
    };
    const Timing smallStyling = measure([&] { keep(styled(small, styles)); });
    const Timing largeStyling = measure([&] { keep(styled(large, styles)); });
    report.addValue(u"style, ns a unit / in the small note"_s, perUnit(largeStyling, large),
                    perUnit(smallStyling, small), 2, u"ns"_s);

    // 2. Memory, the text's own units included.
    NSMutableAttributedString smallText = styled(small, styles);
    const qint64 heapBefore = heapBytes();
    auto largeText =
        std::make_unique<NSMutableAttributedString>(styled(QString(large.constData(), large.size()), styles));
    largeText->replaceCharacters(attachments(*largeText, styles));
    report.addValue(u"bytes a unit / 40"_s,
                    static_cast<double>(heapBytes() - heapBefore) / static_cast<double>(large.size()), 40, 1, u"B"_s);
    smallText.replaceCharacters(attachments(smallText, styles));
    const auto runs = static_cast<double>(largeText->runs().runCount());
    report.addRemark(u"%1 units, %2 runs"_s.arg(large.size()).arg(runs));

    // 3. Attachments in one pass against a copy of the text.
    QString copy(large.size(), Qt::Uninitialized);
    const auto bytes = static_cast<size_t>(large.size()) * sizeof(QChar);
    const Timing memoryCopy = measure([&] {
        std::memcpy(copy.data(), large.constData(), bytes);
        keep(copy);
    });
    const auto replacements = attachments(*largeText, styles);
    const Timing placing = measure([&] { largeText->replaceCharacters(replacements); });
    report.addValue(u"place attachments, ns a run / 50"_s, placing.minimum * 1e9 / runs, 50, 1, u"ns"_s);

    // 4. Keys: where the last one was, and each at another place.
    const auto keys = [&](NSMutableAttributedString &text, bool isSpread) {
        const qint64 length = text.length();
        auto random = std::make_shared<std::mt19937>(1U);
        return measure([&text, &styles, length, random, isSpread] {
            for (int key = 0; key < 20; ++key) {
                const qint64 place =
                    isSpread ? static_cast<qint64>((*random)() % static_cast<size_t>(length)) : length / 2;
                typeKey(text, place, styles);
            }
        });
    };
    const Timing smallKeys = keys(smallText, false);
    const Timing largeKeys = keys(*largeText, false);
    report.addTime(u"20 keys in one place / in the small note"_s, largeKeys, smallKeys, 1.3);
    report.addTime(u"20 keys all over / a copy of the text each"_s, keys(*largeText, true),
                   Timing{memoryCopy.minimum * 20, memoryCopy.median * 20, memoryCopy.maximum * 20, memoryCopy.runs},
                   2);

    // 5. Reading.
    const Timing expanding = measure([&] { keep(expanded(*largeText)); });
    Timing allowed = memoryCopy;
    allowed.minimum = memoryCopy.minimum * 3 + runs * 50e-9;
    report.addTime(u"expand / three copies and 50 ns a run"_s, expanding, allowed, 1);
    const Timing reading = measure([&] { keep(largeText->string()); });
    report.addTime(u"all units / a copy of the text"_s, reading, memoryCopy, 0.1);
    return 0;
}

// Every styler paints and replaces just what its pattern says, in whole texts and in parts of them, however it finds
// it. The patterns are compiled anew here, so that no scanner and no shortcut of a styler is asked.

#include "StyledNote.h"

#include <Markup/Stylers/ExpandedText.h>
#include <Markup/Stylers/QBNoteAttachmentTextStyler.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Markup/Stylers/QBNoteTextStylerCommonAttributes.h>
#include <Markup/Syntax/QBItalicDataDetector.h>
#include <Support/TestSeed.h>
#include <Text/NSStringHelpers.h>

#include <map>

using namespace Qt::StringLiterals;
using Kind = QBNoteStylersManager::Kind;

namespace {

using Matches = QList<NSTextCheckingResult>;

/// The matches of a styler's pattern by itself.
Matches byDefinition(const QBNoteTextStyler &styler, QStringView text, NSRange range)
{
    static std::map<std::pair<QString, quint32>, std::unique_ptr<NSRegularExpression>> s_compiled;
    const NSRegularExpression &expression = *styler.regularExpression();
    auto &compiled = s_compiled[{expression.pattern(), expression.options()}];
    if (!compiled) {
        compiled = std::make_unique<NSRegularExpression>(expression.pattern(), expression.options());
    }
    return compiled->matchesInString(text, 0, range);
}

/// A styler that sets attributes: one that tells its constructs, and the parts of a match that get it.
struct Painter
{
    Kind kind;
    NSAttributeName name;
    QList<int> groups;
    /// How many units behind a part get it too.
    qint64 further = 0;
};

const std::vector<Painter> &painters()
{
    static const std::vector<Painter> all{
        {Kind::CodeBlock, QBNoteCodeTextStylerMarkerAttributeName, {1, 4}},
        {Kind::CodeBlock, QBNoteCodeTextStylerAttributeName, {2, 3}},
        {Kind::CodeInline, QBNoteCodeInlineTextStylerMarkerAttributeName, {1, 3}},
        {Kind::CodeInline, QBNoteCodeInlineTextStylerAttributeName, {2}},
        {Kind::MarkdownImage, QBMarkdownImageStylerAttributeName, {0}},
        {Kind::Quote, QBNoteQuoteTextStylerMarkerAttributeName, {1}, 1},
        {Kind::OrderedList, QBNoteOrderedListStylerMArkerAttributeName, {1}, 1},
        {Kind::Bold, QBNoteBoldTextStylerMarkerAttributeName, {1, 3}},
        {Kind::Bold, QBNoteBoldTextStylerAttributeName, {2}},
        {Kind::Underline, QBNoteUnderlineTextStylerMarkerAttributeName, {1, 3}},
        {Kind::Underline, QBNoteUnderlineTextStylerAttributeName, {2}},
        {Kind::Striked, QBNoteStrikedTextStylerMarkerAttributeName, {1, 3}},
        {Kind::Striked, QBNoteStrikedTextStylerAttributeName, {2}},
        {Kind::Wiki, QBNoteWikiTextStylerAttributeName, {0}},
        {Kind::Wiki, QBNoteWikiTextStylerMarkerAttributeName, {1, 3}},
    };
    return all;
}

QString marked(const NSAttributedString &text, const NSAttributeName &name)
{
    QString units(text.length(), u'.');
    text.enumerateAttribute(name, text.fullRange(), NSAttributedStringEnumerationOptions::Forward,
                            [&units](const quib::AttributeValue &value, NSRange run, bool *) {
                                if (value) {
                                    units.replace(run.location, run.length, QString(run.length, u'x'));
                                }
                            });
    return units;
}

QString expectedMarks(const QBNoteTextStyler &styler, const Painter &painter, const NSAttributedString &text,
                      NSRange range, int *count)
{
    QString units(text.length(), u'.');
    for (const auto &match : byDefinition(styler, text.string(), range)) {
        if (QBNoteTextStylerCommonAttributes::shouldSkipStylingInAttributedString(text, match.range())) {
            continue;
        }
        // A title that is no text has no link, and stays plain.
        if (painter.kind == Kind::Wiki && !text.stringInRange(match.rangeAtIndex(2)).isValidUtf16()) {
            continue;
        }
        ++*count;
        for (const int group : painter.groups) {
            NSRange part = match.rangeAtIndex(group);
            part.length = std::min(part.length + painter.further, text.length() - part.location);
            units.replace(part.location, part.length, QString(part.length, u'x'));
        }
    }
    return units;
}

/// How a styler of attachments changes a text, by the parts of its match.
enum class Placing
{
    InPlaceOfGroup,
    InFrontOfGroup,
    AroundMatch,
};

struct Placer
{
    Kind kind;
    int group = 1;
    Placing placing = Placing::InPlaceOfGroup;
};

const std::vector<Placer> &placers()
{
    static const std::vector<Placer> all{
        {Kind::HeaderText},
        {Kind::GenericFile, 0},
        {Kind::Image, 0},
        {Kind::LinkedNote, 2},
        {Kind::TitledURL, 2},
        {Kind::InlineArrow},
        {Kind::Checkbox},
        {Kind::UnorderedList},
        {Kind::LineSeparator},
        {Kind::Color, 1, Placing::InFrontOfGroup},
        {Kind::Tag, 0, Placing::AroundMatch},
    };
    return all;
}

QString expectedPlacing(QBNoteAttachmentTextStyler &styler, const Placer &placer, const NSAttributedString &text,
                        NSRange range, int *count)
{
    const QString attachment = NSTextAttachment::placeholderString();
    const Matches matches = byDefinition(styler, text.string(), range);
    QString string = text.string().toString();
    for (auto match = matches.rbegin(); match != matches.rend(); ++match) {
        const NSRange part = match->rangeAtIndex(placer.group);
        const bool isSkipped =
            text.attribute(QBNoteSkipAttachmentReplacementAttributeName, match->range().location).boolValue() ||
            (placer.placing == Placing::InPlaceOfGroup &&
             !styler.attributedStringWithTextAttachmentForRepresentedText(quib::expandedText(text, part)));
        if (isSkipped) {
            continue;
        }
        ++*count;
        if (placer.placing == Placing::AroundMatch) {
            string.insert(part.limit(), attachment);
        }
        const qint64 replaced = placer.placing == Placing::InPlaceOfGroup ? part.length : 0;
        string.replace(part.location, replaced, attachment);
    }
    return string;
}

/// Runs the stylers of a text one after the other and holds each against its pattern.
class Chain
{
public:
    Chain(int syntax, const QString &text, int *count)
        : m_manager(syntax)
        , m_text(text)
        , m_count(count)
    {
    }

    void run(const std::function<NSRange(qint64 length)> &partOf)
    {
        for (int i = 0; i < QBNoteStylersManager::kKindCount; ++i) {
            const auto kind = static_cast<Kind>(i);
            const auto styler = m_manager.styler(kind);
            check(kind, *styler, partOf(m_text.length()));
            check(kind, *styler, m_text.fullRange());
            // And on, as a load does.
            NSRange range = m_text.fullRange();
            if (auto *attachmentStyler = styler->attachmentStyler()) {
                attachmentStyler->addTextAttachmentsInAttributedString(m_text, range, {});
            }
            styler->applyStyleIn(m_text, range, nullptr);
        }
    }

private:
    void check(Kind kind, QBNoteTextStyler &styler, NSRange range)
    {
        const auto told = [&] {
            return "styler " + std::to_string(static_cast<int>(kind)) + " in " + std::to_string(range.location) + "+" +
                   std::to_string(range.length) + " of " + m_text.string().toString().toStdString();
        };
        for (const Placer &placer : placers()) {
            if (placer.kind == kind) {
                NSMutableAttributedString placed(m_text);
                NSRange grown = range;
                styler.attachmentStyler()->addTextAttachmentsInAttributedString(placed, grown, {});
                const QString expected = expectedPlacing(*styler.attachmentStyler(), placer, m_text, range, m_count);
                ASSERT_EQ(placed.string().toString().toStdString(), expected.toStdString()) << told();
                ASSERT_EQ(grown.length, range.length + placed.length() - m_text.length()) << told();
            }
        }
        for (const Painter &painter : painters()) {
            if (painter.kind == kind) {
                NSMutableAttributedString painted(m_text);
                NSRange same = range;
                styler.applyStyleIn(painted, same, nullptr);
                ASSERT_EQ(marked(painted, painter.name).toStdString(),
                          expectedMarks(styler, painter, m_text, range, m_count).toStdString())
                    << told() << ", " << painter.name.string().toStdString();
            }
        }
    }

    QBNoteStylersManager m_manager;
    NSMutableAttributedString m_text;
    int *m_count;
};

TEST(StylerDefinitions, HoldForWholeTextsAndForParts)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    const auto random = [&generator](qint64 bound) {
        return static_cast<qint64>(generator() % static_cast<quint64>(bound));
    };
    const int rounds = qEnvironmentVariableIsSet("QUIB_NIGHTLY") ? 50'000 : 4000;
    int count = 0;
    for (int round = 0; round < rounds && !testing::Test::HasFatalFailure(); ++round) {
        const int syntax = round % 2;
        Chain chain(syntax, quib::tests::randomMarkup(generator, 2 + static_cast<int>(random(25))), &count);
        chain.run([&](qint64 length) {
            const qint64 start = random(length + 1);
            return NSRange{start, random(length - start + 1)};
        });
    }
    // The texts must be worth the while.
    EXPECT_GT(count, 5 * rounds);
}

/// Italics in plain words: the rule, place by place, without a thought for time.
Matches plainItalics(const QString &text, NSRange range, const QStringList &markers)
{
    Matches found;
    const QStringView region = QStringView(text).sliced(range.location, range.length);
    for (qint64 start = 0; start < region.size();) {
        const NSRange line = quib::paragraphRangeForRange(region, {start, 0});
        QStringView paragraph = region.sliced(line.location, line.length);
        while (!paragraph.isEmpty() && QString(u"\n\r\u0085\u2028\u2029"_s).contains(paragraph.back())) {
            paragraph.chop(1);
        }
        const auto isDigit = [&](qint64 place) {
            return place >= 0 && place < paragraph.size() && paragraph[place].isDigit();
        };
        const auto isBlank = [&](qint64 place) {
            return place >= 0 && place < paragraph.size() && quib::isWhitespace(paragraph[place].unicode());
        };
        for (const QString &marker : markers) {
            qint64 from = 0;
            for (qint64 open = 0; open < paragraph.size(); ++open) {
                if (open < from || paragraph[open] != marker[0] || isDigit(open - 1) || isBlank(open + 1)) {
                    continue;
                }
                qint64 close = open + 1;
                while (close < paragraph.size() &&
                       (paragraph[close] != marker[0] || isBlank(close - 1) || isDigit(close + 1))) {
                    ++close;
                }
                if (close == paragraph.size()) {
                    break;
                }
                const qint64 at = range.location + line.location;
                found.append(NSTextCheckingResult({{at + open, close + 1 - open},
                                                   {at + open, 1},
                                                   {at + open + 1, close - open - 1},
                                                   {at + close, 1}}));
                from = close + 1;
            }
        }
        start = line.limit();
    }
    return found;
}

TEST(StylerDefinitions, ItalicsAreThoseOfThePlainRule)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    const QString units = u"**//__ab 1 \t\n\r\u2028\u00A0٣"_s;
    int count = 0;
    for (int round = 0; round < 20'000; ++round) {
        QString text;
        for (auto length = generator() % 30; length > 0; --length) {
            text += units[static_cast<qsizetype>(generator() % static_cast<quint64>(units.size()))];
        }
        const auto start = static_cast<qint64>(generator() % static_cast<quint64>(text.size() + 1));
        const NSRange part{start, static_cast<qint64>(generator() % static_cast<quint64>(text.size() - start + 1))};
        for (const QStringList &markers : {QStringList{u"/"_s}, QStringList{u"*"_s, u"_"_s}}) {
            const QBItalicDataDetector detector(markers, markers);
            for (const NSRange range : {part, NSRange{0, text.size()}}) {
                const Matches expected = plainItalics(text, range, markers);
                count += static_cast<int>(expected.size());
                ASSERT_EQ(detector.matchesInString(text, 0, range), expected)
                    << range.location << "+" << range.length << " of " << text.toStdString();
            }
        }
    }
    EXPECT_GT(count, 10'000);
}

} // namespace

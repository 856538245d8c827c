#include "StyledBlocks.h"

#include <Graphics/GraphicsAttributes.h>
#include <Markup/Attachments/QBNotesTextAttachment.h>
#include <Markup/Stylers/QBNoteAttachmentTextStyler.h>
#include <Markup/Stylers/QBNoteCheckBoxMarkdownStyler.h>
#include <Markup/Stylers/QBNoteCodeTextStyler.h>
#include <Markup/Stylers/QBNoteHeaderTextStyler.h>
#include <Markup/Stylers/QBNoteImageStyler.h>
#include <Markup/Stylers/QBNoteLineSeparatorMarkdownStyler.h>
#include <Markup/Stylers/QBNoteNormalTextStyler.h>
#include <Markup/Stylers/QBNoteOrderedListTextStyler.h>
#include <Markup/Stylers/QBNoteQuoteTextStyler.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Markup/Stylers/QBNoteUnorderedListMarkdownStyler.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QStringList>

#include <functional>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

struct NamedAttribute
{
    QString word;
    NSAttributeName name;
};

const QList<NamedAttribute> &namedAttributes()
{
    static const QList<NamedAttribute> names{
        {u"code"_s, QBNoteCodeTextStylerAttributeName},
        {u"codeMarker"_s, QBNoteCodeTextStylerMarkerAttributeName},
        {u"codeBackground"_s, QBNoteCodeTextStylerBackgroundAttributeName},
        {u"language"_s, QBNoteCodeTextStylerLanguageAttributeName},
        {u"header"_s, QBHeaderTextStylerAttributeName},
        {u"headerMarker"_s, QBHeaderTextStylerMarkerAttributeName},
        {u"box"_s, QBNoteCheckboxStylerAttributeName},
        {u"boxMarker"_s, QBNoteCheckboxStylerMarkerAttributeName},
        {u"checked"_s, QBNoteCheckboxStylerCheckedAttributeName},
        {u"list"_s, QBNoteUnorderedListStylerAttributeName},
        {u"listMarker"_s, QBNoteUnorderedListStylerMarkerAttributeName},
        {u"number"_s, QBNoteOrderedListTextStylerAttributeName},
        {u"numberMarker"_s, QBNoteOrderedListStylerMArkerAttributeName},
        {u"quote"_s, QBNoteQuoteTextStylerAttributeName},
        {u"quoteMarker"_s, QBNoteQuoteTextStylerMarkerAttributeName},
        {u"separator"_s, QBNoteLineSeparatorStylerAttributeName},
        {u"separatorMarker"_s, QBNoteLineSeparatorStylerMarkerAttributeName},
        {u"strike"_s, NSStrikethroughStyleAttributeName},
        {u"kern"_s, NSKernAttributeName},
        {u"noStyling"_s, QBNoteSkipStylingAttributeName},
        {u"noAttachment"_s, QBNoteSkipAttachmentReplacementAttributeName},
        {u"noLineBreak"_s, QBNoteSkipLineBreakByWordAttributeName},
        {u"noSpelling"_s, QBNoteSkipSpellCheckerAttributeName},
        {u"noHyphenation"_s, QBNoteSkipHyphenationAttributeName},
        {u"noInsertion"_s, QBNotePreventInsertionInRangeAttributeName},
        {u"noDeletion"_s, QBNotePreventDeletionInRangeAttributeName},
        {u"fullSelection"_s, QBNoteFullSelectionRangeAttributeName},
        {u"link"_s, NSLinkAttributeName},
        {u"underline"_s, NSUnderlineStyleAttributeName},
        {u"baseline"_s, NSBaselineOffsetAttributeName},
        {u"background"_s, NSBackgroundColorAttributeName},
    };
    return names;
}

QString runInWords(NSRange run)
{
    return u"%1+%2"_s.arg(run.location).arg(run.length);
}

/// The runs of an attribute that have a word, as "word 0+1, word 3+2".
QString runsInWords(const NSAttributedString &text, const NSAttributeName &name,
                    const std::function<QString(const AttributeValue &value)> &word)
{
    QStringList words;
    text.enumerateAttribute(name, text.fullRange(), NSAttributedStringEnumerationOptions::Forward,
                            [&](const AttributeValue &value, NSRange run, bool * /*stop*/) {
                                if (const QString found = word(value); !found.isEmpty()) {
                                    words.append(QString(found % u' ' % runInWords(run)));
                                }
                            });
    return words.join(u", "_s);
}

QList<std::shared_ptr<QBNoteTextStyler>> blockStylers(int syntax)
{
    QList<std::shared_ptr<QBNoteTextStyler>> stylers{
        std::make_shared<QBNoteNormalTextStyler>(), std::make_shared<QBNoteCodeTextStyler>(),
        std::make_shared<QBNoteHeaderTextStyler>(), std::make_shared<QBNoteGenericFileStyler>(),
        std::make_shared<QBNoteImageStyler>(),
    };
    if (syntax == 1) {
        stylers << std::make_shared<QBNoteCheckBoxMarkdownStyler>()
                << std::make_shared<QBNoteUnorderedListMarkdownStyler>()
                << std::make_shared<QBNoteLineSeparatorMarkdownStyler>();
    } else {
        stylers << std::make_shared<QBNoteCheckBoxStyler>() << std::make_shared<QBNoteUnorderedListStyler>()
                << std::make_shared<QBNoteLineSeparatorStyler>();
    }
    stylers << std::make_shared<QBNoteOrderedListTextStyler>() << std::make_shared<QBNoteQuoteTextStyler>();
    return stylers;
}

} // namespace

std::shared_ptr<QBNotesTextThemeManager> blockTheme()
{
    auto theme = std::make_shared<QBTheme>();
    int shade = 10;
    for (const auto &key : {u"Base Text Color"_s, u"Light Text Color"_s, u"Title Text Color"_s, u"Accent Text Color"_s,
                            u"Style Marker Text Color"_s, u"Code Font Color"_s, u"Syntax Keyword"_s}) {
        theme->addThemeItem(std::make_shared<QBThemeItem>(key, u"rgba(%1, 0, 0, 1.00)"_s.arg(shade += 10), u"color"_s));
    }
    const auto addNumber = [&theme](const QString &key, double number) {
        theme->addThemeItem(std::make_shared<QBThemeItem>(key, number, u"number"_s));
    };
    addNumber(u"Base Text Size"_s, 10);
    addNumber(u"H1 Font Size Multiplier"_s, 3);
    addNumber(u"H2 Font Size Multiplier"_s, 2.5);
    addNumber(u"H3 Font Size Multiplier"_s, 2);
    addNumber(u"Monospace Font Adjust"_s, -1);
    auto manager = std::make_shared<QBNotesTextThemeManager>();
    manager->loadTheme(theme);
    return manager;
}

StyledBlocks::StyledBlocks(int syntax, Theme theme)
    : StyledBlocks(blockStylers(syntax), theme == Theme::Plain ? blockTheme() : nullptr)
{
}

StyledBlocks::StyledBlocks(QList<std::shared_ptr<QBNoteTextStyler>> stylers,
                           std::shared_ptr<QBNotesTextThemeManager> themeManager)
    : m_themeManager(std::move(themeManager))
    , m_stylers(std::move(stylers))
{
    for (const auto &styler : std::as_const(m_stylers)) {
        styler->setThemeManager(m_themeManager);
    }
}

void StyledBlocks::load(const QString &text)
{
    m_text = NSMutableAttributedString(text);
    NSRange range = m_text.fullRange();
    for (const auto &styler : std::as_const(m_stylers)) {
        if (auto *attachmentStyler = styler->attachmentStyler()) {
            attachmentStyler->addTextAttachmentsInAttributedString(m_text, range, {});
        }
        styler->applyStyleIn(m_text, range, nullptr);
    }
    m_text.fixAttributesInRange(range);
}

void StyledBlocks::edit(NSRange range, const QString &string)
{
    m_text.replaceCharactersInRange(range, NSAttributedString(string));
    // A line end that comes or goes also changes the line behind.
    restyle({range.location, string.size() + (range.location + string.size() < m_text.length() ? 1 : 0)});
}

void StyledBlocks::restyle(NSRange range)
{
    NSRange lines = m_text.paragraphRangeForRange(range);
    style(lines);
    m_text.fixAttributesInRange(lines);
}

void StyledBlocks::style(NSRange &range)
{
    QList<std::shared_ptr<QBNoteTextStyler>> pending = m_stylers;
    while (!pending.isEmpty()) {
        const auto styler = pending.takeFirst();
        bool isChanged = false;
        if (auto *attachmentStyler = styler->attachmentStyler()) {
            attachmentStyler->replaceTextAttachmentsInAttributedString(
                m_text, range,
                [&](NSRange /*range*/, const auto & /*replacement*/, bool * /*stop*/) { isChanged = true; });
        }
        styler->styleTextInAttributedString(m_text, range, nullptr);
        // A bullet that gave way to a todo's brackets leaves them to the boxes.
        if (isChanged && dynamic_cast<QBNoteUnorderedListMarkdownStyler *>(styler.get()) != nullptr) {
            for (const auto &other : std::as_const(m_stylers)) {
                if (dynamic_cast<QBNoteCheckBoxMarkdownStyler *>(other.get()) != nullptr && !pending.contains(other)) {
                    pending.append(other);
                }
            }
        }
    }
}

QString StyledBlocks::withAttachments(const QString &before, const QString &behind) const
{
    QString result = m_text.string().toString();
    m_text.enumerateAttribute(
        NSAttachmentAttributeName, m_text.fullRange(), NSAttributedStringEnumerationOptions::Reverse,
        [&](const AttributeValue &value, NSRange run, bool * /*stop*/) {
            if (const auto *attachment = value.as<QBNotesTextAttachment>()) {
                result.replace(run.location, run.length, QString(before % attachment->representedText() % behind));
            }
        });
    return result;
}

QString StyledBlocks::expanded() const
{
    return withAttachments({}, {});
}

QString StyledBlocks::shown() const
{
    return withAttachments(u"«"_s, u"»"_s);
}

QString StyledBlocks::runs(const NSAttributeName &name) const
{
    QStringList words;
    m_text.enumerateAttribute(name, m_text.fullRange(), NSAttributedStringEnumerationOptions::Forward,
                              [&](const AttributeValue &value, NSRange run, bool * /*stop*/) {
                                  if (value) {
                                      words.append(runInWords(run));
                                  }
                              });
    return words.join(u' ');
}

QString StyledBlocks::marks() const
{
    QStringList words;
    for (const NamedAttribute &attribute : namedAttributes()) {
        if (const QString found = runs(attribute.name); !found.isEmpty()) {
            words.append(QString(attribute.word % u' ' % found));
        }
    }
    return words.join(u", "_s);
}

QString StyledBlocks::colours() const
{
    return runsInWords(m_text, NSForegroundColorAttributeName, [this](const AttributeValue &value) {
        const NSColor *const colour = colorOfAttribute(value);
        if (colour == nullptr || *colour == m_themeManager->baseTextColor()) {
            return QString();
        }
        if (*colour == NSColor::clearColor()) {
            return u"clear"_s;
        }
        for (const auto &item : m_themeManager->currentTheme()->themeItems()) {
            if (item->kind() != u"color"_s || *item->color() != colour->colorWithAlphaComponent(1)) {
                continue;
            }
            return colour->isOpaque() ? item->key() : u"%1@%2"_s.arg(item->key()).arg(colour->alphaComponent());
        }
        return colour->rgbaString();
    });
}

QString StyledBlocks::fonts() const
{
    return runsInWords(m_text, NSFontAttributeName, [this](const AttributeValue &value) {
        const NSFont *const font = fontOfAttribute(value);
        if (font == nullptr || *font == m_themeManager->paragraphFont()) {
            return QString();
        }
        return *font == m_themeManager->h1Font()          ? u"h1"_s
               : *font == m_themeManager->h2Font()        ? u"h2"_s
               : *font == m_themeManager->h3Font()        ? u"h3"_s
               : *font == m_themeManager->h4OrMoreFont()  ? u"h4"_s
               : *font == m_themeManager->monospaceFont() ? u"mono"_s
                                                          : font->fontName();
    });
}

const NSParagraphStyle &StyledBlocks::paragraphStyleAt(qint64 place) const
{
    return *m_text.attribute(NSParagraphStyleAttributeName, place).as<NSParagraphStyle>();
}

QString StyledBlocks::description() const
{
    QString words = QString(shown() % u'\n' % marks());
    if (m_themeManager) {
        words.append(QString(u'\n' % colours() % u'\n' % fonts() % u'\n'));
        words.append(runsInWords(m_text, NSParagraphStyleAttributeName, [](const AttributeValue &value) {
            const auto *style = value.as<NSParagraphStyle>();
            return style == nullptr ? QString()
                                    : u"%1/%2/%3"_s.arg(style->firstLineHeadIndent())
                                          .arg(style->headIndent())
                                          .arg(style->paragraphSpacing());
        }));
    }
    return words;
}

} // namespace quib::tests

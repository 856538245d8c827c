#include "StyledInline.h"

#include <Graphics/GraphicsAttributes.h>
#include <Markup/Attachments/QBAddressTextAttachment.h>
#include <Markup/Attachments/QBArrowTextAttachment.h>
#include <Markup/Attachments/QBColorTextAttachment.h>
#include <Markup/Attachments/QBLinkedNoteTextAttachment.h>
#include <Markup/Attachments/QBSpacerTextAttachment.h>
#include <Markup/Stylers/QBNoteAttachmentTextStyler.h>
#include <Markup/Stylers/QBNoteBoldTextMarkdownStyler.h>
#include <Markup/Stylers/QBNoteCodeInlineTextStyler.h>
#include <Markup/Stylers/QBNoteCodeTextStyler.h>
#include <Markup/Stylers/QBNoteColorStyler.h>
#include <Markup/Stylers/QBNoteHeaderTextStyler.h>
#include <Markup/Stylers/QBNoteImageMarkdownStyler.h>
#include <Markup/Stylers/QBNoteInlineArrowStyler.h>
#include <Markup/Stylers/QBNoteInvalidCharacterStyler.h>
#include <Markup/Stylers/QBNoteItalicTextMarkdownStyler.h>
#include <Markup/Stylers/QBNoteLinkedNoteStyler.h>
#include <Markup/Stylers/QBNoteMarkerTextStyler.h>
#include <Markup/Stylers/QBNoteNormalTextStyler.h>
#include <Markup/Stylers/QBNoteStrikedTextMarkdownStyler.h>
#include <Markup/Stylers/QBNoteTagStyler.h>
#include <Markup/Stylers/QBNoteURLStyler.h>
#include <Markup/Stylers/QBNoteUnderlineTextMarkdownStyler.h>
#include <Markup/Stylers/QBNoteWikiTextStyler.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

using Stylers = QList<std::shared_ptr<QBNoteTextStyler>>;

template <typename Native, typename Markdown> std::shared_ptr<QBNoteTextStyler> ofSyntax(int syntax)
{
    if (syntax == 1) {
        return std::make_shared<Markdown>();
    }
    return std::make_shared<Native>();
}

Stylers inlineStylers(int syntax)
{
    return {
        std::make_shared<QBNoteNormalTextStyler>(),
        std::make_shared<QBNoteCodeTextStyler>(),
        std::make_shared<QBNoteCodeInlineTextStyler>(),
        std::make_shared<QBNoteHeaderTextStyler>(),
        std::make_shared<QBNoteMarkerTextStyler>(),
        std::make_shared<QBNoteImageMarkdownStyler>(),
        std::make_shared<QBNoteLinkedNoteStyler>(),
        std::make_shared<QBNoteTitledUrlStyler>(),
        std::make_shared<QBNoteInlineArrowStyler>(),
        std::make_shared<QBNoteColorStyler>(),
        std::make_shared<QBNoteTagStyler>(),
        std::make_shared<QBNoteURLStyler>(),
        ofSyntax<QBNoteBoldTextStyler, QBNoteBoldTextMarkdownStyler>(syntax),
        ofSyntax<QBNoteItalicTextStyler, QBNoteItalicTextMarkdownStyler>(syntax),
        ofSyntax<QBNoteUnderlineTextStyler, QBNoteUnderlineTextMarkdownStyler>(syntax),
        ofSyntax<QBNoteStrikedTextStyler, QBNoteStrikedTextMarkdownStyler>(syntax),
        std::make_shared<QBNoteInvalidCharacterStyler>(),
        std::make_shared<QBNoteWikiTextStyler>(),
    };
}

/// One unit an attachment, so that places stay what they are.
QString sign(const NSTextAttachment &attachment)
{
    if (dynamic_cast<const QBSpacerTextAttachment *>(&attachment) != nullptr) {
        return u"¦"_s;
    }
    if (const auto *arrow = dynamic_cast<const QBArrowTextAttachment *>(&attachment)) {
        return arrow->isFlipped() ? u"←"_s : u"→"_s;
    }
    if (dynamic_cast<const QBColorTextAttachment *>(&attachment) != nullptr) {
        return u"■"_s;
    }
    if (dynamic_cast<const QBLinkedNoteTextAttachment *>(&attachment) != nullptr) {
        return u"¶"_s;
    }
    if (dynamic_cast<const QBTitledURLTextAttachment *>(&attachment) != nullptr) {
        return u"§"_s;
    }
    return dynamic_cast<const QBAddressTextAttachment *>(&attachment) != nullptr ? u"!"_s : u"@"_s;
}

QString withAttachments(const NSAttributedString &text, const std::function<QString(const NSTextAttachment &)> &words)
{
    QString result = text.string().toString();
    text.enumerateAttribute(NSAttachmentAttributeName, text.fullRange(), NSAttributedStringEnumerationOptions::Reverse,
                            [&](const AttributeValue &value, NSRange run, bool * /*stop*/) {
                                if (const auto *attachment = value.as<NSTextAttachment>()) {
                                    result.replace(run.location, run.length, words(*attachment));
                                }
                            });
    return result;
}

} // namespace

std::shared_ptr<QBNotesTextThemeManager> inlineTheme()
{
    auto theme = std::make_shared<QBTheme>();
    int shade = 10;
    for (const auto &key :
         {u"Base Text Color"_s, u"Light Text Color"_s, u"Link Text Color"_s, u"Hashtag Text Color"_s,
          u"Hashtag Marker Text Color"_s, u"Accent Text Color"_s, u"Style Marker Text Color"_s, u"Map Text Color"_s,
          u"Invalid Character Color"_s, u"Code Font Color"_s, u"Highlighter Marker Color"_s}) {
        theme->addThemeItem(std::make_shared<QBThemeItem>(key, u"rgba(%1, 0, 0, 1.00)"_s.arg(shade += 10), u"color"_s));
    }
    theme->addThemeItem(std::make_shared<QBThemeItem>(u"Base Text Size"_s, 20.0, u"number"_s));
    theme->addThemeItem(std::make_shared<QBThemeItem>(u"Monospace Font Adjust"_s, -1.0, u"number"_s));
    auto manager = std::make_shared<QBNotesTextThemeManager>();
    manager->loadTheme(theme);
    return manager;
}

StyledInline::StyledInline(int syntax, Theme theme)
    : StyledInline(inlineStylers(syntax), theme)
{
}

StyledInline::StyledInline(Stylers stylers, Theme theme)
    : m_theme(theme == Theme::Plain ? inlineTheme() : nullptr)
    , m_stylers(std::move(stylers))
{
    for (const auto &styler : std::as_const(m_stylers)) {
        styler->setThemeManager(m_theme);
    }
}

void StyledInline::load(const QString &text)
{
    m_text = NSMutableAttributedString(text);
    NSRange range = m_text.fullRange();
    for (const auto &styler : std::as_const(m_stylers)) {
        if (auto *attachmentStyler = styler->attachmentStyler()) {
            attachmentStyler->addTextAttachmentsInAttributedString(m_text, range, {});
        }
        styler->applyStyleIn(m_text, range, nullptr);
    }
}

void StyledInline::restyle()
{
    NSRange range = m_text.fullRange();
    for (const auto &styler : std::as_const(m_stylers)) {
        if (auto *attachmentStyler = styler->attachmentStyler()) {
            attachmentStyler->replaceTextAttachmentsInAttributedString(m_text, range, {});
        }
        styler->styleTextInAttributedString(m_text, range, nullptr);
    }
    // The range must have become all of the text.
    if (range != m_text.fullRange()) {
        m_text.setAttributedString(NSAttributedString(u"the range was lost"_s));
    }
}

void StyledInline::edit(QString old, const QString &withString)
{
    old.replace(u'@', NSTextAttachment::placeholderString());
    const qint64 place = m_text.string().indexOf(old);
    m_text.replaceCharactersInRange({place, old.size()}, NSAttributedString(withString));
    restyle();
}

QString StyledInline::expanded() const
{
    return withAttachments(m_text, [](const NSTextAttachment &attachment) {
        return dynamic_cast<const QBNotesTextAttachment &>(attachment).representedText();
    });
}

QString StyledInline::shown() const
{
    return withAttachments(m_text, sign);
}

QString StyledInline::marked(const NSAttributeName &name) const
{
    QString words = shown();
    m_text.enumerateAttribute(name, m_text.fullRange(), NSAttributedStringEnumerationOptions::Reverse,
                              [&](const AttributeValue &value, NSRange run, bool * /*stop*/) {
                                  if (value) {
                                      words.insert(run.limit(), u'}').insert(run.location, u'{');
                                  }
                              });
    return words;
}

QString StyledInline::marked(const NSAttributeName &name, const AttributeValue &value) const
{
    StyledInline other(Stylers(), Theme::None);
    other.m_text = m_text;
    m_text.enumerateAttribute(name, m_text.fullRange(), NSAttributedStringEnumerationOptions::Forward,
                              [&](const AttributeValue &found, NSRange run, bool * /*stop*/) {
                                  if (found != value) {
                                      other.m_text.removeAttribute(name, run);
                                  }
                              });
    return other.marked(name);
}

QString StyledInline::coloured(const std::optional<NSColor> &color) const
{
    return marked(NSForegroundColorAttributeName, attributeValue(color.value_or(NSColor::clearColor())));
}

QString StyledInline::marks() const
{
    static const QList<NSAttributeName> names{
        QBNoteSkipStylingAttributeName,
        QBNoteSkipAttachmentReplacementAttributeName,
        QBNoteSkipHyphenationAttributeName,
        QBNoteSkipLineBreakByWordAttributeName,
        QBNoteSkipSpellCheckerAttributeName,
        QBNoteFullSelectionRangeAttributeName,
        QBNoteBoldTextStylerAttributeName,
        QBNoteBoldTextStylerMarkerAttributeName,
        QBNoteItalicTextStylerAttributeName,
        QBNoteItalicTextStylerMarkerAttributeName,
        QBNoteUnderlineTextStylerAttributeName,
        QBNoteUnderlineTextStylerMarkerAttributeName,
        QBNoteStrikedTextStylerAttributeName,
        QBNoteStrikedTextStylerMarkerAttributeName,
        QBNoteHighlighterTextStylerAttributeName,
        QBNoteHighlighterTextStylerMarkerAttributeName,
        QBNoteHighlighterTextStylerBackgroundAttributeName,
        QBNoteCodeInlineTextStylerAttributeName,
        QBNoteCodeInlineTextStylerMarkerAttributeName,
        QBNoteCodeInlineTextStylerBackgroundAttributeName,
        QBNoteTagStylerAttributeName,
        QBNoteTagStylerMarkerAttributeName,
        QBNoteTagSpacerAttributeName,
        QBNoteURLTextStylerAttributeName,
        QBTitledUrlStylerAttributeName,
        QBNoteWikiTextStylerAttributeName,
        QBNoteWikiTextStylerMarkerAttributeName,
        QBNoteColorStylerAttributeName,
        QBMarkdownImageStylerAttributeName,
        QBMarkdownImageStylerAttributeMarker,
        QBMarkdownImageStylerAttributeAlt,
        QBMarkdownImageStylerAttributeUrl,
        QBMarkdownImageStylerAttributeTitle,
        NSLinkAttributeName,
        NSUnderlineStyleAttributeName,
        NSStrikethroughStyleAttributeName,
        NSStrikethroughColorAttributeName,
    };
    QString words = shown();
    for (const NSAttributeName &name : names) {
        const QString found = marked(name);
        if (found != shown()) {
            words += QString(u'\n' % name.string() % u": " % found);
        }
    }
    return words;
}

AttributeValue StyledInline::valueAt(const NSAttributeName &name, const QString &place) const
{
    return m_text.attribute(name, shown().indexOf(place));
}

} // namespace quib::tests

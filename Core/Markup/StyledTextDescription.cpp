#include "StyledTextDescription.h"

#include <Graphics/GraphicsAttributes.h>
#include <Markup/Attachments/QBNotesTextAttachment.h>
#include <Text/NSParagraphStyle.h>
#include <Themes/QBNotesTextThemeManager.h>
#include <Themes/QBTheme.h>

#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Hundredths are enough of a length in points.
double rounded(double length)
{
    return std::round(length * 100) / 100;
}

/// What differs from the theme's own paragraphs.
QJsonValue paragraphStyleInWords(const NSParagraphStyle &style, const NSParagraphStyle *usual)
{
    static const NSParagraphStyle none{NSMutableParagraphStyle()};
    const NSParagraphStyle &base = usual != nullptr ? *usual : none;
    using Length = double (NSParagraphStyle::*)() const;
    static constexpr std::array<std::pair<QLatin1StringView, Length>, 9> kLengths{{
        {"minimumLineHeight"_L1, &NSParagraphStyle::minimumLineHeight},
        {"maximumLineHeight"_L1, &NSParagraphStyle::maximumLineHeight},
        {"lineSpacing"_L1, &NSParagraphStyle::lineSpacing},
        {"paragraphSpacing"_L1, &NSParagraphStyle::paragraphSpacing},
        {"paragraphSpacingBefore"_L1, &NSParagraphStyle::paragraphSpacingBefore},
        {"headIndent"_L1, &NSParagraphStyle::headIndent},
        {"firstLineHeadIndent"_L1, &NSParagraphStyle::firstLineHeadIndent},
        {"tailIndent"_L1, &NSParagraphStyle::tailIndent},
        {"defaultTabInterval"_L1, &NSParagraphStyle::defaultTabInterval},
    }};
    QJsonObject words;
    for (const auto &[name, length] : kLengths) {
        if ((style.*length)() != (base.*length)()) {
            words.insert(name, rounded((style.*length)()));
        }
    }
    if (style.tabStops() != base.tabStops()) {
        QJsonArray stops;
        for (const NSTextTab &stop : style.tabStops()) {
            stops.append(rounded(stop.location));
        }
        words.insert("tabStops"_L1, stops);
    }
    return words.isEmpty() ? QJsonValue(u"default"_s) : QJsonValue(words);
}

} // namespace

StyledTextDescription::StyledTextDescription(std::shared_ptr<QBNotesTextThemeManager> themeManager)
    : m_themeManager(std::move(themeManager))
{
}

QJsonArray StyledTextDescription::attachmentsOfText(const NSAttributedString &text)
{
    QJsonArray attachments;
    text.enumerateAttribute(NSAttachmentAttributeName, text.fullRange(), NSAttributedStringEnumerationOptions::Forward,
                            [&attachments](const AttributeValue &value, NSRange range, bool * /*stop*/) {
                                if (const auto *attachment = value.as<QBNotesTextAttachment>()) {
                                    attachments.append(QJsonObject{
                                        {u"location"_s, range.location},
                                        {u"class"_s, attachment->className()},
                                        {u"representedText"_s, attachment->representedText()},
                                    });
                                }
                            });
    return attachments;
}

QJsonArray StyledTextDescription::runsOfText(const NSAttributedString &text) const
{
    QJsonArray runs;
    NSRange place;
    QJsonObject words;
    const auto finish = [&] {
        if (place.length > 0) {
            runs.append(
                QJsonObject{{u"location"_s, place.location}, {u"length"_s, place.length}, {u"attributes"_s, words}});
        }
    };
    text.enumerateAttributesInRange(text.fullRange(), NSAttributedStringEnumerationOptions::Forward,
                                    [&](const AttributeSet &attributes, NSRange range, bool * /*stop*/) {
                                        QJsonObject here;
                                        for (const NSAttributeName &name : attributes.allNames()) {
                                            here.insert(name.string(), valueInWords(attributes.value(name)));
                                        }
                                        // Each attachment is a run of its own, equal words or not.
                                        if (place.length > 0 && here == words &&
                                            !attributes.contains(NSAttachmentAttributeName)) {
                                            place.length += range.length;
                                            return;
                                        }
                                        finish();
                                        place = range;
                                        words = here;
                                    });
    finish();
    return runs;
}

QJsonValue StyledTextDescription::valueInWords(const AttributeValue &value) const
{
    if (value.isInteger()) {
        return value.integerValue();
    }
    if (value.isNumber()) {
        return rounded(value.doubleValue());
    }
    if (value.isString()) {
        return value.stringValue();
    }
    if (value.isUrl()) {
        return value.urlValue().toString(QUrl::FullyEncoded);
    }
    if (const auto *color = colorOfAttribute(value)) {
        return colorInWords(*color);
    }
    if (const auto *font = fontOfAttribute(value)) {
        return fontInWords(*font);
    }
    if (const auto *style = value.as<NSParagraphStyle>()) {
        const auto usual = m_themeManager->defaultParagraphStyle();
        return paragraphStyleInWords(*style, usual.get());
    }
    if (const auto *attachment = value.as<QBNotesTextAttachment>()) {
        return attachment->className();
    }
    return QJsonValue();
}

QString StyledTextDescription::colorInWords(const NSColor &color) const
{
    const auto &theme = m_themeManager->currentTheme();
    if (theme) {
        for (const auto &item : theme->themeItems()) {
            if (item->kind() == u"color"_s && !item->key().startsWith(u'$') &&
                theme->colorForKey(item->key()) == color) {
                return item->key();
            }
        }
    }
    return color.rgbaString();
}

QString StyledTextDescription::fontInWords(const NSFont &font) const
{
    const std::array<std::pair<QString, NSFont>, 8> fonts{{
        {u"Paragraph Font"_s, m_themeManager->paragraphFont()},
        {u"Paragraph Font, bold"_s, m_themeManager->paragraphBoldFont()},
        {u"Paragraph Font, italic"_s, m_themeManager->paragraphItalicFont()},
        {u"Monospace Font"_s, m_themeManager->monospaceFont()},
        {u"Title Font, H1"_s, m_themeManager->h1Font()},
        {u"Title Font, H2"_s, m_themeManager->h2Font()},
        {u"Title Font, H3"_s, m_themeManager->h3Font()},
        {u"Title Font"_s, m_themeManager->h4OrMoreFont()},
    }};
    const auto found =
        std::find_if(fonts.begin(), fonts.end(), [&](const auto &named) { return named.second == font; });
    return found != fonts.end() ? found->first : QString(font.fontName() % u' ' % QString::number(font.pointSize()));
}

} // namespace quib

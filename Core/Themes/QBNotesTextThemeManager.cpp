#include "QBNotesTextThemeManager.h"

#include "QBNotesThemesManager.h"

#include <Graphics/GraphicsAttributes.h>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;
using quib::AttributeSet;
using quib::AttributeValue;

namespace {

// What stands for numbers that a theme lacks, or that are out of reason. Sizes end where those of fonts do.
constexpr double kLeastSize = 1;
constexpr double kLargestSize = 4096;
constexpr double kPlainSize = 16;
constexpr double kLargestMultiplier = 100;
constexpr double kPlainLineHeight = 1.5;
constexpr double kLargestLineWidth = 1'000'000;
constexpr double kPlainLineWidth = 40;
constexpr double kLeastHeaderMultiplier = 0.1;

/// How much of a line's height stands below a header, by level from 2; levels above 3 share the last. Below level 1
/// there is a whole one.
constexpr double kHeaderSpacings[] = {0.75, 0.5, 0.25};
constexpr int kTabStops = 12;

} // namespace

void QBNotesTextThemeManager::loadDefaultTheme()
{
    loadTheme(QBNotesThemesManager::textThemeForThemeName(QBNotesThemesManager::defaultTextThemeName(),
                                                          QBNotesThemesManager::defaultFontThemeName()));
}

// Colours

std::optional<NSColor> QBNotesTextThemeManager::baseTextColor() const
{
    return colorForKey(u"Base Text Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::backgroundTextColor() const
{
    return colorForKey(u"Background Text Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::insertionPointColor() const
{
    return colorForKey(u"Insertion Point Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::seletedTextBackgroundColor() const
{
    return colorForKey(u"Selected Text Background Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::seletedTextInactiveBackgroundColor() const
{
    return colorForKey(u"Selected Text Inactive Background Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::lightTextColor() const
{
    return colorForKey(u"Light Text Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::titleTextColor() const
{
    return colorForKey(u"Title Text Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::linkTextColor() const
{
    return colorForKey(u"Link Text Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::hashTextColor() const
{
    return colorForKey(u"Hashtag Text Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::hashMarkerTextColor() const
{
    return colorForKey(u"Hashtag Marker Text Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::hashBackgroundColor() const
{
    return colorForKey(u"Hashtag Background Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::hashSelectedBackgroundColor() const
{
    return colorForKey(u"Hashtag Selected Background Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::separatorTextColor() const
{
    return colorForKey(u"Separator Text Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::accentTextColor() const
{
    return colorForKey(u"Accent Text Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::styleMarkerTextColor() const
{
    return colorForKey(u"Style Marker Text Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::mapTextColor() const
{
    return colorForKey(u"Map Text Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::invalidCharacterColor() const
{
    return colorForKey(u"Invalid Character Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::checkboxFillColor() const
{
    return colorForKey(u"Checkbox Fill Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::checkboxStrokeColor() const
{
    return colorForKey(u"Checkbox Stroke Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::checkboxCheckColor() const
{
    return colorForKey(u"Checkbox Check Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::codeBackgroundColor() const
{
    return colorForKey(u"Code Background Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::codeStrokeColor() const
{
    return colorForKey(u"Code Stroke Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::codeFontColor() const
{
    return colorForKey(u"Code Font Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::highlighterBackgroundColor() const
{
    return colorForKey(u"Highlighter Background Color"_s);
}

std::optional<NSColor> QBNotesTextThemeManager::highlighterMarkerColor() const
{
    return colorForKey(u"Highlighter Marker Color"_s);
}

// Sizes

double QBNotesTextThemeManager::number(const QString &key, double least, double most, double fallback) const
{
    const std::optional<double> number = numberForKey(key);
    return number && *number >= least && *number <= most ? *number : fallback;
}

void QBNotesTextThemeManager::setNumber(const QString &key, double number)
{
    const std::shared_ptr<QBTheme> &theme = currentTheme();
    if (theme == nullptr) {
        return;
    }
    if (const std::shared_ptr<QBThemeItem> item = theme->themeItemForKey(key)) {
        item->setValue(number);
        theme->updateItemProxyValue(*item);
    } else {
        theme->addThemeItem(std::make_shared<QBThemeItem>(key, number, u"number"_s));
    }
    emptyCache();
}

double QBNotesTextThemeManager::baseFontSize() const
{
    return m_zoomedBaseFontSize > 0 ? m_zoomedBaseFontSize
                                    : number(u"Base Text Size"_s, kLeastSize, kLargestSize, kPlainSize);
}

void QBNotesTextThemeManager::setBaseFontSize(double size)
{
    m_zoomedBaseFontSize = 0;
    setNumber(u"Base Text Size"_s, size);
    emptyCache(); // the zoom ends without a theme, too
}

void QBNotesTextThemeManager::setZoomedBaseFontSize(double size)
{
    m_zoomedBaseFontSize = size > 0 ? std::min(size, kLargestSize) : 0.0; // no number is no size either
    emptyCache();
    styleRegisteredStylableObjects();
}

double QBNotesTextThemeManager::lineHeightMultiplier() const
{
    return number(u"Line Height Multiplier"_s, 0, kLargestMultiplier, kPlainLineHeight);
}

void QBNotesTextThemeManager::setLineHeightMultiplier(double multiplier)
{
    setNumber(u"Line Height Multiplier"_s, multiplier);
}

double QBNotesTextThemeManager::lineWidthMultiplier() const
{
    return number(u"Line Width Multiplier"_s, 1, kLargestLineWidth, kPlainLineWidth);
}

void QBNotesTextThemeManager::setLineWidthMultiplier(double multiplier)
{
    setNumber(u"Line Width Multiplier"_s, multiplier);
}

double QBNotesTextThemeManager::paragraphSpacingMultiplier() const
{
    return number(u"Paragraph Spacing Multiplier"_s, 0, kLargestMultiplier, 0);
}

void QBNotesTextThemeManager::setParagraphSpacingMultiplier(double multiplier)
{
    setNumber(u"Paragraph Spacing Multiplier"_s, multiplier);
}

double QBNotesTextThemeManager::h1FontSize() const
{
    return baseFontSize() * number(u"H1 Font Size Multiplier"_s, kLeastHeaderMultiplier, kLargestMultiplier, 1.6);
}

double QBNotesTextThemeManager::h2FontSize() const
{
    return baseFontSize() * number(u"H2 Font Size Multiplier"_s, kLeastHeaderMultiplier, kLargestMultiplier, 1.35);
}

double QBNotesTextThemeManager::h3FontSize() const
{
    return baseFontSize() * number(u"H3 Font Size Multiplier"_s, kLeastHeaderMultiplier, kLargestMultiplier, 1.15);
}

double QBNotesTextThemeManager::monospaceFontSize() const
{
    return baseFontSize() + number(u"Monospace Font Adjust"_s, -kLargestSize, kLargestSize, 0);
}

// Metrics

double QBNotesTextThemeManager::paragraphLineHeight() const
{
    return themeCache().value(u"paragraphLineHeight"_s,
                              [this] { return std::round(baseFontSize() * lineHeightMultiplier()); });
}

double QBNotesTextThemeManager::paragraphLineSpacing() const
{
    return themeCache().value(u"paragraphLineSpacing"_s, [this] {
        const NSFont font = paragraphFont();
        return std::round(paragraphLineHeight() - (font.ascender() + std::abs(font.descender())));
    });
}

double QBNotesTextThemeManager::paragraphSpacing() const
{
    return std::ceil(baseFontSize() * paragraphSpacingMultiplier());
}

double QBNotesTextThemeManager::textColumnTopBottomInset() const
{
    return std::max(34.0, std::ceil(baseFontSize() * 2.5));
}

double QBNotesTextThemeManager::textColumnLeftRightInset() const
{
    return std::max(24.0, std::ceil(baseFontSize() * 1.5));
}

double QBNotesTextThemeManager::textColumnMaxSize() const
{
    return std::ceil(baseFontSize() * lineWidthMultiplier());
}

double QBNotesTextThemeManager::basePointSizeForCurrentBaseFontSize() const
{
    return themeCache().value(u"basePointSizeForCurrentBaseFontSize"_s,
                              [this] { return std::ceil(paragraphFontXHeight() * 0.1); });
}

// Fonts

NSFont QBNotesTextThemeManager::titleFontOfSize(double size) const
{
    const std::optional<NSFont> font =
        currentTheme() ? currentTheme()->fontForKeyIfAny(u"Title Font"_s, size) : std::nullopt;
    return font ? *font : NSFont::boldSystemFontOfSize(size);
}

NSFont QBNotesTextThemeManager::paragraphFontOfSize(double size) const
{
    return fontForKey(u"Paragraph Font"_s, size);
}

NSFont QBNotesTextThemeManager::monospaceFontOfSize(double size) const
{
    return fontForKey(u"Monospace Font"_s, size);
}

NSFont QBNotesTextThemeManager::h1Font() const
{
    return themeCache().value(u"h1Font"_s, [this] { return titleFontOfSize(h1FontSize()); });
}

NSFont QBNotesTextThemeManager::h2Font() const
{
    return themeCache().value(u"h2Font"_s, [this] { return titleFontOfSize(h2FontSize()); });
}

NSFont QBNotesTextThemeManager::h3Font() const
{
    return themeCache().value(u"h3Font"_s, [this] { return titleFontOfSize(h3FontSize()); });
}

NSFont QBNotesTextThemeManager::h4OrMoreFont() const
{
    return themeCache().value(u"h4OrMoreFont"_s, [this] { return titleFontOfSize(paragraphFontSize()); });
}

NSFont QBNotesTextThemeManager::paragraphFont() const
{
    return themeCache().value(u"paragraphFont"_s, [this] { return paragraphFontOfSize(paragraphFontSize()); });
}

NSFont QBNotesTextThemeManager::paragraphBoldFont() const
{
    return themeCache().value(u"paragraphBoldFont"_s, [this] {
        const NSFont font = paragraphFont();
        return NSFont::fontWithFamily(font.familyName(), {.isBold = true}, font.pointSize()).value_or(font);
    });
}

NSFont QBNotesTextThemeManager::paragraphItalicFont() const
{
    return themeCache().value(u"paragraphItalicFont"_s, [this] {
        const NSFont font = paragraphFont();
        return NSFont::fontWithFamily(font.familyName(), {.isItalic = true}, font.pointSize()).value_or(font);
    });
}

NSFont QBNotesTextThemeManager::monospaceFont() const
{
    return themeCache().value(u"monospaceFont"_s, [this] { return monospaceFontOfSize(monospaceFontSize()); });
}

AttributeValue QBNotesTextThemeManager::paragraphFontAttribute() const
{
    return themeCache().value(u"paragraphFontAttribute"_s, [this] { return quib::attributeValue(paragraphFont()); });
}

AttributeValue QBNotesTextThemeManager::paragraphBoldFontAttribute() const
{
    return themeCache().value(u"paragraphBoldFontAttribute"_s,
                              [this] { return quib::attributeValue(paragraphBoldFont()); });
}

AttributeValue QBNotesTextThemeManager::paragraphItalicFontAttribute() const
{
    return themeCache().value(u"paragraphItalicFontAttribute"_s,
                              [this] { return quib::attributeValue(paragraphItalicFont()); });
}

AttributeValue QBNotesTextThemeManager::monospaceFontAttribute() const
{
    return themeCache().value(u"monospaceFontAttribute"_s, [this] { return quib::attributeValue(monospaceFont()); });
}

// Text attributes

QList<NSTextTab> QBNotesTextThemeManager::defaultParagraphTabStops() const
{
    QList<NSTextTab> stops;
    for (int number = 1; number <= kTabStops; ++number) {
        stops.append(NSTextTab{.location = paragraphTabLenght() * number});
    }
    return stops;
}

std::shared_ptr<NSParagraphStyle> QBNotesTextThemeManager::defaultParagraphStyle() const
{
    return themeCache().value(u"defaultParagraphStyle"_s, [this] {
        NSMutableParagraphStyle style;
        style.minimumLineHeight = paragraphLineHeight();
        style.lineSpacing = paragraphLineSpacing();
        style.paragraphSpacing = paragraphSpacing();
        style.headIndent = paragraphHeadIndent();
        style.firstLineHeadIndent = paragraphHeadIndent();
        style.tailIndent = paragraphTailIndent();
        style.tabStops = defaultParagraphTabStops();
        style.defaultTabInterval = paragraphTabLenght();
        return style.copy();
    });
}

AttributeSet QBNotesTextThemeManager::textAttributes(const NSFont &font, const QString &colorKey,
                                                     double paragraphSpacing) const
{
    NSMutableParagraphStyle style = defaultParagraphStyle()->mutableCopy();
    style.paragraphSpacing = paragraphSpacing;
    AttributeSet attributes{{NSFontAttributeName, quib::attributeValue(font)},
                            {NSParagraphStyleAttributeName, style.copy()}};
    if (const AttributeValue color = colorAttributeForKey(colorKey)) {
        attributes.insert(NSForegroundColorAttributeName, color);
    }
    return attributes;
}

double QBNotesTextThemeManager::headerParagraphSpacing(double shareOfLineHeight) const
{
    return std::max(std::ceil(paragraphLineHeight() * shareOfLineHeight), paragraphSpacing());
}

AttributeSet QBNotesTextThemeManager::defaultTextAttributes() const
{
    return themeCache().value(u"defaultTextAttributes"_s, [this] {
        return textAttributes(paragraphFont(), u"Base Text Color"_s, paragraphSpacing());
    });
}

AttributeSet QBNotesTextThemeManager::defaultAttachmentAttributes() const
{
    // Those of text: a line does not change when it is styled again as a line of text is.
    return defaultTextAttributes();
}

AttributeSet QBNotesTextThemeManager::h1TextAttributes() const
{
    return themeCache().value(u"h1TextAttributes"_s, [this] {
        return textAttributes(h1Font(), u"Title Text Color"_s, paragraphLineHeight());
    });
}

AttributeSet QBNotesTextThemeManager::h2TextAttributes() const
{
    return themeCache().value(u"h2TextAttributes"_s, [this] {
        return textAttributes(h2Font(), u"Title Text Color"_s, headerParagraphSpacing(kHeaderSpacings[0]));
    });
}

AttributeSet QBNotesTextThemeManager::h3TextAttributes() const
{
    return themeCache().value(u"h3TextAttributes"_s, [this] {
        return textAttributes(h3Font(), u"Title Text Color"_s, headerParagraphSpacing(kHeaderSpacings[1]));
    });
}

AttributeSet QBNotesTextThemeManager::h4OrMoreTextAttributes() const
{
    return themeCache().value(u"h4OrMoreTextAttributes"_s, [this] {
        return textAttributes(h4OrMoreFont(), u"Title Text Color"_s, headerParagraphSpacing(kHeaderSpacings[2]));
    });
}

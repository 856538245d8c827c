#pragma once

#include "QBThemeManager.h"

#include <Text/AttributeSet.h>
#include <Text/NSParagraphStyle.h>

/// The colours, fonts, metrics and text attributes of the editor. One a text stack. Where the theme lacks a number, or
/// it is out of reason, a plain one stands for it, so that text can always be read.
/// Units: points. Queue: one at a time; in the program the main one.
class QBNotesTextThemeManager : public QBThemeManager
{
public:
    /// The theme before any is chosen.
    void loadDefaultTheme();

    // Colours; nullopt where the theme has none. Their names, misspelt or not, are part of the interface.

    [[nodiscard]] std::optional<NSColor> baseTextColor() const;
    [[nodiscard]] std::optional<NSColor> backgroundTextColor() const;
    [[nodiscard]] std::optional<NSColor> insertionPointColor() const;
    [[nodiscard]] std::optional<NSColor> seletedTextBackgroundColor() const;
    [[nodiscard]] std::optional<NSColor> seletedTextInactiveBackgroundColor() const;
    [[nodiscard]] std::optional<NSColor> lightTextColor() const;
    [[nodiscard]] std::optional<NSColor> titleTextColor() const;
    [[nodiscard]] std::optional<NSColor> linkTextColor() const;
    [[nodiscard]] std::optional<NSColor> hashTextColor() const;
    [[nodiscard]] std::optional<NSColor> hashMarkerTextColor() const;
    [[nodiscard]] std::optional<NSColor> hashBackgroundColor() const;
    [[nodiscard]] std::optional<NSColor> hashSelectedBackgroundColor() const;
    [[nodiscard]] std::optional<NSColor> separatorTextColor() const;
    [[nodiscard]] std::optional<NSColor> accentTextColor() const;
    [[nodiscard]] std::optional<NSColor> styleMarkerTextColor() const;
    [[nodiscard]] std::optional<NSColor> mapTextColor() const;
    [[nodiscard]] std::optional<NSColor> invalidCharacterColor() const;
    [[nodiscard]] std::optional<NSColor> checkboxFillColor() const;
    [[nodiscard]] std::optional<NSColor> checkboxStrokeColor() const;
    [[nodiscard]] std::optional<NSColor> checkboxCheckColor() const;
    [[nodiscard]] std::optional<NSColor> codeBackgroundColor() const;
    [[nodiscard]] std::optional<NSColor> codeStrokeColor() const;
    [[nodiscard]] std::optional<NSColor> codeFontColor() const;
    [[nodiscard]] std::optional<NSColor> highlighterBackgroundColor() const;
    [[nodiscard]] std::optional<NSColor> highlighterMarkerColor() const;

    // Sizes

    /// zoomedBaseFontSize where it is not 0, otherwise the theme's.
    [[nodiscard]] double baseFontSize() const;
    /// Writes the theme's number and ends a zoom. Who sets it, or one of the multipliers, restyles afterwards.
    void setBaseFontSize(double size);
    /// 0 when not zoomed.
    [[nodiscard]] double zoomedBaseFontSize() const { return m_zoomedBaseFontSize; }
    /// Empties the cache and restyles. What is no size (negative, not finite) ends the zoom, as 0 does.
    void setZoomedBaseFontSize(double size);
    [[nodiscard]] double lineHeightMultiplier() const;
    void setLineHeightMultiplier(double multiplier);
    [[nodiscard]] double lineWidthMultiplier() const;
    void setLineWidthMultiplier(double multiplier);
    [[nodiscard]] double paragraphSpacingMultiplier() const;
    void setParagraphSpacingMultiplier(double multiplier);

    [[nodiscard]] double paragraphFontSize() const { return baseFontSize(); }
    [[nodiscard]] double h1FontSize() const;
    [[nodiscard]] double h2FontSize() const;
    [[nodiscard]] double h3FontSize() const;
    [[nodiscard]] double monospaceFontSize() const;

    // Metrics

    [[nodiscard]] double paragraphLineHeight() const;
    [[nodiscard]] double paragraphLineSpacing() const;
    [[nodiscard]] double paragraphSpacing() const;
    [[nodiscard]] double paragraphHeadIndent() const { return baseFontSize() * 2; }
    /// Negative: counted from the far edge.
    [[nodiscard]] double paragraphTailIndent() const { return baseFontSize() * -2; }
    [[nodiscard]] double paragraphTabLenght() const { return paragraphHeadIndent(); }
    [[nodiscard]] double textColumnTopBottomInset() const;
    [[nodiscard]] double textColumnLeftRightInset() const;
    [[nodiscard]] double textColumnMaxSize() const;
    [[nodiscard]] double fullLineAttachmentDefaultRightSpacing() const { return baseFontSize() * 0.3; }
    [[nodiscard]] double basePointSizeForCurrentBaseFontSize() const;
    [[nodiscard]] double paragraphFontAscender() const { return paragraphFont().ascender(); }
    /// Negative.
    [[nodiscard]] double paragraphFontDescender() const { return paragraphFont().descender(); }
    [[nodiscard]] double paragraphFontXHeight() const { return paragraphFont().xHeight(); }

    // Fonts

    [[nodiscard]] NSFont titleFontOfSize(double size) const;
    [[nodiscard]] NSFont paragraphFontOfSize(double size) const;
    [[nodiscard]] NSFont monospaceFontOfSize(double size) const;
    [[nodiscard]] NSFont h1Font() const;
    [[nodiscard]] NSFont h2Font() const;
    [[nodiscard]] NSFont h3Font() const;
    [[nodiscard]] NSFont h4OrMoreFont() const;
    [[nodiscard]] NSFont paragraphFont() const;
    /// The paragraph font itself where its family has no bold face; so with the next.
    [[nodiscard]] NSFont paragraphBoldFont() const;
    [[nodiscard]] NSFont paragraphItalicFont() const;
    [[nodiscard]] NSFont monospaceFont() const;
    /// The fonts as values of text attributes, kept in the cache.
    [[nodiscard]] quib::AttributeValue paragraphFontAttribute() const;
    [[nodiscard]] quib::AttributeValue paragraphBoldFontAttribute() const;
    [[nodiscard]] quib::AttributeValue paragraphItalicFontAttribute() const;
    [[nodiscard]] quib::AttributeValue monospaceFontAttribute() const;

    // Text attributes, kept in the cache: font, foreground colour, paragraph style

    [[nodiscard]] std::shared_ptr<NSParagraphStyle> defaultParagraphStyle() const;
    /// Left-aligned stops at the first multiples of paragraphTabLenght, so that the first is where the column begins.
    [[nodiscard]] QList<NSTextTab> defaultParagraphTabStops() const;
    [[nodiscard]] quib::AttributeSet defaultTextAttributes() const;
    /// Those of an attachment that has a line of its own.
    [[nodiscard]] quib::AttributeSet defaultAttachmentAttributes() const;
    [[nodiscard]] quib::AttributeSet h1TextAttributes() const;
    [[nodiscard]] quib::AttributeSet h2TextAttributes() const;
    [[nodiscard]] quib::AttributeSet h3TextAttributes() const;
    [[nodiscard]] quib::AttributeSet h4OrMoreTextAttributes() const;

private:
    [[nodiscard]] quib::AttributeSet textAttributes(const NSFont &font, const QString &colorKey,
                                                    double paragraphSpacing) const;
    /// Never less than below other text.
    [[nodiscard]] double headerParagraphSpacing(double shareOfLineHeight) const;
    /// The theme's number where it is one of the range, otherwise the fallback.
    [[nodiscard]] double number(const QString &key, double least, double most, double fallback) const;
    void setNumber(const QString &key, double number);

    double m_zoomedBaseFontSize = 0;
};

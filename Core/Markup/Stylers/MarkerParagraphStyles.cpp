#include "MarkerParagraphStyles.h"

#include <Graphics/GraphicsAttributes.h>
#include <Markup/Attachments/QBNotesTextAttachment.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>
#include <cmath>

namespace quib {

namespace {

// What a marker and an indentation are measured in. Units: points.
constexpr double kMarkerBoxWidth = 100;
constexpr double kIndentationBoxWidth = 1000;

/// Long texts are measured in pieces, since most are wider than the box long before their end. Units: UTF-16 units.
constexpr qsizetype kPiece = 512;

/// Adds the pieces of a line one after the other.
class LineWidth
{
public:
    LineWidth(double tabLength, double boxWidth)
        : m_tabLength(tabLength)
        , m_boxWidth(boxWidth)
    {
    }

    [[nodiscard]] bool isFull() const { return m_width >= m_boxWidth; }
    [[nodiscard]] double width() const { return std::min(m_width, m_boxWidth); }
    void add(double width) { m_width += width; }
    void addText(QStringView text, const NSFont &font, double kern)
    {
        while (!text.isEmpty() && !isFull()) {
            if (text.front() == u'\t') {
                m_width = m_tabLength > 0 ? (std::floor(m_width / m_tabLength) + 1) * m_tabLength : m_width;
                text = text.sliced(1);
                continue;
            }
            const qsizetype tab = text.indexOf(u'\t');
            const qsizetype length = std::min(tab < 0 ? text.size() : tab, kPiece);
            m_width += font.advanceOfText(text.first(length)) + kern * static_cast<double>(length);
            text = text.sliced(length);
        }
    }

private:
    double m_tabLength;
    double m_boxWidth;
    double m_width = 0;
};

} // namespace

double widthOfText(const NSAttributedString &text, NSRange range, const QBNotesTextThemeManager &themeManager,
                   double boxWidth)
{
    LineWidth line(themeManager.paragraphTabLenght(), boxWidth);
    text.enumerateAttributesInRange(
        range, NSAttributedStringEnumerationOptions::Forward,
        [&](const AttributeSet &attributes, NSRange run, bool *stop) {
            const double kern = attributes.value(NSKernAttributeName).doubleValue();
            if (const auto *attachment = attributes.value(NSAttachmentAttributeName).as<QBNotesTextAttachment>()) {
                line.add(attachment->cachedAttachmentSize().width() + kern);
            } else {
                const AttributeValue value = attributes.value(NSFontAttributeName);
                const NSFont *const font = fontOfAttribute(value);
                line.addText(text.stringInRange(run), font != nullptr ? *font : themeManager.paragraphFont(), kern);
            }
            *stop = line.isFull();
        });
    return line.width();
}

std::shared_ptr<NSParagraphStyle> MarkerParagraphStyles::attachmentParagraphStyleForAttributeRange(
    NSRange attributeRange, const NSAttributedString &attributedString, NSRange paragraphRange,
    const QBNotesTextThemeManager &themeManager)
{
    if (m_themeManager != &themeManager || m_cacheGeneration != themeManager.cacheGeneration()) {
        clear();
        m_themeManager = &themeManager;
        m_cacheGeneration = themeManager.cacheGeneration();
    }
    const NSRange indentation{paragraphRange.location, attributeRange.location - paragraphRange.location};
    const QStringView indentationText = attributedString.stringInRange(indentation);
    if (m_lastStyle != nullptr && indentationText == m_lastIndentation) {
        return m_lastStyle;
    }
    const bool isKept = indentation.length <= kLongestKeptIndentation &&
                        std::ranges::all_of(indentationText, [](QChar unit) { return unit == u' ' || unit == u'\t'; });
    const auto keep = [&](const std::shared_ptr<NSParagraphStyle> &style) {
        m_lastStyle = style;
        m_lastIndentation = attributedString.stringInRange(indentation).toString();
        return style;
    };
    const QString key = isKept ? QString(QStringLiteral("attachmentParagraphStyleCache") % indentationText) : QString();
    if (const auto *kept = isKept ? m_styles.object(key) : nullptr) {
        return keep(*kept);
    }
    const double markerWidth = widthOfText(attributedString, attributeRange, themeManager, kMarkerBoxWidth);
    const double indentationWidth = widthOfText(attributedString, indentation, themeManager, kIndentationBoxWidth);
    NSMutableParagraphStyle style = themeManager.defaultParagraphStyle()->mutableCopy();
    // A line cannot begin outside of its column.
    style.firstLineHeadIndent = std::max(themeManager.paragraphHeadIndent() - markerWidth, 0.0);
    style.headIndent = themeManager.paragraphHeadIndent() + indentationWidth;
    style.tabStops = tabStopsForAttachmentRect({markerWidth, 0}, themeManager);
    auto made = style.copy();
    if (isKept) {
        m_styles.insert(key, new std::shared_ptr<NSParagraphStyle>(made));
        return keep(made);
    }
    return made;
}

QList<NSTextTab> MarkerParagraphStyles::tabStopsForAttachmentRect(QSizeF rect,
                                                                  const QBNotesTextThemeManager &themeManager)
{
    QList<NSTextTab> stops = themeManager.defaultParagraphTabStops();
    for (NSTextTab &stop : stops) {
        stop.location -= rect.width();
    }
    stops.removeIf([](const NSTextTab &stop) { return stop.location <= 0; });
    return stops;
}

} // namespace quib

#include "ParagraphLayout.h"

#include "GraphicsAttributes.h"

#include <Text/NSAttributeName.h>
#include <Text/NSParagraphStyle.h>

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QTextCharFormat>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// The text is laid out this many times larger than it is drawn: the font library rounds sizes to whole pixels, and so
/// an eighth of a point is kept.
constexpr double kLayoutScale = 8;
constexpr double kDefaultFontSize = 12;
constexpr QChar kNoBreakSpace(u'\u00A0');

QColor colorOf(const NSColor &color)
{
    return QColor::fromRgbF(static_cast<float>(color.redComponent()), static_cast<float>(color.greenComponent()),
                            static_cast<float>(color.blueComponent()), static_cast<float>(color.alphaComponent()));
}

NSFont fontIn(const AttributeSet &attributes)
{
    const NSFont *font = fontOfAttribute(attributes.value(NSFontAttributeName));
    return font != nullptr ? *font : NSFont::systemFontOfSize(kDefaultFontSize);
}

NSColor colorIn(const AttributeSet &attributes, const NSAttributeName &name, const NSColor &otherwise)
{
    const AttributeValue value = attributes.value(name);
    const NSColor *color = colorOfAttribute(value);
    return color != nullptr ? *color : otherwise;
}

QTextOption optionOf(const NSMutableParagraphStyle &style, bool isRightToLeft)
{
    QTextOption option;
    option.setTextDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    switch (style.alignment) {
    case NSTextAlignment::Left:
        option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
        break;
    case NSTextAlignment::Right:
        option.setAlignment(Qt::AlignRight | Qt::AlignAbsolute);
        break;
    case NSTextAlignment::Center:
        option.setAlignment(Qt::AlignHCenter);
        break;
    case NSTextAlignment::Justified:
        option.setAlignment(Qt::AlignJustify);
        break;
    case NSTextAlignment::Natural:
        option.setAlignment((isRightToLeft ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute);
        break;
    }
    const bool wraps = style.lineBreakMode == NSLineBreakMode::ByWordWrapping;
    const bool wrapsAnywhere = style.lineBreakMode == NSLineBreakMode::ByCharWrapping;
    option.setWrapMode(wraps           ? QTextOption::WrapAtWordBoundaryOrAnywhere
                       : wrapsAnywhere ? QTextOption::WrapAnywhere
                                       : QTextOption::ManualWrap);
    return option;
}

/// The tab stops of a line, which count from the edge of the column, as Qt wants them: from where the line begins. Qt
/// has one list for all lines of a paragraph: tabs stand mostly in the first one, and so they are made for that.
QList<QTextOption::Tab> tabsOfLine(const NSMutableParagraphStyle &style, double indent, double width)
{
    QList<QTextOption::Tab> tabs;
    double last = 0;
    const auto add = [&](double location, QTextOption::TabType type) {
        last = std::max(last, location);
        if (location > indent) {
            tabs.append(QTextOption::Tab((location - indent) * kLayoutScale, type));
        }
    };
    for (const NSTextTab &tab : style.tabStops) {
        add(tab.location, tab.alignment == NSTextAlignment::Right    ? QTextOption::RightTab
                          : tab.alignment == NSTextAlignment::Center ? QTextOption::CenterTab
                                                                     : QTextOption::LeftTab);
    }
    // Behind the last one the usual ones go on, to the end of the line.
    constexpr double kLeastInterval = 1;
    constexpr qsizetype kMostStops = 256;
    if (style.defaultTabInterval >= kLeastInterval) {
        const double first = (std::floor(std::max(last, indent) / style.defaultTabInterval) + 1);
        for (double stop = first * style.defaultTabInterval; stop < width && tabs.size() < kMostStops;
             stop += style.defaultTabInterval) {
            add(stop, QTextOption::LeftTab);
        }
    }
    return tabs;
}

/// A stretch of the text with what Qt does not draw by itself. Units: of the whole text.
struct Decoration
{
    NSRange range;
    NSColor color;
    /// How far above the baseline a strike runs; no strike but a background where it is 0.
    double strikeHeight = 0;
    double strikeWidth = 0;
};

} // namespace

class ParagraphLayout::Layout
{
public:
    Layout(const NSAttributedString &text, NSRange range, double width, const BoxOfAttachment &boxOfAttachment)
        : m_range(rangeCutToLength(range, text.length()))
    {
        QString string = text.stringInRange(m_range).toString();
        while (!string.isEmpty() && (string.back() == u'\n' || string.back() == u'\r' || string.back() == u'\u2029')) {
            string.chop(1);
        }
        readAttributes(text, &string, boxOfAttachment);
        m_layout.setText(string);
        m_layout.setFormats(m_formats);
        breakIntoLines(width);
    }

    [[nodiscard]] std::vector<QRectF> rectsForRange(NSRange range) const
    {
        std::vector<QRectF> rects;
        for (size_t i = 0; i < lines.size(); ++i) {
            const Line &line = lines[i];
            const qint64 start = std::max(range.location, line.range.location);
            const qint64 end = std::min(range.location + range.length, line.range.location + line.range.length);
            if (start >= end) {
                continue;
            }
            const QTextLine textLine = m_layout.lineAt(static_cast<int>(i));
            double left = line.rect.right();
            double right = line.rect.left();
            for (const qint64 edge : {start, end}) {
                const double x = xOf(textLine, edge);
                left = std::min(left, x);
                right = std::max(right, x);
            }
            rects.emplace_back(left, line.rect.top(), right - left, line.rect.height());
        }
        return rects;
    }

    void drawIn(GraphicsContext &context, QPointF origin) const
    {
        const auto draw = [&](const Decoration &decoration) {
            for (const QRectF &rect : rectsForRange(decoration.range)) {
                if (decoration.strikeWidth <= 0) {
                    context.fillRect(rect.translated(origin), decoration.color);
                    continue;
                }
                const auto line = std::find_if(lines.begin(), lines.end(),
                                               [&rect](const Line &each) { return each.rect.top() == rect.top(); });
                const double y = line->baseline - decoration.strikeHeight + origin.y();
                context.strokeLine({rect.left() + origin.x(), y}, {rect.right() + origin.x(), y}, decoration.color,
                                   decoration.strikeWidth);
            }
        };
        std::for_each(m_backgrounds.begin(), m_backgrounds.end(), draw);
        QPainter &painter = context.painter();
        painter.save();
        painter.translate(origin);
        painter.scale(1 / kLayoutScale, 1 / kLayoutScale);
        m_layout.draw(&painter, QPointF(0, 0));
        painter.restore();
        std::for_each(m_strikes.begin(), m_strikes.end(), draw);
    }

    std::vector<Line> lines;
    std::vector<PlacedAttachment> attachments;
    double height = 0;

private:
    struct Box
    {
        qint64 location;
        std::shared_ptr<NSTextAttachment> attachment;
        AttachmentBox box;
    };

    void readAttributes(const NSAttributedString &text, QString *string, const BoxOfAttachment &boxOfAttachment)
    {
        const AttributeValue style = text.attribute(NSParagraphStyleAttributeName, m_range.location);
        if (const auto *paragraphStyle = style.as<NSParagraphStyle>()) {
            m_style = paragraphStyle->mutableCopy();
        }
        const AttributeSet first = text.attributesAtIndex(m_range.location);
        m_layout.setFont(fontIn(first).font(kLayoutScale));
        text.enumerateAttributesInRange(
            {m_range.location, string->size()}, NSAttributedStringEnumerationOptions::Forward,
            [&](const AttributeSet &attributes, NSRange range, bool *) {
                const auto attachment = attributes.value(NSAttachmentAttributeName).sharedAs<NSTextAttachment>();
                if (attachment == nullptr) {
                    addRun(attributes, range);
                    return;
                }
                for (qint64 location = range.location; location < range.location + range.length; ++location) {
                    addAttachment(location, attachment,
                                  boxOfAttachment ? boxOfAttachment(*attachment) : AttachmentBox(), string);
                }
            });
    }

    void addFormat(NSRange range, const QTextCharFormat &format)
    {
        QTextLayout::FormatRange run;
        run.start = static_cast<int>(range.location - m_range.location);
        run.length = static_cast<int>(range.length);
        run.format = format;
        m_formats.append(run);
    }

    void addRun(const AttributeSet &attributes, NSRange range)
    {
        const NSFont font = fontIn(attributes);
        const NSColor color = colorIn(attributes, NSForegroundColorAttributeName, NSColor::blackColor());
        QTextCharFormat format;
        format.setFont(font.font(kLayoutScale));
        format.setForeground(colorOf(color));
        const double kern = attributes.value(NSKernAttributeName).doubleValue();
        if (kern != 0) {
            format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
            format.setFontLetterSpacing(kern * kLayoutScale);
        }
        const double lift = attributes.value(NSBaselineOffsetAttributeName).doubleValue();
        if (lift != 0) {
            const QFontMetricsF metrics(format.font());
            format.setBaselineOffset(100 * lift * kLayoutScale / (metrics.ascent() + metrics.descent()));
        }
        if (attributes.value(NSUnderlineStyleAttributeName).boolValue()) {
            format.setUnderlineStyle(QTextCharFormat::SingleUnderline);
            format.setUnderlineColor(colorOf(colorIn(attributes, NSUnderlineColorAttributeName, color)));
        }
        addFormat(range, format);
        if (attributes.value(NSStrikethroughStyleAttributeName).boolValue()) {
            m_strikes.push_back({.range = range,
                                 .color = colorIn(attributes, NSStrikethroughColorAttributeName, color),
                                 .strikeHeight = font.xHeight() / 2,
                                 .strikeWidth = std::max(1.0, font.pointSize() / 16)});
        }
        if (attributes.value(NSBackgroundColorAttributeName)) {
            m_backgrounds.push_back(
                {.range = range, .color = colorIn(attributes, NSBackgroundColorAttributeName, NSColor::clearColor())});
        }
    }

    /// An attachment is laid out as a space that does not break, as wide as the attachment and next to no height.
    void addAttachment(qint64 location, std::shared_ptr<NSTextAttachment> attachment, AttachmentBox box,
                       QString *string)
    {
        (*string)[location - m_range.location] = kNoBreakSpace;
        QFont font = m_layout.font();
        font.setPixelSize(1);
        QTextCharFormat format;
        format.setFont(font);
        format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
        format.setFontLetterSpacing(std::max(0.0, box.size.width()) * kLayoutScale -
                                    QFontMetricsF(font).horizontalAdvance(kNoBreakSpace));
        addFormat({location, 1}, format);
        m_boxes.push_back({.location = location, .attachment = std::move(attachment), .box = box});
    }

    void breakIntoLines(double width)
    {
        // Indents count from the side where the writing begins.
        const bool isRightToLeft = m_layout.text().isRightToLeft();
        const double right = m_style.tailIndent > 0 ? m_style.tailIndent : width + m_style.tailIndent;
        QTextOption option = optionOf(m_style, isRightToLeft);
        option.setTabs(tabsOfLine(m_style, m_style.firstLineHeadIndent, right));
        m_layout.setTextOption(option);
        double top = m_style.paragraphSpacingBefore;
        auto nextBox = m_boxes.cbegin();
        m_layout.beginLayout();
        for (QTextLine textLine = m_layout.createLine(); textLine.isValid(); textLine = m_layout.createLine()) {
            const double left = lines.empty() ? m_style.firstLineHeadIndent : m_style.headIndent;
            textLine.setLineWidth(std::max(1.0, right - left) * kLayoutScale);
            Line line;
            line.range = {m_range.location + textLine.textStart(), textLine.textLength()};
            double ascent = textLine.ascent() / kLayoutScale;
            double descent = textLine.descent() / kLayoutScale;
            const auto firstBox = nextBox;
            for (; nextBox != m_boxes.cend() && nextBox->location < line.range.location + line.range.length;
                 ++nextBox) {
                ascent = std::max(ascent, nextBox->box.baselineOffset + nextBox->box.size.height());
                descent = std::max(descent, -nextBox->box.baselineOffset);
            }
            // A line that must be higher gets the room above the text, one that must be lower loses it there.
            double lineHeight = std::max(ascent + descent, m_style.minimumLineHeight);
            if (m_style.maximumLineHeight > 0) {
                lineHeight = std::min(lineHeight, m_style.maximumLineHeight);
            }
            line.baseline = top + lineHeight - descent;
            textLine.setPosition({(isRightToLeft ? width - right : left) * kLayoutScale,
                                  line.baseline * kLayoutScale - textLine.ascent()});
            const QRectF natural = textLine.naturalTextRect();
            line.rect = QRectF(natural.left() / kLayoutScale, top, natural.width() / kLayoutScale, lineHeight);
            for (auto box = firstBox; box != nextBox; ++box) {
                place(*box, textLine, line.baseline);
            }
            lines.push_back(line);
            top += lineHeight + m_style.lineSpacing;
        }
        m_layout.endLayout();
        height = top + m_style.paragraphSpacing;
    }

    void place(const Box &box, const QTextLine &textLine, double baseline)
    {
        const double x = std::min(xOf(textLine, box.location), xOf(textLine, box.location + 1));
        const QSizeF size = box.box.size;
        attachments.push_back({.location = box.location,
                               .attachment = box.attachment,
                               .rect = QRectF(QPointF(x, baseline - box.box.baselineOffset - size.height()), size)});
    }

    /// Where the left or right edge of a unit lies that a caret before it would stand at.
    [[nodiscard]] double xOf(const QTextLine &textLine, qint64 location) const
    {
        return textLine.cursorToX(static_cast<int>(location - m_range.location)) / kLayoutScale;
    }

    NSRange m_range;
    NSMutableParagraphStyle m_style;
    QTextLayout m_layout;
    QList<QTextLayout::FormatRange> m_formats;
    std::vector<Box> m_boxes;
    std::vector<Decoration> m_backgrounds;
    std::vector<Decoration> m_strikes;
};

ParagraphLayout::ParagraphLayout(const NSAttributedString &text, NSRange range, double width,
                                 const BoxOfAttachment &boxOfAttachment)
    : m_layout(std::make_unique<const Layout>(text, range, width, boxOfAttachment))
{
}

ParagraphLayout::~ParagraphLayout() = default;

const std::vector<ParagraphLayout::Line> &ParagraphLayout::lines() const
{
    return m_layout->lines;
}

double ParagraphLayout::height() const
{
    return m_layout->height;
}

const std::vector<ParagraphLayout::PlacedAttachment> &ParagraphLayout::attachments() const
{
    return m_layout->attachments;
}

std::vector<QRectF> ParagraphLayout::rectsForRange(NSRange range) const
{
    return m_layout->rectsForRange(range);
}

void ParagraphLayout::drawIn(GraphicsContext &context, QPointF origin) const
{
    m_layout->drawIn(context, origin);
}

} // namespace quib

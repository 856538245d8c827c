#include "ParagraphLayout.h"

#include "GraphicsAttributes.h"
#include "WritingDirection.h"

#include <Text/NSAttributeName.h>
#include <Text/NSParagraphStyle.h>
#include <Text/NSStringHelpers.h>

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>
#include <QTextCharFormat>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// The text is laid out this many times larger than it is drawn: the font library rounds sizes to whole pixels, and so
/// an eighth of a point is kept.
constexpr double kLayoutScale = 8;
constexpr double kDefaultFontSize = 12;
/// How far before what must not be broken a line may end instead. Units: UTF-16 units.
constexpr qint64 kFarthestBlank = 64;
/// Boxes that are not further apart are one. Units: points.
constexpr double kTouching = 0.05;
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

/// Whether any unit may be written from right to left; sometimes true of one that is not.
bool holdsRightToLeft(const QString &string)
{
    constexpr char16_t kFirstRightToLeft = 0x0590;
    return std::any_of(string.cbegin(), string.cend(), [](QChar unit) {
        if (unit.unicode() < kFirstRightToLeft) {
            return false;
        }
        switch (unit.direction()) {
        case QChar::DirR:
        case QChar::DirAL:
        case QChar::DirAN:
        case QChar::DirRLE:
        case QChar::DirRLO:
        case QChar::DirRLI:
            return true;
        default:
            return unit.isSurrogate();
        }
    });
}

/// Whether letters or digits of both directions stand in a text.
bool isWrittenBothWays(QStringView string)
{
    bool hasRight = false;
    bool hasLeft = false;
    for (qsizetype i = 0; i < string.size() && !(hasRight && hasLeft); ++i) {
        const bool isPair = string[i].isHighSurrogate() && i + 1 < string.size() && string[i + 1].isLowSurrogate();
        const char32_t character =
            isPair ? QChar::surrogateToUcs4(string[i], string[i + 1]) : char32_t(string[i].unicode());
        i += isPair ? 1 : 0;
        switch (QChar::direction(character)) {
        case QChar::DirR:
        case QChar::DirAL:
            hasRight = true;
            break;
        case QChar::DirL:
        case QChar::DirEN:
        case QChar::DirAN:
            hasLeft = true;
            break;
        default:
            break;
        }
    }
    return hasRight && hasLeft;
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
    Layout(const NSAttributedString &text, NSRange range, double width, const BoxOfAttachment &boxOfAttachment,
           Part part, const NSAttributeName *unbrokenBy, const Preedit *preedit)
        : m_range(rangeCutToLength(range, text.length()))
    {
        QString string = text.stringInRange(m_range).toString();
        while (!string.isEmpty() && isParagraphEnd(string.back().unicode())) {
            string.chop(1);
        }
        readAttributes(text, part, &string, boxOfAttachment);
        if (!part.isFirst) {
            m_style.paragraphSpacingBefore = 0;
            m_style.firstLineHeadIndent = m_style.headIndent;
        }
        if (!part.isLast) {
            m_style.paragraphSpacing = 0;
        }
        if (preedit != nullptr && !preedit->string.isEmpty()) {
            insertPreedit(*preedit, &string);
        }
        m_layout.setText(string);
        m_isRightToLeft = quib::isRightToLeft(string).value_or(part.isRightToLeftIfNeutral);
        m_isBidirectional = m_isRightToLeft || holdsRightToLeft(string);
        m_isMixed = m_isBidirectional && isWrittenBothWays(string);
        m_layout.setFormats(m_formats);
        if (unbrokenBy != nullptr && m_preeditLength == 0) {
            readUnbroken(text, *unbrokenBy);
        }
        breakIntoLines(width);
    }

    [[nodiscard]] std::vector<QRectF> rectsForRange(NSRange range) const
    {
        std::vector<QRectF> rects;
        for (size_t i = 0; i < lines.size(); ++i) {
            const Line &line = lines[i];
            const qint64 start = std::max(range.location, line.range.location);
            const qint64 end = std::min(range.location + range.length, line.range.location + line.range.length);
            if (start < end) {
                addRects(&rects, line, m_layout.lineAt(static_cast<int>(i)), start, end);
            }
        }
        return rects;
    }

    [[nodiscard]] size_t lineIndexOfLocation(qint64 location, bool upstream) const
    {
        const auto next = std::upper_bound(lines.begin(), lines.end(), location,
                                           [](qint64 place, const Line &line) { return place < line.range.location; });
        auto index = next == lines.begin() ? 0 : static_cast<size_t>(next - lines.begin()) - 1;
        if (upstream && index > 0 && lines[index].range.location == location) {
            --index;
        }
        return index;
    }

    [[nodiscard]] QRectF caretRect(qint64 location, bool upstream) const
    {
        size_t index = lineIndexOfLocation(location, upstream);
        int place = relative(location);
        if (m_preeditLength > 0 && location - m_range.location == m_preeditStart) {
            place = m_preeditStart + m_preeditCaret;
            index = static_cast<size_t>(m_layout.lineForTextPosition(place).lineNumber());
        }
        const Line &line = lines[index];
        const double x = m_layout.lineAt(static_cast<int>(index)).cursorToX(place) / kLayoutScale;
        return {x, line.baseline - line.ascent, 0, line.ascent + line.descent};
    }

    [[nodiscard]] qint64 locationAtX(size_t lineIndex, double x, bool *upstream) const
    {
        const Line &line = lines[lineIndex];
        const QTextLine textLine = m_layout.lineAt(static_cast<int>(lineIndex));
        const bool isLast = lineIndex + 1 == lines.size();
        const int start = textLine.textStart();
        const int end = start + textLine.textLength();
        int nearest = start;
        double distance = std::numeric_limits<double>::max();
        for (int place = start; place <= end; place = std::max(place + 1, m_layout.nextCursorPosition(place))) {
            if (place == end && !isLast && end > start && m_layout.text()[end - 1].isSpace()) {
                break; // what is behind the space that wraps is on the next line
            }
            const double away = std::abs(textLine.cursorToX(place) / kLayoutScale - x);
            if (away < distance) {
                distance = away;
                nearest = place;
            }
        }
        if (upstream != nullptr) {
            *upstream = !isLast && nearest == end && line.range.length > 0;
        }
        return locationOf(nearest);
    }

    [[nodiscard]] size_t lineIndexAtHeight(double y) const
    {
        const auto below =
            std::find_if(lines.begin(), lines.end(), [y](const Line &line) { return y < line.rect.bottom(); });
        return below == lines.end() ? lines.size() - 1 : static_cast<size_t>(below - lines.begin());
    }

    [[nodiscard]] qint64 locationAfter(qint64 location) const
    {
        return locationOf(m_layout.nextCursorPosition(relative(location)));
    }
    [[nodiscard]] qint64 locationBefore(qint64 location) const
    {
        return locationOf(m_layout.previousCursorPosition(relative(location)));
    }
    [[nodiscard]] qint64 locationLeftOf(qint64 location) const
    {
        return m_isBidirectional ? locationBeside(location, /*right=*/false)
                                 : locationOf(m_layout.leftCursorPosition(relative(location)));
    }
    [[nodiscard]] qint64 locationRightOf(qint64 location) const
    {
        return m_isBidirectional ? locationBeside(location, /*right=*/true)
                                 : locationOf(m_layout.rightCursorPosition(relative(location)));
    }
    [[nodiscard]] bool isRightToLeft() const { return m_isRightToLeft; }
    [[nodiscard]] std::optional<bool> isRightToLeftBefore(qint64 location) const
    {
        if (!m_isMixed) {
            return std::nullopt;
        }
        const int place = std::max(1, relativeEnd(location));
        const int start = m_layout.previousCursorPosition(place);
        const auto runs = m_layout.lineForTextPosition(start).glyphRuns(start, place - start);
        return runs.isEmpty() ? m_isRightToLeft : runs.first().isRightToLeft();
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
        m_layout.draw(&painter, QPointF(0, 0), {}, painter.hasClipping() ? painter.clipBoundingRect() : QRectF());
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

    void readAttributes(const NSAttributedString &text, const Part &part, QString *string,
                        const BoxOfAttachment &boxOfAttachment)
    {
        const bool isEmpty = m_range.length == 0 && part.attributesIfEmpty != nullptr;
        const AttributeSet first = isEmpty ? *part.attributesIfEmpty : text.attributesAtIndex(m_range.location);
        const AttributeValue style = first.value(NSParagraphStyleAttributeName);
        if (const auto *paragraphStyle = style.as<NSParagraphStyle>()) {
            m_style = paragraphStyle->mutableCopy();
        }
        const NSFont font = fontIn(first);
        m_fontAscent = font.ascender();
        m_fontDescent = -font.descender();
        m_layout.setFont(font.font(kLayoutScale));
        m_firstColor = colorOf(colorIn(first, NSForegroundColorAttributeName, NSColor::blackColor()));
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

    /// What stays in one line, by places of the paragraph: the start, moved back to behind a blank, and the limit.
    void readUnbroken(const NSAttributedString &text, const NSAttributeName &name)
    {
        const QStringView paragraph = m_layout.text();
        text.enumerateAttribute(name, {m_range.location, paragraph.size()},
                                NSAttributedStringEnumerationOptions::Forward,
                                [&](const AttributeValue &value, NSRange run, bool *) {
                                    if (!value) {
                                        return;
                                    }
                                    const qint64 start = run.location - m_range.location;
                                    const qint64 least = std::max<qint64>(start - kFarthestBlank, 0);
                                    const qsizetype blank = paragraph.sliced(least, start - least).lastIndexOf(u' ');
                                    if (blank >= 0) {
                                        const qint64 moved = least + blank + 1;
                                        m_unbroken.push_back({moved, run.limit() - m_range.location - moved});
                                    }
                                });
    }

    /// Ends a line before what would be broken at its end.
    void keepUnbroken(QTextLine *line, double width) const
    {
        const qint64 end = line->textStart() + line->textLength();
        const auto broken =
            std::ranges::partition_point(m_unbroken, [end](NSRange each) { return each.limit() <= end; });
        if (broken != m_unbroken.end() && broken->location < end && broken->location > line->textStart()) {
            line->setNumColumns(static_cast<int>(broken->location - line->textStart()), width);
        }
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
        const bool isRightToLeft = m_isRightToLeft;
        const double right = m_style.tailIndent > 0 ? m_style.tailIndent : width + m_style.tailIndent;
        QTextOption option = optionOf(m_style, isRightToLeft);
        option.setTabs(tabsOfLine(m_style, m_style.firstLineHeadIndent, right));
        m_layout.setTextOption(option);
        double top = m_style.paragraphSpacingBefore;
        auto nextBox = m_boxes.cbegin();
        m_layout.beginLayout();
        for (QTextLine textLine = m_layout.createLine(); textLine.isValid(); textLine = m_layout.createLine()) {
            const double left = lines.empty() ? m_style.firstLineHeadIndent : m_style.headIndent;
            const double lineWidth = std::max(1.0, right - left) * kLayoutScale;
            textLine.setLineWidth(lineWidth);
            keepUnbroken(&textLine, lineWidth);
            Line line;
            line.range.location = locationOf(textLine.textStart());
            line.range.length = locationOf(textLine.textStart() + textLine.textLength()) - line.range.location;
            double ascent = textLine.ascent() / kLayoutScale;
            double descent = textLine.descent() / kLayoutScale;
            // A line of attachments alone has next to no text; its caret is that of the paragraph's font.
            line.ascent = std::max(ascent, m_fontAscent);
            line.descent = std::max(descent, m_fontDescent);
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
        // Without its glyphs the paragraph would be shaped anew for every caret and every painting.
        m_layout.setCacheEnabled(true);
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

    /// The place whose caret is the next one on the line, whatever the directions of writing; beyond the line's edge on
    /// the line that is read before or after.
    [[nodiscard]] qint64 locationBeside(qint64 location, bool right) const
    {
        const size_t index = lineIndexOfLocation(location, /*upstream=*/false);
        const QTextLine textLine = m_layout.lineAt(static_cast<int>(index));
        const double x = xOf(textLine, location);
        const int start = textLine.textStart();
        const bool isLast = index + 1 == lines.size();
        const int end = start + textLine.textLength() - (isLast ? 0 : 1);
        std::optional<std::pair<double, int>> nearest;
        for (int place = start; place <= end; place = std::max(place + 1, m_layout.nextCursorPosition(place))) {
            const double away = (textLine.cursorToX(place) / kLayoutScale - x) * (right ? 1 : -1);
            if (away > kTouching && (!nearest || away < nearest->first)) {
                nearest = {away, place};
            }
        }
        if (nearest) {
            return locationOf(nearest->second);
        }
        if (right != m_isRightToLeft) {
            return isLast ? location : lines[index + 1].range.location;
        }
        return index == 0 ? location : locationOf(m_layout.previousCursorPosition(start));
    }

    /// A place within the paragraph as the layout counts: behind what is composed there.
    [[nodiscard]] int relative(qint64 location) const
    {
        const qint64 place =
            std::clamp<qint64>(location - m_range.location, 0, m_layout.text().size() - m_preeditLength);
        return static_cast<int>(place) + (m_preeditLength > 0 && place >= m_preeditStart ? m_preeditLength : 0);
    }
    /// The same, but before what is composed there: where a range ends.
    [[nodiscard]] int relativeEnd(qint64 location) const
    {
        return m_preeditLength > 0 && location - m_range.location == m_preeditStart ? m_preeditStart
                                                                                    : relative(location);
    }
    [[nodiscard]] qint64 locationOf(int place) const
    {
        return m_range.location + (place <= m_preeditStart ? place : std::max(m_preeditStart, place - m_preeditLength));
    }

    /// Puts what is composed into the string, and the formats around it.
    void insertPreedit(const Preedit &preedit, QString *string)
    {
        m_preeditStart = static_cast<int>(std::clamp<qint64>(preedit.location - m_range.location, 0, string->size()));
        m_preeditLength = static_cast<int>(preedit.string.size());
        m_preeditCaret = std::clamp(preedit.caret, 0, m_preeditLength);
        string->insert(m_preeditStart, preedit.string);
        QTextLayout::FormatRange composed;
        QList<QTextLayout::FormatRange> formats;
        for (QTextLayout::FormatRange run : std::as_const(m_formats)) {
            if (run.start >= m_preeditStart) {
                run.start += m_preeditLength;
            } else {
                const bool isBox = run.format.font().pixelSize() == 1;
                composed.format = isBox && composed.format.isValid() ? composed.format : run.format;
                if (run.start + run.length > m_preeditStart) {
                    QTextLayout::FormatRange behind = run;
                    behind.length = run.start + run.length - m_preeditStart;
                    behind.start = m_preeditStart + m_preeditLength;
                    run.length = m_preeditStart - run.start;
                    formats.append(behind);
                }
            }
            formats.append(run);
        }
        if (composed.format.font().pixelSize() == 1 || !composed.format.isValid()) {
            composed.format = QTextCharFormat();
            composed.format.setFont(m_layout.font());
            composed.format.setForeground(m_firstColor);
        }
        composed.start = m_preeditStart;
        composed.length = m_preeditLength;
        composed.format.setUnderlineStyle(QTextCharFormat::SingleUnderline);
        formats.append(composed);
        m_formats = formats;
    }

    /// Adds the boxes of a part of one line.
    void addRects(std::vector<QRectF> *rects, const Line &line, const QTextLine &textLine, qint64 start,
                  qint64 end) const
    {
        const auto addBox = [&](double x1, double x2) {
            rects->emplace_back(std::min(x1, x2), line.rect.top(), std::abs(x2 - x1), line.rect.height());
        };
        if (!m_isBidirectional) {
            addBox(xOf(textLine, start), textLine.cursorToX(relativeEnd(end)) / kLayoutScale);
            return;
        }
        // Character by character, since each may lie on either side of the one before; boxes that touch become one.
        std::vector<std::pair<double, double>> spans;
        for (int unit = relative(start); unit < relativeEnd(end);) {
            const int next = std::max(unit + 1, m_layout.nextCursorPosition(unit));
            spans.push_back(spanOfCharacter(textLine, unit, next));
            unit = next;
        }
        if (spans.empty()) {
            return;
        }
        std::sort(spans.begin(), spans.end());
        std::pair<double, double> box = spans.front();
        for (const auto &span : spans) {
            if (span.first > box.second + kTouching) {
                addBox(box.first, box.second);
                box = span;
            }
            box.second = std::max(box.second, span.second);
        }
        addBox(box.first, box.second);
    }

    /// From the left to the right edge of a character, wherever the direction of writing puts it.
    [[nodiscard]] std::pair<double, double> spanOfCharacter(const QTextLine &textLine, int start, int end) const
    {
        const double leading = textLine.cursorToX(start, QTextLine::Leading) / kLayoutScale;
        const double trailing = textLine.cursorToX(start, QTextLine::Trailing) / kLayoutScale;
        if (leading != trailing) {
            return {std::min(leading, trailing), std::max(leading, trailing)};
        }
        // A caret where the direction changes belongs to the character before; this one's glyphs say where it is.
        double left = std::numeric_limits<double>::max();
        double right = std::numeric_limits<double>::lowest();
        const auto runs = textLine.glyphRuns(start, end - start);
        for (const QGlyphRun &run : runs) {
            const auto positions = run.positions();
            const auto advances = run.rawFont().advancesForGlyphIndexes(run.glyphIndexes());
            for (qsizetype i = 0; i < positions.size(); ++i) {
                left = std::min(left, positions[i].x() / kLayoutScale);
                right = std::max(right, (positions[i].x() + advances[i].x()) / kLayoutScale);
            }
        }
        return left <= right ? std::pair(left, right) : std::pair(leading, leading);
    }

    /// Where the left or right edge of a unit lies that a caret before it would stand at.
    [[nodiscard]] double xOf(const QTextLine &textLine, qint64 location) const
    {
        return textLine.cursorToX(relative(location)) / kLayoutScale;
    }

    NSRange m_range;
    /// Where what is composed stands, as the layout counts, how long it is, and where its caret is.
    int m_preeditStart = 0;
    int m_preeditLength = 0;
    int m_preeditCaret = 0;
    QColor m_firstColor;
    double m_fontAscent = 0;
    double m_fontDescent = 0;
    bool m_isRightToLeft = false;
    /// Whether any unit may be written against the direction of the others.
    bool m_isBidirectional = false;
    /// Whether some are.
    bool m_isMixed = false;
    NSMutableParagraphStyle m_style;
    QTextLayout m_layout;
    QList<QTextLayout::FormatRange> m_formats;
    std::vector<Box> m_boxes;
    std::vector<NSRange> m_unbroken;
    std::vector<Decoration> m_backgrounds;
    std::vector<Decoration> m_strikes;
};

ParagraphLayout::ParagraphLayout(const NSAttributedString &text, NSRange range, double width,
                                 const BoxOfAttachment &boxOfAttachment)
    : ParagraphLayout(text, range, width, boxOfAttachment, Part())
{
}

ParagraphLayout::ParagraphLayout(const NSAttributedString &text, NSRange range, double width,
                                 const BoxOfAttachment &boxOfAttachment, Part part, const NSAttributeName *unbrokenBy,
                                 const Preedit *preedit)
    : m_layout(std::make_unique<const Layout>(text, range, width, boxOfAttachment, part, unbrokenBy, preedit))
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

size_t ParagraphLayout::lineIndexOfLocation(qint64 location, bool upstream) const
{
    return m_layout->lineIndexOfLocation(location, upstream);
}

QRectF ParagraphLayout::caretRect(qint64 location, bool upstream) const
{
    return m_layout->caretRect(location, upstream);
}

qint64 ParagraphLayout::locationAtX(size_t lineIndex, double x, bool *upstream) const
{
    return m_layout->locationAtX(lineIndex, x, upstream);
}

qint64 ParagraphLayout::locationAtPoint(QPointF point, bool *upstream) const
{
    return m_layout->locationAtX(m_layout->lineIndexAtHeight(point.y()), point.x(), upstream);
}

size_t ParagraphLayout::lineIndexAtHeight(double y) const
{
    return m_layout->lineIndexAtHeight(y);
}

qint64 ParagraphLayout::locationAfter(qint64 location) const
{
    return m_layout->locationAfter(location);
}

qint64 ParagraphLayout::locationBefore(qint64 location) const
{
    return m_layout->locationBefore(location);
}

qint64 ParagraphLayout::locationLeftOf(qint64 location) const
{
    return m_layout->locationLeftOf(location);
}

qint64 ParagraphLayout::locationRightOf(qint64 location) const
{
    return m_layout->locationRightOf(location);
}

bool ParagraphLayout::isRightToLeft() const
{
    return m_layout->isRightToLeft();
}

std::optional<bool> ParagraphLayout::isRightToLeftBefore(qint64 location) const
{
    return m_layout->isRightToLeftBefore(location);
}

void ParagraphLayout::drawIn(GraphicsContext &context, QPointF origin) const
{
    m_layout->drawIn(context, origin);
}

} // namespace quib

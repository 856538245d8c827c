#include "NotePainter.h"

#include <Graphics/GraphicsContext.h>
#include <Markup/Attachments/QBNotesTextAttachment.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Markup/Syntax/StylerSyntax.h>
#include <Text/NSAttributedString.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>
#include <optional>

namespace quib {

namespace {

/// The room around the text of a mark or a tag, and around a block of code, in parts of the base font size.
constexpr double kInlineMargin = 0.12;
constexpr double kInlinePadding = 0.06;
constexpr double kInlineRadius = 0.3;
/// Below a block only: a line's own room lies above its text.
constexpr double kBlockMargin = 0.3;
constexpr double kBlockRadius = 0.4;
constexpr double kQuoteBarWidth = 0.2;
/// How far a block that goes on is drawn beyond what is seen of it: its rounded corners lie outside.
constexpr double kBeyond = 100;

} // namespace

NotePainter::NotePainter(const NSAttributedString &text, const QBNotesTextThemeManager &themeManager, double columnLeft,
                         double columnWidth)
    : m_text(text)
    , m_themeManager(themeManager)
    , m_left(columnLeft)
    , m_width(columnWidth)
{
}

void NotePainter::drawBackground(GraphicsContext &context, std::span<const PlacedParagraph> paragraphs) const
{
    drawCodeBlocks(context, paragraphs);
    drawQuoteBars(context, paragraphs);
    for (const PlacedParagraph &paragraph : paragraphs) {
        drawInlineBackgrounds(context, paragraph);
    }
}

void NotePainter::drawText(GraphicsContext &context, std::span<const PlacedParagraph> paragraphs) const
{
    for (const PlacedParagraph &paragraph : paragraphs) {
        paragraph.layout->drawIn(context, paragraph.origin);
        for (const ParagraphLayout::PlacedAttachment &placed : paragraph.layout->attachments()) {
            if (const auto *attachment = dynamic_cast<const QBNotesTextAttachment *>(placed.attachment.get())) {
                attachment->drawAttachmentForAttachmentRect(context, placed.rect.translated(paragraph.origin));
            }
        }
    }
}

bool NotePainter::hasAttribute(const NSAttributeName &name, qint64 location) const
{
    return location >= 0 && location < m_text.length() && m_text.attribute(name, location);
}

bool NotePainter::hasText(NSRange range) const
{
    const QStringView text = m_text.stringInRange(range);
    return std::any_of(text.cbegin(), text.cend(),
                       [](QChar unit) { return unit != syntax::kAttachmentPlaceholder && !unit.isSpace(); });
}

void NotePainter::drawCodeBlocks(GraphicsContext &context, std::span<const PlacedParagraph> paragraphs) const
{
    const double size = m_themeManager.baseFontSize();
    const double left = m_left + m_themeManager.paragraphHeadIndent();
    const double right = m_left + m_width + m_themeManager.paragraphTailIndent();
    std::optional<QRectF> block;
    const auto finish = [&](double above, double below) {
        if (block) {
            const QRectF rect = block->adjusted(0, -above, 0, below);
            if (const auto color = m_themeManager.codeBackgroundColor()) {
                context.fillRoundedRect(rect, size * kBlockRadius, *color);
            }
            if (const auto color = m_themeManager.codeStrokeColor()) {
                context.strokeRoundedRect(rect, size * kBlockRadius, *color);
            }
        }
        block.reset();
    };
    double above = 0;
    for (const PlacedParagraph &paragraph : paragraphs) {
        const qint64 location = paragraph.range.location;
        const bool isInBlock = hasAttribute(QBNoteCodeTextStylerBackgroundAttributeName, location);
        const bool isFence = hasAttribute(QBNoteCodeTextStylerMarkerAttributeName, location);
        if (!isInBlock) {
            finish(above, size * kBlockMargin);
            continue;
        }
        bool goesOnAbove = false;
        if (!block) {
            // At the top of what is seen a block may have begun before; two fences in a row end one and begin one.
            goesOnAbove = &paragraph == paragraphs.data() &&
                          hasAttribute(QBNoteCodeTextStylerBackgroundAttributeName, location - 1) &&
                          !(isFence && hasAttribute(QBNoteCodeTextStylerMarkerAttributeName, location - 1));
            above = goesOnAbove ? kBeyond : 0;
        }
        const bool isContinued = block || goesOnAbove;
        const QRectF rect = paragraph.linesRect(left, std::max(0.0, right - left));
        block = block ? block->united(rect) : rect;
        // A closing fence ends its block, even where the next one begins on the next line.
        if (isContinued && isFence) {
            finish(above, size * kBlockMargin);
        }
    }
    const bool goesOnBelow = !paragraphs.empty() &&
                             hasAttribute(QBNoteCodeTextStylerBackgroundAttributeName, paragraphs.back().range.limit());
    finish(above, goesOnBelow ? kBeyond : size * kBlockMargin);
}

void NotePainter::drawQuoteBars(GraphicsContext &context, std::span<const PlacedParagraph> paragraphs) const
{
    const double size = m_themeManager.baseFontSize();
    const auto color = m_themeManager.accentTextColor();
    std::optional<QRectF> bar;
    const auto finish = [&](double below) {
        if (bar && color) {
            context.fillRoundedRect(bar->adjusted(0, 0, 0, below), size * kQuoteBarWidth / 2, *color);
        }
        bar.reset();
    };
    const double width = size * kQuoteBarWidth;
    const double left = m_left + m_themeManager.paragraphHeadIndent() - size;
    // Where the writing begins at the right, so does the quote.
    const double right = m_left + m_width - m_themeManager.paragraphHeadIndent() + size - width;
    for (const PlacedParagraph &paragraph : paragraphs) {
        const qint64 location = paragraph.range.location;
        if (paragraph.range.length == 0 || !hasAttribute(QBNoteQuoteTextStylerAttributeName, location)) {
            finish(0);
            continue;
        }
        QRectF rect = paragraph.linesRect(paragraph.layout->isRightToLeft() ? right : left, width);
        if (bar && bar->left() != rect.left()) {
            finish(0);
        }
        if (&paragraph == paragraphs.data() && hasAttribute(QBNoteQuoteTextStylerAttributeName, location - 1)) {
            rect.adjust(0, -kBeyond, 0, 0);
        }
        bar = bar ? bar->united(rect) : rect;
    }
    const bool goesOn =
        !paragraphs.empty() && hasAttribute(QBNoteQuoteTextStylerAttributeName, paragraphs.back().range.limit());
    finish(goesOn ? kBeyond : 0);
}

void NotePainter::drawInlineBackgrounds(GraphicsContext &context, const PlacedParagraph &paragraph) const
{
    const double size = m_themeManager.baseFontSize();
    // As high as the text, whatever the lines' height, and wider by the margin, but for tags: their spacers give room.
    const NSFont font = m_themeManager.paragraphFont();
    const auto drawBoxes = [&](NSRange range, double margin, const NSColor &color) {
        const bool isTag = margin == 0;
        for (const ParagraphLayout::Line &line : paragraph.layout->lines()) {
            const NSRange inText = {line.range.location + paragraph.shift, line.range.length};
            const NSRange inLine = NSIntersectionRange(range, inText);
            if (isTag && !hasText(inLine)) {
                continue; // where a tag is wrapped its spacer may be all there is of it on a line
            }
            const double baseline = paragraph.origin.y() + line.baseline;
            for (const QRectF &rect : paragraph.rectsForRange(inLine)) {
                const QRectF box(rect.left() - margin, baseline - font.ascender() - size * kInlinePadding,
                                 rect.width() + 2 * margin,
                                 font.ascender() - font.descender() + 2 * size * kInlinePadding);
                context.fillRoundedRect(box, size * kInlineRadius, color);
            }
        }
    };
    const auto fill = [&](const NSAttributeName &name, const std::optional<NSColor> &color, double margin) {
        if (!color || !m_text.containsAttribute(name, paragraph.range)) {
            return;
        }
        m_text.enumerateAttribute(name, paragraph.range, NSAttributedStringEnumerationOptions::Forward,
                                  [&](const AttributeValue &value, NSRange range, bool * /*stop*/) {
                                      if (value) {
                                          drawBoxes(range, margin, *color);
                                      }
                                  });
    };
    fill(QBNoteHighlighterTextStylerBackgroundAttributeName, m_themeManager.highlighterBackgroundColor(),
         size * kInlineMargin);
    fill(QBNoteCodeInlineTextStylerBackgroundAttributeName, m_themeManager.codeBackgroundColor(), size * kInlineMargin);
    fill(QBNoteTagStylerAttributeName, m_themeManager.hashBackgroundColor(), 0);
}

} // namespace quib

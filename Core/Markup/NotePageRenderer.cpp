#include "NotePageRenderer.h"

#include "QBNotesTextContainer.h"
#include "QBNotesTextStorage.h"

#include <Graphics/GraphicsContext.h>
#include <Graphics/ParagraphLayout.h>
#include <Markup/Attachments/QBNotesTextAttachment.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Text/NSStringHelpers.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>
#include <cmath>
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

} // namespace

struct NotePageRenderer::Paragraph
{
    NSRange range;
    double top = 0;
    std::unique_ptr<ParagraphLayout> layout;

    /// From the first line's top to the last one's foot, on the page.
    [[nodiscard]] QRectF lines(double left, double width) const
    {
        const auto &lines = layout->lines();
        const double first = lines.front().rect.top();
        return {left, top + first, width, lines.back().rect.bottom() - first};
    }
};

NotePageRenderer::NotePageRenderer(const QBNotesTextStorage &storage,
                                   std::shared_ptr<QBNotesTextThemeManager> themeManager, double width)
    : m_storage(storage)
    , m_themeManager(std::move(themeManager))
    , m_width(width)
    , m_padding(QBNotesTextContainer({width, 0}, m_themeManager).lineFragmentPadding())
{
    layOut();
}

NotePageRenderer::~NotePageRenderer() = default;

void NotePageRenderer::layOut()
{
    const NSAttributedString &text = m_storage.attributedString();
    const double inset = m_themeManager->textColumnTopBottomInset();
    const double columnWidth = std::max(1.0, m_width - 2 * m_padding);
    // A rule or a picture is no wider than the lines.
    const double lineWidth =
        std::max(1.0, columnWidth - m_themeManager->paragraphHeadIndent() + m_themeManager->paragraphTailIndent());
    const auto boxOfAttachment = [lineWidth](const NSTextAttachment &attachment) {
        const auto *placed = dynamic_cast<const QBNotesTextAttachment *>(&attachment);
        if (placed == nullptr) {
            return AttachmentBox();
        }
        const QSizeF size = placed->cachedAttachmentSize();
        return AttachmentBox{QSizeF(std::min(size.width(), lineWidth), size.height()),
                             placed->cachedAttachmentBaselineOffset()};
    };
    double top = inset;
    qint64 place = 0;
    do {
        const NSRange line = text.paragraphRangeForRange({place, 0});
        NSRange content = line;
        while (content.length > 0 && isNewline(text.characterAtIndex(content.limit() - 1))) {
            --content.length;
        }
        auto layout = std::make_unique<ParagraphLayout>(text, content, columnWidth, boxOfAttachment);
        const double height = layout->height();
        m_paragraphs.push_back({content, top, std::move(layout)});
        top += height;
        place = line.limit();
        if (line.length == 0) {
            break;
        }
    } while (place < text.length() && top < kTallestPage);
    m_height = std::min(std::ceil(top + inset), kTallestPage);
}

NSImage NotePageRenderer::image(double scale) const
{
    const NSColor paper = m_themeManager->backgroundTextColor().value_or(NSColor::whiteColor());
    GraphicsContext context({m_width, m_height}, scale, paper);
    draw(context);
    return context.image();
}

void NotePageRenderer::draw(GraphicsContext &context) const
{
    drawCodeBlocks(context);
    drawQuoteBars(context);
    for (const Paragraph &paragraph : m_paragraphs) {
        drawInlineBackgrounds(context, paragraph);
        paragraph.layout->drawIn(context, {m_padding, paragraph.top});
        drawAttachments(context, paragraph);
    }
}

void NotePageRenderer::drawCodeBlocks(GraphicsContext &context) const
{
    const NSAttributedString &text = m_storage.attributedString();
    const double size = m_themeManager->baseFontSize();
    std::optional<QRectF> block;
    const auto finish = [&] {
        if (block) {
            const QRectF rect = block->adjusted(0, 0, 0, size * kBlockMargin);
            if (const auto color = m_themeManager->codeBackgroundColor()) {
                context.fillRoundedRect(rect, size * kBlockRadius, *color);
            }
            if (const auto color = m_themeManager->codeStrokeColor()) {
                context.strokeRoundedRect(rect, size * kBlockRadius, *color);
            }
        }
        block.reset();
    };
    const double left = m_padding + m_themeManager->paragraphHeadIndent();
    const double right = m_width - m_padding + m_themeManager->paragraphTailIndent();
    for (const Paragraph &paragraph : m_paragraphs) {
        if (!text.attribute(QBNoteCodeTextStylerBackgroundAttributeName, paragraph.range.location)) {
            finish();
            continue;
        }
        const QRectF rect = paragraph.lines(left, std::max(0.0, right - left));
        block = block ? block->united(rect) : rect;
        // A closing fence ends its block, even where the next one begins on the next line.
        const bool isClosing = block->top() < paragraph.top &&
                               text.attribute(QBNoteCodeTextStylerMarkerAttributeName, paragraph.range.location);
        if (isClosing) {
            finish();
        }
    }
    finish();
}

void NotePageRenderer::drawQuoteBars(GraphicsContext &context) const
{
    const NSAttributedString &text = m_storage.attributedString();
    const double size = m_themeManager->baseFontSize();
    const auto color = m_themeManager->accentTextColor();
    std::optional<QRectF> bar;
    const auto finish = [&] {
        if (bar && color) {
            context.fillRoundedRect(*bar, size * kQuoteBarWidth / 2, *color);
        }
        bar.reset();
    };
    const double left = m_padding + m_themeManager->paragraphHeadIndent() - size;
    for (const Paragraph &paragraph : m_paragraphs) {
        const bool isQuote =
            paragraph.range.length > 0 && text.attribute(QBNoteQuoteTextStylerAttributeName, paragraph.range.location);
        if (!isQuote) {
            finish();
            continue;
        }
        const QRectF rect = paragraph.lines(left, size * kQuoteBarWidth);
        bar = bar ? bar->united(rect) : rect;
    }
    finish();
}

void NotePageRenderer::drawInlineBackgrounds(GraphicsContext &context, const Paragraph &paragraph) const
{
    const NSAttributedString &text = m_storage.attributedString();
    const double size = m_themeManager->baseFontSize();
    // As high as the text, whatever the lines' height, and wider by the margin, but for tags: their spacers give room.
    const NSFont font = m_themeManager->paragraphFont();
    const auto boxesOf = [&](NSRange range, double margin) {
        std::vector<QRectF> boxes;
        for (const ParagraphLayout::Line &line : paragraph.layout->lines()) {
            for (const QRectF &rect : paragraph.layout->rectsForRange(NSIntersectionRange(range, line.range))) {
                boxes.emplace_back(m_padding + rect.left() - margin,
                                   paragraph.top + line.baseline - font.ascender() - size * kInlinePadding,
                                   rect.width() + 2 * margin,
                                   font.ascender() - font.descender() + 2 * size * kInlinePadding);
            }
        }
        return boxes;
    };
    const auto fill = [&](const NSAttributeName &name, const std::optional<NSColor> &color, double margin) {
        if (!color) {
            return;
        }
        text.enumerateAttribute(name, paragraph.range, NSAttributedStringEnumerationOptions::Forward,
                                [&](const AttributeValue &value, NSRange range, bool * /*stop*/) {
                                    if (value) {
                                        for (const QRectF &box : boxesOf(range, margin)) {
                                            context.fillRoundedRect(box, size * kInlineRadius, *color);
                                        }
                                    }
                                });
    };
    fill(QBNoteHighlighterTextStylerBackgroundAttributeName, m_themeManager->highlighterBackgroundColor(),
         size * kInlineMargin);
    fill(QBNoteCodeInlineTextStylerBackgroundAttributeName, m_themeManager->codeBackgroundColor(),
         size * kInlineMargin);
    fill(QBNoteTagStylerAttributeName, m_themeManager->hashBackgroundColor(), 0);
}

void NotePageRenderer::drawAttachments(GraphicsContext &context, const Paragraph &paragraph) const
{
    for (const ParagraphLayout::PlacedAttachment &placed : paragraph.layout->attachments()) {
        if (const auto *attachment = dynamic_cast<const QBNotesTextAttachment *>(placed.attachment.get())) {
            attachment->drawAttachmentForAttachmentRect(context, placed.rect.translated(m_padding, paragraph.top));
        }
    }
}

} // namespace quib

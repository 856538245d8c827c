#pragma once

#include "PlacedParagraph.h"

#include <functional>
#include <memory>
#include <span>

class NSAttributedString;
class NSAttributeName;
class QBNotesTextThemeManager;

namespace quib {

class GraphicsContext;

/// Draws paragraphs of a styled note where they lie: what lies under the text (blocks of code, bars of quotes, marks,
/// tags), then the text with its attachments. Shared by the view of a note and its pictures. Lives for one drawing, on
/// the queue of the text. Units: points of the page.
class NotePainter
{
public:
    /// The text and the theme must outlive the painter. Shape: the column's left edge and its width.
    NotePainter(const NSAttributedString &text, const QBNotesTextThemeManager &themeManager, double columnLeft,
                double columnWidth);

    /// The paragraphs follow one another; blocks that go on above or below are drawn as if they reached far.
    void drawBackground(GraphicsContext &context, std::span<const PlacedParagraph> paragraphs) const;
    void drawText(GraphicsContext &context, std::span<const PlacedParagraph> paragraphs) const;

private:
    void drawCodeBlocks(GraphicsContext &context, std::span<const PlacedParagraph> paragraphs) const;
    void drawQuoteBars(GraphicsContext &context, std::span<const PlacedParagraph> paragraphs) const;
    void drawInlineBackgrounds(GraphicsContext &context, const PlacedParagraph &paragraph) const;
    /// Whether a range has more than blanks and attachments.
    [[nodiscard]] bool hasText(NSRange range) const;
    [[nodiscard]] bool hasAttribute(const NSAttributeName &name, qint64 location) const;

    const NSAttributedString &m_text;
    const QBNotesTextThemeManager &m_themeManager;
    double m_left;
    double m_width;
};

} // namespace quib

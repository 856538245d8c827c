#pragma once

#include <Graphics/ParagraphLayout.h>
#include <Text/NSAttributedString.h>

#include <memory>

class QBNotesTextThemeManager;

/// Sets the paragraphs of a note in a column: how wide attachments may be, where a very long paragraph is cut into
/// pieces that are set one by one, and how high one will about be before it is set. Owned by a layout manager, or by
/// whoever renders a page; on that one's queue. Units: points.
class QBNoteTypesetter
{
public:
    /// No piece is longer; a shorter one ends where its paragraph does.
    static constexpr qint64 kLongestPiece = 6000;

    explicit QBNoteTypesetter(std::shared_ptr<QBNotesTextThemeManager> themeManager);
    ~QBNoteTypesetter();

    [[nodiscard]] double columnWidth() const { return m_columnWidth; }
    /// At least a point.
    void setColumnWidth(double width);

    /// Where the piece that begins at a location ends: behind the line end, or in a very long paragraph behind a space
    /// or at least a character.
    [[nodiscard]] static qint64 endOfPiece(QStringView text, qint64 location);
    /// Requires: the range is a piece. Shape: what an input method composes is shown where it lies in the piece.
    [[nodiscard]] std::unique_ptr<quib::ParagraphLayout>
    layoutOfPiece(const NSAttributedString &text, NSRange range,
                  const quib::ParagraphLayout::Preedit *preedit = nullptr) const;
    /// Whether a piece goes from right to left: a paragraph without a letter that tells goes as those around it.
    [[nodiscard]] bool isRightToLeft(QStringView text, NSRange range) const;
    /// Which way a text goes that has no such letter at all.
    void setRightToLeftByDefault(bool isRightToLeft) { m_isRightToLeftByDefault = isRightToLeft; }
    [[nodiscard]] double estimatedHeight(qint64 length) const;
    /// The theme, or its sizes, are other ones.
    void themeDidChange();

private:
    std::shared_ptr<QBNotesTextThemeManager> m_themeManager;
    double m_columnWidth = 1;
    bool m_isRightToLeftByDefault = false;
    // Kept for estimates, which are made for every paragraph of a text.
    double m_characterWidth = 1;
    double m_indents = 0;
    double m_lineHeight = 1;
    double m_spacing = 0;
};

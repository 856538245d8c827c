#pragma once

#include "ParagraphIndex.h"
#include "PlacedParagraph.h"
#include "QBNoteTypesetter.h"

#include <Foundation/NSRange.h>
#include <Foundation/NotificationCenter.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QBNotesTextStorage;
class QBNotesTextThemeManager;

/// Knows where each character of a styled text lies on a page of some width, and lays out no more of it than is asked
/// for: the rest has estimated heights. It follows the storage's edits. Owned by the view of a note, on its queue; the
/// storage must outlive it.
/// Units: points from the page's top left. What is laid out may turn out higher or lower than estimated, which moves
/// what lies below.
class QBNotesLayoutManager
{
public:
    QBNotesLayoutManager(QBNotesTextStorage &storage, std::shared_ptr<QBNotesTextThemeManager> themeManager);
    ~QBNotesLayoutManager();
    QBNotesLayoutManager(const QBNotesLayoutManager &) = delete;
    QBNotesLayoutManager &operator=(const QBNotesLayoutManager &) = delete;

    // The page

    [[nodiscard]] double pageWidth() const { return m_pageWidth; }
    void setPageWidth(double width);
    /// The free room on either side of the column.
    [[nodiscard]] double columnLeft() const { return m_padding; }
    [[nodiscard]] double columnWidth() const { return m_typesetter.columnWidth(); }
    /// The free room above the text, and below it.
    [[nodiscard]] double inset() const { return m_inset; }
    /// With the insets above and below the text.
    [[nodiscard]] double height() const;
    /// Everything must be laid out again, the theme or its sizes being other ones.
    void invalidateLayout();
    /// A place must be laid out again, an attachment there having another size.
    void invalidateLayoutForRange(NSRange range);
    /// What an input method composes is shown in the line of its place; an empty string ends that.
    void setPreedit(const quib::ParagraphLayout::Preedit &preedit);
    /// Which way a text goes without a letter that tells, as an empty one.
    void setRightToLeftByDefault(bool isRightToLeft);
    /// Told after each edit of the text, with the edited range. One handler.
    void setEditHandler(std::function<void(NSRange editedRange, qint64 changeInLength)> handler)
    {
        m_editHandler = std::move(handler);
    }

    // What lies where

    /// All that touches a stretch of the page, laid out. Valid until the next call or edit.
    [[nodiscard]] std::vector<quib::PlacedParagraph> paragraphsInHeights(double top, double bottom);
    /// The paragraph, or piece, of a place, laid out; the last one at the end of the text.
    [[nodiscard]] quib::PlacedParagraph paragraphOfLocation(qint64 location);
    /// The paragraph, or piece, at a height, laid out; the first above the text, the last below it.
    [[nodiscard]] quib::PlacedParagraph paragraphAtHeight(double y);
    /// Whether the paragraph of a place need not be laid out any more.
    [[nodiscard]] bool isLaidOut(qint64 location);
    /// The top of the paragraph that holds a place, by what is known.
    [[nodiscard]] double topOfLocation(qint64 location);
    /// Where the paragraph at a height begins.
    [[nodiscard]] qint64 locationOfParagraphAtHeight(double y);

    [[nodiscard]] QRectF caretRect(qint64 location, bool upstream = false);
    [[nodiscard]] qint64 locationAtPoint(QPointF point, bool *upstream = nullptr);
    /// The attachment that is drawn at a point, with its box; nothing where there is none.
    struct AttachmentAtPoint
    {
        qint64 location = 0;
        std::shared_ptr<NSTextAttachment> attachment;
        QRectF rect;
    };
    [[nodiscard]] std::optional<AttachmentAtPoint> attachmentAtPoint(QPointF point);

    // Steps of a caret

    [[nodiscard]] qint64 locationAfter(qint64 location);
    [[nodiscard]] qint64 locationBefore(qint64 location);
    /// As the eye sees it; past the edge of a paragraph on to the next or the one before, by its direction.
    [[nodiscard]] qint64 locationLeftOf(qint64 location);
    [[nodiscard]] qint64 locationRightOf(qint64 location);
    /// The place a line higher or lower, nearest to x; the start or end of the text beyond the first and last line.
    [[nodiscard]] qint64 locationAbove(qint64 location, bool *upstream, double x);
    [[nodiscard]] qint64 locationBelow(qint64 location, bool *upstream, double x);
    /// The units of the line of a place, without its line end.
    [[nodiscard]] NSRange lineRange(qint64 location, bool upstream);
    /// Which way the character before a place is written; nothing in a paragraph of one direction.
    [[nodiscard]] std::optional<bool> isRightToLeftBefore(qint64 location);
    [[nodiscard]] bool isRightToLeft(qint64 location) { return paragraphOfLocation(location).layout->isRightToLeft(); }

private:
    void storageDidEdit(quint32 mask, NSRange editedRange, qint64 changeInLength);
    void rebuild();
    /// Paragraphs without a letter that tells go as those beside them, which may be others now.
    void redirectPiecesBeside(qint64 location);
    [[nodiscard]] qint64 locationBeside(qint64 location, bool right);
    /// Pieces for a stretch of the text that begins a piece and ends one, or the text.
    [[nodiscard]] std::vector<quib::ParagraphIndex::Piece> piecesOfRange(NSRange range) const;
    [[nodiscard]] quib::PlacedParagraph laidOut(const quib::ParagraphIndex::Place &place);

    QBNotesTextStorage &m_storage;
    std::shared_ptr<QBNotesTextThemeManager> m_themeManager;
    QBNoteTypesetter m_typesetter;
    quib::ParagraphIndex m_index;
    quib::ParagraphLayout::Preedit m_preedit;
    double m_pageWidth = 0;
    double m_padding = 0;
    double m_inset = 0;
    std::function<void(NSRange, qint64)> m_editHandler;
    quib::ObservationToken m_edits;
};

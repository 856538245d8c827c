#pragma once

#include <Graphics/ParagraphLayout.h>

#include <QtGlobal>

#include <functional>
#include <memory>
#include <vector>

namespace quib {

/// The pieces of a text from top to bottom, with their lengths and heights: finds which lies at a place of the text or
/// at a height, and keeps the layouts of those that have one. A piece is a paragraph, or a part of a very long one.
/// Takes time in step with the square root of the number of pieces. Owned by a layout manager, on its queue.
/// Units: UTF-16 units and points.
class ParagraphIndex
{
public:
    struct Piece
    {
        qint64 length = 0;
        /// Estimated until the piece is laid out.
        double height = 0;
        /// Null while it must be laid out.
        std::unique_ptr<const ParagraphLayout> layout;
        /// Where the text of the layout began when it was made; it counts its ranges from there.
        qint64 layoutLocation = 0;
        /// Another one for each layout that was made.
        quint64 layoutNumber = 0;
    };
    /// A piece where it lies. Valid until the next change.
    struct Place
    {
        size_t index = 0;
        qint64 location = 0;
        double top = 0;
        Piece *piece = nullptr;
    };

    [[nodiscard]] size_t count() const { return m_count; }
    [[nodiscard]] qint64 length() const { return m_length; }
    [[nodiscard]] double height() const { return m_height; }

    /// The piece that holds the unit at a place; the last one at the end of the text and behind it.
    /// Requires: there is a piece; so for the next two.
    [[nodiscard]] Place placeOfLocation(qint64 location);
    /// The piece at a height; the first above the text, the last below it.
    [[nodiscard]] Place placeAtHeight(double y);
    [[nodiscard]] Place placeAtIndex(size_t index);

    /// Puts other pieces in the place of some.
    void replace(size_t first, size_t count, std::vector<Piece> pieces);
    /// Gives a piece its layout; the height is the layout's own or what the piece is to have.
    void setLayout(const Place &place, std::unique_ptr<const ParagraphLayout> layout, double height);
    /// The pieces of a range of indexes must be laid out again; they keep their heights until then.
    void invalidate(size_t first, size_t count);
    /// All pieces must be laid out again, and have estimated heights until then.
    void invalidateAll(const std::function<double(qint64 length)> &estimatedHeight);
    /// Lets the layouts go but for those of a range of indexes, once there are more than a number of them.
    void forgetLayoutsOutside(size_t first, size_t count, size_t above);
    [[nodiscard]] size_t layoutCount() const { return m_layoutCount; }

private:
    struct Chunk
    {
        std::vector<Piece> pieces;
        qint64 length = 0;
        double height = 0;
    };

    void refresh(Chunk &chunk);
    void refreshTotals();

    /// None of them empty.
    std::vector<Chunk> m_chunks;
    size_t m_count = 0;
    size_t m_layoutCount = 0;
    quint64 m_lastNumber = 0;
    qint64 m_length = 0;
    double m_height = 0;
};

} // namespace quib

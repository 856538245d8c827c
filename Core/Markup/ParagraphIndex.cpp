#include "ParagraphIndex.h"

#include <Foundation/Assert.h>

#include <algorithm>
#include <iterator>

namespace quib {

namespace {

constexpr size_t kPiecesInChunk = 256;

} // namespace

ParagraphIndex::Place ParagraphIndex::placeOfLocation(qint64 location)
{
    QUIB_ASSERT(m_count > 0);
    Place place;
    auto chunk = m_chunks.begin();
    for (; std::next(chunk) != m_chunks.end() && location >= place.location + chunk->length; ++chunk) {
        place.index += chunk->pieces.size();
        place.location += chunk->length;
        place.top += chunk->height;
    }
    auto piece = chunk->pieces.begin();
    for (; std::next(piece) != chunk->pieces.end() && location >= place.location + piece->length; ++piece) {
        ++place.index;
        place.location += piece->length;
        place.top += piece->height;
    }
    place.piece = &*piece;
    return place;
}

ParagraphIndex::Place ParagraphIndex::placeAtHeight(double y)
{
    QUIB_ASSERT(m_count > 0);
    Place place;
    auto chunk = m_chunks.begin();
    for (; std::next(chunk) != m_chunks.end() && y >= place.top + chunk->height; ++chunk) {
        place.index += chunk->pieces.size();
        place.location += chunk->length;
        place.top += chunk->height;
    }
    auto piece = chunk->pieces.begin();
    for (; std::next(piece) != chunk->pieces.end() && y >= place.top + piece->height; ++piece) {
        ++place.index;
        place.location += piece->length;
        place.top += piece->height;
    }
    place.piece = &*piece;
    return place;
}

ParagraphIndex::Place ParagraphIndex::placeAtIndex(size_t index)
{
    QUIB_ASSERT(index < m_count);
    Place place;
    auto chunk = m_chunks.begin();
    for (; index >= place.index + chunk->pieces.size(); ++chunk) {
        place.index += chunk->pieces.size();
        place.location += chunk->length;
        place.top += chunk->height;
    }
    auto piece = chunk->pieces.begin();
    for (; place.index < index; ++piece) {
        ++place.index;
        place.location += piece->length;
        place.top += piece->height;
    }
    place.piece = &*piece;
    return place;
}

void ParagraphIndex::replace(size_t first, size_t count, std::vector<Piece> pieces)
{
    QUIB_ASSERT(first + count <= m_count);
    // The chunks from the one of the first piece to the one behind the last are made anew; all others stay.
    size_t before = 0;
    auto begin = m_chunks.begin();
    while (begin != m_chunks.end() && std::next(begin) != m_chunks.end() && first >= before + begin->pieces.size()) {
        before += begin->pieces.size();
        ++begin;
    }
    std::vector<Piece> all;
    auto end = begin;
    size_t held = 0;
    for (; end != m_chunks.end() && (end == begin || before + held < first + count); ++end) {
        held += end->pieces.size();
        std::move(end->pieces.begin(), end->pieces.end(), std::back_inserter(all));
    }
    const auto from = all.begin() + static_cast<std::ptrdiff_t>(first - before);
    const auto hasLayout = [](const Piece &piece) { return piece.layout != nullptr; };
    m_layoutCount -= static_cast<size_t>(std::count_if(from, from + static_cast<std::ptrdiff_t>(count), hasLayout));
    m_layoutCount += static_cast<size_t>(std::count_if(pieces.begin(), pieces.end(), hasLayout));
    const auto gone = all.erase(from, from + static_cast<std::ptrdiff_t>(count));
    all.insert(gone, std::make_move_iterator(pieces.begin()), std::make_move_iterator(pieces.end()));

    std::vector<Chunk> chunks;
    const size_t parts = all.size() <= kPiecesInChunk ? (all.empty() ? 0 : 1) : (all.size() * 2) / kPiecesInChunk + 1;
    for (size_t part = 0; part < parts; ++part) {
        const auto at = [&](size_t border) {
            return all.begin() + static_cast<std::ptrdiff_t>(all.size() * border / parts);
        };
        Chunk chunk;
        chunk.pieces.assign(std::make_move_iterator(at(part)), std::make_move_iterator(at(part + 1)));
        refresh(chunk);
        chunks.push_back(std::move(chunk));
    }
    const auto place = m_chunks.erase(begin, end);
    m_chunks.insert(place, std::make_move_iterator(chunks.begin()), std::make_move_iterator(chunks.end()));
    refreshTotals();
}

void ParagraphIndex::setLayout(const Place &place, std::unique_ptr<const ParagraphLayout> layout, double height)
{
    size_t before = 0;
    auto chunk = m_chunks.begin();
    for (; place.index >= before + chunk->pieces.size(); ++chunk) {
        before += chunk->pieces.size();
    }
    Piece &piece = chunk->pieces[place.index - before];
    if (piece.layout == nullptr) {
        ++m_layoutCount;
    }
    const double gained = height - piece.height;
    piece.layout = std::move(layout);
    piece.layoutLocation = place.location;
    piece.layoutNumber = ++m_lastNumber;
    piece.height = height;
    chunk->height += gained;
    m_height += gained;
}

void ParagraphIndex::invalidate(size_t first, size_t count)
{
    size_t before = 0;
    for (Chunk &chunk : m_chunks) {
        const size_t size = chunk.pieces.size();
        for (size_t i = std::max(first, before); i < std::min(first + count, before + size); ++i) {
            Piece &piece = chunk.pieces[i - before];
            m_layoutCount -= piece.layout != nullptr ? size_t(1) : size_t(0);
            piece.layout.reset();
        }
        before += size;
        if (before >= first + count) {
            return;
        }
    }
}

void ParagraphIndex::invalidateAll(const std::function<double(qint64 length)> &estimatedHeight)
{
    for (Chunk &chunk : m_chunks) {
        for (Piece &piece : chunk.pieces) {
            piece.layout.reset();
            piece.height = estimatedHeight(piece.length);
        }
        refresh(chunk);
    }
    m_layoutCount = 0;
    refreshTotals();
}

void ParagraphIndex::forgetLayoutsOutside(size_t first, size_t count, size_t above)
{
    if (m_layoutCount <= above) {
        return;
    }
    invalidate(0, first);
    invalidate(first + count, m_count - std::min(m_count, first + count));
}

void ParagraphIndex::refresh(Chunk &chunk)
{
    chunk.length = 0;
    chunk.height = 0;
    for (const Piece &piece : chunk.pieces) {
        chunk.length += piece.length;
        chunk.height += piece.height;
    }
}

void ParagraphIndex::refreshTotals()
{
    m_count = 0;
    m_length = 0;
    m_height = 0;
    for (const Chunk &chunk : m_chunks) {
        m_count += chunk.pieces.size();
        m_length += chunk.length;
        m_height += chunk.height;
    }
}

} // namespace quib

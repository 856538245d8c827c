#include "QBNotesLayoutManager.h"

#include "QBNotesTextContainer.h"
#include "QBNotesTextStorage.h"

#include <Graphics/WritingDirection.h>
#include <Text/NSStringHelpers.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>

using namespace quib;

namespace {

/// So many layouts are kept around what is seen.
constexpr size_t kKeptLayouts = 600;
constexpr size_t kKeptAround = 150;
/// So many empty lines beside an edit follow its direction at once; it is what is seen.
constexpr size_t kRedirected = 100;

} // namespace

QBNotesLayoutManager::QBNotesLayoutManager(QBNotesTextStorage &storage,
                                           std::shared_ptr<QBNotesTextThemeManager> themeManager)
    : m_storage(storage)
    , m_themeManager(std::move(themeManager))
    , m_typesetter(m_themeManager)
    , m_inset(m_themeManager->textColumnTopBottomInset())
    , m_edits(storage.observeEdits([this](quint32 mask, NSRange editedRange, qint64 changeInLength) {
        storageDidEdit(mask, editedRange, changeInLength);
    }))
{
    rebuild();
}

QBNotesLayoutManager::~QBNotesLayoutManager() = default;

void QBNotesLayoutManager::setPageWidth(double width)
{
    if (width != m_pageWidth) {
        m_pageWidth = width;
        invalidateLayout();
    }
}

double QBNotesLayoutManager::height() const
{
    return m_index.height() + 2 * m_inset;
}

void QBNotesLayoutManager::invalidateLayout()
{
    m_padding = QBNotesTextContainer({m_pageWidth, 0}, m_themeManager).lineFragmentPadding();
    m_inset = m_themeManager->textColumnTopBottomInset();
    m_typesetter.themeDidChange();
    m_typesetter.setColumnWidth(m_pageWidth - 2 * m_padding);
    m_index.invalidateAll([this](qint64 length) { return m_typesetter.estimatedHeight(length); });
}

void QBNotesLayoutManager::setPreedit(const ParagraphLayout::Preedit &preedit)
{
    invalidateLayoutForRange({m_preedit.location, 0});
    m_preedit = preedit;
    m_preedit.location = std::clamp<qint64>(preedit.location, 0, m_storage.length());
    invalidateLayoutForRange({m_preedit.location, 0});
}

void QBNotesLayoutManager::invalidateLayoutForRange(NSRange range)
{
    const size_t first = m_index.placeOfLocation(range.location).index;
    const size_t last = m_index.placeOfLocation(std::max(range.location, range.limit() - 1)).index;
    m_index.invalidate(first, last - first + 1);
}

void QBNotesLayoutManager::rebuild()
{
    m_index.replace(0, m_index.count(), piecesOfRange(m_storage.fullRange()));
}

std::vector<ParagraphIndex::Piece> QBNotesLayoutManager::piecesOfRange(NSRange range) const
{
    const QStringView text = m_storage.string();
    std::vector<ParagraphIndex::Piece> pieces;
    const auto add = [&](qint64 length) {
        ParagraphIndex::Piece piece;
        piece.length = length;
        piece.height = m_typesetter.estimatedHeight(length);
        pieces.push_back(std::move(piece));
    };
    for (qint64 location = range.location; location < range.limit();) {
        const qint64 end = QBNoteTypesetter::endOfPiece(text, location);
        add(end - location);
        location = end;
    }
    // The empty line behind the last line end, or the only one of an empty text.
    const bool isAtEnd = range.limit() == text.size();
    if (isAtEnd && (text.isEmpty() || isParagraphEnd(text.back().unicode()))) {
        add(0);
    }
    return pieces;
}

void QBNotesLayoutManager::storageDidEdit(quint32 mask, NSRange editedRange, qint64 changeInLength)
{
    if (!m_preedit.string.isEmpty()) {
        // What is composed at a place of a text that becomes another one is not shown there any more.
        invalidateLayoutForRange({m_preedit.location, 0});
        m_preedit = {};
    }
    const qint64 oldEnd = editedRange.limit() - changeInLength;
    ParagraphIndex::Place first = m_index.placeOfLocation(editedRange.location);
    if (first.location == editedRange.location && first.index > 0 && (mask & NSTextStorage::kEditedCharacters) != 0) {
        // What came in may belong to a piece that was cut there, or be the second half of the line end before.
        const char16_t before = m_storage.string()[first.location - 1].unicode();
        if (!isParagraphEnd(before) || before == u'\r') {
            first = m_index.placeAtIndex(first.index - 1);
        }
    }
    const ParagraphIndex::Place last = m_index.placeOfLocation(oldEnd);
    if ((mask & NSTextStorage::kEditedCharacters) == 0) {
        m_index.invalidate(first.index, last.index - first.index + 1);
    } else {
        // Made anew up to where a piece begins again that began before; in a paragraph of many pieces that is its end.
        const QStringView text = m_storage.string();
        size_t count = last.index - first.index + 1;
        qint64 newEnd = last.location + last.piece->length + changeInLength;
        while (first.index + count < m_index.count() && newEnd > 0 && !isParagraphEnd(text[newEnd - 1].unicode())) {
            newEnd += m_index.placeAtIndex(first.index + count).piece->length;
            ++count;
        }
        if (first.index + count == m_index.count()) {
            newEnd = text.size();
        } else if (newEnd == text.size()) {
            // The empty last line is made with what stands before it.
            ++count;
        }
        m_index.replace(first.index, count, piecesOfRange({first.location, newEnd - first.location}));
    }
    redirectPiecesBeside(editedRange.location);
    redirectPiecesBeside(editedRange.limit());
    if (m_editHandler) {
        m_editHandler(editedRange, changeInLength);
    }
}

void QBNotesLayoutManager::setRightToLeftByDefault(bool isRightToLeft)
{
    m_typesetter.setRightToLeftByDefault(isRightToLeft);
    redirectPiecesBeside(0);
}

void QBNotesLayoutManager::redirectPiecesBeside(qint64 location)
{
    const QStringView text = m_storage.string();
    // False where the piece goes its own way, and with it those behind it.
    const auto redirect = [&](size_t index) {
        const ParagraphIndex::Place place = m_index.placeAtIndex(index);
        const NSRange range = {place.location, place.piece->length};
        if (place.piece->layout != nullptr &&
            place.piece->layout->isRightToLeft() != m_typesetter.isRightToLeft(text, range)) {
            m_index.invalidate(index, 1);
        }
        return !quib::isRightToLeft(text.sliced(range.location, range.length)).has_value();
    };
    const size_t middle = m_index.placeOfLocation(location).index;
    (void)redirect(middle);
    for (size_t i = middle + 1; i < std::min(m_index.count(), middle + kRedirected) && redirect(i); ++i) {
    }
    for (size_t i = middle; i > 0 && middle - i < kRedirected && redirect(i - 1); --i) {
    }
}

PlacedParagraph QBNotesLayoutManager::laidOut(const ParagraphIndex::Place &place)
{
    if (place.piece->layout == nullptr) {
        const qint64 limit = place.location + place.piece->length;
        const bool isComposed = !m_preedit.string.isEmpty() && m_preedit.location >= place.location &&
                                (m_preedit.location < limit || place.index + 1 == m_index.count());
        auto layout = m_typesetter.layoutOfPiece(m_storage.attributedString(), {place.location, place.piece->length},
                                                 isComposed ? &m_preedit : nullptr);
        const double height = layout->height();
        m_index.setLayout(place, std::move(layout), height);
    }
    return {.range = {place.location, place.piece->length},
            .origin = {m_padding, m_inset + place.top},
            .height = place.piece->height,
            .layout = place.piece->layout.get(),
            .shift = place.location - place.piece->layoutLocation,
            .number = place.piece->layoutNumber};
}

std::vector<PlacedParagraph> QBNotesLayoutManager::paragraphsInHeights(double top, double bottom)
{
    std::vector<PlacedParagraph> paragraphs;
    ParagraphIndex::Place place = m_index.placeAtHeight(top - m_inset);
    m_index.forgetLayoutsOutside(place.index > kKeptAround ? place.index - kKeptAround : 0, 2 * kKeptAround,
                                 kKeptLayouts);
    place = m_index.placeAtIndex(place.index);
    for (;;) {
        paragraphs.push_back(laidOut(place));
        if (paragraphs.back().bottom() >= bottom || place.index + 1 == m_index.count()) {
            return paragraphs;
        }
        place = m_index.placeAtIndex(place.index + 1);
    }
}

PlacedParagraph QBNotesLayoutManager::paragraphOfLocation(qint64 location)
{
    return laidOut(m_index.placeOfLocation(std::max<qint64>(0, location)));
}

PlacedParagraph QBNotesLayoutManager::paragraphAtHeight(double y)
{
    return laidOut(m_index.placeAtHeight(y - m_inset));
}

bool QBNotesLayoutManager::isLaidOut(qint64 location)
{
    return m_index.placeOfLocation(std::max<qint64>(0, location)).piece->layout != nullptr;
}

double QBNotesLayoutManager::topOfLocation(qint64 location)
{
    return m_inset + m_index.placeOfLocation(std::max<qint64>(0, location)).top;
}

qint64 QBNotesLayoutManager::locationOfParagraphAtHeight(double y)
{
    return m_index.placeAtHeight(y - m_inset).location;
}

QRectF QBNotesLayoutManager::caretRect(qint64 location, bool upstream)
{
    return paragraphOfLocation(location).caretRect(location, upstream);
}

qint64 QBNotesLayoutManager::locationAtPoint(QPointF point, bool *upstream)
{
    const PlacedParagraph paragraph = paragraphAtHeight(point.y());
    return paragraph.layout->locationAtPoint(point - paragraph.origin, upstream) + paragraph.shift;
}

std::optional<QBNotesLayoutManager::AttachmentAtPoint> QBNotesLayoutManager::attachmentAtPoint(QPointF point)
{
    const PlacedParagraph paragraph = paragraphAtHeight(point.y());
    for (const ParagraphLayout::PlacedAttachment &placed : paragraph.layout->attachments()) {
        const QRectF rect = placed.rect.translated(paragraph.origin);
        if (rect.contains(point)) {
            return AttachmentAtPoint{placed.location + paragraph.shift, placed.attachment, rect};
        }
    }
    return std::nullopt;
}

qint64 QBNotesLayoutManager::locationAfter(qint64 location)
{
    const PlacedParagraph paragraph = paragraphOfLocation(location);
    const qint64 next = paragraph.layout->locationAfter(location - paragraph.shift) + paragraph.shift;
    return next > location ? next : std::min(m_storage.length(), std::max(paragraph.range.limit(), location));
}

qint64 QBNotesLayoutManager::locationBefore(qint64 location)
{
    const PlacedParagraph paragraph = paragraphOfLocation(location);
    if (location > paragraph.range.location) {
        return paragraph.layout->locationBefore(location - paragraph.shift) + paragraph.shift;
    }
    if (location <= 0) {
        return 0;
    }
    const PlacedParagraph before = paragraphOfLocation(location - 1);
    // Before its line end; a piece without one goes on with its last character.
    const qint64 end = before.layout->lines().back().range.limit() + before.shift;
    return end < location ? end : before.layout->locationBefore(end - before.shift) + before.shift;
}

qint64 QBNotesLayoutManager::locationLeftOf(qint64 location)
{
    return locationBeside(location, /*right=*/false);
}

qint64 QBNotesLayoutManager::locationRightOf(qint64 location)
{
    return locationBeside(location, /*right=*/true);
}

qint64 QBNotesLayoutManager::locationBeside(qint64 location, bool right)
{
    const PlacedParagraph paragraph = paragraphOfLocation(location);
    const qint64 inParagraph = location - paragraph.shift;
    const qint64 beside =
        (right ? paragraph.layout->locationRightOf(inParagraph) : paragraph.layout->locationLeftOf(inParagraph)) +
        paragraph.shift;
    if (beside != location) {
        return beside;
    }
    // Where directions mix, what is at the edge need not be the first or the last of the paragraph.
    if (right == paragraph.layout->isRightToLeft()) {
        return locationBefore(paragraph.range.location);
    }
    const qint64 next = paragraph.range.limit();
    return next < m_storage.length() || paragraphOfLocation(next).range.location == next ? next : location;
}

qint64 QBNotesLayoutManager::locationAbove(qint64 location, bool *upstream, double x)
{
    PlacedParagraph paragraph = paragraphOfLocation(location);
    size_t line = paragraph.layout->lineIndexOfLocation(location - paragraph.shift, *upstream);
    if (line == 0) {
        if (paragraph.range.location == 0) {
            *upstream = false;
            return 0;
        }
        paragraph = paragraphOfLocation(paragraph.range.location - 1);
        line = paragraph.layout->lines().size();
    }
    return paragraph.layout->locationAtX(line - 1, x - paragraph.origin.x(), upstream) + paragraph.shift;
}

qint64 QBNotesLayoutManager::locationBelow(qint64 location, bool *upstream, double x)
{
    PlacedParagraph paragraph = paragraphOfLocation(location);
    size_t line = paragraph.layout->lineIndexOfLocation(location - paragraph.shift, *upstream) + 1;
    if (line == paragraph.layout->lines().size()) {
        const qint64 next = paragraph.range.limit();
        const PlacedParagraph below = paragraphOfLocation(next);
        if (below.range.location == paragraph.range.location) {
            *upstream = false;
            return m_storage.length();
        }
        paragraph = below;
        line = 0;
    }
    return paragraph.layout->locationAtX(line, x - paragraph.origin.x(), upstream) + paragraph.shift;
}

std::optional<bool> QBNotesLayoutManager::isRightToLeftBefore(qint64 location)
{
    const PlacedParagraph paragraph = paragraphOfLocation(location);
    return paragraph.layout->isRightToLeftBefore(location - paragraph.shift);
}

NSRange QBNotesLayoutManager::lineRange(qint64 location, bool upstream)
{
    const PlacedParagraph paragraph = paragraphOfLocation(location);
    const size_t line = paragraph.layout->lineIndexOfLocation(location - paragraph.shift, upstream);
    const NSRange range = paragraph.layout->lines()[line].range;
    return {range.location + paragraph.shift, range.length};
}

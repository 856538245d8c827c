#include "SpellingController.h"

#include <Logging/QBLogger.h>
#include <Markup/QBNotesTextStorage.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// An edit of more is no typing. Units: UTF-16.
constexpr qint64 kLongestTyped = 64;
constexpr qint64 kLongestWord = 64;
/// Parts of very long paragraphs.
constexpr qint64 kPieceLength = 5'000;

/// What marks a stretch that is no prose.
bool isSkipped(const AttributeSet &attributes)
{
    static const std::array<const NSAttributeName *, 8> kNames{
        &QBNoteSkipSpellCheckerAttributeName,     &NSLinkAttributeName,
        &QBNoteURLTextStylerAttributeName,        &QBNoteCodeTextStylerAttributeName,
        &QBNoteCodeInlineTextStylerAttributeName, &QBNoteTagStylerAttributeName,
        &QBNoteColorStylerAttributeName,          &QBMarkdownImageStylerAttributeName};
    return std::ranges::any_of(kNames,
                               [&attributes](const NSAttributeName *name) { return attributes.contains(*name); });
}

bool isBlank(char16_t unit)
{
    return unit == u' ' || unit == u'\t' || unit == u'\n';
}

} // namespace

SpellingController::SpellingController(QBNotesTextStorage &textStorage, SpellableView &view)
    : m_textStorage(textStorage)
    , m_view(view)
    , m_self(std::make_shared<SpellingController *>(this))
{
    m_edits = m_textStorage.observeEdits([this](quint32 editedMask, NSRange editedRange, qint64 changeInLength) {
        textDidEdit(editedMask, editedRange, changeInLength);
    });
    schedule(0);
}

SpellingController::~SpellingController() = default;

void SpellingController::setEnabled(bool isEnabled)
{
    if (m_isEnabled != isEnabled) {
        m_isEnabled = isEnabled;
        m_view.setSpellingMarks({}, m_textStorage.fullRange());
        checkAgain();
    }
}

// What happens

void SpellingController::textWasLoaded()
{
    m_lastEdit = kNotFoundRange;
    checkAgain();
}

void SpellingController::textDidEdit(quint32 editedMask, NSRange editedRange, qint64 changeInLength)
{
    ++m_version;
    const qint64 oldEnd = editedRange.limit() - changeInLength;
    const auto isTouched = [editedRange, oldEnd](NSRange range) {
        return range.limit() > editedRange.location && range.location < oldEnd;
    };
    const auto move = [oldEnd, changeInLength](NSRange &range) {
        range.location += range.location >= oldEnd ? changeInLength : 0;
    };
    // What the edit touches must be looked at again; what is behind it moves along.
    std::erase_if(m_checked, isTouched);
    std::ranges::for_each(m_checked, move);
    setUnchecked(m_textStorage.attributedString().paragraphRangeForRange(editedRange));
    if (m_withheld.isFound() && !isTouched(m_withheld)) {
        move(m_withheld);
        setUnchecked(pieceAtLocation(m_withheld.location));
    }
    m_withheld = kNotFoundRange;
    if ((editedMask & NSTextStorage::kEditedCharacters) != 0) {
        m_lastEdit = editedRange.length <= kLongestTyped ? editedRange : kNotFoundRange;
    }
    schedule(kDelay);
}

void SpellingController::selectionDidChange()
{
    const NSRange selection = m_view.selectedRange();
    if (selection.length > 0 || selection.location < m_lastEdit.location || selection.location > m_lastEdit.limit()) {
        m_lastEdit = kNotFoundRange;
    }
    if (m_withheld.isFound() && !isBeingTyped(m_withheld)) {
        setUnchecked(pieceAtLocation(m_withheld.location));
        m_withheld = kNotFoundRange;
        schedule(0);
    }
}

void SpellingController::visibleRangeDidChange()
{
    schedule(kDelay);
}

void SpellingController::checkAgain()
{
    ++m_version;
    m_checked.clear();
    m_withheld = kNotFoundRange;
    schedule(0);
}

bool SpellingController::isBeingTyped(NSRange word) const
{
    const NSRange selection = m_view.selectedRange();
    return m_lastEdit.isFound() && selection.length == 0 && selection.location >= word.location &&
           selection.location <= word.limit();
}

// Checking

void SpellingController::schedule(double delay)
{
    // A check that is due soon anyway is not postponed: somebody who types or scrolls steadily sees marks, too.
    if (m_timer == nullptr || !m_timer->isValid() || delay == 0) {
        m_timer = Clock::shared().schedule(delay, [this] { check(); });
    }
}

void SpellingController::check()
{
    auto *service = SpellingService::sharedService();
    if (service == nullptr || !m_isEnabled || m_isChecking || !m_view.isEditable()) {
        return;
    }
    if (service != m_service) {
        m_service = service;
        m_words = service->observeWords([this] { checkAgain(); });
    }
    std::vector<NSRange> ranges = uncheckedRanges();
    if (ranges.empty()) {
        return;
    }
    std::vector<SpellingService::Paragraph> paragraphs;
    std::ranges::transform(ranges, std::back_inserter(paragraphs),
                           [this](NSRange range) { return paragraphInRange(range); });
    m_isChecking = true;
    service->findMisspelt(std::move(paragraphs),
                          [weak = std::weak_ptr(m_self), version = m_version,
                           ranges = std::move(ranges)](const SpellingService::Misspelt &misspelt) {
                              if (const auto self = weak.lock()) {
                                  (*self)->takeAnswer(version, ranges, misspelt);
                              }
                          });
}

void SpellingController::takeAnswer(quint64 version, const std::vector<NSRange> &checked,
                                    const SpellingService::Misspelt &misspelt)
{
    m_isChecking = false;
    if (version != m_version || !m_isEnabled) {
        schedule(kDelay);
        return;
    }
    for (size_t i = 0; i < checked.size(); ++i) {
        std::vector<NSRange> marks;
        for (const NSRange word : misspelt[i]) {
            const NSRange mark{checked[i].location + word.location, word.length};
            if (isBeingTyped(mark)) {
                m_withheld = mark;
            } else {
                marks.push_back(mark);
            }
        }
        m_view.setSpellingMarks(std::move(marks), checked[i]);
        setChecked(checked[i]);
    }
    // There may be more to see than was checked at once.
    schedule(0);
}

std::vector<NSRange> SpellingController::uncheckedRanges()
{
    const NSRange visible = NSIntersectionRange(m_view.visibleRange(), m_textStorage.fullRange());
    std::vector<NSRange> ranges;
    qint64 length = 0;
    for (qint64 location = visible.location; location < visible.limit() && length < kLongestCheck;) {
        const NSRange piece = pieceAtLocation(location);
        const auto known = std::ranges::lower_bound(m_checked, piece.location, {}, &NSRange::location);
        if (known == m_checked.end() || *known != piece) {
            ranges.push_back(piece);
            length += piece.length;
        }
        location = std::max(piece.limit(), location + 1);
    }
    return ranges;
}

NSRange SpellingController::pieceAtLocation(qint64 location) const
{
    const NSAttributedString &text = m_textStorage.attributedString();
    const NSRange paragraph = text.paragraphRangeForRange({location, 0});
    if (paragraph.length <= kLongestParagraph) {
        return paragraph;
    }
    // Pieces begin at a blank where there is one near.
    const auto start = [&text, paragraph](qint64 number) {
        const qint64 nominal = std::min(paragraph.location + number * kPieceLength, paragraph.limit());
        const qint64 last = std::min(nominal + kLongestWord, paragraph.limit());
        for (qint64 place = nominal; number > 0 && place < last; ++place) {
            if (isBlank(text.characterAtIndex(place))) {
                return place;
            }
        }
        return nominal;
    };
    qint64 number = (location - paragraph.location) / kPieceLength;
    number -= start(number) > location ? 1 : 0;
    return {start(number), start(number + 1) - start(number)};
}

SpellingService::Paragraph SpellingController::paragraphInRange(NSRange range) const
{
    const NSAttributedString &text = m_textStorage.attributedString();
    SpellingService::Paragraph paragraph{text.stringInRange(range).toString(), {}};
    text.enumerateAttributesInRange(range, {}, [&](const AttributeSet &attributes, NSRange run, bool * /*stop*/) {
        if (isSkipped(attributes)) {
            paragraph.skipped.push_back({run.location - range.location, run.length});
        }
    });
    return paragraph;
}

void SpellingController::setChecked(NSRange range)
{
    setUnchecked(range);
    m_checked.insert(std::ranges::lower_bound(m_checked, range.location, {}, &NSRange::location), range);
}

void SpellingController::setUnchecked(NSRange range)
{
    std::erase_if(m_checked, [range](NSRange checked) {
        return checked.location < range.limit() && range.location < checked.limit();
    });
}

// The misspelt word at a place

QString SpellingController::wordInRange(NSRange range) const
{
    return m_textStorage.attributedString().stringInRange(range).toString();
}

void SpellingController::findSuggestions(NSRange wordRange,
                                         std::function<void(const QStringList &suggestions)> completion)
{
    auto *service = SpellingService::sharedService();
    if (service == nullptr) {
        return;
    }
    service->findSuggestions(
        wordInRange(wordRange), paragraphInRange(pieceAtLocation(wordRange.location)).text,
        [weak = std::weak_ptr(m_self), completion = std::move(completion)](const QStringList &suggestions) {
            if (weak.lock() != nullptr) {
                completion(suggestions);
            }
        });
}

void SpellingController::ignoreWord(const QString &word)
{
    if (auto *service = SpellingService::sharedService(); service != nullptr) {
        service->ignoreWord(word);
    }
}

void SpellingController::learnWord(const QString &word)
{
    if (auto *service = SpellingService::sharedService(); service != nullptr) {
        service->learnWord(
            word, [](const NSError &error) { QBLogError(u"a word was not kept: "_s % error.localizedDescription()); });
    }
}

} // namespace quib

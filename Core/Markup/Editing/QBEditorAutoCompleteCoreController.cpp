#include "QBEditorAutoCompleteCoreController.h"

#include "QBLanguageAutoCompletionItemsProvider.h"
#include "QBTagAutoCompleteItemsProvider.h"

#include <Markup/QBNotesTextStorage.h>
#include <Markup/Stylers/QBNoteCodeTextStyler.h>
#include <Markup/Stylers/QBNoteTagStyler.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Markup/Syntax/QBPunctuationCharactersSets.h>
#include <Store/NSManagedObjectContext.h>
#include <Text/NSStringHelpers.h>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// What stands right before a range, or right behind it, spacers of tags left out; null at the edges of the text.
QChar unitBefore(const NSAttributedString &text, NSRange range)
{
    qint64 place = range.location - 1;
    while (place >= 0 && text.attribute(QBNoteTagSpacerAttributeName, place)) {
        --place;
    }
    return place < 0 ? QChar() : QChar(text.characterAtIndex(place));
}

QChar unitBehind(const NSAttributedString &text, NSRange range)
{
    qint64 place = range.limit();
    while (place < text.length() && text.attribute(QBNoteTagSpacerAttributeName, place)) {
        ++place;
    }
    return place >= text.length() ? QChar() : QChar(text.characterAtIndex(place));
}

bool separatesWords(QChar unit)
{
    return unit.isNull() || quib::isWhitespaceOrNewline(unit.unicode());
}

/// A tag in front of these is one already.
bool endsTag(QChar unit)
{
    return separatesWords(unit) ||
           QBPunctuationCharactersSets::allowedPunctuationCharactersAfterStyler().contains(unit);
}

/// Whether the character of a tag's marker stands within a tag that began before it, as the one that closes a tag does.
bool isInsideOfTag(const NSAttributedString &text, qint64 place)
{
    NSRange tag;
    if (!text.attribute(QBNoteTagStylerAttributeName, place, &tag, text.fullRange())) {
        return false;
    }
    while (tag.location < place && text.attribute(QBNoteTagSpacerAttributeName, tag.location)) {
        ++tag.location;
    }
    return tag.location < place;
}

} // namespace

QBEditorAutoCompleteCoreController::QBEditorAutoCompleteCoreController(
    QBNotesTextStorage &textStorage, std::weak_ptr<NSManagedObjectContext> managedObjectContext)
    : m_textStorage(textStorage)
    , m_managedObjectContext(std::move(managedObjectContext))
{
}

QBEditorAutoCompleteCoreController::~QBEditorAutoCompleteCoreController() = default;

bool QBEditorAutoCompleteCoreController::canAutoCompleteForSelectionRange(NSRange selectionRange)
{
    if (selectionRange.length != 0) {
        // What is selected is no text that is being typed.
        return setCurrent(std::nullopt, selectionRange);
    }
    const NSRange paragraph = paragraphRangeOf(selectionRange);
    QList<QBAutoCompleteProposal> proposals;
    for (const Proposal &proposal : {tagsCompleteProposalForSelectionRange(selectionRange, paragraph),
                                     notesCompleteProposalForSelectionRange(selectionRange, paragraph),
                                     languageCompleteProposalForSelectionRange(selectionRange, paragraph)}) {
        if (proposal) {
            proposals.append(*proposal);
        }
    }
    return setCurrent(prioritizedProposalFromProposals(proposals), selectionRange);
}

bool QBEditorAutoCompleteCoreController::canAutocompleteTagForSelectionRange(NSRange selectionRange)
{
    return setCurrent(tagsCompleteProposalForSelectionRange(selectionRange, paragraphRangeOf(selectionRange),
                                                            /*allowEmptyString=*/true),
                      selectionRange);
}

bool QBEditorAutoCompleteCoreController::canAutocompleteNoteForSelectionRange(NSRange selectionRange)
{
    return setCurrent(notesCompleteProposalForSelectionRange(selectionRange, paragraphRangeOf(selectionRange),
                                                             /*allowEmptyString=*/true),
                      selectionRange);
}

QBEditorAutoCompleteCoreController::Proposal
QBEditorAutoCompleteCoreController::tagsCompleteProposalForSelectionRange(NSRange selectionRange,
                                                                          NSRange paragraphRange) const
{
    return tagsCompleteProposalForSelectionRange(selectionRange, paragraphRange, /*allowEmptyString=*/false);
}

QBEditorAutoCompleteCoreController::Proposal QBEditorAutoCompleteCoreController::tagsCompleteProposalForSelectionRange(
    NSRange selectionRange, NSRange paragraphRange, bool allowEmptyString) const
{
    Proposal proposal = markerProposal(QBAutoCompleteType::Tag, QBNoteTagStyler::stylerMarker(), selectionRange,
                                       paragraphRange, allowEmptyString);
    if (!proposal || isInsideOfTag(m_textStorage.attributedString(), proposal->fullCompletionRange.location)) {
        return std::nullopt;
    }
    // What is left of the tag behind the caret is replaced with it.
    NSRange &full = proposal->fullCompletionRange;
    const NSAttributedString &text = m_textStorage.attributedString();
    NSRange tag;
    if (full.limit() < text.length() &&
        text.attribute(QBNoteTagStylerAttributeName, full.limit(), &tag, text.fullRange()) &&
        tag.location <= full.location) {
        while (tag.length > 0 && text.attribute(QBNoteTagSpacerAttributeName, tag.limit() - 1)) {
            --tag.length;
        }
        full.length = std::max(full.length, tag.limit() - full.location);
    }
    return proposal;
}

QBEditorAutoCompleteCoreController::Proposal
QBEditorAutoCompleteCoreController::notesCompleteProposalForSelectionRange(NSRange selectionRange,
                                                                           NSRange paragraphRange) const
{
    return notesCompleteProposalForSelectionRange(selectionRange, paragraphRange, /*allowEmptyString=*/false);
}

QBEditorAutoCompleteCoreController::Proposal QBEditorAutoCompleteCoreController::notesCompleteProposalForSelectionRange(
    NSRange selectionRange, NSRange paragraphRange, bool allowEmptyString) const
{
    return markerProposal(QBAutoCompleteType::Note, u"[[", selectionRange, paragraphRange, allowEmptyString);
}

QBEditorAutoCompleteCoreController::Proposal
QBEditorAutoCompleteCoreController::markerProposal(QBAutoCompleteType type, QStringView marker, NSRange selectionRange,
                                                   NSRange paragraphRange, bool allowEmptyString) const
{
    const NSAttributedString &text = m_textStorage.attributedString();
    const qint64 caret = selectionRange.location;
    if (caret < 0 || caret > text.length()) {
        return std::nullopt;
    }
    const NSRange range =
        backwardSearchRangeForSelectionRange(selectionRange, paragraphRange, m_maxBackwardSearchLength);
    // NOTE: searching for one character without a place to start from reads a character past the text.
    const qint64 lastPlace = range.length - marker.size();
    const qsizetype found = lastPlace < 0 ? -1 : text.stringInRange(range).lastIndexOf(marker, lastPlace);
    if (found < 0) {
        return std::nullopt;
    }
    const qint64 place = range.location + found;
    const qint64 behindMarker = place + marker.size();
    const QString partial =
        m_textStorage.stringWithExpandedTextAttachmentsWithRange({behindMarker, caret - behindMarker});
    // What stands for no text was not typed.
    if ((partial.isEmpty() && !allowEmptyString) || indexContainsAttributesToSkip(place)) {
        return std::nullopt;
    }
    return QBAutoCompleteProposal{type, partial, {place, caret - place}};
}

QBEditorAutoCompleteCoreController::Proposal
QBEditorAutoCompleteCoreController::languageCompleteProposalForSelectionRange(NSRange selectionRange,
                                                                              NSRange paragraphRange) const
{
    const NSAttributedString &text = m_textStorage.attributedString();
    const QString fence = QBNoteCodeTextStyler::stylerMarker();
    const qint64 caret = selectionRange.location;
    const qint64 start = paragraphRange.location + fence.size();
    if (caret <= start || caret > paragraphRange.limit() || caret > text.length() ||
        !text.stringInRange(paragraphRange).startsWith(fence)) {
        return std::nullopt;
    }
    // Behind the body of a block the fence closes it, and inside of a body it is none.
    if (paragraphRange.location > 0 && text.attribute(QBNoteCodeTextStylerAttributeName, paragraphRange.location - 1)) {
        return std::nullopt;
    }
    const QStringView partial = text.stringInRange({start, caret - start});
    if (std::ranges::any_of(partial, [](QChar unit) { return quib::isWhitespaceOrNewline(unit.unicode()); })) {
        return std::nullopt;
    }
    qint64 end = caret;
    while (end < paragraphRange.limit() && !quib::isWhitespaceOrNewline(text.characterAtIndex(end))) {
        ++end;
    }
    return QBAutoCompleteProposal{QBAutoCompleteType::Language, partial.toString(), {start, end - start}};
}

QBEditorAutoCompleteCoreController::Proposal
QBEditorAutoCompleteCoreController::prioritizedProposalFromProposals(const QList<QBAutoCompleteProposal> &proposals)
{
    const auto last = std::ranges::max_element(proposals, {}, [](const QBAutoCompleteProposal &proposal) {
        return std::pair(proposal.fullCompletionRange.limit(), proposal.fullCompletionRange.location);
    });
    return last == proposals.end() ? Proposal() : Proposal(*last);
}

bool QBEditorAutoCompleteCoreController::indexContainsAttributesToSkip(qint64 index) const
{
    static const std::array names{
        QBNoteCodeTextStylerAttributeName, QBNoteCodeInlineTextStylerAttributeName, QBHeaderTextStylerAttributeName,
        QBTitledUrlStylerAttributeName,    QBNoteURLTextStylerAttributeName,        QBNoteWikiTextStylerAttributeName,
    };
    const NSAttributedString &text = m_textStorage.attributedString();
    return std::ranges::any_of(names, [&](const NSAttributeName &name) { return bool(text.attribute(name, index)); });
}

NSRange QBEditorAutoCompleteCoreController::backwardSearchRangeForSelectionRange(NSRange selectionRange,
                                                                                 NSRange paragraphRange,
                                                                                 qint64 maxBackwardLength)
{
    const qint64 caret = selectionRange.location;
    const qint64 start = std::max({paragraphRange.location, caret - maxBackwardLength, qint64(0)});
    return {std::min(start, caret), std::max<qint64>(caret - start, 0)};
}

QBEditorAutoCompleteItemsProvider *QBEditorAutoCompleteCoreController::completionItemsProvider()
{
    if (m_completionItemsProvider == nullptr) {
        switch (m_current.autocompleteType) {
        case QBAutoCompleteType::None:
            break;
        case QBAutoCompleteType::Tag:
            m_completionItemsProvider = std::make_unique<QBTagAutoCompleteItemsProvider>(m_managedObjectContext);
            break;
        case QBAutoCompleteType::Note:
            m_completionItemsProvider =
                std::make_unique<QBNoteAutoCompletionItemsProvider>(m_managedObjectContext, m_noteFinder);
            break;
        case QBAutoCompleteType::Language:
            m_completionItemsProvider = std::make_unique<QBLanguageAutoCompletionItemsProvider>();
            break;
        }
    }
    return m_completionItemsProvider.get();
}

void QBEditorAutoCompleteCoreController::updateCompletionResults()
{
    if (auto *provider = completionItemsProvider()) {
        // No provider reads the whole text: a long one is not spelled out at each key.
        provider->updateCompletionForPartiaString(m_current.partialCompletionString, /*fullText=*/{});
    }
}

QBEditorAutoCompleteItemsProvider::Items QBEditorAutoCompleteCoreController::completionItems() const
{
    return m_completionItemsProvider == nullptr ? QBEditorAutoCompleteItemsProvider::Items()
                                                : m_completionItemsProvider->itemsForCompletion();
}

void QBEditorAutoCompleteCoreController::insertCompletionForItem(const QBEditorAutoCompleteItem &item,
                                                                 quib::NoteTextView &inTextView)
{
    const NSRange range = m_current.fullCompletionRange;
    if (!range.isFound() || range.limit() > m_textStorage.length()) {
        return;
    }
    QString text = item.autoCompleteItemTextRepresentation();
    if (m_current.autocompleteType == QBAutoCompleteType::Tag) {
        text = spacedTag(text, range);
    }
    const NSAttributedString styled =
        m_textStorage.styledAttributedStringFromString(text, /*ifItWasInsertedInRange=*/range);
    inTextView.replaceCharactersInrange(range, styled, {range.location + styled.length(), 0});
}

QString QBEditorAutoCompleteCoreController::spacedTag(const QString &tag, NSRange range) const
{
    const NSAttributedString &text = m_textStorage.attributedString();
    const QChar behind = unitBehind(text, range);
    // A closed tag ends by itself at the end of a line; an open one would take in what is typed next.
    const bool isAtLineEnd = behind.isNull() || quib::isNewline(behind.unicode());
    const bool wantsBlankBehind = isAtLineEnd ? !tag.endsWith(u'#') : !endsTag(behind);
    QString spaced;
    if (!separatesWords(unitBefore(text, range))) {
        spaced += u' ';
    }
    spaced += tag;
    if (wantsBlankBehind) {
        spaced += u' ';
    }
    return spaced;
}

void QBEditorAutoCompleteCoreController::resetCompletion()
{
    m_current = {};
    m_caret = -1;
    m_completionItemsProvider.reset();
}

bool QBEditorAutoCompleteCoreController::setCurrent(const Proposal &proposal, NSRange selectionRange)
{
    if (!proposal) {
        resetCompletion();
        return false;
    }
    if (proposal->autocompleteType != m_current.autocompleteType) {
        m_completionItemsProvider.reset();
    }
    m_current = *proposal;
    m_caret = selectionRange.location;
    return true;
}

NSRange QBEditorAutoCompleteCoreController::paragraphRangeOf(NSRange selectionRange) const
{
    return m_textStorage.attributedString().paragraphRangeForRange({selectionRange.location, 0});
}

#include "FindBar.h"
#include "QBNoteEditorViewController.h"
#include "UnfoldedText.h"

#include <Search/QBNoteSearchManager.h>

#include <algorithm>

using namespace quib;

// What the list of notes is searched for, in the note.

namespace {

/// Of a note in which more is found the rest is not marked.
constexpr qsizetype kMostHighlights = 2000;

} // namespace

void QBNoteEditorViewController::setSearchString(const QString &search)
{
    m_search = search;
    highlightSearch();
}

QList<NSRange> QBNoteEditorViewController::placesOfSearch() const
{
    QList<NSRange> found;
    const auto expression = QBNoteSearchManager::defaultSearchRegexForSearchString(m_search);
    if (expression == nullptr || !m_note) {
        return found;
    }
    const UnfoldedText text(m_stack.noteTextStorage().attributedString());
    expression->enumerateMatchesInString(text.string(), 0, {0, text.string().size()},
                                         [&](const NSTextCheckingResult &match, bool *stop) {
                                             if (match.range().length > 0) {
                                                 found.append(text.shownRange(match.range()));
                                             }
                                             *stop = found.size() >= kMostHighlights;
                                         });
    return found;
}

void QBNoteEditorViewController::highlightSearch()
{
    m_view->setSearchHighlights(placesOfSearch());
}

void QBNoteEditorViewController::findNext(bool forward)
{
    const bool isShown = m_findBar->isVisible() || !stepThroughSearch(forward);
    if (isShown) {
        forward ? m_findBar->findNext() : m_findBar->findPrevious();
    }
}

bool QBNoteEditorViewController::stepThroughSearch(bool forward)
{
    QList<NSRange> found = placesOfSearch();
    if (found.isEmpty()) {
        return false;
    }
    const NSRange selection = m_view->selectedRange();
    const qint64 from = forward && found.contains(selection) ? selection.limit() : selection.location;
    const qsizetype next = std::lower_bound(found.cbegin(), found.cend(), from,
                                            [](NSRange place, qint64 limit) { return place.location < limit; }) -
                           found.cbegin();
    const qsizetype index = (forward ? next : next - 1 + found.size()) % found.size();
    // A fold may have others within it.
    while (!m_view->isReadOnly() && m_view->openFolds(found[index])) {
        found = placesOfSearch();
        if (index >= found.size()) {
            return true;
        }
    }
    m_view->setSelectedRange(found[index]);
    m_view->scrollRangeToVisible(found[index]);
    m_view->setSearchHighlights(found, index);
    return true;
}

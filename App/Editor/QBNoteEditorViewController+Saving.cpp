#include "QBNoteEditorViewController.h"

#include "FindBar.h"
#include "InformationPanel.h"

#include <Logging/QBLogger.h>
#include <Markup/Editing/NoteTextMerge.h>
#include <Markup/Editing/UnsavedTextJournal.h>
#include <Markup/QBNoteFile+TextStorage.h>
#include <Store/CurrentSyntax.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

constexpr QChar kObjectReplacement{0xFFFC};

/// The place in a text with its attachments spelled out that a place of the buffer has.
qint64 expandedLocation(const QBNotesTextStorage &storage, qint64 location)
{
    return storage.stringWithExpandedTextAttachmentsWithRange({0, std::min(location, storage.length())}).size();
}

/// The other way round; a place within what an attachment stands for goes behind it.
qint64 bufferLocation(const QBNotesTextStorage &storage, qint64 expanded)
{
    qint64 buffer = 0;
    qint64 passed = 0;
    storage.attributedString().enumerateAttribute(
        NSAttachmentAttributeName, storage.attributedString().fullRange(),
        NSAttributedStringEnumerationOptions::Forward, [&](const AttributeValue &value, NSRange range, bool *stop) {
            const qint64 length =
                value ? storage.stringWithExpandedTextAttachmentsWithRange(range).size() : range.length;
            if (passed + length >= expanded) {
                buffer = value && passed < expanded ? range.limit() : range.location + (value ? 0 : expanded - passed);
                *stop = true;
                return;
            }
            passed += length;
            buffer = range.limit();
        });
    return std::min(buffer, storage.length());
}

bool isGone(const QBNote &note)
{
    return note.managedObjectContext() == nullptr || note.isDeleted();
}

} // namespace

void QBNoteEditorViewController::markForAutoSave()
{
    Clock &clock = Clock::shared();
    m_isEdited = true;
    m_autoSaveTimer = clock.schedule(kAutoSaveDelay, [this] { autoSaveTimerFire(); });
    // The save waits for a pause; what a crash takes must not.
    if (!m_journalTimer) {
        m_journalTimer = clock.schedule(kJournalDelay, [this] { writeJournal(); });
    }
}

void QBNoteEditorViewController::writeJournal()
{
    m_journalTimer.reset();
    if (m_note && m_isEdited && !isGone(*m_note) && !m_note->isStatic()) {
        m_journal->write({m_note->uniqueIdentifier(), currentSyntax(), m_baseText, textToSave()});
    }
}

void QBNoteEditorViewController::waitForJournal() const
{
    m_journal->waitUntilWritten();
}

void QBNoteEditorViewController::forgetEdits()
{
    m_isEdited = false;
    m_autoSaveTimer.reset();
    m_journalTimer.reset();
}

void QBNoteEditorViewController::saveStore(const QString &baseText)
{
    QBCoreDataStack *stack = QBCoreDataStack::sharedStack();
    if (stack != nullptr) {
        stack->saveUsingCoalescence(/*coalescence=*/false);
    }
    if (stack == nullptr || !stack->saveError().isSet()) {
        m_journal->remove();
        return;
    }
    m_journal->write({m_note->uniqueIdentifier(), currentSyntax(), baseText, m_note->text()});
    m_journal->setAside();
}

void QBNoteEditorViewController::autoSaveTimerFire()
{
    saveNote(/*forceSave=*/false);
}

QString QBNoteEditorViewController::textToSave() const
{
    return m_stack.noteTextStorage().stringWithExpandedTextAttachments().remove(kObjectReplacement);
}

void QBNoteEditorViewController::saveNote(bool forceSave)
{
    if (!m_note || !m_isEdited) {
        return;
    }
    if (isGone(*m_note)) {
        noteWasDeleted();
        return;
    }
    if (!forceSave && isTextCompletionOpen()) {
        markForAutoSave();
        return;
    }
    if (m_note->isStatic()) {
        return;
    }
    noteMayHaveChanged();
    if (!m_isEdited) {
        return;
    }
    forgetEdits();
    m_selfEditingNote = true;
    fixTextAttachmentsForNote(*m_note, m_stack.noteTextStorage());
    const QString text = textToSave();
    if (text != m_note->text()) {
        QBLogDebug(u"Saving note %1"_s.arg(m_note->uniqueIdentifier()));
        writeText(text);
    } else if (const QBCoreDataStack *stack = QBCoreDataStack::sharedStack();
               stack == nullptr || !stack->saveError().isSet()) {
        m_journal->remove(); // the store has this text already
    }
    m_selfEditingNote = false;
    Q_EMIT noteWasSaved();
}

void QBNoteEditorViewController::writeText(const QString &text)
{
    m_note->updateNoteWithText(text, currentSyntax());
    saveStore(std::exchange(m_baseText, text));
}

void QBNoteEditorViewController::observeNote()
{
    NSManagedObjectContext &moc = *m_note->managedObjectContext();
    const auto look = [this](NSManagedObjectContext & /*context*/, const NSManagedObjectContext::Changes &changes) {
        if (!m_note || m_selfEditingNote) {
            return;
        }
        if (isGone(*m_note) || changes.deleted.contains(m_note)) {
            noteWasDeleted();
        } else if (changes.updated.contains(m_note) || changes.refreshed.contains(m_note)) {
            noteMayHaveChanged();
        }
    };
    m_noteObservations.push_back(moc.objectsDidChange.add(look));
    m_noteObservations.push_back(moc.didSave.add(look));
    // What a save of ours could not take, a later one of anybody's did.
    m_noteObservations.push_back(moc.didSave.add([this](auto &, const auto &) {
        if (!m_isEdited) {
            m_journal->remove();
        }
    }));
}

void QBNoteEditorViewController::noteMayHaveChanged()
{
    if (!m_note || m_selfEditingNote || isGone(*m_note)) {
        return;
    }
    m_view->setReadOnly(!m_note->isEditable());
    updateCommands();
    const QString theirs = m_note->text();
    if (theirs == m_baseText) {
        return;
    }
    if (!m_isEdited) {
        m_baseText = theirs;
        takeOverText(theirs);
        return;
    }
    const QString mine = textToSave();
    if (const auto merged = mergedText(m_baseText, mine, theirs)) {
        m_baseText = theirs;
        if (*merged != mine) {
            takeOverText(*merged);
        }
        m_isEdited = *merged != theirs;
        if (m_isEdited) {
            markForAutoSave();
        } else {
            forgetEdits();
            m_journal->remove();
        }
        return;
    }
    // Nobody can tell which is meant: the note has what was typed last, the other text stands beside it.
    m_selfEditingNote = true;
    forgetEdits();
    const int syntax = currentSyntax();
    m_note->updateNoteWithText(mine, syntax);
    m_note->keepLostText(theirs, syntax);
    writeText(mine);
    m_selfEditingNote = false;
    Q_EMIT noteWasSaved();
}

void QBNoteEditorViewController::noteWasDeleted()
{
    // What was typed and never saved is worth a note of its own.
    const QString text = m_isEdited ? textToSave() : QString();
    NSManagedObjectContext *moc = m_note->managedObjectContext();
    QBCoreDataStack *stack = QBCoreDataStack::sharedStack();
    if (moc == nullptr && stack != nullptr) {
        moc = stack->managedObjectContext().get();
    }
    forgetEdits();
    m_note = {};
    const bool isKept = !text.isEmpty() && moc != nullptr;
    const NSRange selection = m_view->selectedRange();
    if (isKept) {
        m_note = QBNote::noteWithText(text, currentSyntax(), *moc);
        saveStore(/*baseText=*/{});
    }
    loadNote();
    if (isKept) {
        m_view->setSelectedRange(selection); // who writes goes on writing
    }
    Q_EMIT noteDidChange();
}

QBNoteEditorViewController::PlacesInText QBNoteEditorViewController::placesInText() const
{
    const QBNotesTextStorage &storage = m_stack.noteTextStorage();
    const NSRange selection = m_view->selectedRange();
    const QBNoteTextView::ScrollPosition scroll = m_view->scrollPosition();
    return {.start = expandedLocation(storage, selection.location),
            .end = expandedLocation(storage, selection.limit()),
            .top = expandedLocation(storage, scroll.location),
            .offset = scroll.offset};
}

void QBNoteEditorViewController::restorePlaces(const PlacesInText &places)
{
    const QBNotesTextStorage &storage = m_stack.noteTextStorage();
    const qint64 start = bufferLocation(storage, places.start);
    m_view->setSelectedRange({start, std::max<qint64>(0, bufferLocation(storage, places.end) - start)});
    m_view->scrollTo({.location = bufferLocation(storage, places.top), .offset = places.offset});
}

void QBNoteEditorViewController::takeOverText(const QString &text)
{
    const auto difference =
        TextDifference::between(m_stack.noteTextStorage().stringWithExpandedTextAttachments(), text);
    PlacesInText places = placesInText();
    for (qint64 *place : {&places.start, &places.end, &places.top}) {
        *place = difference.moved(*place);
    }
    // What could be undone was of the other text; the view forgets it.
    showText(text);
    restorePlaces(places);
    highlightSearch();
    m_findBar->noteDidChange();
    m_information->noteDidChange();
}

#include "QBNotesTableViewController.h"

#include "QBStaticSidebarItem.h"
#include "QBTagSidebarItem.h"

#include <Markup/Syntax/StylerSyntax.h>
#include <Store/CurrentSyntax.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNoteFile.h>
#include <Store/QBNoteTag.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QCoreApplication>
#include <QScopedValueRollback>

#include <algorithm>

using namespace Qt::StringLiterals;
using quib::currentSyntax;
using quib::Ref;

namespace {

constexpr char kContext[] = "QBNotesTableViewController";

[[nodiscard]] QString localised(const char *text)
{
    return QCoreApplication::translate(kContext, text);
}

/// Whether there still is such a note: an action may be older than a deletion.
[[nodiscard]] bool isThere(const Ref<QBNote> &note)
{
    return note && note->managedObjectContext() != nullptr && !note->isDeleted();
}

[[nodiscard]] QList<Ref<QBNote>> thoseThere(QList<Ref<QBNote>> notes)
{
    notes.removeIf([](const Ref<QBNote> &note) { return !isThere(note); });
    return notes;
}

} // namespace

/// A command while it is carried out. At its end the list hears of all that it changed, so that nothing that others
/// change is taken for its doing.
class QBNotesTableViewController::Command
{
public:
    explicit Command(QBNotesTableViewController &controller)
        : m_controller(controller)
        , m_isRunning(controller.m_isCarryingOutCommand, true)
    {
    }
    ~Command()
    {
        if (m_controller.m_fetchedResultController != nullptr) {
            m_controller.m_fetchedResultController->managedObjectContext()->processPendingChanges();
        }
    }
    Command(const Command &) = delete;
    Command &operator=(const Command &) = delete;

private:
    QBNotesTableViewController &m_controller;
    QScopedValueRollback<bool> m_isRunning;
};

// New notes

Ref<QBNote> QBNotesTableViewController::createNewNote()
{
    const QBCoreDataStack *stack = QBCoreDataStack::sharedStack();
    if (stack == nullptr || stack->managedObjectContext() == nullptr) {
        return nullptr;
    }
    // 1. A title, which the search suggests.
    QString text = QString(u"# "_s % m_currentSearch);
    // 2. The tag under which the note will be found again.
    if (const auto item = std::dynamic_pointer_cast<QBTagSidebarItem>(m_representedObject)) {
        text += QString(u'\n' % item->tagString());
    }
    // 3. Among to-dos all of this gives way to one that is still to be written.
    if (std::dynamic_pointer_cast<QBTodoSidebarItem>(m_representedObject) != nullptr) {
        text = quib::syntax::stylerMarkerChecked(/*isChecked=*/false, currentSyntax());
    }
    // 4. The note.
    return QBNote::noteWithText(text, currentSyntax(), *stack->managedObjectContext());
}

// Flags

void QBNotesTableViewController::pinNotes(const QList<Ref<QBNote>> &notes)
{
    if (m_representedObject == nullptr || m_representedObject->canPinNotes()) {
        changeNotes(notes, &QBNote::pin, localised(QT_TRANSLATE_NOOP("QBNotesTableViewController", "Pin notes")),
                    localised(QT_TRANSLATE_NOOP("QBNotesTableViewController", "Unpin notes")));
    }
}

void QBNotesTableViewController::unpinNotes(const QList<Ref<QBNote>> &notes)
{
    if (m_representedObject == nullptr || m_representedObject->canPinNotes()) {
        changeNotes(notes, &QBNote::unpin, localised("Unpin notes"), localised("Pin notes"));
    }
}

void QBNotesTableViewController::archiveNotes(const QList<Ref<QBNote>> &notes)
{
    changeNotes(notes, &QBNote::archive, localised(QT_TRANSLATE_NOOP("QBNotesTableViewController", "Archive notes")),
                localised(QT_TRANSLATE_NOOP("QBNotesTableViewController", "Unarchive notes")));
}

void QBNotesTableViewController::unarchiveNotes(const QList<Ref<QBNote>> &notes)
{
    changeNotes(notes, &QBNote::unarchive, localised("Unarchive notes"), localised("Archive notes"));
}

void QBNotesTableViewController::restoreNotes(const QList<Ref<QBNote>> &notes)
{
    changeNotes(notes, &QBNote::restoreFromTrash,
                localised(QT_TRANSLATE_NOOP("QBNotesTableViewController", "Restore notes")),
                localised(QT_TRANSLATE_NOOP("QBNotesTableViewController", "Delete notes")));
}

void QBNotesTableViewController::deleteNotes(const QList<Ref<QBNote>> &notes)
{
    if (notes.isEmpty() || (m_representedObject != nullptr && !m_representedObject->canDeleteNotes())) {
        return;
    }
    if (std::dynamic_pointer_cast<QBNotesTrashSidebarItem>(m_representedObject) == nullptr) {
        changeNotes(notes, &QBNote::trash, localised("Delete notes"), localised("Restore notes"));
        return;
    }
    const QString suppressionKey = u"PermanentlyDeleteNoteSuppressionKey"_s;
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    if (preferences != nullptr && preferences->preferenceValueForKey(suppressionKey).toBool()) {
        permanentlyDeleteNotes(notes);
        return;
    }
    permanentlyDeleteNotesAfterAsking(
        {.message = localised(QT_TRANSLATE_NOOP("QBNotesTableViewController",
                                                "Are you sure you want to permanently delete the selected notes?")),
         .notes = notes,
         .suppressionText =
             localised(QT_TRANSLATE_NOOP("QBNotesTableViewController", "Do not show this warning again.")),
         .suppressionKey = suppressionKey});
}

void QBNotesTableViewController::emptyTrash()
{
    const QBCoreDataStack *stack = QBCoreDataStack::sharedStack();
    if (stack == nullptr || stack->managedObjectContext() == nullptr) {
        return;
    }
    const QList<Ref<QBNote>> notes = QBNote::allTrashedNotesInManagedObjectContext(*stack->managedObjectContext());
    if (!notes.isEmpty()) {
        permanentlyDeleteNotesAfterAsking(
            {.message = localised(QT_TRANSLATE_NOOP(
                 "QBNotesTableViewController", "Are you sure you want to permanently delete all notes in the trash?")),
             .notes = notes,
             .suppressionText = {},
             .suppressionKey = {}});
    }
}

void QBNotesTableViewController::permanentlyDeleteNotesAfterAsking(const QBNotesTableQuestion &question)
{
    m_view.ask(question, [this, notes = question.notes, suppressionKey = question.suppressionKey,
                          life = std::weak_ptr<char>(m_life)](bool isConfirmed, bool isSuppressed) {
        if (!isConfirmed || life.expired()) {
            return;
        }
        if (auto *manager = QBNotesPreferenceManager::sharedPreferenceManager();
            manager != nullptr && isSuppressed && !suppressionKey.isEmpty()) {
            manager->savePreferenceValue(true, suppressionKey);
        }
        permanentlyDeleteNotes(notes);
    });
}

void QBNotesTableViewController::permanentlyDeleteNotes(const QList<Ref<QBNote>> &notes)
{
    const Command command(*this);
    for (const Ref<QBNote> &note : thoseThere(notes)) {
        // The question may have stood open while a note was restored elsewhere.
        if (note->isTrashed()) {
            note->permanentlyDelete();
        }
    }
    save();
}

void QBNotesTableViewController::changeNotes(const QList<Ref<QBNote>> &notes, void (QBNote::*operation)(),
                                             const QString &actionName, const QString &inverseName)
{
    const Command command(*this);
    QList<NoteState> changed;
    for (const Ref<QBNote> &note : thoseThere(notes)) {
        const NoteState before{note, note->isPinned(), note->isTrashed(), note->isArchived()};
        (note.get()->*operation)();
        // What was so before is not undone.
        if (note->isPinned() != before.isPinned || note->isTrashed() != before.isTrashed ||
            note->isArchived() != before.isArchived) {
            changed.append(before);
        }
    }
    if (!changed.isEmpty()) {
        registerUndo(actionName,
                     [this, changed, actionName, inverseName] { changeNotesBack(changed, inverseName, actionName); });
    }
    save();
}

void QBNotesTableViewController::changeNotesBack(const QList<NoteState> &states, const QString &actionName,
                                                 const QString &inverseName)
{
    const Command command(*this);
    QList<NoteState> before;
    for (const NoteState &state : states) {
        QBNote *const note = state.note.get();
        if (!isThere(state.note)) {
            continue;
        }
        before.append({state.note, note->isPinned(), note->isTrashed(), note->isArchived()});
        if (note->isPinned() != state.isPinned) {
            state.isPinned ? note->pin() : note->unpin();
        }
        // Archiving takes a note out of the trash, so the trash comes last.
        if (note->isArchived() != state.isArchived) {
            state.isArchived ? note->archive() : note->unarchive();
        }
        if (note->isTrashed() != state.isTrashed) {
            state.isTrashed ? note->trash() : note->restoreFromTrash();
        }
    }
    if (!before.isEmpty()) {
        registerUndo(actionName,
                     [this, before, actionName, inverseName] { changeNotesBack(before, inverseName, actionName); });
    }
    save();
}

// Copies and merges

void QBNotesTableViewController::duplicate(const QList<Ref<QBNote>> &notes)
{
    QList<NoteState> undone;
    QList<Ref<NSManagedObject>> copies;
    for (const Ref<QBNote> &note : thoseThere(notes)) {
        const Ref<QBNote> copy = note->duplicateWithSyntax(currentSyntax());
        copies.append(copy);
        // The copy may be written in before it is undone, so that goes no further than the trash.
        undone.append({copy, copy->isPinned(), /*isTrashed=*/true, copy->isArchived()});
    }
    if (copies.isEmpty()) {
        return;
    }
    const QString name = localised(QT_TRANSLATE_NOOP("QBNotesTableViewController", "Duplicate notes"));
    registerUndo(name, [this, undone, name] { changeNotesBack(undone, name, name); });
    save();
    // The list takes the copies in at the end of the turn; their rows are wanted now.
    copies.front()->managedObjectContext()->processPendingChanges();
    QList<qint64> rows;
    for (const Ref<NSManagedObject> &copy : copies) {
        const qint64 row =
            m_fetchedResultController != nullptr ? m_fetchedResultController->indexOfObject(copy.get()) : NSNotFound;
        if (row != NSNotFound) {
            rows.append(row);
        }
    }
    if (!rows.isEmpty()) {
        std::sort(rows.begin(), rows.end());
        m_view.selectRows(rows);
    }
}

void QBNotesTableViewController::mergeNotes(const QList<Ref<QBNote>> &notes)
{
    const Command command(*this);
    const QList<Ref<QBNote>> sources = thoseThere(notes);
    const Ref<QBNote> result = QBNote::mergeNotes(sources, currentSyntax());
    if (!result) {
        return;
    }
    registerUndo(localised(QT_TRANSLATE_NOOP("QBNotesTableViewController", "Merge notes")),
                 [this, sources, result, text = result->text()] { unmerge(sources, result, text); });
    save();
}

void QBNotesTableViewController::unmergeNotes(const QList<Ref<QBNote>> &notes, const Ref<QBNote> &andResultNote)
{
    unmerge(notes, andResultNote, isThere(andResultNote) ? andResultNote->text() : QString());
}

void QBNotesTableViewController::unmerge(const QList<Ref<QBNote>> &notes, const Ref<QBNote> &resultNote,
                                         const QString &mergedText)
{
    const Command command(*this);
    if (isThere(resultNote)) {
        // What was written into the result since stands nowhere else.
        if (resultNote->text() == mergedText) {
            resultNote->permanentlyDelete();
        } else {
            resultNote->trash();
        }
    }
    const QList<Ref<QBNote>> sources = thoseThere(notes);
    for (const Ref<QBNote> &note : sources) {
        note->restoreFromTrash();
    }
    registerUndo(localised(QT_TRANSLATE_NOOP("QBNotesTableViewController", "Unmerge notes")),
                 [this, sources] { mergeNotes(sources); });
    save();
}

// Tags

void QBNotesTableViewController::removeSelectedTag()
{
    if (const auto item = std::dynamic_pointer_cast<QBTagSidebarItem>(m_representedObject)) {
        removeTag(item->tag()->title(), selectedNotes());
    }
}

void QBNotesTableViewController::removeTag(const QString &tag, const QList<Ref<QBNote>> &fromNotes)
{
    const Command command(*this);
    const QList<Ref<QBNote>> notes = thoseThere(fromNotes);
    const Ref<QBNoteTag> found =
        notes.isEmpty() ? nullptr : QBNoteTag::tagWithName(tag, *notes.front()->managedObjectContext());
    if (!found) {
        return;
    }
    QList<TextChange> changes;
    for (const Ref<QBNote> &note : notes) {
        changes.append({note, note->text(), {}});
    }
    found->deleteTagWithSyntax(currentSyntax(), notes);
    for (TextChange &change : changes) {
        change.after = change.note->text();
    }
    registerUndo(localised(QT_TRANSLATE_NOOP("QBNotesTableViewController", "Remove tag")),
                 [this, tag, changes] { changeTextsBack(tag, changes); });
    save();
}

void QBNotesTableViewController::unremoveTag(const QString &tag, const QList<Ref<QBNote>> &fromNotes)
{
    QList<TextChange> changes;
    for (const Ref<QBNote> &note : fromNotes) {
        changes.append({note, QString(), QString()});
    }
    changeTextsBack(tag, changes);
}

void QBNotesTableViewController::changeTextsBack(const QString &tag, const QList<TextChange> &changes)
{
    const Command command(*this);
    QList<Ref<QBNote>> notes;
    QList<Ref<QBNote>> rewritten;
    for (const TextChange &change : changes) {
        if (!isThere(change.note)) {
            continue;
        }
        notes.append(change.note);
        if (!change.before.isNull() && change.note->text() == change.after) {
            // Untouched since: the tag goes back to its place, with all that was below it.
            change.note->updateNoteWithText(change.before, currentSyntax(), /*updateModificationDate=*/false);
        } else {
            rewritten.append(change.note);
        }
    }
    if (notes.isEmpty()) {
        return;
    }
    if (!rewritten.isEmpty()) {
        if (const auto found = QBNoteTag::getOrCreateTagWithName(tag, *notes.front()->managedObjectContext())) {
            found->addTagToNotes(rewritten, currentSyntax());
        }
    }
    registerUndo(localised(QT_TRANSLATE_NOOP("QBNotesTableViewController", "Re-add tag")),
                 [this, tag, notes] { removeTag(tag, notes); });
    save();
}

// Undoing

void QBNotesTableViewController::registerUndo(const QString &actionName, std::function<void()> inverse)
{
    m_undoManager.registerUndoWithTarget(this, std::move(inverse));
    m_undoManager.setActionName(actionName);
}

void QBNotesTableViewController::save()
{
    if (QBCoreDataStack *stack = QBCoreDataStack::sharedStack()) {
        stack->saveUsingCoalescence(/*coalescence=*/true);
    }
}

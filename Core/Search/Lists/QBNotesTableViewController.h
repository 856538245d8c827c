#pragma once

#include "MRTFetchedResultsController.h"
#include "QBNoteTableCellTextRenderer.h"
#include "QBNotesTableViewInterface.h"
#include "QBSidebarItem.h"

#include <Foundation/DayWatch.h>
#include <Search/NoteTextSearch.h>
#include <Text/NSUndoManager.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

/// The note list of the window, without the window: the notes of the selected sidebar item under the filter of the
/// search field, what each row shows, how a new note begins, and the commands on notes, each with its inverse on the
/// undo stack. Owned by the window; main queue.
class QBNotesTableViewController : private MRTFetchedResultsControllerDelegate
{
public:
    enum class RowKind : quint8
    {
        Plain,
        Image,
        Conflict,
        /// The first row of a conflict group.
        ConflictRoot,
    };
    enum class RowHeight : quint8
    {
        Plain,
        Image,
    };

    /// view and undoManager outlive the controller. textSearch answers the search field's terms; without it, each note
    /// is asked.
    QBNotesTableViewController(QBNotesTableViewInterface &view, NSUndoManager &undoManager,
                               std::shared_ptr<quib::NoteTextSearch> textSearch = nullptr);
    ~QBNotesTableViewController() override;
    QBNotesTableViewController(const QBNotesTableViewController &) = delete;
    QBNotesTableViewController &operator=(const QBNotesTableViewController &) = delete;

    /// Held weakly: it is taken out, by giving null, before it dies.
    void setDelegate(QBNotesTableViewControllerDelegate *delegate) { m_delegate = delegate; }

    // Filling

    [[nodiscard]] const QBSidebarItem::Pointer &representedObject() const { return m_representedObject; }
    /// Shows the notes of an item, or nothing. Notes that were selected stay so where the item has them; a search goes
    /// on in the new list.
    void setRepresentedObject(const QBSidebarItem::Pointer &item);
    /// Null while there is nothing to show.
    [[nodiscard]] MRTFetchedResultsController *fetchedResultController() const
    {
        return m_fetchedResultController.get();
    }

    // Rows

    [[nodiscard]] qint64 numberOfRows() const;
    /// Null for a row that there is not.
    [[nodiscard]] quib::Ref<NSManagedObject> noteAtRow(qint64 row) const;
    [[nodiscard]] RowKind kindOfRow(qint64 row) const;
    [[nodiscard]] RowHeight heightOfRow(qint64 row) const;
    [[nodiscard]] NSAttributedString attributedStringForRow(qint64 row);
    [[nodiscard]] NSAttributedString infoAttributedStringForRow(qint64 row) const;
    [[nodiscard]] QBNoteTableCellTextRenderer &noteTableCellTextRenderer() { return m_noteTableCellTextRenderer; }

    // Selection

    /// In the list's order, without sample notes.
    [[nodiscard]] QList<quib::Ref<QBNote>> selectedNotes() const;
    [[nodiscard]] QStringList selectedNotesURIRepresentations() const;
    /// Notes that the list does not show are passed over.
    void selectNotesWithURIRepresentations(const QStringList &uris);

    // Search

    /// The text of the search field.
    [[nodiscard]] const QString &currentSearch() const { return m_currentSearch; }
    /// Puts a text into the field, goes there and searches.
    void setCurrentSearch(const QString &search);
    /// Filters the list. The selection and the place from before the search come back when the field is emptied.
    void searchFieldUpdated(const QString &string);

    // Commands (QBNotesTableViewController+Commands.cpp). Those without notes take the selected ones. What an item does
    // not allow does nothing.

    /// A note that begins as the list suggests: with the text of the search field as title and the item's tag, or as a
    /// to-do among to-dos. Null without a store.
    quib::Ref<QBNote> createNewNote();
    /// Puts notes into the trash; in the trash, deletes them for good after a question.
    void deleteNotes() { deleteNotes(selectedNotes()); }
    void deleteNotes(const QList<quib::Ref<QBNote>> &notes);
    /// Deletes all that is in the trash for good, always after a question.
    void emptyTrash();
    void restoreNotes() { restoreNotes(selectedNotes()); }
    void restoreNotes(const QList<quib::Ref<QBNote>> &notes);
    void pinNotes() { pinNotes(selectedNotes()); }
    void pinNotes(const QList<quib::Ref<QBNote>> &notes);
    void unpinNotes() { unpinNotes(selectedNotes()); }
    void unpinNotes(const QList<quib::Ref<QBNote>> &notes);
    void archiveNotes() { archiveNotes(selectedNotes()); }
    void archiveNotes(const QList<quib::Ref<QBNote>> &notes);
    void unarchiveNotes() { unarchiveNotes(selectedNotes()); }
    void unarchiveNotes(const QList<quib::Ref<QBNote>> &notes);
    /// Selects the copies. Undone, they are in the trash.
    void duplicate() { duplicate(selectedNotes()); }
    void duplicate(const QList<quib::Ref<QBNote>> &notes);
    /// One note of all texts, in the order of the list.
    void mergeNotes() { mergeNotes(selectedNotes()); }
    void mergeNotes(const QList<quib::Ref<QBNote>> &notes);
    /// Takes a merge back: deletes its result and restores the sources that there still are.
    void unmergeNotes(const QList<quib::Ref<QBNote>> &notes, const quib::Ref<QBNote> &andResultNote);
    /// Takes the tag of the selected item out of the selected notes.
    void removeSelectedTag();
    void removeTag(const QString &tag, const QList<quib::Ref<QBNote>> &fromNotes);
    /// Writes the tag into the notes that lack it.
    void unremoveTag(const QString &tag, const QList<quib::Ref<QBNote>> &fromNotes);
    /// Whether what the list tells now is the doing of one of these commands, or of its undoing.
    [[nodiscard]] bool isCarryingOutCommand() const { return m_isCarryingOutCommand; }

private:
    class Command;

    /// A note's flags, as a command found or left them.
    struct NoteState
    {
        quib::Ref<QBNote> note;
        bool isPinned = false;
        bool isTrashed = false;
        bool isArchived = false;
    };
    /// What removing a tag did to a note.
    struct TextChange
    {
        quib::Ref<QBNote> note;
        QString before;
        QString after;
    };

    // MRTFetchedResultsControllerDelegate
    [[nodiscard]] MRTFetchedResultsControllerDelegateHas delegateHas() const override;
    void controllerWillChangeContent(MRTFetchedResultsController &controller) override;
    void controllerDidChangeContent(MRTFetchedResultsController &controller) override;
    void controllerDidProgressivelyChangeObject(MRTFetchedResultsController &controller, NSManagedObject &object,
                                                qint64 atIndex, qint64 progressiveIndex, MRTChangeType forChangeType,
                                                MRTChangeType forProgressiveChangeType, qint64 newIndex,
                                                qint64 newProgressiveIndex) override;

    /// Asks again for a list, and for a search, that names the day.
    void dayDidChange();
    void changeNotes(const QList<quib::Ref<QBNote>> &notes, void (QBNote::*operation)(), const QString &actionName,
                     const QString &inverseName);
    void changeNotesBack(const QList<NoteState> &states, const QString &actionName, const QString &inverseName);
    void permanentlyDeleteNotesAfterAsking(const QBNotesTableQuestion &question);
    void permanentlyDeleteNotes(const QList<quib::Ref<QBNote>> &notes);
    void unmerge(const QList<quib::Ref<QBNote>> &notes, const quib::Ref<QBNote> &resultNote, const QString &mergedText);
    void changeTextsBack(const QString &tag, const QList<TextChange> &changes);
    /// Registers the inverse of what was done, under the name of what was done.
    void registerUndo(const QString &actionName, std::function<void()> inverse);
    void save();

    QBNotesTableViewInterface &m_view;
    NSUndoManager &m_undoManager;
    std::shared_ptr<quib::NoteTextSearch> m_textSearch;
    QBNotesTableViewControllerDelegate *m_delegate = nullptr;
    QBNoteTableCellTextRenderer m_noteTableCellTextRenderer;
    QBSidebarItem::Pointer m_representedObject;
    std::unique_ptr<MRTFetchedResultsController> m_fetchedResultController;
    QString m_currentSearch;
    QStringList m_selectedNotesBeforeSearch;
    /// Nothing when the list that it was a place of is gone.
    std::optional<double> m_scrollPositionBeforeSearch;
    /// Rows whose notes changed, by their places after the changes being told.
    QList<qint64> m_rowsToUpdatedAfterModelUpdate;
    bool m_isCarryingOutCommand = false;
    quib::DayWatch m_dayWatch;
    /// Dies with the controller: an answer may come later.
    std::shared_ptr<char> m_life = std::make_shared<char>();
};

#include "QBNotesTableViewController.h"

#include <Logging/QBLogger.h>
#include <Search/QBNoteSearchManager.h>
#include <Store/QBNoteFile.h>
#include <Store/QBNoteTag.h>
#include <Store/QBStaticNote.h>
#include <Themes/QBNotesAppThemeManager.h>

#include <QElapsedTimer>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

[[nodiscard]] QString milliseconds(const QElapsedTimer &timer)
{
    return QString::number(static_cast<double>(timer.nsecsElapsed()) / 1e6, 'f', 6);
}

/// NOTE: the flag is asked first. It is part of what the list fetches; the files are a relationship.
[[nodiscard]] bool hasImages(const NSManagedObject &object)
{
    const auto *note = dynamic_cast<const QBNote *>(&object);
    return note != nullptr && note->hasImages() && !note->orderedImages().isEmpty();
}

[[nodiscard]] bool hasWords(const NSManagedObject &object)
{
    const auto *note = dynamic_cast<const QBNote *>(&object);
    return note != nullptr && !(note->title().isEmpty() && note->subtitle().isEmpty());
}

/// What a window shows of a list at once, about.
constexpr qint64 kFirstRows = 16;

/// OPTIMIZATION: what the first rows show is read right behind the list, before the counts of the sidebar and the texts
/// for the search keep the store busy; it is painted next anyway.
void readFirstRows(const MRTFetchedResultsController &list)
{
    for (qint64 row = 0; row < std::min(kFirstRows, list.count()); ++row) {
        if (const auto note = list.objectAtIndex(row).as<QBNote>()) {
            static_cast<void>(note->title());
        }
    }
}

[[nodiscard]] QString formatOf(const NSPredicate::Ref &predicate)
{
    return predicate != nullptr ? predicate->predicateFormat() : QString();
}

} // namespace

QBNotesTableViewController::QBNotesTableViewController(QBNotesTableViewInterface &view, NSUndoManager &undoManager,
                                                       std::shared_ptr<quib::NoteTextSearch> textSearch)
    : m_view(view)
    , m_undoManager(undoManager)
    , m_textSearch(std::move(textSearch))
    , m_noteTableCellTextRenderer(QBNotesAppThemeManager::sharedThemeManager())
    , m_dayWatch([this] { dayDidChange(); })
{
}

QBNotesTableViewController::~QBNotesTableViewController()
{
    m_undoManager.removeAllActionsWithTarget(this);
}

// Filling

void QBNotesTableViewController::setRepresentedObject(const QBSidebarItem::Pointer &item)
{
    // 1. What is selected, by names that outlive the list.
    const QStringList selected = selectedNotesURIRepresentations();
    // 2. The item's notes.
    m_representedObject = item;
    m_fetchedResultController.reset();
    m_scrollPositionBeforeSearch.reset();
    const std::optional<NSFetchRequest> request = item != nullptr ? item->notesFetchRequest() : std::nullopt;
    QElapsedTimer timer;
    timer.start();
    if (request) {
        m_fetchedResultController =
            std::make_unique<MRTFetchedResultsController>(item->managedObjectContext(), request);
        m_fetchedResultController->setBulkFilter(
            [textSearch = m_textSearch](std::span<NSManagedObject *const> objects, const NSPredicate::Ref &predicate) {
                return textSearch != nullptr ? textSearch->objectsMatching(objects, predicate) : std::nullopt;
            });
        m_fetchedResultController->setFilterPredicate(QBNoteSearchManager::predicateForSearchString(m_currentSearch));
        if (NSError error; !m_fetchedResultController->performFetch(&error) || error.isSet()) {
            QBLogError(u"Error while fetching\n"_s + error.localizedDescription());
        }
        readFirstRows(*m_fetchedResultController);
        m_fetchedResultController->setDelegate(this);
        QBLogDebug(QString(u"Notes fetched in "_s % milliseconds(timer) % u"ms"_s));
    }
    // 3. Rows.
    timer.restart();
    m_view.reloadData();
    QBLogDebug(QString(u"Table Reloaded in "_s % milliseconds(timer) % u"ms"_s));
    // 4. The selection.
    if (!selected.isEmpty()) {
        selectNotesWithURIRepresentations(selected);
        m_view.setScrollPosition(0);
    }
}

void QBNotesTableViewController::dayDidChange()
{
    if (m_fetchedResultController == nullptr) {
        return;
    }
    const std::optional<NSFetchRequest> request = m_representedObject->notesFetchRequest();
    const bool isSame =
        request && formatOf(request->predicate) == formatOf(m_fetchedResultController->fetchRequest()->predicate) &&
        formatOf(QBNoteSearchManager::predicateForSearchString(m_currentSearch)) ==
            formatOf(m_fetchedResultController->filterPredicate());
    if (isSame) {
        return;
    }
    // Nobody asked for it, so whoever is reading stays where they are.
    const double position = m_view.scrollPosition();
    const std::optional<double> positionBeforeSearch = m_scrollPositionBeforeSearch;
    const bool hadSelection = !m_view.selectedRows().isEmpty();
    setRepresentedObject(m_representedObject);
    m_view.setScrollPosition(position);
    if (hadSelection && m_view.selectedRows().isEmpty()) {
        m_view.selectedNotesDidLeave();
    }
    m_scrollPositionBeforeSearch = positionBeforeSearch;
}

// Rows

qint64 QBNotesTableViewController::numberOfRows() const
{
    return m_fetchedResultController != nullptr ? m_fetchedResultController->count() : 0;
}

Ref<NSManagedObject> QBNotesTableViewController::noteAtRow(qint64 row) const
{
    return row >= 0 && row < numberOfRows() ? m_fetchedResultController->objectAtIndex(row) : nullptr;
}

QBNotesTableViewController::RowKind QBNotesTableViewController::kindOfRow(qint64 row) const
{
    const Ref<NSManagedObject> object = noteAtRow(row);
    if (!object) {
        return RowKind::Plain;
    }
    const Ref<QBNote> note = object.as<QBNote>();
    if (note && note->hasConflictedNotes() && m_representedObject->groupConflictedNotes() &&
        m_currentSearch.isEmpty()) {
        return note->isConflictRoot() ? RowKind::ConflictRoot : RowKind::Conflict;
    }
    return hasImages(*object) ? RowKind::Image : RowKind::Plain;
}

QBNotesTableViewController::RowHeight QBNotesTableViewController::heightOfRow(qint64 row) const
{
    const Ref<NSManagedObject> object = noteAtRow(row);
    return object && hasImages(*object) && hasWords(*object) ? RowHeight::Image : RowHeight::Plain;
}

NSAttributedString QBNotesTableViewController::attributedStringForRow(qint64 row)
{
    const Ref<NSManagedObject> object = noteAtRow(row);
    if (!object) {
        return {};
    }
    const RowKind kind = kindOfRow(row);
    return kind == RowKind::Conflict || kind == RowKind::ConflictRoot
               ? m_noteTableCellTextRenderer.noteConflictedTableCellAttributedStringForNote(
                     *object, m_currentSearch, /*isHeader=*/kind == RowKind::ConflictRoot)
               : m_noteTableCellTextRenderer.noteTableCellAttributedStringForNote(*object, m_currentSearch);
}

NSAttributedString QBNotesTableViewController::infoAttributedStringForRow(qint64 row) const
{
    const Ref<NSManagedObject> object = noteAtRow(row);
    return object ? m_noteTableCellTextRenderer.noteTableCellInfoAttributedStringForNote(*object)
                  : NSAttributedString();
}

// Selection

QList<Ref<QBNote>> QBNotesTableViewController::selectedNotes() const
{
    QList<Ref<QBNote>> notes;
    for (const qint64 row : m_view.selectedRows()) {
        const Ref<NSManagedObject> object = noteAtRow(row);
        if (const Ref<QBNote> note = object ? object.as<QBNote>() : nullptr) {
            notes.append(note);
        }
    }
    return notes;
}

QStringList QBNotesTableViewController::selectedNotesURIRepresentations() const
{
    QStringList uris;
    for (const qint64 row : m_view.selectedRows()) {
        if (const Ref<NSManagedObject> object = noteAtRow(row)) {
            const auto &coordinator = m_fetchedResultController->managedObjectContext()->persistentStoreCoordinator();
            uris.append(coordinator->uriForObjectID(object->objectID()));
        }
    }
    return uris;
}

void QBNotesTableViewController::selectNotesWithURIRepresentations(const QStringList &uris)
{
    QList<qint64> rows;
    if (m_fetchedResultController != nullptr) {
        NSManagedObjectContext &context = *m_fetchedResultController->managedObjectContext();
        for (const QString &uri : uris) {
            // A note that was saved since has another name now.
            const auto &coordinator = *context.persistentStoreCoordinator();
            const NSManagedObjectID identity = coordinator.resolvedID(coordinator.managedObjectIDForURI(uri));
            const Ref<NSManagedObject> object = identity.isNull() ? nullptr : context.registeredObjectForID(identity);
            const qint64 row = object ? m_fetchedResultController->indexOfObject(object.get()) : NSNotFound;
            if (row != NSNotFound) {
                rows.append(row);
            }
        }
    }
    std::sort(rows.begin(), rows.end());
    m_view.selectRows(rows);
}

// Search

void QBNotesTableViewController::setCurrentSearch(const QString &search)
{
    m_view.setSearchFieldString(search);
    m_view.focusSearchField();
    searchFieldUpdated(search);
}

void QBNotesTableViewController::searchFieldUpdated(const QString &string)
{
    const bool wasSearching = !m_currentSearch.isEmpty();
    QStringList selected = selectedNotesURIRepresentations();
    if (!wasSearching && !string.isEmpty()) {
        m_selectedNotesBeforeSearch = selected;
        m_scrollPositionBeforeSearch = m_view.scrollPosition();
    }
    QElapsedTimer timer;
    timer.start();
    m_currentSearch = string;
    if (m_fetchedResultController != nullptr) {
        m_fetchedResultController->setFilterPredicate(QBNoteSearchManager::predicateForSearchString(string));
    }
    QBLogDebug(QString(u"Search done in "_s % milliseconds(timer) % u"ms"_s));
    m_view.reloadData();
    const bool isOver = wasSearching && string.isEmpty();
    selectNotesWithURIRepresentations(isOver ? std::exchange(m_selectedNotesBeforeSearch, {}) : selected);
    if (const auto position = isOver ? std::exchange(m_scrollPositionBeforeSearch, {}) : std::nullopt) {
        m_view.setScrollPosition(*position);
    }
    if (m_delegate != nullptr) {
        m_delegate->notesTableViewController(*this, string);
    }
}

// Changes

MRTFetchedResultsControllerDelegateHas QBNotesTableViewController::delegateHas() const
{
    return {.controllerDidProgressivelyChangeObject = true};
}

void QBNotesTableViewController::controllerWillChangeContent(MRTFetchedResultsController &controller)
{
    static_cast<void>(controller);
    m_rowsToUpdatedAfterModelUpdate.clear();
    m_view.beginUpdates();
}

void QBNotesTableViewController::controllerDidProgressivelyChangeObject(
    MRTFetchedResultsController &controller, NSManagedObject &object, qint64 atIndex, qint64 progressiveIndex,
    MRTChangeType forChangeType, MRTChangeType forProgressiveChangeType, qint64 newIndex, qint64 newProgressiveIndex)
{
    static_cast<void>(controller);
    static_cast<void>(object);
    static_cast<void>(atIndex);
    static_cast<void>(forChangeType);
    switch (forProgressiveChangeType) {
    case MRTChangeType::Insert:
        m_view.insertRow(newProgressiveIndex);
        return;
    case MRTChangeType::Delete:
        m_view.removeRow(progressiveIndex);
        return;
    case MRTChangeType::Move:
        m_view.moveRow(progressiveIndex, newProgressiveIndex);
        break;
    case MRTChangeType::Update:
        break;
    }
    m_rowsToUpdatedAfterModelUpdate.append(newIndex);
}

void QBNotesTableViewController::controllerDidChangeContent(MRTFetchedResultsController &controller)
{
    static_cast<void>(controller);
    m_view.endUpdates();
    if (!m_rowsToUpdatedAfterModelUpdate.isEmpty()) {
        std::sort(m_rowsToUpdatedAfterModelUpdate.begin(), m_rowsToUpdatedAfterModelUpdate.end());
        m_view.reloadRows(std::exchange(m_rowsToUpdatedAfterModelUpdate, {}));
    }
}

#pragma once

#include <Core/Store/StoreFixture.h>
#include <Search/Lists/QBNotesTableViewController.h>

#include <algorithm>
#include <vector>

namespace quib::tests {

/// A table without a window: it keeps its rows only by what it is told, as real ones do.
class FakeTable : public QBNotesTableViewInterface
{
public:
    QBNotesTableViewController *controller = nullptr;
    std::vector<const NSManagedObject *> rows;
    std::vector<const NSManagedObject *> selected;
    QList<qint64> reloaded;
    double position = 0;
    int reloads = 0;
    int updates = 0;
    QString field;
    int focusings = 0;
    int leavings = 0;
    QList<QBNotesTableQuestion> questions;
    Answer answer;

    void reloadData() override
    {
        rows.clear();
        for (qint64 row = 0; row < controller->numberOfRows(); ++row) {
            rows.push_back(controller->noteAtRow(row).get());
        }
        selected.clear();
        ++reloads;
    }
    void beginUpdates() override { reloaded.clear(); }
    void insertRow(qint64 row) override { rows.insert(rows.begin() + row, nullptr); }
    void removeRow(qint64 row) override
    {
        std::erase(selected, rows[static_cast<size_t>(row)]);
        rows.erase(rows.begin() + row);
    }
    void moveRow(qint64 row, qint64 toRow) override
    {
        const auto *moved = rows[static_cast<size_t>(row)];
        rows.erase(rows.begin() + row);
        rows.insert(rows.begin() + toRow, moved);
    }
    void endUpdates() override
    {
        ++updates;
        ASSERT_EQ(static_cast<qint64>(rows.size()), controller->numberOfRows());
        for (size_t row = 0; row < rows.size(); ++row) {
            const auto *note = controller->noteAtRow(static_cast<qint64>(row)).get();
            if (rows[row] == nullptr) {
                rows[row] = note;
            }
            EXPECT_EQ(rows[row], note) << row;
        }
    }
    void reloadRows(const QList<qint64> &rowsToReload) override { reloaded = rowsToReload; }
    [[nodiscard]] QList<qint64> selectedRows() const override
    {
        QList<qint64> found;
        for (size_t row = 0; row < rows.size(); ++row) {
            if (std::find(selected.begin(), selected.end(), rows[row]) != selected.end()) {
                found.append(static_cast<qint64>(row));
            }
        }
        return found;
    }
    void selectRows(const QList<qint64> &rowsToSelect) override
    {
        selected.clear();
        for (const qint64 row : rowsToSelect) {
            selected.push_back(rows.at(static_cast<size_t>(row)));
        }
    }
    [[nodiscard]] double scrollPosition() const override { return position; }
    void setScrollPosition(double newPosition) override { position = newPosition; }
    void selectedNotesDidLeave() override { ++leavings; }
    void setSearchFieldString(const QString &string) override { field = string; }
    void focusSearchField() override { ++focusings; }
    void ask(const QBNotesTableQuestion &question, const Answer &toAnswer) override
    {
        questions.append(question);
        answer = toAnswer;
    }
};

/// An entry of the sidebar for all notes that meet a condition.
class ConditionItem : public QBSidebarItem
{
public:
    ConditionItem(std::shared_ptr<NSManagedObjectContext> moc, QString condition)
        : QBSidebarItem(std::move(moc))
        , m_condition(std::move(condition))
    {
    }
    bool isGrouping = false;
    bool canDelete = true;
    bool canPin = true;

    [[nodiscard]] QString title() const override { return m_condition; }
    [[nodiscard]] QString uniqueIdentifier() const override { return m_condition; }
    [[nodiscard]] std::optional<NSFetchRequest>
    notesFetchRequestInManagedObjectContext(NSManagedObjectContext &moc) const override
    {
        static_cast<void>(moc);
        return NSFetchRequest{.entityName = QBNote::entityName(),
                              .predicate = NSPredicate::predicateWithFormat(m_condition),
                              .sortDescriptors = {{QBNoteAttributes::pinned, /*ascending=*/false},
                                                  {QBNoteAttributes::title, /*ascending=*/true}}};
    }
    [[nodiscard]] bool groupConflictedNotes() const override { return isGrouping; }
    [[nodiscard]] bool canDeleteNotes() const override { return canDelete; }
    [[nodiscard]] bool canPinNotes() const override { return canPin; }

private:
    QString m_condition;
};

/// A note list over a store, with an undo stack.
class NoteListFixture : public StoreFixture
{
protected:
    NoteListFixture() { make(nullptr); }
    ~NoteListFixture() override { controller.reset(); }

    void make(std::shared_ptr<NoteTextSearch> textSearch)
    {
        controller.reset();
        controller = std::make_unique<QBNotesTableViewController>(table, undoManager, std::move(textSearch));
        table.controller = controller.get();
    }
    [[nodiscard]] std::shared_ptr<ConditionItem> item(const QString &condition) const
    {
        return std::make_shared<ConditionItem>(stack->managedObjectContext(), condition);
    }
    void show(const QString &condition = QStringLiteral("trashed == NO AND archived == NO"))
    {
        controller->setRepresentedObject(item(condition));
    }
    void turn() const { moc().processPendingChanges(); }
    [[nodiscard]] static QString titlesOf(const std::vector<const NSManagedObject *> &objects)
    {
        QStringList titles;
        for (const auto *object : objects) {
            titles.append(dynamic_cast<const QBNote *>(object)->title());
        }
        return titles.join(u' ');
    }
    [[nodiscard]] QString shown() const { return titlesOf(table.rows); }
    [[nodiscard]] QString selection() const
    {
        QStringList titles;
        for (const auto &note : controller->selectedNotes()) {
            titles.append(note->title());
        }
        return titles.join(u' ');
    }
    void select(const QList<qint64> &rows) { table.selectRows(rows); }

    NSUndoManager undoManager;
    FakeTable table;
    std::unique_ptr<QBNotesTableViewController> controller;
};

} // namespace quib::tests

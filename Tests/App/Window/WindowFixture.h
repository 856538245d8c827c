#pragma once

#include <Process/QuibProcess.h>
#include <Store/QBNote.h>
#include <Support/TemporaryFolder.h>
#include <Window/QBMainWindowController.h>
#include <Window/WindowFrontEnd.h>

#include <gtest/gtest.h>

#include <QStringList>

#include <memory>

namespace quib::tests {

/// The whole application with its real windows, on a fresh profile.
class WindowFixture : public testing::Test
{
protected:
    WindowFixture();
    ~WindowFixture() override;

    /// Starts the application and shows its window. The notes are made before, oldest first.
    void launch(const QStringList &texts = {});
    /// Ends it as a user does.
    void quit();
    /// Lets everything arrive that was asked for.
    static void settle();
    /// Lets the sidebar's numbers arrive.
    void waitForCounts() const;

    [[nodiscard]] QBMainWindowController &window() const { return *m_interface->window(); }
    [[nodiscard]] NSManagedObjectContext &moc() const { return *m_process->stack().managedObjectContext(); }
    [[nodiscard]] QuibProcess &process() const { return *m_process; }
    [[nodiscard]] QList<Ref<QBNote>> notes() const { return QBNote::allNotesInManagedObjectContext(moc()); }
    [[nodiscard]] Ref<QBNote> noteTitled(const QString &title) const { return QBNote::noteWithTitle(title, moc()); }
    /// The titles of the rows, from the top.
    [[nodiscard]] QStringList rows() const;
    [[nodiscard]] QStringList selectedRows() const;
    /// The titles of the sidebar's entries, each child behind its father, without the gap.
    [[nodiscard]] QStringList entries() const;

    /// Presses a key wherever the keyboard is.
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    void type(const QString &text) const;
    void selectRow(const QString &title) const;
    void trigger(const QString &action) const;
    void openList(const QString &identifier) const;

    TemporaryFolder folder;
    NSPersistentStoreOptions storeOptions; ///< of the next launch
    static constexpr const char *kProfileVariable = "QUIB_TEST_PROFILE";

private:
    std::unique_ptr<QuibProcess> m_process;
    WindowInterface *m_interface = nullptr;
};

} // namespace quib::tests

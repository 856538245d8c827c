#pragma once

#include "RecordingInterface.h"

#include <Files/Profile.h>
#include <Process/QuibProcess.h>
#include <Store/NSManagedObjectContext.h>
#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <memory>

namespace quib::tests {

/// The whole application on a fresh profile, with windows that record.
class AppFixture : public testing::Test
{
protected:
    AppFixture() { Profile::setRoot(folder.path(QStringLiteral("profile"))); }
    ~AppFixture() override
    {
        process.reset();
        Profile::setRoot({});
    }

    /// Makes the process, which is not launched yet.
    void make()
    {
        process.reset();
        auto made = std::make_unique<RecordingInterface>();
        application = made.get();
        process = std::make_unique<QuibProcess>(std::move(made), [this](const QUrl &url) {
            opened.append(url);
            return true;
        });
    }
    void launch()
    {
        make();
        process->launch();
    }
    /// Runs the event loop until something holds; a test that waits in vain is ended by the runner.
    template <typename Condition> static void wait(Condition condition)
    {
        while (!condition()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }
    [[nodiscard]] QBAppDelegate &delegate() const { return process->delegate(); }
    [[nodiscard]] NSManagedObjectContext &moc() const { return *process->stack().managedObjectContext(); }
    [[nodiscard]] QList<Ref<QBNote>> notes() const { return QBNote::allNotesInManagedObjectContext(moc()); }
    /// The texts of all notes, sorted.
    [[nodiscard]] QStringList texts() const
    {
        QStringList found;
        for (const auto &note : notes()) {
            found.append(note->text());
        }
        found.sort();
        return found;
    }

    TemporaryFolder folder;
    std::unique_ptr<QuibProcess> process;
    RecordingInterface *application = nullptr; ///< the process's
    QList<QUrl> opened;                        ///< what was handed to the desktop
};

} // namespace quib::tests

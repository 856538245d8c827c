#pragma once

#include <Files/Profile.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNote.h>
#include <Store/QBNoteFile.h>
#include <Store/QBNoteTag.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Support/FakeClock.h>
#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <memory>
#include <ostream>

// How failures show strings.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace quib::tests {

/// A fresh profile with an open store, and a clock that stands still. Each save goes to a file.
class StoreFixture : public testing::Test
{
protected:
    StoreFixture()
    {
        Profile::setRoot(folder.path());
        preferences = std::make_unique<QBNotesPreferenceManager>();
        QBNotesPreferenceManager::setSharedPreferenceManager(preferences.get());
        open();
    }
    ~StoreFixture() override
    {
        close();
        QBNotesPreferenceManager::setSharedPreferenceManager(nullptr);
        preferences.reset();
        Profile::setRoot({});
    }

    void open()
    {
        stack = std::make_unique<QBCoreDataStack>();
        QBCoreDataStack::setSharedStack(stack.get());
        stack->setupStackWithDelegate({});
        ASSERT_FALSE(stack->openError().isSet()) << stack->openError().localizedDescription().toStdString();
    }
    void close() { stack.reset(); }
    void reopen()
    {
        save();
        close();
        open();
    }
    [[nodiscard]] NSManagedObjectContext &moc() const { return *stack->managedObjectContext(); }
    void save() const
    {
        NSError error;
        ASSERT_TRUE(!moc().hasChanges() || moc().save(&error)) << error.localizedDescription().toStdString();
    }
    [[nodiscard]] Ref<QBNote> makeNote(const QString &text, int syntax = 0) const
    {
        return QBNote::noteWithText(text, syntax, moc());
    }
    [[nodiscard]] static QStringList sortedTags(const QBNote &note)
    {
        QStringList tags = note.tagsStrings();
        tags.sort();
        return tags;
    }
    /// A file of the user's, outside of the profile's folders.
    [[nodiscard]] QUrl userFile(const QString &name, const QByteArray &bytes) const
    {
        return QUrl::fromLocalFile(folder.write(QStringLiteral("user/") + name, bytes));
    }

    TemporaryFolder folder;
    FakeClock clock;
    std::unique_ptr<QBNotesPreferenceManager> preferences;
    std::unique_ptr<QBCoreDataStack> stack;
};

} // namespace quib::tests

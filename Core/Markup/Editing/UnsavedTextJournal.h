#pragma once

#include <Foundation/NSDate.h>

#include <QString>
#include <QStringList>

#include <memory>

class NSManagedObjectContext;

namespace quib {

/// What was typed into a note and is not in the store yet, in a file of its own, so that a crash takes little of it.
/// Saving the note is as lazy as the store needs it; the journal is not. Owned by one editor; main queue, but for the
/// file, which a queue of its own writes.
///
/// Invariants: (1) A text that was written, and whose queue came round to it, survives a kill and a power loss until
/// remove(). (2) The file is at most a few times as long as the texts it holds. (3) Its writer holds a lock on it, so
/// that nobody takes a living editor's file for one that was left behind.
class UnsavedTextJournal
{
public:
    /// A text and what it was made from. A null text stands for none.
    struct Entry
    {
        QString noteIdentifier;
        int syntax = 0;
        QString baseText; ///< what the store had
        QString text;
    };

    /// No file is made before something is written.
    /// Shape: an empty folder stands for the profile's.
    explicit UnsavedTextJournal(const QString &folder = {});
    /// Waits for what is being written. A file that was not removed stays.
    ~UnsavedTextJournal();
    UnsavedTextJournal(const UnsavedTextJournal &) = delete;
    UnsavedTextJournal &operator=(const UnsavedTextJournal &) = delete;

    /// Puts an entry on disk soon, in the place of the one before. A failure is logged: typing goes on.
    void write(const Entry &entry);
    /// The store has everything: the files go.
    void remove();
    /// What was written stays on disk until remove(), and what is written next stands beside it: the store could not
    /// take it.
    void setAside();
    void waitUntilWritten() const;

    // After a crash

    /// Puts what crashed editors left behind into the notes of a context and saves it. Where somebody else has written
    /// the same place since, that text stays, and the one that was typed becomes a note beside it; a note that is gone
    /// comes back. Files of living editors are left alone, damaged ones give what is whole in them.
    /// Shape:   how many texts were brought back.
    /// Errors:  logged; the files stay for another time.
    static qsizetype recoverUnsavedTexts(NSManagedObjectContext &context, const QString &folder = {});

    /// "Unsaved Text" in the profile.
    [[nodiscard]] static QString defaultFolder();

private:
    struct Writer;

    std::shared_ptr<Writer> m_writer;
};

} // namespace quib

#pragma once

#include <Foundation/NSError.h>
#include <Foundation/NSProgress.h>

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include <optional>

class NSManagedObjectID;
class NSPersistentStore;
class QBCoreDataStack;

/// One thing that a check of the store found.
struct QBStoreFinding
{
    enum class Kind : quint8
    {
        /// The file of the store is damaged.
        BrokenFile,
        /// A link between a note and a tag of which one is gone.
        DanglingLink,
        /// A note's derived fields are not those of its text.
        DerivedFields,
        /// Two rows of one tag.
        DuplicateTag,
        /// An attachment that should be on this machine has no binary.
        MissingBinary,
        /// A binary whose marker stands in a note, but that no row knows.
        LostAttachment,
        /// An attachment that is in no text and never was a note's; repaired, it goes with those that are unused.
        ForgottenAttachment,
        /// A binary that no row and no note knows, and that is not just being made.
        OrphanedFolder,
    };

    Kind kind = Kind::BrokenFile;
    /// The identifier, title or path of what it is about.
    QString object;
    /// One line for people, without note text.
    QString message;
    bool isRepaired = false;
};

/// Checks a store from the file up: the file itself, links, derived fields of every note, tags, attachments against
/// rows and disk. Repairs what can be repaired without touching a text. Works in batches, so that memory does not grow
/// with the texts. Main queue; blocks until it is done.
class QBStoreChecker
{
public:
    /// The stack must be set up and live as long as the checker.
    explicit QBStoreChecker(QBCoreDataStack &stack)
        : m_stack(stack)
    {
    }

    /// Shape:   progress counts the notes; cancelling it ends the check with what was found so far.
    /// Errors:  nullopt when the store cannot be read, or a repair cannot be saved.
    [[nodiscard]] std::optional<QList<QBStoreFinding>> checkStore(bool repair, NSProgress &progress, NSError *error);

private:
    [[nodiscard]] bool checkFile(NSError *error);
    [[nodiscard]] bool checkLinks(NSError *error);
    [[nodiscard]] bool checkNotes(NSProgress &progress, NSError *error);
    [[nodiscard]] bool checkNotesOfBatch(const QList<NSManagedObjectID> &batch, NSError *error);
    [[nodiscard]] bool checkTags(NSError *error);
    [[nodiscard]] bool checkBinaries(NSError *error);
    [[nodiscard]] bool checkForgottenFiles(NSError *error);
    [[nodiscard]] bool checkFolders(NSError *error);
    [[nodiscard]] bool restoreLostAttachment(const QString &uniqueIdentifier, const QString &folder, bool isImage);
    [[nodiscard]] bool saveRepairs(NSError *error);
    [[nodiscard]] NSPersistentStore &store() const;
    [[nodiscard]] std::optional<QList<NSManagedObjectID>> identitiesOf(const QString &entityName, NSError *error) const;

    QBCoreDataStack &m_stack;
    bool m_repair = false;
    QList<QBStoreFinding> m_findings;
    QSet<QString> m_fileIdentifiers;             // of all attachments' rows
    QHash<QString, QString> m_markersWithoutRow; // identifier in a marker to the identifier of its note
};

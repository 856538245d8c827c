#pragma once

#include <Markup/Syntax/QBNoteSection.h>
#include <Store/NSFetchRequest.h>
#include <Store/_QBNote.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

class MRVectorClock;
class NSManagedObjectContext;
class QBNoteFile;

/// A note. Its text is the only truth: title, subtitle, tags, files, flags and counts are derived from it, at one
/// point, updateNoteWithText, and set by nobody else. Confined to its context's queue; the parsers are pure and run
/// anywhere. Every text position is a UTF-16 code unit; syntax is 0 for the native markup and 1 for Markdown
/// compatibility.
class QBNote : public _QBNote
{
public:
    // Construction

    /// A note with an identifier of its own, made and changed at one instant, now.
    static quib::Ref<QBNote> insertInManagedObjectContext(NSManagedObjectContext &moc);
    static quib::Ref<QBNote> noteWithText(const QString &text, int syntax,
                                          NSManagedObjectContext &inManagedObjectContext);

    // Lookup (QBNote+Fetching.cpp). A fetch that fails is logged and finds nothing.

    [[nodiscard]] static QList<quib::Ref<QBNote>> notesInManagedObjectContext(NSManagedObjectContext &moc,
                                                                              const NSPredicate::Ref &withPredicate);
    [[nodiscard]] static QList<quib::Ref<QBNote>> allNotesInManagedObjectContext(NSManagedObjectContext &moc);
    [[nodiscard]] static QList<quib::Ref<QBNote>> allUntrashedNotesInManagedObjectContext(NSManagedObjectContext &moc);
    [[nodiscard]] static QList<quib::Ref<QBNote>> allTrashedNotesInManagedObjectContext(NSManagedObjectContext &moc);
    [[nodiscard]] static QList<quib::Ref<QBNote>> allArchivedNotesInManagedObjectContext(NSManagedObjectContext &moc);
    [[nodiscard]] static QList<quib::Ref<QBNote>> allConflictedNotesInManagedObjectContext(NSManagedObjectContext &moc);
    [[nodiscard]] static QList<quib::Ref<QBNote>>
    notesWithUniqueIdentifiers(const QStringList &uniqueIdentifiers, NSManagedObjectContext &inManagedObjectContext);
    [[nodiscard]] static QList<quib::Ref<QBNote>> notesForTags(const QList<quib::Ref<QBNoteTag>> &tags,
                                                               NSManagedObjectContext &inManagedObjectContext);
    [[nodiscard]] static quib::Ref<QBNote> noteWithUniqueIdentifier(const QString &uniqueIdentifier,
                                                                    NSManagedObjectContext &inManagedObjectContext);
    /// The pinned one first, then the one changed last.
    [[nodiscard]] static quib::Ref<QBNote> noteWithTitle(const QString &title,
                                                         NSManagedObjectContext &inManagedObjectContext);
    [[nodiscard]] static quib::Ref<QBNote> untrashedNoteWithTitle(const QString &title,
                                                                  NSManagedObjectContext &inManagedObjectContext);
    [[nodiscard]] static quib::Ref<QBNote>
    noteContainingFileTextRepresentation(const QString &textRepresentation,
                                         NSManagedObjectContext &inManagedObjectContext);
    /// Deletes each row as it is; its files stay.
    static void deleteNotesWithUniqueIdentifiers(const QStringList &uniqueIdentifiers,
                                                 NSManagedObjectContext &inManagedObjectContext);
    /// The ten notes with a title that come first.
    [[nodiscard]] static QList<quib::Ref<QBNote>> watchNotesInManagedObjectContext(NSManagedObjectContext &moc);

    // Completion. Notes with a title that are neither trashed nor archived, no more than a limit, the last changed one
    // first.

    /// Of so many of the notes that changed last those are offered first whose titles begin with what was typed.
    static constexpr qint64 kCompletionCandidates = 200;
    /// Those with a string in their title; of the last changed ones those that begin with it come first.
    [[nodiscard]] static QList<quib::Ref<QBNote>>
    findNotesForPartialtitle(const QString &partialtitle, NSManagedObjectContext &inManagedObjectContext,
                             qint64 limitTo);
    [[nodiscard]] static QList<quib::Ref<QBNote>> allNotesInManagedObjectContext(NSManagedObjectContext &moc,
                                                                                 qint64 limitTo);

    // The one update

    void updateNoteWithText(const QString &text, int syntax);
    /// Stores the text and derives everything from it anew. Compares nothing: the caller decides what is a change.
    void updateNoteWithText(const QString &text, int syntax, bool updateModificationDate);
    /// Counts the to-dos anew, code included, and leaves all else alone: for a change of the syntax.
    void updateAttributesForNewSyntax(int syntax);
    /// Makes the derived fields what the text says, for a note that other hands left out of step; neither text, dates
    /// nor clock change. Gives the names of what changed.
    QStringList repairDerivedFieldsWithSyntax(int syntax);

    // Adding text (QBNote+Text.cpp)

    /// Puts the text behind a first line that is a heading, or at the front.
    void prependNoteWithText(const QString &text, int syntax);
    /// Puts the text at the end, but before a closing line that is one of the note's tags.
    void appendNoteWithText(const QString &text, int syntax);
    /// Replaces all but a first line that is a heading. A note without one gets an empty first line.
    void replaceNoteWithText(const QString &text, int syntax);
    [[nodiscard]] QList<QBNoteSection> noteSections() const;
    void prependSection(const QBNoteSection &section, const QString &withText, int syntax);
    void appendSection(const QBNoteSection &section, const QString &withText, int syntax);
    void replaceSection(const QBNoteSection &section, const QString &withText, int syntax);
    /// A copy with an identifier and attachments of its own, made now.
    quib::Ref<QBNote> duplicateWithSyntax(int syntax);
    /// One note of all texts in order; the sources go to the trash. Null, and nothing done, for fewer than two.
    static quib::Ref<QBNote> mergeNotes(const QList<quib::Ref<QBNote>> &notes, int withSyntax);

    // Parsers (QBNote+Parsing.cpp). Pure, any thread, linear in the text.

    [[nodiscard]] static QString parseTitleFromText(const QString &text);
    [[nodiscard]] static QString parseSubtitleFromText(const QString &text);
    /// The tags of a text with all their ancestors, in listing order, duplicates kept.
    [[nodiscard]] static QStringList parseHashTagsFromText(const QString &text, int syntax);
    [[nodiscard]] static qint64 parseTodoFromText(const QString &text, int syntax);
    [[nodiscard]] static qint64 parseCompletedTodoFromText(const QString &text, int syntax);
    [[nodiscard]] static bool parseContainSourceCodeFromText(const QString &text, int syntax);
    /// The text without code; hasCodeBlocks, where given, is set when there was a code block and left alone otherwise.
    [[nodiscard]] static QString removeCodeFromText(const QString &text, bool *hasCodeBlocks, int syntax);

    // State. Each change stamps its own date, on setting and on clearing; the modification date stays.

    void pin();
    void unpin();
    [[nodiscard]] bool isPinned() const { return pinned(); }
    /// Leaves the conflict group, if in one.
    void trash();
    void restoreFromTrash();
    [[nodiscard]] bool isTrashed() const { return trashed(); }
    /// An archived note is never in the trash.
    void archive();
    void unarchive();
    [[nodiscard]] bool isArchived() const { return archived(); }
    [[nodiscard]] bool isEditable() const { return !isTrashed() && !isStatic() && !isArchived(); }
    [[nodiscard]] bool isStatic() const { return false; }
    /// Deletes the note with its attachments.
    void permanentlyDelete();
    void updateUniqueIdentifier();
    /// A change of the flag also stamps the note's tags, whose counts and order depend on it.
    void setTrashed(bool value) override;
    void setArchived(bool value) override;

    // Conflict group (QBNote+Conflicts.cpp)

    /// Joins the group of another note, or makes one with it.
    void markAsConflictedFromNote(QBNote &note);
    /// Leaves the group; a group of one is none.
    void unmarkAsConflicted();
    [[nodiscard]] QList<quib::Ref<QBNote>> conflictedNotes() const;
    /// The group of a root identifier, the root's own note first while it is a member.
    [[nodiscard]] static QList<quib::Ref<QBNote>>
    conflictedNotesForUniqueIdentifier(const QString &uniqueIdentifier, NSManagedObjectContext &inManagedObjectContext);
    [[nodiscard]] QString conflictedRootUUID() const;
    [[nodiscard]] QString conflictedUUIDFromRootUUID(const QString &rootUUID) const;
    [[nodiscard]] bool hasConflictedNotes() const { return !conflictUniqueIdentifier().isNull(); }
    [[nodiscard]] bool isConflictRoot() const;
    /// Keeps a text of this note that another writer's text replaced, as a note of its own beside this one in a
    /// conflict group; both come back from trash and archive.
    quib::Ref<QBNote> keepLostText(const QString &text, int syntax);

    // Vector clock (QBNote+VectorClock.cpp)

    /// Counts one write of the text by this device.
    void updateNoteVectorClock();
    /// Errors: nullopt for stored bytes that are no clock; a note without any has an empty one.
    [[nodiscard]] std::optional<MRVectorClock> noteVectorClock() const;
    void mergeVectorClockWithClock(const MRVectorClock &clock);

    // Migration (QBNote+Migration.cpp). By key: the object need not be of this class.

    /// Fills in what model 2 added, where there is no title yet.
    static void migrateManagedObjectToVersion2(NSManagedObject &managedObject);
    /// Fills in what model 3 added, where there is no subtitle yet.
    static void migrateManagedObjectToVersion3(NSManagedObject &managedObject);
    void migrateDataToCurrentVersion();

    // Views (QBNote+Views.cpp)

    [[nodiscard]] QStringList tagsStrings() const;
    void setTagsFromStrings(const QStringList &strings);
    [[nodiscard]] QList<quib::Ref<QBNoteFile>> orderedFiles() const;
    [[nodiscard]] QList<quib::Ref<QBNoteFile>> orderedImages() const;
    [[nodiscard]] QList<quib::Ref<QBNoteFile>> orderedFilesWithoutImages() const;
    [[nodiscard]] bool hasAttachments() const { return hasFiles() || hasImages(); }
    /// Units: whole percent, cut; 0 without to-dos.
    [[nodiscard]] int completedToDoPercentage() const;
    /// A file name for the note, without extension.
    [[nodiscard]] QString filename() const;
    [[nodiscard]] QStringList activityItems() const { return {text()}; }
    [[nodiscard]] QStringList noteInfoItems() const;
    [[nodiscard]] QString autoCompleteItemTitle() const { return title(); }
    [[nodiscard]] QString autoCompleteItemTextRepresentation() const;
    [[nodiscard]] QString openNoteXCallbackURLString() const;
    [[nodiscard]] QString openNoteWithTitleXCallbackURLString() const;
    [[nodiscard]] QString openNoteInNewWindowXCallbackURLString() const;
    [[nodiscard]] QString openNoteXCallbackURLStringWithHeader(const QString &header) const;
    [[nodiscard]] static QString appendHeader(const QString &header, const QString &toNoteLink);

protected:
    void prepareForDeletion() override;

private:
    /// Tags, files, flags and counts from a text; steps of the update that need no date and no clock.
    void deriveFieldsFromText(const QString &text, int syntax);
    void setFilesFromText(const QString &textWithoutCode);
    void setTodoCountsFromText(const QString &text, int syntax);
    /// The text with each attachment duplicated and its marker replaced.
    [[nodiscard]] QString textWithDuplicatedFiles(const QString &text) const;
    void replaceRange(NSRange range, const QString &withText, int syntax);
    void restampConflictGroup(const QList<quib::Ref<QBNote>> &group, const QString &rootUUID) const;
};

#pragma once

#include <Store/NSFetchRequest.h>
#include <Store/_QBNoteTag.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

/// A tag that notes have in their text. The text is the truth, the row is an index made from it: renaming and deleting
/// a tag rewrite the text of its notes, and the rows follow. The place in the hierarchy is told by the slashes of the
/// title alone. Titles that differ in case and diacritics only are one tag; whichever spelling came first stays.
/// Confined to its context's queue.
class QBNoteTag : public _QBNoteTag
{
public:
    // Lookup and creation

    /// Tags by title in the locale's natural order; a null predicate gives all.
    [[nodiscard]] static QList<quib::Ref<QBNoteTag>>
    notesTagsInManagedObjectContext(NSManagedObjectContext &moc, const NSPredicate::Ref &withPredicate = {});
    /// The tags with a note that is neither trashed nor archived.
    [[nodiscard]] static QList<quib::Ref<QBNoteTag>>
    populatedNotesTagsInManagedObjectContext(NSManagedObjectContext &moc);
    /// Those of them without a slash.
    [[nodiscard]] static QList<quib::Ref<QBNoteTag>> rootTagsInManagedObjectContext(NSManagedObjectContext &moc);
    [[nodiscard]] static NSPredicate::Ref populatedTagsPredicate();
    [[nodiscard]] static NSPredicate::Ref rootTagsPredicate();
    [[nodiscard]] static quib::Ref<QBNoteTag> tagWithName(const QString &name,
                                                          NSManagedObjectContext &inManagedObjectContext);
    /// A new row, whatever rows there are; its title is the sanitised name.
    static quib::Ref<QBNoteTag> addNewTagWithName(const QString &name, NSManagedObjectContext &inManagedObjectContext);
    /// Errors: null for a name of which sanitising leaves nothing.
    static quib::Ref<QBNoteTag> getOrCreateTagWithName(const QString &name,
                                                       NSManagedObjectContext &inManagedObjectContext);
    /// The same for many names; names of one tag give it once. In the order of the names.
    static QList<quib::Ref<QBNoteTag>> getOrCreateTagsWithNames(const QStringList &names,
                                                                NSManagedObjectContext &inManagedObjectContext);
    /// Without line ends, tabs and hashes; without white space and slashes at both ends.
    [[nodiscard]] static QString sanitizeTagName(const QString &name);

    // Clean-up

    /// Deletes the tags that no note has; a tag of trashed notes only stays.
    static void deleteAllUnusedTagsInManagedObjectContext(NSManagedObjectContext &moc);
    /// Of neighbours with one normalised title the first takes over the notes, the others are deleted.
    static void mergeDuplicateTagsInInManagedObjectContext(NSManagedObjectContext &moc);

    // Completion (QBNoteTag+Completion.cpp). Tags in use only, without those excluded, no more than a limit.

    /// The tags with a string in their title; those that begin with it first, either part by title.
    [[nodiscard]] static QList<quib::Ref<QBNoteTag>>
    findTagsForPartialString(const QString &partialString, NSManagedObjectContext &inManagedObjectContext,
                             const QList<quib::Ref<QBNoteTag>> &excludeTags, qint64 limitTo);
    /// Of the tags that were used last, those with the most notes, the most first.
    [[nodiscard]] static QList<quib::Ref<QBNoteTag>>
    popularTagsInManagedObjectContext(NSManagedObjectContext &moc, const QList<quib::Ref<QBNoteTag>> &excludeTags,
                                      qint64 limitTo);

    // The tag itself

    [[nodiscard]] QString uniqueIdentifier() const { return title(); }
    [[nodiscard]] bool isPinned() const { return false; }
    [[nodiscard]] QString hashTagString() const;
    [[nodiscard]] static QString hashTagStringForTagName(const QString &tagName);
    [[nodiscard]] QString autoCompleteItemTitle() const { return title(); }
    [[nodiscard]] QString autoCompleteItemTextRepresentation() const { return hashTagString(); }
    void updateModificationDate();

    // Its notes

    /// The tag's notes that are neither trashed nor archived.
    [[nodiscard]] NSPredicate::Ref untrashedNotesPredicate() const;
    /// Errors: nullopt when the store failed, after logging it.
    [[nodiscard]] std::optional<qint64> untrashedNotesCount() const;
    [[nodiscard]] QList<quib::Ref<QBNote>>
    activeNotesWithSortDescriptors(const QList<NSSortDescriptor> &sortDescriptors) const;

    // Rewriting notes (QBNoteTag+Editing.cpp). None counts as an edit: modification dates stay.

    /// Writes the tag into the notes that lack it.
    void addTagToNotes(const QList<quib::Ref<QBNote>> &notes, int syntax);
    quib::Ref<QBNoteTag> renameTagWithTagNamed(const QString &newName, int syntax);
    /// Renames the tag and all below it in the notes given, or in all their notes. A name that another tag has merges
    /// into that one.
    /// Errors: null, and nothing done, for an empty name (also once sanitised) and for the title as it stands.
    quib::Ref<QBNoteTag> renameTagWithTagNamed(const QString &newName,
                                               const std::optional<QList<quib::Ref<QBNote>>> &inNotes, int syntax);
    void deleteTagWithSyntax(int syntax);
    /// Takes the tag and all below it out of the notes' text; a tag under another leaves that other one in its place.
    void deleteTagWithSyntax(int syntax, const QList<quib::Ref<QBNote>> &inNotes);

    // Hierarchy

    /// The levels of the title in lower case, without empty ones.
    [[nodiscard]] QStringList tagComponents() const;
    [[nodiscard]] static QStringList tagComponentsFromTagString(const QString &tagString);
    [[nodiscard]] static QString tagStringFromComponents(const QStringList &components);
    /// The levels in lower case without diacritics; kept until the title changes.
    [[nodiscard]] QStringList tagComponentsLowerCaseDiacritic() const;
    /// All tags below this one that are in use.
    [[nodiscard]] QList<quib::Ref<QBNoteTag>>
    childsAndSubChildsTagsWithSortDescriptors(const QList<NSSortDescriptor> &sortDescriptors) const;
    /// Those of the next level only.
    [[nodiscard]] QList<quib::Ref<QBNoteTag>>
    childTagsWithSortDescriptors(const QList<NSSortDescriptor> &sortDescriptors) const;
    /// Null for a top-level tag.
    [[nodiscard]] QString fatherTagName() const;
    [[nodiscard]] quib::Ref<QBNoteTag> fatherTag() const;
    [[nodiscard]] quib::Ref<QBNoteTag> rootFatherTag() const;
    /// Direct children only.
    [[nodiscard]] bool isChildOfTag(const QBNoteTag &tag) const;
    [[nodiscard]] QString leafTagName() const;
    [[nodiscard]] QString normalizedTitle() const;
    /// Null for a top-level tag.
    [[nodiscard]] QString normalizedFatherTagName() const;

protected:
    /// "untrashedNotesCount", by which the tag list can be ordered.
    [[nodiscard]] bool isDerivedKey(const QString &key) const override;
    [[nodiscard]] quib::Value derivedValueForKey(const QString &key) const override;

private:
    mutable QString m_componentsTitle; // the title that m_components were made of
    mutable QStringList m_components;
};

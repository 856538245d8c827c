#pragma once

#include "QBSidebarItem.h"

#include <Files/NSUbiquitousKeyValueStore.h>
#include <Store/QBNoteTag.h>

/// The entry of one tag. Its childs are the entries of the tags right below it that are in use.
class QBTagSidebarItem : public QBSidebarItem
{
public:
    /// Requires: the tag is alive; its context is shared.
    [[nodiscard]] static std::shared_ptr<QBTagSidebarItem>
    initWithTag(const quib::Ref<QBNoteTag> &tag, const Pointer &father = nullptr,
                std::shared_ptr<NSUbiquitousKeyValueStore> keyValueStore = nullptr);
    /// Used by initWithTag.
    QBTagSidebarItem(quib::Ref<QBNoteTag> tag, std::shared_ptr<NSUbiquitousKeyValueStore> keyValueStore);

    /// How the tag list is ordered: by title, or by the number of notes and then by title.
    [[nodiscard]] static QList<NSSortDescriptor> tagsSortDescriptors();

    [[nodiscard]] const quib::Ref<QBNoteTag> &tag() const { return m_tag; }
    /// The tag as it stands in a text.
    [[nodiscard]] QString tagString() const { return m_tag->hashTagString(); }
    /// Makes everything below the entry anew from the store.
    void updateChilds();

    /// The last level of the tag, in lower case.
    [[nodiscard]] QString title() const override;
    /// The user's choice, which all devices share under "QBTC_" and the tag's title, else by keyword; the same one for
    /// all while the user wants no pictures of tags.
    [[nodiscard]] QString icon() const override;
    [[nodiscard]] QString uniqueIdentifier() const override { return m_tag->uniqueIdentifier(); }
    [[nodiscard]] bool isPinned() const override { return m_tag->isPinned(); }
    [[nodiscard]] std::optional<NSFetchRequest>
    notesFetchRequestInManagedObjectContext(NSManagedObjectContext &moc) const override;
    /// Writes the tag into the text of the notes.
    void addNotes(const QList<quib::Ref<QBNote>> &notes) override;
    /// Takes the tag out of the text of its notes.
    void deleteItem() override;
    [[nodiscard]] bool canAddNotes() const override { return true; }
    [[nodiscard]] bool canCreateNotes() const override { return true; }
    [[nodiscard]] bool canDeleteNotes() const override { return true; }

private:
    quib::Ref<QBNoteTag> m_tag;
    std::shared_ptr<NSUbiquitousKeyValueStore> m_keyValueStore; // null: no choices of the user
};

#pragma once

#include "QBSidebarItem.h"

/// The base of the fixed entries: a condition, an order and a title that are known beforehand.
class QBStaticSidebarItem : public QBSidebarItem
{
public:
    /// Makes an entry of one of the classes below.
    template <typename Item>
    [[nodiscard]] static std::shared_ptr<Item> make(std::shared_ptr<NSManagedObjectContext> moc)
    {
        return std::make_shared<Item>(std::move(moc));
    }
    explicit QBStaticSidebarItem(std::shared_ptr<NSManagedObjectContext> moc)
        : QBSidebarItem(std::move(moc))
    {
    }

    /// Whether the entry had notes when that was looked up last; false before.
    [[nodiscard]] bool hasNotes() const { return m_hasNotes; }
    void setHasNotes(bool hasNotes) { m_hasNotes = hasNotes; }
    /// Looks it up in the context given. Queue: that context's; the entry itself is not touched.
    [[nodiscard]] bool hasNotesInManagedObjectContext(NSManagedObjectContext &moc) const;

    [[nodiscard]] std::optional<NSFetchRequest>
    notesFetchRequestInManagedObjectContext(NSManagedObjectContext &moc) const override;

protected:
    /// Null for an entry that stands for no notes.
    [[nodiscard]] virtual QString predicateFormat() const = 0;
    [[nodiscard]] virtual QList<NSSortDescriptor> sortDescriptors() const { return pinnedSortDescriptors(); }

private:
    bool m_hasNotes = false;
};

/// All notes but those in the archive and in the trash; groups of conflicting notes on top.
class QBNotesSidebarItem : public QBStaticSidebarItem
{
public:
    using QBStaticSidebarItem::QBStaticSidebarItem;
    [[nodiscard]] static std::shared_ptr<QBNotesSidebarItem>
    sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc);

    [[nodiscard]] QString title() const override;
    [[nodiscard]] QString icon() const override;
    [[nodiscard]] QString uniqueIdentifier() const override;
    /// Takes notes out of the trash and the archive.
    void addNotes(const QList<quib::Ref<QBNote>> &notes) override;
    [[nodiscard]] bool canAddNotes() const override { return true; }
    [[nodiscard]] bool canCreateNotes() const override { return true; }
    [[nodiscard]] bool canDeleteNotes() const override { return true; }
    [[nodiscard]] bool groupConflictedNotes() const override { return true; }

protected:
    [[nodiscard]] QString predicateFormat() const override;
    [[nodiscard]] QList<NSSortDescriptor> sortDescriptors() const override;
};

class QBArchiveSidebarItem : public QBStaticSidebarItem
{
public:
    using QBStaticSidebarItem::QBStaticSidebarItem;
    [[nodiscard]] static std::shared_ptr<QBArchiveSidebarItem>
    sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc);

    [[nodiscard]] QString title() const override;
    [[nodiscard]] QString icon() const override;
    [[nodiscard]] QString uniqueIdentifier() const override;
    [[nodiscard]] QStringList notePropertiesToFetch() const override;
    void addNotes(const QList<quib::Ref<QBNote>> &notes) override;
    [[nodiscard]] bool canAddNotes() const override { return true; }
    [[nodiscard]] bool canDeleteNotes() const override { return true; }

protected:
    [[nodiscard]] QString predicateFormat() const override;
};

class QBNotesTrashSidebarItem : public QBStaticSidebarItem
{
public:
    using QBStaticSidebarItem::QBStaticSidebarItem;
    [[nodiscard]] static std::shared_ptr<QBNotesTrashSidebarItem>
    sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc);

    [[nodiscard]] QString title() const override;
    [[nodiscard]] QString icon() const override;
    [[nodiscard]] QString uniqueIdentifier() const override;
    [[nodiscard]] QStringList notePropertiesToFetch() const override;
    void addNotes(const QList<quib::Ref<QBNote>> &notes) override;
    [[nodiscard]] bool canAddNotes() const override { return true; }
    [[nodiscard]] bool canDeleteNotes() const override { return true; }
    [[nodiscard]] bool canPinNotes() const override { return false; }

protected:
    [[nodiscard]] QString predicateFormat() const override;
    [[nodiscard]] QList<NSSortDescriptor> sortDescriptors() const override;
};

/// The entries below the notes: some of them, by what they say.
class QBUntaggedSidebarItem : public QBStaticSidebarItem
{
public:
    using QBStaticSidebarItem::QBStaticSidebarItem;
    [[nodiscard]] static std::shared_ptr<QBUntaggedSidebarItem>
    sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc);

    [[nodiscard]] QString title() const override;
    [[nodiscard]] QString icon() const override;
    [[nodiscard]] QString uniqueIdentifier() const override;
    [[nodiscard]] bool canCreateNotes() const override { return true; }
    [[nodiscard]] bool canDeleteNotes() const override { return true; }

protected:
    [[nodiscard]] QString predicateFormat() const override;
};

class QBTodoSidebarItem : public QBStaticSidebarItem
{
public:
    using QBStaticSidebarItem::QBStaticSidebarItem;
    [[nodiscard]] static std::shared_ptr<QBTodoSidebarItem>
    sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc);

    [[nodiscard]] QString title() const override;
    [[nodiscard]] QString icon() const override;
    [[nodiscard]] QString uniqueIdentifier() const override;
    [[nodiscard]] bool canCreateNotes() const override { return true; }
    [[nodiscard]] bool canDeleteNotes() const override { return true; }

protected:
    [[nodiscard]] QString predicateFormat() const override;
};

/// Notes changed today: the day is that of the moment when the request is made.
class QBTodaySidebarItem : public QBStaticSidebarItem
{
public:
    using QBStaticSidebarItem::QBStaticSidebarItem;
    [[nodiscard]] static std::shared_ptr<QBTodaySidebarItem>
    sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc);

    [[nodiscard]] QString title() const override;
    [[nodiscard]] QString icon() const override;
    [[nodiscard]] QString uniqueIdentifier() const override;
    [[nodiscard]] bool canCreateNotes() const override { return true; }
    [[nodiscard]] bool canDeleteNotes() const override { return true; }

protected:
    [[nodiscard]] QString predicateFormat() const override;
};

/// The built-in sample notes. Its context is the in-memory one.
class QBSpecialNotesSidebarItem : public QBStaticSidebarItem
{
public:
    using QBStaticSidebarItem::QBStaticSidebarItem;
    [[nodiscard]] static std::shared_ptr<QBSpecialNotesSidebarItem>
    sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc);

    [[nodiscard]] QString title() const override;
    [[nodiscard]] QString icon() const override;
    [[nodiscard]] QString uniqueIdentifier() const override;
    [[nodiscard]] std::optional<NSFetchRequest>
    notesFetchRequestInManagedObjectContext(NSManagedObjectContext &moc) const override;
    [[nodiscard]] bool canPinNotes() const override { return false; }

protected:
    [[nodiscard]] QString predicateFormat() const override { return {}; }
};

/// The gap between the fixed entries and the tags.
class QBNotesSpacerSidebarItem : public QBStaticSidebarItem
{
public:
    using QBStaticSidebarItem::QBStaticSidebarItem;
    [[nodiscard]] static std::shared_ptr<QBNotesSpacerSidebarItem>
    sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc);

    [[nodiscard]] QString title() const override { return {}; }
    [[nodiscard]] QString uniqueIdentifier() const override;
    [[nodiscard]] bool isSeparator() const override { return true; }

protected:
    [[nodiscard]] QString predicateFormat() const override { return {}; }
};

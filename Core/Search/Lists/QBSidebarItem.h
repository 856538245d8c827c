#pragma once

#include <Store/NSFetchRequest.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNote.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

/// An entry of the sidebar, and what the note list is pointed at: it supplies the request for its notes and says which
/// commands they allow. Entries are shared; a father holds its children, a child knows its father weakly. Lives on the
/// queue of its context.
class QBSidebarItem : public std::enable_shared_from_this<QBSidebarItem>
{
public:
    using Pointer = std::shared_ptr<QBSidebarItem>;

    virtual ~QBSidebarItem() = default;
    QBSidebarItem(const QBSidebarItem &) = delete;
    QBSidebarItem &operator=(const QBSidebarItem &) = delete;

    [[nodiscard]] const std::shared_ptr<NSManagedObjectContext> &managedObjectContext() const { return m_context; }

    // Appearance

    [[nodiscard]] virtual QString title() const = 0;
    /// Names of pictures; empty for an entry without one.
    [[nodiscard]] virtual QString icon() const { return {}; }
    [[nodiscard]] virtual QString selectedIcon() const { return icon(); }
    /// The same across launches, and unlike that of any other entry.
    [[nodiscard]] virtual QString uniqueIdentifier() const = 0;
    [[nodiscard]] virtual bool isGroup() const { return false; }
    [[nodiscard]] virtual bool isSeparator() const { return false; }
    [[nodiscard]] virtual bool isPinned() const { return false; }

    // Place

    [[nodiscard]] Pointer father() const { return m_father.lock(); }
    void setFather(const Pointer &father) { m_father = father; }
    [[nodiscard]] const QList<Pointer> &childs() const { return m_childs; }
    void setChilds(const QList<Pointer> &childs) { m_childs = childs; }

    // Notes

    /// nullopt for an entry that stands for no notes.
    [[nodiscard]] std::optional<NSFetchRequest> notesFetchRequest() const;
    /// The same for the contexts of one store: requests name rows, not objects.
    [[nodiscard]] virtual std::optional<NSFetchRequest>
    notesFetchRequestInManagedObjectContext(NSManagedObjectContext &moc) const = 0;
    /// Attributes that the note list shows.
    [[nodiscard]] virtual QStringList notePropertiesToFetch() const;
    /// Makes notes members of the entry, and saves.
    virtual void addNotes(const QList<quib::Ref<QBNote>> &notes);
    /// Removes what the entry stands for, and saves.
    virtual void deleteItem();

    // What its notes allow

    [[nodiscard]] virtual bool canAddNotes() const { return false; }
    [[nodiscard]] virtual bool canCreateNotes() const { return false; }
    [[nodiscard]] virtual bool canDeleteNotes() const { return false; }
    [[nodiscard]] virtual bool canPinNotes() const { return true; }
    [[nodiscard]] virtual bool canShareNotes() const { return true; }
    [[nodiscard]] virtual bool groupConflictedNotes() const { return false; }

protected:
    explicit QBSidebarItem(std::shared_ptr<NSManagedObjectContext> moc);

    /// A request for notes as the list shows them. The condition stands alone in it.
    [[nodiscard]] NSFetchRequest requestWithPredicate(const NSPredicate::Ref &predicate,
                                                      const QList<NSSortDescriptor> &sortDescriptors) const;
    /// The key that the user sorts notes by: of the preferences, and by their defaults before there are any.
    [[nodiscard]] static NSSortDescriptor userSortDescriptor();
    /// Pinned notes first, then the user's key.
    [[nodiscard]] static QList<NSSortDescriptor> pinnedSortDescriptors();
    void save() const;

private:
    std::shared_ptr<NSManagedObjectContext> m_context;
    std::weak_ptr<QBSidebarItem> m_father;
    QList<Pointer> m_childs;
};

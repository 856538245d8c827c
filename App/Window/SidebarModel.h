#pragma once

#include <Foundation/DayWatch.h>
#include <Search/Lists/QBNoteSidebarCoreController.h>

#include <QAbstractItemModel>
#include <QHash>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

namespace quib {

/// The sidebar's list as a tree for a view. It stands between a list that changes in its own steps and a view that must
/// not see half a change: items that only look different are told as such, anything else makes the tree anew. Notes are
/// counted on a queue of their own; until the new numbers are there, the old ones are shown. Owned by the sidebar's
/// view; main queue.
class SidebarModel final : public QAbstractItemModel, private QBNoteSidebarCoreControllerDelegate
{
    Q_OBJECT

public:
    enum Role : int
    {
        IdentifierRole = Qt::UserRole,
        IconRole,
        /// The number of notes; invalid for an item that shows none.
        CountRole,
        IsSeparatorRole,
        /// False for a fixed item that has no notes now.
        HasNotesRole,
        IsTagRole,
    };

    explicit SidebarModel(QObject *parent = nullptr);
    ~SidebarModel() override;

    /// Shows what is in a store and follows it; null empties the tree.
    void setManagedObjectContext(const std::shared_ptr<NSManagedObjectContext> &context);
    [[nodiscard]] QBNoteSidebarCoreController &controller() { return m_controller; }

    [[nodiscard]] QBSidebarItem::Pointer item(const QModelIndex &index) const;
    /// Invalid for an identifier that no item has.
    [[nodiscard]] QModelIndex indexOfIdentifier(const QString &identifier) const;
    /// The symbol that the user chose for a tag, on any device; empty where its name decides.
    [[nodiscard]] QString chosenSymbol(const QString &tagTitle) const;
    /// An empty name gives the choice back to the tag's name.
    void setChosenSymbol(const QString &tagTitle, const QString &name);
    /// Whether newer numbers of notes are on their way.
    [[nodiscard]] bool isCounting() const { return m_isCounting || m_countingDelay.isActive(); }
    /// All that have children, from the top down.
    [[nodiscard]] QStringList identifiersWithChildren() const;

    // QAbstractItemModel
    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex &child) const override;
    using QObject::parent;
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    /// Renames a tag.
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    [[nodiscard]] QStringList mimeTypes() const override;
    [[nodiscard]] Qt::DropActions supportedDropActions() const override;
    [[nodiscard]] bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                                       const QModelIndex &parent) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

    /// What a drag of notes carries: their identifiers, one a line. Understood within the program only.
    static constexpr QLatin1StringView kNotesMimeType{"application/x-quib-notes"};

Q_SIGNALS:
    /// Notes were dropped on an item, or a tag is to be renamed: work for whoever keeps the undo stack.
    void notesWereDropped(const QBSidebarItem::Pointer &item, const QStringList &identifiers);
    void tagNameWasEdited(const QBSidebarItem::Pointer &item, const QString &name);
    /// The user sorts notes by another key.
    void notesOrderDidChange();

private:
    struct Node
    {
        QBSidebarItem::Pointer item;
        QString identifier;
        Node *father = nullptr;
        int row = 0;
        std::vector<std::unique_ptr<Node>> childs;
    };

    // QBNoteSidebarCoreControllerDelegate
    void sidebarControllerDidChangeContent(QBNoteSidebarCoreController &controller) override;
    void sidebarControllerRedrawItems(QBNoteSidebarCoreController &controller,
                                      const QList<QBSidebarItem::Pointer> &items) override;
    void sidebarControllerDidChangeNotesOrder(QBNoteSidebarCoreController &controller) override;

    void rebuild();
    void redrawAll();
    /// Counts the notes of all items anew. A call while that is under way makes one more round.
    void countNotes();
    [[nodiscard]] static std::unique_ptr<Node> makeNode(const QBSidebarItem::Pointer &item, Node *father, int row);
    [[nodiscard]] static bool isSameTree(const Node &a, const Node &b);
    [[nodiscard]] const Node *node(const QModelIndex &index) const;
    [[nodiscard]] QModelIndex indexOf(const Node &node) const;
    [[nodiscard]] static const Node *find(const Node &below, const QString &identifier);

    std::shared_ptr<NSUbiquitousKeyValueStore> m_choices;
    QBNoteSidebarCoreController m_controller;
    std::unique_ptr<Node> m_root;
    QHash<QString, qint64> m_counts;
    QTimer m_countingDelay;
    DayWatch m_dayWatch; ///< "Today" has another number on another day
    /// A child of the items' context, made on first use.
    std::shared_ptr<NSManagedObjectContext> m_countingContext;
    bool m_isCounting = false;
    bool m_isCountingStale = false;
    /// Dies with the model: numbers that arrive later are dropped.
    std::shared_ptr<char> m_life = std::make_shared<char>();
    ObservationToken m_contextObserver;
};

} // namespace quib

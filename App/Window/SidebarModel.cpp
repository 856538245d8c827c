#include "SidebarModel.h"

#include <Foundation/DispatchQueue.h>
#include <Logging/QBLogger.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNoteTag.h>

#include <QMimeData>

#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Numbers of notes are read anew so long after a change, so that a burst of changes counts once. Units: milliseconds.
constexpr int kCountingDelay = 150;
/// What the choice of a symbol is kept under, before the tag's title.
constexpr auto kSymbolPrefix = "QBTC_"_L1;

} // namespace

SidebarModel::SidebarModel(QObject *parent)
    : QAbstractItemModel(parent)
    , m_choices(std::make_shared<NSUbiquitousKeyValueStore>())
    , m_controller(m_choices)
    , m_root(std::make_unique<Node>())
    , m_dayWatch([this] { m_countingDelay.start(); })
{
    m_controller.setDelegate(this);
    m_countingDelay.setSingleShot(true);
    m_countingDelay.setInterval(kCountingDelay);
    connect(&m_countingDelay, &QTimer::timeout, this, &SidebarModel::countNotes);
}

SidebarModel::~SidebarModel()
{
    m_controller.setDelegate(nullptr);
}

void SidebarModel::setManagedObjectContext(const std::shared_ptr<NSManagedObjectContext> &context)
{
    m_controller.setManagedObjectContext(context);
    m_contextObserver = context->didSave.add([this](NSManagedObjectContext & /*moc*/, const auto & /*changes*/) {
        if (!m_countingDelay.isActive()) {
            m_countingDelay.start();
        }
    });
    m_counts.clear();
    m_countingContext.reset();
    m_isCounting = false;
    rebuild();
    countNotes();
}

QBSidebarItem::Pointer SidebarModel::item(const QModelIndex &index) const
{
    return index.isValid() ? node(index)->item : nullptr;
}

QModelIndex SidebarModel::indexOfIdentifier(const QString &identifier) const
{
    const Node *found = find(*m_root, identifier);
    return found != nullptr ? indexOf(*found) : QModelIndex();
}

QString SidebarModel::chosenSymbol(const QString &tagTitle) const
{
    return m_choices->objectForKey(QString(kSymbolPrefix + tagTitle)).toString();
}

void SidebarModel::setChosenSymbol(const QString &tagTitle, const QString &name)
{
    m_choices->setObject(name.isEmpty() ? PropertyValue() : PropertyValue(name), QString(kSymbolPrefix + tagTitle));
    NSError error;
    if (!m_choices->synchronize(&error)) {
        QBLogWarn(QString(u"the symbol of a tag could not be kept: "_s % error.localizedDescription()));
    }
    redrawAll();
}

QStringList SidebarModel::identifiersWithChildren() const
{
    QStringList identifiers;
    const auto visit = [&identifiers](const auto &self, const Node &of) -> void {
        for (const auto &child : of.childs) {
            if (!child->childs.empty()) {
                identifiers.append(child->identifier);
                self(self, *child);
            }
        }
    };
    visit(visit, *m_root);
    return identifiers;
}

// The tree

std::unique_ptr<SidebarModel::Node> SidebarModel::makeNode(const QBSidebarItem::Pointer &item, Node *father, int row)
{
    auto made = std::make_unique<Node>();
    made->item = item;
    made->identifier = item->uniqueIdentifier();
    made->father = father;
    made->row = row;
    int childRow = 0;
    for (const auto &child : item->childs()) {
        made->childs.push_back(makeNode(child, made.get(), childRow++));
    }
    return made;
}

bool SidebarModel::isSameTree(const Node &a, const Node &b)
{
    return a.identifier == b.identifier &&
           std::ranges::equal(a.childs, b.childs,
                              [](const auto &one, const auto &other) { return isSameTree(*one, *other); });
}

const SidebarModel::Node *SidebarModel::find(const Node &below, const QString &identifier)
{
    for (const auto &child : below.childs) {
        if (child->identifier == identifier) {
            return child.get();
        }
        if (const Node *found = find(*child, identifier); found != nullptr) {
            return found;
        }
    }
    return nullptr;
}

void SidebarModel::rebuild()
{
    auto root = std::make_unique<Node>();
    int row = 0;
    for (const auto &item : m_controller.sidebarItems()) {
        root->childs.push_back(makeNode(item, root.get(), row++));
    }
    if (!isSameTree(*m_root, *root)) {
        beginResetModel();
        m_root = std::move(root);
        endResetModel();
        countNotes();
        return;
    }
    // The nodes stay, so that indexes of the view stay good; only what they stand for is another object.
    const auto takeItems = [](const auto &self, Node &to, const Node &from) -> void {
        to.item = from.item;
        for (size_t i = 0; i < to.childs.size(); ++i) {
            self(self, *to.childs[i], *from.childs[i]);
        }
    };
    takeItems(takeItems, *m_root, *root);
    redrawAll();
    countNotes();
}

void SidebarModel::redrawAll()
{
    const auto tell = [this](const auto &self, const Node &of) -> void {
        if (of.childs.empty()) {
            return;
        }
        Q_EMIT dataChanged(indexOf(*of.childs.front()), indexOf(*of.childs.back()));
        for (const auto &child : of.childs) {
            self(self, *child);
        }
    };
    tell(tell, *m_root);
}

void SidebarModel::countNotes()
{
    const std::shared_ptr<NSManagedObjectContext> &context = m_controller.managedObjectContext();
    if (!context) {
        return;
    }
    if (m_isCounting) {
        m_isCountingStale = true;
        return;
    }
    m_isCounting = true;
    m_isCountingStale = false;
    if (!m_countingContext) {
        m_countingContext =
            NSManagedObjectContext::contextWithParent(NSManagedObjectContextConcurrencyType::PrivateQueue, context);
    }
    struct Question
    {
        QString identifier;
        NSFetchRequest request;
    };
    std::vector<Question> questions;
    const auto collect = [&questions](const auto &self, const Node &of) -> void {
        for (const auto &child : of.childs) {
            if (const auto request = child->item->notesFetchRequest()) {
                NSFetchRequest counted;
                counted.entityName = request->entityName;
                counted.predicate = request->predicate;
                questions.push_back({child->identifier, counted});
            }
            self(self, *child);
        }
    };
    collect(collect, *m_root);
    m_countingContext->performBlock(
        [this, life = std::weak_ptr<char>(m_life), on = m_countingContext, questions = std::move(questions)] {
            QHash<QString, qint64> counts;
            for (const Question &question : questions) {
                if (const auto counted = on->countForFetchRequest(question.request)) {
                    counts.insert(question.identifier, *counted);
                }
            }
            on->reset();
            DispatchQueue::main()->async([this, life, on, counts] {
                if (life.expired() || on != m_countingContext) {
                    return;
                }
                m_isCounting = false;
                if (counts != m_counts) {
                    m_counts = counts;
                    redrawAll();
                }
                if (m_isCountingStale) {
                    countNotes();
                }
            });
        });
}

void SidebarModel::sidebarControllerDidChangeContent(QBNoteSidebarCoreController & /*controller*/)
{
    rebuild();
}

void SidebarModel::sidebarControllerRedrawItems(QBNoteSidebarCoreController & /*controller*/,
                                                const QList<QBSidebarItem::Pointer> & /*items*/)
{
    redrawAll();
}

void SidebarModel::sidebarControllerDidChangeNotesOrder(QBNoteSidebarCoreController & /*controller*/)
{
    Q_EMIT notesOrderDidChange();
}

// QAbstractItemModel

const SidebarModel::Node *SidebarModel::node(const QModelIndex &index) const
{
    return index.isValid() ? static_cast<const Node *>(index.constInternalPointer()) : m_root.get();
}

QModelIndex SidebarModel::indexOf(const Node &node) const
{
    return node.father == nullptr ? QModelIndex() : createIndex(node.row, 0, &node);
}

QModelIndex SidebarModel::index(int row, int column, const QModelIndex &parent) const
{
    const Node *father = node(parent);
    if (column != 0 || row < 0 || static_cast<size_t>(row) >= father->childs.size()) {
        return {};
    }
    return createIndex(row, 0, father->childs[static_cast<size_t>(row)].get());
}

QModelIndex SidebarModel::parent(const QModelIndex &child) const
{
    return child.isValid() ? indexOf(*node(child)->father) : QModelIndex();
}

int SidebarModel::rowCount(const QModelIndex &parent) const
{
    return parent.column() > 0 ? 0 : static_cast<int>(node(parent)->childs.size());
}

int SidebarModel::columnCount(const QModelIndex & /*parent*/) const
{
    return 1;
}

QVariant SidebarModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const Node &of = *node(index);
    const bool isTag = dynamic_cast<const QBTagSidebarItem *>(of.item.get()) != nullptr;
    switch (role) {
    case Qt::DisplayRole:
        if (of.item->isSeparator()) {
            // The caption of the tags, where there are any.
            return static_cast<size_t>(of.row) + 1 < of.father->childs.size() ? tr("Tags") : QString();
        }
        return of.item->title();
    case Qt::EditRole:
        return isTag ? of.identifier : QString();
    case Qt::ToolTipRole:
        return isTag ? QVariant(static_cast<const QBTagSidebarItem &>(*of.item).tagString()) : QVariant();
    case Qt::AccessibleTextRole: {
        if (of.item->isSeparator()) {
            return tr("Tags");
        }
        const auto counted = m_counts.constFind(of.identifier);
        return counted != m_counts.cend() ? tr("%1, %n note(s)", nullptr, int(*counted)).arg(of.item->title())
                                          : of.item->title();
    }
    case IdentifierRole:
        return of.identifier;
    case IconRole:
        return of.item->icon();
    case CountRole:
        if (const auto counted = m_counts.constFind(of.identifier); counted != m_counts.cend()) {
            return *counted;
        }
        return {};
    case IsSeparatorRole:
        return of.item->isSeparator();
    case HasNotesRole:
        return m_counts.value(of.identifier, 1) > 0;
    case IsTagRole:
        return isTag;
    default:
        return {};
    }
}

Qt::ItemFlags SidebarModel::flags(const QModelIndex &index) const
{
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    const QBSidebarItem &of = *node(index)->item;
    if (of.isSeparator()) {
        return Qt::NoItemFlags;
    }
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    flags.setFlag(Qt::ItemIsDropEnabled, of.canAddNotes());
    flags.setFlag(Qt::ItemIsEditable, index.data(IsTagRole).toBool());
    return flags;
}

bool SidebarModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const QString name = QBNoteTag::sanitizeTagName(value.toString());
    if (role != Qt::EditRole || !index.isValid() || name.isEmpty() || name == node(index)->identifier) {
        return false;
    }
    Q_EMIT tagNameWasEdited(node(index)->item, name);
    return true;
}

QStringList SidebarModel::mimeTypes() const
{
    return {QString(kNotesMimeType)};
}

Qt::DropActions SidebarModel::supportedDropActions() const
{
    return Qt::CopyAction | Qt::MoveAction;
}

bool SidebarModel::canDropMimeData(const QMimeData *data, Qt::DropAction /*action*/, int /*row*/, int /*column*/,
                                   const QModelIndex &parent) const
{
    return parent.isValid() && data->hasFormat(kNotesMimeType) && node(parent)->item->canAddNotes();
}

bool SidebarModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                                const QModelIndex &parent)
{
    if (!canDropMimeData(data, action, row, column, parent)) {
        return false;
    }
    const QString lines = QString::fromUtf8(data->data(kNotesMimeType));
    Q_EMIT notesWereDropped(node(parent)->item, lines.split(u'\n', Qt::SkipEmptyParts));
    return true;
}

} // namespace quib

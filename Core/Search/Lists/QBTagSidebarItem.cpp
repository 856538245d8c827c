#include "QBTagSidebarItem.h"

#include "TagIcons.h"

#include <Store/CurrentSyntax.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QHash>

#include <algorithm>

using namespace Qt::StringLiterals;
using quib::Ref;

std::shared_ptr<QBTagSidebarItem>
QBTagSidebarItem::initWithTag(const Ref<QBNoteTag> &tag, const Pointer &father,
                              std::shared_ptr<NSUbiquitousKeyValueStore> keyValueStore)
{
    auto item = std::make_shared<QBTagSidebarItem>(tag, std::move(keyValueStore));
    item->setFather(father);
    return item;
}

QBTagSidebarItem::QBTagSidebarItem(Ref<QBNoteTag> tag, std::shared_ptr<NSUbiquitousKeyValueStore> keyValueStore)
    : QBSidebarItem(tag->managedObjectContext()->shared_from_this())
    , m_tag(std::move(tag))
    , m_keyValueStore(std::move(keyValueStore))
{
}

QList<NSSortDescriptor> QBTagSidebarItem::tagsSortDescriptors()
{
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    const bool isAscending = preferences == nullptr || preferences->tagsListSortAscending();
    using Comparison = NSSortDescriptor::Comparison;
    if (preferences != nullptr && preferences->tagsListSortBy() == "notes"_L1) {
        return {NSSortDescriptor(u"untrashedNotesCount"_s, isAscending),
                NSSortDescriptor(u"title"_s, /*ascending=*/true, Comparison::LocalizedStandard)};
    }
    return {NSSortDescriptor(u"title"_s, isAscending, Comparison::LocalizedStandard)};
}

void QBTagSidebarItem::updateChilds()
{
    // 1. Parents before their children, whatever the case of their spelling.
    const QList<Ref<QBNoteTag>> inUse = m_tag->childsAndSubChildsTagsWithSortDescriptors(tagsSortDescriptors());
    struct Entry
    {
        QString normalizedTitle;
        Ref<QBNoteTag> tag;
        std::shared_ptr<QBTagSidebarItem> item;
    };
    std::vector<Entry> entries;
    for (const auto &tag : inUse) {
        entries.push_back({tag->normalizedTitle(), tag, nullptr});
    }
    std::vector<Entry *> byTitle;
    for (Entry &entry : entries) {
        byTitle.push_back(&entry);
    }
    std::sort(byTitle.begin(), byTitle.end(),
              [](const Entry *a, const Entry *b) { return a->normalizedTitle < b->normalizedTitle; });
    // 2. Each below the entry of its father, and below this one where a level has no row.
    const Pointer self = shared_from_this();
    QHash<QString, Pointer> items{{m_tag->normalizedTitle(), self}};
    for (Entry *entry : byTitle) {
        entry->item =
            initWithTag(entry->tag, items.value(entry->tag->normalizedFatherTagName(), self), m_keyValueStore);
        items.insert(entry->normalizedTitle, entry->item);
    }
    // 3. Brothers in the order of the tag list.
    setChilds({});
    for (const Entry &entry : entries) {
        const Pointer father = entry.item->father();
        father->setChilds(father->childs() + QList<Pointer>{entry.item});
    }
}

QString QBTagSidebarItem::title() const
{
    const QStringList components = m_tag->tagComponents();
    return components.isEmpty() ? m_tag->title() : components.constLast();
}

QString QBTagSidebarItem::icon() const
{
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    if (preferences != nullptr && !preferences->tagsListUsesCustomTagsIcons()) {
        return u"tag"_s;
    }
    const QString chosen =
        m_keyValueStore ? m_keyValueStore->objectForKey(u"QBTC_"_s + m_tag->title()).toString() : QString();
    return chosen.isEmpty() ? quib::iconNameForTagTitle(m_tag->title()) : chosen;
}

std::optional<NSFetchRequest>
QBTagSidebarItem::notesFetchRequestInManagedObjectContext(NSManagedObjectContext & /*moc*/) const
{
    return requestWithPredicate(m_tag->untrashedNotesPredicate(), pinnedSortDescriptors());
}

void QBTagSidebarItem::addNotes(const QList<Ref<QBNote>> &notes)
{
    m_tag->addTagToNotes(notes, quib::currentSyntax());
    save();
}

void QBTagSidebarItem::deleteItem()
{
    m_tag->deleteTagWithSyntax(quib::currentSyntax());
    save();
}

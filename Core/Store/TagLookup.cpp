#include "TagLookup.h"

#include "QBNoteTag.h"
#include "StoreFetch.h"

#include <Store/NSManagedObjectContext.h>
#include <Text/Folding.h>

#include <mutex>

namespace quib {

namespace {

/// Up to this many unknown names are asked for one by one, each through the index on folded titles; above it all tags
/// are read once, which is linear however many names there are.
constexpr qsizetype kFewNames = 16;

struct Registered
{
    std::weak_ptr<NSManagedObjectContext> context;
    std::shared_ptr<TagLookup> lookup;
};

struct Registry
{
    std::mutex mutex;
    QHash<const NSManagedObjectContext *, Registered> lookups;
};

Registry &registry()
{
    static Registry shared;
    return shared;
}

QString foldedTitle(const QString &title)
{
    return foldedString(title, FoldOption::CaseAndDiacritic);
}

} // namespace

TagLookup::TagLookup(std::shared_ptr<const NSManagedObjectModel> model)
    : m_model(std::move(model))
{
}

TagLookup::~TagLookup() = default;

std::shared_ptr<TagLookup> TagLookup::forContext(NSManagedObjectContext &moc)
{
    QList<Registered> dead; // dropped outside of the lock: what they hold may be the last reference to a tag
    Registry &shared = registry();
    const std::lock_guard lock(shared.mutex);
    const auto found = shared.lookups.constFind(&moc);
    if (found != shared.lookups.constEnd() && !found->context.expired()) {
        return found->lookup;
    }
    for (auto each = shared.lookups.begin(); each != shared.lookups.end();) {
        if (each->context.expired()) {
            dead.append(*each);
            each = shared.lookups.erase(each);
        } else {
            ++each;
        }
    }
    const auto &coordinator = moc.persistentStoreCoordinator();
    auto made = std::make_shared<TagLookup>(coordinator ? coordinator->managedObjectModel() : nullptr);
    shared.lookups.insert(&moc, {moc.weak_from_this(), made});
    return made;
}

Ref<QBNoteTag> TagLookup::remembered(const QString &key, NSManagedObjectContext &moc)
{
    const auto found = m_entries.constFind(key);
    if (found == m_entries.constEnd()) {
        return {};
    }
    const Ref<QBNoteTag> tag = found->tag;
    if (tag->managedObjectContext() != &moc || tag->isDeleted() || tag->title() != found->title) {
        m_entries.erase(found);
        return {};
    }
    return tag;
}

void TagLookup::remember(QBNoteTag &tag)
{
    const QString title = tag.title();
    const QString key = foldedTitle(title);
    // Of two rows of one name the one that was found first stays.
    if (!m_entries.contains(key)) {
        m_entries.insert(key, {Ref<QBNoteTag>(&tag), title});
    }
}

void TagLookup::forgetIfStoreChanged(NSManagedObjectContext &moc)
{
    const auto &coordinator = moc.persistentStoreCoordinator();
    NSPersistentStore *store = coordinator ? coordinator->persistentStore() : nullptr;
    const std::optional<qint64> counter = store != nullptr ? store->changeCounter(nullptr) : std::nullopt;
    if (!counter || counter != m_changeCounter) {
        m_entries.clear();
        m_changeCounter = counter;
    }
}

Ref<QBNoteTag> TagLookup::tagWithName(const QString &name, NSManagedObjectContext &moc)
{
    return tagsWithNames({name}, moc).constFirst();
}

QList<Ref<QBNoteTag>> TagLookup::tagsWithNames(const QStringList &names, NSManagedObjectContext &moc)
{
    forgetIfStoreChanged(moc);
    QList<Ref<QBNoteTag>> tags(names.size());
    QStringList keys;
    QList<qsizetype> unknown;
    keys.reserve(names.size());
    for (qsizetype i = 0; i < names.size(); ++i) {
        keys.append(foldedTitle(names.at(i)));
        tags[i] = remembered(keys.at(i), moc);
        if (!tags.at(i)) {
            unknown.append(i);
        }
    }
    if (unknown.size() > kFewNames) {
        NSFetchRequest request;
        request.entityName = QBNoteTag::entityName();
        for (const auto &tag : fetchLogged<QBNoteTag>(moc, request)) {
            remember(*tag);
        }
    }
    for (const qsizetype i : unknown) {
        if (unknown.size() <= kFewNames) {
            NSFetchRequest request;
            request.entityName = QBNoteTag::entityName();
            request.predicate =
                NSPredicate::predicateWithFormat(QStringLiteral("title ==[cd] %@"), {predicateArgument(names.at(i))});
            request.fetchLimit = 1;
            if (const auto found = fetchLogged<QBNoteTag>(moc, request); !found.isEmpty()) {
                remember(*found.constFirst());
            }
        }
        tags[i] = remembered(keys.at(i), moc);
    }
    return tags;
}

} // namespace quib

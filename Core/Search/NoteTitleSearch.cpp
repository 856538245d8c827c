#include "NoteTitleSearch.h"

#include <Text/Folding.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <string_view>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Replaced titles are cleared away, by reading all again, when they are more than this and more than half of all.
constexpr size_t kTolerableDeadBytes = 1024 * 1024;
constexpr double kNoDate = -std::numeric_limits<double>::infinity();

bool canBeLinkedTo(const QBNote &note)
{
    return !note.isTrashed() && !note.isArchived() && !note.title().isEmpty();
}

double numberOf(const std::optional<NSDate> &date)
{
    return date ? date->timeIntervalSince1970() : kNoDate;
}

} // namespace

/// A note with what was typed in its title.
struct NoteTitleSearch::Found
{
    double modificationDate = 0;
    NSManagedObjectID objectID;
    bool isAtBeginning = false;
};

bool NoteTitleSearch::Titles::append(qint64 key, const std::optional<NSDate> &date, const QByteArray &folded)
{
    constexpr size_t kMost = std::numeric_limits<quint32>::max();
    if (bytes.size() + static_cast<size_t>(folded.size()) > kMost) {
        return false;
    }
    entries.push_back({key, numberOf(date), static_cast<quint32>(bytes.size()), static_cast<quint32>(folded.size())});
    bytes.insert(bytes.end(), folded.cbegin(), folded.cend());
    return true;
}

NoteTitleSearch::NoteTitleSearch(NSManagedObjectContext &context)
    : m_context(context)
    , m_titles(NoteMirror<Titles>::make(context, &NoteTitleSearch::titlesIn, &NoteTitleSearch::follow))
{
}

std::optional<NoteTitleSearch::Titles> NoteTitleSearch::titlesIn(NSPersistentStore &store,
                                                                 const NSEntityDescription *entity, NSError *error)
{
    Titles titles;
    const int title = entity->attributeNamed(QBNoteAttributes::title)->slot;
    const int date = entity->attributeNamed(QBNoteAttributes::modificationDate)->slot;
    const int trashed = entity->attributeNamed(QBNoteAttributes::trashed)->slot;
    const int archived = entity->attributeNamed(QBNoteAttributes::archived)->slot;
    bool hasRoom = true;
    const bool isRead = store.enumerateRows(
        entity,
        {QString(QBNoteAttributes::title), QString(QBNoteAttributes::modificationDate),
         QString(QBNoteAttributes::trashed), QString(QBNoteAttributes::archived)},
        [&](const StoredRow &row) {
            const RowSnapshot &values = *row.snapshot;
            if (!values.isNull(title) && !values.stringAt(title).isEmpty() && !values.boolAt(trashed) &&
                !values.boolAt(archived)) {
                hasRoom = titles.append(row.objectID.key(),
                                        values.isNull(date) ? std::nullopt : std::optional(values.dateAt(date)),
                                        foldedUtf8(values.stringAt(title)));
            }
            return hasRoom;
        },
        error);
    if (!isRead || !hasRoom) {
        return std::nullopt;
    }
    titles.entries.shrink_to_fit();
    titles.bytes.shrink_to_fit();
    return titles;
}

bool NoteTitleSearch::follow(Titles &titles, const NSManagedObjectContext::Changes &changes)
{
    for (const auto *set : {&changes.inserted, &changes.updated}) {
        for (const auto &object : *set) {
            const auto note = object.as<QBNote>();
            if (note && !followNote(titles, *note)) {
                return false;
            }
        }
    }
    for (const auto &object : changes.deleted) {
        if (object.as<QBNote>()) {
            const qint64 key = object->objectID().key();
            const auto place = std::ranges::lower_bound(titles.entries, key, {}, &Entry::key);
            if (place != titles.entries.end() && place->key == key) {
                titles.deadBytes += place->length;
                titles.entries.erase(place);
            }
        }
    }
    return titles.deadBytes <= kTolerableDeadBytes || titles.deadBytes * 2 <= titles.bytes.size();
}

bool NoteTitleSearch::followNote(Titles &titles, const QBNote &note)
{
    const qint64 key = note.objectID().key();
    auto place = std::ranges::lower_bound(titles.entries, key, {}, &Entry::key);
    const bool isKnown = place != titles.entries.end() && place->key == key;
    const QByteArray folded = canBeLinkedTo(note) ? foldedUtf8(note.title()) : QByteArray();
    if (isKnown && canBeLinkedTo(note) &&
        std::string_view(titles.bytes.data() + place->start, place->length) ==
            std::string_view(folded.constData(), static_cast<size_t>(folded.size()))) {
        place->modificationDate = numberOf(note.modificationDate());
        return true;
    }
    if (isKnown) {
        titles.deadBytes += place->length;
        place = titles.entries.erase(place);
    }
    if (canBeLinkedTo(note)) {
        const auto index = place - titles.entries.begin();
        if (!titles.append(key, note.modificationDate(), folded)) {
            return false;
        }
        std::rotate(titles.entries.begin() + index, titles.entries.end() - 1, titles.entries.end());
    }
    return true;
}

// Finding

std::vector<NoteTitleSearch::Found> NoteTitleSearch::foundAmongChanged(const QByteArray &needle,
                                                                       std::vector<qint64> *changed) const
{
    std::vector<Found> found;
    const NSManagedObjectSet inserted = m_context.insertedObjects();
    const NSManagedObjectSet updated = m_context.updatedObjects();
    const NSManagedObjectSet deleted = m_context.deletedObjects();
    for (const auto *set : {&inserted, &updated, &deleted}) {
        for (const auto &object : *set) {
            const auto note = object.as<QBNote>();
            if (!note) {
                continue;
            }
            changed->push_back(note->objectID().key());
            if (set != &deleted && canBeLinkedTo(*note)) {
                const qsizetype place = foldedUtf8(note->title()).indexOf(needle);
                if (place >= 0) {
                    found.push_back({numberOf(note->modificationDate()), note->objectID(), place == 0});
                }
            }
        }
    }
    std::ranges::sort(*changed);
    return found;
}

std::optional<QList<Ref<QBNote>>> NoteTitleSearch::findNotesForPartialtitle(const QString &partialtitle, qint64 limitTo)
{
    const QByteArray needle = foldedUtf8(partialtitle);
    if (!isFilled() || needle.isEmpty()) {
        return std::nullopt;
    }
    m_context.processPendingChanges();
    const Titles *titles = m_titles->contents();
    if (titles == nullptr) {
        return std::nullopt;
    }
    // 1. All that have it.
    std::vector<qint64> changed;
    std::vector<Found> found = m_context.hasChanges() ? foundAmongChanged(needle, &changed) : std::vector<Found>();
    const auto size = static_cast<size_t>(needle.size());
    for (const Entry &entry : titles->entries) {
        const char *title = titles->bytes.data() + entry.start;
        const void *place = ::memmem(title, entry.length, needle.constData(), size);
        if (place != nullptr && !std::ranges::binary_search(changed, entry.key)) {
            found.push_back({entry.modificationDate, NSManagedObjectID(m_titles->entity(), entry.key), place == title});
        }
    }
    // 2. Of those that changed last, the ones that begin with it first. Of one date in the order of their making.
    const auto limit = std::ranges::next(
        found.begin(), static_cast<ptrdiff_t>(std::max(limitTo, QBNote::kCompletionCandidates)), found.end());
    std::ranges::partial_sort(found, limit, [](const Found &a, const Found &b) {
        if (a.modificationDate != b.modificationDate) {
            return a.modificationDate > b.modificationDate;
        }
        const qint64 left = a.objectID.key();
        const qint64 right = b.objectID.key();
        return (left > 0) != (right > 0) ? left > 0 : std::abs(left) < std::abs(right);
    });
    found.erase(limit, found.end());
    std::stable_partition(found.begin(), found.end(), [](const Found &one) { return one.isAtBeginning; });
    if (std::cmp_greater(found.size(), limitTo)) {
        found.resize(static_cast<size_t>(std::max<qint64>(limitTo, 0)));
    }
    return notes(found);
}

std::optional<QList<Ref<QBNote>>> NoteTitleSearch::notes(const std::vector<Found> &found) const
{
    QList<Ref<QBNote>> notes;
    for (const Found &one : found) {
        const Ref<NSManagedObject> object = m_context.existingObjectWithID(one.objectID);
        if (!object) {
            return std::nullopt;
        }
        notes.append(object.as<QBNote>());
    }
    return notes;
}

} // namespace quib

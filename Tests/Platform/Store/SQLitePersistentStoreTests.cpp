#include "StoreFixture.h"

#include <Store/SQLitePersistentStore.h>
#include <Support/TestSeed.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>

#include <algorithm>
#include <utility>

#include <sqlite3.h>

using namespace Qt::StringLiterals;
using quib::RowSnapshot;
using quib::RowSnapshotRef;
using quib::SaveRequest;
using quib::SaveResult;
using quib::Value;

namespace {

class SQLiteStore : public testing::Test
{
protected:
    std::unique_ptr<quib::SQLitePersistentStore> open(NSPersistentStoreOptions options = {})
    {
        m_error = {};
        options.busyTimeout = 0.2;
        return quib::SQLitePersistentStore::open(m_path, m_model, options, &m_error);
    }
    RowSnapshotRef noteRow(const QString &identifier, const QString &text, const QString &title)
    {
        RowSnapshotRef row = RowSnapshot::make(m_note);
        set(row, u"uniqueIdentifier"_s, identifier);
        set(row, u"text"_s, text);
        set(row, u"title"_s, title);
        set(row, u"creationDate"_s, NSDate::dateWithTimeIntervalSince1970(1234567890.123456));
        return row;
    }
    static void set(RowSnapshotRef &row, const QString &key, const Value &value)
    {
        row.edit()->setValueAt(row->entity()->attributeNamed(key)->slot, value);
    }
    static Value get(const RowSnapshotRef &row, const QString &key)
    {
        return row->valueAt(row->entity()->attributeNamed(key)->slot);
    }
    NSManagedObjectID insert(NSPersistentStore &store, const RowSnapshotRef &row)
    {
        const NSManagedObjectID temporary(row->entity(), -1);
        SaveRequest request;
        request.insertions.append({temporary, row});
        const SaveResult result = store.save(request);
        EXPECT_EQ(result.outcome, SaveResult::Outcome::Saved) << result.error.localizedDescription().toStdString();
        return result.permanentIDs.value(temporary);
    }
    static std::vector<bool> slot(const NSEntityDescription *entity, const QString &key)
    {
        std::vector<bool> chosen(static_cast<size_t>(entity->slotCount()));
        const auto *attribute = entity->attributeNamed(key);
        chosen[static_cast<size_t>(attribute != nullptr ? attribute->slot : entity->relationshipNamed(key)->slot)] =
            true;
        return chosen;
    }

    quib::tests::TemporaryFolder m_folder;
    QString m_path = m_folder.path() + u"/database.sqlite"_s;
    std::shared_ptr<const NSManagedObjectModel> m_model = currentModel();
    const NSEntityDescription *m_note = m_model->entityNamed(u"QBNote"_s);
    NSError m_error;
};

} // namespace

TEST_F(SQLiteStore, RowsComeBackAsTheyWereWhateverTheTextHolds)
{
    const QString text = u"\uFEFFa\0b"_s + QChar(0xD800) + u"😀"_s + QChar(0xDC00) + u"\uFFFC\uFFFF é"_s;
    const auto store = open();
    ASSERT_TRUE(store) << m_error.localizedDescription().toStdString();
    const NSManagedObjectID objectID = insert(*store, noteRow(u"A"_s, text, u"Été"_s));
    const auto row = store->row(objectID, &m_error);
    ASSERT_TRUE(row && row->snapshot);
    EXPECT_FALSE(row->snapshot->isPresent(m_note->attributeNamed(u"text"_s)->slot));
    EXPECT_EQ(std::get<QString>(get(row->snapshot, u"title"_s)), u"Été"_s);
    EXPECT_EQ(std::get<NSDate>(get(row->snapshot, u"creationDate"_s)).timeIntervalSince1970(), 1234567890.123456);
    EXPECT_TRUE(quib::isNothing(get(row->snapshot, u"trashedDate"_s)));
    EXPECT_EQ(std::get<bool>(get(row->snapshot, u"trashed"_s)), false);
    const auto lazy = store->lazyValue(objectID, m_note->attributeNamed(u"text"_s)->slot, &m_error);
    ASSERT_TRUE(lazy);
    EXPECT_EQ(std::get<QString>(lazy->value), text);
    EXPECT_EQ(lazy->version, 1);
}

TEST_F(SQLiteStore, AnEmptyTextIsNotNothing)
{
    const auto store = open();
    const NSManagedObjectID objectID = insert(*store, noteRow(u"A"_s, u""_s, u""_s));
    const auto row = store->row(objectID, &m_error);
    EXPECT_EQ(get(row->snapshot, u"title"_s), Value(u""_s));
    EXPECT_TRUE(quib::isNothing(get(row->snapshot, u"subtitle"_s)));
}

TEST_F(SQLiteStore, AWriterWithAnOldVersionIsToldWhatTheStoreHolds)
{
    const auto first = open();
    const auto second = open();
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->identifier(), second->identifier());
    const NSManagedObjectID objectID = insert(*first, noteRow(u"A"_s, u"one"_s, u"one"_s));
    SaveRequest request;
    request.updates.append({objectID, 1, noteRow(u"A"_s, u"two"_s, u"two"_s), slot(m_note, u"text"_s)});
    EXPECT_EQ(first->save(request).outcome, SaveResult::Outcome::Saved);
    request.updates.first().row = noteRow(u"A"_s, u"three"_s, u"three"_s);
    const SaveResult result = second->save(request);
    ASSERT_EQ(result.outcome, SaveResult::Outcome::Conflicts);
    ASSERT_EQ(result.conflicts.size(), 1);
    EXPECT_EQ(get(result.conflicts[0].storeRow, u"text"_s), Value(u"two"_s));
    EXPECT_EQ(result.conflicts[0].storeRow->version(), 2);
    EXPECT_EQ(first->lazyValue(objectID, m_note->attributeNamed(u"text"_s)->slot, &m_error)->value, Value(u"two"_s));
}

// Many are asked for in another way than one, so the two have to agree: both kinds of relationship, with gaps in the
// keys, and with objects in between that nobody asks for.
TEST_F(SQLiteStore, TargetsOfManyAreThoseOfEach)
{
    const auto store = open();
    const auto *tag = m_model->entityNamed(u"QBNoteTag"_s);
    const auto *file = m_model->entityNamed(u"QBNoteImage"_s);
    const auto *tags = m_note->relationshipNamed(u"tags"_s);
    SaveRequest request;
    qint64 temporary = 0;
    QList<NSManagedObjectID> tagIDs;
    for (int i = 0; i < 300; ++i) {
        tagIDs.append(NSManagedObjectID(tag, --temporary));
        request.insertions.append({tagIDs.constLast(), RowSnapshot::make(tag)});
    }
    QList<NSManagedObjectID> noteIDs;
    for (int i = 0; i < 700; ++i) {
        const NSManagedObjectID noteID(m_note, --temporary);
        noteIDs.append(noteID);
        request.insertions.append({noteID, noteRow(QString::number(i), u"t"_s, u"t"_s)});
        for (int link = 0; link < i % 4; ++link) {
            request.joinChanges.append({tags, noteID, tagIDs[(i * 7 + link * 13) % tagIDs.size()], true});
            RowSnapshotRef fileRow = RowSnapshot::make(file);
            fileRow.edit()->setTargetAt(file->relationshipNamed(u"note"_s)->slot, noteID);
            request.insertions.append({NSManagedObjectID(file, --temporary), fileRow});
        }
    }
    const SaveResult saved = store->save(request);
    ASSERT_EQ(saved.outcome, SaveResult::Outcome::Saved) << saved.error.localizedDescription().toStdString();
    const auto expectSame = [&](const QList<NSManagedObjectID> &temporaryIDs, const NSRelationshipDescription *of) {
        QList<NSManagedObjectID> asked;
        for (qsizetype i = 0; i < temporaryIDs.size(); ++i) {
            if (i % 7 != 3) {
                asked.append(saved.permanentIDs.value(temporaryIDs[i]));
            }
        }
        std::reverse(asked.begin(), asked.end());
        const auto together = store->targetsForObjects(asked, of, &m_error);
        ASSERT_TRUE(together) << m_error.localizedDescription().toStdString();
        EXPECT_LE(together->size(), asked.size());
        qsizetype count = 0;
        for (const NSManagedObjectID &objectID : std::as_const(asked)) {
            EXPECT_EQ(together->value(objectID), *store->targets(objectID, of, &m_error));
            count += together->value(objectID).size();
        }
        EXPECT_GT(count, 100);
    };
    expectSame(noteIDs, tags);
    expectSame(noteIDs, m_note->relationshipNamed(u"files"_s));
    expectSame(tagIDs, tag->relationshipNamed(u"notes"_s));
}

TEST_F(SQLiteStore, DeletionTakesJoinsAndKeysAlongAndKeysAreNeverUsedAgain)
{
    const auto store = open();
    const auto *tag = m_model->entityNamed(u"QBNoteTag"_s);
    const auto *file = m_model->entityNamed(u"QBNoteImage"_s);
    const auto *tags = m_note->relationshipNamed(u"tags"_s);
    SaveRequest request;
    const NSManagedObjectID noteID(m_note, -1);
    const NSManagedObjectID tagID(tag, -2);
    const NSManagedObjectID fileID(file, -3);
    RowSnapshotRef fileRow = RowSnapshot::make(file);
    fileRow.edit()->setTargetAt(file->relationshipNamed(u"note"_s)->slot, noteID);
    request.insertions = {
        {fileID, fileRow}, {noteID, noteRow(u"A"_s, u"t"_s, u"t"_s)}, {tagID, RowSnapshot::make(tag)}};
    request.joinChanges.append({tags, noteID, tagID, true});
    const SaveResult saved = store->save(request);
    ASSERT_EQ(saved.outcome, SaveResult::Outcome::Saved) << saved.error.localizedDescription().toStdString();
    const NSManagedObjectID note = saved.permanentIDs.value(noteID);
    EXPECT_EQ(store->targets(note, tags, &m_error)->size(), 1);
    const auto files = store->targets(note, m_note->relationshipNamed(u"files"_s), &m_error);
    ASSERT_EQ(files->size(), 1);
    EXPECT_EQ(files->first().entity(), file);

    SaveRequest deletion;
    deletion.deletions.append({note, 1, false});
    ASSERT_EQ(store->save(deletion).outcome, SaveResult::Outcome::Saved);
    EXPECT_FALSE(store->row(note, &m_error)->snapshot);
    EXPECT_EQ(store->targets(saved.permanentIDs.value(tagID), tag->relationshipNamed(u"notes"_s), &m_error)->size(), 0);
    EXPECT_EQ(store->row(saved.permanentIDs.value(fileID), &m_error)
                  ->snapshot->targetKeyAt(file->relationshipNamed(u"note"_s)->slot),
              0);
    EXPECT_GT(insert(*store, noteRow(u"B"_s, u"x"_s, u"x"_s)).key(), note.key());
    EXPECT_EQ(store->integrityProblems(&m_error), QStringList());
}

TEST_F(SQLiteStore, FilesThatAreNoStoreAreRefusedByName)
{
    const auto expectRefused = [this](NSCocoaErrorCode code) {
        EXPECT_FALSE(open());
        EXPECT_EQ(m_error.code(), static_cast<qint64>(code)) << m_error.localizedDescription().toStdString();
        EXPECT_TRUE(m_error.localizedDescription().contains(m_path)) << m_error.localizedDescription().toStdString();
    };
    QFile file(m_path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("not a database at all, but long enough to have a header of one hundred bytes.").repeated(3));
    file.close();
    expectRefused(NSCocoaErrorCode::PersistentStoreCorrupt);
    ASSERT_TRUE(QFile::remove(m_path));
    m_model = currentModel(1);
    ASSERT_TRUE(open());
    m_model = currentModel(3);
    expectRefused(NSCocoaErrorCode::PersistentStoreIncompatibleVersion);
    EXPECT_EQ(quib::SQLitePersistentStore::readMetadata(m_path, &m_error)->versionIdentifier, u"1"_s);
    EXPECT_FALSE(quib::SQLitePersistentStore::readMetadata(m_path + u"x"_s, &m_error));
}

TEST_F(SQLiteStore, BrokenBytesGiveErrorsAndNeverACrash)
{
    {
        const auto store = open();
        for (int i = 0; i < 50; ++i) {
            insert(*store, noteRow(QString::number(i), QString(500 * i, u'x'), u"t"_s));
        }
    }
    QFile file(m_path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray sound = file.readAll();
    file.close();
    QRandomGenerator random(7);
    for (int round = 0; round < 60; ++round) {
        QByteArray broken = sound;
        for (int i = 0; i < 1 + round; ++i) {
            broken[random.bounded(static_cast<int>(broken.size()))] = static_cast<char>(random.bounded(256));
        }
        if (round % 7 == 0) {
            broken.truncate(random.bounded(static_cast<int>(broken.size())));
        }
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(broken);
        file.close();
        const auto store = open();
        if (!store) {
            EXPECT_TRUE(m_error.isSet());
            continue;
        }
        NSFetchRequest request{.entityName = u"QBNote"_s};
        NSError error;
        const auto rows = store->fetch(request, &error);
        EXPECT_TRUE(rows.has_value() || error.isSet());
        static_cast<void>(store->enumerateLazyValues(
            m_note, m_note->attributeNamed(u"text"_s)->slot,
            [](const NSManagedObjectID &, qint64, const Value &) { return true; }, &error));
        static_cast<void>(store->integrityProblems(&error));
    }
}

TEST_F(SQLiteStore, AnotherWritersLockIsWaitedForAndThenToldOf)
{
    const auto store = open();
    const NSManagedObjectID objectID = insert(*store, noteRow(u"A"_s, u"a"_s, u"a"_s));
    sqlite3 *holder = nullptr;
    ASSERT_EQ(sqlite3_open(QFile::encodeName(m_path).constData(), &holder), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(holder, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    SaveRequest request;
    request.deletions.append({objectID, 1, true});
    const SaveResult refused = store->save(request);
    EXPECT_EQ(refused.outcome, SaveResult::Outcome::Failed);
    EXPECT_EQ(refused.error.code(), static_cast<qint64>(NSCocoaErrorCode::PersistentStoreTimeout));
    EXPECT_TRUE(refused.error.localizedDescription().contains(m_path));
    EXPECT_FALSE(store->row(objectID, &m_error));
    EXPECT_EQ(m_error.code(), static_cast<qint64>(NSCocoaErrorCode::PersistentStoreTimeout));
    EXPECT_FALSE(open());
    EXPECT_EQ(m_error.code(), static_cast<qint64>(NSCocoaErrorCode::PersistentStoreTimeout));
    sqlite3_close(holder);
    EXPECT_TRUE(store->row(objectID, &m_error)->snapshot);
    EXPECT_EQ(store->save(request).outcome, SaveResult::Outcome::Saved);
}

TEST_F(SQLiteStore, MakesTheLaterIndexesThatItLacks)
{
    // A store from before its model had an index is the same store.
    const auto withoutLaterIndexes = [] {
        QFile file(QStringLiteral(QUIB_SOURCE_DIR "/Resources/Model/Model.momd/Model 3.mom"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QJsonObject model = QJsonDocument::fromJson(file.readAll()).object();
        QJsonArray entities = model[u"entities"_s].toArray();
        for (auto &&value : entities) {
            QJsonObject entity = value.toObject();
            entity.remove(u"laterIndexes"_s);
            value = entity;
        }
        model[u"entities"_s] = entities;
        return NSManagedObjectModel::modelWithData(QJsonDocument(model).toJson());
    }();
    ASSERT_TRUE(withoutLaterIndexes);
    const auto indexes = [this] {
        sqlite3 *database = nullptr;
        EXPECT_EQ(sqlite3_open(QFile::encodeName(m_path).constData(), &database), SQLITE_OK);
        int count = 0;
        EXPECT_EQ(sqlite3_exec(
                      database, "SELECT 1 FROM sqlite_master WHERE type = 'index' AND name LIKE '%QBNote_list%'",
                      [](void *found, int, char **, char **) { return ++*static_cast<int *>(found), 0; }, &count,
                      nullptr),
                  SQLITE_OK);
        sqlite3_close(database);
        return count;
    };
    ASSERT_TRUE(quib::SQLitePersistentStore::open(m_path, withoutLaterIndexes, {}, &m_error));
    EXPECT_EQ(indexes(), 1);
    NSPersistentStoreOptions readOnly;
    readOnly.isReadOnly = true;
    EXPECT_TRUE(open(readOnly)) << m_error.localizedDescription().toStdString();
    EXPECT_EQ(indexes(), 1);
    EXPECT_TRUE(open()) << m_error.localizedDescription().toStdString();
    EXPECT_EQ(indexes(), 3);
}

TEST_F(SQLiteStore, TellsOfOthersWritesAndKeepsReadersFromWriting)
{
    const auto store = open();
    const auto other = open();
    const NSManagedObjectID objectID = insert(*store, noteRow(u"A"_s, u"a"_s, u"a"_s));
    const auto before = other->changeCounter(&m_error);
    insert(*store, noteRow(u"B"_s, u"b"_s, u"b"_s));
    EXPECT_NE(before, other->changeCounter(&m_error));
    NSPersistentStoreOptions readOnly;
    readOnly.isReadOnly = true;
    const auto reader = open(readOnly);
    ASSERT_TRUE(reader) << m_error.localizedDescription().toStdString();
    SaveRequest request;
    request.deletions.append({objectID, 1, true});
    const SaveResult result = reader->save(request);
    EXPECT_EQ(result.outcome, SaveResult::Outcome::Failed);
    EXPECT_EQ(result.error.code(), static_cast<qint64>(NSCocoaErrorCode::FileWriteVolumeReadOnly));
    EXPECT_TRUE(result.error.localizedDescription().contains(m_path));
}

TEST_F(SQLiteStore, SavesGoOnWhileMoreKindsOfQueryAreAskedThanStatementsAreKept)
{
    const auto store = open();
    const NSManagedObjectID objectID = insert(*store, noteRow(u"A"_s, u"a"_s, u"a"_s));
    const auto &attributes = m_note->attributes();
    qint64 version = 1;
    for (size_t i = 0; i < attributes.size(); ++i) {
        for (size_t j = i + 1; j < attributes.size(); ++j) {
            const auto rows = store->fetch(
                {.entityName = u"QBNote"_s, .propertiesToFetch = {attributes[i].name, attributes[j].name}}, &m_error);
            ASSERT_TRUE(rows) << m_error.localizedDescription().toStdString();
            ASSERT_EQ(rows->size(), 1);
            // Each chosen slot is a statement of its own, and each conflict reads inside the save.
            SaveRequest request;
            request.updates.append(
                {objectID, version, noteRow(u"A"_s, u"b"_s, u"b"_s), slot(m_note, attributes[j].name)});
            ASSERT_EQ(store->save(request).outcome, SaveResult::Outcome::Saved);
            ASSERT_EQ(store->save(request).outcome, SaveResult::Outcome::Conflicts);
            ++version;
        }
    }
}

// Values come from few, so that rows repeat each other's in all ways, and tie in most orders.
TEST_F(SQLiteStore, StreamsAllRowsInTheOrderOfTheirKeys)
{
    const auto store = open();
    const auto streamed = [&](const QString &entity, qsizetype most) {
        QList<NSManagedObjectID> identities;
        EXPECT_TRUE(store->enumerateRows(
            m_model->entityNamed(entity), {u"uniqueIdentifier"_s},
            [&](const quib::StoredRow &row) {
                EXPECT_EQ(row.snapshot->stringAt(row.objectID.entity()->attributeNamed(u"uniqueIdentifier"_s)->slot),
                          QString::number(row.objectID.key()));
                identities.append(row.objectID);
                return identities.size() < most;
            },
            &m_error));
        return identities;
    };
    EXPECT_TRUE(streamed(u"QBNote"_s, 10'000).isEmpty());
    // Of several batches, and with some gone.
    SaveRequest request;
    for (qint64 i = 1; i <= 2500; ++i) {
        request.insertions.append({NSManagedObjectID(m_note, -i), noteRow(QString::number(i), u"text"_s, u"title"_s)});
        const auto *file = m_model->entityNamed(i % 2 == 0 ? u"QBNoteImage"_s : u"QBNoteVideo"_s);
        if (i <= 20) {
            RowSnapshotRef row = RowSnapshot::make(file);
            set(row, u"uniqueIdentifier"_s, QString::number(i));
            request.insertions.append({NSManagedObjectID(file, -5000 - i), row});
        }
    }
    ASSERT_EQ(store->save(request).outcome, SaveResult::Outcome::Saved);
    SaveRequest removal;
    for (const qint64 key : {1, 1024, 1025, 2048, 2500}) {
        removal.deletions.append({NSManagedObjectID(m_note, key), 1, true});
    }
    ASSERT_EQ(store->save(removal).outcome, SaveResult::Outcome::Saved);
    for (const QString &entity : {u"QBNote"_s, u"QBNoteFile"_s, u"QBNoteImage"_s}) {
        const auto fetched = store->fetchIDs({.entityName = entity}, &m_error);
        ASSERT_TRUE(fetched && !fetched->isEmpty());
        EXPECT_EQ(streamed(entity, 10'000), *fetched) << entity.toStdString();
        EXPECT_EQ(streamed(entity, 7), fetched->first(7)) << entity.toStdString();
    }
}

TEST_F(SQLiteStore, FetchedRowsAreThoseSavedInTheOrderAskedForWhateverRepeats)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    const auto random = [&generator](size_t bound) { return static_cast<size_t>(generator() % bound); };
    const std::vector<QString> texts{{}, u""_s, u"to do"_s, u"дела"_s, QString(300, u'x'), QString(5000, u'é')};
    const std::vector<NSDate> dates{NSDate::dateWithTimeIntervalSince1970(-1.5),
                                    NSDate::dateWithTimeIntervalSince1970(0),
                                    NSDate::dateWithTimeIntervalSince1970(1234567890.25)};
    const auto store = open();
    SaveRequest request;
    for (qint64 i = 1; i <= 300; ++i) {
        RowSnapshotRef row = RowSnapshot::make(m_note);
        for (const QString &key : {u"title"_s, u"subtitle"_s, u"lastEditingDevice"_s}) {
            set(row, key, texts[random(random(2) == 0 ? 3 : texts.size())]);
        }
        set(row, u"vectorClock"_s, texts[random(texts.size())].toUtf8());
        const size_t date = random(dates.size() + 1);
        set(row, u"modificationDate"_s, date < dates.size() ? Value(dates[date]) : Value());
        set(row, u"uniqueIdentifier"_s, QString::number(generator()));
        set(row, u"pinned"_s, random(2) == 0);
        set(row, u"order"_s, static_cast<qint64>(random(3)));
        request.insertions.append({NSManagedObjectID(m_note, -i), row});
    }
    const SaveResult saved = store->save(request);
    ASSERT_EQ(saved.outcome, SaveResult::Outcome::Saved) << saved.error.localizedDescription().toStdString();
    std::vector<std::pair<qint64, RowSnapshotRef>> expected;
    for (const SaveRequest::Insertion &insertion : std::as_const(request.insertions)) {
        expected.emplace_back(saved.permanentIDs.value(insertion.temporaryID).key(), insertion.row);
    }

    const QStringList keys{u"pinned"_s, u"modificationDate"_s, u"order"_s, u"title"_s};
    for (int round = 0; round < 40; ++round) {
        NSFetchRequest fetch{.entityName = u"QBNote"_s};
        if (random(2) == 0) {
            // An index gives this order, with ties in the order of identifiers.
            fetch.predicate = NSPredicate::predicateWithFormat(u"trashed == NO AND archived == NO"_s);
            fetch.sortDescriptors = {NSSortDescriptor(keys[0], false), NSSortDescriptor(keys[1], false)};
        } else {
            for (size_t i = random(4); i > 0; --i) {
                fetch.sortDescriptors.append(NSSortDescriptor(keys[static_cast<qsizetype>(random(4))], random(2) == 0));
            }
        }
        fetch.fetchLimit = random(3) == 0 ? static_cast<qint64>(random(300)) + 1 : 0;
        std::sort(expected.begin(), expected.end(), [&](const auto &a, const auto &b) {
            for (const NSSortDescriptor &descriptor : std::as_const(fetch.sortDescriptors)) {
                const Value left = get(a.second, descriptor.key());
                const Value right = get(b.second, descriptor.key());
                if (left != right) { // nothing is the first of a Value's kinds, and below all others here
                    return descriptor.ascending() ? left < right : right < left;
                }
            }
            return a.first < b.first;
        });
        const auto rows = store->fetch(fetch, &m_error);
        ASSERT_TRUE(rows) << m_error.localizedDescription().toStdString();
        ASSERT_EQ(rows->size(), fetch.fetchLimit > 0 ? fetch.fetchLimit : 300);
        for (qsizetype i = 0; i < rows->size(); ++i) {
            const auto &[key, row] = expected[static_cast<size_t>(i)];
            ASSERT_EQ(rows->at(i).objectID.key(), key) << "row " << i << " of round " << round;
            for (const NSAttributeDescription &attribute : m_note->attributes()) {
                if (!attribute.isLazy) {
                    ASSERT_TRUE(rows->at(i).snapshot->slotEquals(attribute.slot, *row))
                        << attribute.name.toStdString() << " of row " << i;
                }
            }
        }
    }
}

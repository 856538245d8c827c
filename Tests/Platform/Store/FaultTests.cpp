#include "FaultVfs.h"
#include "StoreFixture.h"

#include <Store/SQLitePersistentStore.h>
#include <Support/TestSeed.h>

#include <QStringList>

#include <thread>

using namespace Qt::StringLiterals;
using quib::RowSnapshot;
using quib::RowSnapshotRef;
using quib::SaveRequest;
using quib::SaveResult;
using quib::SQLitePersistentStore;
using quib::Value;
using quib::tests::FaultVfs;

namespace {

/// A short life of a store: each step is one save that depends on those before.
class StoreOnABadDisk : public testing::Test
{
protected:
    static constexpr int kSteps = 4;
    using Store = std::unique_ptr<SQLitePersistentStore>;

    Store open(NSError *error)
    {
        NSPersistentStoreOptions options;
        options.vfsName = m_disk.name();
        options.busyTimeout = 0;
        return SQLitePersistentStore::open(u"/disk/database.sqlite"_s, m_model, options, error);
    }

    RowSnapshotRef note(const QString &title, qsizetype textSize) const
    {
        RowSnapshotRef row = RowSnapshot::make(m_note);
        const auto set = [&](const QString &key, const QString &value) {
            row.edit()->setValueAt(m_note->attributeNamed(key)->slot, value);
        };
        set(u"title"_s, title);
        set(u"text"_s, QString(title % QString(textSize, u'x')));
        return row;
    }

    [[nodiscard]] SaveRequest step(int number) const
    {
        SaveRequest request;
        const NSManagedObjectID first(m_note, 1);
        const NSManagedObjectID tag(m_tag, 1);
        std::vector<bool> slots(static_cast<size_t>(m_note->slotCount()));
        slots[static_cast<size_t>(m_note->attributeNamed(u"title"_s)->slot)] = true;
        slots[static_cast<size_t>(m_note->attributeNamed(u"text"_s)->slot)] = true;
        switch (number) {
        case 0:
            request.insertions = {{NSManagedObjectID(m_note, -1), note(u"one"_s, 30000)},
                                  {NSManagedObjectID(m_tag, -2), RowSnapshot::make(m_tag)}};
            request.joinChanges.append({m_tags, NSManagedObjectID(m_note, -1), NSManagedObjectID(m_tag, -2), true});
            break;
        case 1:
            request.updates.append({first, 1, note(u"one again"_s, 10), slots});
            request.insertions.append({NSManagedObjectID(m_note, -3), note(u"two"_s, 9000)});
            request.joinChanges.append({m_tags, NSManagedObjectID(m_note, -3), tag, true});
            break;
        case 2:
            request.deletions.append({first, 2, false});
            break;
        default:
            request.updates.append({NSManagedObjectID(m_note, 2), 1, note(u"two again"_s, 20000), slots});
            request.joinChanges.append({m_tags, NSManagedObjectID(m_note, 2), tag, false});
            break;
        }
        return request;
    }

    /// All that a reader can see, as text; an error where it can't be read.
    QString seen(NSPersistentStore &store) const
    {
        NSError error;
        QStringList lines;
        const auto rows = store.fetch({.entityName = u"QBNote"_s}, &error);
        if (!rows) {
            return u"unreadable: "_s + error.localizedDescription();
        }
        for (const auto &row : *rows) {
            const auto text = store.lazyValue(row.objectID, m_note->attributeNamed(u"text"_s)->slot, &error);
            const auto tags = store.targets(row.objectID, m_tags, &error);
            if (!text || !tags) {
                return u"unreadable: "_s + error.localizedDescription();
            }
            lines.append(u"%1 v%2 %3 [%4] %5"_s.arg(row.objectID.key())
                             .arg(row.snapshot->version())
                             .arg(row.snapshot->stringAt(m_note->attributeNamed(u"title"_s)->slot))
                             .arg(tags->size())
                             .arg(quib::valueOr<QString>(text->value).size()));
        }
        const auto tags = store.count({.entityName = u"QBNoteTag"_s}, &error);
        lines.append(u"%1 tags"_s.arg(tags.value_or(-1)));
        return lines.join(u'\n');
    }

    FaultVfs m_disk;
    std::shared_ptr<const NSManagedObjectModel> m_model = currentModel();
    const NSEntityDescription *m_note = m_model->entityNamed(u"QBNote"_s);
    const NSEntityDescription *m_tag = m_model->entityNamed(u"QBNoteTag"_s);
    const NSRelationshipDescription *m_tags = m_note->relationshipNamed(u"tags"_s);
};

} // namespace

TEST_F(StoreOnABadDisk, EveryFaultAtEveryCallLeavesTheOldOrTheNewStateAndNoAcknowledgedSaveIsLost)
{
    quib::tests::TestSeed seed;
    std::mt19937 coins = seed.generator();
    NSError error;
    QStringList states;
    FaultVfs::Names fresh;
    {
        Store store = open(&error);
        ASSERT_TRUE(store) << error.localizedDescription().toStdString();
        fresh = m_disk.contents();
        states.append(seen(*store));
        for (int number = 0; number < kSteps; ++number) {
            const SaveResult result = store->save(step(number));
            ASSERT_EQ(result.outcome, SaveResult::Outcome::Saved) << result.error.localizedDescription().toStdString();
            states.append(seen(*store));
            ASSERT_NE(states[number], states[number + 1]);
        }
    }
    for (const auto fault : {FaultVfs::Fault::IoError, FaultVfs::Fault::ShortWrite, FaultVfs::Fault::FullDisk,
                             FaultVfs::Fault::PowerLoss}) {
        // Chance decides what a power loss leaves, so each place of it is met several times.
        const int rounds = fault == FaultVfs::Fault::PowerLoss ? 8 : 1;
        int struck = 0;
        for (int call = 0;; ++call) {
            bool hasStruck = false;
            for (int round = 0; round < rounds; ++round) {
                SCOPED_TRACE(testing::Message() << "fault " << static_cast<int>(fault) << " at call " << call);
                m_disk.setContents(fresh);
                Store store = open(&error);
                ASSERT_TRUE(store) << error.localizedDescription().toStdString();
                m_disk.arm(call, fault);
                int acknowledged = 0;
                bool hasFailed = false;
                while (acknowledged < kSteps && !hasFailed) {
                    const SaveResult result = store->save(step(acknowledged));
                    hasFailed = result.outcome != SaveResult::Outcome::Saved;
                    acknowledged += hasFailed ? 0 : 1;
                    if (hasFailed) {
                        EXPECT_EQ(result.outcome, SaveResult::Outcome::Failed);
                        EXPECT_TRUE(result.error.isSet());
                        EXPECT_TRUE(result.error.localizedDescription().contains(u"/disk/database.sqlite"_s));
                    }
                }
                hasStruck = m_disk.hasStruck();
                m_disk.disarm();
                if (fault == FaultVfs::Fault::PowerLoss && hasStruck) {
                    m_disk.arm(0, FaultVfs::Fault::PowerLoss); // closing must not repair what the power took
                    store.reset();
                    m_disk.cutPower(coins);
                } else {
                    // The connection goes on as if nothing had been asked.
                    const QString now = seen(*store);
                    EXPECT_TRUE(now == states[acknowledged] || (hasFailed && now == states[acknowledged + 1]))
                        << now.toStdString();
                    if (hasFailed && now == states[acknowledged]) {
                        EXPECT_EQ(store->save(step(acknowledged)).outcome, SaveResult::Outcome::Saved);
                        ++acknowledged;
                        hasFailed = false;
                    }
                    store.reset();
                }
                store = open(&error);
                ASSERT_TRUE(store) << error.localizedDescription().toStdString();
                const QString after = seen(*store);
                EXPECT_TRUE(after == states[acknowledged] || (hasFailed && after == states[acknowledged + 1]))
                    << acknowledged << " acknowledged\n"
                    << after.toStdString();
                EXPECT_EQ(store->integrityProblems(&error), QStringList());
            }
            if (!hasStruck || testing::Test::HasFatalFailure()) {
                break;
            }
            ++struck;
        }
        EXPECT_GT(struck, 40) << "the faults must meet every write and sync of four saves";
    }
}

TEST_F(StoreOnABadDisk, AStoreThatCouldNotBeMadeIsMadeAtTheNextAttempt)
{
    quib::tests::TestSeed seed;
    std::mt19937 coins = seed.generator();
    int struck = 0;
    for (int call = 0;; ++call) {
        SCOPED_TRACE(call);
        m_disk.setContents({});
        m_disk.arm(call, FaultVfs::Fault::PowerLoss);
        NSError error;
        Store store = open(&error);
        const bool hasStruck = m_disk.hasStruck();
        EXPECT_EQ(error.isSet(), !store);
        store.reset();
        m_disk.cutPower(coins);
        error = {};
        store = open(&error);
        ASSERT_TRUE(store) << error.localizedDescription().toStdString();
        EXPECT_EQ(store->save(step(0)).outcome, SaveResult::Outcome::Saved);
        if (!hasStruck) {
            break;
        }
        ++struck;
    }
    EXPECT_GT(struck, 10);
}

TEST_F(StoreOnABadDisk, AFullDiskIsCalledFull)
{
    NSError error;
    const Store store = open(&error);
    m_disk.arm(3, FaultVfs::Fault::FullDisk);
    const SaveResult result = store->save(step(0));
    EXPECT_EQ(result.error.code(), static_cast<qint64>(NSCocoaErrorCode::FileWriteOutOfSpace))
        << result.error.localizedDescription().toStdString();
}

TEST(StoreWriters, TwoConnectionsThatWriteAtOnceLoseNothing)
{
    constexpr int kEach = 40;
    const quib::tests::TemporaryFolder folder;
    const auto model = currentModel();
    const auto *note = model->entityNamed(u"QBNote"_s);
    const auto *order = note->attributeNamed(u"order"_s);
    NSError error;
    const auto openStore = [&] {
        return SQLitePersistentStore::open(folder.path(u"database.sqlite"_s), model, {}, &error);
    };
    const auto reader = openStore();
    ASSERT_TRUE(reader) << error.localizedDescription().toStdString();
    SaveRequest first;
    first.insertions.append({NSManagedObjectID(note, -1), RowSnapshot::make(note)});
    ASSERT_EQ(reader->save(first).outcome, SaveResult::Outcome::Saved);
    const NSManagedObjectID counter(note, 1);

    // Each raises one shared number, taking a conflict as word to look again, and adds rows of its own.
    const auto work = [&] {
        NSError mine;
        const auto store = SQLitePersistentStore::open(folder.path(u"database.sqlite"_s), model, {}, &mine);
        std::vector<bool> slots(static_cast<size_t>(note->slotCount()));
        slots[static_cast<size_t>(order->slot)] = true;
        for (int i = 0; i < kEach;) {
            auto row = store->row(counter, &mine);
            const qint64 version = row->snapshot->version();
            row->snapshot.edit()->setValueAt(order->slot, row->snapshot->integerAt(order->slot) + 1);
            SaveRequest request;
            request.updates.append({counter, version, row->snapshot, slots});
            request.insertions.append({NSManagedObjectID(note, -1), RowSnapshot::make(note)});
            const SaveResult result = store->save(request);
            ASSERT_NE(result.outcome, SaveResult::Outcome::Failed) << result.error.localizedDescription().toStdString();
            i += result.outcome == SaveResult::Outcome::Saved ? 1 : 0;
        }
    };
    std::thread one(work);
    std::thread two(work);
    one.join();
    two.join();
    EXPECT_EQ(reader->row(counter, &error)->snapshot->integerAt(order->slot), 2 * kEach);
    EXPECT_EQ(reader->count({.entityName = u"QBNote"_s}, &error), 1 + 2 * kEach);
}

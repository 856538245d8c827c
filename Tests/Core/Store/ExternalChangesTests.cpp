// A companion and the application on one profile, as two stacks with a connection of their own each in one process.

#include "StoreFixture.h"

#include <Store/ExternalChangeMonitor.h>
#include <Store/ExternalChangeRecorder.h>
#include <Store/ProfileLock.h>
#include <Store/QBExternalChanges.h>
#include <Store/QBNoteFilesDowloadedNotification.h>
#include <Store/QBNoteGenericFile.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <ctime>

using namespace Qt::StringLiterals;

namespace quib::tests {

class ExternalChanges : public StoreFixture
{
protected:
    ExternalChanges()
    {
        companion.setupStackWithDelegate({});
        m_recorder = std::make_unique<ExternalChangeRecorder>(other());
        m_didSave =
            moc().didSave.add([this](NSManagedObjectContext &, const NSManagedObjectContext::Changes &) { ++m_saves; });
    }
    [[nodiscard]] NSManagedObjectContext &other() const { return *companion.managedObjectContext(); }
    void saveOther()
    {
        NSError error;
        ASSERT_TRUE(other().save(&error)) << error.localizedDescription().toStdString();
    }
    [[nodiscard]] Ref<QBNote> theirNote(const QString &text) const { return QBNote::noteWithText(text, 0, other()); }
    [[nodiscard]] Ref<QBNote> mine(const QBNote &theirs) const
    {
        return QBNote::noteWithUniqueIdentifier(theirs.uniqueIdentifier(), moc());
    }
    [[nodiscard]] qsizetype rows() const
    {
        return QBExternalChanges::externalChangesInManagedObjectContext(moc()).size();
    }
    void startApplication()
    {
        NSError error;
        m_lock = ProfileLock::acquire({}, &error);
        ASSERT_TRUE(m_lock) << error.localizedDescription().toStdString();
        m_monitor = std::make_unique<ExternalChangeMonitor>(*stack);
    }
    /// Waits for the system's notice, and no longer than a person would; then lets the clock do what falls due.
    void waitUntil(const std::function<bool()> &isDone)
    {
        QElapsedTimer timer;
        timer.start();
        while (!isDone() && timer.elapsed() < 30'000) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
            clock.advance(StoreWatch::kLatency);
        }
        EXPECT_TRUE(isDone());
    }
    Ref<QBExternalChanges> addRow(qint16 type, const QString &uri)
    {
        auto row = QBExternalChanges::insertInManagedObjectContext(moc());
        row->setItemChange(type);
        row->setItemEntity(u"QBNote"_s);
        row->setItemObjectID(uri);
        return row;
    }
    [[nodiscard]] QString uri(const NSManagedObject &object) const
    {
        return moc().persistentStoreCoordinator()->uriForObjectID(object.objectID());
    }

    QBCoreDataStack companion;
    std::unique_ptr<ExternalChangeRecorder> m_recorder;
    std::optional<ProfileLock> m_lock;
    std::unique_ptr<ExternalChangeMonitor> m_monitor;
    int m_saves = 0;
    ObservationToken m_didSave;
};

TEST_F(ExternalChanges, AreRecordedOnlyWhileAnApplicationIsThere)
{
    const auto note = theirNote(u"before"_s);
    saveOther();
    EXPECT_EQ(rows(), 0);
    NSError error;
    m_lock = ProfileLock::acquire({}, &error);
    ASSERT_TRUE(m_lock);
    note->updateNoteWithText(u"during"_s, 0, /*updateModificationDate=*/true);
    saveOther();
    const auto changes = QBExternalChanges::externalChangesInManagedObjectContext(moc());
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes.constFirst()->itemChange(), QBExternalChanges::Updated);
    EXPECT_EQ(changes.constFirst()->itemEntity(), u"QBNote"_s);
    EXPECT_EQ(changes.constFirst()->itemObjectID(), uri(*mine(*note)));
    EXPECT_EQ(changes.constFirst()->managedObjectIDInManagedObjectContext(moc()), mine(*note)->objectID());
    m_lock.reset();
    note->updateNoteWithText(u"after"_s, 0, /*updateModificationDate=*/true);
    saveOther();
    EXPECT_EQ(rows(), 1);
}

TEST_F(ExternalChanges, NameEveryObjectOfTheSaveByKindOfChange)
{
    const auto doomed = theirNote(u"doomed"_s);
    const auto changed = theirNote(u"changed"_s);
    saveOther();
    NSError error;
    m_lock = ProfileLock::acquire({}, &error);
    const QString doomedURI = uri(*mine(*doomed));
    const QString changedURI = uri(*mine(*changed));
    const auto fresh = theirNote(u"fresh #tag"_s);
    changed->setTrashed(true);
    other().deleteObject(doomed.get());
    saveOther();
    QStringList told;
    for (const auto &row : QBExternalChanges::externalChangesInManagedObjectContext(moc())) {
        told.append(u"%1 %2"_s.arg(row->itemChange()).arg(row->itemObjectID()));
    }
    const auto tag = QBNoteTag::tagWithName(u"tag"_s, moc());
    ASSERT_TRUE(tag);
    const QStringList lines{u"0 "_s + uri(*mine(*fresh)), u"0 "_s + uri(*tag), u"1 "_s + changedURI,
                            u"2 "_s + doomedURI};
    for (const QString &line : lines) {
        EXPECT_EQ(told.count(line), 1) << line.toStdString() << " in\n" << told.join(u'\n').toStdString();
    }
}

TEST_F(ExternalChanges, RowsOfAFailedSaveAreNotKeptTwice)
{
    NSError error;
    m_lock = ProfileLock::acquire({}, &error);
    const auto note = theirNote(u"text"_s);
    QBExternalChanges::updateExternalChangesInManagedObjectContext(other());
    const auto first = QBExternalChanges::externalChangesInManagedObjectContext(other()).size();
    saveOther();
    EXPECT_EQ(rows(), first);
}

TEST_F(ExternalChanges, MergingGivesTheObjectsInOrderAndDeletesEveryRow)
{
    EXPECT_FALSE(QBExternalChanges::mergeExternalChangesInManagedObjectContext(moc()));
    const auto a = makeNote(u"a"_s);
    const auto b = makeNote(u"b"_s);
    const auto c = makeNote(u"c"_s);
    save();
    addRow(QBExternalChanges::Deleted, uri(*c));
    addRow(QBExternalChanges::Updated, uri(*b));
    addRow(QBExternalChanges::Inserted, uri(*a));
    addRow(3, uri(*a));
    addRow(-1, uri(*a));
    const NSManagedObjectID identities[] = {a->objectID(), b->objectID(), c->objectID()};
    const auto merged = QBExternalChanges::mergeExternalChangesInManagedObjectContext(moc());
    ASSERT_TRUE(merged);
    EXPECT_EQ(*merged, QList<NSManagedObjectID>(std::begin(identities), std::end(identities)));
    EXPECT_EQ(c->managedObjectContext(), nullptr);
    save();
    EXPECT_EQ(rows(), 0);
}

TEST_F(ExternalChanges, RowsThatNameNothingAreHarmless)
{
    const QStringList uris{{},
                           u"x"_s,
                           u"x-quib-store://other/QBNote/p1"_s,
                           uri(*makeNote(u"a"_s)).replace(u"QBNote"_s, u"QBNothing"_s),
                           u"x-quib-store://"_s + QString(100'000, u'/'),
                           moc().persistentStoreCoordinator()->uriForObjectID(
                               NSManagedObjectID(QBNote::entityInManagedObjectContext(moc()), 99'999)),
                           moc().persistentStoreCoordinator()->uriForObjectID(
                               NSManagedObjectID(QBNote::entityInManagedObjectContext(moc()), -99'999))};
    for (const int type : {0, 1, 2, 3, 32'767, -32'768}) {
        for (const QString &text : uris) {
            addRow(static_cast<qint16>(type), text);
        }
    }
    save();
    EXPECT_TRUE(QBExternalChanges::mergeExternalChangesInManagedObjectContext(moc()));
    save();
    EXPECT_EQ(rows(), 0);
    EXPECT_EQ(QBNote::notesInManagedObjectContext(moc(), {}).size(), 1);
}

TEST_F(ExternalChanges, AreSeenByTheApplicationThroughTheFileAlone)
{
    const auto theirs = theirNote(u"old #one"_s);
    saveOther();
    startApplication();
    const auto note = mine(*theirs);
    ASSERT_EQ(note->text(), u"old #one"_s);
    theirs->updateNoteWithText(u"new #two"_s, 0, /*updateModificationDate=*/true);
    const auto fresh = theirNote(u"fresh"_s);
    saveOther();
    waitUntil([&] { return note->text() == u"new #two"_s; });
    EXPECT_EQ(sortedTags(*note), QStringList{u"two"_s});
    EXPECT_TRUE(mine(*fresh));
    waitUntil([&] { return rows() == 0 && !moc().hasChanges(); });
}

TEST_F(ExternalChanges, DeletingTheRowsDoesNotKeepTheTwoGoing)
{
    startApplication();
    static_cast<void>(theirNote(u"a"_s));
    saveOther();
    waitUntil([&] { return m_saves > 0; });
    // The application's own save is a change of the file too.
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
        clock.advance(StoreWatch::kLatency);
    }
    EXPECT_EQ(m_saves, 1);
}

TEST_F(ExternalChanges, TheTextsOfBothSidesAreKept)
{
    const auto theirs = theirNote(u"base"_s);
    saveOther();
    startApplication();
    const auto note = mine(*theirs);
    note->updateNoteWithText(u"mine"_s, 0, /*updateModificationDate=*/true);
    theirs->updateNoteWithText(u"theirs"_s, 0, /*updateModificationDate=*/true);
    const auto pinned = theirNote(u"other"_s);
    saveOther();
    waitUntil([&] { return rows() == 0 && !moc().hasChanges(); });
    QStringList texts;
    for (const auto &stored : QBNote::notesInManagedObjectContext(moc(), {})) {
        texts.append(stored->text());
    }
    EXPECT_TRUE(texts.contains(u"theirs"_s));
    EXPECT_TRUE(texts.join(u'\n').contains(u"mine"_s)) << texts.join(u'|').toStdString();
}

TEST_F(ExternalChanges, ATextEditedHereOutlivesItsDeletionThere)
{
    const auto theirs = theirNote(u"base"_s);
    saveOther();
    startApplication();
    const auto note = mine(*theirs);
    note->updateNoteWithText(u"mine"_s, 0, /*updateModificationDate=*/true);
    other().deleteObject(theirs.get());
    saveOther();
    waitUntil([&] { return rows() == 0 && !moc().hasChanges(); });
    const auto notes = QBNote::notesInManagedObjectContext(moc(), {});
    ASSERT_EQ(notes.size(), 1);
    EXPECT_EQ(notes.constFirst()->text(), u"mine"_s);
}

TEST_F(ExternalChanges, LeftByAnApplicationThatDiedAreTakenUpByTheNext)
{
    startApplication();
    m_monitor.reset();
    const auto theirs = theirNote(u"a"_s);
    saveOther();
    EXPECT_GT(rows(), 0);
    m_lock.reset();
    startApplication();
    EXPECT_EQ(rows(), 0);
    EXPECT_TRUE(mine(*theirs));
}

TEST_F(ExternalChanges, OfAttachmentsAreToldToWhoeverShowsThem)
{
    startApplication();
    QStringList told;
    const auto token =
        QBNoteFilesDowloadedNotification().add([&told](const QStringList &identifiers) { told += identifiers; });
    auto file = QBNoteGenericFile::insertInManagedObjectContext(other());
    file->setUniqueIdentifier(u"file"_s);
    saveOther();
    waitUntil([&] { return !told.isEmpty(); });
    EXPECT_EQ(told, QStringList{u"file"_s});
}

TEST_F(ExternalChanges, ManyAreTakenUpInTurns)
{
    const int count = 2 * ExternalChangeMonitor::kMostInATurn + 1;
    startApplication();
    QList<qsizetype> turns;
    const auto token =
        m_monitor->didMerge.add([&turns](const QList<NSManagedObjectID> &merged) { turns.append(merged.size()); });
    QList<Ref<QBNote>> theirs;
    for (int i = 0; i < count; ++i) {
        theirs.append(theirNote(u"note %1"_s.arg(i)));
    }
    saveOther();
    waitUntil([&] { return rows() == 0 && !moc().hasChanges(); });
    EXPECT_EQ(turns, (QList<qsizetype>{ExternalChangeMonitor::kMostInATurn, ExternalChangeMonitor::kMostInATurn, 1}));
    for (const auto &note : theirs) {
        EXPECT_TRUE(mine(*note));
    }
}

TEST_F(ExternalChanges, ManyRowsAreTakenUpInTimeThatGrowsWithTheirNumber)
{
    const auto timeFor = [this](int count) {
        for (int i = 0; i < count; ++i) {
            addRow(QBExternalChanges::Inserted, moc().persistentStoreCoordinator()->uriForObjectID(NSManagedObjectID(
                                                    QBNote::entityInManagedObjectContext(moc()), 1 + i)));
        }
        save();
        const std::clock_t start = std::clock(); // the processor's time: the machine may have other work
        const auto merged = QBExternalChanges::mergeExternalChangesInManagedObjectContext(moc());
        EXPECT_TRUE(merged && merged->size() == count);
        save();
        return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    };
    timeFor(1000);
    const double few = timeFor(10'000);
    const double many = timeFor(100'000);
    RecordProperty("milliseconds", static_cast<int>(many * 1e3));
    EXPECT_LT(many / few, 40) << "10 times the rows";
    EXPECT_EQ(rows(), 0);
}

} // namespace quib::tests

// Settings: layers, durability, two writers at once, and who is told of what.

#include <Files/NSUbiquitousKeyValueStore.h>
#include <Files/NSUserDefaults.h>
#include <Files/Profile.h>
#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>

#include <thread>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using quib::PropertyValue;
using quib::tests::TemporaryFolder;
using quib::tests::TestSeed;

namespace {

class Settings : public testing::Test
{
protected:
    [[nodiscard]] std::shared_ptr<NSUserDefaults> open() const
    {
        return std::make_shared<NSUserDefaults>(m_folder.path(u"settings.plist"_s));
    }
    TemporaryFolder m_folder;
};

TEST_F(Settings, SurviveTheirProcessOnceSynchronised)
{
    {
        const auto settings = open();
        settings->setObject(PropertyValue(u"Grüße"_s), u"text"_s);
        settings->setObject(PropertyValue(-7), u"number"_s);
        settings->setObject(PropertyValue(NSDate::dateWithTimeIntervalSince1970(1488449472.123456)), u"date"_s);
        ASSERT_TRUE(settings->synchronize(nullptr));
        const auto other = open();
        EXPECT_EQ(other->stringForKey(u"text"_s), u"Grüße"_s);
        EXPECT_EQ(other->integerForKey(u"number"_s), -7);
        EXPECT_EQ(other->objectForKey(u"date"_s).asDate()->timeIntervalSince1970(), 1488449472.123456);
        settings->removeObject(u"text"_s);
        settings->setObject(PropertyValue(1.5), u"late"_s);
    }
    // What was not synchronised is written at the end.
    const auto again = open();
    EXPECT_TRUE(again->objectForKey(u"text"_s).isNull());
    EXPECT_EQ(again->doubleForKey(u"late"_s), 1.5);
    EXPECT_EQ(m_folder.read(u"settings.plist"_s).first(8), "bplist00");
}

TEST_F(Settings, FallBackToRegisteredDefaultsThatAreNeverWritten)
{
    const auto settings = open();
    settings->registerDefaults({{u"a"_s, PropertyValue(true)}, {u"b"_s, PropertyValue(2)}});
    EXPECT_TRUE(settings->boolForKey(u"a"_s));
    EXPECT_TRUE(settings->ownObjectForKey(u"a"_s).isNull());
    settings->setObject(PropertyValue(false), u"a"_s);
    EXPECT_FALSE(settings->boolForKey(u"a"_s));
    settings->removeObject(u"a"_s);
    EXPECT_TRUE(settings->boolForKey(u"a"_s));
    ASSERT_TRUE(settings->synchronize(nullptr));
    EXPECT_TRUE(settings->boolForKey(u"a"_s));
    EXPECT_TRUE(open()->keys().isEmpty());
}

TEST_F(Settings, OfTwoWritersLoseNothing)
{
    const TestSeed seed;
    auto random = seed.generator();
    const auto first = open();
    const auto second = open();
    PropertyValue::Dictionary model;
    for (int round = 0; round < 200; ++round) {
        auto &writer = random() % 2 == 0 ? *first : *second;
        // Each writer has keys of its own and one that both write.
        const QString key = random() % 5 == 0
                                ? u"shared"_s
                                : (&writer == first.get() ? u"first %1"_s : u"second %1"_s).arg(random() % 10);
        if (random() % 4 == 0) {
            writer.removeObject(key);
            model.remove(key);
        } else {
            writer.setObject(PropertyValue(round), key);
            model.insert(key, PropertyValue(round));
        }
        ASSERT_TRUE(writer.synchronize(nullptr));
    }
    ASSERT_TRUE(first->synchronize(nullptr));
    ASSERT_TRUE(second->synchronize(nullptr));
    for (const auto &settings : {first, second, open()}) {
        ASSERT_EQ(settings->keys(), model.keys());
        for (const QString &key : model.keys()) {
            ASSERT_TRUE(settings->objectForKey(key) == model.value(key)) << qPrintable(key);
        }
    }
}

TEST_F(Settings, OfTwoProcessesLoseNothing)
{
    constexpr int kWrites = 30;
    pid_t children[2] = {};
    for (int index = 0; index < 2; ++index) {
        children[index] = ::fork();
        if (children[index] == 0) {
            NSUserDefaults settings(m_folder.path(u"settings.plist"_s));
            bool isDone = true;
            for (int round = 0; round < kWrites; ++round) {
                settings.setObject(PropertyValue(round), u"%1 %2"_s.arg(index).arg(round));
                isDone = settings.synchronize(nullptr) && isDone;
            }
            ::_exit(isDone ? 0 : 1);
        }
    }
    for (const pid_t child : children) {
        int status = -1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(open()->keys().size(), 2 * kWrites);
}

TEST_F(Settings, TellTheirObserversOnceForEachChange)
{
    const auto settings = open();
    settings->registerDefaults({{u"flag"_s, PropertyValue(true)}});
    QStringList told;
    const QThread *thread = nullptr;
    auto token = settings->addObserver(u"flag"_s, [&](const QString &key) {
        told.append(key % u'=' % settings->objectForKey(key).toString());
        thread = QThread::currentThread();
    });
    settings->setObject(PropertyValue(true), u"flag"_s); // the registered value: no change
    settings->setObject(PropertyValue(1), u"other"_s);
    EXPECT_TRUE(told.isEmpty());
    settings->setObject(PropertyValue(false), u"flag"_s);
    ASSERT_TRUE(settings->synchronize(nullptr));
    EXPECT_EQ(told, QStringList{u"flag=0"_s});

    std::thread writer([&settings] { settings->removeObject(u"flag"_s); });
    writer.join();
    EXPECT_EQ(told.size(), 2);
    EXPECT_NE(thread, QThread::currentThread());

    token.reset();
    settings->setObject(PropertyValue(false), u"flag"_s);
    EXPECT_EQ(told.size(), 2);
}

TEST_F(Settings, TellOfForeignChangesWhenSynchronised)
{
    const auto mine = open();
    const auto theirs = open();
    QStringList told;
    const auto token = mine->addObserver(u"k"_s, [&](const QString &key) { told.append(mine->stringForKey(key)); });
    theirs->setObject(PropertyValue(u"foreign"_s), u"k"_s);
    ASSERT_TRUE(theirs->synchronize(nullptr));
    EXPECT_TRUE(told.isEmpty());
    ASSERT_TRUE(mine->synchronize(nullptr));
    ASSERT_TRUE(mine->synchronize(nullptr));
    EXPECT_EQ(told, QStringList{u"foreign"_s});
}

TEST_F(Settings, TellOfForeignChangesAsTheyHappenWhereWatched)
{
    const auto mine = open();
    const auto theirs = open();
    bool isTold = false;
    const auto token = mine->addObserver(u"k"_s, [&isTold](const QString & /*key*/) { isTold = true; });
    mine->startWatching();
    theirs->setObject(PropertyValue(1), u"k"_s);
    ASSERT_TRUE(theirs->synchronize(nullptr));
    while (!isTold) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    EXPECT_EQ(mine->integerForKey(u"k"_s), 1);
}

TEST_F(Settings, ObserversMayLeaveAndWriteWhileBeingTold)
{
    const auto settings = open();
    quib::ObservationToken second;
    int calls = 0;
    const auto first = settings->addObserver(u"k"_s, [&](const QString & /*key*/) {
        ++calls;
        second.reset();
        settings->setObject(PropertyValue(2), u"k"_s); // told again, and then no change any more
    });
    second = settings->addObserver(u"k"_s, [&](const QString & /*key*/) { calls += 100; });
    settings->setObject(PropertyValue(1), u"k"_s);
    EXPECT_EQ(calls, 2);
}

TEST_F(Settings, KeepADamagedFileAside)
{
    m_folder.write(u"settings.plist"_s, "no property list");
    const auto settings = open();
    NSError error;
    EXPECT_TRUE(settings->objectForKey(u"k"_s).isNull());
    settings->setObject(PropertyValue(1), u"k"_s);
    ASSERT_TRUE(settings->synchronize(&error)) << qPrintable(error.localizedDescription());
    EXPECT_EQ(m_folder.read(u"settings.plist.damaged"_s), "no property list");
    EXPECT_EQ(open()->integerForKey(u"k"_s), 1);
}

TEST_F(Settings, ReportWhatCannotBeReadOrWrittenAndTryAgain)
{
    NSUserDefaults settings(m_folder.path(u"later/settings.plist"_s));
    settings.setObject(PropertyValue(1), u"k"_s);
    NSError error;
    EXPECT_FALSE(settings.synchronize(&error));
    EXPECT_TRUE(error.localizedDescription().contains(u"settings.plist"));
    EXPECT_EQ(settings.integerForKey(u"k"_s), 1);
    m_folder.write(u"later/other"_s, "");
    EXPECT_TRUE(settings.synchronize(&error));

    const auto damaged = open();
    m_folder.write(u"settings.plist"_s, "bplist00 is not enough");
    EXPECT_FALSE(damaged->synchronize(&error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::PropertyListReadCorrupt));
}

TEST_F(Settings, ThatCannotBeStoredDoNotKeepOthersFromIt)
{
    const auto settings = open();
    settings->setObject(PropertyValue(PropertyValue::Array{PropertyValue()}), u"bad"_s);
    settings->setObject(PropertyValue(1), u"good"_s);
    NSError error;
    EXPECT_FALSE(settings->synchronize(&error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::PropertyListWriteInvalid));
    EXPECT_EQ(open()->keys(), QStringList{u"good"_s});
    EXPECT_TRUE(settings->synchronize(&error));
}

TEST_F(Settings, OfOneSuiteAreOneObjectInThePreferencesFolder)
{
    quib::Profile::setRoot(m_folder.path());
    const auto suite = NSUserDefaults::suite(u"group"_s);
    EXPECT_EQ(suite, NSUserDefaults::suite(u"group"_s));
    EXPECT_NE(suite, NSUserDefaults::standardUserDefaults());
    EXPECT_EQ(suite->path(), m_folder.path(u"config/net.quibworks.quib/group.plist"_s));
    suite->setObject(PropertyValue(1), u"k"_s);
    EXPECT_TRUE(suite->synchronize(nullptr));
    struct stat status = {};
    ASSERT_EQ(::stat(suite->path().toUtf8().constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    quib::Profile::setRoot(QString());
}

class SharedValues : public Settings
{
protected:
    SharedValues()
    {
        m_token = m_store.addObserver([this](const NSUbiquitousKeyValueStore::ChangeNotification &notification) {
            m_told.append(u"%1: %2"_s.arg(notification.reason).arg(notification.changedKeys.join(u' ')));
        });
    }
    NSUbiquitousKeyValueStore m_store{open()};
    QStringList m_told;
    quib::ObservationToken m_token;
};

TEST_F(SharedValues, AreNotAnnouncedToTheirOwnWriter)
{
    m_store.setBool(true, u"mode"_s);
    ASSERT_TRUE(m_store.synchronize(nullptr));
    EXPECT_TRUE(m_told.isEmpty());
    EXPECT_TRUE(NSUbiquitousKeyValueStore(open()).boolForKey(u"mode"_s));
}

TEST_F(SharedValues, AnnounceWhatOthersChanged)
{
    NSUbiquitousKeyValueStore other(open());
    other.setBool(true, u"mode"_s);
    other.setObject(PropertyValue(3), u"count"_s);
    ASSERT_TRUE(other.synchronize(nullptr));
    ASSERT_TRUE(m_store.synchronize(nullptr));
    EXPECT_EQ(m_told, QStringList{u"0: count mode"_s});

    m_store.receiveValues({{u"mode"_s, PropertyValue(true)}, {u"count"_s, PropertyValue()}},
                          NSUbiquitousKeyValueStore::InitialSyncChange);
    EXPECT_EQ(m_told.last(), u"1: count"_s);
    EXPECT_TRUE(m_store.objectForKey(u"count"_s).isNull());
    m_store.receiveValues({{u"mode"_s, PropertyValue(false)}}, NSUbiquitousKeyValueStore::QuotaViolationChange);
    EXPECT_EQ(m_told.last(), u"2: mode"_s);
    EXPECT_TRUE(m_store.boolForKey(u"mode"_s));
}

TEST_F(SharedValues, StayAsTheyWereWhereTheStoreIsFull)
{
    m_store.setObject(PropertyValue(u"small"_s), u"k"_s);
    m_store.setObject(PropertyValue(QByteArray(2 * 1024 * 1024, 'x')), u"k"_s);
    EXPECT_EQ(m_told, QStringList{u"2: k"_s});
    EXPECT_EQ(m_store.objectForKey(u"k"_s).toString(), u"small"_s);
}

} // namespace

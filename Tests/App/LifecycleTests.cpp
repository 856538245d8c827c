// The life of the process: what happens in which order, what is parked, and what a failure leaves as it was.

#include "AppFixture.h"

#include <Files/NSUserDefaults.h>
#include <Logging/QBLogger.h>
#include <Store/QBLocalDataMigrator.h>
#include <Store/QBLocalFileManager.h>
#include <Store/QBNoteFilesDowloadedNotification.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <tuple>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

} // namespace

class Lifecycle : public AppFixture
{
protected:
    /// A picture that any decoder takes.
    [[nodiscard]] QString picture(const QString &name) const
    {
        return folder.write(
            u"user/"_s + name,
            QByteArray::fromBase64("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9"
                                   "awAAAABJRU5ErkJggg=="));
    }
    /// Puts a store of the first version in the profile's place; gives its path.
    [[nodiscard]] static QString putOldStore()
    {
        const QString path = Profile::persistentDataFolder() + u"/database.sqlite"_s;
        EXPECT_TRUE(QFile::copy(QStringLiteral(QUIB_TEST_DATA "/Stores/version1.sqlite"), path));
        EXPECT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
        return path;
    }
};

// Launch and end

TEST_F(Lifecycle, AFreshLaunchFindsWindowAndThemeBeforeTheStore)
{
    launch();
    EXPECT_EQ(application->takeSteps(),
              (QStringList{u"find window"_s, u"theme"_s, u"context"_s, u"select first row"_s, u"key and front"_s}));
    EXPECT_TRUE(delegate().isRunning());
    EXPECT_EQ(application->window.context, process->stack().managedObjectContext());
    EXPECT_FALSE(delegate().appOpenedFromXCallback());
    EXPECT_EQ(application->icons, QStringList{u"AppIcon"_s});
}

TEST_F(Lifecycle, TheEndHidesTheWindowThenSavesWhatWasTyped)
{
    launch();
    const auto note = QBNote::noteWithText(u"# Draft"_s, 0, moc());
    QBNoteTag::addNewTagWithName(u"nobody"_s, moc());
    application->window.pendingText = [&note] { note->updateNoteWithText(u"# Draft\nlast words #kept"_s, 0); };
    application->takeSteps();
    NSError error;
    EXPECT_TRUE(process->terminate(&error)) << error.localizedDescription().toStdString();
    const QStringList steps = {u"alpha 0"_s, u"front"_s, u"invalidate state"_s, u"save note, forced"_s};
    EXPECT_EQ(application->takeSteps(), steps);
    EXPECT_TRUE(process->terminate(&error)) << "a second end has nothing to do";
    EXPECT_TRUE(application->takeSteps().isEmpty());

    launch();
    EXPECT_EQ(texts(), QStringList{u"# Draft\nlast words #kept"_s});
    QStringList tags;
    for (const auto &tag : QBNoteTag::notesTagsInManagedObjectContext(moc())) {
        tags.append(tag->title());
    }
    EXPECT_EQ(tags, QStringList{u"kept"_s}) << "a tag without notes goes at the end";
}

TEST_F(Lifecycle, LeftoversOfTheProcessGoAtTheEnd)
{
    launch();
    const QString temporary = QBLocalFileManager::temporaryUniqueDirectoryPath();
    ASSERT_TRUE(QFileInfo::exists(temporary));
    NSError error;
    EXPECT_TRUE(process->terminate(&error));
    EXPECT_FALSE(QFileInfo::exists(temporary));
}

TEST_F(Lifecycle, AnAttachmentThatChangedWhileNobodyWatchedIsFoundAtTheLaunch)
{
    launch();
    const auto identifier = [this] {
        const auto file =
            QBNoteFile::factoryNoteFileForFileURL(QUrl::fromLocalFile(folder.write(u"user/a.txt"_s, "old")), moc());
        file->setUploaded(true);
        QBNote::noteWithText(file->textRepresentation(), 0, moc());
        return file->uniqueIdentifier();
    }();
    NSError error;
    ASSERT_TRUE(process->terminate(&error));
    process.reset();
    QFile file(QBLocalFileManager::localFileManagerForPathComponent(u"Local Files/Note Files"_s)
                   ->fileURLForUniqueID(identifier, u"a.txt"_s)
                   .toLocalFile());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write("longer than before"), 18);
    ASSERT_TRUE(file.flush());
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFileDevice::FileModificationTime));
    file.close();

    QStringList told;
    const auto token =
        QBNoteFilesDowloadedNotification().add([&told](const QStringList &identifiers) { told += identifiers; });
    launch();
    const auto row = QBNoteFile::noteFileWithUniqueIdentifier(identifier, moc());
    EXPECT_TRUE(row->uploaded()) << "the launch does not wait for it";
    wait([&told] { return !told.isEmpty(); });
    EXPECT_EQ(told, QStringList{identifier});
    EXPECT_FALSE(row->uploaded());
    EXPECT_EQ(row->fileSize(), 18);
    EXPECT_FALSE(moc().hasChanges());
}

TEST_F(Lifecycle, AnAttachmentThatReachedNoTextGoesAtTheEndOfALaterRun)
{
    launch();
    const QUrl source = QUrl::fromLocalFile(folder.write(u"user/a.txt"_s, "a"));
    const auto attached = [this, &source] { return QBNoteFile::factoryNoteFileForFileURL(source, moc()); };
    const auto folderOf = [](const Ref<QBNoteFile> &file) { return QFileInfo(file->fileURL()->toLocalFile()).path(); };
    const auto [identifier, lost, kept] = [&] {
        const auto taken = attached();
        QBNote::noteWithText(taken->textRepresentation(), 0, moc());
        const auto forgotten = attached();
        return std::tuple(forgotten->uniqueIdentifier(), folderOf(forgotten), folderOf(taken));
    }();
    NSError error;
    ASSERT_TRUE(process->terminate(&error));
    process.reset();
    ASSERT_TRUE(QFileInfo::exists(lost));
    const timespec longAgo[2] = {{.tv_sec = 1'000'000'000, .tv_nsec = 0}, {.tv_sec = 1'000'000'000, .tv_nsec = 0}};
    for (const QString &item : {QString(lost % u"/a.txt"_s), lost, QString(kept % u"/a.txt"_s), kept}) {
        ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(item).constData(), longAgo, 0), 0);
    }
    launch();
    wait([this, id = identifier] { return QBNoteFile::noteFileWithUniqueIdentifier(id, moc())->unused(); });
    EXPECT_TRUE(QFileInfo::exists(lost)) << "a text may still take it up";
    ASSERT_TRUE(process->terminate(&error));
    EXPECT_FALSE(QFileInfo::exists(lost));
    EXPECT_TRUE(QFileInfo::exists(kept));
}

TEST_F(Lifecycle, AProcessWithoutWindowsGoesThroughTheSameSteps)
{
    make();
    application->hasWindow = false;
    process->launch();
    EXPECT_TRUE(delegate().isRunning());
    EXPECT_EQ(application->takeSteps(), (QStringList{u"find window"_s, u"theme"_s}));
    QBNote::noteWithText(u"kept"_s, 0, moc());
    NSError error;
    EXPECT_TRUE(process->terminate(&error));
    launch();
    EXPECT_EQ(texts(), QStringList{u"kept"_s});
}

TEST_F(Lifecycle, ALaunchIsLoggedWithItsTime)
{
    QBLogger::sharedLogger().setFileLoggerEnabled(true);
    launch();
    QBLogger::sharedLogger().flush();
    const QString log = QString::fromUtf8(contents(QBLogger::sharedLogger().lastLogFilePath()));
    QBLogger::sharedLogger().setFileLoggerEnabled(false);
    EXPECT_TRUE(log.contains(QRegularExpression(u"application launch in \\d+\\.\\d{6}s"_s))) << log.toStdString();
    EXPECT_LT(log.indexOf(u"application launch in"), log.indexOf(u"-------- Device info: ---------"));
}

TEST_F(Lifecycle, WithoutWelcomeNotesTheFirstLaunchStaysOpen)
{
    launch();
    EXPECT_TRUE(texts().isEmpty());
    EXPECT_FALSE(NSUserDefaults::standardUserDefaults()->boolForKey(u"QBFirstLaunchNotes"_s));
    QBNote::noteWithText(u"mine"_s, 0, moc());
    NSError error;
    ASSERT_TRUE(process->terminate(&error));
    launch();
    EXPECT_EQ(texts(), QStringList{u"mine"_s});
    EXPECT_FALSE(NSUserDefaults::standardUserDefaults()->boolForKey(u"QBFirstLaunchNotes"_s));
}

// Migration

TEST_F(Lifecycle, AMigrationShowsItsProgressAndServesWhatWasParkedInOrder)
{
    const QString path = putOldStore();
    make();
    QStringList served;
    delegate().delayUntilManagedObjectContextIsReady([&served] { served.append(u"first"_s); });
    process->launch();
    EXPECT_FALSE(delegate().isRunning());
    EXPECT_EQ(process->stack().managedObjectContext(), nullptr);
    ASSERT_NE(delegate().loadingWindowController(), nullptr);
    delegate().applicationOpenFiles({picture(u"a.png"_s)});
    delegate().applicationOpenURL(QUrl(u"quib://x-callback-url/create?text=from%20a%20URL"_s));
    delegate().delayUntilManagedObjectContextIsReady([this, &served] {
        served.append(u"last"_s);
        EXPECT_TRUE(delegate().isRunning());
        EXPECT_EQ(notes().size(), 21) << "the picture that was parked before has become a note";
    });
    EXPECT_TRUE(served.isEmpty());
    wait([this] { return delegate().isRunning(); });
    EXPECT_EQ(served, (QStringList{u"first"_s, u"last"_s}));
    const QStringList steps = application->takeSteps();
    const QStringList expected = {
        u"find window"_s,
        u"theme"_s,
        u"out"_s,
        u"loading window"_s,
        u"loading title: Just a moment and Quib will be ready!"_s,
        u"loading text: Quib is currently speeding up your notes and migrating the database to a new version.\nWe highly suggest not to exit from Quib during the whole process."_s,
        u"loading progress"_s,
        u"loading centred"_s,
        u"loading begins"_s,
        u"out"_s, // the launch ends while the store is not there yet
        u"loading ends"_s,
        u"loading out"_s,
        u"key and front"_s,
        u"context"_s,
        u"select first row"_s,
        u"key and front"_s,
    };
    EXPECT_EQ(steps.mid(0, expected.size()), expected);
    EXPECT_EQ(delegate().loadingWindowController(), nullptr);
    wait([this] { return notes().size() == 22; });
    EXPECT_TRUE(texts().contains(u"from a URL"_s));
    EXPECT_NE(contents(path), contents(QStringLiteral(QUIB_TEST_DATA "/Stores/version1.sqlite")));
    bool isAtOnce = false;
    delegate().delayUntilManagedObjectContextIsReady([&isAtOnce] { isAtOnce = true; });
    EXPECT_TRUE(isAtOnce);
}

TEST_F(Lifecycle, AFailedMigrationLeavesTheStoreAsItWasAndServesNothing)
{
    const QString path = putOldStore();
    const QByteArray before = contents(path);
    // The walk cannot write its next version.
    ASSERT_TRUE(QDir().mkpath(Profile::persistentDataFolder() + u"/database.Model 2.sqlite/in the way"_s));
    make();
    application->button = 1;
    process->launch();
    bool isServed = false;
    delegate().delayUntilManagedObjectContextIsReady([&isServed] { isServed = true; });
    QStringList answers;
    process->serve({.kind = InstanceRequest::Kind::SendText, .text = "parked"},
                   [&answers](const NSError &refusal) { answers.append(refusal.localizedDescription()); });
    EXPECT_TRUE(answers.isEmpty());
    wait([this] { return delegate().hasFailedToMigrate(); });
    EXPECT_FALSE(delegate().isRunning());
    EXPECT_EQ(contents(path), before);
    ASSERT_EQ(application->alerts.size(), 1);
    EXPECT_EQ(application->alerts[0].messageText, u"Something went wrong"_s);
    EXPECT_EQ(
        application->alerts[0].informativeText,
        u"It was not possible to migrate your database to the new version. Don't worry your notes are safe, please contact the support team using the 'Contact Support' button below and they will help you."_s);
    EXPECT_EQ(application->alerts[0].buttons, (QStringList{u"OK"_s, u"Contact Support"_s}));
    EXPECT_EQ(application->takeSteps().mid(10),
              (QStringList{u"loading ends"_s, u"loading out"_s, u"alert: Something went wrong"_s,
                           u"website https://quibworks.net/support"_s, u"key and front"_s}));
    NSError error;
    bool isTold = false;
    process->serve({.kind = InstanceRequest::Kind::SendText, .text = "text"},
                   [&isTold](const NSError &refusal) { isTold = refusal.isSet(); });
    EXPECT_TRUE(isTold) << "who asks too late is told at once";
    EXPECT_EQ(answers, QStringList{u"Quib could not open its notes, and takes nothing"_s}) << "and who waited as well";
    EXPECT_TRUE(process->terminate(&error));
    EXPECT_EQ(application->takeSteps(), (QStringList{u"alpha 0"_s, u"front"_s, u"invalidate state"_s}));
    EXPECT_FALSE(isServed);
    EXPECT_EQ(contents(path), before);
}

TEST_F(Lifecycle, AFailedMoveOfTheDataNeverOpensAStore)
{
    // Data of an earlier version that cannot be moved: something of its name is in the way.
    const QString documents = QBLocalDataMigrator::documentDataURL().toLocalFile();
    ASSERT_TRUE(QDir().mkpath(documents + u"/Local Files/a"_s));
    ASSERT_TRUE(
        QFile::copy(QStringLiteral(QUIB_TEST_DATA "/Stores/version1.sqlite"), documents + u"/database.sqlite"_s));
    ASSERT_TRUE(QDir().mkpath(Profile::persistentDataFolder() + u"/Local Files/b"_s));
    launch();
    EXPECT_TRUE(delegate().hasFailedToMigrate());
    EXPECT_EQ(application->takeSteps(),
              (QStringList{u"find window"_s, u"theme"_s, u"alert: Something went wrong"_s, u"out"_s}));
    EXPECT_EQ(process->stack().managedObjectContext(), nullptr);
    EXPECT_FALSE(QFileInfo::exists(Profile::persistentDataFolder() + u"/database.sqlite"_s));
    EXPECT_TRUE(QFileInfo::exists(documents + u"/database.sqlite"_s));
    delegate().applicationOpenFiles({picture(u"a.png"_s)});
    NSError error;
    EXPECT_TRUE(process->terminate(&error));
    EXPECT_FALSE(QFileInfo::exists(Profile::persistentDataFolder() + u"/database.sqlite"_s));
}

TEST_F(Lifecycle, AStoreThatIsNoneIsReportedAndLeftAlone)
{
    const QString path = Profile::persistentDataFolder() + u"/database.sqlite"_s;
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(5000, 'x'));
    file.close();
    const QString shown = u"reveal "_s + QFileInfo(path).path();
    const struct
    {
        int button;
        QStringList steps;
    } answers[] = {{0, {u"terminate"_s}}, {1, {shown, u"terminate"_s}}, {QBApplicationInterface::kNoButton, {}}};
    for (const auto &answer : answers) {
        make();
        application->button = answer.button;
        process->launch();
        EXPECT_FALSE(delegate().isRunning());
        ASSERT_EQ(application->alerts.size(), 1);
        const QBAlert &alert = application->alerts.constFirst();
        EXPECT_EQ(alert.messageText, u"Your notes could not be opened"_s);
        EXPECT_TRUE(alert.informativeText.contains(u"damaged")) << alert.informativeText.toStdString();
        EXPECT_EQ(alert.buttons, (QStringList{u"Quit"_s, u"Show Folder"_s}));
        EXPECT_EQ(alert.path, path);
        EXPECT_TRUE(alert.isFailure);
        EXPECT_EQ(application->takeSteps(),
                  (QStringList{u"find window"_s, u"theme"_s, u"alert: Your notes could not be opened"_s}) +
                      answer.steps);
        NSError error;
        std::ignore = process->terminate(&error);
        EXPECT_EQ(contents(path), QByteArray(5000, 'x'));
    }
}

// Preferences

TEST_F(Lifecycle, TheMarkdownModeCountsTheToDosOfAllNotesAnew)
{
    launch();
    const auto note = QBNote::noteWithText(u"- native\n+ done\n- [ ] markdown\n"_s, 0, moc());
    process->stack().saveUsingCoalescence(false);
    const qint64 before = note->todoCompleted();
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    preferences->setMarkdownCompatibilityMode(true);
    wait([&note, before] { return note->todoCompleted() != before; });
    EXPECT_EQ(note->todoCompleted(), QBNote::parseCompletedTodoFromText(note->text(), 1));
    EXPECT_EQ(note->todoIncompleted(), QBNote::parseTodoFromText(note->text(), 1));
}

TEST_F(Lifecycle, ChangesOfFontsSizesAndIconTakeEffectAtOnce)
{
    launch();
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    int loads = application->themeLoads;
    preferences->setFontThemeName(u"Georgia"_s);
    EXPECT_EQ(application->themeLoads, ++loads);
    preferences->setEditorFontSize(21);
    EXPECT_EQ(application->themeLoads, ++loads);
    preferences->setEditorLineHeightMultiplier(1.5);
    EXPECT_EQ(application->themeLoads, ++loads);
    preferences->setEditorLineWidthMultiplier(1.5);
    EXPECT_EQ(application->themeLoads, ++loads);
    preferences->setEditorParagraphSpacingMultiplier(1.5);
    EXPECT_EQ(application->themeLoads, ++loads);
    preferences->setCurrentAppThemeName(u"Dracula"_s);
    application->icons.clear();
    preferences->setAppIconMatchesTheme(true);
    ASSERT_EQ(application->icons.size(), 1);
    EXPECT_NE(application->icons[0], u"AppIcon"_s);
    application->takeSteps();
    delegate().effectiveAppearanceDidChange(/*isDark=*/true);
    EXPECT_EQ(application->takeSteps(), QStringList{u"theme"_s});
}

TEST_F(Lifecycle, NoPreferenceIsFollowedBeforeTheStoreIsThere)
{
    make();
    QBNotesPreferenceManager::sharedPreferenceManager()->setFontThemeName(u"Georgia"_s);
    EXPECT_EQ(application->themeLoads, 0);
}

} // namespace quib::tests

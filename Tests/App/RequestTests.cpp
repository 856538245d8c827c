// What users, the desktop and other programs ask of the application while it runs.

#include "AppFixture.h"

#include <Logging/QBLogger.h>
#include <URL/QBURLPasteboard.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace quib::tests {

class Requests : public AppFixture
{
protected:
    Requests()
    {
        launch();
        application->takeSteps();
    }
    [[nodiscard]] QString file(const QString &name, const QByteArray &bytes = "bytes") const
    {
        return folder.write(u"user/"_s + name, bytes);
    }
    /// Serves a request that is answered at once; gives the error's text, null for none.
    QString serve(const InstanceRequest &request)
    {
        QString answer = u"no answer"_s;
        process->serve(request, [&answer](const NSError &error) {
            answer = error.isSet() ? error.localizedDescription() : QString();
        });
        return answer;
    }
};

// Files

TEST_F(Requests, PicturesBecomeOneNoteWithEmptyLinesBetween)
{
    delegate().applicationOpenFiles({file(u"one.PNG"_s), file(u"two.webp"_s), file(u"three.jpg"_s)});
    ASSERT_EQ(notes().size(), 1);
    const auto note = notes()[0];
    EXPECT_EQ(note->filesCount(), 3);
    QStringList expected;
    for (const auto &attached : note->orderedFiles()) {
        const bool isShown = !attached->filename().endsWith(u".webp");
        expected.append((isShown ? u"[image:"_s : u"[file:"_s) + attached->uniqueIdentifier() + u'/' +
                        attached->filename() + u"]\n"_s);
    }
    EXPECT_EQ(note->text(), expected.join(u'\n'));
    EXPECT_TRUE(application->alerts.isEmpty());
    EXPECT_FALSE(moc().hasChanges()) << "saved at once";
}

TEST_F(Requests, ABackupAtTheEndDiscardsTheWholeList)
{
    delegate().applicationOpenFiles({file(u"a.png"_s), file(u"b.quibbk"_s)});
    EXPECT_TRUE(notes().isEmpty());
    EXPECT_TRUE(application->alerts.isEmpty());
    delegate().applicationOpenFiles({file(u"b.quibbk"_s), file(u"a.png"_s)});
    EXPECT_EQ(notes().size(), 1) << "elsewhere it is one of the files that need an importer";
    ASSERT_EQ(application->alerts.size(), 1);
    EXPECT_TRUE(application->alerts[0].informativeText.contains(u"b.quibbk"_s));
    EXPECT_FALSE(application->alerts[0].informativeText.contains(u"a.png"_s));
}

TEST_F(Requests, FilesThatNeedAnImporterAreNamed)
{
    QStringList many;
    for (int i = 0; i < 50; ++i) {
        many.append(file(u"%1.md"_s.arg(i)));
    }
    many.append(folder.path(u"user/not there.png"_s));
    delegate().applicationOpenFiles(many);
    EXPECT_TRUE(notes().isEmpty());
    ASSERT_EQ(application->alerts.size(), 1);
    EXPECT_TRUE(application->alerts[0].informativeText.contains(u"0.md\n1.md"_s));
    EXPECT_TRUE(application->alerts[0].informativeText.contains(u"and 41 more"_s));
    delegate().applicationOpenFiles({});
    EXPECT_EQ(application->alerts.size(), 1);
}

// URLs

TEST_F(Requests, AURLMakesANoteAndItsCallbackIsOpened)
{
    EXPECT_TRUE(delegate().handleGetURLEvent(
        QUrl(u"quib://x-callback-url/create?title=Plan&text=Call%20%23work&x-success=app://ok"_s)));
    EXPECT_TRUE(delegate().appOpenedFromXCallback());
    wait([this] { return !opened.isEmpty(); });
    EXPECT_EQ(texts(), QStringList{u"# Plan\nCall #work"_s});
    EXPECT_EQ(opened[0].scheme(), u"app"_s);
    const QUrlQuery query(opened[0].query());
    EXPECT_EQ(query.queryItemValue(u"identifier"_s), notes()[0]->uniqueIdentifier());
    EXPECT_EQ(query.queryItemValue(u"title"_s), u"Plan"_s);
    EXPECT_FALSE(moc().hasChanges());
}

TEST_F(Requests, CallbacksIntoThisMachineAreNotOpened)
{
    for (const QString &callback : {u"file:///etc/passwd"_s, u"javascript:alert(1)"_s, u"/bin/sh"_s, u"data:,x"_s}) {
        delegate().applicationOpenURL(
            QUrl(u"quib://x-callback-url/trash?x-success="_s + QString::fromLatin1(QUrl::toPercentEncoding(callback))));
    }
    EXPECT_TRUE(opened.isEmpty());
    delegate().applicationOpenURL(QUrl(u"quib://x-callback-url/trash?x-success=app://done"_s));
    EXPECT_EQ(opened.size(), 1);
}

TEST_F(Requests, CallbacksToOurselvesAreServedHere)
{
    // As a link to a note that is not there calls back, to make it.
    delegate().applicationOpenURL(QUrl(u"quib://x-callback-url/open-note?title=Nope&x-error="
                                       "quib%3A%2F%2Fx%2Dcallback%2Durl%2Fcreate%3Ftitle%3DNope"_s));
    EXPECT_TRUE(texts().isEmpty()) << "not within the action that calls back";
    wait([this] { return !texts().isEmpty(); });
    EXPECT_EQ(texts(), QStringList{u"# Nope\n"_s});
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(Requests, AURLOfNobodyIsNotHandled)
{
    EXPECT_FALSE(delegate().handleGetURLEvent(QUrl(u"quib://x-callback-url/nosuch"_s)));
    EXPECT_FALSE(delegate().handleGetURLEvent(QUrl(u"other://x-callback-url/create?text=a"_s)));
    EXPECT_TRUE(texts().isEmpty());
    EXPECT_TRUE(delegate().handleGetURLEvent(QUrl(u"quib://x-callback-url/nosuch?x-error=app://e"_s)));
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(QUrlQuery(opened[0].query()).queryItemValue(u"error-Code"_s), u"2"_s);
}

TEST_F(Requests, WindowWorkOfURLsReachesTheMainWindow)
{
    QBNote::noteWithText(u"# Plan"_s, 0, moc());
    EXPECT_TRUE(delegate().handleGetURLEvent(QUrl(u"quib://x-callback-url/search?term=plan"_s)));
    EXPECT_EQ(application->takeSteps(),
              (QStringList{u"save note, forced"_s, u"list 0"_s, u"search plan"_s, u"show main window"_s}));
}

TEST_F(Requests, AnOpenListKeepsTheOrderOfFilesAndURLs)
{
    EXPECT_TRUE(
        serve({.kind = InstanceRequest::Kind::Open,
               .uris = {QUrl::fromLocalFile(file(u"a.png"_s)).toString(), u"quib://x-callback-url/search?term=x"_s,
                        QUrl::fromLocalFile(file(u"b c.md"_s)).toString()}})
            .isNull());
    EXPECT_EQ(notes().size(), 1);
    ASSERT_EQ(application->alerts.size(), 1);
    EXPECT_TRUE(application->alerts[0].informativeText.endsWith(u"b c.md"_s));
    EXPECT_EQ(application->takeSteps().last(), u"alert: These files cannot be opened"_s);
}

TEST_F(Requests, AStrayPercentSignStandsForItselfAlone)
{
    EXPECT_TRUE(serve({.kind = InstanceRequest::Kind::Open,
                       .uris = {u"quib://x-callback-url/create?title=A%20B&text=5%&tags=x%2Cy"_s}})
                    .isNull());
    wait([this] { return !texts().isEmpty(); });
    EXPECT_EQ(texts(), QStringList{u"# A B\n5%\n\n#x #y"_s});
    EXPECT_TRUE(
        serve({.kind = InstanceRequest::Kind::SendURIs, .uris = {u"https://example.com/a%20b?c=5%"_s}}).isNull());
    EXPECT_TRUE(texts().contains(u"https://example.com/a%20b?c=5%25"_s)) << texts().join(u'|').toStdString();
}

TEST_F(Requests, OnlyTextIsTakenForText)
{
    using Kind = InstanceRequest::Kind;
    EXPECT_TRUE(serve({.kind = Kind::SendText, .text = "caf\xe9 latin"}).contains(u"byte 3"_s));
    EXPECT_FALSE(serve({.kind = Kind::SendText, .text = ""}).isNull());
    EXPECT_TRUE(texts().isEmpty());
    EXPECT_TRUE(serve({.kind = Kind::SendText,
                       .text = QByteArray("\xff\xfe"
                                          "a\0b\0",
                                          6)})
                    .isNull());
    EXPECT_EQ(texts(), QStringList{u"ab"_s});
}

// Commands

TEST_F(Requests, CommandsAndTheirSteps)
{
    struct Case
    {
        const char *name;
        std::function<void(QBAppDelegate &)> run;
        QStringList steps;
    };
    const Case cases[] = {
        {"newDocument", [](QBAppDelegate &d) { d.newDocument(); }, {u"key and front"_s, u"new note"_s}},
        {"newDocumentInNewWindow", [](QBAppDelegate &d) { d.newDocumentInNewWindow(); }, {u"new note in new window"_s}},
        {"reopenMainWindow", [](QBAppDelegate &d) { d.reopenMainWindow(); }, {u"key and front"_s}},
        {"shorcutOpenQuib",
         [](QBAppDelegate &d) { d.shorcutOpenQuib(); },
         {u"activate"_s, u"key and front"_s, u"all forward"_s}},
        {"shorcutNewNote",
         [](QBAppDelegate &d) { d.shorcutNewNote(); },
         {u"activate"_s, u"key and front"_s, u"new note"_s}},
        {"noteListSearch", [](QBAppDelegate &d) { d.noteListSearch(); }, {u"list 0"_s, u"focus search"_s}},
        {"noteListSearch with a text",
         [](QBAppDelegate &d) { d.noteListSearch(u"x"_s); },
         {u"list 0"_s, u"focus search"_s, u"search x"_s}},
        {"a notification",
         [](QBAppDelegate &d) {
             d.userNotificationWasActivated({{u"link"_s, u"quib://x-callback-url/tags"_s}});
         },
         {u"show main window"_s}},
    };
    for (const Case &one : cases) {
        SCOPED_TRACE(one.name);
        one.run(delegate());
        const QStringList steps = application->takeSteps();
        if (QByteArray(one.name) != "a notification") {
            EXPECT_EQ(steps, one.steps);
        }
    }
    application->window.isKey = true;
    delegate().shorcutOpenQuib();
    EXPECT_EQ(application->takeSteps(), (QStringList{u"activate"_s, u"all forward"_s}));
    application->window.editorOnly = true;
    EXPECT_FALSE(delegate().noteListSearch());
    EXPECT_TRUE(application->takeSteps().isEmpty());
}

TEST_F(Requests, TheIconBringsTheWindowBackWhereNoneIsVisible)
{
    EXPECT_TRUE(delegate().applicationShouldHandleReopen());
    EXPECT_TRUE(application->takeSteps().isEmpty());
    application->isVisible = false;
    EXPECT_TRUE(delegate().applicationShouldHandleReopen());
    EXPECT_EQ(application->takeSteps(), QStringList{u"key and front"_s});
}

TEST_F(Requests, ACopiedLinkIsLookedUpOnlyIfTheUserWantsThat)
{
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    QObject::connect(&server, &QTcpServer::newConnection, &server, [&server] {
        QTcpSocket *socket = server.nextPendingConnection();
        socket->write("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 29\r\nConnection: close\r\n\r\n"
                      "<title>A page of ours</title>");
        socket->disconnectFromHost();
    });
    const QString link = u"http://127.0.0.1:%1/page"_s.arg(server.serverPort());
    application->pasteboard->setString(link, NSPasteboardTypeString);
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    const auto isTakenUp = [this] {
        return application->pasteboard->types().contains(QBURLPasteboard::kURLAlreadyParsedType);
    };
    preferences->setAutograbURLTitles(false);
    delegate().applicationDidBecomeActive();
    EXPECT_FALSE(isTakenUp());
    preferences->setAutograbURLTitles(true);
    delegate().applicationDidBecomeActive();
    wait(isTakenUp);
    EXPECT_EQ(application->pasteboard->stringForType(QBURLPasteboard::kURLNameType), u"A page of ours"_s);
}

TEST_F(Requests, AnActivityIsContinuedWithItsListAndItsNote)
{
    const auto note = QBNote::noteWithText(u"# Plan #work"_s, 0, moc());
    const QString id = note->uniqueIdentifier();
    struct Case
    {
        QVariantMap userInfo;
        bool isHandled;
        QStringList steps;
    };
    const Case cases[] = {
        {{{u"isAllNotes"_s, true}, {u"id"_s, id}}, true, {u"list 0"_s, u"show "_s + note->title()}},
        {{{u"isAllNotes"_s, true}, {u"isTrash"_s, true}}, false, {u"list 0"_s}},
        {{{u"isTrash"_s, true}, {u"id"_s, u"unknown"_s}}, false, {u"list 5"_s}},
        {{{u"tag"_s, u"work"_s}, {u"id"_s, id}}, true, {u"tag work"_s, u"show "_s + note->title()}},
        {{{u"tag"_s, u"unknown"_s}, {u"id"_s, id}}, false, {}},
        {{}, false, {}},
    };
    for (const Case &one : cases) {
        EXPECT_EQ(delegate().applicationContinueUserActivity(one.userInfo), one.isHandled);
        EXPECT_EQ(application->takeSteps(), one.steps);
    }
}

TEST_F(Requests, ActionsOfTheDesktopReachTheirCommands)
{
    using Kind = InstanceRequest::Kind;
    EXPECT_TRUE(serve({.kind = Kind::Action, .action = u"new-note"_s}).isNull());
    EXPECT_EQ(application->takeSteps().last(), u"new note"_s);
    EXPECT_TRUE(serve({.kind = Kind::Action, .action = u"search"_s, .argument = u"two words"_s}).isNull());
    EXPECT_EQ(application->takeSteps().last(), u"search two words"_s);
    EXPECT_TRUE(serve({.kind = Kind::Action, .action = u"show"_s}).isNull());
    EXPECT_TRUE(serve({.kind = Kind::Action, .action = u"quit"_s}).isNull());
    EXPECT_EQ(application->takeSteps().last(), u"terminate"_s);
    EXPECT_TRUE(serve({.kind = Kind::Action, .action = u"open-link"_s, .argument = u"https://example.com"_s}).isNull());
    EXPECT_EQ(opened, QList<QUrl>{QUrl(u"https://example.com"_s)});
    EXPECT_TRUE(serve({.kind = Kind::Action, .action = u"open-link"_s, .argument = u"file:///etc/passwd"_s}).isNull());
    EXPECT_EQ(opened.size(), 1);
    EXPECT_EQ(serve({.kind = Kind::Action, .action = u"nosuch"_s}), u"there is no action \"nosuch\""_s);
}

// Developer commands

TEST_F(Requests, DeletingEverythingAsksFirst)
{
    QBNote::noteWithText(u"precious"_s, 0, moc());
    process->stack().saveUsingCoalescence(false);
    const QString data = Profile::persistentDataFolder();
    application->button = 1;
    delegate().deleteQuibDB();
    EXPECT_TRUE(QFileInfo::exists(data + u"/database.sqlite"_s));
    application->button = QBApplicationInterface::kNoButton;
    delegate().deleteQuibDB();
    EXPECT_TRUE(QFileInfo::exists(data + u"/database.sqlite"_s)) << "nobody was there to be asked";
    ASSERT_EQ(application->alerts.size(), 2);
    EXPECT_EQ(application->alerts[0].messageText,
              u"I myself will carry you to the gates of Valhalla... you will ride eternal, shiny and chrome!"_s);
    EXPECT_EQ(application->alerts[0].buttons, (QStringList{u"Witness me!"_s, u"Ah, mediocre!"_s}));
    application->takeSteps();
    application->button = 0;
    delegate().deleteQuibDB();
    EXPECT_FALSE(QFileInfo::exists(data + u"/database.sqlite"_s));
    EXPECT_EQ(application->takeSteps().last(), u"exit 0"_s);
}

TEST_F(Requests, TheOtherDeveloperCommands)
{
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    delegate().toggleFileLog();
    EXPECT_EQ(preferences->logToFile(), true);
    delegate().printFirstResponder();
    QBLogger::sharedLogger().flush();
    QFile log(QBLogger::sharedLogger().lastLogFilePath());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(log.readAll().contains("first responder editor"));
    delegate().toggleFileLog();
    EXPECT_EQ(preferences->logToFile(), false);
    delegate().openApplicationContainer();
    delegate().openApplicationSupport();
    delegate().openLogsFolder();
    EXPECT_EQ(application->takeSteps(),
              (QStringList{u"reveal "_s + QDir::homePath(), u"reveal "_s + Profile::persistentDataFolder(),
                           u"reveal "_s + Profile::logsFolder()}));
}

} // namespace quib::tests

#include <Support/QtPrinters.h>
#include <URL/IACClient.h>
#include <URL/IACManager.h>

#include <gtest/gtest.h>

#include <optional>

using namespace Qt::StringLiterals;

namespace quib::tests {
namespace {

/// A dispatcher of the scheme "quib" whose opener writes down what it is to open.
class IACManagerTest : public testing::Test
{
protected:
    IACManagerTest() { setUp(*manager); }

    void setUp(IACManager &which)
    {
        which.setCallbackURLScheme(u"quib"_s);
        which.setOpener([this](const QUrl &url) {
            opened.append(url.toString(QUrl::FullyEncoded));
            return true;
        });
    }
    /// Registers an action that remembers what it is called with.
    void expectAction(const QString &name)
    {
        manager->handleAction(name, [this](const IACParameters &parameters, const IACSuccessBlock &onSuccess,
                                           const IACFailureBlock &onFailure) {
            given = parameters;
            success = onSuccess;
            failure = onFailure;
        });
    }
    bool handle(const QString &url) { return manager->handleOpenURL(QUrl(url)); }
    static QString encoded(const QString &text) { return QString::fromLatin1(QUrl::toPercentEncoding(text)); }
    /// The URL opened last, taken apart.
    [[nodiscard]] IACParameters lastParameters() const
    {
        return opened.isEmpty() ? IACParameters() : quib::parseURLParams(QUrl(opened.constLast()).query());
    }

    std::shared_ptr<IACManager> manager = std::make_shared<IACManager>();
    QStringList opened;
    std::optional<IACParameters> given;
    IACSuccessBlock success;
    IACFailureBlock failure;
};

// Which URLs are ours

TEST_F(IACManagerTest, HandlesItsOwnSchemeAndHostOnly)
{
    expectAction(u"create"_s);
    const std::pair<const char *, bool> cases[] = {
        {"quib://x-callback-url/create", true},
        {"quib://x-callback-url/create?", true},
        {"quib://x-callback-url/create?title=a", true},
        {"quib://x-callback-url/create/", false},
        {"quib://x-callback-url/Create", false},
        {"quib://x-callback-url/", false},
        {"quib://x-callback-url", false},
        {"quib://other/create", false},
        {"quib:create", false},
        {"quib:///create", false},
        {"quip://x-callback-url/create", false},
        {"https://x-callback-url/create", false},
        {"", false},
    };
    for (const auto &[url, handled] : cases) {
        given.reset();
        EXPECT_EQ(handle(QString::fromLatin1(url)), handled) << url;
        EXPECT_EQ(given.has_value(), handled) << url;
    }
    manager->setCallbackURLScheme({});
    EXPECT_FALSE(handle(u"quib://x-callback-url/create"_s));
    EXPECT_FALSE(handle(u"//x-callback-url/create"_s));
}

TEST_F(IACManagerTest, HidesTheProtocolFromHandlers)
{
    expectAction(u"create"_s);
    ASSERT_TRUE(handle(u"quib://x-callback-url/create?title=a%20b&x-source=App&x-success=app://ok&x-error=app://e"
                       "&x-cancel=app://c&IACThing=1&x=kept&text=%C3%A8"_s));
    EXPECT_EQ(
        *given,
        (IACParameters{{u"title"_s, u"a b"_s}, {u"x-source"_s, u"App"_s}, {u"x"_s, u"kept"_s}, {u"text"_s, u"è"_s}}));
}

TEST_F(IACManagerTest, GivesAnActionToTheHandlerThatCameLast)
{
    expectAction(u"create"_s);
    bool isReplaced = false;
    manager->handleAction(u"create"_s, [&isReplaced](const IACParameters &, const IACSuccessBlock &,
                                                     const IACFailureBlock &) { isReplaced = true; });
    EXPECT_TRUE(handle(u"quib://x-callback-url/create"_s));
    EXPECT_TRUE(isReplaced);
    EXPECT_FALSE(given);
}

TEST_F(IACManagerTest, LetsAHandlerChangeTheHandlers)
{
    manager->handleAction(u"one"_s, [this](const IACParameters &, const IACSuccessBlock &ok, const IACFailureBlock &) {
        for (int i = 0; i < 100; ++i) {
            expectAction(QString::number(i));
        }
        expectAction(u"one"_s);
        ok(std::nullopt, false);
    });
    EXPECT_TRUE(handle(u"quib://x-callback-url/one?x-success=app://ok"_s));
    EXPECT_EQ(opened, QStringList{u"app://ok?"_s});
}

TEST_F(IACManagerTest, FallsBackToItsDelegate)
{
    struct Delegate : IACDelegate
    {
        bool supportsIACAction(const QString &action) override { return action == u"known"; }
        void performIACAction(const QString &action, const IACParameters &parameters, const IACSuccessBlock &onSuccess,
                              const IACFailureBlock &onFailure) override
        {
            if (parameters.contains(u"fail"_s)) {
                onFailure(NSError(u"text"_s, 7, {}));
            } else {
                onSuccess(IACParameters{{u"action"_s, action}}, false);
            }
        }
    };
    auto delegate = std::make_shared<Delegate>();
    manager->setDelegate(delegate);
    EXPECT_TRUE(handle(u"quib://x-callback-url/known?x-success=app://ok"_s));
    EXPECT_EQ(opened, QStringList{u"app://ok?action=known&"_s});
    EXPECT_TRUE(handle(u"quib://x-callback-url/known?fail=yes&x-error=app://e"_s));
    EXPECT_FALSE(handle(u"quib://x-callback-url/unknown"_s));
    delegate.reset();
    EXPECT_FALSE(handle(u"quib://x-callback-url/known"_s));
}

TEST_F(IACManagerTest, TellsTheCallerOfAnUnknownAction)
{
    EXPECT_FALSE(handle(u"quib://x-callback-url/nosuch"_s));
    EXPECT_FALSE(handle(u"quib://x-callback-url/nosuch?x-success=app://ok"_s));
    EXPECT_TRUE(opened.isEmpty());
    EXPECT_TRUE(handle(u"quib://x-callback-url/nosuch?x-error=app%3A%2F%2Ferr"_s));
    ASSERT_EQ(opened.size(), 1);
    EXPECT_TRUE(opened.constFirst().startsWith(u"app://err?"_s));
    EXPECT_EQ(lastParameters(),
              (IACParameters{{u"error-Code"_s, u"2"_s},
                             {u"errorMessage"_s, u"'nosuch' is not an x-callback-url action supported by Quib"_s},
                             {u"errorDomain"_s, u"com.iac.manager.error"_s}}));
}

// Answers

TEST_F(IACManagerTest, AnswersOnTheURLsOfTheCaller)
{
    expectAction(u"a"_s);
    struct Case
    {
        const char *callback;
        IACParameters result;
        const char *opened;
    };
    const Case cases[] = {
        {"app://ok", {}, "app://ok?"},
        {"app://ok?", {}, "app://ok?&"},
        {"app://ok?a=b", {}, "app://ok?a=b&"},
        {"app://ok?a=b&", {}, "app://ok?a=b&"},
        {"app://ok", {{u"id"_s, u"1"_s}}, "app://ok?id=1&"},
        {"app://ok?a=b", {{u"id"_s, u"1"_s}, {u"title"_s, u"a b%"_s}}, "app://ok?a=b&id=1&title=a%20b%25&"},
        {"app://ok", {{u"t"_s, u"&=+/?"_s}}, "app://ok?t=&=+/?&"},
        {"app://ok?k=100%", {{u"t"_s, u"a b"_s}}, "app://ok?k=100%25&t=a%20b&"},
        {"app://ok", {{u"t"_s, u"è\n#"_s}}, "app://ok?t=%C3%A8%0A%23&"},
    };
    for (const Case &each : cases) {
        opened.clear();
        ASSERT_TRUE(handle(u"quib://x-callback-url/a?x-success="_s + encoded(QString::fromLatin1(each.callback))));
        EXPECT_TRUE(opened.isEmpty()) << "answers come when the handler gives them";
        success(each.result, false);
        EXPECT_EQ(opened, QStringList{QString::fromLatin1(each.opened)});
    }
}

TEST_F(IACManagerTest, OpensTheCancelURLAsItStands)
{
    expectAction(u"a"_s);
    ASSERT_TRUE(handle(u"quib://x-callback-url/a?x-success=app://ok&x-cancel=app%3A%2F%2Fcancel%3Fa%3Db"_s));
    success(IACParameters{{u"id"_s, u"1"_s}}, true);
    EXPECT_EQ(opened, QStringList{u"app://cancel?a=b"_s});
    ASSERT_TRUE(handle(u"quib://x-callback-url/a?x-success=app://ok"_s));
    success(std::nullopt, true);
    EXPECT_EQ(opened.size(), 1) << "no cancel URL, no answer";
}

TEST_F(IACManagerTest, PutsTheDomainOfAnErrorIntoItsMessage)
{
    expectAction(u"a"_s);
    ASSERT_TRUE(handle(u"quib://x-callback-url/a?x-error=app://e"_s));
    failure(NSError(u"The note could not be found"_s, 2, u"inner words"_s));
    EXPECT_EQ(lastParameters(), (IACParameters{{u"error-Code"_s, u"2"_s},
                                               {u"errorMessage"_s, u"The note could not be found"_s},
                                               {u"errorDomain"_s, u"The note could not be found"_s}}));
    // Twice, where a handler has two things to say.
    failure(NSError(u"second"_s, 4, {}));
    EXPECT_EQ(opened.size(), 2);
}

TEST_F(IACManagerTest, StaysSilentWithoutACallbackURLOrAManager)
{
    expectAction(u"a"_s);
    ASSERT_TRUE(handle(u"quib://x-callback-url/a"_s));
    success(IACParameters{{u"id"_s, u"1"_s}}, false);
    success(std::nullopt, true);
    failure(NSError(u"x"_s, 1, {}));
    ASSERT_TRUE(handle(u"quib://x-callback-url/a?x-success=app://ok&x-error=app://e"_s));
    manager.reset();
    success(std::nullopt, false);
    failure(NSError(u"x"_s, 1, {}));
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(IACManagerTest, OpensNothingOfThisMachine)
{
    expectAction(u"a"_s);
    const char *const refused[] = {"file:///usr/bin/true",
                                   "FILE:///usr/bin/true",
                                   "file://host/share",
                                   "/usr/bin/true",
                                   "usr/bin/true",
                                   "//host/share",
                                   "~/bin/true",
                                   "-e",
                                   "c:\\windows",
                                   "javascript:alert(1)",
                                   "JavaScript:alert(1)",
                                   "data:text/html,x",
                                   "vbscript:x",
                                   "view-source:http://a.b",
                                   "blob:http://a.b/1",
                                   "about:blank",
                                   "qrc:/x",
                                   "trash:/",
                                   "programs:/x",
                                   "applications:/x.desktop",
                                   "smb://host/share",
                                   "sftp://host/x",
                                   "help:/x",
                                   "man:ls",
                                   "admin:///etc",
                                   "jar:file:///x!/y",
                                   "http://[broken",
                                   "%66ile:///x",
                                   " file:///x",
                                   "\nfile:///x"};
    for (const char *url : refused) {
        const QString callback = encoded(QString::fromLatin1(url));
        ASSERT_TRUE(handle(u"quib://x-callback-url/a?x-success=%1&x-error=%1&x-cancel=%1"_s.arg(callback)));
        success(std::nullopt, false);
        success(std::nullopt, true);
        failure(NSError(u"x"_s, 1, {}));
        handle(u"quib://x-callback-url/nosuch?x-error=%1"_s.arg(callback));
        EXPECT_TRUE(opened.isEmpty()) << url << " opened as " << opened.value(0).toStdString();
        opened.clear();
        EXPECT_FALSE(manager->openURL(QUrl(QString::fromLatin1(url)))) << url;
    }
    for (const char *url : {"http://a.b", "https://a.b/c?d", "app://x", "x-app+1.2://x", "mailto:me@a.b", "quib://x"}) {
        EXPECT_TRUE(manager->openURL(QUrl(QString::fromLatin1(url)))) << url;
    }
}

TEST_F(IACManagerTest, TellsOfAnOpenerThatFailsOrIsMissing)
{
    manager->setOpener([](const QUrl &) { return false; });
    EXPECT_FALSE(manager->openURL(QUrl(u"app://x"_s)));
    manager->setOpener({});
    EXPECT_FALSE(manager->openURL(QUrl(u"app://x"_s)));
}

// Sizes

TEST_F(IACManagerTest, TakesParametersOfTenMegabytes)
{
    expectAction(u"a"_s);
    const QString plain(IACManager::kLargestParameter, u'x');
    ASSERT_TRUE(handle(u"quib://x-callback-url/a?x-error=app://e&text="_s + plain));
    EXPECT_TRUE(given->value(u"text"_s) == plain);
    // Every byte of it escaped.
    const QString escaped = u"%C3%A8"_s.repeated(IACManager::kLargestParameter / 2);
    ASSERT_TRUE(handle(u"quib://x-callback-url/a?x-error=app://e&text="_s + escaped));
    EXPECT_TRUE(given->value(u"text"_s) == QString(IACManager::kLargestParameter / 2, u'è'));
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(IACManagerTest, RefusesWhatIsLarger)
{
    expectAction(u"a"_s);
    const QString large(IACManager::kLargestParameter + 1, u'x');
    EXPECT_TRUE(handle(u"quib://x-callback-url/a?x-error=app://e&text="_s + large));
    EXPECT_EQ(lastParameters().value(u"error-Code"_s), u"3"_s);
    EXPECT_FALSE(handle(u"quib://x-callback-url/a?text="_s + large));
    EXPECT_FALSE(handle(u"quib://x-callback-url/a?x-error=app://e&a="_s + QString(IACManager::kLargestURL, u'x')));
    EXPECT_FALSE(handle(u"quib://x-callback-url/a?"_s + u"k=v&"_s.repeated(IACManager::kMostParameters)));
    EXPECT_FALSE(given);
    EXPECT_EQ(opened.size(), 1);
}

// Requests to others

class IACRequestTest : public IACManagerTest
{
protected:
    struct Answer
    {
        std::optional<IACParameters> result;
        bool cancelled = false;
        std::optional<NSError> error;
        int count = 0;
    };

    std::shared_ptr<IACClient> client(const QString &scheme = u"other"_s)
    {
        auto made = IACClient::clientWithURLScheme(scheme);
        made->setManager(manager);
        return made;
    }
    IACSuccessBlock onSuccess()
    {
        return [this](const std::optional<IACParameters> &result, bool cancelled) {
            ++answer.count;
            answer.result = result;
            answer.cancelled = cancelled;
        };
    }
    IACFailureBlock onFailure()
    {
        return [this](const NSError &error) {
            ++answer.count;
            answer.error = error;
        };
    }
    QString onlySession() { return manager->sessions().size() == 1 ? manager->sessions().cbegin().key() : QString(); }

    Answer answer;
};

TEST_F(IACRequestTest, SendsTheActionWithItsParametersAndWhoAsks)
{
    client()->performAction(u"do-it"_s, {{u"text"_s, u"a b"_s}});
    EXPECT_EQ(opened, QStringList{u"other://x-callback-url/do-it?&text=a%20b&x-source=Quib&"_s});
    EXPECT_EQ(manager->sessions().size(), 1);
}

TEST_F(IACRequestTest, IsAnsweredByAnotherDispatcher)
{
    // The other application, whose answers come back to us.
    const auto other = std::make_shared<IACManager>();
    setUp(*other);
    other->setCallbackURLScheme(u"other"_s);
    enum class How
    {
        Well,
        Cancelled,
        Badly,
    };
    for (const How how : {How::Well, How::Cancelled, How::Badly}) {
        other->handleAction(u"do-it"_s, [how](const IACParameters &parameters, const IACSuccessBlock &ok,
                                              const IACFailureBlock &notOk) {
            EXPECT_EQ(parameters, (IACParameters{{u"text"_s, u"a b"_s}, {u"x-source"_s, u"Quib"_s}}));
            if (how == How::Badly) {
                notOk(NSError(u"It broke, & how"_s, 42, {}));
            } else {
                ok(IACParameters{{u"id"_s, u"1 2"_s}}, how == How::Cancelled);
            }
        });
        answer = {};
        opened.clear();
        client()->performAction(u"do-it"_s, {{u"text"_s, u"a b"_s}}, onSuccess(), onFailure());
        ASSERT_EQ(opened.size(), 1);
        ASSERT_TRUE(other->handleOpenURL(QUrl(opened.constLast())));
        ASSERT_EQ(opened.size(), 2);
        const QUrl reply(opened.constLast());
        EXPECT_TRUE(manager->handleOpenURL(reply));
        EXPECT_EQ(answer.count, 1);
        EXPECT_TRUE(manager->sessions().isEmpty());
        EXPECT_EQ(answer.cancelled, how == How::Cancelled);
        if (how == How::Well) {
            EXPECT_EQ(answer.result, (IACParameters{{u"id"_s, u"1 2"_s}}));
        } else if (how == How::Badly) {
            EXPECT_EQ(answer.error->code(), 42);
            EXPECT_EQ(answer.error->domain(), u"It broke, "_s) << "a raw \"&\" ends a value";
        } else {
            EXPECT_EQ(answer.result, std::nullopt);
        }
        EXPECT_FALSE(manager->handleOpenURL(reply)) << "an answer counts once";
        EXPECT_EQ(answer.count, 1);
    }
}

TEST_F(IACRequestTest, ReadsTheErrorOfAnAnswer)
{
    struct Case
    {
        const char *query;
        qint64 code;
        const char *domain;
        const char *message;
    };
    const Case cases[] = {
        {"error-Code=5&errorDomain=d&errorMessage=m", 5, "d", "m"},
        {"error-Code=-5&errorMessage=m", -5, "com.iac.client.error", "m"},
        {"error-Code=%2012abc", 12, "com.iac.client.error", ""},
        {"error-Code=abc", 0, "com.iac.client.error", ""},
        {"errorCode=5", 0, "com.iac.client.error", ""},
        {"error-Code=99999999999999999999", std::numeric_limits<qint64>::max(), "com.iac.client.error", ""},
    };
    for (const Case &each : cases) {
        client()->performAction(u"a"_s, {}, onSuccess(), onFailure());
        EXPECT_TRUE(handle(u"quib://x-callback-url/IACRequestResponse?IACRequestID=%1&IACResponseType=1&%2"_s.arg(
            onlySession(), QString::fromLatin1(each.query))));
        ASSERT_TRUE(answer.error);
        EXPECT_EQ(answer.error->code(), each.code) << each.query;
        EXPECT_EQ(answer.error->domain(), QString::fromLatin1(each.domain)) << each.query;
        EXPECT_EQ(answer.error->localizedDescription(), QString::fromLatin1(each.message)) << each.query;
    }
}

TEST_F(IACRequestTest, ForgetsARequestWhoseAnswerMakesNoSense)
{
    client()->performAction(u"a"_s, {}, onSuccess(), onFailure());
    const QString url = u"quib://x-callback-url/IACRequestResponse?IACRequestID=%1&IACResponseType="_s;
    EXPECT_FALSE(handle(url.arg(u"unknown"_s) + u'0'));
    EXPECT_EQ(manager->sessions().size(), 1);
    EXPECT_FALSE(handle(url.arg(onlySession()) + u'3'));
    EXPECT_TRUE(manager->sessions().isEmpty());
    EXPECT_EQ(answer.count, 0);
}

TEST_F(IACRequestTest, AsksForTheAnswersThatSomebodyWants)
{
    client()->performAction(u"a"_s, {}, onSuccess(), {});
    EXPECT_TRUE(opened.constLast().contains(u"x-success="_s) && opened.constLast().contains(u"x-cancel="_s));
    EXPECT_FALSE(opened.constLast().contains(u"x-error="_s));
    client()->performAction(u"a"_s, {}, {}, onFailure());
    EXPECT_TRUE(opened.constLast().contains(u"x-error="_s));
    EXPECT_FALSE(opened.constLast().contains(u"x-success="_s));
    manager->setCallbackURLScheme({});
    client()->performAction(u"a"_s, {}, onSuccess(), onFailure());
    EXPECT_FALSE(opened.constLast().contains(u"x-success="_s) || opened.constLast().contains(u"x-error="_s));
    EXPECT_EQ(manager->sessions().size(), 3);
}

TEST_F(IACRequestTest, TellsOfAnApplicationThatIsNotThere)
{
    struct Missing : IACClient
    {
        using IACClient::IACClient;
        bool isAppInstalled() const override { return false; }
    };
    const auto missing = std::make_shared<Missing>(u"gone"_s);
    missing->setManager(manager);
    missing->performAction(u"a"_s, {}, onSuccess(), onFailure());
    EXPECT_EQ(answer.error->domain(), u"com.iac.manager.error"_s);
    EXPECT_EQ(answer.error->code(), 1);
    EXPECT_EQ(answer.error->localizedDescription(), u"App with scheme 'gone' is not installed in this device"_s);
    EXPECT_TRUE(opened.isEmpty());
    EXPECT_TRUE(manager->sessions().isEmpty());
}

TEST_F(IACRequestTest, GoesThroughTheSharedManagerWhereNoneWasSet)
{
    IACManager::setSharedManager(manager);
    IACClient::clientWithURLScheme(u"other"_s)->performAction(u"a"_s);
    EXPECT_EQ(opened.size(), 1);
    manager.reset();
    EXPECT_EQ(IACManager::sharedManager(), nullptr);
    IACClient::clientWithURLScheme(u"other"_s)->performAction(u"a"_s);
    EXPECT_EQ(opened.size(), 1);
}

} // namespace
} // namespace quib::tests

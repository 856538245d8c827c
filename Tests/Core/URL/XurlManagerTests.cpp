#include "XurlFixture.h"

#include <ctime>

using namespace Qt::StringLiterals;

namespace quib::tests {
namespace {

/// The actions behind the dispatcher. What it opens goes into the log among the steps of the windows.
class XurlManager : public XurlFixture
{
protected:
    XurlManager()
    {
        manager->setOpener([this](const QUrl &url) {
            log.append(u"open " + url.toString(QUrl::FullyEncoded));
            return true;
        });
        actions->setupXCallbackURLs(*manager);
        static_cast<void>(makeNote(u"# Plan\nmilk #home"_s));
        save();
    }
    bool handle(const QString &rest)
    {
        log.clear();
        const bool isHandled = manager->handleOpenURL(QUrl(u"quib://x-callback-url/" + rest));
        finish();
        return isHandled;
    }
    std::shared_ptr<IACManager> manager = std::make_shared<IACManager>();
};

TEST_F(XurlManager, ActionsAreRegisteredInTheirOrder)
{
    QStringList names;
    for (const auto &action : actions->actions()) {
        names.append(action.first);
    }
    EXPECT_EQ(names,
              QStringList({u"open-tag"_s, u"rename-tag"_s, u"delete-tag"_s, u"open-note"_s, u"create"_s, u"trash"_s,
                           u"archive"_s, u"untagged"_s, u"todo"_s, u"today"_s, u"tags"_s, u"search"_s, u"add-text"_s,
                           u"add-file"_s, u"change-theme"_s, u"change-font"_s, u"open-quib-pro"_s, u"open-themes"_s}));
    EXPECT_EQ(manager->callbackURLScheme(), u"quib"_s);
}

TEST_F(XurlManager, CallbacksAreOpenedAmongTheWindowWork)
{
    EXPECT_TRUE(handle(u"trash?id=x&x-error=app://no"_s));
    EXPECT_EQ(log, QStringList{u"open app://no?error-Code=2&errorDomain=The%20note%20could%20not%20be%20found&"
                               "errorMessage=The%20note%20could%20not%20be%20found&"_s});
    EXPECT_TRUE(handle(u"open-tag?name=home&x-success=app://yes"_s));
    EXPECT_EQ(log, QStringList({u"open app://yes?"_s, u"tag home"_s, u"focus"_s, u"main"_s}));
    EXPECT_TRUE(handle(u"create?text=x&open_note=no&x-success=app://yes?a%3Db"_s));
    ASSERT_EQ(log.size(), 2);
    EXPECT_EQ(log.constFirst(), u"main"_s);
    EXPECT_TRUE(log.constLast().startsWith(u"open app://yes?a=b&identifier=")) << log.constLast().toStdString();
    // Nobody to be called: the action runs all the same.
    EXPECT_TRUE(handle(u"add-text?title=plan&text=y&open_note=no"_s));
    EXPECT_EQ(log, QStringList{u"main"_s});
    EXPECT_TRUE(textOf(u"Plan"_s).endsWith(u"\ny"));
}

TEST_F(XurlManager, WhatLeansOnConvertersIsNoAction)
{
    EXPECT_FALSE(handle(u"grab-url?url=https://example.org"_s));
    EXPECT_TRUE(handle(u"grab-url?url=https://example.org&x-error=app://no"_s));
    ASSERT_EQ(log.size(), 1);
    EXPECT_TRUE(log.constFirst().startsWith(u"open app://no?error-Code=2&errorDomain=com.iac.manager.error&"));
}

TEST_F(XurlManager, ACallbackMayBeAnActionOfOurOwn)
{
    manager->setOpener([this](const QUrl &url) {
        log.append(u"open"_s);
        return manager->handleOpenURL(url);
    });
    EXPECT_TRUE(handle(u"search?term=milk&x-success=quib://x-callback-url/trash%3Fid%3Dx"_s));
    // The inner action fails and shows nothing; the outer one got through.
    EXPECT_EQ(log, QStringList({u"list all"_s, u"search [milk]"_s, u"open"_s, u"main"_s}));
}

TEST_F(XurlManager, ActionsThatAreGoneDoNothing)
{
    actions.reset();
    log.clear();
    EXPECT_TRUE(manager->handleOpenURL(QUrl(u"quib://x-callback-url/search?term=x&x-success=app://yes"_s)));
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(XurlManager, WithoutWindowsActionsAnswerAllTheSame)
{
    actions = std::make_unique<QBXurlActions>(*stack, nullptr);
    actions->setupXCallbackURLs(*manager);
    for (const auto &[name, block] : actions->actions()) {
        log.clear();
        EXPECT_TRUE(
            manager->handleOpenURL(QUrl(u"quib://x-callback-url/" + name +
                                        u"?title=Plan&text=x&name=home&new_name=house&file=AAAA&filename=f&token=" +
                                        token() + u"&x-success=app://yes&x-error=app://no")));
        finish();
        // Panes of the preferences are for windows only.
        const bool isPane = name.startsWith(u"open-quib") || name == u"open-themes";
        const QString expected = isPane ? QString() : name == u"delete-tag" ? u"app://no"_s : u"app://yes"_s;
        EXPECT_EQ(log.value(0).section(u'?', 0, 0).mid(5), expected) << name.toStdString();
    }
}

/// Values of the largest size that a parameter may have.
class XurlLargeValues : public XurlManager, public testing::WithParamInterface<ActionCase>
{
};

TEST_P(XurlLargeValues, AreDealtWithInLinearTime)
{
    const auto seconds = [this](qsizetype size) {
        QString query = GetParam().query;
        const QString piece = query.section(u'|', 1, 1);
        query = query.section(u'|', 0, 0) + piece.repeated(size / piece.size());
        const std::clock_t start = std::clock();
        EXPECT_TRUE(handle(GetParam().action + u'?' + query + u"&open_note=no&token=" + token() +
                           u"&x-success=app://yes&x-error=app://no"));
        EXPECT_TRUE(log.join(u';').contains(u"open app://")) << log.join(u';').left(200).toStdString();
        return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    };
    constexpr qsizetype kSize = 1'000'000;
    const double one = seconds(kSize);
    const double ten = seconds(10 * kSize);
    // Quadratic work would take a hundred times as long. The processor's time is told: the machine may have other work.
    EXPECT_LT(ten, 40 * std::max(one, 0.05)) << one << " s and " << ten << " s";
}

INSTANTIATE_TEST_SUITE_P(Parameters, XurlLargeValues,
                         testing::Values(ActionCase{u"Text"_s, u"create"_s, u"text=|line%20of%20text%0A"_s, {}},
                                         ActionCase{u"Title"_s, u"create"_s, u"title=|x"_s, {}},
                                         ActionCase{u"File"_s, u"create"_s, u"text=x&filename=a&file=|QUJD"_s, {}},
                                         ActionCase{u"BrokenFile"_s, u"add-file"_s, u"filename=a&file=|*"_s, {}},
                                         ActionCase{u"FileName"_s, u"add-file"_s, u"file=QUJD&filename=|x"_s, {}},
                                         ActionCase{u"Identifier"_s, u"open-note"_s, u"id=|x"_s, {}},
                                         ActionCase{u"UnknownTitle"_s, u"open-note"_s, u"title=|x%20"_s, {}},
                                         ActionCase{u"Header"_s, u"open-note"_s, u"title=Plan&header=|x"_s, {}},
                                         ActionCase{u"Name"_s, u"open-tag"_s, u"name=|x/"_s, {}},
                                         ActionCase{u"NewName"_s, u"rename-tag"_s, u"name=none&new_name=|x"_s, {}},
                                         ActionCase{u"Theme"_s, u"change-theme"_s, u"theme=|x"_s, {}},
                                         ActionCase{u"Phrase"_s, u"search"_s, u"term=|x"_s, {}}),
                         nameOfCase);

TEST_F(XurlManager, ASearchOfManyTermsIsAnswered)
{
    for (const QString &piece : {u"x%20"_s, u"-x%20"_s, u"%22a%22"_s, u"@task%20"_s, u"(%20"_s, u"%27%20"_s}) {
        for (const QString &action : {u"search?term="_s, u"todo?search="_s}) {
            for (const int count : {1, 10, 400, 1'000'000}) {
                EXPECT_TRUE(handle(action + piece.repeated(count) + u"&token=" + token() +
                                   u"&x-success=app://yes&x-error=app://no"));
                EXPECT_TRUE(log.constFirst().startsWith(u"list")) << log.constFirst().left(200).toStdString();
                const QString answer = count > 400 ? u"app://no?error-Code=4&"_s : u"app://"_s;
                EXPECT_TRUE(log.filter(u"open app://"_s).value(0).mid(5).startsWith(answer))
                    << log.constLast().left(200).toStdString();
            }
        }
    }
}

} // namespace
} // namespace quib::tests

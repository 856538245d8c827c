#include "XurlFixture.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace quib::tests {
namespace {

/// Notes for every list, changed one second after the other.
class XurlLists : public XurlFixture
{
protected:
    XurlLists()
    {
        add(u"# Bare\nnothing here"_s);
        add(u"# Tagged\nbuy milk #home"_s);
        add(u"# Task\n- open #home"_s);
        add(u"# Finished\n+ done"_s);
        add(u"# Gone\n+ done milk #home"_s)->trash();
        add(u"# Kept\nmilk #home"_s)->archive();
        add(u"# Secret\nmilk #home"_s)->setLocked(true);
        save();
    }
    Ref<QBNote> add(const QString &text)
    {
        clock.setNow(clock.now().dateByAddingTimeInterval(1));
        return makeNote(text);
    }
    QStringList titles(const QString &action, const QString &query)
    {
        EXPECT_TRUE(run(action, query).contains(u"success"_s)) << log.join(u';').toStdString();
        return titlesInResult();
    }
};

class XurlListCases : public XurlLists, public testing::WithParamInterface<ActionCase>
{
};

TEST_P(XurlListCases, CallsBackAndWorksInWindowsInThisOrder)
{
    static_cast<void>(token());
    EXPECT_EQ(run(GetParam().action, GetParam().query), GetParam().log);
    EXPECT_TRUE(isDurable());
}

INSTANTIATE_TEST_SUITE_P(
    TrashAndArchive, XurlListCases,
    testing::Values(
        ActionCase{u"TrashOfAnUnknownNote"_s, u"trash"_s, u"id=x"_s, {u"error 2 The note could not be found"_s}},
        ActionCase{u"TrashTellsBeforeItShows"_s,
                   u"trash"_s,
                   u"id={Bare}&search=ignored"_s,
                   {u"success"_s, u"list trash"_s, u"main"_s}},
        ActionCase{u"TrashList"_s, u"trash"_s, {}, {u"success"_s, u"list trash"_s, u"main"_s}},
        ActionCase{u"TrashSearched"_s,
                   u"trash"_s,
                   u"search=milk"_s,
                   {u"success"_s, u"list trash"_s, u"search [milk]"_s, u"main"_s}},
        ActionCase{u"ArchiveOfAnUnknownNote"_s, u"archive"_s, u"id=x"_s, {u"error 2 The note could not be found"_s}},
        ActionCase{
            u"ArchiveShowsBeforeItTells"_s, u"archive"_s, u"id={Bare}"_s, {u"list archive"_s, u"success"_s, u"main"_s}},
        ActionCase{u"ArchiveSearchedInTheBackground"_s,
                   u"archive"_s,
                   u"search=milk&show_window=no"_s,
                   {u"success"_s, u"list archive"_s, u"search [milk]"_s}}),
    nameOfCase);

INSTANTIATE_TEST_SUITE_P(
    Families, XurlListCases,
    testing::Values(
        ActionCase{u"Untagged"_s, u"untagged"_s, {}, {u"list untagged"_s, u"success"_s, u"main"_s}},
        ActionCase{
            u"Today"_s, u"today"_s, u"search=milk"_s, {u"list today"_s, u"search [milk]"_s, u"success"_s, u"main"_s}},
        ActionCase{u"Todo"_s, u"todo"_s, u"token={token}"_s, {u"list todo"_s, u"success"_s, u"main"_s}},
        // A wrong token stops all, the windows too.
        ActionCase{
            u"UntaggedWithAWrongToken"_s, u"untagged"_s, u"token=x"_s, {u"error 3 The provided token is not valid"_s}},
        ActionCase{u"TodayWithAnEmptyToken"_s, u"today"_s, u"token="_s, {u"error 3 The provided token is not valid"_s}},
        ActionCase{u"TodoWithATokenInLowerCase"_s,
                   u"todo"_s,
                   u"token=a{token}"_s,
                   {u"error 3 The provided token is not valid"_s}}),
    nameOfCase);

INSTANTIATE_TEST_SUITE_P(
    Search, XurlListCases,
    testing::Values(
        ActionCase{
            u"InAllNotes"_s, u"search"_s, u"term=milk"_s, {u"list all"_s, u"search [milk]"_s, u"success"_s, u"main"_s}},
        ActionCase{u"InATag"_s,
                   u"search"_s,
                   u"term=milk&tag=home"_s,
                   {u"tag home"_s, u"search [milk]"_s, u"success"_s, u"main"_s}},
        ActionCase{u"InAnUnknownTag"_s, u"search"_s, u"term=milk&tag=x"_s, {u"error 2 The tag could not be found"_s}},
        ActionCase{
            u"WithAWrongToken"_s, u"search"_s, u"term=milk&token=x"_s, {u"error 3 The provided token is not valid"_s}}),
    nameOfCase);

TEST_F(XurlLists, TrashAndArchiveChangeTheNote)
{
    run(u"trash"_s, u"id={Bare}"_s);
    EXPECT_TRUE(noteTitled(u"Bare"_s)->isTrashed());
    run(u"archive"_s, u"id={Bare}"_s);
    EXPECT_TRUE(noteTitled(u"Bare"_s)->isArchived());
    EXPECT_FALSE(noteTitled(u"Bare"_s)->isTrashed());
    EXPECT_TRUE(isDurable());
}

TEST_F(XurlLists, WithoutATokenNothingIsTold)
{
    static_cast<void>(token());
    for (const QString &action : {u"untagged"_s, u"today"_s, u"todo"_s, u"search"_s, u"trash"_s, u"archive"_s}) {
        EXPECT_TRUE(run(action, u"term=milk&search=milk"_s).contains(u"success"_s)) << action.toStdString();
        EXPECT_TRUE(result.isEmpty()) << action.toStdString();
    }
}

TEST_F(XurlLists, NoTokenIsValidBeforeThereIsOne)
{
    EXPECT_EQ(run(u"untagged"_s, u"token="_s), QStringList{u"error 3 The provided token is not valid"_s});
    EXPECT_EQ(run(u"tags"_s, u"token="_s), QStringList{u"error 3 A valid token is required"_s});
    // One whose file is gone is none.
    const QString old = token();
    ASSERT_TRUE(QFile::remove(QBXurlTokenController().baseURL().toLocalFile() + u"/url.token"));
    EXPECT_EQ(run(u"tags"_s, u"token=" + old), QStringList{u"error 3 A valid token is required"_s});
}

TEST_F(XurlLists, ATokenReadsTheListsWithoutLockedNotes)
{
    EXPECT_EQ(titles(u"untagged"_s, u"token={token}"_s), QStringList({u"Finished"_s, u"Bare"_s}));
    EXPECT_EQ(titles(u"todo"_s, u"token={token}"_s), QStringList{u"Task"_s});
    EXPECT_EQ(titles(u"today"_s, u"token={token}"_s), QStringList({u"Finished"_s, u"Task"_s, u"Tagged"_s, u"Bare"_s}));
    clock.setNow(clock.now().dateByAddingTimeInterval(2 * 86'400));
    EXPECT_EQ(titles(u"today"_s, u"token={token}"_s), QStringList());
}

TEST_F(XurlLists, PinnedNotesComeFirst)
{
    noteTitled(u"Bare"_s)->pin();
    EXPECT_EQ(titles(u"untagged"_s, u"token={token}"_s), QStringList({u"Bare"_s, u"Finished"_s}));
    const auto first = QJsonDocument::fromJson(result.value(u"notes"_s).toUtf8()).array().first().toObject();
    EXPECT_EQ(first, (QJsonObject{{u"title"_s, u"Bare"_s},
                                  {u"identifier"_s, identifier(u"Bare"_s)},
                                  {u"modificationDate"_s, u"2017-07-14T02:40:01Z"_s},
                                  {u"creationDate"_s, u"2017-07-14T02:40:01Z"_s},
                                  {u"pin"_s, u"yes"_s}}));
}

TEST_F(XurlLists, ASearchNarrowsTheList)
{
    EXPECT_EQ(titles(u"today"_s, u"token={token}&search=milk"_s), QStringList{u"Tagged"_s});
    EXPECT_EQ(titles(u"today"_s, u"token={token}&search=%20"_s).size(), 4);
    EXPECT_EQ(titles(u"search"_s, u"token={token}&term=MILK"_s), QStringList{u"Tagged"_s});
    EXPECT_EQ(titles(u"search"_s, u"token={token}&term=open&tag=home"_s), QStringList{u"Task"_s});
    EXPECT_EQ(titles(u"search"_s, u"token={token}&term=nothing&tag=home"_s), QStringList());
    EXPECT_EQ(titles(u"search"_s, u"token={token}"_s), QStringList({u"Finished"_s, u"Task"_s, u"Tagged"_s, u"Bare"_s}));
}

TEST_F(XurlLists, AnOrAtTheTopOfASearchReachesOverTheConditionBesideIt)
{
    // "todoCompleted > 0 OR todoIncompleted > 0" joined as text: the second half alone is bound to the rest.
    EXPECT_EQ(titles(u"search"_s, u"token={token}&term=@task"_s), QStringList({u"Gone"_s, u"Finished"_s, u"Task"_s}));
    EXPECT_EQ(titles(u"untagged"_s, u"token={token}&search=@task"_s), QStringList({u"Finished"_s, u"Task"_s}));
}

TEST_F(XurlLists, AResultLargerThanAURLMayBeIsAFailure)
{
    QBXurlCoreController small(*stack, /*largestResult=*/100);
    const auto failure = [this](const NSError &error) {
        log.append(u"error %1 %2"_s.arg(error.code()).arg(error.domain()));
    };
    const auto success = [this](const std::optional<IACParameters> & /*given*/, bool /*cancelled*/) {
        log.append(u"success"_s);
    };
    const QString valid = token();
    small.handleUntagged({{u"token"_s, valid}}, success, failure, {});
    small.handleSearch({{u"token"_s, valid}}, success, failure, {});
    small.handleOpenTag({{u"token"_s, valid}, {u"name"_s, u"home"_s}}, success, failure);
    for (int i = 0; i < 20; ++i) {
        add(u"#tag%1"_s.arg(i));
    }
    small.handleTags({{u"token"_s, valid}}, success, failure);
    EXPECT_EQ(log, QStringList({u"error 4 Error serializing the results"_s, u"error 4 Error fetching the results"_s,
                                u"error 4 Error fetching the results"_s, u"error 4 Error serializing results"_s}));
}

TEST_F(XurlLists, AnythingInATitleMakesReadableJSON)
{
    const QString title = u"\"quoted\" \\ \t and half "_s + QChar(0xd800) + u" \u2028 🙂";
    add(u"# " + title);
    EXPECT_EQ(titles(u"untagged"_s, u"token={token}"_s).size(), 3);
    EXPECT_TRUE(titlesInResult().constFirst().startsWith(u"\"quoted\" \\ \t and half "));
}

TEST_F(XurlLists, CallbacksMayBeAbsent)
{
    QBXurlCoreController &controller = actions->controller();
    const QString valid = token();
    const IACParameters all[] = {{},
                                 {{u"token"_s, u"x"_s}},
                                 {{u"token"_s, valid}},
                                 {{u"id"_s, identifier(u"Bare"_s)}, {u"text"_s, u"x"_s}, {u"name"_s, u"home"_s}},
                                 {{u"name"_s, u"home"_s}, {u"new_name"_s, u"house"_s}, {u"token"_s, valid}}};
    for (const IACParameters &parameters : all) {
        controller.handleOpenNote(parameters, {}, {}, {});
        controller.handleAddText(parameters, {}, {}, {});
        controller.handleAddFile(parameters, {}, {}, {});
        controller.handleCreate(parameters, {}, {}, {});
        controller.handleTrash(parameters, {}, {}, {});
        controller.handleArchive(parameters, {}, {}, {});
        controller.handleUntagged(parameters, {}, {}, {});
        controller.handleToday(parameters, {}, {}, {});
        controller.handleTodo(parameters, {}, {}, {});
        controller.handleSearch(parameters, {}, {}, {});
        controller.handleTags(parameters, {}, {});
        static_cast<void>(controller.handleOpenTag(parameters, {}, {}));
        controller.handleRenameTag(parameters, {}, {});
        controller.handleDeleteTag(parameters, {}, {});
        static_cast<void>(controller.handleChangeTheme(parameters, {}, {}));
        static_cast<void>(controller.handleChangeFont(parameters, {}, {}));
    }
    finish();
    EXPECT_TRUE(noteTitled(u"Bare"_s)->text().endsWith(u"\nx"));
}

} // namespace
} // namespace quib::tests

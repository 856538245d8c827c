#include "XurlFixture.h"

using namespace Qt::StringLiterals;

namespace quib::tests {
namespace {

class XurlTags : public XurlFixture
{
protected:
    XurlTags()
    {
        static_cast<void>(makeNote(u"# Milk\n#home/kitchen"_s));
        static_cast<void>(makeNote(u"# Paint\n#two words#"_s));
        makeNote(u"# Gone\n#lost #home"_s)->trash();
        save();
    }
};

class XurlTagCases : public XurlTags, public testing::WithParamInterface<ActionCase>
{
};

TEST_P(XurlTagCases, CallsBackAndWorksInWindowsInThisOrder)
{
    static_cast<void>(token());
    EXPECT_EQ(run(GetParam().action, GetParam().query), GetParam().log);
    EXPECT_TRUE(isDurable());
}

INSTANTIATE_TEST_SUITE_P(
    Tags, XurlTagCases,
    testing::Values(
        ActionCase{u"TagsWithoutToken"_s, u"tags"_s, {}, {u"error 3 A valid token is required"_s}},
        ActionCase{u"TagsWithAWrongToken"_s, u"tags"_s, u"token=x"_s, {u"error 3 A valid token is required"_s}},
        ActionCase{u"TagsWithToken"_s, u"tags"_s, u"token={token}"_s, {u"success"_s, u"main"_s}},
        ActionCase{
            u"OpenWithAWrongToken"_s, u"open-tag"_s, u"name=home&token=x"_s, {u"error 3 A valid token is required"_s}},
        ActionCase{u"OpenWithoutName"_s, u"open-tag"_s, {}, {u"error 1 Tag name required"_s}},
        ActionCase{u"OpenUnknown"_s, u"open-tag"_s, u"name=x"_s, {u"error 2 The tag could not be found"_s}},
        ActionCase{u"OpenTellsBeforeItShows"_s,
                   u"open-tag"_s,
                   u"name=HOME"_s,
                   {u"success"_s, u"tag home"_s, u"focus"_s, u"main"_s}},
        ActionCase{u"OpenWithToken"_s,
                   u"open-tag"_s,
                   u"name=two%20words&token={token}&show_window=no"_s,
                   {u"success"_s, u"tag two words"_s, u"focus"_s}},
        ActionCase{u"RenameWithoutName"_s, u"rename-tag"_s, u"new_name=x"_s, {u"error 1 Tag name required"_s}},
        ActionCase{u"RenameWithoutAny"_s, u"rename-tag"_s, {}, {u"error 1 Tag name required"_s}},
        ActionCase{u"RenameWithoutNewName"_s, u"rename-tag"_s, u"name=home"_s, {u"error 1 New Tag name required"_s}},
        ActionCase{
            u"RenameUnknown"_s, u"rename-tag"_s, u"name=x&new_name=y"_s, {u"error 2 The tag could not be found"_s}},
        ActionCase{u"Rename"_s, u"rename-tag"_s, u"name=home&new_name=house"_s, {u"success"_s, u"main"_s}},
        ActionCase{u"RenameToTheSame"_s, u"rename-tag"_s, u"name=home&new_name=home"_s, {u"success"_s, u"main"_s}},
        ActionCase{u"DeleteWithoutName"_s, u"delete-tag"_s, {}, {u"error 1 Tag name required"_s}},
        ActionCase{u"DeleteUnknown"_s, u"delete-tag"_s, u"name=x"_s, {u"error 2 The tag could not be found"_s}},
        ActionCase{u"Delete"_s, u"delete-tag"_s, u"name=home&show_window=no"_s, {u"success"_s}}),
    nameOfCase);

INSTANTIATE_TEST_SUITE_P(
    Windows, XurlTagCases,
    testing::Values(
        ActionCase{u"Font"_s, u"change-font"_s, u"font=Georgia"_s, {u"success"_s, u"fonts Georgia"_s, u"main"_s}},
        ActionCase{u"UnknownFont"_s, u"change-font"_s, u"font=../x"_s, {u"success"_s, u"main"_s}},
        ActionCase{u"Theme"_s, u"change-theme"_s, u"theme=Cobalt&show_window=no"_s, {u"success"_s}},
        ActionCase{u"Pro"_s, u"open-quib-pro"_s, {}, {u"main"_s, u"pro"_s}},
        ActionCase{u"Themes"_s, u"open-themes"_s, {}, {u"main"_s, u"themes"_s}}),
    nameOfCase);

TEST_F(XurlTags, TagsAreThoseThatNotesInTheListsHave)
{
    run(u"tags"_s, u"token={token}"_s);
    EXPECT_EQ(result.value(u"tags"_s), u"[{\"name\":\"home\"},{\"name\":\"home/kitchen\"},{\"name\":\"two words\"}]"_s);
}

TEST_F(XurlTags, OpenTagReadsItsNotesWithATokenOnly)
{
    run(u"open-tag"_s, u"name=home"_s);
    EXPECT_TRUE(result.isEmpty());
    run(u"open-tag"_s, u"name=home&token={token}"_s);
    // All that have the tag, in the trash too.
    QStringList titles = titlesInResult();
    titles.sort();
    EXPECT_EQ(titles, QStringList({u"Gone"_s, u"Milk"_s}));
}

TEST_F(XurlTags, RenamingAndDeletingRewriteTheNotes)
{
    run(u"rename-tag"_s, u"name=home&new_name=my%20house"_s);
    EXPECT_EQ(textOf(u"Milk"_s), u"# Milk\n#my house/kitchen#"_s);
    run(u"delete-tag"_s, u"name=two%20words"_s);
    EXPECT_FALSE(textOf(u"Paint"_s).contains(u'#' % QStringLiteral("two")));
    EXPECT_TRUE(isDurable());
}

TEST_F(XurlTags, ThemesAndFontsAreKeptWhenThereAreSuch)
{
    run(u"change-theme"_s, u"theme=%20Cobalt%0A"_s);
    EXPECT_EQ(preferences->currentAppThemeName(), u"Cobalt"_s);
    run(u"change-theme"_s, u"theme=..%2F..%2Fetc%2Fpasswd"_s);
    EXPECT_EQ(preferences->currentAppThemeName(), u"Cobalt"_s);
    run(u"change-font"_s, u"font=Georgia"_s);
    EXPECT_EQ(preferences->fontThemeName(), u"Georgia"_s);
    run(u"change-font"_s, QString());
    EXPECT_EQ(preferences->fontThemeName(), u"Georgia"_s);
}

TEST_F(XurlTags, WithoutTheSubscriptionThreeThemesAreFree)
{
    preferences->setProSubscriptionCheck([] { return false; });
    // Neither callback, and no window: who asks hears nothing.
    EXPECT_EQ(run(u"change-theme"_s, u"theme=Cobalt"_s), QStringList());
    EXPECT_EQ(preferences->currentAppThemeName(), u"Red Graphite"_s);
    for (const QString &theme : {u"High Contrast"_s, u"Dark Graphite"_s, u"Red Graphite"_s}) {
        EXPECT_EQ(run(u"change-theme"_s, u"theme=" + theme), QStringList({u"success"_s, u"main"_s}));
        EXPECT_EQ(preferences->currentAppThemeName(), theme);
    }
}

} // namespace
} // namespace quib::tests

// The gallery of themes: what it chooses, and what its pictures show.

#include "PreferencesFixture.h"

#include <Preferences/ThemeGallery.h>
#include <Preferences/ThemePreview.h>
#include <Preferences/ThemesPage.h>
#include <Themes/QBNotesThemesManager.h>

#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

using Page = PreferencesWindow::Page;

class Themes : public PreferencesFixture
{
protected:
    ThemesPage &page() { return *static_cast<ThemesPage *>(show(Page::Themes).pageWidget(Page::Themes)); }
    void choose(const QString &name)
    {
        ThemeGallery &gallery = page().gallery();
        gallery.setCurrentIndex(gallery.model()->index(gallery.themes().rowOfName(name), 0));
    }
    QString chosen() { return page().gallery().currentIndex().data().toString(); }
};

TEST_F(Themes, AreChosenForTheAppearanceThatIsInEffect)
{
    int told = 0;
    const auto token =
        preferences->addObserver(u"currentAppThemeName"_s, [&told](const QString & /*keyPath*/) { ++told; });
    EXPECT_FALSE(page().choosesForDark());
    EXPECT_EQ(chosen(), u"Red Graphite"_s);
    EXPECT_EQ(told, 0) << "showing a theme chooses none";
    choose(u"Ayu"_s);
    EXPECT_EQ(preferences->appThemeName(), u"Ayu"_s);
    EXPECT_EQ(preferences->currentAppThemeName(), u"Ayu"_s);
    EXPECT_EQ(told, 1);
    EXPECT_TRUE(preferences->appDarkThemeName().isNull());
}

TEST_F(Themes, AreChosenForTheOtherAppearanceToo)
{
    int told = 0;
    const auto token =
        preferences->addObserver(u"currentAppThemeName"_s, [&told](const QString & /*keyPath*/) { ++told; });
    page().setChoosesForDark(true);
    EXPECT_EQ(chosen(), u"Dark Graphite"_s);
    choose(u"Gotham"_s);
    EXPECT_EQ(preferences->appDarkThemeName(), u"Gotham"_s);
    EXPECT_TRUE(preferences->appThemeName().isNull());
    EXPECT_EQ(told, 0);
    page().setChoosesForDark(false);
    EXPECT_EQ(chosen(), u"Red Graphite"_s);
    EXPECT_TRUE(preferences->appThemeName().isNull()) << "looking at the other side chooses nothing";
}

TEST_F(Themes, BeginAtTheAppearanceOfTheDesktop)
{
    preferences->setHasDarkAppearance(true);
    EXPECT_TRUE(page().choosesForDark());
    choose(u"Cobalt"_s);
    EXPECT_EQ(preferences->currentAppThemeName(), u"Cobalt"_s);
}

TEST_F(Themes, TellOfTheDesktopWhenItTurnsDark)
{
    const auto explanation = [this] {
        QString texts;
        for (const auto *label : page().findChildren<QLabel *>()) {
            texts += label->text();
        }
        return texts;
    };
    EXPECT_TRUE(explanation().contains(u"light"_s));
    preferences->setHasDarkAppearance(true);
    qApp->setStyleSheet(u"QMenu { padding: 1px; }"_s); // as the theme of the other appearance does
    EXPECT_TRUE(explanation().contains(u"dark"_s));
    EXPECT_FALSE(page().choosesForDark()) << "what the user is choosing for stays";
    qApp->setStyleSheet({});
}

TEST_F(Themes, FollowWhatIsChosenElsewhere)
{
    page();
    preferences->setCurrentAppThemeName(u"Dracula"_s);
    EXPECT_EQ(chosen(), u"Dracula"_s);
    bool isNamed = false;
    for (const auto *button : page().findChildren<QPushButton *>()) {
        isNamed = isNamed || button->text().contains(u"Dracula"_s);
    }
    EXPECT_TRUE(isNamed);
    preferences->setCurrentAppThemeName(u"a theme of a later version"_s);
    EXPECT_EQ(chosen(), QBNotesThemesManager::defaultThemeName());
    EXPECT_EQ(preferences->appThemeName(), u"a theme of a later version"_s);
}

TEST_F(Themes, AreChosenByTheArrowKeysAndTellWhereTheyAreInUse)
{
    ThemeGallery &gallery = page().gallery();
    gallery.setFocus();
    QTest::keyClick(&gallery, Qt::Key_Right);
    EXPECT_EQ(preferences->appThemeName(), QBNotesThemesManager::availableThemesNames()[1]);
    const auto spoken = [&gallery](const QString &name) {
        return gallery.model()->index(gallery.themes().rowOfName(name), 0).data(Qt::AccessibleTextRole).toString();
    };
    EXPECT_TRUE(spoken(preferences->appThemeName()).contains(u"light"_s));
    EXPECT_TRUE(spoken(u"Dark Graphite"_s).contains(u"dark"_s));
    EXPECT_EQ(spoken(u"Ayu"_s), u"Ayu"_s);
}

TEST_F(Themes, HavePicturesInTheirOwnColours)
{
    QList<QImage> pictures;
    for (const QString &name : QBNotesThemesManager::availableThemesNames()) {
        const QImage picture = pictureOfTheme({.themeName = name, .fontThemeName = {}}, {186, 116}, 2);
        EXPECT_EQ(picture.size(), QSize(372, 232));
        EXPECT_FALSE(pictures.contains(picture)) << name.toStdString();
        pictures.append(picture);
        const auto theme = QBNotesThemesManager::textThemeForThemeName(name, {});
        const NSColor paper = *theme->colorForKey(u"Background Text Color"_s);
        const QColor corner = picture.pixelColor(picture.width() - 1, 1);
        EXPECT_NEAR(corner.redF(), paper.redComponent(), 0.01) << name.toStdString();
        EXPECT_NEAR(corner.greenF(), paper.greenComponent(), 0.01) << name.toStdString();
        // Text was set: a good part of the page is not paper.
        int inked = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = picture.width() * 6 / 10; x < picture.width(); ++x) {
                inked += picture.pixelColor(x, y) != corner ? 1 : 0;
            }
        }
        EXPECT_GT(inked, 800) << name.toStdString();
    }
}

TEST_F(Themes, ThePictureHasItsSidebarWhereTheWindowHasIt)
{
    const ThemeSample sample{.themeName = u"Red Graphite"_s, .fontThemeName = {}};
    const QImage usual = pictureOfTheme(sample, {186, 116}, 1);
    QApplication::setLayoutDirection(Qt::RightToLeft);
    const QImage mirrored = pictureOfTheme(sample, {186, 116}, 1);
    QApplication::setLayoutDirection(Qt::LeftToRight);
    EXPECT_EQ(usual.pixelColor(1, 110), mirrored.pixelColor(184, 110));
    EXPECT_NE(usual.pixelColor(1, 110), usual.pixelColor(184, 110));
}

TEST_F(Themes, TheSampleFollowsTheSizes)
{
    const QSizeF size(600, 190);
    const QImage before = pictureOfPreferences(*preferences, size, 1);
    EXPECT_EQ(before, pictureOfPreferences(*preferences, size, 1));
    preferences->setEditorLineWidthMultiplier(25);
    const QImage narrow = pictureOfPreferences(*preferences, size, 1);
    EXPECT_NE(narrow, before);
    preferences->setEditorLineHeightMultiplier(2.2);
    EXPECT_NE(pictureOfPreferences(*preferences, size, 1), narrow);
}

} // namespace

} // namespace quib::tests

// A change of theme or font: what is loaded, in which order everyone hears of it, and what the user's own sizes do.

#include <Store/QBNotesPreferenceManager.h>
#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>
#include <Themes/QBNotesAppThemeManager.h>
#include <Themes/QBNotesTextThemeManager.h>
#include <Themes/QBNotesThemesManager.h>
#include <Themes/ThemeLoader.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString &sidebarKey()
{
    static const QString s_key = u"Sidebar Background Color"_s;
    return s_key;
}

class ThemeLoader : public testing::Test, public quib::ThemeHost
{
protected:
    /// Tells in which theme it is drawn.
    class Drawer final : public quib::StylableObject
    {
    public:
        Drawer(QString name, QStringList &calls)
            : m_name(std::move(name))
            , m_calls(calls)
        {
        }
        void styleObjectWithThemeManager(QBThemeManager & /*manager*/) override { m_calls.append(m_name); }

    private:
        QString m_name;
        QStringList &m_calls;
    };

    ThemeLoader()
    {
        m_text.registerStylableObject(m_textDrawer);
        m_app.registerStylableObject(m_appDrawer);
    }
    void setApplicationIconNamed(const QString &name) override { m_calls.append(name); }
    void updateDetachedEditorWindows() override { m_calls.append(u"windows"_s); }
    void loadThemeInDetachedEditorWindows(const std::shared_ptr<QBTheme> &theme) override
    {
        EXPECT_EQ(theme, m_text.currentTheme());
        m_calls.append(u"stacks"_s);
    }
    QString calls()
    {
        const QString all = m_calls.join(u", "_s);
        m_calls.clear();
        return all;
    }

    quib::tests::TemporaryFolder m_folder;
    QBNotesPreferenceManager m_preferences{
        std::make_shared<NSUserDefaults>(m_folder.path(u"user.plist"_s)),
        std::make_shared<NSUserDefaults>(m_folder.path(u"group.plist"_s)),
        std::make_shared<NSUbiquitousKeyValueStore>(std::make_shared<NSUserDefaults>(m_folder.path(u"cloud.plist"_s)))};
    QStringList m_calls;
    QBNotesTextThemeManager m_text;
    QBNotesAppThemeManager m_app;
    Drawer m_textDrawer{u"text"_s, m_calls};
    Drawer m_appDrawer{u"app"_s, m_calls};
    quib::ThemeLoader m_loader{m_preferences, m_text, m_app, *this};
};

TEST_F(ThemeLoader, ChangesTextThenAppThenIconAndWindows)
{
    m_preferences.setFontThemeName(u"Georgia"_s);
    m_loader.loadThemeNamed(u"Ayu"_s);
    EXPECT_EQ(calls(), u"text, stacks, app, AppIcon, windows"_s);
    EXPECT_EQ(m_app.colorForKey(sidebarKey()),
              QBNotesThemesManager::appThemeForThemeName(u"Ayu"_s)->colorForKey(sidebarKey()));
    const auto text = QBNotesThemesManager::textThemeForThemeName(u"Ayu"_s, u"Georgia"_s);
    EXPECT_EQ(m_text.baseTextColor(), text->colorForKey(u"Base Text Color"_s));
    EXPECT_EQ(m_text.baseFontSize(), text->numberForKey(u"Base Text Size"_s));
    EXPECT_EQ(m_text.currentTheme()->themeItemForKey(u"Paragraph Font"_s)->value().toString(), u"Georgia"_s);
}

TEST_F(ThemeLoader, LetsTheIconFollowTheThemeWhereTheUserWishes)
{
    m_preferences.setAppIconMatchesTheme(true);
    m_loader.loadThemedAppIcon(u"Ayu"_s);
    m_loader.loadThemedAppIcon(u"Red Graphite"_s);
    m_preferences.setAppIconMatchesTheme(false);
    m_loader.loadThemedAppIcon(u"Ayu"_s);
    EXPECT_EQ(calls(), u"AppIcon Ayu, AppIcon, AppIcon"_s);
}

TEST_F(ThemeLoader, LaysTheSizesOfTheUserOverEveryTheme)
{
    m_preferences.setEditorFontSize(21);
    m_preferences.setEditorLineHeightMultiplier(2);
    m_preferences.setEditorLineWidthMultiplier(33);
    m_preferences.setEditorParagraphSpacingMultiplier(0.5);
    for (const QString &name : {u"Ayu"_s, u"Cobalt"_s}) {
        m_loader.loadThemeNamed(name);
        EXPECT_EQ(m_text.baseFontSize(), 21);
        EXPECT_EQ(m_text.lineHeightMultiplier(), 2);
        EXPECT_EQ(m_text.lineWidthMultiplier(), 33);
        EXPECT_EQ(m_text.paragraphSpacingMultiplier(), 0.5);
    }
}

TEST_F(ThemeLoader, GoesBackToTheSizesOfTheFontThemeWhenTheUserSetsNone)
{
    m_preferences.setEditorFontSize(21);
    m_loader.loadThemeNamed(u"Ayu"_s);
    m_text.setZoomedBaseFontSize(40);
    calls();
    m_loader.loadFontThemeName(u"Menlo"_s);
    EXPECT_EQ(calls(), u"text, stacks"_s);
    EXPECT_EQ(m_text.baseFontSize(), 21); // a size of the user's own ends the zoom
    EXPECT_EQ(m_text.currentTheme()->themeItemForKey(u"Paragraph Font"_s)->value().toString(), u"Menlo-Regular"_s);
    const auto ayu = QBNotesThemesManager::textThemeForThemeName(u"Ayu"_s, QString());
    EXPECT_EQ(m_text.baseTextColor(), ayu->colorForKey(u"Base Text Color"_s));
    m_preferences.setEditorFontSize(std::nullopt);
    m_loader.loadFontThemeName(u"Menlo"_s);
    EXPECT_EQ(m_text.baseFontSize(),
              QBNotesThemesManager::fontThemeForThemeName(u"Menlo"_s)->numberForKey(u"Base Text Size"_s));
}

TEST_F(ThemeLoader, FollowsTheAppearanceOfTheDesktop)
{
    const auto loaded = [this] {
        m_loader.loadThemeNamed(m_preferences.currentAppThemeName());
        return m_app.colorForKey(sidebarKey());
    };
    const auto sidebarOf = [](const QString &name) {
        return QBNotesThemesManager::appThemeForThemeName(name)->colorForKey(sidebarKey());
    };
    EXPECT_EQ(loaded(), sidebarOf(u"Red Graphite"_s));
    m_preferences.setHasDarkAppearance(true);
    EXPECT_EQ(loaded(), sidebarOf(u"Dark Graphite"_s));
    m_preferences.setCurrentAppThemeName(u"Gotham"_s);
    EXPECT_EQ(loaded(), sidebarOf(u"Gotham"_s));
    m_preferences.setHasDarkAppearance(false);
    EXPECT_EQ(loaded(), sidebarOf(u"Red Graphite"_s));
}

TEST_F(ThemeLoader, LoadsTheDefaults)
{
    m_loader.loadDefaultTheme();
    EXPECT_EQ(calls(), u"app, text"_s);
    EXPECT_TRUE(m_text.baseTextColor().has_value());
    EXPECT_TRUE(m_app.colorForKey(sidebarKey()).has_value());
    m_loader.loadThemeNamed(u"No Such Theme"_s);
    EXPECT_EQ(m_app.colorForKey(sidebarKey()),
              QBNotesThemesManager::appThemeForThemeName(u"Red Graphite"_s)->colorForKey(sidebarKey()));
}

} // namespace

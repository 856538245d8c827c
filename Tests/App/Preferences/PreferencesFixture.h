#pragma once

#include <Files/Profile.h>
#include <Preferences/PreferencesWindow.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>
#include <Themes/QBNotesAppThemeManager.h>

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QTest>

#include <memory>

namespace quib::tests {

/// The window of preferences over a fresh profile, beside a window that has some commands.
class PreferencesFixture : public testing::Test
{
protected:
    PreferencesFixture()
    {
        Profile::setRoot(folder.path(QStringLiteral("profile")));
        preferences = std::make_unique<QBNotesPreferenceManager>();
        QBNotesPreferenceManager::setSharedPreferenceManager(preferences.get());
        QBNotesAppThemeManager::setSharedThemeManager(&appThemes);
        appThemes.loadDefaultTheme();
    }
    ~PreferencesFixture() override
    {
        owner.reset();
        QBNotesAppThemeManager::setSharedThemeManager(nullptr);
        QBNotesPreferenceManager::setSharedPreferenceManager(nullptr);
        preferences.reset();
        Profile::setRoot({});
    }

    PreferencesWindow &show(PreferencesWindow::Page page)
    {
        PreferencesWindow &window = PreferencesWindow::show(*owner, page, {.commandGroups = [this] {
            return QList<CommandGroup>{{QStringLiteral("File"), commands}};
        }});
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        return window;
    }
    /// The page's control of that name.
    template <typename Control> Control *control(PreferencesWindow::Page page, const QString &name)
    {
        for (Control *found : show(page).pageWidget(page)->findChildren<Control *>()) {
            if (found->accessibleName() == name) {
                return found;
            }
        }
        ADD_FAILURE() << "there is no " << name.toStdString();
        return nullptr;
    }

    TemporaryFolder folder;
    std::unique_ptr<QBNotesPreferenceManager> preferences;
    QBNotesAppThemeManager appThemes;
    std::unique_ptr<QMainWindow> owner = std::make_unique<QMainWindow>();
    QList<QAction *> commands;
};

} // namespace quib::tests

// Settings by accessor: defaults, reset, the mirrored Markdown mode, and who is told.

#include <Store/QBNotesPreferenceManager.h>
#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using quib::PropertyValue;
using quib::tests::TemporaryFolder;

namespace {

class Preferences : public testing::Test
{
protected:
    std::unique_ptr<QBNotesPreferenceManager> launch()
    {
        return std::make_unique<QBNotesPreferenceManager>(m_user, m_group, m_cloud);
    }
    /// Counts the announcements of an accessor.
    int &count(QBNotesPreferenceManager &manager, const QString &accessor)
    {
        auto calls = std::make_shared<int>(0);
        m_tokens.push_back(manager.addObserver(accessor, [calls](const QString & /*key*/) { ++*calls; }));
        m_counts.push_back(calls);
        return *calls;
    }

    TemporaryFolder m_folder;
    std::shared_ptr<NSUserDefaults> m_user = std::make_shared<NSUserDefaults>(m_folder.path(u"user.plist"_s));
    std::shared_ptr<NSUserDefaults> m_group = std::make_shared<NSUserDefaults>(m_folder.path(u"group.plist"_s));
    std::shared_ptr<NSUbiquitousKeyValueStore> m_cloud =
        std::make_shared<NSUbiquitousKeyValueStore>(std::make_shared<NSUserDefaults>(m_folder.path(u"cloud.plist"_s)));

private:
    std::vector<quib::ObservationToken> m_tokens;
    std::vector<std::shared_ptr<int>> m_counts;
};

TEST_F(Preferences, HaveTheirDefaultsAtFirstLaunch)
{
    const auto manager = launch();
    EXPECT_TRUE(manager->appThemeName().isNull());
    EXPECT_TRUE(manager->appDarkThemeName().isNull());
    EXPECT_TRUE(manager->fontThemeName().isNull());
    EXPECT_FALSE(manager->appIconMatchesTheme());
    EXPECT_FALSE(manager->markdownCompatibilityMode());
    EXPECT_EQ(manager->currentSyntax(), 0);
    EXPECT_TRUE(manager->autograbURLTitles());
    EXPECT_FALSE(manager->foldCompletedTodo());
    EXPECT_FALSE(manager->editorShowImagesAsThumbnails().has_value());
    EXPECT_TRUE(manager->enableHapticFeedback());
    EXPECT_FALSE(manager->enableTextExpander());
    EXPECT_TRUE(manager->exportTags());
    EXPECT_FALSE(manager->excludeCopyAsTags().has_value());
    EXPECT_FALSE(manager->editorFontSize().has_value());
    EXPECT_EQ(manager->markedPreviewExpirationTime(), 900);
    EXPECT_EQ(manager->notesListSortBy(), u"modificationDate"_s);
    EXPECT_FALSE(manager->notesListSortAscending());
    EXPECT_EQ(manager->tagsListSortBy(), u"title"_s);
    EXPECT_TRUE(manager->tagsListSortAscending());
    EXPECT_TRUE(manager->autocompleteEnabled());
    EXPECT_TRUE(manager->tagsListUsesCustomTagsIcons());
    EXPECT_FALSE(manager->syncDisabledByUser());
    EXPECT_FALSE(manager->lastSyncDate().has_value());
    EXPECT_FALSE(manager->logToFile().has_value());
    EXPECT_TRUE(m_user->boolForKey(u"NSQuitAlwaysKeepsWindows"_s));
    // Defaults are not settings: of these, only the windows' is written.
    EXPECT_EQ(m_user->keys(), QStringList{u"NSQuitAlwaysKeepsWindows"_s});
}

TEST_F(Preferences, AreWrittenAtOnce)
{
    const auto manager = launch();
    manager->setFontThemeName(u"Serif"_s);
    manager->setEditorFontSize(17.5);
    manager->setLastSyncDate(NSDate::dateWithTimeIntervalSince1970(1488449472.25));
    manager->setExportTags(false);
    manager->setValidatedSyncEnabledUntilDate(NSDate::dateWithTimeIntervalSince1970(1));
    const QBNotesPreferenceManager other(std::make_shared<NSUserDefaults>(m_folder.path(u"user.plist"_s)), m_group,
                                         m_cloud);
    EXPECT_EQ(other.fontThemeName(), u"Serif"_s);
    EXPECT_EQ(other.editorFontSize(), 17.5);
    EXPECT_EQ(other.lastSyncDate(), NSDate::dateWithTimeIntervalSince1970(1488449472.25));
    EXPECT_FALSE(other.exportTags());
    EXPECT_FALSE(other.validatedSyncEnabledUntilDate().has_value());
    EXPECT_TRUE(manager->validatedSyncEnabledUntilDate().has_value());
}

TEST_F(Preferences, CarryAnOldMarkdownModeOverToTheGroupOnce)
{
    m_user->setObject(PropertyValue(true), u"QBMarkdownCompatibilityMode"_s);
    {
        const auto manager = launch();
        EXPECT_TRUE(manager->markdownCompatibilityMode());
        EXPECT_TRUE(NSUserDefaults(m_folder.path(u"group.plist"_s)).boolForKey(u"QBMarkdownCompatibilityMode"_s));
        manager->setMarkdownCompatibilityMode(false);
    }
    EXPECT_FALSE(launch()->markdownCompatibilityMode());
}

TEST_F(Preferences, MirrorTheMarkdownModeToGroupAndCloud)
{
    const auto manager = launch();
    int &told = count(*manager, u"markdownCompatibilityMode"_s);
    manager->setMarkdownCompatibilityMode(true);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(manager->currentSyntax(), 1);
    EXPECT_TRUE(m_group->boolForKey(u"QBMarkdownCompatibilityMode"_s));
    EXPECT_TRUE(m_cloud->boolForKey(u"QBMarkdownCompatibilityMode"_s));
    EXPECT_TRUE(m_user->ownObjectForKey(u"QBMarkdownCompatibilityMode"_s).isNull());
}

TEST_F(Preferences, TakeTheMarkdownModeOfOtherDevices)
{
    const auto manager = launch();
    manager->setUbiquitousKVStore();
    int &told = count(*manager, u"markdownCompatibilityMode"_s);
    m_cloud->receiveValues({{u"QBMarkdownCompatibilityMode"_s, PropertyValue(true)}, {u"other"_s, PropertyValue(1)}},
                           NSUbiquitousKeyValueStore::ServerChange);
    EXPECT_EQ(manager->currentSyntax(), 1);
    EXPECT_EQ(told, 1);
}

TEST_F(Preferences, ActOnTheReasonOfACloudChange)
{
    const struct
    {
        int reason;
        bool acts;
    } rows[] = {{0, true}, {1, true}, {2, false}, {3, true}, {4, false}, {100, false}};
    for (const auto &row : rows) {
        const auto manager = launch();
        manager->setMarkdownCompatibilityMode(false);
        m_cloud->setBool(true, u"QBMarkdownCompatibilityMode"_s);
        int &told = count(*manager, u"markdownCompatibilityMode"_s);
        manager->updateKVStoreItems({row.reason, {u"unrelated"_s}});
        EXPECT_FALSE(manager->markdownCompatibilityMode());
        manager->updateKVStoreItems({row.reason, {u"QBMarkdownCompatibilityMode"_s}});
        EXPECT_EQ(manager->markdownCompatibilityMode(), row.acts) << row.reason;
        EXPECT_EQ(told, row.acts ? 1 : 0) << row.reason;
        // Announced around the write, be the value another one or not.
        manager->updateKVStoreItems({row.reason, {u"QBMarkdownCompatibilityMode"_s}});
        EXPECT_EQ(told, row.acts ? 2 : 0) << row.reason;
    }
}

TEST_F(Preferences, ResetAllButSyncDatesAndLog)
{
    const auto manager = launch();
    manager->setAppThemeName(u"a"_s);
    manager->setAppDarkThemeName(u"b"_s);
    manager->setFontThemeName(u"c"_s);
    manager->setEditorFontSize(1);
    manager->setEditorLineHeightMultiplier(2);
    manager->setEditorLineWidthMultiplier(3);
    manager->setEditorParagraphSpacingMultiplier(4);
    manager->setEditorShowImagesAsThumbnails(true);
    manager->setAutocompleteEnabled(false);
    manager->setTagsListUsesCustomTagsIcons(false);
    manager->setAppIconMatchesTheme(true);
    manager->setMarkdownCompatibilityMode(true);
    manager->setAutograbURLTitles(false);
    manager->setFoldCompletedTodo(true);
    manager->setEnableHapticFeedback(false);
    manager->setEnableTextExpander(true);
    manager->setExportTags(false);
    manager->setNotesListSortBy(u"title"_s);
    manager->setNotesListSortAscending(true);
    manager->setTagsListSortBy(u"count"_s);
    manager->setTagsListSortAscending(false);
    manager->setExcludeCopyAsTags(true);
    manager->setSyncDisabledByUser(true);
    const NSDate date = NSDate::dateWithTimeIntervalSince1970(5);
    manager->setLastSyncDate(date);
    manager->setSyncEnabledUntilDate(date);
    manager->setLogToFile(true);

    manager->resetToDefaultPreferences();
    EXPECT_TRUE(manager->appThemeName().isNull() && manager->appDarkThemeName().isNull() &&
                manager->fontThemeName().isNull());
    EXPECT_FALSE(manager->editorFontSize() || manager->editorLineHeightMultiplier() ||
                 manager->editorLineWidthMultiplier() || manager->editorParagraphSpacingMultiplier() ||
                 manager->editorShowImagesAsThumbnails());
    EXPECT_TRUE(manager->autocompleteEnabled() && manager->tagsListUsesCustomTagsIcons() &&
                manager->autograbURLTitles() && manager->enableHapticFeedback() && manager->exportTags() &&
                manager->tagsListSortAscending());
    EXPECT_FALSE(manager->appIconMatchesTheme() || manager->markdownCompatibilityMode() ||
                 manager->foldCompletedTodo() || manager->enableTextExpander() || manager->notesListSortAscending());
    EXPECT_EQ(manager->notesListSortBy(), u"modificationDate"_s);
    EXPECT_EQ(manager->tagsListSortBy(), u"title"_s);
    EXPECT_FALSE(m_cloud->boolForKey(u"QBMarkdownCompatibilityMode"_s));
    // These are not appearance.
    EXPECT_EQ(manager->excludeCopyAsTags(), true);
    EXPECT_TRUE(manager->syncDisabledByUser());
    EXPECT_EQ(manager->lastSyncDate(), date);
    EXPECT_EQ(manager->syncEnabledUntilDate(), date);
    EXPECT_EQ(manager->logToFile(), true);
}

TEST_F(Preferences, UseTheThemeOfTheAppearanceInEffect)
{
    const auto manager = launch();
    int &current = count(*manager, u"currentAppThemeName"_s);
    int &dark = count(*manager, u"appDarkThemeName"_s);
    EXPECT_EQ(manager->currentAppThemeName(), u"Red Graphite"_s);
    manager->setCurrentAppThemeName(u"Day"_s);
    EXPECT_EQ(manager->currentAppThemeName(), u"Day"_s);
    manager->setHasDarkAppearance(true);
    EXPECT_EQ(manager->currentAppThemeName(), u"Dark Graphite"_s);
    manager->setCurrentAppThemeName(u"Night"_s);
    EXPECT_EQ(manager->currentAppThemeName(), u"Night"_s);
    EXPECT_EQ(manager->appThemeName(), u"Day"_s);
    EXPECT_EQ(manager->appDarkThemeName(), u"Night"_s);
    EXPECT_EQ(current, 2);
    EXPECT_EQ(dark, 1);
    manager->setCurrentAppThemeName(u"Night"_s);
    EXPECT_EQ(current, 3);
    // One that another program chose for this appearance.
    manager->setAppDarkThemeName(u"Cobalt"_s);
    EXPECT_EQ(manager->currentAppThemeName(), u"Cobalt"_s);
    EXPECT_EQ(current, 4);
}

TEST_F(Preferences, AnnounceChangesByTheNameOfTheAccessor)
{
    const auto manager = launch();
    int &thumbnails = count(*manager, u"editorShowImagesAsThumbnails"_s);
    int &font = count(*manager, u"fontThemeName"_s);
    manager->setEditorShowImagesAsThumbnails(true);
    manager->savePreferenceValue(PropertyValue(false), u"QBEditorShowImageAsThumbnails"_s);
    EXPECT_EQ(thumbnails, 2);
    EXPECT_EQ(font, 0);
    // A change by another process comes with the next synchronisation.
    NSUserDefaults other(m_folder.path(u"user.plist"_s));
    other.setObject(PropertyValue(u"Mono"_s), u"QBFontThemeName"_s);
    ASSERT_TRUE(other.synchronize(nullptr));
    ASSERT_TRUE(m_user->synchronize(nullptr));
    EXPECT_EQ(font, 1);
}

TEST_F(Preferences, OfTheEditorsPaneHaveTheirDefaultsAndAreTold)
{
    const auto manager = launch();
    EXPECT_FALSE(manager->editorTypewriterScrolling());
    EXPECT_FALSE(manager->editorFocusMode());
    EXPECT_TRUE(manager->editorFormatBar());
    const int &typewriter = count(*manager, u"editorTypewriterScrolling"_s);
    const int &focus = count(*manager, u"editorFocusMode"_s);
    const int &bar = count(*manager, u"editorFormatBar"_s);
    manager->setEditorTypewriterScrolling(true);
    manager->setEditorFormatBar(false);
    EXPECT_TRUE(manager->preferenceValueForKey(u"QBEditorTypewriterScrolling"_s).toBool());
    EXPECT_FALSE(manager->editorFormatBar());
    manager->setEditorFormatBar(std::nullopt);
    EXPECT_TRUE(manager->editorFormatBar());
    EXPECT_EQ(typewriter, 1);
    EXPECT_EQ(focus, 0);
    EXPECT_EQ(bar, 2);
}

TEST_F(Preferences, AskTheInstalledCheckForTheSubscription)
{
    const auto manager = launch();
    EXPECT_TRUE(manager->isProSubscriptionValid());
    manager->setProSubscriptionCheck([] { return false; });
    EXPECT_FALSE(manager->isProSubscriptionValid());
}

TEST_F(Preferences, AreSharedWhileTheirOwnerKeepsThem)
{
    EXPECT_EQ(QBNotesPreferenceManager::sharedPreferenceManager(), nullptr);
    {
        const auto manager = launch();
        QBNotesPreferenceManager::setSharedPreferenceManager(manager.get());
        EXPECT_EQ(QBNotesPreferenceManager::sharedPreferenceManager(), manager.get());
    }
    EXPECT_EQ(QBNotesPreferenceManager::sharedPreferenceManager(), nullptr);
}

} // namespace

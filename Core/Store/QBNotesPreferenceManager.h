#pragma once

#include <Files/NSUbiquitousKeyValueStore.h>
#include <Files/NSUserDefaults.h>
#include <Files/Profile.h>
#include <Foundation/KeyedObservers.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

/// Every setting of the user behind a typed accessor. Accessors may be called from any thread; each reads and writes
/// one key, at once and durably. Observers use the accessor's name and are told on the thread of the writer. The
/// Markdown mode lives in the group's settings and is mirrored to all devices.
class QBNotesPreferenceManager
{
public:
    /// The installed manager; null before one is installed. The program's start, or a test, installs one that it owns.
    [[nodiscard]] static QBNotesPreferenceManager *sharedPreferenceManager();
    static void setSharedPreferenceManager(QBNotesPreferenceManager *manager);

    /// The settings of the profile.
    QBNotesPreferenceManager();
    /// Settings in given files; registers the defaults.
    QBNotesPreferenceManager(std::shared_ptr<NSUserDefaults> userDefaults,
                             std::shared_ptr<NSUserDefaults> groupDefaults,
                             std::shared_ptr<NSUbiquitousKeyValueStore> keyValueStore);
    ~QBNotesPreferenceManager();
    QBNotesPreferenceManager(const QBNotesPreferenceManager &) = delete;
    QBNotesPreferenceManager &operator=(const QBNotesPreferenceManager &) = delete;

    static constexpr QLatin1StringView groupIdentifier = quib::kGroupIdentifier;

    // Appearance. A setter given nothing goes back to the default; so do all setters below.

    [[nodiscard]] QString appThemeName() const { return text(u"QBAppThemeName"); }
    void setAppThemeName(const QString &name) { save(name, u"QBAppThemeName"); }
    [[nodiscard]] QString appDarkThemeName() const { return text(u"QBAppDarkThemeName"); }
    void setAppDarkThemeName(const QString &name) { save(name, u"QBAppDarkThemeName"); }
    [[nodiscard]] QString fontThemeName() const { return text(u"QBFontThemeName"); }
    void setFontThemeName(const QString &name) { save(name, u"QBFontThemeName"); }
    [[nodiscard]] bool appIconMatchesTheme() const { return flag(u"QBAppIconMatchesTheme"); }
    void setAppIconMatchesTheme(std::optional<bool> matches) { save(matches, u"QBAppIconMatchesTheme"); }
    /// The theme of the appearance in effect, or the default one of that appearance.
    [[nodiscard]] QString currentAppThemeName() const;
    /// Writes the slot of the appearance in effect and announces "currentAppThemeName".
    void setCurrentAppThemeName(const QString &name);
    /// Told by whoever knows the desktop's appearance; light before.
    void setHasDarkAppearance(bool isDark);
    [[nodiscard]] bool hasDarkAppearance() const;

    // Editor

    [[nodiscard]] bool markdownCompatibilityMode() const;
    void setMarkdownCompatibilityMode(bool enabled);
    /// 1 in Markdown compatibility mode, else 0.
    [[nodiscard]] int currentSyntax() const { return markdownCompatibilityMode() ? 1 : 0; }
    [[nodiscard]] bool autograbURLTitles() const { return flag(u"QBAutoGrabURLTitles"); }
    void setAutograbURLTitles(std::optional<bool> grabs) { save(grabs, u"QBAutoGrabURLTitles"); }
    [[nodiscard]] bool foldCompletedTodo() const { return flag(u"QBFoldCompletedTodo"); }
    void setFoldCompletedTodo(std::optional<bool> folds) { save(folds, u"QBFoldCompletedTodo"); }
    [[nodiscard]] std::optional<bool> editorShowImagesAsThumbnails() const
    {
        return flagIfAny(u"QBEditorShowImageAsThumbnails");
    }
    void setEditorShowImagesAsThumbnails(std::optional<bool> shows) { save(shows, u"QBEditorShowImageAsThumbnails"); }
    [[nodiscard]] bool enableHapticFeedback() const { return flag(u"QBEnableHapticFeedback"); }
    void setEnableHapticFeedback(std::optional<bool> enabled) { save(enabled, u"QBEnableHapticFeedback"); }
    [[nodiscard]] bool enableTextExpander() const { return flag(u"QBEnableTextExpander"); }
    void setEnableTextExpander(std::optional<bool> enabled) { save(enabled, u"QBEnableTextExpander"); }
    [[nodiscard]] bool autocompleteEnabled() const { return flag(u"QBAutoCompleteEnabled"); }
    void setAutocompleteEnabled(std::optional<bool> enabled) { save(enabled, u"QBAutoCompleteEnabled"); }
    [[nodiscard]] bool spellCheckingEnabled() const { return flagIfAny(u"QBSpellCheckingEnabled").value_or(true); }
    void setSpellCheckingEnabled(std::optional<bool> enabled) { save(enabled, u"QBSpellCheckingEnabled"); }
    /// The line with the caret stays at one height, and the text moves.
    [[nodiscard]] bool editorTypewriterScrolling() const { return flag(u"QBEditorTypewriterScrolling"); }
    void setEditorTypewriterScrolling(std::optional<bool> isOn) { save(isOn, u"QBEditorTypewriterScrolling"); }
    /// What is not the paragraph with the caret stands back.
    [[nodiscard]] bool editorFocusMode() const { return flag(u"QBEditorFocusMode"); }
    void setEditorFocusMode(std::optional<bool> isOn) { save(isOn, u"QBEditorFocusMode"); }
    [[nodiscard]] bool editorFormatBar() const { return flagIfAny(u"QBEditorFormatBar").value_or(true); }
    void setEditorFormatBar(std::optional<bool> isShown) { save(isShown, u"QBEditorFormatBar"); }
    /// These four override the theme's value where there is one.
    [[nodiscard]] std::optional<double> editorFontSize() const { return numberIfAny(u"QBEditorFontSize"); }
    void setEditorFontSize(std::optional<double> size) { save(size, u"QBEditorFontSize"); }
    [[nodiscard]] std::optional<double> editorLineHeightMultiplier() const
    {
        return numberIfAny(u"QBEditorLineHeightMultiplier");
    }
    void setEditorLineHeightMultiplier(std::optional<double> factor) { save(factor, u"QBEditorLineHeightMultiplier"); }
    [[nodiscard]] std::optional<double> editorLineWidthMultiplier() const
    {
        return numberIfAny(u"QBEditorLineWidthMultiplier");
    }
    void setEditorLineWidthMultiplier(std::optional<double> factor) { save(factor, u"QBEditorLineWidthMultiplier"); }
    [[nodiscard]] std::optional<double> editorParagraphSpacingMultiplier() const
    {
        return numberIfAny(u"QBEditorParagraphSpacingMultiplier");
    }
    void setEditorParagraphSpacingMultiplier(std::optional<double> factor)
    {
        save(factor, u"QBEditorParagraphSpacingMultiplier");
    }

    // Export

    [[nodiscard]] bool exportTags() const { return flag(u"QBExportTags"); }
    void setExportTags(std::optional<bool> exports) { save(exports, u"QBExportTags"); }
    [[nodiscard]] std::optional<bool> excludeCopyAsTags() const { return flagIfAny(u"QBCopyAsTags"); }
    void setExcludeCopyAsTags(std::optional<bool> excludes) { save(excludes, u"QBCopyAsTags"); }
    /// Units: seconds.
    [[nodiscard]] qint64 markedPreviewExpirationTime() const
    {
        return preferenceValueForKey(QStringLiteral("QBMarkedPreviewTime")).toInteger();
    }

    // Lists

    [[nodiscard]] QString notesListSortBy() const { return text(u"QBNotesListSortBy"); }
    void setNotesListSortBy(const QString &key) { save(key, u"QBNotesListSortBy"); }
    [[nodiscard]] bool notesListSortAscending() const { return flag(u"QBNotesListSortAscending"); }
    void setNotesListSortAscending(std::optional<bool> ascending) { save(ascending, u"QBNotesListSortAscending"); }
    [[nodiscard]] QString tagsListSortBy() const { return text(u"QBTagsListSortBy"); }
    void setTagsListSortBy(const QString &key) { save(key, u"QBTagsListSortBy"); }
    [[nodiscard]] bool tagsListSortAscending() const { return flag(u"QBTagsListSortAscending"); }
    void setTagsListSortAscending(std::optional<bool> ascending) { save(ascending, u"QBTagsListSortAscending"); }
    [[nodiscard]] bool tagsListUsesCustomTagsIcons() const { return flag(u"QBTagsListUsesCustomTagsIcons"); }
    void setTagsListUsesCustomTagsIcons(std::optional<bool> uses) { save(uses, u"QBTagsListUsesCustomTagsIcons"); }

    // Sync, subscription, log

    [[nodiscard]] bool syncDisabledByUser() const { return flag(u"QBSyncDisabledByUser"); }
    void setSyncDisabledByUser(std::optional<bool> disabled) { save(disabled, u"QBSyncDisabledByUser"); }
    [[nodiscard]] std::optional<NSDate> lastSyncDate() const { return dateIfAny(u"QBLastSyncDate"); }
    void setLastSyncDate(std::optional<NSDate> date) { save(date, u"QBLastSyncDate"); }
    [[nodiscard]] std::optional<NSDate> syncEnabledUntilDate() const { return dateIfAny(u"QBSyncEnabledUntilDate"); }
    void setSyncEnabledUntilDate(std::optional<NSDate> date) { save(date, u"QBSyncEnabledUntilDate"); }
    /// Held in memory only.
    [[nodiscard]] std::optional<NSDate> validatedSyncEnabledUntilDate() const;
    void setValidatedSyncEnabledUntilDate(std::optional<NSDate> date);
    /// Whether paid features are on: the answer of the installed check. Without one they are.
    [[nodiscard]] bool isProSubscriptionValid() const;
    void setProSubscriptionCheck(std::function<bool()> check);
    [[nodiscard]] std::optional<bool> logToFile() const { return flagIfAny(u"QBLogFile"); }
    void setLogToFile(std::optional<bool> logs) { save(logs, u"QBLogFile"); }

    // Values by key

    [[nodiscard]] quib::PropertyValue preferenceValueForKey(const QString &key) const;
    /// Writes, then synchronises at once; null removes. A failure is logged, and the value stays in force.
    void savePreferenceValue(const quib::PropertyValue &value, const QString &forKey);

    // Defaults

    void registerDefaultPreferences();
    /// Sync settings, dates and the log setting stay.
    void resetToDefaultPreferences();

    // The mirrored setting

    /// Follows the key-value store that all devices share.
    void setUbiquitousKVStore();
    /// Takes the Markdown mode over from a change of the shared store, unless the change tells of a full store.
    void updateKVStoreItems(const NSUbiquitousKeyValueStore::ChangeNotification &notification);
    void saveUbiqPreferenceBOOL(bool value, const QString &forKey);

    // Observing

    /// Tells of changes of an accessor's value: "fontThemeName", "currentAppThemeName" and so on.
    [[nodiscard]] quib::ObservationToken addObserver(const QString &keyPath, quib::KeyedObservers::Observer observer)
    {
        return m_observers.add(keyPath, std::move(observer));
    }
    /// Takes over changes by other processes as they happen, from the event loop of the calling thread.
    void startWatching();

private:
    [[nodiscard]] bool flag(QStringView key) const { return preferenceValueForKey(key.toString()).toBool(); }
    [[nodiscard]] QString text(QStringView key) const { return preferenceValueForKey(key.toString()).toString(); }
    [[nodiscard]] std::optional<bool> flagIfAny(QStringView key) const;
    [[nodiscard]] std::optional<double> numberIfAny(QStringView key) const;
    [[nodiscard]] std::optional<NSDate> dateIfAny(QStringView key) const;
    template <typename T> void save(const std::optional<T> &value, QStringView key)
    {
        savePreferenceValue(value ? quib::PropertyValue(*value) : quib::PropertyValue(), key.toString());
    }
    void save(const QString &value, QStringView key)
    {
        savePreferenceValue(value.isNull() ? quib::PropertyValue() : quib::PropertyValue(value), key.toString());
    }

    std::shared_ptr<NSUserDefaults> m_userDefaults;
    std::shared_ptr<NSUserDefaults> m_groupDefaults;
    std::shared_ptr<NSUbiquitousKeyValueStore> m_keyValueStore;
    quib::KeyedObservers m_observers;
    std::vector<quib::ObservationToken> m_forwarding; ///< from keys to names of accessors
    quib::ObservationToken m_keyValueStoreObservation;
    /// What observers of changes ask about, who may outlive this.
    std::shared_ptr<std::atomic<bool>> m_hasDarkAppearance = std::make_shared<std::atomic<bool>>(false);
    mutable std::mutex m_mutex; ///< guards the two below
    std::optional<NSDate> m_validatedSyncEnabledUntilDate;
    std::function<bool()> m_proSubscriptionCheck;
};

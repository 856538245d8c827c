#include "QBNotesPreferenceManager.h"

#include <Logging/QBLogger.h>

#include <atomic>

using namespace Qt::StringLiterals;
using quib::PropertyValue;

namespace {

const QString &markdownKey()
{
    static const QString key = u"QBMarkdownCompatibilityMode"_s;
    return key;
}

constexpr QLatin1StringView kMarkdownAccessor{"markdownCompatibilityMode"};
constexpr QLatin1StringView kCurrentThemeAccessor{"currentAppThemeName"};

struct Accessor
{
    const char *name;
    const char *key;
};

/// The accessors whose values are in the user defaults.
constexpr Accessor kAccessors[] = {
    {"appThemeName", "QBAppThemeName"},
    {"appDarkThemeName", "QBAppDarkThemeName"},
    {"fontThemeName", "QBFontThemeName"},
    {"appIconMatchesTheme", "QBAppIconMatchesTheme"},
    {"autograbURLTitles", "QBAutoGrabURLTitles"},
    {"foldCompletedTodo", "QBFoldCompletedTodo"},
    {"editorShowImagesAsThumbnails", "QBEditorShowImageAsThumbnails"},
    {"enableHapticFeedback", "QBEnableHapticFeedback"},
    {"enableTextExpander", "QBEnableTextExpander"},
    {"exportTags", "QBExportTags"},
    {"excludeCopyAsTags", "QBCopyAsTags"},
    {"editorFontSize", "QBEditorFontSize"},
    {"editorLineHeightMultiplier", "QBEditorLineHeightMultiplier"},
    {"editorLineWidthMultiplier", "QBEditorLineWidthMultiplier"},
    {"editorParagraphSpacingMultiplier", "QBEditorParagraphSpacingMultiplier"},
    {"markedPreviewExpirationTime", "QBMarkedPreviewTime"},
    {"notesListSortBy", "QBNotesListSortBy"},
    {"notesListSortAscending", "QBNotesListSortAscending"},
    {"tagsListSortBy", "QBTagsListSortBy"},
    {"tagsListSortAscending", "QBTagsListSortAscending"},
    {"autocompleteEnabled", "QBAutoCompleteEnabled"},
    {"spellCheckingEnabled", "QBSpellCheckingEnabled"},
    {"editorTypewriterScrolling", "QBEditorTypewriterScrolling"},
    {"editorFocusMode", "QBEditorFocusMode"},
    {"editorFormatBar", "QBEditorFormatBar"},
    {"tagsListUsesCustomTagsIcons", "QBTagsListUsesCustomTagsIcons"},
    {"syncDisabledByUser", "QBSyncDisabledByUser"},
    {"lastSyncDate", "QBLastSyncDate"},
    {"syncEnabledUntilDate", "QBSyncEnabledUntilDate"},
    {"logToFile", "QBLogFile"},
};

std::atomic<QBNotesPreferenceManager *> &installedManager()
{
    static std::atomic<QBNotesPreferenceManager *> manager = nullptr;
    return manager;
}

void synchronize(NSUserDefaults &defaults)
{
    NSError error;
    if (!defaults.synchronize(&error)) {
        QBLogError(error.localizedDescription());
    }
}

} // namespace

QBNotesPreferenceManager *QBNotesPreferenceManager::sharedPreferenceManager()
{
    return installedManager().load();
}

void QBNotesPreferenceManager::setSharedPreferenceManager(QBNotesPreferenceManager *manager)
{
    installedManager().store(manager);
}

QBNotesPreferenceManager::QBNotesPreferenceManager()
    : QBNotesPreferenceManager(NSUserDefaults::standardUserDefaults(), NSUserDefaults::suite(QString(groupIdentifier)),
                               std::make_shared<NSUbiquitousKeyValueStore>())
{
}

QBNotesPreferenceManager::QBNotesPreferenceManager(std::shared_ptr<NSUserDefaults> userDefaults,
                                                   std::shared_ptr<NSUserDefaults> groupDefaults,
                                                   std::shared_ptr<NSUbiquitousKeyValueStore> keyValueStore)
    : m_userDefaults(std::move(userDefaults))
    , m_groupDefaults(std::move(groupDefaults))
    , m_keyValueStore(std::move(keyValueStore))
{
    registerDefaultPreferences();
    const auto forward = [this](NSUserDefaults &defaults, const QString &key, const QString &name) {
        // By value: the observers outlive this object where a change is being told.
        m_forwarding.push_back(defaults.addObserver(
            key, [observers = m_observers, name](const QString & /*key*/) { observers.tell(name); }));
    };
    for (const Accessor &accessor : kAccessors) {
        forward(*m_userDefaults, QString::fromLatin1(accessor.key), QString::fromLatin1(accessor.name));
    }
    forward(*m_groupDefaults, markdownKey(), QString(kMarkdownAccessor));
    // The theme in effect is that of the appearance, whoever wrote it.
    for (const auto &[key, isDark] :
         {std::pair(u"QBAppThemeName"_s, false), std::pair(u"QBAppDarkThemeName"_s, true)}) {
        m_forwarding.push_back(m_userDefaults->addObserver(
            key, [observers = m_observers, appearance = m_hasDarkAppearance, isDark = isDark](const QString & /*key*/) {
                if (*appearance == isDark) {
                    observers.tell(QString(kCurrentThemeAccessor));
                }
            }));
    }
}

QBNotesPreferenceManager::~QBNotesPreferenceManager()
{
    if (sharedPreferenceManager() == this) {
        setSharedPreferenceManager(nullptr);
    }
}

PropertyValue QBNotesPreferenceManager::preferenceValueForKey(const QString &key) const
{
    return m_userDefaults->objectForKey(key);
}

void QBNotesPreferenceManager::savePreferenceValue(const PropertyValue &value, const QString &forKey)
{
    m_userDefaults->setObject(value, forKey);
    synchronize(*m_userDefaults);
}

std::optional<bool> QBNotesPreferenceManager::flagIfAny(QStringView key) const
{
    const PropertyValue value = preferenceValueForKey(key.toString());
    return value.isNull() ? std::nullopt : std::optional(value.toBool());
}

std::optional<double> QBNotesPreferenceManager::numberIfAny(QStringView key) const
{
    const PropertyValue value = preferenceValueForKey(key.toString());
    return value.isNumber() ? std::optional(value.toDouble()) : std::nullopt;
}

std::optional<NSDate> QBNotesPreferenceManager::dateIfAny(QStringView key) const
{
    return preferenceValueForKey(key.toString()).asDate();
}

QString QBNotesPreferenceManager::currentAppThemeName() const
{
    const bool isDark = hasDarkAppearance();
    const QString name = isDark ? appDarkThemeName() : appThemeName();
    if (!name.isNull()) {
        return name;
    }
    return isDark ? u"Dark Graphite"_s : u"Red Graphite"_s;
}

void QBNotesPreferenceManager::setCurrentAppThemeName(const QString &name)
{
    const bool isDark = hasDarkAppearance();
    const bool isSame = (isDark ? appDarkThemeName() : appThemeName()) == name;
    if (isDark) {
        setAppDarkThemeName(name);
    } else {
        setAppThemeName(name);
    }
    if (isSame) {
        // A write of another value announces itself.
        m_observers.tell(QString(kCurrentThemeAccessor));
    }
}

void QBNotesPreferenceManager::setHasDarkAppearance(bool isDark)
{
    *m_hasDarkAppearance = isDark;
}

bool QBNotesPreferenceManager::hasDarkAppearance() const
{
    return *m_hasDarkAppearance;
}

bool QBNotesPreferenceManager::markdownCompatibilityMode() const
{
    return m_groupDefaults->boolForKey(markdownKey());
}

void QBNotesPreferenceManager::setMarkdownCompatibilityMode(bool enabled)
{
    m_groupDefaults->setObject(PropertyValue(enabled), markdownKey());
    synchronize(*m_groupDefaults);
    saveUbiqPreferenceBOOL(enabled, markdownKey());
}

std::optional<NSDate> QBNotesPreferenceManager::validatedSyncEnabledUntilDate() const
{
    const std::lock_guard lock(m_mutex);
    return m_validatedSyncEnabledUntilDate;
}

void QBNotesPreferenceManager::setValidatedSyncEnabledUntilDate(std::optional<NSDate> date)
{
    {
        const std::lock_guard lock(m_mutex);
        m_validatedSyncEnabledUntilDate = date;
    }
    m_observers.tell(u"validatedSyncEnabledUntilDate"_s);
}

bool QBNotesPreferenceManager::isProSubscriptionValid() const
{
    const auto check = [this] {
        const std::lock_guard lock(m_mutex);
        return m_proSubscriptionCheck;
    }();
    return !check || check();
}

void QBNotesPreferenceManager::setProSubscriptionCheck(std::function<bool()> check)
{
    const std::lock_guard lock(m_mutex);
    m_proSubscriptionCheck = std::move(check);
}

void QBNotesPreferenceManager::registerDefaultPreferences()
{
    // 1. Windows are restored at launch. Written once: a start that changes nothing writes nothing.
    const QString keepsWindows = u"NSQuitAlwaysKeepsWindows"_s;
    if (!(m_userDefaults->ownObjectForKey(keepsWindows) == PropertyValue(true))) {
        savePreferenceValue(PropertyValue(true), keepsWindows);
    }
    // 2. The values in force where the user set none.
    m_userDefaults->registerDefaults({
        {u"QBAutoGrabURLTitles"_s, PropertyValue(true)},
        {markdownKey(), PropertyValue(false)},
        {u"QBEnableHapticFeedback"_s, PropertyValue(true)},
        {u"QBEnableTextExpander"_s, PropertyValue(false)},
        {u"QBExportTags"_s, PropertyValue(true)},
        {u"QBMarkedPreviewTime"_s, PropertyValue(900)},
        {u"QBNotesListSortBy"_s, PropertyValue(u"modificationDate"_s)},
        {u"QBNotesListSortAscending"_s, PropertyValue(false)},
        {u"QBTagsListSortBy"_s, PropertyValue(u"title"_s)},
        {u"QBTagsListSortAscending"_s, PropertyValue(true)},
        {u"QBAppIconMatchesTheme"_s, PropertyValue(false)},
        {u"QBAutoCompleteEnabled"_s, PropertyValue(true)},
        {u"QBTagsListUsesCustomTagsIcons"_s, PropertyValue(true)},
        {u"QBSyncDisabledByUser"_s, PropertyValue(false)},
    });
    // 3. The Markdown mode lives in the group's settings; a value from before it moved there is carried over.
    if (m_groupDefaults->objectForKey(markdownKey()).isNull()) {
        m_groupDefaults->setObject(m_userDefaults->objectForKey(markdownKey()), markdownKey());
        synchronize(*m_groupDefaults);
    }
}

void QBNotesPreferenceManager::resetToDefaultPreferences()
{
    setAppThemeName(QString());
    setAppDarkThemeName(QString());
    setFontThemeName(QString());
    setEditorFontSize(std::nullopt);
    setEditorLineHeightMultiplier(std::nullopt);
    setEditorLineWidthMultiplier(std::nullopt);
    setEditorParagraphSpacingMultiplier(std::nullopt);
    setEditorShowImagesAsThumbnails(std::nullopt);
    setAutocompleteEnabled(std::nullopt);
    setSpellCheckingEnabled(std::nullopt);
    setTagsListUsesCustomTagsIcons(std::nullopt);
    setAppIconMatchesTheme(false);
    setMarkdownCompatibilityMode(false);
    setAutograbURLTitles(true);
    setFoldCompletedTodo(false);
    setEnableHapticFeedback(true);
    setEnableTextExpander(false);
    setExportTags(true);
    setNotesListSortBy(u"modificationDate"_s);
    setNotesListSortAscending(false);
    setTagsListSortBy(u"title"_s);
    setTagsListSortAscending(true);
}

void QBNotesPreferenceManager::setUbiquitousKVStore()
{
    m_keyValueStoreObservation =
        m_keyValueStore->addObserver([this](const NSUbiquitousKeyValueStore::ChangeNotification &notification) {
            updateKVStoreItems(notification);
        });
    NSError error;
    if (!m_keyValueStore->synchronize(&error)) {
        QBLogError(error.localizedDescription());
    }
}

void QBNotesPreferenceManager::updateKVStoreItems(const NSUbiquitousKeyValueStore::ChangeNotification &notification)
{
    if (notification.reason < 0 || notification.reason >= 4 ||
        notification.reason == NSUbiquitousKeyValueStore::QuotaViolationChange) {
        return;
    }
    for (const QString &key : notification.changedKeys) {
        if (key != markdownKey()) {
            continue;
        }
        const bool enabled = m_keyValueStore->boolForKey(key);
        const bool isChange = enabled != markdownCompatibilityMode();
        m_groupDefaults->setObject(PropertyValue(enabled), key);
        synchronize(*m_groupDefaults);
        if (!isChange) {
            // A write of another value announces itself.
            m_observers.tell(QString(kMarkdownAccessor));
        }
    }
}

void QBNotesPreferenceManager::saveUbiqPreferenceBOOL(bool value, const QString &forKey)
{
    m_keyValueStore->setBool(value, forKey);
    NSError error;
    if (!m_keyValueStore->synchronize(&error)) {
        QBLogError(error.localizedDescription());
    }
}

void QBNotesPreferenceManager::startWatching()
{
    m_userDefaults->startWatching();
    m_groupDefaults->startWatching();
}

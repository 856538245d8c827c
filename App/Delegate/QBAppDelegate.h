#pragma once

#include "QBApplicationInterface.h"

#include <Foundation/NSDate.h>
#include <Foundation/NotificationCenter.h>
#include <Store/QBCoreDataStackDelegate.h>

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class IACManager;
class QBCoreDataStack;
class QBLocalFileWatcher;
class QBMainWindowInterface;
class QBNotesPreferenceManager;
class QBSendToQuibService;
class QBURLPasteboard;
class QBXurlActions;

namespace quib {
class ExternalChangeMonitor;
}

/// What the delegate works with. All of it is made by the process, or by a test, and outlives the delegate.
struct QBAppServices
{
    QBApplicationInterface &application;
    QBNotesPreferenceManager &preferences;
    QBCoreDataStack &stack;
    IACManager &callbacks;
    quib::ThemeLoader &themes;
    /// Where the folder "Fonts" may lie; empty for none.
    QString resourcesFolder;
};

/// The root of the process: owns the long-lived services, brings them up in a fixed order around the readiness of the
/// store, parks what arrives before that, and tidies the store at the end. It holds no note logic and no window of its
/// own. A launch whose migration fails goes on without a store: everything parked stays parked, nothing is deleted.
/// Held by the process through a shared pointer; main queue.
class QBAppDelegate final : public QBCoreDataStackDelegate, public std::enable_shared_from_this<QBAppDelegate>
{
    Q_DECLARE_TR_FUNCTIONS(QBAppDelegate)

public:
    explicit QBAppDelegate(const QBAppServices &services);
    ~QBAppDelegate() override;
    QBAppDelegate(const QBAppDelegate &) = delete;
    QBAppDelegate &operator=(const QBAppDelegate &) = delete;

    // Launch and end

    /// Moves old data, shows window and theme, and only then has the store opened: a migration has to show progress.
    void applicationWillFinishLaunching();
    void applicationDidFinishLaunching();
    /// Saves what is being typed, deletes what nothing refers to any more, and saves the store durably. Once: later
    /// calls do nothing. Always gives true; nothing is waited for.
    bool applicationShouldTerminate();

    /// Called once, when it is known that there will be no store: what is parked then stays parked for ever.
    void setStoreDidFail(std::function<void()> storeDidFail) { m_storeDidFail = std::move(storeDidFail); }

    // The gate

    /// Runs the callback now if the store is open, else after the launch, behind those that came before it.
    void delayUntilManagedObjectContextIsReady(std::function<void()> callback);
    void executeDelayedUntilMocIsReadyBlocks();

    // Requests (QBAppDelegate+Opening.cpp). The first two go through the gate.

    /// Makes one note of all pictures among the files. A backup at the end of the list discards the whole list. Files
    /// that need an importer are named in an alert.
    void applicationOpenFiles(const QStringList &files);
    /// Runs a URL of the program's own scheme.
    void applicationOpenURL(const QUrl &url);
    /// Hands the URL of an event to the URL actions. Errors: false when no action took it, or none is set up yet.
    bool handleGetURLEvent(const QUrl &url);
    /// Shows the list, and the note, that the user looked at elsewhere: "isAllNotes", "isTrash", "tag", "id". Errors:
    /// false where there is no such tag or note, or no store.
    bool applicationContinueUserActivity(const QVariantMap &userInfo);
    /// Opens the "link" of a notification.
    void userNotificationWasActivated(const QVariantMap &userInfo);

    /// The service that other programs hand files, URLs and texts to; null before the launch is over.
    [[nodiscard]] QBSendToQuibService *servicesProvider() const { return m_servicesProvider.get(); }

    // Being looked at

    /// Looks for the title of a link that was copied elsewhere, if the user wants that.
    void applicationDidBecomeActive();
    /// The program's icon was chosen while it runs. Always gives true.
    bool applicationShouldHandleReopen();
    /// Dark is what the desktop asks for.
    void effectiveAppearanceDidChange(bool isDark);

    // Commands (QBAppDelegate+Commands.cpp). Errors: false in a process without windows.

    bool newDocument();
    bool newDocumentInNewWindow();
    bool reopenMainWindow();
    bool shorcutOpenQuib();
    bool shorcutNewNote();
    /// Shows all notes and goes to the search field, with a text if there is one.
    bool noteListSearch(const QString &text = {});
    /// The title of the note in the key window's editor, or the empty string.
    [[nodiscard]] QString currentNoteTitle() const;
    void showSupportWebsite();

    // Developer commands (QBAppDelegate+Developer.cpp)

    /// Removes all persistent data and ends the process, if the user confirms.
    void deleteQuibDB();
    void toggleFileLog();
    void printFirstResponder();
    void openApplicationContainer();
    void openApplicationSupport();
    void openLogsFolder();

    // State

    [[nodiscard]] bool isRunning() const { return m_isRunning; }
    [[nodiscard]] bool hasFailedToMigrate() const { return m_hasFailedToMigrate; }
    /// A URL event came in: the main window then does not restore what it showed.
    [[nodiscard]] bool appOpenedFromXCallback() const { return m_appOpenedFromXCallback; }
    [[nodiscard]] QBLoadingWindowInterface *loadingWindowController() const { return m_loadingWindowController.get(); }

    // The store's opening

    void coreDataStackDidInitializeManagedObjectContext(QBCoreDataStack &coreDataStack,
                                                        NSManagedObjectContext &managedObjectContext) override;
    void coreDataStackDidBeginMigrationWithProgress(QBCoreDataStack &coreDataStack,
                                                    const std::shared_ptr<NSProgress> &progress) override;
    void coreDataStackDidEndMigration(QBCoreDataStack &coreDataStack, const NSError &migrationError) override;

private:
    // Steps of the launch
    [[nodiscard]] static bool localDataMigration();
    void setupCustomFonts() const;
    void setupViewControllers();
    void setupTheme();
    void handleApparanceChange();
    void setupLaunch();
    void setupObservers();
    void setupXCallbackURLs();
    void setupFirstLaunch();
    void alertUserThatMigrationFailed();
    void alertUserThatStoreCannotBeOpened();
    void dropLoadingWindow();
    void markAsFailed();

    // Preference changes
    void observe(const QString &keyPath, void (QBAppDelegate::*changed)());
    void fontPreferencesDidChange();
    void appIconPreferenceDidChange();
    void syntaxDidChange();

    // Files
    void openFilesNow(const QStringList &files);
    void makeNoteOfPictures(const QStringList &files);

    void confirmDeveloperCommand(std::function<void()> confirmed);
    [[nodiscard]] NSManagedObjectContext *managedObjectContext() const;

    QBAppServices m_services;
    QBMainWindowInterface *m_mainWindowController = nullptr;
    std::unique_ptr<QBLoadingWindowInterface> m_loadingWindowController; ///< while the store is migrated
    std::vector<std::function<void()>> m_delayedUntilMocIsReadyBlocks;
    std::unique_ptr<QBLocalFileWatcher> m_localFileWatcher;
    std::unique_ptr<quib::ExternalChangeMonitor> m_externalChangeMonitor;
    std::unique_ptr<QBXurlActions> m_xurlController;
    std::unique_ptr<QBSendToQuibService> m_servicesProvider;
    std::unique_ptr<QBURLPasteboard> m_generalPasteboard; ///< made when it is first looked at
    std::vector<quib::ObservationToken> m_observers;
    std::function<void()> m_storeDidFail;
    bool m_isRunning = false;
    bool m_hasFailedToMigrate = false;
    bool m_appOpenedFromXCallback = false;
    bool m_hasTerminated = false;
};

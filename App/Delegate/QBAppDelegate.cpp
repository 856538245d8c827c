#include "QBAppDelegate.h"

#include "QBMainWindowInterface.h"

#include <Foundation/Assert.h>
#include <Foundation/Clock.h>
#include <Foundation/DispatchQueue.h>
#include <Logging/QBDeviceInfoLogger.h>
#include <Logging/QBLogger.h>
#include <Markup/Editing/UnsavedTextJournal.h>
#include <Store/ExternalChangeMonitor.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBLocalDataMigrator.h>
#include <Store/QBLocalFileManager.h>
#include <Store/QBLocalFileWatcher.h>
#include <Store/QBNote.h>
#include <Store/QBNoteFile.h>
#include <Store/QBNoteTag.h>
#include <Store/QBNotesPreferenceManager.h>
#include <URL/QBSendToQuibService.h>
#include <URL/QBURLPasteboard.h>
#include <URL/QBXurlActions.h>

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QFontDatabase>

using namespace Qt::StringLiterals;
using quib::DispatchQueue;

namespace {

/// The second button of the alert of a failed migration.
constexpr int kContactSupport = 1;
/// The second button of the alert of a store that cannot be opened.
constexpr int kShowFolder = 1;

[[maybe_unused]] bool isMainQueue()
{
    return DispatchQueue::main()->isCurrent();
}

} // namespace

QBAppDelegate::QBAppDelegate(const QBAppServices &services)
    : m_services(services)
{
}

QBAppDelegate::~QBAppDelegate() = default;

// Launch

void QBAppDelegate::applicationWillFinishLaunching()
{
    QUIB_ASSERT(isMainQueue());
    // 1. The data folder comes to where this version keeps it.
    const bool isDataInPlace = localDataMigration();
    // 2. The fonts that come with the program.
    setupCustomFonts();
    // 3. The main window.
    setupViewControllers();
    // 4. Its colours.
    setupTheme();
    // 5. Without the data there is no store: one made beside it would hide it.
    if (!isDataInPlace) {
        markAsFailed();
        alertUserThatMigrationFailed();
        return;
    }
    // 6. The store, now or once it is migrated.
    m_services.stack.setupStackWithDelegate(weak_from_this());
}

void QBAppDelegate::applicationDidFinishLaunching()
{
    if (managedObjectContext() == nullptr && m_mainWindowController != nullptr) {
        m_mainWindowController->orderOut();
    }
    QBDeviceInfoLogger::logDeviceInfo();
}

bool QBAppDelegate::localDataMigration()
{
    NSError error;
    const bool isMigrated = QBLocalDataMigrator::migrateToCurrentVersion(&error);
    return isMigrated && !error.isSet();
}

void QBAppDelegate::setupCustomFonts() const
{
    if (m_services.resourcesFolder.isEmpty()) {
        return;
    }
    for (QDirIterator files(m_services.resourcesFolder + u"/Fonts"_s, QDir::Files, QDirIterator::Subdirectories);
         files.hasNext();) {
        const QString path = files.next();
        if (QFontDatabase::addApplicationFont(path) < 0) {
            QBLogWarn(QString(u"the font "_s % path % u" could not be read"_s));
        }
    }
}

void QBAppDelegate::setupViewControllers()
{
    m_mainWindowController = m_services.application.mainWindow();
}

void QBAppDelegate::setupTheme()
{
    handleApparanceChange();
}

void QBAppDelegate::handleApparanceChange()
{
    m_services.themes.loadThemeNamed(m_services.preferences.currentAppThemeName());
}

// The store's opening

void QBAppDelegate::coreDataStackDidInitializeManagedObjectContext(QBCoreDataStack & /*coreDataStack*/,
                                                                   NSManagedObjectContext & /*managedObjectContext*/)
{
    if (m_services.stack.openError().isSet()) {
        // The contexts of a store that could not be opened keep nothing: whoever wrote into them would lose it.
        markAsFailed();
        alertUserThatStoreCannotBeOpened();
        return;
    }
    setupLaunch();
    executeDelayedUntilMocIsReadyBlocks();
}

void QBAppDelegate::coreDataStackDidBeginMigrationWithProgress(QBCoreDataStack & /*coreDataStack*/,
                                                               const std::shared_ptr<NSProgress> &progress)
{
    if (m_mainWindowController != nullptr) {
        m_mainWindowController->orderOut();
    }
    if (m_loadingWindowController) {
        return;
    }
    m_loadingWindowController = m_services.application.makeLoadingWindow();
    m_loadingWindowController->setTitle(tr("Just a moment and Quib will be ready!"));
    m_loadingWindowController->setMessage(tr("Quib is currently speeding up your notes and migrating the database to a "
                                             "new version.\nWe highly suggest not to "
                                             "exit from Quib during the whole process."));
    m_loadingWindowController->setProgress(progress);
    m_loadingWindowController->center();
    m_loadingWindowController->beginModalSession();
}

void QBAppDelegate::coreDataStackDidEndMigration(QBCoreDataStack & /*coreDataStack*/, const NSError &migrationError)
{
    if (m_loadingWindowController) {
        m_loadingWindowController->endModalSession();
    }
    dropLoadingWindow();
    if (migrationError.isSet()) {
        markAsFailed();
        alertUserThatMigrationFailed();
    }
    if (m_mainWindowController != nullptr) {
        m_mainWindowController->makeKeyAndOrderFront();
    }
}

void QBAppDelegate::dropLoadingWindow()
{
    if (m_loadingWindowController) {
        m_loadingWindowController->orderOut();
        m_loadingWindowController.reset();
    }
}

void QBAppDelegate::markAsFailed()
{
    m_hasFailedToMigrate = true;
    if (const auto tell = std::exchange(m_storeDidFail, nullptr)) {
        tell();
    }
}

void QBAppDelegate::alertUserThatStoreCannotBeOpened()
{
    const NSError error = m_services.stack.openError();
    const bool isDamaged = error.domain() == kNSCocoaErrorDomain &&
                           error.code() == static_cast<qint64>(NSCocoaErrorCode::PersistentStoreCorrupt);
    const QString path = m_services.stack.persistentStoreURL();
    m_services.application.showAlert(
        {.messageText = tr("Your notes could not be opened"),
         .informativeText = isDamaged ? tr("The file that holds them is damaged, or is no file of Quib's. Nothing was "
                                           "changed. Put a copy from a backup in its place, and start Quib again.")
                                      : tr("Nothing was changed. The reason: %1").arg(error.localizedDescription()),
         .buttons = {tr("Quit"), tr("Show Folder")},
         .isFailure = true,
         .path = isDamaged ? path : QString()},
        [weak = weak_from_this(), path](int button) {
            const auto self = weak.lock();
            if (!self || button == QBApplicationInterface::kNoButton) {
                return; // without windows the process goes on to answer that it has no notes
            }
            if (button == kShowFolder) {
                self->m_services.application.revealFolder(QFileInfo(path).path());
            }
            self->m_services.application.terminate();
        });
}

void QBAppDelegate::alertUserThatMigrationFailed()
{
    m_services.application.showAlert(
        {.messageText = tr("Something went wrong"),
         .informativeText =
             tr("It was not possible to migrate your database to the new version. Don't worry your notes are safe, "
                "please contact the support team using the 'Contact Support' button below and they will help you."),
         .buttons = {tr("OK"), tr("Contact Support")},
         .isFailure = true},
        [weak = weak_from_this()](int button) {
            if (const auto self = weak.lock(); self && button == kContactSupport) {
                self->showSupportWebsite();
            }
        });
}

void QBAppDelegate::setupLaunch()
{
    // 1. For the log line at the end.
    const NSDate start = quib::Clock::shared().now();
    const auto &context = m_services.stack.managedObjectContext();
    // 2. What an editor could not save before it crashed comes into its note before anybody sees that.
    quib::UnsavedTextJournal::recoverUnsavedTexts(*context);
    // 3. Whoever notices what others write: attachments on disk, rows in the store. What became of attachments while
    // nobody watched is looked up in the background.
    m_localFileWatcher = std::make_unique<QBLocalFileWatcher>(context);
    m_externalChangeMonitor = std::make_unique<quib::ExternalChangeMonitor>(m_services.stack);
    m_localFileWatcher->checkAndUpdateLocalFilesInBackground();
    if (QDir(quib::UnsavedTextJournal::defaultFolder()).isEmpty()) {
        m_localFileWatcher->markForgottenFilesInBackground();
    }
    if (m_mainWindowController != nullptr) {
        // 4. The lists are filled.
        m_mainWindowController->setManagedObjectContext(context);
        // 5. A list that gets the keyboard has something selected.
        m_mainWindowController->setSelectsFirstRowWhenBecomesFirstResponder(true);
        // 6. Now there is something to look at.
        m_mainWindowController->makeKeyAndOrderFront();
    }
    // 7. Preferences take effect from here on.
    setupObservers();
    // 8. URLs are answered.
    setupXCallbackURLs();
    // 9. Other programs may send something.
    m_servicesProvider = std::make_unique<QBSendToQuibService>();
    m_isRunning = true;
    // 10. Notes that explain Quib, on an empty store.
    setupFirstLaunch();
    // 11. How long it took.
    QBLogInfo(QString(u"application launch in "_s %
                      QString::number(quib::Clock::shared().now().timeIntervalSinceDate(start), 'f', 6) % u's'));
}

void QBAppDelegate::setupObservers()
{
    for (const auto &keyPath : {u"fontThemeName"_s, u"editorFontSize"_s, u"editorLineHeightMultiplier"_s,
                                u"editorLineWidthMultiplier"_s, u"editorParagraphSpacingMultiplier"_s}) {
        observe(keyPath, &QBAppDelegate::fontPreferencesDidChange);
    }
    observe(u"appIconMatchesTheme"_s, &QBAppDelegate::appIconPreferenceDidChange);
    observe(u"markdownCompatibilityMode"_s, &QBAppDelegate::syntaxDidChange);
    observe(u"currentAppThemeName"_s, &QBAppDelegate::handleApparanceChange);
}

void QBAppDelegate::setupXCallbackURLs()
{
    m_xurlController = std::make_unique<QBXurlActions>(m_services.stack, m_mainWindowController);
    m_xurlController->setupXCallbackURLs(m_services.callbacks);
}

void QBAppDelegate::observe(const QString &keyPath, void (QBAppDelegate::*changed)())
{
    // Changes are told on the thread of the writer.
    m_observers.push_back(
        m_services.preferences.addObserver(keyPath, [weak = weak_from_this(), changed](const QString & /*key*/) {
            const auto tell = [weak, changed] {
                if (const auto self = weak.lock()) {
                    ((*self).*changed)();
                }
            };
            if (DispatchQueue::main()->isCurrent()) {
                tell();
            } else {
                DispatchQueue::main()->async(tell);
            }
        }));
}

void QBAppDelegate::setupFirstLaunch()
{
    // There are no welcome notes to import, so an empty store stays empty, and "QBFirstLaunchNotes" stays false: the
    // version that has them finds the store as if it were new.
}

// Preference changes

void QBAppDelegate::fontPreferencesDidChange()
{
    m_services.themes.loadFontThemeName(m_services.preferences.fontThemeName());
}

void QBAppDelegate::appIconPreferenceDidChange()
{
    m_services.themes.loadThemedAppIcon(m_services.preferences.currentAppThemeName());
}

void QBAppDelegate::syntaxDidChange()
{
    // Only the counts of to-dos depend on the syntax.
    const int syntax = m_services.preferences.currentSyntax();
    m_services.stack.performBackgroundTask([syntax](NSManagedObjectContext &context) {
        for (const auto &note : QBNote::allNotesInManagedObjectContext(context)) {
            note->updateAttributesForNewSyntax(syntax);
        }
        NSError error;
        if (!context.save(&error)) {
            QBLogError(u"Error while saving\n"_s + error.localizedDescription());
        }
    });
}

// The gate

void QBAppDelegate::delayUntilManagedObjectContextIsReady(std::function<void()> callback)
{
    QUIB_ASSERT(isMainQueue());
    if (m_isRunning) {
        callback();
    } else {
        m_delayedUntilMocIsReadyBlocks.push_back(std::move(callback));
    }
}

void QBAppDelegate::executeDelayedUntilMocIsReadyBlocks()
{
    // A callback may park nothing any more, but it may ask for this again.
    const auto callbacks = std::exchange(m_delayedUntilMocIsReadyBlocks, {});
    for (const auto &callback : callbacks) {
        callback();
    }
}

// Being looked at

void QBAppDelegate::applicationDidBecomeActive()
{
    if (!m_services.preferences.autograbURLTitles()) {
        return;
    }
    if (!m_generalPasteboard) {
        auto pasteboard = m_services.application.generalPasteboard();
        if (!pasteboard) {
            return;
        }
        m_generalPasteboard = std::make_unique<QBURLPasteboard>(std::move(pasteboard));
    }
    m_generalPasteboard->fixURLWithoutTitle();
}

bool QBAppDelegate::applicationShouldHandleReopen()
{
    if (!m_services.application.hasVisibleWindows() && m_mainWindowController != nullptr) {
        m_mainWindowController->makeKeyAndOrderFront();
    }
    return true;
}

void QBAppDelegate::effectiveAppearanceDidChange(bool isDark)
{
    m_services.preferences.setHasDarkAppearance(isDark);
    handleApparanceChange();
}

// End

bool QBAppDelegate::applicationShouldTerminate()
{
    QUIB_ASSERT(isMainQueue());
    if (std::exchange(m_hasTerminated, true)) {
        return true;
    }
    // 1. Gone for the user, still there for the state that the next start restores.
    if (m_mainWindowController != nullptr) {
        m_mainWindowController->setAlphaValue(0);
        m_mainWindowController->orderFront();
        m_mainWindowController->invalidateRestorableState();
    }
    NSManagedObjectContext *context = managedObjectContext();
    if (context == nullptr) {
        return true;
    }
    // 2. What was typed lands in its note.
    if (m_mainWindowController != nullptr) {
        m_mainWindowController->saveNote(/*forceSave=*/true);
    }
    // What a damaged store says is unused may be used all the same.
    if (!m_services.stack.damage().isSet()) {
        // 3. Attachments that no text has any more.
        QBNoteFile::deleteAllUnusedNoteFilesInManagedObjectContext(*context);
        // 4. and 5. Tags likewise.
        QBNoteTag::deleteAllUnusedTagsInManagedObjectContext(*context);
        QBNoteTag::mergeDuplicateTagsInInManagedObjectContext(*context);
    }
    // 6. At once and durably.
    m_services.stack.saveUsingCoalescence(/*coalescence=*/false);
    // 7. Copies that were made for others.
    QBLocalFileManager::deleteTemporaryDirectoryContent();
    return true;
}

NSManagedObjectContext *QBAppDelegate::managedObjectContext() const
{
    return m_services.stack.managedObjectContext().get();
}

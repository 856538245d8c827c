#include "QuibProcess.h"

#include <Files/PlainTextFile.h>
#include <Foundation/NSPasteboard.h>
#include <URL/QBSendToQuibService.h>
#include <URL/URLParameters.h>

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <QUrl>

#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// What is installed beside the program; empty where nothing is.
QString resourcesFolder()
{
    return QStandardPaths::locate(QStandardPaths::GenericDataLocation, u"quib"_s, QStandardPaths::LocateDirectory);
}

} // namespace

QuibProcess::QuibProcess(std::unique_ptr<QBApplicationInterface> interface, IACManager::Opener opener)
    : m_interface(std::move(interface))
    , m_themes(m_preferences, m_textThemeManager, m_appThemeManager, *m_interface)
    , m_callbacks(std::make_shared<IACManager>())
{
    m_callbacks->setOpener([this, opener = std::move(opener)](const QUrl &url) {
        const QString scheme = m_callbacks->callbackURLScheme();
        if (scheme.isEmpty() || url.scheme() != scheme) {
            return opener && opener(url);
        }
        // Ours is for this process and its profile: the desktop may know no program for it, or another's profile. Once
        // the action is done that calls back.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [delegate = std::weak_ptr(m_delegate), url] {
                if (const auto running = delegate.lock()) {
                    running->applicationOpenURL(url);
                }
            },
            Qt::QueuedConnection);
        return true;
    });
    QBNotesPreferenceManager::setSharedPreferenceManager(&m_preferences);
    QBCoreDataStack::setSharedStack(&m_stack);
    QBNotesAppThemeManager::setSharedThemeManager(&m_appThemeManager);
    IACManager::setSharedManager(m_callbacks);
    m_delegate = std::make_shared<QBAppDelegate>(QBAppServices{.application = *m_interface,
                                                               .preferences = m_preferences,
                                                               .stack = m_stack,
                                                               .callbacks = *m_callbacks,
                                                               .themes = m_themes,
                                                               .resourcesFolder = resourcesFolder()});
    m_delegate->setStoreDidFail([this] { refuseParked(); });
}

QuibProcess::~QuibProcess()
{
    m_delegate.reset();
    IACManager::setSharedManager({});
    QBNotesAppThemeManager::setSharedThemeManager(nullptr);
    QBCoreDataStack::setSharedStack(nullptr);
    QBNotesPreferenceManager::setSharedPreferenceManager(nullptr);
}

void QuibProcess::launch()
{
    m_preferences.setUbiquitousKVStore();
    m_preferences.startWatching();
    m_delegate->applicationWillFinishLaunching();
    m_delegate->applicationDidFinishLaunching();
}

bool QuibProcess::terminate(NSError *error)
{
    m_delegate->applicationShouldTerminate();
    const NSError saveError = m_stack.saveError();
    if (m_stack.managedObjectContext() && saveError.isSet()) {
        return NSError::fill(error, saveError.domain(), saveError.code(), saveError.localizedDescription(),
                             saveError.causeCode());
    }
    return true;
}

void QuibProcess::serve(const InstanceRequest &request, Done done)
{
    if (m_delegate->hasFailedToMigrate()) {
        done(noStoreError());
        return;
    }
    const auto waiting = std::make_shared<Done>(std::move(done));
    if (!m_delegate->isRunning()) {
        m_parked.push_back(waiting);
    }
    m_delegate->delayUntilManagedObjectContextIsReady([this, request, waiting] {
        NSError error;
        bool isServed = true;
        switch (request.kind) {
        case InstanceRequest::Kind::Activate:
            m_delegate->applicationShouldHandleReopen();
            m_interface->activate();
            break;
        case InstanceRequest::Kind::Open:
            serveOpen(request.uris);
            break;
        case InstanceRequest::Kind::Action:
            isServed = serveAction(request.action, request.argument, &error);
            break;
        case InstanceRequest::Kind::SendURIs:
        case InstanceRequest::Kind::SendText:
            isServed = serveSend(request, &error);
            break;
        }
        std::exchange(*waiting, nullptr)(isServed ? NSError() : error);
    });
}

void QuibProcess::refuseParked()
{
    for (const auto &waiting : std::exchange(m_parked, {})) {
        if (const Done done = std::exchange(*waiting, nullptr)) {
            done(noStoreError());
        }
    }
}

NSError QuibProcess::noStoreError()
{
    return {kErrorDomain, 1, u"Quib could not open its notes, and takes nothing"_s};
}

void QuibProcess::serveOpen(const QStringList &uris)
{
    // Files that stand together make one note; URLs keep their place among them.
    QStringList files;
    for (const QString &uri : uris) {
        const QUrl url = urlFromText(uri);
        if (url.isLocalFile()) {
            files.append(url.toLocalFile());
            continue;
        }
        m_delegate->applicationOpenFiles(std::exchange(files, {}));
        m_delegate->applicationOpenURL(url);
    }
    m_delegate->applicationOpenFiles(files);
}

bool QuibProcess::serveAction(const QString &action, const QString &argument, NSError *error)
{
    const auto needsWindow = [error](bool isDone) {
        return isDone || NSError::fill(error, kErrorDomain, 2, u"Quib runs without a window here"_s);
    };
    if (action == kActionNewNote) {
        return needsWindow(m_delegate->shorcutNewNote());
    }
    if (action == kActionQuickNote) {
        return needsWindow(m_interface->showQuickNote());
    }
    if (action == kActionSearch) {
        m_interface->activate();
        m_delegate->reopenMainWindow();
        return needsWindow(m_delegate->noteListSearch(argument));
    }
    if (action == kActionShow) {
        return needsWindow(m_delegate->shorcutOpenQuib());
    }
    if (action == kActionOpenLink) {
        m_delegate->userNotificationWasActivated({{u"link"_s, argument}});
        return true;
    }
    if (action == kActionQuit) {
        m_interface->terminate();
        return true;
    }
    return NSError::fill(error, kErrorDomain, 3, u"there is no action \"%1\""_s.arg(action.left(100)));
}

bool QuibProcess::serveSend(const InstanceRequest &request, NSError *error)
{
    InMemoryPasteboard pasteboard;
    QList<NSPasteboardItem> items;
    for (const QString &uri : request.uris) {
        const QUrl url = urlFromText(uri);
        NSPasteboardItem item;
        item.setString(url.toString(QUrl::FullyEncoded),
                       url.isLocalFile() ? NSPasteboardTypeFileURL : NSPasteboardTypeURL);
        items.append(item);
    }
    if (request.kind == InstanceRequest::Kind::SendText) {
        const auto text = decodePlainText(request.text, u"the text"_s, error);
        if (!text) {
            return false;
        }
        NSPasteboardItem item;
        item.setString(*text, NSPasteboardTypeString);
        items.append(item);
    }
    pasteboard.writeItems(items);
    NSError failure;
    if (m_delegate->servicesProvider()->sendToQuibService(pasteboard, {}, &failure)) {
        return true;
    }
    if (error != nullptr) {
        *error = failure.isSet() ? failure : NSError(kErrorDomain, 4, u"there is nothing to make a note of"_s);
    }
    return false;
}

QString QuibProcess::currentNoteTitle() const
{
    return m_delegate->currentNoteTitle();
}

bool QuibProcess::continueActivity(const QVariantMap &userInfo)
{
    return m_delegate->applicationContinueUserActivity(userInfo);
}

} // namespace quib

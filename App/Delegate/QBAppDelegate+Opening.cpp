#include "QBAppDelegate.h"
#include "QBMainWindowInterface.h"

#include <Files/UniformType.h>
#include <Logging/QBLogger.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNote.h>
#include <Store/QBNoteFile.h>
#include <Store/QBNoteTag.h>
#include <Store/QBNotesPreferenceManager.h>
#include <URL/FileMarker.h>
#include <URL/IACManager.h>

#include <QCoreApplication>
#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// A picture, by its file's type. A file that cannot be read has no type.
bool isPicture(const QString &path)
{
    const QFileInfo file(path);
    return file.isFile() && file.isReadable() &&
           UTTypeConformsTo(UTTypeCreatePreferredIdentifierForTag(kUTTagClassFilenameExtension, file.suffix()),
                            kUTTypeImage);
}

QString namesOfFiles(const QStringList &paths)
{
    constexpr qsizetype kMostNames = 10;
    QStringList names;
    for (const QString &path : paths.mid(0, kMostNames)) {
        names.append(QFileInfo(path).fileName());
    }
    if (paths.size() > kMostNames) {
        names.append(
            QCoreApplication::translate("QBAppDelegate", "and %n more", nullptr, int(paths.size() - kMostNames)));
    }
    return names.join(u'\n');
}

} // namespace

void QBAppDelegate::applicationOpenFiles(const QStringList &files)
{
    if (files.isEmpty()) {
        return;
    }
    delayUntilManagedObjectContextIsReady([weak = weak_from_this(), files] {
        if (const auto self = weak.lock()) {
            self->openFilesNow(files);
        }
    });
}

void QBAppDelegate::openFilesNow(const QStringList &files)
{
    // 1. A backup replaces notes: it is never restored because a file was dropped.
    if (QFileInfo(files.last()).suffix() == "quibbk"_L1) {
        QBLogInfo(u"Backup wont import from dock drop"_s);
        return;
    }
    // 2. Pictures become one note, everything else needs an importer.
    QStringList pictures;
    QStringList others;
    for (const QString &path : files) {
        (isPicture(path) ? pictures : others).append(path);
    }
    if (!others.isEmpty()) {
        m_services.application.showAlert(
            {.messageText = tr("These files cannot be opened"),
             .informativeText = tr("This version of Quib opens pictures only. Nothing was imported from:\n%1")
                                    .arg(namesOfFiles(others)),
             .buttons = {tr("OK")}},
            [](int) {});
    }
    if (!pictures.isEmpty()) {
        makeNoteOfPictures(pictures);
    }
}

void QBAppDelegate::makeNoteOfPictures(const QStringList &files)
{
    NSManagedObjectContext &context = *managedObjectContext();
    QString text;
    QStringList unread;
    for (const QString &path : files) {
        NSError error;
        const auto file = QBNoteFile::factoryNoteFileForFileURL(QUrl::fromLocalFile(path), context, &error);
        if (!file) {
            QBLogError(u"Error while copying a picture: "_s + error.localizedDescription());
            unread.append(path);
            continue;
        }
        // Each picture on a line of its own, with an empty line between two.
        text.append(QString((text.isEmpty() ? u""_s : u"\n"_s) % quib::markerForFile(*file) % u'\n'));
    }
    if (!unread.isEmpty()) {
        m_services.application.showAlert({.messageText = tr("These pictures could not be copied"),
                                          .informativeText = namesOfFiles(unread),
                                          .buttons = {tr("OK")}},
                                         [](int) {});
    }
    if (text.isEmpty()) {
        return;
    }
    QBNote::noteWithText(text, m_services.preferences.currentSyntax(), context);
    m_services.stack.saveUsingCoalescence(/*coalescence=*/false);
}

void QBAppDelegate::applicationOpenURL(const QUrl &url)
{
    delayUntilManagedObjectContextIsReady([weak = weak_from_this(), url] {
        if (const auto self = weak.lock(); self && !self->handleGetURLEvent(url)) {
            QBLogWarn(u"no action took the URL"_s);
        }
    });
}

bool QBAppDelegate::handleGetURLEvent(const QUrl &url)
{
    if (!m_isRunning) {
        return false;
    }
    m_appOpenedFromXCallback = true;
    const bool isHandled = m_services.callbacks.handleOpenURL(url);
    dropLoadingWindow();
    return isHandled;
}

bool QBAppDelegate::applicationContinueUserActivity(const QVariantMap &userInfo)
{
    NSManagedObjectContext *context = managedObjectContext();
    if (context == nullptr || m_mainWindowController == nullptr) {
        return false;
    }
    if (userInfo.value(u"isAllNotes"_s).toBool()) {
        m_mainWindowController->showList(QBXurlList::AllNotes);
    } else if (userInfo.value(u"isTrash"_s).toBool()) {
        m_mainWindowController->showList(QBXurlList::Trash);
    } else {
        const auto tag = QBNoteTag::tagWithName(userInfo.value(u"tag"_s).toString(), *context);
        if (!tag) {
            return false;
        }
        m_mainWindowController->selectTag(*tag);
    }
    const QString identifier = userInfo.value(u"id"_s).toString();
    if (identifier.isEmpty()) {
        return false;
    }
    const auto note = QBNote::noteWithUniqueIdentifier(identifier, *context);
    if (!note) {
        return false;
    }
    m_mainWindowController->showNote(*note);
    return true;
}

void QBAppDelegate::userNotificationWasActivated(const QVariantMap &userInfo)
{
    const QUrl link(userInfo.value(u"link"_s).toString(), QUrl::StrictMode);
    if (link.isEmpty()) {
        return;
    }
    if (link.scheme() == m_services.callbacks.callbackURLScheme()) {
        applicationOpenURL(link);
    } else {
        m_services.callbacks.openURL(link);
    }
}

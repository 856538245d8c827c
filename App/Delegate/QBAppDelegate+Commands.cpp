#include "QBAppDelegate.h"
#include "QBMainWindowInterface.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kSupportWebsite = "https://quibworks.net/support"_L1;

} // namespace

bool QBAppDelegate::newDocument()
{
    if (m_mainWindowController == nullptr) {
        return false;
    }
    m_mainWindowController->makeKeyAndOrderFront();
    m_mainWindowController->addNewNote();
    return true;
}

bool QBAppDelegate::newDocumentInNewWindow()
{
    if (m_mainWindowController == nullptr) {
        return false;
    }
    m_mainWindowController->addNewNoteInNewWindow();
    return true;
}

bool QBAppDelegate::reopenMainWindow()
{
    if (m_mainWindowController == nullptr) {
        return false;
    }
    m_mainWindowController->makeKeyAndOrderFront();
    return true;
}

bool QBAppDelegate::shorcutOpenQuib()
{
    if (m_mainWindowController == nullptr) {
        return false;
    }
    m_services.application.activate();
    if (!m_mainWindowController->isKeyWindow()) {
        m_mainWindowController->makeKeyAndOrderFront();
    }
    m_services.application.bringAllWindowsForward();
    return true;
}

bool QBAppDelegate::shorcutNewNote()
{
    if (m_mainWindowController == nullptr) {
        return false;
    }
    m_services.application.activate();
    m_mainWindowController->makeKeyAndOrderFront();
    m_mainWindowController->addNewNote();
    return true;
}

bool QBAppDelegate::noteListSearch(const QString &text)
{
    if (m_mainWindowController == nullptr || m_mainWindowController->isEditorOnly()) {
        return false;
    }
    m_mainWindowController->showList(QBXurlList::AllNotes);
    m_mainWindowController->focusSearchField();
    if (!text.isEmpty()) {
        m_mainWindowController->setCurrentSearch(text);
    }
    return true;
}

QString QBAppDelegate::currentNoteTitle() const
{
    const QString title = m_services.application.keyEditorNoteTitle();
    return title.isNull() ? u""_s : title;
}

void QBAppDelegate::showSupportWebsite()
{
    m_services.application.openWebsite(QUrl(kSupportWebsite));
}

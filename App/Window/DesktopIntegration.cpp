#include "DesktopIntegration.h"

#include "MessageBar.h"
#include "QBMainWindowController.h"

#include <Process/InstanceRequest.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>

#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr auto kTrayKey = "QBShowsTrayIcon"_L1;
constexpr auto kShortcutsKey = "QBUsesGlobalShortcuts"_L1;
/// What a user binds to a key where the desktop has no portal for that.
constexpr auto kQuickNoteCommand = "quib --quick-note"_L1;

bool preference(QLatin1StringView key, bool otherwise)
{
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    const PropertyValue value = preferences != nullptr ? preferences->preferenceValueForKey(key) : PropertyValue();
    return value.isNull() ? otherwise : value.toBool();
}

void savePreference(bool value, QLatin1StringView key)
{
    if (auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager(); preferences != nullptr) {
        preferences->savePreferenceValue(PropertyValue(value), key);
    }
}

} // namespace

DesktopIntegration::DesktopIntegration(QBMainWindowController &window, const QDBusConnection &bus)
    : m_window(window)
    , m_tray(bus)
    , m_shortcuts(bus)
{
    // 1. The tray. The command is there where it does something.
    QAction *showing = m_window.action(u"tray-icon"_s);
    showing->setChecked(preference(kTrayKey, true));
    showing->setVisible(m_tray.hasHost());
    connect(showing, &QAction::toggled, this, [this](bool isOn) {
        savePreference(isOn, kTrayKey);
        m_tray.setWanted(isOn);
    });
    connect(&m_tray, &TrayIcon::hostDidChange, this, [this, showing] { showing->setVisible(m_tray.hasHost()); });
    connect(&m_tray, &TrayIcon::showWasRequested, this, &DesktopIntegration::showWindow);
    connect(&m_tray, &TrayIcon::quickNoteWasRequested, &m_window, &QBMainWindowController::showQuickNote);
    fillTrayMenu();
    m_tray.setWanted(showing->isChecked());
    // 2. Keys everywhere. The desktop asks the user, so it is asked only when the user wants them.
    connect(&m_shortcuts, &GlobalShortcuts::activated, this, &DesktopIntegration::perform);
    connect(&m_shortcuts, &GlobalShortcuts::didBind, this, [this](const QStringList &keys) {
        savePreference(true, kShortcutsKey);
        if (std::exchange(m_isAsked, false)) {
            m_window.messages().say(
                keys.isEmpty() ? tr("The desktop has Quib’s shortcuts now; its keyboard settings give them keys.")
                               : tr("These keys reach Quib from everywhere: %1").arg(keys.join(u", "_s)));
        }
    });
    connect(&m_shortcuts, &GlobalShortcuts::didFail, this, [this](bool isAbsent) {
        if (!std::exchange(m_isAsked, false)) {
            return;
        }
        if (!isAbsent) {
            m_window.messages().say(tr("The desktop has given Quib no shortcuts."));
            return;
        }
        m_window.messages().say(
            tr("This desktop lets no program take keys everywhere. Its keyboard settings can give a "
               "key to the command “%1”.")
                .arg(kQuickNoteCommand),
            tr("Copy Command"), [](int button, bool /*isChecked*/) {
                if (button == 0) {
                    QApplication::clipboard()->setText(QString(kQuickNoteCommand));
                }
            });
    });
    connect(m_window.action(u"global-shortcuts"_s), &QAction::triggered, this, [this] {
        m_isAsked = true;
        bindShortcuts();
    });
    if (preference(kShortcutsKey, false)) {
        bindShortcuts();
    }
}

void DesktopIntegration::fillTrayMenu()
{
    QMenu &menu = m_tray.menu();
    const auto add = [this, &menu](const QString &text, QLatin1StringView identifier) {
        menu.addAction(text, this, [this, identifier] { perform(QString(identifier)); });
    };
    add(tr("Quick Note"), kActionQuickNote);
    add(tr("New Note"), kActionNewNote);
    add(tr("Search Notes"), kActionSearch);
    menu.addSeparator();
    add(tr("Show Quib"), kActionShow);
    menu.addAction(tr("Quit"), m_window.action(u"quit"_s), &QAction::trigger);
}

void DesktopIntegration::bindShortcuts()
{
    m_shortcuts.bind({{QString(kActionQuickNote), tr("Write a quick note"), u"CTRL+LOGO+n"_s},
                      {QString(kActionShow), tr("Show Quib"), u"CTRL+LOGO+q"_s},
                      {QString(kActionSearch), tr("Search the notes"), u"CTRL+LOGO+f"_s}});
}

void DesktopIntegration::showWindow()
{
    m_window.setWindowState(m_window.windowState() & ~Qt::WindowMinimized);
    m_window.makeKeyAndOrderFront();
}

void DesktopIntegration::perform(const QString &identifier)
{
    if (identifier == kActionQuickNote) {
        m_window.showQuickNote();
        return;
    }
    showWindow();
    if (identifier == kActionNewNote) {
        m_window.addNewNote();
    } else if (identifier == kActionSearch) {
        m_window.focusSearchField();
    }
}

} // namespace quib

// quib-demo FOLDER [--picture FILE.png] [--theme NAME] [--size WxH] [--scale N] [--list ID] [--row N] [--search TEXT]
//           [--columns 1|2|3] [--run COMMAND]... [--type TEXT] [--rtl] [--empty] [--preferences PAGE]
//           [--language NAME]
// Fills the profile in FOLDER with sample notes, unless it has notes; draws the window that shows it, without a
// display, after commands were run by their names and a text was typed. A window that a command opens is drawn instead,
// or over it.
// quib-demo --has-display
// Ends with 0 where the program would open a window.

#include "DemoProfile.h"

#include <Files/Profile.h>
#include <Foundation/WorkerThreads.h>
#include <Preferences/InterfaceLanguage.h>
#include <Process/Message.h>
#include <Process/QuibProcess.h>
#include <Store/QBThumbFileManager.h>
#include <Window/EditorPane.h>
#include <Window/QBMainWindowController.h>
#include <Window/SidebarView.h>
#include <Window/WindowFrontEnd.h>

#include <QAction>
#include <QApplication>
#include <QCommandLineParser>
#include <QDeadlineTimer>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

/// Lets everything arrive that was asked for: rows, pictures, selections, numbers of notes.
void settle(QBMainWindowController &window)
{
    // Pictures take their new width only once it rests.
    const QDeadlineTimer deadline(500);
    for (int i = 0; i < 3 || window.sidebar().sidebarModel().isCounting() || !deadline.hasExpired(); ++i) {
        QBThumbFileManager::waitUntilBackgroundIsIdle();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents(QEventLoop::AllEvents, 200);
    }
}

void type(const QString &text)
{
    for (const QChar c : text) {
        QWidget *focus = QApplication::focusWidget();
        if (focus == nullptr) {
            focus = QApplication::activeWindow();
        }
        QKeyEvent press(QEvent::KeyPress, c == u'\n' ? Qt::Key_Return : 0, Qt::NoModifier, QString(c));
        if (focus != nullptr) {
            QCoreApplication::sendEvent(focus, &press);
        }
        QCoreApplication::processEvents();
    }
}

/// Runs a command of the window, or else of its pane.
bool run(QBMainWindowController &window, const QString &name)
{
    QAction *command = window.action(name);
    if (command == nullptr) {
        command = window.editor().action(name);
    }
    if (command != nullptr) {
        command->trigger();
    }
    return command != nullptr;
}

/// The window, or the one that was opened from it; what pops up is drawn where it stands.
QPixmap picture(QBMainWindowController &window)
{
    QPixmap drawn = window.grab();
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (!widget->isVisible() || widget == &window) {
            continue;
        }
        if (widget->windowType() != Qt::Popup) {
            return widget->grab();
        }
        QPainter painter(&drawn);
        painter.drawPixmap(window.mapFromGlobal(widget->pos()), widget->grab());
    }
    return drawn;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && QByteArray(argv[1]) == "--has-display") {
        return WindowFrontEnd::hasDisplay() ? 0 : 1;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    for (int i = 1; i + 1 < argc; ++i) {
        if (QByteArray(argv[i]) == "--scale") {
            qputenv("QT_SCALE_FACTOR", argv[i + 1]);
        }
    }
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addPositionalArgument(u"folder"_s, u"The profile."_s);
    for (const auto &name : {u"picture"_s, u"theme"_s, u"size"_s, u"scale"_s, u"list"_s, u"search"_s, u"columns"_s,
                             u"preferences"_s, u"language"_s, u"row"_s, u"run"_s, u"type"_s}) {
        parser.addOption(QCommandLineOption(name, {}, name));
    }
    parser.addOption(QCommandLineOption(u"empty"_s));
    parser.addOption(QCommandLineOption(u"rtl"_s));
    parser.process(application);
    if (parser.positionalArguments().size() != 1) {
        tellUser(u"usage: quib-demo FOLDER [--picture FILE.png]"_s);
        return 2;
    }
    const InterfaceLanguage language({parser.value(u"language"_s)});
    if (parser.isSet(u"rtl"_s)) {
        QApplication::setLayoutDirection(Qt::RightToLeft);
    }
    Profile::setRoot(parser.positionalArguments().constFirst());
    auto made = std::make_unique<WindowInterface>();
    WindowInterface &interface = *made;
    QuibProcess process(std::move(made), [](const QUrl &) { return false; });
    if (parser.isSet(u"theme"_s)) {
        QBNotesPreferenceManager::sharedPreferenceManager()->setAppThemeName(parser.value(u"theme"_s));
    }
    process.launch();
    NSManagedObjectContext *context = process.stack().managedObjectContext().get();
    NSError error;
    if (context == nullptr ||
        (!parser.isSet(u"empty"_s) && !fillWithDemoNotes(*context, QStringLiteral(QUIB_DEMO_FOLDER), &error))) {
        tellUser(error.localizedDescription());
        return 1;
    }
    QBMainWindowController &window = *interface.window();
    if (parser.isSet(u"picture"_s)) {
        const QStringList size = parser.value(u"size"_s).split(u'x');
        window.resize(size.size() == 2 ? QSize(size[0].toInt(), size[1].toInt()) : QSize(1200, 800));
        settle(window);
        if (parser.isSet(u"columns"_s)) {
            window.setColumns(QBMainWindowController::Columns(parser.value(u"columns"_s).toInt() - 1));
        }
        if (parser.isSet(u"list"_s)) {
            window.sidebar().selectIdentifier(parser.value(u"list"_s));
        }
        if (window.noteList().selectedRows().isEmpty() && window.notes()->numberOfRows() > 0) {
            window.noteList().selectRows({0});
        }
        if (parser.isSet(u"row"_s)) {
            window.noteList().selectRows({parser.value(u"row"_s).toInt()});
        }
        if (parser.isSet(u"search"_s)) {
            window.setCurrentSearch(parser.value(u"search"_s));
        }
        settle(window);
        if (parser.isSet(u"preferences"_s)) {
            window.showPreferences(PreferencesWindow::Page(parser.value(u"preferences"_s).toInt() - 1));
            settle(window);
        }
        for (const QString &name : parser.values(u"run"_s)) {
            if (!run(window, name)) {
                tellUser(u"there is no command \"%1\""_s.arg(name));
                return 2;
            }
            settle(window);
        }
        type(parser.value(u"type"_s));
        settle(window);
        if (!picture(window).save(parser.value(u"picture"_s))) {
            tellUser(u"the picture \"%1\" cannot be written"_s.arg(parser.value(u"picture"_s)));
            return 1;
        }
    }
    const bool isSaved = process.terminate(&error);
    window.forgetStore();
    return WorkerThreads::endProcess(isSaved ? 0 : 1);
}

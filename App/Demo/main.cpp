// quib-demo FOLDER [--picture FILE.png] [--theme NAME] [--size WxH] [--scale N] [--list ID] [--search TEXT] [--empty]
//           [--preferences PAGE] [--language NAME]
// Fills the profile in FOLDER with sample notes, unless it has notes; draws the window that shows it, without a
// display.

#include "DemoProfile.h"

#include <Files/Profile.h>
#include <Preferences/InterfaceLanguage.h>
#include <Process/Message.h>
#include <Process/QuibProcess.h>
#include <Store/QBThumbFileManager.h>
#include <Window/QBMainWindowController.h>
#include <Window/SidebarView.h>
#include <Window/WindowFrontEnd.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QPixmap>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

/// Lets everything arrive that was asked for: rows, pictures, selections.
void settle()
{
    for (int i = 0; i < 3; ++i) {
        QBThumbFileManager::waitUntilBackgroundIsIdle();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents(QEventLoop::AllEvents, 200);
    }
}

} // namespace

int main(int argc, char **argv)
{
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
                             u"preferences"_s, u"language"_s}) {
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
        settle();
        if (parser.isSet(u"columns"_s)) {
            window.setColumns(QBMainWindowController::Columns(parser.value(u"columns"_s).toInt() - 1));
        }
        if (parser.isSet(u"list"_s)) {
            window.sidebar().selectIdentifier(parser.value(u"list"_s));
        }
        if (window.noteList().selectedRows().isEmpty() && window.notes()->numberOfRows() > 0) {
            window.noteList().selectRows({0});
        }
        if (parser.isSet(u"search"_s)) {
            window.setCurrentSearch(parser.value(u"search"_s));
        }
        settle();
        QWidget *shown = &window;
        if (parser.isSet(u"preferences"_s)) {
            window.showPreferences(PreferencesWindow::Page(parser.value(u"preferences"_s).toInt() - 1));
            shown = window.findChild<PreferencesWindow *>();
            settle();
        }
        if (!shown->grab().save(parser.value(u"picture"_s))) {
            tellUser(u"the picture \"%1\" cannot be written"_s.arg(parser.value(u"picture"_s)));
            return 1;
        }
    }
    const bool isSaved = process.terminate(&error);
    window.forgetStore();
    return isSaved ? 0 : 1;
}

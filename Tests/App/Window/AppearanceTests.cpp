#include "WindowFixture.h"

#include <Search/Lists/TagIcons.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Support/QtPrinters.h>
#include <Themes/QBNotesThemesManager.h>
#include <Window/ChoicePanel.h>
#include <Window/EditorPane.h>
#include <Window/SearchField.h>
#include <Window/Symbols.h>
#include <Window/WindowStyle.h>

#include <QAction>
#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QListView>
#include <QScreen>
#include <QSplitter>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

class Window : public WindowFixture
{
};

TEST_F(Window, ComesBackAsItWasLeft)
{
    launch({u"# One #garden"_s, u"# Two #garden/roses"_s, u"# Three"_s});
    openList(u"garden"_s);
    selectRow(u"One #garden"_s);
    window().sidebar().collapse(window().sidebar().sidebarModel().indexOfIdentifier(u"garden"_s));
    window().resize(780, 640);
    auto *splitter = window().findChild<QSplitter *>();
    splitter->setSizes({170, 250, 358});
    settle();
    const QList<int> sizes = splitter->sizes();
    quit();
    launch();
    EXPECT_EQ(window().sidebar().selectedIdentifier(), u"garden"_s);
    EXPECT_EQ(selectedRows(), QStringList{u"One #garden"_s});
    EXPECT_EQ(window().editor().note()->title(), u"One #garden"_s);
    EXPECT_FALSE(window().sidebar().isExpanded(window().sidebar().sidebarModel().indexOfIdentifier(u"garden"_s)));
    EXPECT_EQ(window().size(), QSize(780, 640));
    EXPECT_EQ(window().findChild<QSplitter *>()->sizes(), sizes);
}

TEST_F(Window, IsNoLargerThanTheScreenWhereItComesBack)
{
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    const QRect cases[] = {room.adjusted(30, 40, 400, 500),
                           {room.left() - 50, room.top() + 10, room.width() * 2, 300},
                           {room.left() + 90, room.top() + 70, 330, 310},
                           {room.left(), room.top(), room.width() / 2, room.height() / 2}};
    for (const QRect &left : cases) {
        QWidget before;
        before.setGeometry(left);
        QWidget after;
        restoreGeometryOnScreen(after, before.saveGeometry());
        const bool hadRoom = left.width() < room.width() && left.height() < room.height();
        EXPECT_EQ(after.size() == left.size(), hadRoom) << left.width();
        EXPECT_TRUE(room.contains(after.geometry())) << left.width();
    }
}

TEST_F(Window, ColumnsGoAndComeBackByKeys)
{
    launch({u"# One"_s});
    press(Qt::Key_3, Qt::ControlModifier);
    EXPECT_FALSE(window().noteList().isVisible());
    EXPECT_FALSE(window().sidebar().isVisible());
    EXPECT_TRUE(window().isEditorOnly());
    EXPECT_TRUE(window().editor().isAncestorOf(QApplication::focusWidget()));
    press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_TRUE(window().noteList().isVisible());
    EXPECT_FALSE(window().sidebar().isVisible());
    quit();
    launch();
    EXPECT_EQ(window().columns(), QBMainWindowController::Columns::ListAndEditor);
    press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_TRUE(window().sidebar().isVisible());
    press(Qt::Key_3, Qt::ControlModifier);
    press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(window().searchField().hasFocus()) << "the search brings its column back";
}

TEST_F(Window, OpensNotesByAFewLettersOfTheirTitles)
{
    launch({u"# Sourdough, the slow way"_s, u"# Soup"_s, u"# Reading list"_s});
    const auto openQuickly = [this] {
        press(Qt::Key_O, Qt::ControlModifier);
        while (window().choices().choices().isEmpty()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    };
    openQuickly();
    EXPECT_EQ(window().choices().choices().size(), 3);
    type(u"slow"_s);
    ASSERT_EQ(window().choices().choices().size(), 1);
    press(Qt::Key_Return);
    EXPECT_EQ(window().editor().note()->title(), u"Sourdough, the slow way"_s);
    EXPECT_TRUE(window().editor().textView().hasFocus());
    openQuickly();
    type(u"Pancakes"_s);
    ASSERT_EQ(window().choices().choices().size(), 1) << "what is not there can be written";
    press(Qt::Key_Return);
    EXPECT_EQ(window().editor().note()->text(), u"# Pancakes"_s);
}

TEST_F(Window, NoShortcutIsGivenTwice)
{
    launch({u"# One"_s});
    QHash<QString, QString> owners;
    for (const QAction *command : window().actions() + window().editor().editor().actions()) {
        for (const QKeySequence &keys : command->shortcuts()) {
            // Return and Delete mean what has the keyboard.
            if (command->shortcutContext() == Qt::WidgetShortcut) {
                continue;
            }
            EXPECT_FALSE(owners.contains(keys.toString()))
                << keys.toString().toStdString() << ": " << command->objectName().toStdString() << " and "
                << owners.value(keys.toString()).toStdString();
            owners.insert(keys.toString(), command->objectName());
        }
    }
    EXPECT_GT(owners.size(), 40);
}

TEST_F(Window, ThePaletteFindsEveryCommand)
{
    launch({u"# One"_s});
    selectRow(u"One"_s);
    window().noteList().setFocus();
    press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    QStringList offered;
    for (const Choice &choice : window().choices().choices()) {
        offered.append(choice.title);
    }
    for (const QAction *action : window().actions()) {
        if (action->isEnabled() && action->isVisible() && action->objectName() != u"command-palette") {
            EXPECT_TRUE(offered.contains(action->text().remove(u'&'))) << (action->text()).toStdString();
        }
    }
    type(u"pintop"_s);
    press(Qt::Key_Return);
    EXPECT_TRUE(noteTitled(u"One"_s)->isPinned());
    EXPECT_TRUE(window().noteList().hasFocus()) << "the keyboard is back where it was";
}

TEST_F(Window, EveryThemeHasEveryColour)
{
    launch({u"# One #garden\n- a\n+ b"_s, u"# Two"_s});
    selectRow(u"One #garden"_s);
    QImage before;
    for (const QString &name : QBNotesThemesManager::availableThemesNames()) {
        QBNotesPreferenceManager::sharedPreferenceManager()->setCurrentAppThemeName(name);
        settle();
        const QImage shown = window().grab().toImage().convertToFormat(QImage::Format_RGB32);
        EXPECT_NE(shown, before) << (name).toStdString();
        before = shown;
        bool hasMagenta = false;
        for (int y = 0; y < shown.height() && !hasMagenta; ++y) {
            const auto *line = reinterpret_cast<const QRgb *>(shown.constScanLine(y));
            hasMagenta = std::any_of(line, line + shown.width(), [](QRgb pixel) { return pixel == qRgb(255, 0, 255); });
        }
        EXPECT_FALSE(hasMagenta) << (name).toStdString();
    }
}

TEST_F(Window, FromRightToLeftTheSidebarStandsAtTheRight)
{
    QApplication::setLayoutDirection(Qt::RightToLeft);
    launch({u"# One"_s});
    EXPECT_GT(window().sidebar().mapToGlobal(QPoint()).x(), window().noteList().mapToGlobal(QPoint()).x());
    EXPECT_GT(window().noteList().mapToGlobal(QPoint()).x(), window().editor().mapToGlobal(QPoint()).x());
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(Window, EverythingThatTakesTheKeyboardHasAName)
{
    launch({u"# One"_s});
    for (const QWidget *widget : window().findChildren<QWidget *>()) {
        const bool isButton = qobject_cast<const QToolButton *>(widget) != nullptr;
        if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus ||
            qobject_cast<const QSplitter *>(widget) != nullptr) {
            continue;
        }
        const QString name = isButton ? static_cast<const QToolButton *>(widget)->text() : QString();
        EXPECT_FALSE(widget->accessibleName().isEmpty() && name.isEmpty())
            << widget->metaObject()->className() << ' ' << (widget->objectName()).toStdString();
    }
}

TEST(Symbols, ThereIsOneForEveryEntryAndTag)
{
    QStringList names = tagIconNames();
    names += {u"sidebar-notes"_s, u"sidebar-untagged"_s, u"sidebar-todo"_s,
              u"sidebar-today"_s, u"sidebar-archive"_s,  u"sidebar-trash"_s};
    for (const QString &name : names) {
        EXPECT_TRUE(hasSymbol(name)) << (name).toStdString();
        const QImage drawn = symbol(name, Qt::red, 18, 2).toImage();
        EXPECT_EQ(drawn.size(), QSize(36, 36));
        bool hasInk = false;
        for (int y = 0; y < drawn.height(); ++y) {
            for (int x = 0; x < drawn.width(); ++x) {
                hasInk = hasInk || drawn.pixelColor(x, y).red() > 200;
            }
        }
        EXPECT_TRUE(hasInk) << (name).toStdString();
    }
}

} // namespace

} // namespace quib::tests

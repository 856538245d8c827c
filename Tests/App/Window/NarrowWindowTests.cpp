// A window on a small screen: columns fold away and come back, and whatever is seen is seen whole. The scale comes from
// the environment: the same is run at several.

#include "WindowFixture.h"

#include <Editor/FindBar.h>
#include <Support/QtPrinters.h>
#include <Window/ChoicePanel.h>
#include <Window/EditorPane.h>
#include <Window/ElidingLabel.h>
#include <Window/MessageBar.h>
#include <Window/NoteListView.h>
#include <Window/SearchField.h>
#include <Window/SidebarView.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QScrollArea>
#include <QSplitter>
#include <QTest>
#include <QToolButton>

#include <functional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

constexpr QSize kLeast{360, 300};
/// A screen of 1500 by 1000 pixels at scale 3, less what the desktop takes.
constexpr QSize kSmall{484, 285};

QString nameOf(const QWidget &widget)
{
    QString name = QString::fromLatin1(widget.metaObject()->className()) % u' ' % widget.objectName();
    if (const auto *label = qobject_cast<const QLabel *>(&widget)) {
        name += u" \""_s % label->text() % u'"';
    } else if (const auto *button = qobject_cast<const QAbstractButton *>(&widget)) {
        name += u" \""_s % button->text() % u'"';
    }
    return name;
}

/// The widgets that a layout places, those of the layouts in it too.
void collect(const QLayout &layout, QList<QWidget *> *placed)
{
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem *item = layout.itemAt(i);
        if (item->widget() != nullptr && item->widget()->isVisible()) {
            placed->append(item->widget());
        } else if (item->layout() != nullptr) {
            collect(*item->layout(), placed);
        }
    }
}

bool isTextCut(const QWidget &widget)
{
    if (qobject_cast<const ElidingLabel *>(&widget) != nullptr) {
        return widget.height() < widget.fontMetrics().height();
    }
    if (const auto *label = qobject_cast<const QLabel *>(&widget)) {
        if (label->text().isEmpty()) {
            return false;
        }
        return label->wordWrap()
                   ? label->heightForWidth(label->width()) > label->height()
                   : label->sizeHint().width() > label->width() || label->fontMetrics().height() > label->height();
    }
    if (qobject_cast<const QAbstractButton *>(&widget) != nullptr &&
        qobject_cast<const QLineEdit *>(widget.parentWidget()) == nullptr) {
        return widget.minimumSizeHint().width() > widget.width() || widget.minimumSizeHint().height() > widget.height();
    }
    if (qobject_cast<const QLineEdit *>(&widget) != nullptr) {
        return widget.height() < widget.fontMetrics().height();
    }
    return false;
}

/// What is wrong with what a window shows: texts that are cut, things that lie over each other or beyond an edge.
QStringList faultsOf(const QWidget &window)
{
    QStringList faults;
    QList<QWidget *> all = window.findChildren<QWidget *>();
    for (const QWidget *widget : all) {
        if (!widget->isVisibleTo(&window) || widget->isWindow()) {
            continue;
        }
        if (isTextCut(*widget)) {
            faults.append(u"cut: "_s % nameOf(*widget));
        }
        if (widget->layout() == nullptr) {
            continue;
        }
        QList<QWidget *> placed;
        collect(*widget->layout(), &placed);
        for (qsizetype i = 0; i < placed.size(); ++i) {
            if (!widget->rect().contains(placed[i]->geometry()) && !placed[i]->size().isEmpty()) {
                faults.append(u"beyond the edge: "_s % nameOf(*placed[i]));
            }
            for (qsizetype other = i + 1; other < placed.size(); ++other) {
                if (placed[i]->parentWidget() == placed[other]->parentWidget() &&
                    placed[i]->geometry().intersects(placed[other]->geometry())) {
                    faults.append(nameOf(*placed[i]) % u" over "_s % nameOf(*placed[other]));
                }
            }
        }
    }
    return faults;
}

class NarrowWindow : public WindowFixture
{
protected:
    /// The columns that are seen, by their first letters.
    [[nodiscard]] QString columns() const
    {
        QString seen;
        seen += window().sidebar().isVisible() ? u"S"_s : QString();
        seen += window().noteList().isVisible() ? u"L"_s : QString();
        seen += window().editor().isVisible() ? u"E"_s : QString();
        return seen;
    }
    void resize(QSize size) const
    {
        window().resize(size);
        settle();
        ASSERT_EQ(window().size(), size);
    }
    void launchWithNotes()
    {
        launch({u"# One #garden/roses and some more words than a row has room for\n- milk\n+ bread"_s,
                u"# Two #household/expenses/of a very long name#"_s, u"# Three\nsee [[One]]"_s});
        selectRow(u"Three"_s);
    }
    static void click(QAbstractItemView &view, const QModelIndex &index)
    {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(index).center());
        settle();
    }
};

TEST_F(NarrowWindow, ColumnsGoAsItGetsNarrowAndComeBack)
{
    launchWithNotes();
    const std::vector<std::pair<int, QString>> widths = {{1000, u"SLE"_s}, {672, u"SLE"_s}, {671, u"LE"_s},
                                                         {521, u"LE"_s},   {520, u"E"_s},   {360, u"E"_s},
                                                         {521, u"LE"_s},   {1000, u"SLE"_s}};
    for (const auto &[width, expected] : widths) {
        resize({width, 500});
        EXPECT_EQ(columns(), expected) << width;
        EXPECT_EQ(window().columns(), QBMainWindowController::Columns::All) << "what was chosen stays chosen";
    }
    window().resize(100, 100);
    settle();
    EXPECT_EQ(window().size(), kLeast);
}

TEST_F(NarrowWindow, OneColumnLeadsToTheNextByMouse)
{
    launchWithNotes();
    resize(kLeast);
    const auto button = [](QWidget &in) {
        for (auto *each : in.findChildren<QToolButton *>(u"toggle-columns"_s)) {
            if (each->isVisible()) {
                return each;
            }
        }
        return static_cast<QToolButton *>(nullptr);
    };
    ASSERT_NE(button(window()), nullptr);
    button(window())->click();
    EXPECT_EQ(columns(), u"L"_s);
    ASSERT_NE(button(window()), nullptr);
    button(window())->click();
    EXPECT_EQ(columns(), u"S"_s);
    SidebarView &sidebar = window().sidebar();
    click(sidebar, sidebar.sidebarModel().indexOfIdentifier(u"QBNotesSidebarItem"_s));
    EXPECT_EQ(columns(), u"L"_s);
    click(window().noteList(), window().noteList().model()->index(1, 0));
    EXPECT_EQ(columns(), u"E"_s);
    EXPECT_TRUE(window().editor().note() != nullptr);
}

TEST_F(NarrowWindow, TheKeyboardBringsTheColumnThatItGoesTo)
{
    launchWithNotes();
    resize(kLeast);
    struct Step
    {
        const char *name;
        const char *action;
        QString columns;
    };
    const Step steps[] = {
        {"the search", "search-notes", u"L"_s},
        {"a new note", "new-note", u"E"_s},
        {"the list", "focus-notes", u"L"_s},
        {"the editor", "focus-editor", u"E"_s},
        {"the sidebar", "focus-sidebar", u"S"_s},
        {"the editor alone", "columns-3", u"E"_s},
        {"all", "columns-1", u"S"_s},
        {"the list and the editor", "columns-2", u"L"_s},
    };
    for (const Step &step : steps) {
        ASSERT_NE(window().action(QString::fromLatin1(step.action)), nullptr) << step.action;
        trigger(QString::fromLatin1(step.action));
        settle();
        EXPECT_EQ(columns(), step.columns) << step.name;
        ASSERT_NE(QApplication::focusWidget(), nullptr) << step.name;
        EXPECT_TRUE(QApplication::focusWidget()->isVisible()) << step.name;
    }
    selectRow(u"Three"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(columns(), u"E"_s) << "Return in the list opens the note";
    trigger(u"columns-1"_s);
    resize({1000, 500});
    EXPECT_EQ(columns(), u"SLE"_s);
}

TEST_F(NarrowWindow, AnEmptyOneInvites)
{
    launch();
    resize(kLeast);
    EXPECT_EQ(columns(), u"E"_s);
    EXPECT_EQ(faultsOf(window()), QStringList());
}

TEST_F(NarrowWindow, WhatIsSeenIsSeenWhole)
{
    using Column = QBMainWindowController::Column;
    launchWithNotes();
    const std::vector<std::pair<const char *, std::function<void()>>> states = {
        {"the note", [] {}},
        {"the find bar", [this] { window().editor().action(u"find"_s)->trigger(); }},
        {"replacing", [this] { window().editor().action(u"find-replace"_s)->trigger(); }},
        {"the information", [this] { window().editor().action(u"info"_s)->trigger(); }},
        {"a message",
         [this] {
             window().messages().say(u"“A note with quite a long title” was moved to the trash."_s, u"Undo"_s, {});
         }},
        {"a question",
         [this] {
             window().messages().ask(u"Delete “A note with quite a long title” for good?"_s, {u"Delete"_s, u"Cancel"_s},
                                     u"Do not ask again"_s, {});
         }},
        {"the palette", [this] { trigger(u"command-palette"_s); }},
    };
    for (const QSize size : {QSize(1000, 640), QSize(600, 400), kSmall.expandedTo(kLeast), kLeast}) {
        for (const Column column : {Column::Sidebar, Column::List, Column::Editor}) {
            for (const auto &[name, open] : states) {
                resize(size);
                window().revealColumn(column);
                if (column == Column::Editor || window().editor().isVisible()) {
                    open();
                }
                settle();
                EXPECT_EQ(faultsOf(window()), QStringList())
                    << name << ", " << size.width() << " wide, column " << int(column);
                EXPECT_EQ(window().size(), size) << name << " does not make the window grow";
                window().choices().leave();
                window().messages().press(-1);
                window().editor().editor().findBar().close();
            }
        }
        if (auto *info = window().editor().editor().action(u"info"_s); info->isChecked()) {
            info->trigger();
        }
    }
}

TEST_F(NarrowWindow, RowsAreAsHighAsTheirTexts)
{
    launchWithNotes();
    for (const QSize size : {QSize(1000, 640), kLeast}) {
        resize(size);
        for (QAbstractItemView *view : {static_cast<QAbstractItemView *>(&window().sidebar()),
                                        static_cast<QAbstractItemView *>(&window().noteList())}) {
            window().revealColumn(view == &window().noteList() ? QBMainWindowController::Column::List
                                                               : QBMainWindowController::Column::Sidebar);
            settle();
            for (int row = 0; row < view->model()->rowCount(); ++row) {
                const QRect rect = view->visualRect(view->model()->index(row, 0));
                EXPECT_TRUE(rect.isEmpty() || rect.height() >= view->fontMetrics().height()) << row;
                EXPECT_LE(rect.right(), view->viewport()->width()) << row;
            }
        }
    }
}

TEST_F(NarrowWindow, ThePreferencesFitToo)
{
    launchWithNotes();
    trigger(u"preferences"_s);
    auto *preferences = window().findChild<PreferencesWindow *>();
    ASSERT_NE(preferences, nullptr);
    for (const QSize size : {QSize(880, 640), QSize(484, 300)}) {
        for (int page = 0; page < 6; ++page) {
            preferences->resize(size);
            preferences->setPage(PreferencesWindow::Page(page));
            settle();
            EXPECT_EQ(preferences->size(), size);
            EXPECT_EQ(faultsOf(*preferences), QStringList()) << "page " << page << ", " << size.width() << " wide";
        }
    }
}

} // namespace

} // namespace quib::tests

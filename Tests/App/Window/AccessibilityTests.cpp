#include "WindowFixture.h"

#include <Support/QtPrinters.h>
#include <Window/ChoicePanel.h>
#include <Window/DetachedWindow.h>
#include <Window/EditorPane.h>
#include <Window/MessageBar.h>
#include <Window/QuickNoteWindow.h>
#include <Window/SearchField.h>
#include <Window/SymbolPicker.h>

#include <QAccessible>
#include <QApplication>
#include <QListView>
#include <QTest>
#include <QToolButton>

#include <functional>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

/// What a reader of the screen announces by its name, so that it must have one.
bool needsName(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::PushButton:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::List:
    case QAccessible::ListItem:
    case QAccessible::Tree:
    case QAccessible::TreeItem:
    case QAccessible::Table:
    case QAccessible::MenuItem:
    case QAccessible::Dialog:
    case QAccessible::Window:
    case QAccessible::Slider:
    case QAccessible::SpinBox:
    case QAccessible::PageTab:
        return true;
    default:
        return false;
    }
}

QString described(const QAccessibleInterface &interface)
{
    const QObject *object = interface.object();
    return object == nullptr
               ? u"an item"_s
               : QString(QString::fromLatin1(object->metaObject()->className()) % u' ' % object->objectName());
}

class Accessibility : public WindowFixture
{
protected:
    // As while somebody listens: views tell then that their items are other ones.
    Accessibility() { QAccessible::setActive(true); }
    ~Accessibility() override { QAccessible::setActive(false); }
    /// Walks through everything that is seen below a widget; gives what has no name, or no role though it takes the
    /// keyboard.
    static QStringList unnamed(QWidget &top)
    {
        QStringList found;
        const std::function<void(QAccessibleInterface &, int)> visit = [&found, &visit](QAccessibleInterface &of,
                                                                                        int depth) {
            const auto *widget = qobject_cast<QWidget *>(of.object());
            // Items that a list had before are kept for a while, and told to be invalid.
            if (!of.isValid() || (widget != nullptr && !widget->isVisible()) || of.state().invisible || depth > 30) {
                return;
            }
            const bool takesKeys = widget != nullptr && widget->focusPolicy() != Qt::NoFocus;
            if ((needsName(of.role()) || takesKeys) && of.text(QAccessible::Name).trimmed().isEmpty() &&
                of.text(QAccessible::Value).trimmed().isEmpty()) {
                found.append(QString(described(of) % u" has no name"_s));
            }
            if (takesKeys && of.role() == QAccessible::NoRole) {
                found.append(QString(described(of) % u" has no role"_s));
            }
            for (int child = 0; child < of.childCount(); ++child) {
                if (QAccessibleInterface *below = of.child(child); below != nullptr) {
                    visit(*below, depth + 1);
                }
            }
        };
        visit(*QAccessible::queryAccessibleInterface(&top), 0);
        return found;
    }
};

TEST_F(Accessibility, EverythingThatIsSeenHasANameInEveryState)
{
    launch({u"# One #garden/roses\n- a\n+ b"_s, u"# Two\n[[One #garden/roses]]"_s});
    EXPECT_EQ(unnamed(window()), QStringList());
    selectRow(u"Two"_s);
    window().editor().focusEditor();
    for (const QString &name : {u"info"_s, u"find-replace"_s}) {
        window().editor().action(name)->trigger();
        settle();
        EXPECT_EQ(unnamed(window()), QStringList()) << name.toStdString();
    }
    for (const QString &name : {u"command-palette"_s, u"quick-open"_s, u"search-help"_s}) {
        trigger(name);
        ASSERT_TRUE(window().choices().isVisible());
        const QAbstractItemModel &rows = *window().choices().findChild<QListView *>()->model();
        for (int row = 0; row < rows.rowCount(); ++row) {
            EXPECT_FALSE(rows.index(row, 0).data(Qt::AccessibleTextRole).toString().isEmpty());
        }
        EXPECT_EQ(unnamed(window()), QStringList()) << name.toStdString();
        window().choices().leave();
    }
    window().messages().ask(u"Really?"_s, {u"Yes"_s, u"No"_s}, u"Not again"_s, {});
    EXPECT_EQ(unnamed(window()), QStringList());
    openList(u"garden"_s);
    trigger(u"tag-symbol"_s);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(unnamed(*QApplication::activePopupWidget()), QStringList());
    QApplication::activePopupWidget()->close();
    ASSERT_TRUE(window().showQuickNote());
    settle();
    EXPECT_EQ(unnamed(*window().quickNote()), QStringList());
    window().quickNote()->close();
    selectRow(u"One #garden/roses"_s);
    trigger(u"open-in-window"_s);
    EXPECT_EQ(unnamed(*QApplication::activeWindow()), QStringList());
}

TEST_F(Accessibility, AnEmptyWindowHasNamesToo)
{
    launch();
    EXPECT_EQ(unnamed(window()), QStringList());
}

TEST_F(Accessibility, TabLeadsThroughTheWindowAsTheEyeDoes)
{
    launch({u"# One"_s, u"# Two"_s});
    selectRow(u"Two"_s);
    window().sidebar().setFocus();
    QStringList visited;
    for (int i = 0; i < 60; ++i) {
        QWidget *focus = QApplication::focusWidget();
        ASSERT_NE(focus, nullptr);
        EXPECT_TRUE(focus->isVisible());
        const QString name = focus->objectName();
        if (!visited.isEmpty() && focus == &window().sidebar()) {
            break;
        }
        visited.append(name);
        if (focus == &window().editor().textView()) {
            break; // there a tab is written
        }
        QTest::keyClick(focus, Qt::Key_Tab);
        settle();
    }
    const QStringList wanted{u"sidebar"_s,  u"sort"_s,           u"new-note"_s, u"searchField"_s,
                             u"noteList"_s, u"toggle-columns"_s, u"pin"_s,      u"note-menu"_s};
    EXPECT_EQ(visited.first(std::min(visited.size(), wanted.size())), wanted);
}

TEST_F(Accessibility, NumbersAndMarksAreReadOut)
{
    launch({u"# One #garden\n- a\n+ b"_s});
    waitForCounts();
    const SidebarModel &sidebar = window().sidebar().sidebarModel();
    EXPECT_EQ(sidebar.indexOfIdentifier(u"garden"_s).data(Qt::AccessibleTextRole).toString(), u"garden, 1 note(s)"_s);
    noteTitled(u"One #garden"_s)->pin();
    ASSERT_TRUE(moc().save());
    settle();
    const QString row = window().noteList().noteListModel().index(0).data(Qt::AccessibleTextRole).toString();
    EXPECT_TRUE(row.contains(u"pinned")) << row.toStdString();
    EXPECT_TRUE(row.contains(u"1 of 2 done")) << row.toStdString();
}

} // namespace

} // namespace quib::tests

#include "EditorPane.h"
#include "NoteListView.h"
#include "QBMainWindowController.h"
#include "SidebarView.h"

#include <QAction>
#include <QResizeEvent>
#include <QSplitter>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace quib;

// Which of the columns are seen: those that were chosen, as far as the window has room for them.

namespace {

// Units: points.
constexpr QSize kLeastSize{360, 300};
constexpr int kLeastSidebarWidth = 150;
constexpr int kLeastListWidth = 220;
constexpr int kLeastEditorWidth = 300;

} // namespace

void QBMainWindowController::setLeastSizes()
{
    // Of its own: that of the columns would be that of all of them.
    setMinimumSize(kLeastSize);
    m_sidebar->setMinimumWidth(kLeastSidebarWidth);
    m_listColumn->setMinimumWidth(kLeastListWidth);
    m_editorColumn->setMinimumWidth(kLeastEditorWidth);
}

void QBMainWindowController::setColumns(Columns columns)
{
    m_columns = columns;
    m_actions[u"columns-%1"_s.arg(int(columns) + 1)]->setChecked(true);
    // What is chosen is to be seen, whatever has to go for it.
    revealColumn(columns == Columns::All             ? Column::Sidebar
                 : columns == Columns::ListAndEditor ? Column::List
                                                     : Column::Editor);
}

void QBMainWindowController::revealColumn(Column column)
{
    m_neededColumn = column;
    updateShownColumns();
}

void QBMainWindowController::toggleColumns()
{
    if (m_columns != Columns::EditorOnly && m_listColumn->isHidden()) {
        revealColumn(Column::List);
    } else if (m_sidebar->isHidden()) {
        setColumns(Columns::All);
    } else if (m_editorColumn->isHidden()) {
        revealColumn(Column::List);
    } else {
        setColumns(Columns::ListAndEditor);
    }
}

void QBMainWindowController::updateShownColumns()
{
    bool hasSidebar = m_columns == Columns::All;
    bool hasList = m_columns != Columns::EditorOnly;
    bool hasEditor = true;
    const auto fits = [&] {
        const int handles = (hasSidebar ? 1 : 0) + (hasList ? 1 : 0) + (hasEditor ? 1 : 0) - 1;
        return (hasSidebar ? kLeastSidebarWidth : 0) + (hasList ? kLeastListWidth : 0) +
                   (hasEditor ? kLeastEditorWidth : 0) + handles <=
               width();
    };
    // The sidebar goes first and the list next, unless it is they that are needed.
    if (!fits() && m_neededColumn != Column::Sidebar) {
        hasSidebar = false;
    }
    if (!fits() && m_neededColumn != Column::Editor && (hasSidebar || hasList)) {
        hasEditor = false;
    }
    if (!fits()) {
        hasList = m_neededColumn == Column::List;
    }
    // First those that come, so that there is always one. The keyboard goes with its column, not to whatever is next.
    QWidget *focus = focusWidget();
    const std::initializer_list<std::pair<QWidget *, bool>> columns{
        {m_sidebar, hasSidebar}, {m_listColumn, hasList}, {m_editorColumn, hasEditor}};
    for (const bool comes : {true, false}) {
        for (const auto &[column, isShown] : columns) {
            if (isShown == comes && column->isHidden() == isShown) {
                column->setVisible(isShown);
            }
        }
    }
    // Each column's way to the others.
    if (auto *button = m_listColumn->findChild<QToolButton *>(u"toggle-columns"_s)) {
        button->setVisible(!hasEditor && !hasSidebar);
    }
    if (focus == nullptr || !focus->isVisibleTo(this)) {
        if (hasEditor) {
            m_editor->focusEditor();
        } else if (m_neededColumn == Column::Sidebar) {
            m_sidebar->setFocus();
        } else {
            m_list->setFocus();
        }
    }
}

QBMainWindowController::Column QBMainWindowController::columnWorkedAt() const
{
    // Where there are no notes at all, the editor's column invites to write one.
    const bool hasChoice = m_notes && m_notes->numberOfRows() > 0 && m_editor->note() == nullptr;
    return hasChoice ? Column::List : Column::Editor;
}

void QBMainWindowController::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    // While all are there none is needed more than others: when the window gets narrower, what is worked at stays.
    const bool hasAll = !m_editorColumn->isHidden() && m_listColumn->isHidden() == (m_columns == Columns::EditorOnly) &&
                        m_sidebar->isHidden() == (m_columns != Columns::All);
    if (hasAll) {
        m_neededColumn = columnWorkedAt();
    }
    updateShownColumns();
}

#include "NoteListView.h"

#include "NoteRowDelegate.h"
#include "OverlayScrollBar.h"
#include "SpokenItem.h"
#include "ThemeColors.h"

#include <Editor/ScriptFonts.h>
#include <Graphics/NSFont.h>
#include <Store/QBNote.h>

#include <QContextMenuEvent>
#include <QDrag>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quib {

namespace {

/// Ages are cut to minutes.
constexpr auto kAging = 60s;

/// Whether a key writes something.
bool isText(const QKeyEvent &event)
{
    const QString text = event.text();
    const auto held = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier | Qt::GroupSwitchModifier);
    return held == Qt::NoModifier && !text.isEmpty() && text.front().isPrint() && !text.front().isSpace();
}

} // namespace

NoteListView::NoteListView(QWidget *parent)
    : QListView(parent)
    , m_delegate(new NoteRowDelegate(m_model, this))
{
    setObjectName(u"noteList"_s);
    setAccessibleName(tr("Notes"));
    setModel(&m_model);
    setItemDelegate(m_delegate);
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(ExtendedSelection);
    setUniformItemSizes(true);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setDragEnabled(true);
    setDragDropMode(DragOnly);
    setTabKeyNavigation(false);
    new OverlayScrollBar(this);
    connect(m_delegate, &NoteRowDelegate::pictureArrived, viewport(), qOverload<>(&QWidget::update));
    m_selectionTelling.setSingleShot(true);
    connect(&m_selectionTelling, &QTimer::timeout, this, &NoteListView::selectionDidChange);
    m_aging.setInterval(kAging);
    connect(&m_aging, &QTimer::timeout, viewport(), qOverload<>(&QWidget::update));
    m_aging.start();
    m_scriptFonts = std::make_unique<ScriptFonts>([this] { return fontsInUse(); }, &ScriptFonts::layoutInView);
}

NoteListView::~NoteListView()
{
    m_model.setController(nullptr);
}

QList<NSFont> NoteListView::fontsInUse() const
{
    if (m_model.controller() == nullptr) {
        return {};
    }
    const QBNoteTableCellTextRenderer &renderer = m_model.controller()->noteTableCellTextRenderer();
    // The last two are those in which titles are chosen from other lists.
    return {renderer.titleFont(), renderer.subtitleFont(), NSFont::systemFontOfSize(13),
            NSFont::boldSystemFontOfSize(13)};
}

void NoteListView::setController(QBNotesTableViewController *controller)
{
    m_model.setController(controller);
    m_model.reload();
}

bool NoteListView::selectNote(const QBNote &note)
{
    const auto *results = m_model.controller() != nullptr ? m_model.controller()->fetchedResultController() : nullptr;
    const qint64 row = results != nullptr ? results->indexOfObject(&note) : NSNotFound;
    if (row == NSNotFound) {
        return false;
    }
    selectRows({row});
    scrollTo(m_model.index(int(row)));
    return true;
}

Ref<QBNote> NoteListView::currentNote() const
{
    return m_model.note(currentIndex());
}

void NoteListView::setEmptyText(const QString &text)
{
    if (m_emptyText != text) {
        m_emptyText = text;
        viewport()->update();
    }
}

// QBNotesTableViewInterface

void NoteListView::reloadData()
{
    m_model.reload();
    m_scriptFonts->loadLater();
    selectionMayHaveChanged();
}

void NoteListView::beginUpdates()
{
    m_removedRow = -1;
}

void NoteListView::insertRow(qint64 row)
{
    m_model.insertRowAt(row);
}

void NoteListView::removeRow(qint64 row)
{
    if (selectionModel()->isSelected(m_model.index(int(row)))) {
        m_removedRow = row;
    }
    m_model.removeRowAt(row);
}

void NoteListView::moveRow(qint64 row, qint64 toRow)
{
    m_model.moveRowTo(row, toRow);
}

void NoteListView::endUpdates()
{
    if (m_removedRow >= 0 && !selectionModel()->hasSelection()) {
        if (!m_host.looksAtNeighbour()) {
            selectedNotesDidLeave();
        } else if (m_model.rowCount() > 0) {
            selectRows({std::min<qint64>(m_removedRow, m_model.rowCount() - 1)});
        }
    }
    Q_EMIT rowsDidChange();
    viewport()->update();
}

void NoteListView::reloadRows(const QList<qint64> &rows)
{
    m_model.redraw(rows);
}

QList<qint64> NoteListView::selectedRows() const
{
    QList<qint64> rows;
    for (const QModelIndex &index : selectionModel()->selectedIndexes()) {
        rows.append(index.row());
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void NoteListView::selectRows(const QList<qint64> &rows)
{
    QItemSelection selection;
    for (const qint64 row : rows) {
        selection.select(m_model.index(int(row)), m_model.index(int(row)));
    }
    if (!rows.isEmpty()) {
        selectionModel()->setCurrentIndex(m_model.index(int(rows.constFirst())), QItemSelectionModel::NoUpdate);
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    selectionMayHaveChanged();
}

double NoteListView::scrollPosition() const
{
    return verticalScrollBar()->value();
}

void NoteListView::setScrollPosition(double position)
{
    doItemsLayout();
    verticalScrollBar()->setValue(int(position));
}

void NoteListView::selectedNotesDidLeave()
{
    m_hasLostSelection = true;
    Q_EMIT selectionWasLost();
}

void NoteListView::setSearchFieldString(const QString &string)
{
    m_host.setSearchFieldString(string);
}

void NoteListView::focusSearchField()
{
    m_host.focusSearchField();
}

void NoteListView::ask(const QBNotesTableQuestion &question, const Answer &answer)
{
    m_host.ask(question, answer);
}

// Selection

void NoteListView::selectionMayHaveChanged()
{
    m_selectionTelling.start();
}

void NoteListView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QListView::selectionChanged(selected, deselected);
    m_hasLostSelection = m_hasLostSelection && !selectionModel()->hasSelection();
    selectionMayHaveChanged();
}

void NoteListView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    // The toolkit's list tells assistive programs that the keyboard is at its row also while it is elsewhere.
    hasFocus() ? QListView::currentChanged(current, previous) : QAbstractItemView::currentChanged(current, previous);
}

void NoteListView::focusInEvent(QFocusEvent *event)
{
    QListView::focusInEvent(event);
    if (m_selectsFirstRow && m_model.rowCount() > 0 && !selectionModel()->hasSelection() && !m_hasLostSelection) {
        setCurrentIndex(m_model.index(0));
    }
    tellCurrentItem(*this);
    viewport()->update();
}

void NoteListView::focusOutEvent(QFocusEvent *event)
{
    QListView::focusOutEvent(event);
    viewport()->update();
}

// Keys and mouse

void NoteListView::scrollContentsBy(int dx, int dy)
{
    m_scriptFonts->loadLater();
    QListView::scrollContentsBy(dx, dy);
}

void NoteListView::keyPressEvent(QKeyEvent *event)
{
    m_scriptFonts->loadLater();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (event->modifiers().testFlag(Qt::ControlModifier)) {
            Q_EMIT openInWindowWasRequested();
        } else {
            Q_EMIT openWasRequested();
        }
        return;
    case Qt::Key_Left:
    case Qt::Key_Right: {
        const bool isForward = (event->key() == Qt::Key_Right) == (layoutDirection() == Qt::LeftToRight);
        if (isForward) {
            Q_EMIT openWasRequested();
        } else {
            Q_EMIT leaveToSidebar();
        }
        return;
    }
    case Qt::Key_Up:
        if (event->modifiers() == Qt::NoModifier && currentIndex().row() <= 0) {
            m_host.focusSearchField();
            return;
        }
        break;
    default:
        break;
    }
    if (isText(*event)) {
        Q_EMIT textWasTyped(event->text());
        return;
    }
    QListView::keyPressEvent(event);
}

void NoteListView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid()) {
        Q_EMIT openInWindowWasRequested();
        return;
    }
    QListView::mouseDoubleClickEvent(event);
}

void NoteListView::contextMenuEvent(QContextMenuEvent *event)
{
    QPoint position = event->globalPos();
    if (event->reason() != QContextMenuEvent::Mouse) {
        position = viewport()->mapToGlobal(visualRect(currentIndex()).center());
    } else if (const QModelIndex index = indexAt(viewport()->mapFromGlobal(position)); !index.isValid()) {
        return;
    }
    Q_EMIT contextMenuWasRequested(position);
}

void NoteListView::startDrag(Qt::DropActions supportedActions)
{
    const QModelIndexList indexes = selectedIndexes();
    if (indexes.isEmpty()) {
        return;
    }
    // The number of notes, in a small plate beside the pointer.
    const QString words =
        indexes.size() == 1 ? indexes.constFirst().data().toString() : tr("%n notes", nullptr, int(indexes.size()));
    const QFont font = interfaceFont(12, /*isBold=*/true);
    const QFontMetrics metrics(font);
    const QString shown = metrics.elidedText(words, Qt::ElideRight, 220);
    const double scale = devicePixelRatioF();
    QPixmap plate(QSize(metrics.horizontalAdvance(shown) + 24, 28) * scale);
    plate.setDevicePixelRatio(scale);
    plate.fill(Qt::transparent);
    QPainter painter(&plate);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(themeColor(u"Style Editor Selected Background Color"_s));
    const QRectF frame(0, 0, plate.width() / scale, plate.height() / scale);
    painter.drawRoundedRect(frame, 8, 8);
    painter.setPen(themeColor(u"Style Editor Selected Icon Color"_s));
    painter.setFont(font);
    painter.drawText(frame, int(Qt::AlignCenter), shown);
    painter.end();
    auto *drag = new QDrag(this);
    drag->setMimeData(m_model.mimeData(indexes));
    drag->setPixmap(plate);
    drag->setHotSpot({-8, -8});
    drag->exec(supportedActions, Qt::CopyAction);
}

void NoteListView::paintEvent(QPaintEvent *event)
{
    QListView::paintEvent(event);
    if (m_model.rowCount() == 0 && !m_emptyText.isEmpty()) {
        QPainter painter(viewport());
        painter.setFont(interfaceFont(13));
        painter.setPen(themeColor(u"Note Table Cell Title Empty Color"_s));
        const QRect place = viewport()->rect().adjusted(28, 0, -28, -viewport()->height() / 5);
        painter.drawText(place, int(Qt::AlignCenter) | int(Qt::TextWordWrap), m_emptyText);
    }
}

} // namespace quib

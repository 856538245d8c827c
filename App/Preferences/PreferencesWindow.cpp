#include "PreferencesWindow.h"

#include "AboutPage.h"
#include "AutomationPage.h"
#include "EditorPage.h"
#include "GeneralPage.h"
#include "PreferencesStyle.h"
#include "ShortcutsPage.h"
#include "ThemesPage.h"

#include <Editor/EditorSymbol.h>

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QListWidget>
#include <QScreen>
#include <QScrollArea>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

// Units: points.
constexpr int kListWidth = 190;
constexpr int kEntryHeight = 36;
constexpr QSize kSize{880, 640};
constexpr QSize kLeastSize{480, 300};
/// In a window that is less wide the pages are chosen by their symbols.
constexpr int kLeastWidthForNames = 760;
constexpr int kSymbolListWidth = 56;
/// What the desktop draws around a window.
constexpr QSize kFrame{16, 48};

} // namespace

PreferencesWindow::PreferencesWindow(Host host, QWidget *owner)
    : QWidget(owner, Qt::Window)
    , m_host(std::move(host))
{
    setObjectName(u"preferences"_s);
    setAttribute(Qt::WA_StyledBackground);
    setWindowTitle(tr("Preferences"));
    setMinimumSize(kLeastSize);
    resize(screen() == nullptr ? kSize : kSize.boundedTo(screen()->availableGeometry().size() - kFrame));
    auto *columns = new QHBoxLayout(this);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(0);
    m_list = new QListWidget(this);
    m_list->setObjectName(u"preferencesList"_s);
    m_list->setAccessibleName(tr("Pages of the preferences"));
    m_list->setIconSize({20, 20});
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setUniformItemSizes(true);
    m_pages = new QStackedWidget(this);
    columns->addWidget(m_list);
    columns->addWidget(m_pages, 1);
    makePages();
    connect(m_list, &QListWidget::currentRowChanged, m_pages, &QStackedWidget::setCurrentIndex);
    // Both go by the parts and not by the window, which they may outlive while it ends.
    connect(m_list, &QListWidget::itemSelectionChanged, m_list, [list = m_list] {
        // A click beside the entries takes their selection away; the page shown goes on being marked.
        if (list->selectedItems().isEmpty() && list->currentItem() != nullptr) {
            list->currentItem()->setSelected(true);
        }
    });
    connect(qApp, &QApplication::focusChanged, m_pages, [pages = m_pages](QWidget * /*before*/, QWidget *now) {
        // The toolkit shows what the keyboard goes to from within a page only.
        auto *page = qobject_cast<QScrollArea *>(pages->currentWidget());
        if (page != nullptr && now != nullptr && page->widget() != nullptr && page->widget()->isAncestorOf(now)) {
            page->ensureWidgetVisible(now);
        }
    });
    m_list->setCurrentRow(0);
    placeNames();
    applyStyle();
}

void PreferencesWindow::makePages()
{
    const auto add = [this](const QString &symbol, const QString &title, QWidget *page) {
        auto *entry = new QListWidgetItem(editorSymbol(symbol), title, m_list);
        entry->setSizeHint({0, kEntryHeight});
        entry->setData(Qt::AccessibleTextRole, title);
        entry->setToolTip(title);
        page->setAccessibleName(title);
        m_pages->addWidget(page);
    };
    add(u"preferences-general"_s, tr("General"), new GeneralPage(this));
    add(u"preferences-editor"_s, tr("Editor"), new EditorPage(this));
    add(u"preferences-themes"_s, tr("Themes"), new ThemesPage(this));
    add(u"preferences-automation"_s, tr("Automation"), new AutomationPage(this));
    add(u"preferences-shortcuts"_s, tr("Shortcuts"), new ShortcutsPage(m_host.commandGroups, this));
    add(u"info"_s, tr("About"), new AboutPage(this));
}

PreferencesWindow &PreferencesWindow::show(QWidget &owner, Page page, const Host &host)
{
    auto *window = owner.findChild<PreferencesWindow *>(QString(), Qt::FindDirectChildrenOnly);
    if (window == nullptr) {
        window = new PreferencesWindow(host, &owner);
    }
    window->setPage(page);
    window->QWidget::show();
    window->raise();
    window->activateWindow();
    // Where the keyboard changes nothing but the page, whatever had it when the window was closed.
    window->m_list->setFocus();
    return *window;
}

PreferencesWindow::Page PreferencesWindow::page() const
{
    return Page(m_list->currentRow());
}

void PreferencesWindow::setPage(Page page)
{
    m_list->setCurrentRow(int(page));
}

QWidget *PreferencesWindow::pageWidget(Page page) const
{
    return m_pages->widget(int(page));
}

void PreferencesWindow::placeNames()
{
    const bool hasNames = width() >= kLeastWidthForNames;
    m_list->setFixedWidth(hasNames ? kListWidth : kSymbolListWidth);
    for (int row = 0; row < m_list->count(); ++row) {
        QListWidgetItem *entry = m_list->item(row);
        entry->setText(hasNames ? entry->toolTip() : QString());
    }
}

void PreferencesWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeNames();
}

void PreferencesWindow::applyStyle()
{
    // A style sheet that is set again dresses all widgets anew, and says so by another event.
    const QString sheet = preferencesStyleSheet();
    if (styleSheet() != sheet) {
        setStyleSheet(sheet);
    }
}

void PreferencesWindow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange) {
        applyStyle();
    }
    QWidget::changeEvent(event);
}

void PreferencesWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape || event->matches(QKeySequence::Close)) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

} // namespace quib

#include "WindowStyle.h"

#include "ThemeColors.h"

#include <Themes/QBNotesAppThemeManager.h>

#include <QApplication>
#include <QScreen>
#include <QStyleFactory>
#include <QWidget>

#include <algorithm>
#include <initializer_list>
#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// What a window manager draws around a window: known only once it is shown. Units: points.
constexpr QMargins kFrame{8, 40, 8, 8};

/// As a style sheet writes it.
QString css(const QColor &color)
{
    return u"rgba(%1,%2,%3,%4)"_s.arg(color.red()).arg(color.green()).arg(color.blue()).arg(color.alpha());
}

QColor mixed(const QColor &a, const QColor &b, float part)
{
    const auto mix = [part](float from, float to) { return from + (to - from) * part; };
    return QColor::fromRgbF(mix(a.redF(), b.redF()), mix(a.greenF(), b.greenF()), mix(a.blueF(), b.blueF()));
}

// Names in braces are the colours below.
constexpr auto kStyleSheet = R"(
QMainWindow, QDialog { background: {panel}; }
QSplitter::handle { background: {line}; }
QMenuBar { background: {panel}; color: {panelText}; border: 0; padding: 1px 4px; }
QMenuBar::item { background: transparent; padding: 4px 9px; border-radius: 5px; }
QMenuBar::item:selected { background: {hover}; }
QMenu { background: {panel}; color: {panelText}; border: 1px solid {panelLine}; padding: 5px; }
QMenu::item { padding: 5px 26px 5px 12px; border-radius: 5px; }
QMenu::item:selected { background: {accent}; color: {onAccent}; }
QMenu::item:disabled { color: {faint}; background: transparent; }
QMenu::separator { height: 1px; background: {panelLine}; margin: 5px 8px; }
QMenu::icon { padding-left: 6px; }
QToolTip { background: {panel}; color: {panelText}; border: 1px solid {panelLine}; padding: 4px 6px; }
QToolButton { background: transparent; border: 0; border-radius: 6px; padding: 4px; color: {panelLabel}; }
QToolButton:hover, QToolButton:focus { background: {hover}; }
QToolButton:pressed, QToolButton:checked { background: {pressed}; }
QToolButton::menu-indicator { image: none; }
QPushButton { background: {panel}; color: {panelText}; border: 1px solid {panelLine}; border-radius: 6px;
  padding: 5px 14px; }
QPushButton:hover { background: {hover}; }
QPushButton:focus { border-color: {accent}; }
QPushButton:pressed { background: {pressed}; }
QPushButton[isMain="true"] { background: {accent}; color: {onAccent}; border-color: {accent}; }
QPushButton[isMain="true"]:hover, QPushButton[isMain="true"]:focus { background: {accentStrong}; }
QLineEdit { background: {field}; color: {fieldText}; border: 1px solid {fieldLine}; border-radius: 7px;
  padding: 4px 8px; selection-background-color: {fieldSelection}; selection-color: {fieldSelected}; }
QLineEdit:focus { border-color: {fieldFocus}; }
QAbstractItemView { outline: 0; }
QDialogButtonBox { dialogbuttonbox-buttons-have-icons: 0; }
QScrollBar:vertical { background: transparent; width: 10px; margin: 2px 1px; }
QScrollBar:horizontal { background: transparent; height: 10px; margin: 1px 2px; }
QScrollBar::handle { background: {handle}; border-radius: 3px; margin: 0 1px; }
QScrollBar::handle:vertical { min-height: 32px; }
QScrollBar::handle:horizontal { min-width: 32px; }
QScrollBar::handle:hover { background: {handleHover}; }
QScrollBar::add-line, QScrollBar::sub-line, QScrollBar::add-page, QScrollBar::sub-page { background: transparent;
  border: 0; width: 0; height: 0; }
#listColumn, #listColumn QListView { background: {list}; }
QTreeView#sidebar { background: {side}; border: 0; padding-top: 10px; }
QTreeView#sidebar QScrollBar::handle { background: {sideHandle}; }
#editorColumn { background: {paper}; }
#choicePanel { background: {panel}; border: 1px solid {panelLine}; border-radius: 10px; }
#choicePanel QListView { background: transparent; border: 0; }
#symbolPicker { background: {panel}; border: 1px solid {panelLine}; }
#symbolPicker QListView { background: transparent; border: 0; }
#messageBar { background: {panel}; border: 0; border-top: 1px solid {panelLine}; }
#messageBar QLabel { color: {panelText}; }
#columnTitle { color: {listTitle}; }
)";

} // namespace

QPalette paletteOfTheme()
{
    const QColor panel = themeColor(u"Panel Background Color"_s);
    const QColor text = themeColor(u"Panel Text Color"_s);
    const QColor accent = themeColor(u"Panel Text Highlight Color"_s);
    QPalette palette;
    palette.setColor(QPalette::Window, panel);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, themeColor(u"Note Table View Background Color"_s));
    palette.setColor(QPalette::AlternateBase, panel);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, panel);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, accent);
    palette.setColor(QPalette::ToolTipBase, panel);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, themeColor(u"Note Table Search Placeholder Text Color"_s));
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, themeColor(u"Style Editor Selected Icon Color"_s));
    palette.setColor(QPalette::Link, accent);
    palette.setColor(QPalette::LinkVisited, accent);
    const QColor faint = mixed(panel, text, 0.45F);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, faint);
    }
    return palette;
}

QString styleSheetOfTheme()
{
    const QColor panel = themeColor(u"Panel Background Color"_s);
    const QColor text = themeColor(u"Panel Text Color"_s);
    const QColor accent = themeColor(u"Panel Text Highlight Color"_s);
    const QColor side = themeColor(u"Sidebar Background Color"_s);
    const QColor list = themeColor(u"Note Table View Background Color"_s);
    const std::initializer_list<std::pair<QLatin1StringView, QColor>> colors{
        {"panel"_L1, panel},
        {"panelText"_L1, text},
        {"panelLabel"_L1, themeColor(u"Panel Label Color"_s)},
        {"panelLine"_L1, quietLineColor(u"Panel Separator Color"_s)},
        {"faint"_L1, mixed(panel, text, 0.45F)},
        {"hover"_L1, mixed(panel, text, 0.07F)},
        {"pressed"_L1, mixed(panel, text, 0.13F)},
        {"accent"_L1, accent},
        {"accentStrong"_L1, mixed(accent, text, 0.15F)},
        {"onAccent"_L1, themeColor(u"Style Editor Selected Icon Color"_s)},
        {"line"_L1, quietLineColor(u"Split View Note Table Separator Color"_s)},
        {"field"_L1, themeColor(u"Note Table Search Background Color"_s)},
        {"fieldText"_L1, themeColor(u"Note Table Search Text Color"_s)},
        {"fieldLine"_L1, quietLineColor(u"Note Table Search Border Color"_s)},
        {"fieldFocus"_L1, themeColor(u"Note Table Search Selected Border Color"_s)},
        {"fieldSelection"_L1, themeColor(u"Note Table Search Selected Text Background Color"_s)},
        {"fieldSelected"_L1, themeColor(u"Note Table Seach Selected Text Color"_s)},
        {"handle"_L1, mixed(list, text, 0.22F)},
        {"handleHover"_L1, mixed(list, text, 0.4F)},
        {"list"_L1, list},
        {"listTitle"_L1, themeColor(u"Note Table Cell Title Color"_s)},
        {"side"_L1, side},
        {"sideHandle"_L1, mixed(side, themeColor(u"Sidebar Cell Text Color"_s), 0.25F)},
        {"paper"_L1, themeColor(u"Placeholder Background Color"_s)},
    };
    QString sheet = QString::fromLatin1(kStyleSheet);
    for (const auto &[name, color] : colors) {
        sheet.replace(QString(u'{' % name % u'}'), css(color));
    }
    return sheet;
}

QSize sizeOnScreen(const QWidget &window, QSize wanted)
{
    const QScreen *screen = window.screen();
    return screen == nullptr ? wanted : wanted.boundedTo((screen->availableGeometry() - kFrame).size());
}

void restoreGeometryOnScreen(QWidget &window, const QByteArray &geometry)
{
    window.restoreGeometry(geometry);
    const QRect restored = window.geometry();
    const QScreen *screen = QGuiApplication::screenAt(restored.center());
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    if (screen == nullptr || window.isMaximized() || window.isFullScreen()) {
        return;
    }
    const QRect room = screen->availableGeometry() - kFrame;
    QRect bounded(restored.topLeft(), restored.size().boundedTo(room.size()));
    if (bounded.size() == restored.size()) {
        return; // wherever the user has put it
    }
    bounded.moveRight(std::min(bounded.right(), room.right()));
    bounded.moveBottom(std::min(bounded.bottom(), room.bottom()));
    bounded.moveTopLeft({std::max(bounded.left(), room.left()), std::max(bounded.top(), room.top())});
    window.setGeometry(bounded);
}

WindowStyle::WindowStyle()
{
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    QApplication::setFont(interfaceFont(13));
    if (QBNotesAppThemeManager *manager = QBNotesAppThemeManager::sharedThemeManager(); manager != nullptr) {
        manager->registerStylableObject(*this);
        if (manager->currentTheme()) {
            styleObjectWithThemeManager(*manager);
        }
    }
}

void WindowStyle::styleObjectWithThemeManager(QBThemeManager & /*manager*/)
{
    QApplication::setPalette(paletteOfTheme());
    qApp->setStyleSheet(styleSheetOfTheme());
}

} // namespace quib

#include "PreferencesStyle.h"

#include <QApplication>
#include <QPalette>

#include <initializer_list>
#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

QColor mixed(const QColor &a, const QColor &b, float part)
{
    const auto mix = [part](float from, float to) { return from + (to - from) * part; };
    return QColor::fromRgbF(mix(a.redF(), b.redF()), mix(a.greenF(), b.greenF()), mix(a.blueF(), b.blueF()));
}

// Names in braces are the colours below.
constexpr auto kStyleSheet = R"(
#preferences, #preferencesPage { background: {page}; }
#preferencesPage QLabel { background: transparent; }
#preferencesList { background: {side}; border: 0; border-right: 1px solid {line}; padding: 14px 8px; }
#preferencesList::item { color: {text}; padding: 0 8px; border-radius: 7px; margin: 1px 0; border: 1px solid transparent; }
#preferencesList::item:hover { background: {hover}; }
#preferencesList::item:selected { background: {selected}; color: {text}; }
#preferencesList::item:selected:focus { background: {selected}; border-color: {accent}; }
#preferencesCard { background: {card}; border: 1px solid {line}; border-radius: 10px; }
#preferencesLine { background: {line}; border: 0; margin: 0 14px; }
#preferencesHeading { color: {text}; }
#preferencesHelp { color: {faint}; }
#preferencesSaid { color: {accent}; }
#preferencesCode { color: {text}; font-family: monospace; }
#preferencesGallery, #preferencesSheet, #preferencesText { background: {page}; border: 0; color: {text}; }
#preferencesSegment { padding: 8px 10px; }
#preferencesSegment:checked { border: 2px solid {accent}; padding: 7px 9px; }
#preferences QPushButton:disabled { color: {disabled}; }
)";

} // namespace

QString preferencesStyleSheet()
{
    const QPalette palette = QApplication::palette();
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    const bool isDark = window.lightness() < text.lightness();
    const std::initializer_list<std::pair<QLatin1StringView, QColor>> colors{
        {"page"_L1, window},
        {"side"_L1, mixed(window, text, 0.035F)},
        {"card"_L1, isDark ? mixed(window, text, 0.05F) : mixed(window, Qt::white, 0.7F)},
        {"line"_L1, mixed(window, text, 0.13F)},
        {"hover"_L1, mixed(window, text, 0.06F)},
        {"selected"_L1, mixed(window, text, 0.12F)},
        {"text"_L1, text},
        {"faint"_L1, mixed(window, text, 0.66F)},
        {"disabled"_L1, mixed(window, text, 0.45F)},
        {"accent"_L1, palette.color(QPalette::Highlight)},
    };
    QString sheet = QString::fromLatin1(kStyleSheet);
    for (const auto &[name, color] : colors) {
        sheet.replace(QString(u'{' % name % u'}'), color.name(QColor::HexRgb));
    }
    return sheet;
}

} // namespace quib

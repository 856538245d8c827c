// The marks of a search in the text: seen on every theme's paper, and the text on them is read.

#include <Editor/FindColors.h>
#include <Themes/QBNotesTextThemeManager.h>
#include <Themes/QBNotesThemesManager.h>

#include "EditorFixture.h"

#include <gtest/gtest.h>

#include <QImage>

#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace quib::tests;

TEST(FindColors, CanBeReadAndToldApartInEveryTheme)
{
    QStringList themes = QBNotesThemesManager::availableThemesNames();
    themes.append(u"Print"_s);
    ASSERT_GT(themes.size(), 5);
    for (const QString &name : themes) {
        QBNotesTextThemeManager theme;
        theme.loadTheme(
            QBNotesThemesManager::textThemeForThemeName(name, QBNotesThemesManager::defaultFontThemeName()));
        const auto found = quib::findColorsOfTheme(theme);
        const NSColor ink = theme.baseTextColor().value();
        const NSColor paper = theme.backgroundTextColor().value();
        EXPECT_GE(ink.contrastRatioOnBackground(found.match), 4.5) << name.toStdString();
        EXPECT_GE(ink.contrastRatioOnBackground(found.current), 4.5) << name.toStdString();
        EXPECT_GE(found.currentEdge.contrastRatioOnBackground(paper), 3) << name.toStdString();
        // Neither the marks of other places nor what is selected hides it.
        for (const NSColor &other : {found.match, paper, theme.seletedTextInactiveBackgroundColor().value()}) {
            EXPECT_GE(found.currentEdge.contrastRatioOnBackground(other), 1.5) << name.toStdString();
            EXPECT_NE(found.current, other) << name.toStdString();
        }
    }
}

TEST(FindColors, TheCurrentPlaceIsSeenThroughItsSelection)
{
    EditorFixture editor(0, u"some words and words"_s);
    editor.view().setSelectedRange({5, 5});
    editor.view().setSearchHighlights({{5, 5}, {15, 5}}, 0);
    const auto isCurrentSeen = [&](qint64 location) {
        const NSColor wanted = quib::findColorsOfTheme(*editor.stack().themeManager()).current;
        const QColor color = QColor::fromRgbF(float(wanted.redComponent()), float(wanted.greenComponent()),
                                              float(wanted.blueComponent()));
        const double ratio = editor.view().devicePixelRatioF();
        const QRectF caret = editor.view().caretRectInViewport(location);
        // Above the letters, below the edge.
        const QColor seen(editor.painted().pixel((QPointF(caret.left() + 8, caret.top() + 2) * ratio).toPoint()));
        return std::abs(seen.red() - color.red()) + std::abs(seen.green() - color.green()) +
                   std::abs(seen.blue() - color.blue()) <
               6;
    };
    EXPECT_TRUE(isCurrentSeen(5));
    EXPECT_FALSE(isCurrentSeen(15));
    // The keyboard is elsewhere, as in the bar that searches.
    editor.view().clearFocus();
    ASSERT_FALSE(editor.view().hasFocus());
    EXPECT_TRUE(isCurrentSeen(5));
}

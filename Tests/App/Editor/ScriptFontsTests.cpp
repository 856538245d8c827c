// When the fonts of other scripts are loaded: one by one, and never while somebody works.

#include "EditorFixture.h"

#include <Editor/ScriptFonts.h>
#include <Support/FakeClock.h>

#include <gtest/gtest.h>

using namespace quib;
using namespace quib::tests;

TEST(ScriptFontsTest, AreLoadedOneByOneOnceNobodyIsAtWork)
{
    FakeClock clock;
    EditorFixture editor;
    ScriptFonts fonts(editor.stack().themeManager());
    const auto all = fonts.scriptsLeft().size();
    ASSERT_GT(all, 1);
    clock.advance(100);
    EXPECT_EQ(fonts.scriptsLeft().size(), all) << "nothing was shown yet";
    fonts.loadLater();
    clock.advance(ScriptFonts::kDelay - 0.1);
    fonts.loadLater();
    clock.advance(ScriptFonts::kDelay - 0.1);
    EXPECT_EQ(fonts.scriptsLeft().size(), all) << "somebody was at work again";
    clock.advance(0.11);
    EXPECT_EQ(fonts.scriptsLeft().size(), all - 1);
    clock.advance(ScriptFonts::kInterval + 0.01);
    EXPECT_EQ(fonts.scriptsLeft().size(), all - 2);
    fonts.loadLater();
    clock.advance(ScriptFonts::kDelay - 0.1);
    EXPECT_EQ(fonts.scriptsLeft().size(), all - 2);
    for (qsizetype i = 0; i < all; ++i) {
        clock.advance(ScriptFonts::kDelay);
    }
    EXPECT_TRUE(fonts.scriptsLeft().isEmpty());
    fonts.loadLater();
    clock.advance(100);
}

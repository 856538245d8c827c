// When the letters that the fonts in use have not are looked for: a few at a time, and never while somebody works.

#include "EditorFixture.h"

#include <Editor/ScriptFonts.h>
#include <Support/FakeClock.h>

#include <QSet>

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

using namespace quib;
using namespace quib::tests;

namespace {

struct Loaded
{
    QList<NSFont> fonts;
    QList<std::pair<QString, NSFont>> steps;

    [[nodiscard]] ScriptFonts::Layout layout()
    {
        return [this](const QString &letters, const NSFont &font) {
            steps.append({letters, font});
            return ScriptFonts::layoutInView(letters, font);
        };
    }
    [[nodiscard]] qsizetype count(const NSFont &font) const
    {
        return std::ranges::count(steps, font, [](const auto &step) { return step.second; });
    }
};

} // namespace

TEST(ScriptFontsTest, AreLoadedStepByStepOnceNobodyIsAtWork)
{
    FakeClock clock;
    const EditorFixture editor;
    Loaded loaded{.fonts = {NSFont::systemFontOfSize(13)}, .steps = {}};
    ScriptFonts fonts([&loaded] { return loaded.fonts; }, loaded.layout());
    clock.advance(100);
    EXPECT_TRUE(loaded.steps.isEmpty()) << "nothing was shown yet";
    fonts.loadLater();
    clock.advance(ScriptFonts::kDelay - 0.1);
    fonts.loadLater();
    clock.advance(ScriptFonts::kDelay - 0.1);
    EXPECT_TRUE(loaded.steps.isEmpty()) << "somebody was at work again";
    clock.advance(0.101);
    EXPECT_EQ(loaded.steps.size(), 1);
    clock.advance(ScriptFonts::kInterval + 0.001);
    EXPECT_EQ(loaded.steps.size(), 2);
    EXPECT_GT(fonts.stepsLeft(), 1);
    fonts.loadLater();
    clock.advance(ScriptFonts::kDelay - 0.1);
    EXPECT_EQ(loaded.steps.size(), 2) << "and again";
    clock.advance(100);
    EXPECT_EQ(fonts.stepsLeft(), 0);
    const auto all = loaded.steps.size();
    fonts.loadLater();
    clock.advance(100);
    EXPECT_EQ(loaded.steps.size(), all);
}

TEST(ScriptFontsTest, AreLoadedForEachFontInUse)
{
    FakeClock clock;
    const EditorFixture editor;
    const NSFont plain = NSFont::systemFontOfSize(13);
    const NSFont bold = NSFont::boldSystemFontOfSize(13);
    const NSFont large = NSFont::systemFontOfSize(21);
    Loaded loaded{.fonts = {plain, bold, plain}, .steps = {}};
    ScriptFonts fonts([&loaded] { return loaded.fonts; }, loaded.layout());
    fonts.loadLater();
    clock.advance(100);
    const auto scripts = loaded.count(plain);
    EXPECT_EQ(loaded.count(bold), scripts);
    EXPECT_EQ(loaded.steps.size(), 2 * scripts);
    QSet<QString> letters;
    for (const auto &[some, font] : loaded.steps) {
        letters.insert(some);
    }
    EXPECT_EQ(letters.size(), scripts) << "no letters twice in one font";
    loaded.fonts = {large};
    fonts.loadLater();
    clock.advance(100);
    EXPECT_EQ(loaded.count(large), scripts) << "the size of the text was changed";
}

// The stylers of a text: their order, who runs again after whom, and what a change of syntax makes anew.

#include "StyledNote.h"

#include <Markup/Stylers/QBNoteCheckBoxMarkdownStyler.h>
#include <Markup/Stylers/QBNoteCodeHighlighting.h>

using namespace Qt::StringLiterals;
using Kind = QBNoteStylersManager::Kind;

namespace {

TEST(StylersManager, StylersThatSeeWhatAnotherChangedRunAgain)
{
    const QBNoteStylersManager manager(1);
    const auto after = [&manager](Kind kind) { return manager.doublePassStylersForStyler(*manager.styler(kind)); };
    EXPECT_EQ(after(Kind::Tag),
              (QBNoteStylersManager::Stylers{manager.styler(Kind::HeaderText), manager.styler(Kind::Color)}));
    EXPECT_EQ(after(Kind::Color), QBNoteStylersManager::Stylers{manager.styler(Kind::HeaderText)});
    EXPECT_EQ(after(Kind::UnorderedList), QBNoteStylersManager::Stylers{manager.styler(Kind::Checkbox)});
    EXPECT_TRUE(after(Kind::HeaderText).isEmpty());
    EXPECT_TRUE(QBNoteStylersManager(0)
                    .doublePassStylersForStyler(*QBNoteStylersManager(0).styler(Kind::UnorderedList))
                    .isEmpty());
}

TEST(StylersManager, AChangeOfSyntaxMakesAllStylersAnew)
{
    QBNoteStylersManager manager;
    const auto before = manager.textStylers();
    ASSERT_EQ(before.size(), 26);
    EXPECT_EQ(dynamic_cast<QBNoteCheckBoxMarkdownStyler *>(manager.styler(Kind::Checkbox).get()), nullptr);
    manager.setSyntax(1);
    EXPECT_NE(dynamic_cast<QBNoteCheckBoxMarkdownStyler *>(manager.styler(Kind::Checkbox).get()), nullptr);
    for (const auto &styler : before) {
        EXPECT_FALSE(manager.textStylers().contains(styler));
    }
    EXPECT_NE(manager.styler(Kind::MarkdownImage), manager.styler(Kind::MarkdownImage)) << "a new one at each call";
    EXPECT_EQ(manager.multilineTextStylers(), QBNoteStylersManager::Stylers{manager.styler(Kind::CodeBlock)});
}

class Highlighting : public QBNoteCodeHighlighting
{
public:
    void highlightSyntaxInAttributedString(NSMutableAttributedString & /*attributedString*/, NSRange range) override
    {
        ranges.append(range);
    }
    QList<NSRange> ranges;
};

TEST(StylersManager, WhoColoursCodeIsAskedAtEachPassWhateverTheSyntax)
{
    Highlighting highlighting;
    quib::tests::StyledNote note(0);
    note.stack().stylerManager()->setSyntaxHighlighterDelegate(&highlighting);
    note.storage().loadString(u"```cpp\nint a;\n```"_s);
    note.stack().stylerManager()->setSyntax(1);
    static_cast<void>(note.replace({8, 0}, u"x"_s));
    EXPECT_EQ(highlighting.ranges, (QList<NSRange>{{0, 17}, {0, 18}}));
}

} // namespace

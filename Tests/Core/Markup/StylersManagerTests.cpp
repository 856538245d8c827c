// The stylers of a text: their order, who runs again after whom, and what a change of syntax makes anew.

#include "StyledNote.h"

#include <Markup/Stylers/QBNoteAddressesStyler.h>
#include <Markup/Stylers/QBNoteCheckBoxMarkdownStyler.h>
#include <Markup/Stylers/QBNoteCodeHighlighting.h>
#include <Markup/Stylers/QBNoteLinkedNoteStyler.h>

#include <typeinfo>

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

TEST(StylersManager, AClassIsAskedForExactly)
{
    const QBNoteStylersManager native(0);
    const QBNoteStylersManager markdown(1);
    EXPECT_EQ(native.stylerForClass<QBNoteCheckBoxStyler>(), native.styler(Kind::Checkbox));
    EXPECT_EQ(native.stylerForClass<QBNoteCheckBoxMarkdownStyler>(), nullptr);
    EXPECT_EQ(markdown.stylerForClass<QBNoteCheckBoxMarkdownStyler>(), markdown.styler(Kind::Checkbox));
    EXPECT_EQ(markdown.stylerForClass<QBNoteCheckBoxStyler>(), nullptr) << "the one there is a class below it";
    EXPECT_EQ(native.stylerForClass<QBNoteTitledUrlStyler>(), native.styler(Kind::TitledURL))
        << "links to notes come before it, and are below it";
    EXPECT_EQ(native.stylerForClass<QBNoteAddressesStyler>(), nullptr) << "in no text";
}

TEST(StylersManager, TheListNamesTheStylersThatATextHas)
{
    const QBNoteStylersManager manager(1);
    auto named = manager.defaultStylers();
    auto had = manager.textStylers();
    ASSERT_EQ(named.size(), had.size());
    const auto picture = static_cast<qsizetype>(Kind::MarkdownImage);
    EXPECT_NE(named.takeAt(picture), had.takeAt(picture)) << "a new one at each call";
    EXPECT_EQ(named, had);
}

TEST(StylersManager, MakesStylersOutsideOfTexts)
{
    using Make = QBNoteStylersManager::Styler (*)(int);
    const struct
    {
        Make make;
        Kind kind;
    } cases[] = {
        {&QBNoteStylersManager::checkboxStylerForSyntax, Kind::Checkbox},
        {&QBNoteStylersManager::tagStylerForSyntax, Kind::Tag},
        {&QBNoteStylersManager::colorStylerForSyntax, Kind::Color},
        {&QBNoteStylersManager::codeBlockStylerForSyntax, Kind::CodeBlock},
        {&QBNoteStylersManager::codeInlineStylerForSyntax, Kind::CodeInline},
        {&QBNoteStylersManager::titledURLStylerForSyntax, Kind::TitledURL},
        {&QBNoteStylersManager::headerStylerForSyntax, Kind::HeaderText},
        {&QBNoteStylersManager::highlighterStyleForSyntax, Kind::Marker},
        {&QBNoteStylersManager::genericFileStylerForSyntax, Kind::GenericFile},
        {&QBNoteStylersManager::imageStylerForSyntax, Kind::Image},
    };
    for (const int syntax : {0, 1, 7}) {
        const QBNoteStylersManager manager(syntax);
        for (const auto &test : cases) {
            const auto made = test.make(syntax);
            const auto &object = *made;
            const auto &textStyler = *manager.styler(test.kind);
            EXPECT_TRUE(typeid(object) == typeid(textStyler)) << typeid(object).name() << ", syntax " << syntax;
            EXPECT_NE(made, manager.styler(test.kind));
            EXPECT_NE(made, test.make(syntax)) << "a new one at each call";
            EXPECT_EQ(made->themeManager(), nullptr);
        }
    }
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

// Commands of formatting as tables: a text with its caret or selection, and what a command makes of it.

#include "StyleCommand.h"

#include <gtest/gtest.h>

#include <ostream>

using namespace Qt::StringLiterals;
using quib::tests::styled;

namespace {

struct Case
{
    const char *name;
    const char *command;
    const char16_t *before;
    const char16_t *after;
};

void PrintTo(const Case &row, std::ostream *out)
{
    *out << row.command << ": " << row.name;
}

class Table : public testing::TestWithParam<Case>
{
protected:
    static void expectRow(int syntax)
    {
        const Case &row = GetParam();
        EXPECT_EQ(styled(syntax, QString::fromLatin1(row.command), QString::fromUtf16(row.before)),
                  QString::fromUtf16(row.after))
            << row.command << ": " << row.name;
    }
};

class NativeCommand : public Table
{
};
class MarkdownCommand : public Table
{
};
/// Rows that hold in both syntaxes.
class AnyCommand : public Table
{
};

TEST_P(NativeCommand, MakesOfTheText)
{
    expectRow(0);
}
TEST_P(MarkdownCommand, MakesOfTheText)
{
    expectRow(1);
}
TEST_P(AnyCommand, MakesOfTheText)
{
    expectRow(0);
    expectRow(1);
}

// Inside lines

const Case kNativeInline[] = {
    {"a selection", "bold", u"a [word] b", u"a [*word*] b"},
    {"a selection with its markers", "bold", u"a [*word*] b", u"a [word] b"},
    {"a selection between its markers", "bold", u"a *[word]* b", u"a [word] b"},
    {"one marker selected, one outside", "bold", u"a [*word]* b", u"a [word] b"},
    {"a selection with blanks at its ends", "bold", u"a[ word  ]b", u"a [*word*]  b"},
    {"blanks alone", "bold", u"a[  ]b", u"nothing"},
    {"a caret", "bold", u"a | b", u"a *|* b"},
    {"a caret in an empty pair", "bold", u"a *|* b", u"a | b"},
    {"a caret in a styled word", "bold", u"a *wo|rd* b", u"a wo|rd b"},
    {"a caret before a styled word", "bold", u"a *|word* b", u"a |word b"},
    {"a caret behind a closing marker", "bold", u"a *b*|", u"a *b**|*"},
    {"an empty text", "bold", u"|", u"*|*"},
    {"an empty pair selected", "bold", u"a [**] b", u"a | b"},
    {"three lines", "bold", u"[one\ntwo\nthree]", u"[*one*\n*two*\n*three*]"},
    {"three styled lines", "bold", u"[*one*\n*two*\n*three*]", u"[one\ntwo\nthree]"},
    {"parts of lines with an empty one between", "bold", u"o[ne\n\n  tw]o", u"o[*ne*\n\n  *tw*]o"},
    {"nothing but line ends", "bold", u"a[\n\n]b", u"nothing"},
    {"inside a word, which has no boundaries to keep", "bold", u"a[b]c", u"a[*b*]c"},
    {"items of lists keep their markers", "bold", u"[* one\n\t- two\n1. three]", u"* [*one*\n\t- *two*\n1. *three*]"},
    {"a quote keeps its marker", "bold", u"[> one]", u"> [*one*]"},
    {"a styled stretch inside", "bold", u"[a *b* c]", u"[*a b c*]"},
    {"from plain into a styled stretch", "bold", u"[a *b] c*", u"[*a b] c*"},
    {"out of a styled stretch", "bold", u"*a [b* c]", u"*a [b c*]"},
    {"from one styled stretch into the next", "bold", u"*a [b* c *d] e*", u"*a [b c d] e*"},
    {"out of a stretch and up to the next, over blanks", "bold", u"*a [b* c] *d*", u"*a [b c] d*"},
    {"right behind a styled stretch", "bold", u"*ab*[cd] e", u"*ab[cd*] e"},
    {"between styled stretches that touch", "bold", u"*ab*[cd]*ef*", u"*ab[cd]ef*"},
    {"beside a styled stretch with a blank between", "bold", u"*ab* [cd]", u"*ab* [*cd*]"},
    {"within a styled stretch", "bold", u"*a [b] c*", u"nothing"},
    {"other markers inside", "bold", u"[*/word/*]", u"[/word/]"},
    {"other markers outside its own", "bold", u"[/*word*/]", u"[/word/]"},
    {"other markers between its own and the text", "bold", u"*/[word]/*", u"[/word/]"},
    {"a header, which has no markup inside", "bold", u"# a [word]", u"# a [*word*]"},
    {"unpainted markers in a header", "bold", u"# a [*word*]", u"# a [word]"},
    {"around code", "bold", u"[a `b` c]", u"[*a `b` c*]"},
    {"unpainted markers around code", "bold", u"[*a `b` c*]", u"[a `b` c]"},
    {"beside characters of two units", "bold", u"\U0001F600[\U0001F600]\U0001F600",
     u"\U0001F600[*\U0001F600*]\U0001F600"},
    {"a selection", "italic", u"a [word] b", u"a [/word/] b"},
    {"a styled selection", "italic", u"a [/word/] b", u"a [word] b"},
    {"an empty pair", "italic", u"/|/", u"|"},
    {"a caret", "italic", u"|", u"/|/"},
    {"a word between blanks", "underline", u"a [word] b", u"a [_word_] b"},
    {"a word inside a word gets blanks", "underline", u"a[b]c", u"a [_b_] c"},
    {"a word before a full stop needs none", "underline", u"a [word].", u"a [_word_]."},
    {"a word behind a bracket", "underline", u"([word])", u"( [_word_])"},
    {"at the edges of the text", "underline", u"[word]", u"[_word_]"},
    {"at the edges of lines", "underline", u"a\n[word]\nb", u"a\n[_word_]\nb"},
    {"a caret inside a word", "underline", u"wo|rd", u"wo _|_ rd"},
    {"a styled word", "underline", u"a [_word_] b", u"a [word] b"},
    {"a caret in a styled word", "underline", u"a _wo|rd_.", u"a wo|rd."},
    {"a selection", "strike", u"a[b]c", u"a [-b-] c"},
    {"before a comma", "strike", u"[b], c", u"[-b-], c"},
    {"a styled selection", "strike", u"a -[b]- c", u"a [b] c"},
    {"a selection", "marker", u"a [b] c", u"a [::b::] c"},
    {"a styled selection", "marker", u"a [::b::] c", u"a [b] c"},
    {"right behind another", "marker", u"::a::[b]", u"::a[b::]"},
    {"code inside", "marker", u"[::a `b` c::]", u"[a `b` c]"},
    {"a caret beside code inside", "marker", u"::a| `b` c::", u"a| `b` c"},
    {"a caret", "marker", u"|", u"::|::"},
    {"an empty pair", "marker", u"::|::", u"|"},
};
INSTANTIATE_TEST_SUITE_P(Inline, NativeCommand, testing::ValuesIn(kNativeInline));

const Case kMarkdownInline[] = {
    {"a selection", "bold", u"a [word] b", u"a [**word**] b"},
    {"a styled selection", "bold", u"a [**word**] b", u"a [word] b"},
    {"the other marker", "bold", u"a [__word__] b", u"a [word] b"},
    {"what the other marker looks like", "bold", u"[__]", u"[**__**]"},
    {"what the other marker looks like, styled", "bold", u"[**__**]", u"[__]"},
    {"what the other marker looks like, styled", "italic", u"a [*_*] b", u"a [_] b"},
    {"two writings side by side", "bold", u"[**a**__b__]", u"[ab]"},
    {"half of a marker selected", "bold", u"a *[*word*]* b", u"a [word] b"},
    {"a caret", "bold", u"a |", u"a **|**"},
    {"an empty pair", "bold", u"a **|**", u"a |"},
    {"an empty pair on a line of its own is a separator", "bold", u"|", u"|****"},
    {"a caret within a marker", "bold", u"*|*word**", u"|word"},
    {"three lines", "bold", u"[one\ntwo\nthree]", u"[**one**\n**two**\n**three**]"},
    {"a selection", "italic", u"a [word] b", u"a [*word*] b"},
    {"a styled selection", "italic", u"a [*word*] b", u"a [word] b"},
    {"the other marker", "italic", u"a [_word_] b", u"a [word] b"},
    {"a bold selection", "italic", u"[**word**]", u"[***word***]"},
    {"a selection in both", "italic", u"[***word***]", u"[**word**]"},
    {"a caret in an empty bold pair", "italic", u"a **|**", u"a ***|***"},
    {"a caret in empty pairs of both", "italic", u"a ***|***", u"a **|**"},
    {"a selection in both", "bold", u"[***word***]", u"[*word*]"},
    {"inside a word gets blanks", "underline", u"a[b]c", u"a [~b~] c"},
    {"a styled word", "underline", u"a [~b~] c", u"a [b] c"},
    {"a caret in an empty pair of strike", "underline", u"~~|~~", u"~~ ~|~ ~~"},
    {"a selection", "strike", u"a [b] c", u"a [~~b~~] c"},
    {"a styled selection", "strike", u"a [~~b~~] c", u"a [b] c"},
    {"a selection", "marker", u"a [b] c", u"a [::b::] c"},
};
INSTANTIATE_TEST_SUITE_P(Inline, MarkdownCommand, testing::ValuesIn(kMarkdownInline));

const Case kAnyInline[] = {
    {"a selection", "code", u"a [b] c", u"a [`b`] c"},
    {"a selection keeps its blanks", "code", u"a[ b ]c", u"a[` b `]c"},
    {"a styled selection", "code", u"a [`b`] c", u"a [b] c"},
    {"a caret", "code", u"a |", u"a `|`"},
    {"an empty pair", "code", u"a `|`", u"a |"},
    {"a caret in code", "code", u"`a |b`", u"a |b"},
    {"two lines", "code", u"[a\nb]", u"[`a`\n`b`]"},
};
INSTANTIATE_TEST_SUITE_P(Inline, AnyCommand, testing::ValuesIn(kAnyInline));

// Whole lines

const Case kAnyLines[] = {
    {"an empty text", "bullet", u"|", u"* |"},
    {"a caret", "bullet", u"wo|rd", u"* wo|rd"},
    {"a caret at the start", "bullet", u"|word", u"* |word"},
    {"a selection", "bullet", u"[word]", u"* [word]"},
    {"an item", "bullet", u"* wo|rd", u"wo|rd"},
    {"an item with the caret at its start", "bullet", u"a\n|* b\nc", u"a\n|b\nc"},
    {"a selection with the marker and a line behind", "bullet", u"[* a]\nbcd", u"[a]\nbcd"},
    {"an indented line", "bullet", u"\t  wo|rd", u"\t  * wo|rd"},
    {"an indented item", "bullet", u"\t* wo|rd", u"\two|rd"},
    {"a caret within the indentation", "bullet", u"\t|\tword", u"\t|\t* word"},
    {"an empty line between", "bullet", u"a\n|\nb", u"a\n* |\nb"},
    {"the empty line at the end", "bullet", u"a\n|", u"a\n* |"},
    {"several lines", "bullet", u"a\nb[c\n\n\tde]f\ng", u"a\n[* bc\n* \n\t* def\n]g"},
    {"several items", "bullet", u"a\n* b[c\n* \n\t* de]f\ng", u"a\n[bc\n\n\tdef\n]g"},
    {"items and others", "bullet", u"[* a\nb]", u"[* a\n* b]"},
    {"a quote", "bullet", u"> wo|rd", u"* wo|rd"},
    {"a header", "bullet", u"## wo|rd", u"* wo|rd"},
    {"a numbered item", "bullet", u"\t3. wo|rd", u"\t* wo|rd"},
    {"lines of all kinds", "bullet", u"[# a\n> b\n1. c\n\t* d]", u"[* a\n* b\n* c\n\t* d]"},
    {"an item with another sign", "bullet", u"\u2022 wo|rd", u"* wo|rd"},
    {"a caret", "quote", u"wo|rd", u"> wo|rd"},
    {"a quote", "quote", u"> wo|rd", u"wo|rd"},
    {"the marker comes first", "quote", u"\two|rd", u"> \two|rd"},
    {"an indented item", "quote", u"\t* wo|rd", u"> \two|rd"},
    {"several lines", "quote", u"[a\nb]\nc", u"[> a\n> b\n]c"},
    {"several quotes", "quote", u"[> a\n> b]\nc", u"[a\nb\n]c"},
    {"a caret", "h1", u"wo|rd", u"# wo|rd"},
    {"its own level", "h1", u"# wo|rd", u"wo|rd"},
    {"another level", "h1", u"## wo|rd", u"# wo|rd"},
    {"another level", "h3", u"# wo|rd", u"### wo|rd"},
    {"another level with the caret at the start", "h3", u"|# word", u"### |word"},
    {"the deepest level", "h6", u"wo|rd", u"###### wo|rd"},
    {"an empty text", "h2", u"|", u"## |"},
    {"a quote", "h2", u"> wo|rd", u"## wo|rd"},
    {"several headers go by the first", "h1", u"[# a\n## b]", u"[a\nb]"},
    {"several headers of another level", "h2", u"[# a\n## b]", u"[## a\n## b]"},
    {"a header", "plain", u"### wo|rd", u"wo|rd"},
    {"a plain line", "plain", u"wo|rd", u"nothing"},
    {"a quote", "plain", u"> wo|rd", u"wo|rd"},
    {"no such level", "h7", u"wo|rd", u"nothing"},
    {"no such level", "h0", u"wo|rd", u"nothing"},
    {"a caret", "number", u"wo|rd", u"1. wo|rd"},
    {"an item", "number", u"12. wo|rd", u"wo|rd"},
    {"an empty text", "number", u"|", u"1. |"},
    {"several lines", "number", u"[a\nb\nc]", u"[1. a\n2. b\n3. c]"},
    {"several items", "number", u"[1. a\n2. b\n3. c]", u"[a\nb\nc]"},
    {"goes on with the list above", "number", u"4. a\nb|", u"4. a\n5. b|"},
    {"goes on with the level above", "number", u"4. a\n\t1. b\nc|", u"4. a\n\t1. b\n5. c|"},
    {"does not go on over a plain line", "number", u"4. a\nb\nc|", u"4. a\nb\n1. c|"},
    {"indented lines have a count of their own", "number", u"[a\n\tb\n\tc\nd\n\te]",
     u"[1. a\n\t1. b\n\t2. c\n2. d\n\t1. e]"},
    {"items and others count anew", "number", u"[7. a\nb]", u"[1. a\n2. b]"},
    {"a bullet", "number", u"\t* wo|rd", u"\t1. wo|rd"},
};
INSTANTIATE_TEST_SUITE_P(Lines, AnyCommand, testing::ValuesIn(kAnyLines));

const Case kNativeLines[] = {
    {"a caret", "box", u"wo|rd", u"- wo|rd"},
    {"an open item", "box", u"- wo|rd", u"wo|rd"},
    {"a checked item becomes an open one", "box", u"+ wo|rd", u"- wo|rd"},
    {"an indented checked item is not seen as another", "box", u"\t+ wo|rd", u"\two|rd"},
    {"a bullet", "box", u"* wo|rd", u"- wo|rd"},
    {"several lines", "box", u"[a\n\tb]", u"[- a\n\t- b]"},
    {"a box", "bullet", u"+ wo|rd", u"* wo|rd"},
};
INSTANTIATE_TEST_SUITE_P(Lines, NativeCommand, testing::ValuesIn(kNativeLines));

const Case kMarkdownLines[] = {
    {"a caret", "box", u"wo|rd", u"- \\[ \\] wo|rd"},
    {"an open item", "box", u"- \\[ \\] wo|rd", u"wo|rd"},
    {"a checked item becomes an open one", "box", u"- \\[x\\] wo|rd", u"- \\[ \\] wo|rd"},
    {"a bullet", "box", u"* wo|rd", u"- \\[ \\] wo|rd"},
    {"a bullet by a dash", "bullet", u"- wo|rd", u"* wo|rd"},
    {"several lines", "box", u"[a\n\tb]", u"[- \\[ \\] a\n\t- \\[ \\] b]"},
    {"a box", "bullet", u"- \\[x\\] wo|rd", u"* wo|rd"},
    {"a box keeps its marker", "bold", u"[- \\[ \\] one]", u"- \\[ \\] [**one**]"},
};
INSTANTIATE_TEST_SUITE_P(Lines, MarkdownCommand, testing::ValuesIn(kMarkdownLines));

// Lines of their own

const Case kAnyFences[] = {
    {"an empty text", "fence", u"|", u"```\n|\n```"},
    {"an empty block", "fence", u"```\n|\n```", u"|"},
    {"a caret", "fence", u"a\nb|c\nd", u"a\n```\nb|c\n```\nd"},
    {"a caret in a block", "fence", u"a\n```\nb|c\n```\nd", u"a\nb|c\nd"},
    {"the last line", "fence", u"a\nb|c", u"a\n```\nb|c\n```"},
    {"a block at the end", "fence", u"a\n```\nb|c\n```", u"a\nb|c"},
    {"the empty line at the end", "fence", u"a\n|", u"a\n```\n|\n```"},
    {"an empty line", "fence", u"a\n|\nb", u"a\n```\n|\n```\nb"},
    {"several lines", "fence", u"[a\nb]\nc", u"```\n[a\nb]\n```\nc"},
    {"a caret in a fence", "fence", u"a\n``|`swift\nb\n```\nd", u"a\n|b\nd"},
    {"a block with a language", "fence", u"```swift\na\n[b\nc]\n```\n", u"a\n[b\nc]\n"},
    {"a block without a body", "fence", u"a\n```|\n```", u"a\n|"},
    {"lines up to a block", "fence", u"[a\n```swift\nb]\n```\nc", u"```\n[a\nb]\n```\nc"},
    {"lines behind a block", "fence", u"a\n```swift\nb[c\n```\nd]\ne", u"a\n```swift\nb[c\nd]\n```\ne"},
    {"lines around two blocks", "fence", u"```\n[a\n```\nb\n```\nc]\n```", u"```\n[a\nb\nc]\n```"},
    {"two blocks", "fence", u"```\n[a\n```\n```\nb]\n```\nc", u"[a\nb]\nc"},
    {"below a fence that waits", "fence", u"```\na|", u"```\na|\n```"},
    {"further below a fence that waits", "fence", u"```swift\nb\na|\nc", u"```swift\nb\na|\n```\nc"},
    {"the empty line below a fence that waits", "fence", u"```\n|", u"```\n|\n```"},
    {"a fence that waits behind a block", "fence", u"```\nx\n```\n```\na|", u"```\nx\n```\n```\na|\n```"},
    {"a fence that waits, alone", "fence", u"a\n```|", u"a\n```|\n```"},
    {"a fence that waits above", "fence", u"[```\na]\nb", u"[```\na]\n```\nb"},
    {"a fence that waits between", "fence", u"[y\n```\na]\nb", u"```\n[y\na]\n```\nb"},
    {"a fence that waits at the end", "fence", u"[a\n```]", u"```\n[a\n```]"},
    {"a fence that waits below", "fence", u"a|\nb\n```", u"```\na|\n```\nb\n```"},
    {"line ends of two units", "fence", u"a\r\n```\nb|\r\n```", u"a\r\nb|"},
    {"an empty text", "rule", u"|", u"---\n|"},
    {"within a line", "rule", u"a|b", u"a\n---\n|b"},
    {"at the start of a line", "rule", u"a\n|b", u"a\n---\n|b"},
    {"a selection is replaced", "rule", u"a[bc]d", u"a\n---\n|d"},
    {"a selection from the start", "rule", u"[a\nb]", u"---\n|"},
    {"at the end", "rule", u"a|", u"a\n---\n|"},
};
INSTANTIATE_TEST_SUITE_P(Fences, AnyCommand, testing::ValuesIn(kAnyFences));

// Numbers

const Case kNumbers[] = {
    {"a list in order", "renumber", u"1. a\n2. b|\n3. c", u"nothing"},
    {"a new item between", "renumber", u"1. a\n2. n|\n2. b\n3. c", u"1. a\n2. n|\n3. b\n4. c"},
    {"an item less", "renumber", u"1. a\n|3. c\n4. d", u"1. a\n|2. c\n3. d"},
    {"from the first number on", "renumber", u"5. a\n6. n\n6. b|", u"5. a\n6. n\n7. b|"},
    {"a caret behind a number that grows", "renumber", u"9. a\n1. b|c", u"9. a\n10. b|c"},
    {"a selection over numbers that grow", "renumber", u"9. a\n1. [b\n1. c]\n1. d", u"9. a\n10. [b\n11. c]\n12. d"},
    {"each indentation for itself", "renumber", u"1. a\n\t2. b\n\t9. c\n1. d|\n\t7. e",
     u"1. a\n\t1. b\n\t2. c\n2. d|\n\t1. e"},
    {"a tab is four blanks", "renumber", u"1. a\n\t1. b\n    1. c|", u"1. a\n\t1. b\n    2. c|"},
    {"less far in than the first", "renumber", u"\t5. a\n\t5. b\n7. c|", u"\t5. a\n\t6. b\n1. c|"},
    {"a plain line ends a list", "renumber", u"1. a\nb\n5. [c\n5. d]", u"1. a\nb\n5. [c\n6. d]"},
    {"all lists of a selection", "renumber", u"1. [a\n1. b\nx\n5. c\n5. d]", u"1. [a\n2. b\nx\n5. c\n6. d]"},
    {"a plain line between lists", "renumber", u"1. a\n1. b\nx|\n5. c\n5. d", u"nothing"},
    {"right numbers in another writing stay", "renumber", u"1. a\n02. b|\n\u0663. c", u"nothing"},
    {"numbers that are too large", "renumber", u"99999999999999999999. a\n1. b|",
     u"99999999999999999999. a\n9223372036854775807. b|"},
    {"an empty text", "renumber", u"|", u"nothing"},
    {"the line behind a list", "renumber", u"1. a\n1. b\n|", u"nothing"},
};
INSTANTIATE_TEST_SUITE_P(Numbers, AnyCommand, testing::ValuesIn(kNumbers));

} // namespace

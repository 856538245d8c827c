#include <Markup/Syntax/QBItalicDataDetector.h>
#include <Markup/Syntax/QBNoteSection.h>
#include <Markup/Syntax/QBNoteTextParser.h>
#include <Markup/Syntax/StylerSyntax.h>
#include <Markup/Syntax/TextHumanizer.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace quib::syntax;

namespace {

/// The matches of a construct in a text, one a string, with "|" between the groups' texts.
QStringList found(Construct construct, int syntax, const QString &text)
{
    QStringList list;
    for (const auto &match : stylerRegularExpression(construct, syntax).matchesInString(text, 0, {0, text.size()})) {
        QStringList groups;
        for (qint64 i = match.numberOfRanges() > 1 ? 1 : 0; i < match.numberOfRanges(); ++i) {
            groups.append(text.mid(match.rangeAtIndex(i).location, match.rangeAtIndex(i).length));
        }
        list.append(groups.join(u'|'));
    }
    return list;
}

struct SyntaxCase
{
    Construct construct;
    int syntax;
    QString text;
    QStringList matches;
};

} // namespace

TEST(StylerSyntax, TellsConstructsFromPlainText)
{
    const QList<SyntaxCase> cases{
        {Construct::Header, 0, u"# a\n#b\n####### c\n  # d\n###### e"_s, {u"#"_s, u"######"_s}},
        {Construct::Quote, 0, u"> a\n >b\n>c"_s, {u">"_s}},
        {Construct::UnorderedList, 0, u"* a\n \t• b\n- c\n*d"_s, {u"*"_s, u"•"_s}},
        {Construct::UnorderedList, 1, u"- a\n- [ ] b\n+ c\n- [x] d\n- [y] e"_s, {u"-"_s, u"+"_s, u"-"_s}},
        {Construct::Checkbox, 0, u"- a\n  + b\n-c"_s, {u"-"_s, u"+"_s}},
        {Construct::Checkbox, 1, u"- [ ] a\n- [x] b\n- [X] c\n- d"_s, {u"- [ ]"_s, u"- [x]"_s}},
        {Construct::OrderedList, 0, u"1. a\n 12. b\n3.c\nx 4. d"_s, {u"1."_s, u"12."_s}},
        {Construct::LineSeparator, 0, u"---\n--- \n----\n***"_s, {u"---"_s}},
        {Construct::LineSeparator, 1, u"---\n----\n***\n__\n"_s, {u"---"_s, u"----"_s, u"***"_s}},
        {Construct::CodeBlock, 0, u"```c\nx\n```swift\ny"_s, {u"```|c|\nx\n|```swift"_s}},
        {Construct::CodeBlock, 0, u"```\nnever closed"_s, {}},
        {Construct::CodeInline, 0, u"`a` ``` `b\n`"_s, {u"`|a|`"_s, u"`||`"_s}},
        {Construct::Bold, 0, u"a*b*c * no* **"_s, {u"*|b|*"_s, u"*||*"_s}},
        {Construct::Bold, 1, u"**a** __b__ *c*"_s, {u"**|a|**"_s, u"__|b|__"_s}},
        {Construct::Underline, 0, u"(_a_) b_c_d _e_."_s, {u"_|a|_"_s, u"_|e|_"_s}},
        {Construct::Underline, 1, u"~a~ ~~b~~"_s, {u"~|a|~"_s}},
        {Construct::Strike, 0, u"-a b- c-d-e"_s, {u"-|a b|-"_s}},
        {Construct::Strike, 1, u"~~a~~ ~b~"_s, {u"~~|a|~~"_s}},
        {Construct::Highlighter, 0, u"::a b:: ::::: ::c:::"_s, {u"::|a b|::"_s, u"::||::"_s, u"::|c|::"_s}},
        {Construct::Wiki, 0, u"[[a b]] [[ c]]"_s, {u"[[|a b|]]"_s}},
        {Construct::TitledURL, 0, u"[a](b) [c [d](e) [f]()"_s, {u"a|b"_s, u"d|e"_s}},
        {Construct::LinkedNote, 0, u"[a](quib://x) [b](http://y)"_s, {u"a|quib://x"_s}},
        {Construct::MarkdownImage, 0, u"![a](b \"c\") ![](d)"_s, {u"a|b \"c\""_s, u"|d"_s}},
        {Construct::GenericFile, 0, u"[file:1/a.txt] [image:2/b.png]"_s, {u"file|1|a.txt"_s}},
        {Construct::Image, 0, u"[image:2/b.png]"_s, {u"image|2|b.png"_s}},
        {Construct::InlineArrow, 0, u"a -> b <- c->d"_s, {u"->"_s, u"<-"_s}},
        {Construct::Color, 0, u"#123456 #12345g (#abcdef) x#abcdef"_s, {u"#123456"_s, u"#abcdef"_s}},
        {Construct::Italic, 0, u"/a b/ 2/3 and 4/5 x / y\n/no\nend/"_s, {u"/|a b|/"_s}},
        {Construct::Italic, 1, u"*a* _b_"_s, {u"*|a|*"_s, u"_|b|_"_s}},
        {Construct::InvalidCharacter, 0, u"a\u00A0b\u3000"_s, {u"\u00A0"_s, u"\u3000"_s}},
    };
    for (const SyntaxCase &entry : cases) {
        EXPECT_EQ(found(entry.construct, entry.syntax, entry.text), entry.matches) << entry.text.toStdString();
    }
}

TEST(StylerSyntax, FindsMarkersThatAttachmentsReplaced)
{
    const auto count = [](Construct construct, int syntax, const QString &text) {
        return attachmentRegularExpression(construct, syntax)->numberOfMatchesInString(text, 0, {0, text.size()});
    };
    EXPECT_EQ(count(Construct::Header, 0, u"\uFFFC a"_s), 1);
    EXPECT_EQ(count(Construct::Header, 0, u" \uFFFC a"_s), 0);
    EXPECT_EQ(count(Construct::UnorderedList, 0, u" \uFFFC a"_s), 1);
    EXPECT_EQ(count(Construct::UnorderedList, 1, u"\uFFFC [ ] a"_s), 0);
    EXPECT_EQ(count(Construct::LineSeparator, 0, u"\uFFFC"_s), 1);
    EXPECT_EQ(count(Construct::TitledURL, 0, u"[a](\uFFFC)"_s), 1);
    EXPECT_EQ(count(Construct::Color, 0, u"\uFFFC#aabbcc"_s), 1);
    EXPECT_EQ(attachmentRegularExpression(Construct::Bold, 0), nullptr);
}

TEST(NoteTextParser, TitlesLoseTheirMarkupUnlessTheyAreHeadings)
{
    const QList<std::pair<QString, QString>> cases{
        {u""_s, u""_s},
        {u"# **Title**\nmore"_s, u"**Title**"_s},
        {u"**Title**"_s, u"Title"_s},
        {u"*Bold* /it/ _un_ -st- ::hi:: `co` [[wi]]"_s, u"Bold it un st hi co wi"_s},
        {u"[a link](http://x.y) and [b](http://z)"_s, u"a link and b"_s},
        {u"[b](quib://z) rest"_s, u"b rest"_s},
        // A link to a note begins at the line's first bracket, whatever stands between.
        {u"[a](http://x.y) [b](quib://z)"_s, u"a](http://x.y) [b"_s},
        {u"see #home/garden #work/plans or /this/, a#b /c d/"_s, u"see #home/garden #work/plans or this, a#b c d"_s},
        {u"see https://example.org/a_b_c/ or /this/"_s, u"see https://example.org/a_b_c/ or this"_s},
        {u"[file:1/report.pdf]"_s, u"report.pdf"_s},
        {u"[image:1/a.png] Trip"_s, u"Trip"_s},
        {u"####### seven"_s, u"####### seven"_s},
        {u" \t plain \t"_s, u"plain"_s},
        {u"\nsecond"_s, u""_s},
        {u"# \t"_s, u""_s},
        {u"a\r\nb"_s, u"a\r"_s},
    };
    for (const auto &[text, title] : cases) {
        EXPECT_EQ(QBNoteTextParser::parseTitleFromText(text), title) << text.toStdString();
        EXPECT_FALSE(QBNoteTextParser::parseTitleFromText(text).isNull());
    }
    EXPECT_EQ(QBNoteTextParser::parseTitleFromText(QString(600, u'x')).size(), 500);
    EXPECT_EQ(QBNoteTextParser::parseTitleFromText(QString(500, u'x')).size(), 500);
    const QString faces = u"😀"_s.repeated(300);
    EXPECT_EQ(QBNoteTextParser::parseTitleFromText(faces), faces.left(500));
    const QString odd = u"x"_s + faces;
    EXPECT_TRUE(QBNoteTextParser::parseTitleFromText(odd).isValidUtf16());
}

TEST(TextHumanizer, LeavesOutNoStylerThatHasSomethingToDo)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    const auto random = [&generator](size_t bound) { return static_cast<qsizetype>(generator() % bound); };
    const QStringList pieces{u"*"_s,  u"_"_s,  u"/"_s,  u"-"_s,        u"~"_s,          u"`"_s,          u"```\n"_s,
                             u"::"_s, u"# "_s, u"[["_s, u"]]"_s,       u"[a](b)"_s,     u"---"_s,        u"***"_s,
                             u"~~"_s, u"**"_s, u"\n"_s, u"x://y/z "_s, u"[file:1/n]"_s, u"[image:2/m]"_s};
    const QStringList plain{u"a"_s, u" "_s, u"word "_s, u"é"_s, u"1"_s};
    for (int round = 0; round < 20'000; ++round) {
        // A few kinds of piece a text, so that most stylers find nothing to do.
        QStringList chosen = plain;
        for (qsizetype kinds = random(4); kinds >= 0; --kinds) {
            chosen.append(pieces[random(static_cast<size_t>(pieces.size()))]);
        }
        QString text;
        for (qsizetype length = random(16); length >= 0; --length) {
            text += chosen[random(static_cast<size_t>(chosen.size()))];
        }
        QString expected = text;
        NSRange range{0, text.size()};
        for (const auto &styler : quib::syntax::stringHumanizeStylers()) {
            quib::syntax::humanizeTextInInString(styler, expected, range);
        }
        ASSERT_EQ(quib::syntax::humanizedString(text), expected) << text.toStdString();
    }
}

TEST(NoteTextParser, SubtitlesGatherWhatFollowsTheTitle)
{
    EXPECT_EQ(QBNoteTextParser::parseSubtitleFromText(u"only a title"_s), u""_s);
    EXPECT_EQ(QBNoteTextParser::parseSubtitleFromText(u"t\n\n*a*  b\n\n\t- c\n"_s), u"a b - c"_s);
    EXPECT_EQ(QBNoteTextParser::parseSubtitleFromText(u"t\n```c\nint i;\n```\nend"_s), u"int i; end"_s);
    EXPECT_EQ(QBNoteTextParser::parseSubtitleFromText(QString(u"t\n" % QString(500, u'x'))), QString(200, u'x'));
    EXPECT_EQ(QBNoteTextParser::parseSubtitleFromText(QString(u"t\n" % QString(900, u'x'))), QString(200, u'x'));
}

TEST(NoteTextParser, AShortWindowIsContinuedFromItsLengthInTheWholeText)
{
    // The first paragraph of the body is 600 units that humanise to one letter; 601 units on from the text's start the
    // line "B" begins only behind the next line end.
    const QString filler = u"*"_s.repeated(598);
    const QString text = QString(u"T\n" % filler % u"ab" % u"\nB\nC");
    const QString window = humanizedString(QString(filler % u"ab\n"));
    ASSERT_LT(window.size(), 200);
    // Counted from the text's start the window ends two units before the line end in front of "B".
    EXPECT_EQ(QBNoteTextParser::parseSubtitleFromText(text),
              quib::syntax::humanizedString(QString(filler % u"ab")).trimmed() + u" B C"_s);
}

TEST(NoteTextParser, SubtitlesOfLongTextsWithoutLettersTakeLinearTime)
{
    EXPECT_EQ(QBNoteTextParser::parseSubtitleFromText(QString(u"t\n" % u"**\n"_s.repeated(300'000))), u""_s);
    EXPECT_EQ(QBNoteTextParser::parseSubtitleFromText(QString(u"t\n" % QString(1'000'000, u' ') % u"x")), u"x"_s);
    EXPECT_EQ(QBNoteTextParser::parseSubtitleFromText(
                  QString(u"t\n" % u"\n "_s.repeated(300'000) % u"**\n"_s.repeated(200'000) % u"x")),
              u"x"_s);
}

TEST(NoteTextParser, CodeIsTakenOutBlocksFirst)
{
    bool hasBlocks = false;
    EXPECT_EQ(QBNoteTextParser::removeCodeFromText(u"a\n```\n- x #t\n```\nb `c` d"_s, &hasBlocks, 0), u"a\n\nb  d"_s);
    EXPECT_TRUE(hasBlocks);
    hasBlocks = false;
    EXPECT_EQ(QBNoteTextParser::removeCodeFromText(u"`a`"_s, &hasBlocks, 0), u""_s);
    EXPECT_FALSE(hasBlocks);
    EXPECT_EQ(QBNoteTextParser::removeCodeFromText(u"plain"_s, nullptr, 0), u"plain"_s);
    EXPECT_TRUE(QBNoteTextParser::parseContainSourceCodeFromText(u"```\n```"_s, 1));
    EXPECT_FALSE(QBNoteTextParser::parseContainSourceCodeFromText(u"```"_s, 0));
}

TEST(NoteTextParser, TodosAreCountedByTheSyntax)
{
    const QString text = u"- a\n+ b\n  - c\n- [ ] d\n- [x] e\n-f"_s;
    EXPECT_EQ(QBNoteTextParser::parseTodoFromText(text, 0), 4);
    EXPECT_EQ(QBNoteTextParser::parseCompletedTodoFromText(text, 0), 1);
    EXPECT_EQ(QBNoteTextParser::parseTodoFromText(text, 1), 1);
    EXPECT_EQ(QBNoteTextParser::parseCompletedTodoFromText(text, 1), 1);
}

TEST(NoteSections, RunFromHeadingToHeading)
{
    const QString text = u"intro\n# One \nbody\n#### deep\n## \n###  Two\nend"_s;
    const auto sections = QBNoteSection::noteSectionsInText(text);
    ASSERT_EQ(sections.size(), 2);
    EXPECT_EQ(sections[0].title, u"One"_s);
    EXPECT_EQ(text.mid(sections[0].titleLocation, sections[0].titleLength), u"# One \n"_s);
    EXPECT_EQ(text.mid(sections[0].sectionLocation, sections[0].sectionLength), u"body\n#### deep\n## \n"_s);
    EXPECT_EQ(sections[1].titleForXURL(), u"two"_s);
    EXPECT_EQ(text.mid(sections[1].sectionLocation, sections[1].sectionLength), u"end"_s);
    EXPECT_TRUE(QBNoteSection::noteSectionsInText(u"#no\n##"_s).isEmpty());
}

TEST(ItalicDetector, AsksItsDelegateAndGoesOnBehindRefusedMarkers)
{
    struct Refusing final : QBItalicDataDetectorDelegate
    {
        bool dataDetectorShouldMatchBeginMarkerInRange(NSRange range) override { return range.location != 0; }
        bool dataDetectorShouldMatchEndMarkerInRange(NSRange range) override { return range.location != 4; }
    } delegate;
    const QBItalicDataDetector detector({u"/"_s}, {u"/"_s}, &delegate);
    const QString text = u"/a/b/c/"_s;
    const auto matches = detector.matchesInString(text, 0, {0, text.size()});
    ASSERT_EQ(matches.size(), 1);
    EXPECT_EQ(matches[0].range(), (NSRange{2, 5}));
    EXPECT_EQ(detector.rangeOfFirstMatchInString(text, 0, {3, 4}), (NSRange{4, 3}));
    EXPECT_EQ(detector.rangeOfFirstMatchInString(text, 0, {0, 3}), kNotFoundRange);
    const QString slashes(1'000'000, u'/');
    EXPECT_EQ(detector.numberOfMatchesInString(slashes, 0, {0, slashes.size()}), 499'999);
}

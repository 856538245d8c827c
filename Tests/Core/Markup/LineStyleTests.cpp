// What the editor asks of a line: which style goes on in the next one, and which a tab moves; and how coloured code
// comes back into a text that lives on.

#include "StyledNote.h"

#include <Markup/Stylers/CodeRanges.h>
#include <Markup/Stylers/QBNoteAttachmentTextStyler.h>
#include <Markup/Stylers/QBNoteCodeHighlighting.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>

using namespace Qt::StringLiterals;
using quib::tests::StyledNote;

namespace {

struct Line
{
    int syntax;
    QString text;
    /// In the buffer. Not found for a line without a style.
    NSRange marker;
    QString next;
    bool isTabbable;
};

const std::vector<Line> &lines()
{
    static const std::vector<Line> all{
        {0, u"* bullet"_s, {0, 2}, u"* "_s, true},
        {0, u"• bullet"_s, {0, 2}, u"* "_s, true},
        {0, u"\t * deep"_s, {2, 2}, u"* "_s, true},
        {0, u"- todo"_s, {0, 2}, u"- "_s, true},
        {0, u"+ done"_s, {0, 2}, u"- "_s, true},
        {1, u"- [x] done"_s, {0, 2}, u"- [ ] "_s, true},
        {1, u"- bullet"_s, {0, 2}, u"* "_s, true},
        {0, u"> quote"_s, {0, 2}, u"> "_s, false},
        {0, u"9. nine"_s, {0, 3}, u"10. "_s, true},
        {1, u" 099. "_s, {1, 5}, u"100. "_s, true},
        {0, u"٩. nine"_s, {0, 3}, u"10. "_s, true},
        {0, u"9223372036854775806. big"_s, {0, 21}, u"9223372036854775807. "_s, true},
        {0, u"9223372036854775807. big"_s, {0, 21}, u"9223372036854775807. "_s, true},
        {0, u"99999999999999999999999. too big"_s, {0, 25}, u"9223372036854775807. "_s, true},
        {0, u"# header"_s, kNotFoundRange, {}, false},
        {0, u"plain * text"_s, kNotFoundRange, {}, false},
        {0, u"---"_s, kNotFoundRange, {}, false},
        {1, u"+"_s, kNotFoundRange, {}, false},
        {0, u""_s, kNotFoundRange, {}, false},
    };
    return all;
}

TEST(LineStyles, GoOnWithTheirMarkerAndMoveWithTabs)
{
    for (const Line &line : lines()) {
        // The second line of three: the neighbours must not count.
        StyledNote note(line.syntax, QString(u"> x\n" % line.text % u"\n* y"));
        const qint64 start = note.buffer().indexOf(u'\n') + 1;
        const NSRange paragraph = note.storage().attributedString().paragraphRangeForRange({start, 0});
        const NSRange expected =
            line.marker.isFound() ? NSRange{start + line.marker.location, line.marker.length} : kNotFoundRange;
        NSRange marker;
        QString next = u"left over"_s;
        EXPECT_EQ(note.storage().hasRepeatableNewLineStyleInRange(paragraph, &marker, &next), line.marker.isFound());
        EXPECT_EQ(marker, expected) << line.text.toStdString();
        EXPECT_EQ(next, line.next) << line.text.toStdString();
        EXPECT_EQ(note.storage().hasRepeatableNewLineStyleInRange(paragraph, &marker), line.marker.isFound());
        EXPECT_EQ(note.storage().hasTabbableStyleInRange(paragraph, &marker), line.isTabbable)
            << line.text.toStdString();
        EXPECT_EQ(marker, line.isTabbable ? expected : kNotFoundRange);
    }
}

TEST(LineStyles, AreThoseOfTheManagersSubsets)
{
    // One line of each kind of full-line styler: repeated are the repeatable ones and numbers, moved the tabbable ones.
    const std::pair<QBNoteStylersManager::Kind, QString> kinds[] = {
        {QBNoteStylersManager::Kind::Checkbox, u"- a"_s},     {QBNoteStylersManager::Kind::UnorderedList, u"* a"_s},
        {QBNoteStylersManager::Kind::OrderedList, u"1. a"_s}, {QBNoteStylersManager::Kind::Quote, u"> a"_s},
        {QBNoteStylersManager::Kind::HeaderText, u"# a"_s},
    };
    for (const auto &[kind, text] : kinds) {
        StyledNote note(0, text);
        const auto &manager = *note.stack().stylerManager();
        const auto styler = manager.styler(kind);
        ASSERT_TRUE(manager.fullLineStylers().contains(styler));
        NSRange marker;
        EXPECT_EQ(note.storage().hasRepeatableNewLineStyleInRange(note.storage().fullRange(), &marker),
                  manager.repeatableStylers().contains(styler) || kind == QBNoteStylersManager::Kind::OrderedList);
        EXPECT_EQ(note.storage().hasTabbableStyleInRange(note.storage().fullRange(), &marker),
                  manager.tabbableStylers().contains(styler));
    }
}

class NoHighlighter : public QBNoteCodeHighlighting
{
public:
    void highlightSyntaxInAttributedString(NSMutableAttributedString & /*attributedString*/, NSRange /*range*/) override
    {
    }
};

class ColouredCode : public testing::Test
{
protected:
    ColouredCode()
        : note(0, u"a\n```cpp\nint x;\n```\n```c\nchar y;\n```\n```\nplain\n```"_s)
    {
        identifier = identifierOf(u"cpp");
    }
    [[nodiscard]] QString identifierOf(QStringView language)
    {
        const auto place = note.buffer().indexOf(language);
        return note.storage()
            .attributedString()
            .attribute(QBNoteCodeTextStylerLanguageAttributeName, place)
            .stringValue();
    }
    [[nodiscard]] NSRange codeOf(const QString &uuid)
    {
        return quib::codeRangeForCodeUUID(uuid, note.storage().attributedString());
    }
    [[nodiscard]] QString textAt(NSRange range) { return note.buffer().sliced(range.location, range.length); }
    void giveBack(const QString &uuid, const QString &text)
    {
        NoHighlighter highlighter;
        NSMutableAttributedString code(text);
        code.addAttribute(kToken, u"keyword"_s, {0, 3});
        code.addAttribute(QBNoteCodeTextStylerAttributeName, 1, code.fullRange());
        note.storage().codeSyntaxHighlighter(highlighter, code, uuid);
    }
    [[nodiscard]] bool isColoured() { return note.storage().attributedString().containsAttribute(kToken, full()); }
    [[nodiscard]] NSRange full() { return note.storage().fullRange(); }

    static constexpr NSAttributeName kToken{u"Token"};
    StyledNote note;
    QString identifier;
};

TEST_F(ColouredCode, IsFoundByTheIdentifierOfItsLanguage)
{
    EXPECT_EQ(textAt(codeOf(identifier)), u"int x;\n"_s);
    EXPECT_EQ(textAt(codeOf(identifierOf(u"c\nchar"))), u"char y;\n"_s);
    EXPECT_EQ(codeOf(u"nobody's"_s), kNotFoundRange);
    EXPECT_EQ(codeOf({}), kNotFoundRange);
    note.storage().replaceCharactersInRange({9, note.storage().length() - 9}, u"");
    EXPECT_EQ(codeOf(identifier), kNotFoundRange) << "cut off behind the line of the language";
}

TEST_F(ColouredCode, TakesThePlaceOfTheSameCode)
{
    const QString before = note.buffer();
    int edits = 0;
    const auto token = note.storage().observeEdits([&](quint32 mask, NSRange range, qint64 change) {
        ++edits;
        EXPECT_EQ(mask, NSTextStorage::kEditedAttributes);
        EXPECT_EQ(range, codeOf(identifier));
        EXPECT_EQ(change, 0);
    });
    giveBack(identifier, u"int x;\n"_s);
    EXPECT_EQ(edits, 1);
    EXPECT_TRUE(isColoured());
    EXPECT_EQ(note.buffer(), before);
    EXPECT_EQ(note.storage().attributedString().attribute(kToken, codeOf(identifier).location).stringValue(),
              u"keyword"_s);
}

TEST_F(ColouredCode, IsDroppedWhereAnEditWasFaster)
{
    giveBack(identifier, u"int z;\n"_s);
    EXPECT_FALSE(isColoured());
    giveBack(u"gone"_s, u"int x;\n"_s);
    EXPECT_FALSE(isColoured());
    static_cast<void>(note.replace({codeOf(identifier).location, 0}, u"const "_s));
    giveBack(identifier, u"int x;\n"_s);
    EXPECT_FALSE(isColoured());
    giveBack(identifier, u"const int x;\n"_s);
    EXPECT_TRUE(isColoured()) << "the identifier outlived the edit";
}

} // namespace

#include "EditedNote.h"

#include <Core/Store/StoreFixture.h>

#include <Markup/Editing/QBNoteCopyAsCoreController.h>
#include <Markup/Editing/QBNotePasteFromCoreController.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

TEST(PasteCodeTest, PutsCodeBetweenFencesWithItsLanguage)
{
    const struct
    {
        QString language;
        QString code;
        QString block;
    } cases[] = {
        {u"swift"_s, u"let a"_s, u"```swift\nlet a\n```"_s},
        {u"swift"_s, u"let a\nlet b\n"_s, u"```swift\nlet a\nlet b\n```"_s},
        {u"Unknown"_s, u"what"_s, u"```\nwhat\n```"_s},
        {u"swift"_s, u"\n"_s, u"```swift\n\n```"_s},
        {u"swift"_s, u""_s, u""_s},
        {u"swift"_s, QString(), QString()},
    };
    for (const auto &[language, code, block] : cases) {
        const QBNotePasteFromCoreController paste([&language = language](const QString &) { return language; });
        EXPECT_EQ(paste.pasteStringFromCode(code), block) << code.toStdString();
    }
}

TEST(PasteCodeTest, NamesLongCodeByItsFirstHundredLines)
{
    QString seen;
    const QBNotePasteFromCoreController paste([&seen](const QString &code) {
        seen = code;
        return u"c"_s;
    });
    const QString hundred = QString(u"line\n"_s.repeated(99) % u"last"_s);
    EXPECT_EQ(paste.pasteStringFromCode(hundred), QString(u"```c\n"_s % hundred % u"\n```"_s));
    EXPECT_EQ(seen, hundred);
    EXPECT_EQ(paste.pasteStringFromCode(QString(hundred % u"\nmore\nand more"_s)),
              QString(u"```c\n"_s % hundred % u"\nmore\nand more\n```"_s));
    EXPECT_EQ(seen, hundred);
}

TEST(SmartPasteTest, KeepsWordsApart)
{
    // The text with what is replaced, what is pasted, and what comes into the text.
    const struct
    {
        QString text;
        QString pasted;
        QString inserted;
    } cases[] = {
        {u"a|b"_s, u"x"_s, u" x "_s},       {u"a |b"_s, u"x"_s, u"x "_s},         {u"a| b"_s, u"x"_s, u" x"_s},
        {u"|ab"_s, u"x"_s, u"x "_s},        {u"ab|"_s, u"x"_s, u" x"_s},          {u"|"_s, u"x"_s, u"x"_s},
        {u"a\n|\nb"_s, u"x"_s, u"x"_s},     {u"a[b]c"_s, u"x"_s, u" x "_s},       {u"a|b"_s, u" x\t"_s, u" x\t"_s},
        {u"a|b"_s, u""_s, u""_s},           {u"a|b"_s, u" "_s, u" "_s},           {u"a|b"_s, u"\n\n"_s, u"\n\n"_s},
        {u"a\t|.b"_s, u"x y"_s, u"x y "_s}, {u"a|b"_s, u"\nx\n"_s, u" \nx\n "_s},
    };
    for (const auto &[text, pasted, inserted] : cases) {
        const MarkedText marked = MarkedText::parsed(text);
        EXPECT_EQ(stringForSmartCopyInRange(marked.text, marked.selection, pasted), inserted) << text.toStdString();
    }
}

class CopyAs : public StoreFixture
{
};

TEST_F(CopyAs, GivesTheMarkupOfAPart)
{
    EditedNote note(0, u"# T\n[* a #tag b\n- c #x #y] d");
    QBNotesTextStorage &storage = note.textStorage();
    const NSRange range = note.selectedRange();
    EXPECT_EQ(QBNoteCopyAsCoreController::copyAsTXT(storage, range, /*andTags=*/true), u"* a #tag b\n- c #x #y"_s);
    EXPECT_EQ(QBNoteCopyAsCoreController::copyAsTXT(storage, range, /*andTags=*/false), u"* a b\n- c"_s);
    EXPECT_EQ(QBNoteCopyAsCoreController::copyAsTXT(storage, {3, 0}, /*andTags=*/true), u""_s);
    const auto lines = QBNoteCopyAsCoreController::subTextStorageIncludingFullLinesWithRange(range, storage);
    EXPECT_EQ(lines->stringWithExpandedTextAttachments(), u"* a #tag b\n- c #x #y d"_s);
    EXPECT_EQ(note.text(), u"# T\n* a #tag b\n- c #x #y d"_s);
}

TEST_F(CopyAs, GivesNotesInTheirOrder)
{
    const QList notes{makeNote(u"one #tag"_s), makeNote(u"```\n#code\n```\ntwo"_s)};
    EXPECT_EQ(QBNoteCopyAsCoreController::copyNotesAsTXT(notes, /*withTags=*/true),
              u"one #tag\n\n```\n#code\n```\ntwo"_s);
    EXPECT_EQ(QBNoteCopyAsCoreController::copyNotesAsTXT(notes, /*withTags=*/false), u"one\n\n```\n#code\n```\ntwo"_s);
    EXPECT_EQ(QBNoteCopyAsCoreController::copyNotesAsTXT({}, /*withTags=*/true), u""_s);
}

} // namespace quib::tests

#include <Markup/QBNoteTextKitStack.h>
#include <Themes/QBNotesTextThemeManager.h>
#include <URL/QBXurlCoreController.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

struct ScrollCase
{
    QString header;
    QString attachment;
    /// The text of the range as it stands for the note; null for no range.
    QString found;
};

TEST(RangeToScroll, IsTheHeadersLineElseTheAttachment)
{
    QBNoteTextKitStack stack;
    stack.themeManager()->loadDefaultTheme();
    stack.stylerManager()->setSyntax(0);
    stack.noteTextStorage().loadString(u"# Plan\nfirst\n## Shopping *List*\nmilk [file:ID-1/a.txt] [image:ID-2/b.png]\n"
                                       "###### Deep\n## Plan\nPlan\n"_s);
    const ScrollCase cases[] = {
        {u"plan"_s, {}, u"# Plan\n"_s},
        {u" PLAN\n"_s, {}, u"# Plan\n"_s},
        {u"shopping *list*"_s, {}, u"## Shopping *List*\n"_s},
        {u"deep"_s, {}, u"###### Deep\n"_s},
        {u"first"_s, {}, {}},
        {u"nowhere"_s, u"a.txt"_s, {}},
        {u"plan"_s, u"a.txt"_s, u"# Plan\n"_s},
        {{}, u"a.txt"_s, u"[file:ID-1/a.txt]"_s},
        {{}, u"ID-2/b.png"_s, u"[image:ID-2/b.png]"_s},
        {{}, u"txt"_s, {}},
        {{}, {}, {}},
    };
    for (const ScrollCase &given : cases) {
        const NSRange range =
            QBXurlCoreController::rangeToScrollForHeader(given.header, given.attachment, stack.noteTextStorage());
        EXPECT_EQ(range == kNotFoundRange, given.found.isNull())
            << given.header.toStdString() << '|' << given.attachment.toStdString();
        if (range != kNotFoundRange) {
            EXPECT_EQ(stack.noteTextStorage().stringWithExpandedTextAttachmentsWithRange(range).trimmed().toStdString(),
                      given.found.trimmed().toStdString());
        }
    }
}

} // namespace

#include <Foundation/NSPasteboard.h>
#include <Support/QtPrinters.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace quib::tests {
namespace {

NSPasteboardItem item(const QString &type, const QString &string)
{
    NSPasteboardItem made;
    made.setString(string, type);
    return made;
}

TEST(NSPasteboard, CountsNewContentsButNoAddedForms)
{
    InMemoryPasteboard pasteboard;
    const qint64 first = pasteboard.clearContents();
    pasteboard.writeItems({item(NSPasteboardTypeString, u"a"_s)});
    pasteboard.setString(u"b"_s, u"x.more"_s);
    EXPECT_EQ(pasteboard.changeCount(), first);
    EXPECT_GT(pasteboard.clearContents(), first);
    EXPECT_TRUE(pasteboard.types().isEmpty());
    EXPECT_EQ(pasteboard.stringForType(NSPasteboardTypeString), std::nullopt);
}

TEST(NSPasteboard, GivesStringsAndBytesBack)
{
    InMemoryPasteboard pasteboard;
    QString odd = u"nul, lone surrogate, mark: "_s;
    odd.append(QChar(u'\0')).append(QChar(0xD800)).append(QChar(0xFEFF));
    pasteboard.setString(odd, NSPasteboardTypeString);
    EXPECT_EQ(pasteboard.stringForType(NSPasteboardTypeString), odd);
    pasteboard.setData("\xC3\xA8", NSPasteboardTypeHTML);
    EXPECT_EQ(pasteboard.stringForType(NSPasteboardTypeHTML), u"è"_s);
    EXPECT_EQ(pasteboard.dataForType(NSPasteboardTypeHTML), QByteArray("\xC3\xA8"));
    EXPECT_EQ(pasteboard.pasteboardItems().size(), 1) << "forms of one thing";
    EXPECT_EQ(pasteboard.availableTypeFromArray({NSPasteboardTypeRTF, NSPasteboardTypeString, NSPasteboardTypeHTML}),
              NSPasteboardTypeString);
    EXPECT_TRUE(pasteboard.availableTypeFromArray({NSPasteboardTypeRTF}).isNull());
}

TEST(NSPasteboard, TellsFilesFromOtherURLs)
{
    InMemoryPasteboard pasteboard;
    pasteboard.writeItems({item(NSPasteboardTypeURL, u"https://example.com/a%20b"_s),
                           item(NSPasteboardTypeFileURL, u"file:///home/me/one.txt"_s),
                           item(NSPasteboardTypeURL, u"no url"_s), item(NSPasteboardTypeURL, u"/rooted"_s),
                           item(NSPasteboardTypeFileURL, u"https://not.a.file/"_s),
                           item(NSPasteboardTypeString, u"text"_s), item(NSPasteboardTypeString, u"last"_s)});
    EXPECT_EQ(pasteboard.urls(/*fileURLsOnly=*/true), QList<QUrl>{QUrl(u"file:///home/me/one.txt"_s)});
    EXPECT_EQ(pasteboard.urls(/*fileURLsOnly=*/false).size(), 3);
    EXPECT_EQ(pasteboard.strings(), (QStringList{u"text"_s, u"last"_s}));
}

} // namespace
} // namespace quib::tests

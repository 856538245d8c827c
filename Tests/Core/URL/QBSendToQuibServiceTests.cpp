#include <Core/Store/StoreFixture.h>
#include <Foundation/NSPasteboard.h>
#include <URL/QBSendToQuibService.h>

#include <QDir>

using namespace Qt::StringLiterals;

namespace quib::tests {
namespace {

class QBSendToQuibServiceTest : public StoreFixture
{
protected:
    static NSPasteboardItem item(const QString &type, const QString &string)
    {
        NSPasteboardItem made;
        made.setString(string, type);
        return made;
    }
    static NSPasteboardItem item(const QUrl &file) { return item(NSPasteboardTypeFileURL, file.toString()); }
    /// The texts of all notes, after a look from a freshly opened store.
    QStringList savedTexts()
    {
        close();
        open();
        QStringList texts;
        for (const auto &note : QBNote::allNotesInManagedObjectContext(moc())) {
            texts.append(note->text());
        }
        return texts;
    }

    QBSendToQuibService service;
    InMemoryPasteboard pasteboard;
    NSError error;
};

TEST_F(QBSendToQuibServiceTest, TakesTheTextAsItStands)
{
    QString text = u"  # Not trimmed\n\n"_s;
    text.append(QChar(u'\0')).append(QChar(0xDC00)).append(u"\nend \n");
    pasteboard.writeItems({item(NSPasteboardTypeString, u"first"_s), item(NSPasteboardTypeString, text)});
    EXPECT_TRUE(service.sendToQuibService(pasteboard, {}, &error));
    EXPECT_EQ(savedTexts(), QStringList{text});
}

TEST_F(QBSendToQuibServiceTest, TakesOneURLALine)
{
    pasteboard.writeItems({item(NSPasteboardTypeURL, u"https://example.com/a%20b?c=d&e"_s),
                           item(NSPasteboardTypeURL, u"mailto:me@example.com"_s),
                           item(NSPasteboardTypeString, u"ignored"_s)});
    EXPECT_TRUE(service.sendToQuibService(pasteboard, {}, &error));
    EXPECT_EQ(savedTexts(), QStringList{u"https://example.com/a%20b?c=d&e\nmailto:me@example.com"_s});
}

TEST_F(QBSendToQuibServiceTest, PrefersFilesToAllElse)
{
    pasteboard.writeItems({item(NSPasteboardTypeString, u"ignored"_s), item(userFile(u"A [b].PDF"_s, "pdf")),
                           item(NSPasteboardTypeURL, u"https://example.com/"_s), item(userFile(u"c.JPEG"_s, "jpeg"))});
    EXPECT_TRUE(service.sendToQuibService(pasteboard, {}, &error)) << error.localizedDescription().toStdString();
    QMap<QString, QString> markers;
    for (const auto &file : QBNoteFile::filesInManagedObjectContext(moc(), {})) {
        markers.insert(file->filename(), file->textRepresentation());
        EXPECT_TRUE(file->note()) << "the marker ties the file to the note";
    }
    EXPECT_EQ(markers.keys(), (QStringList{u"A b.PDF"_s, u"c.JPEG"_s}));
    EXPECT_TRUE(markers.value(u"c.JPEG"_s).startsWith(u"[image:"_s));
    EXPECT_EQ(savedTexts(), QStringList{markers.value(u"A b.PDF"_s) + u"\n\n"_s + markers.value(u"c.JPEG"_s)});
}

TEST_F(QBSendToQuibServiceTest, TakesTheFilesThatItCanAndNamesTheOther)
{
    const QUrl missing = QUrl::fromLocalFile(folder.path(u"user/missing.txt"_s));
    const auto note = service.newNoteWithFiles({missing, userFile(u"there.txt"_s, "x")}, &error);
    ASSERT_TRUE(note);
    EXPECT_TRUE(note->text().endsWith(u"/there.txt]"_s));
    EXPECT_TRUE(error.localizedDescription().contains(u"missing.txt"_s));
    error = {};
    EXPECT_FALSE(service.newNoteWithFiles({missing}, &error));
    EXPECT_TRUE(error.isSet());
    EXPECT_EQ(savedTexts().size(), 1);
}

TEST_F(QBSendToQuibServiceTest, MakesNothingOfNothing)
{
    EXPECT_FALSE(service.sendToQuibService(pasteboard, {}, &error));
    EXPECT_TRUE(error.isSet());
    pasteboard.writeItems({item(NSPasteboardTypeString, u""_s)});
    EXPECT_FALSE(service.sendToQuibService(pasteboard, {}, &error));
    pasteboard.clearContents();
    pasteboard.writeItems({item(NSPasteboardTypeRTF, u"{\\rtf1 x}"_s), item(NSPasteboardTypeURL, u"not a url"_s)});
    EXPECT_FALSE(service.sendToQuibService(pasteboard, {}, &error));
    EXPECT_TRUE(savedTexts().isEmpty());
    close();
    pasteboard.setString(u"text"_s, NSPasteboardTypeString);
    EXPECT_FALSE(service.sendToQuibService(pasteboard, {}, &error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::PersistentStoreOpen));
}

} // namespace
} // namespace quib::tests

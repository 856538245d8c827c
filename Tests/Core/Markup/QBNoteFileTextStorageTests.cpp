// Each marker in a note's text gets a file of its own when the text is saved.

#include <Core/Store/StoreFixture.h>

#include <Graphics/GraphicsContext.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Markup/QBNoteFile+TextStorage.h>
#include <Markup/QBNoteTextAttachmentConfigurator.h>
#include <Markup/QBNoteTextKitStack.h>
#include <Store/QBNoteFile.h>
#include <Store/QBThumbFileManager.h>

#include <QCoreApplication>
#include <QFile>

using namespace Qt::StringLiterals;

namespace quib::tests {

class FileMarkers : public StoreFixture
{
protected:
    FileMarkers()
    {
        text.themeManager()->loadDefaultTheme();
        configurator.setManagedObjectContext(moc().weak_from_this());
        configurator.setConfigureAttachmentSynchronously(true);
        text.stylerManager()->setTextAttachmentConfigurator(&configurator);
        GraphicsContext context({20, 10}, 1, NSColor::colorWithRed(1, 0, 0));
        picture = QBNoteFile::factoryNoteFileForFileURL(userFile(u"a.png"_s, context.image().pngData()), moc());
        file = QBNoteFile::factoryNoteFileForFileURL(userFile(u"b.txt"_s, "bytes"), moc());
    }
    /// Saves as an editor does.
    void saveNote(QBNote &note)
    {
        fixTextAttachmentsForNote(note, text.noteTextStorage());
        note.updateNoteWithText(text.noteTextStorage().stringWithExpandedTextAttachments(), /*syntax=*/0);
        save();
    }
    [[nodiscard]] qsizetype filesInStore() const
    {
        return QBNoteFile::filesInManagedObjectContext(moc(), nullptr).size();
    }
    [[nodiscard]] QStringList markers()
    {
        QStringList found;
        text.noteTextStorage().enumerateFilesAttachmentsUsingBlock(
            [&found](QBGenericFileTextAttachment &attachment, NSRange) { found.append(attachment.representedText()); });
        return found;
    }

    QBNoteTextKitStack text;
    QBNoteTextAttachmentConfigurator configurator;
    Ref<QBNoteFile> picture;
    Ref<QBNoteFile> file;
};

TEST_F(FileMarkers, OfItsOwnFilesStayAsTheyAre)
{
    const QString string = QString(u"x\n"_s % picture->textRepresentation() % u"\n" % file->textRepresentation());
    const auto note = makeNote(string);
    text.noteTextStorage().loadString(string);
    saveNote(*note);
    saveNote(*note);
    EXPECT_EQ(note->text(), string);
    EXPECT_EQ(filesInStore(), 2);
    EXPECT_EQ(picture->note().get(), note.get());
}

TEST_F(FileMarkers, ThatStandTwiceGetAFileEach)
{
    const QString marker = picture->textRepresentation();
    const auto note = makeNote(QString(u"x\n" % marker % u"\n" % marker));
    text.noteTextStorage().loadString(note->text());
    saveNote(*note);
    ASSERT_EQ(markers().size(), 2);
    EXPECT_EQ(markers()[0], marker);
    EXPECT_NE(markers()[1], marker);
    const auto copy = QBNoteFile::noteFileWithTextRepresentation(markers()[1], moc());
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->note().get(), note.get());
    EXPECT_TRUE(QFile::exists(copy->fileURL()->toLocalFile()));
    EXPECT_NE(*copy->fileURL(), *picture->fileURL());
    text.noteTextStorage().enumerateImagesAttachmentsUsingBlock([&](QBImageTextAttachment &attachment, NSRange) {
        EXPECT_EQ(attachment.originalImageSize(), QSizeF(20, 10));
        EXPECT_FALSE(attachment.attachmentImage().isEmpty()) << "the copy shows what the original shows";
        EXPECT_EQ(attachment.fileURL(),
                  *QBNoteFile::noteFileWithTextRepresentation(attachment.representedText(), moc())->fileURL());
    });
    saveNote(*note);
    EXPECT_EQ(filesInStore(), 3) << "once is enough";
}

TEST_F(FileMarkers, ACopyGetsItsPictureThatWasOnItsWay)
{
    // A picture that is loaded in the background arrives in the main queue's next turn, after the note was saved.
    configurator.setConfigureAttachmentSynchronously(false);
    QStringList updated;
    configurator.setUpdateHandler(
        [&updated](QBNotesTextAttachment &attachment) { updated.append(attachment.representedText()); });
    const QString marker = picture->textRepresentation();
    const auto note = makeNote(QString(marker % u"\n" % marker));
    text.noteTextStorage().loadString(note->text());
    saveNote(*note);
    ASSERT_EQ(markers().size(), 2);
    const auto runMainQueue = [] {
        QBThumbFileManager::waitUntilBackgroundIsIdle();
        QCoreApplication::processEvents();
    };
    runMainQueue();
    text.noteTextStorage().enumerateImagesAttachmentsUsingBlock([](QBImageTextAttachment &attachment, NSRange) {
        EXPECT_EQ(attachment.attachmentImage().pixelSize(), QSize(20, 10));
        EXPECT_EQ(attachment.attachmentSize().width(), 20);
    });
    EXPECT_TRUE(updated.contains(markers()[1])) << "whoever shows the text is told";

    // The copy of a picture that is there shows it at once.
    updated.clear();
    const auto second = makeNote(u"x"_s);
    saveNote(*second);
    EXPECT_TRUE(updated.isEmpty());
    int shown = 0;
    text.noteTextStorage().enumerateImagesAttachmentsUsingBlock([&shown](QBImageTextAttachment &attachment, NSRange) {
        shown += attachment.attachmentImage().isEmpty() ? 0 : 1;
    });
    EXPECT_EQ(shown, 2);
    runMainQueue();
    EXPECT_EQ(updated.size(), 2) << "and has its own afterwards";
}

TEST_F(FileMarkers, OfAnotherNoteGetACopy)
{
    const QString marker = file->textRepresentation();
    const auto owner = makeNote(QString(u"first\n" % marker));
    save();
    const auto note = makeNote(u"second"_s);
    text.noteTextStorage().loadString(QString(u"second\n" % marker));
    saveNote(*note);
    EXPECT_EQ(filesInStore(), 3);
    EXPECT_FALSE(note->text().contains(marker));
    EXPECT_EQ(file->note().get(), owner.get());
    const auto copy = QBNoteFile::noteFileWithTextRepresentation(markers()[0], moc());
    EXPECT_EQ(copy->note().get(), note.get());
    QFile bytes(copy->fileURL()->toLocalFile());
    ASSERT_TRUE(bytes.open(QIODevice::ReadOnly));
    EXPECT_EQ(bytes.readAll(), "bytes");
}

TEST_F(FileMarkers, OneAttachmentPastedBesideItselfIsTwo)
{
    const QString marker = file->textRepresentation();
    const auto note = makeNote(marker);
    auto &storage = text.noteTextStorage();
    storage.loadString(marker);
    storage.insertAttributedString(storage.NSTextStorage::attributedSubstringFromRange({0, 1}), 1);
    ASSERT_EQ(storage.stringWithExpandedTextAttachments(), QString(marker % marker));
    EXPECT_EQ(storage.attributedSubstringFromRange(storage.fullRange(), /*expandTextAttachment=*/true).string(),
              QString(marker % marker));
    saveNote(*note);
    ASSERT_EQ(markers().size(), 2);
    EXPECT_EQ(markers()[0], marker);
    EXPECT_NE(markers()[1], marker);
    EXPECT_EQ(filesInStore(), 3);
}

TEST_F(FileMarkers, WithoutARowStay)
{
    const auto note = makeNote(u"x"_s);
    const QString string = u"[file:no/such.txt] and [file:no/such.txt]"_s;
    text.noteTextStorage().loadString(string);
    saveNote(*note);
    EXPECT_EQ(note->text(), string);
    EXPECT_EQ(filesInStore(), 2);
}

} // namespace quib::tests

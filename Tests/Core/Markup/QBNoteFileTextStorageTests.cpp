// Each marker in a note's text gets a file of its own when the text is saved.

#include <Core/Store/StoreFixture.h>

#include <Graphics/GraphicsContext.h>
#include <Markup/Attachments/QBFoldTextAttachment.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Markup/QBNoteFile+TextStorage.h>
#include <Markup/QBNoteTextAttachmentConfigurator.h>
#include <Markup/QBNoteTextKitStack.h>
#include <Store/QBNoteFile.h>
#include <Store/QBThumbFileManager.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <functional>
#include <memory>
#include <vector>

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
    /// Puts a stretch of the text behind a fold.
    void fold(NSRange range)
    {
        auto &storage = text.noteTextStorage();
        const auto fold = std::make_shared<QBFoldTextAttachment>(
            storage.stringWithExpandedTextAttachmentsWithRange(range), text.themeManager());
        fold->setFoldIdentifier(u"by hand"_s);
        fold->setRepresentedAttributedString(storage.attributedSubstringFromRange(range, false));
        AttributeSet attributes = text.themeManager()->defaultTextAttributes();
        attributes.insert(NSAttachmentAttributeName, fold);
        static_cast<NSTextStorage &>(storage).replaceCharactersInRange(
            range, NSAttributedString(NSTextAttachment::placeholderString(), attributes));
    }
    [[nodiscard]] std::shared_ptr<QBFoldTextAttachment> foldAt(qint64 location)
    {
        return text.noteTextStorage()
            .attributedString()
            .attribute(NSAttachmentAttributeName, location)
            .sharedAs<QBFoldTextAttachment>();
    }
    using FileBlock = std::function<void(const QBGenericFileTextAttachment &attachment)>;
    /// Each file that is folded, however deep. A fold within another one says the same as what is in it.
    static void enumerateFolded(const QBFoldTextAttachment &fold, const FileBlock &block)
    {
        const NSAttributedString &folded = fold.representedAttributedString();
        EXPECT_EQ(fold.representedText(),
                  QBNotesTextStorage::stringWithExpandedTextAttachmentsFromAttributedString(folded));
        EXPECT_EQ(fold.foldIdentifier(), u"by hand"_s);
        for (qint64 place = 0; place < folded.length(); ++place) {
            const AttributeValue value = folded.attribute(NSAttachmentAttributeName, place);
            if (const auto *inner = value.as<QBFoldTextAttachment>()) {
                enumerateFolded(*inner, block);
            } else if (const auto *file = value.as<QBGenericFileTextAttachment>()) {
                block(*file);
            }
        }
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

TEST_F(FileMarkers, OfAnotherNoteGetACopyWhereTheyAreFolded)
{
    const QString string =
        QString(u"a\n" % picture->textRepresentation() % u"\nb " % file->textRepresentation() % u"\nc");
    const auto owner = makeNote(string);
    save();
    // Folds that are in each other, with text around them or without.
    const std::vector<NSRange> stretches = {{2, 5}, {0, 3}, {0, 1}};
    for (size_t depth = 1; depth <= stretches.size(); ++depth) {
        SCOPED_TRACE(depth);
        const auto note = makeNote(u"x"_s);
        text.noteTextStorage().loadString(string);
        for (size_t i = 0; i < depth; ++i) {
            fold(stretches[i]);
        }
        const qint64 place = depth == 1 ? 2 : 0;
        saveNote(*note);
        const auto own = note->orderedFiles();
        ASSERT_EQ(own.size(), 2);
        EXPECT_EQ(note->text(),
                  QString(u"a\n" % own[0]->textRepresentation() % u"\nb " % own[1]->textRepresentation() % u"\nc"));
        EXPECT_NE(own[0]->uniqueIdentifier(), picture->uniqueIdentifier());
        EXPECT_NE(own[1]->uniqueIdentifier(), file->uniqueIdentifier());
        EXPECT_EQ(QFileInfo(own[1]->fileURL()->toLocalFile()).size(), 5);
        ASSERT_TRUE(foldAt(place));
        QList<QUrl> urls;
        enumerateFolded(*foldAt(place), [&urls](const QBGenericFileTextAttachment &attachment) {
            urls.append(attachment.fileURL());
            if (const auto *image = dynamic_cast<const QBImageTextAttachment *>(&attachment)) {
                EXPECT_EQ(image->attachmentImage().pixelSize(), QSize(20, 10)) << "the copy shows its picture";
            }
        });
        EXPECT_EQ(urls, (QList<QUrl>{*own[0]->fileURL(), *own[1]->fileURL()}));

        const auto saved = foldAt(place);
        saveNote(*note);
        EXPECT_EQ(foldAt(place), saved) << "once is enough";
    }
    EXPECT_EQ(owner->orderedFiles().size(), 2);
    EXPECT_EQ(owner->text(), string);
}

TEST_F(FileMarkers, AreTheFirstWithinOrOutsideOfFolds)
{
    const QString marker = file->textRepresentation();
    const QString string = QString(u"a " % marker % u" b " % marker % u" c");
    for (const bool isFirstFolded : {true, false}) {
        SCOPED_TRACE(isFirstFolded);
        const auto note = makeNote(string);
        text.noteTextStorage().loadString(string);
        fold(isFirstFolded ? NSRange{2, 1} : NSRange{6, 1});
        saveNote(*note);
        const auto own = note->orderedFiles();
        ASSERT_EQ(own.size(), 2);
        EXPECT_EQ(own[0]->textRepresentation(), marker);
        EXPECT_EQ(note->text(), QString(u"a " % marker % u" b " % own[1]->textRepresentation() % u" c"));
        note->updateNoteWithText(u"x"_s, /*syntax=*/0);
        save();
    }
}

TEST_F(FileMarkers, OneFoldPastedBesideItselfIsTwo)
{
    const QString marker = file->textRepresentation();
    const auto note = makeNote(marker);
    auto &storage = text.noteTextStorage();
    storage.loadString(marker);
    fold({0, 1});
    const auto first = foldAt(0);
    storage.insertAttributedString(storage.NSTextStorage::attributedSubstringFromRange({0, 1}), 1);
    ASSERT_EQ(foldAt(1), first);
    saveNote(*note);
    const auto own = note->orderedFiles();
    ASSERT_EQ(own.size(), 2);
    EXPECT_EQ(note->text(), QString(marker % own[1]->textRepresentation()));
    EXPECT_EQ(foldAt(0), first) << "what has its own files stays as it is";
    EXPECT_EQ(foldAt(0)->representedText(), marker);
    EXPECT_NE(foldAt(1), first);
}

TEST_F(FileMarkers, AreEnumeratedWhereTheirFoldIs)
{
    auto &storage = text.noteTextStorage();
    storage.loadString(QString(u"a\n" % picture->textRepresentation() % u"\nb " % file->textRepresentation() % u"\nc"));
    fold({2, 1});
    fold({1, 6});
    ASSERT_EQ(storage.string(), u"a\uFFFC\nc");
    const auto filesIn = [&storage](NSRange range) {
        QList<std::pair<QString, NSRange>> found;
        storage.enumerateFilesAttachmentsInRange(range,
                                                 [&found](QBGenericFileTextAttachment &attachment, NSRange place) {
                                                     found.append({attachment.representedText(), place});
                                                 });
        return found;
    };
    const NSRange place{1, 1};
    EXPECT_EQ(filesIn(storage.fullRange()), (QList<std::pair<QString, NSRange>>{{picture->textRepresentation(), place},
                                                                                {file->textRepresentation(), place}}));
    EXPECT_TRUE(filesIn({2, 2}).isEmpty());
    QList<NSRange> pictures;
    storage.enumerateImagesAttachmentsUsingBlock(
        [&pictures](QBImageTextAttachment & /*attachment*/, NSRange range) { pictures.append(range); });
    EXPECT_EQ(pictures, QList<NSRange>{place});
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

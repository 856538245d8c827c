#include "StoreFixture.h"

#include <Logging/QBLogger.h>
#include <Store/QBNoteGenericFile.h>
#include <Store/QBNoteImage.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <atomic>

using namespace Qt::StringLiterals;

namespace quib::tests {

class NoteFile : public StoreFixture
{
protected:
    static QByteArray png(quint32 width, quint32 height)
    {
        QByteArray bytes("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16);
        for (const quint32 side : {width, height}) {
            for (int shift = 24; shift >= 0; shift -= 8) {
                bytes.append(static_cast<char>((side >> shift) & 0xFF));
            }
        }
        return bytes + QByteArray(16, '\0');
    }
    [[nodiscard]] Ref<QBNoteFile> import(const QString &name, const QByteArray &bytes = "bytes") const
    {
        NSError error;
        auto file = QBNoteFile::factoryNoteFileForFileURL(userFile(name, bytes), moc(), &error);
        EXPECT_TRUE(file) << error.localizedDescription().toStdString();
        return file;
    }
    [[nodiscard]] static bool hasBinary(const QBNoteFile &file)
    {
        return file.fileURL() && QFileInfo::exists(file.fileURL()->toLocalFile());
    }
};

TEST_F(NoteFile, AFileEntersByACopyInAFolderOfItsOwn)
{
    const auto file = import(u"a[1].txt"_s, "hello");
    ASSERT_TRUE(file.as<QBNoteGenericFile>());
    EXPECT_EQ(file->filename(), u"a1.txt"_s);
    EXPECT_EQ(file->normalizedFileExtension(), u"txt"_s);
    EXPECT_EQ(file->fileSize(), 5);
    EXPECT_TRUE(file->downloaded());
    EXPECT_FALSE(file->uploaded());
    EXPECT_TRUE(file->modificationDate());
    EXPECT_TRUE(file->creationDate());
    EXPECT_EQ(file->textRepresentation(), u"[file:"_s + file->uniqueIdentifier() + u"/a1.txt]"_s);
    EXPECT_TRUE(file->fileURL()->toLocalFile().endsWith(u"/Application Data/Local Files/Note Files/"_s +
                                                        file->uniqueIdentifier() + u"/a1.txt"_s));
    EXPECT_TRUE(folder.contains(u"user/a[1].txt"_s)) << "the source stays";
}

TEST_F(NoteFile, WhateverTheNameOfAFileItsMarkerStands)
{
    const std::pair<QString, QString> rows[] = {
        {u"a\nb.txt"_s, u"ab.txt"_s},
        {u"\r\u2028\u2029\u0085\v\fb\x01\x7F.txt"_s, u"b.txt"_s},
        {u"\uFFFCb.txt"_s, u"b.txt"_s},
        {u"a `b.txt"_s, u"a b.txt"_s},
        {u"tab\tand blank .txt "_s, u"taband blank .txt "_s},
        {u"\U0001F468\u200D\U0001F469 #1.txt"_s, u"\U0001F468\u200D\U0001F469 #1.txt"_s},
        {u"[].txt"_s, u".txt"_s},
        {u"[\n]"_s, u"file"_s},
        {u"[.]"_s, u"file"_s},
        {u".[.]"_s, u"file"_s},
    };
    for (const auto &[name, kept] : rows) {
        const auto file = import(name);
        ASSERT_TRUE(file);
        EXPECT_EQ(file->filename(), kept);
        EXPECT_TRUE(hasBinary(*file)) << kept.toStdString();
        const auto note = makeNote(u"x "_s + file->textRepresentation() + u" `code`"_s);
        EXPECT_EQ(note->orderedFiles(), QList{file}) << kept.toStdString();
    }
}

TEST_F(NoteFile, PicturesAreToldByTheirNameAndMeasured)
{
    const auto image = import(u"P.PNG"_s, png(640, 480)).as<QBNoteImage>();
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width(), 640);
    EXPECT_EQ(image->height(), 480);
    EXPECT_EQ(image->textRepresentation(), u"[image:"_s + image->uniqueIdentifier() + u"/P.PNG]"_s);
    EXPECT_EQ(image->localFolderName(), u"Local Files/Note Images"_s);
    const auto broken = import(u"b.gif"_s, "not a picture").as<QBNoteImage>();
    ASSERT_TRUE(broken);
    EXPECT_EQ(broken->width(), 0);
}

TEST_F(NoteFile, AFileThatCannotBeCopiedLeavesNoRow)
{
    NSError error;
    EXPECT_FALSE(QBNoteFile::factoryNoteFileForFileURL(QUrl::fromLocalFile(folder.path(u"absent"_s)), moc(), &error));
    EXPECT_TRUE(error.isSet());
    EXPECT_TRUE(QBNoteFile::filesInManagedObjectContext(moc(), {}).isEmpty());
}

TEST_F(NoteFile, MarkersInTheTextMakeTheFilesOfANote)
{
    const auto image = import(u"p.png"_s, png(1, 1));
    const auto file = import(u"f.txt"_s);
    const QString text = u"x "_s + file->textRepresentation() + u" y "_s + image->textRepresentation();
    const auto note = makeNote(text);
    EXPECT_EQ(note->orderedFiles(), (QList{file, image}));
    EXPECT_EQ(file->index(), 2);
    EXPECT_EQ(image->index(), text.indexOf(u"[image"_s));
    EXPECT_TRUE(note->hasImages());
    EXPECT_TRUE(note->hasFiles());
    EXPECT_EQ(note->orderedImages(), QList{image});
    EXPECT_EQ(note->orderedFilesWithoutImages(), QList{file});

    // A marker in code is mere text.
    note->updateNoteWithText(u"x\n```\n"_s + image->textRepresentation() + u"\n```\n"_s, 0);
    EXPECT_TRUE(note->files().isEmpty());
    EXPECT_TRUE(image->unused());
    EXPECT_FALSE(image->note());
    EXPECT_FALSE(note->hasImages());
    note->updateNoteWithText(text, 0);
    EXPECT_EQ(note->orderedFiles(), (QList{file, image}));
    EXPECT_FALSE(image->unused());
    EXPECT_EQ(file->note(), note);
    EXPECT_EQ(image->note(), note);
}

TEST_F(NoteFile, AMarkerOfAnotherNotesFileOrOfNoRowIsPlainText)
{
    const auto file = import(u"f.txt"_s);
    const auto owner = makeNote(file->textRepresentation());
    const auto other = makeNote(file->textRepresentation() + u" [file:NOBODY/x.txt] [image:/y]"_s);
    EXPECT_TRUE(other->files().isEmpty());
    EXPECT_EQ(file->note(), owner);
    EXPECT_FALSE(file->unused());
}

TEST_F(NoteFile, AnAttachmentLeavesInTwoStagesAndItsBinaryAfterTheSave)
{
    const auto file = import(u"f.txt"_s);
    const QString path = file->fileURL()->toLocalFile();
    const auto note = makeNote(file->textRepresentation());
    save();
    note->updateNoteWithText(u"gone"_s, 0);
    save();
    EXPECT_TRUE(QFileInfo::exists(path));
    QBNoteFile::deleteAllUnusedNoteFilesInManagedObjectContext(moc());
    EXPECT_TRUE(QFileInfo::exists(path)) << "the deletion is not durable yet";
    save();
    EXPECT_FALSE(QFileInfo::exists(QFileInfo(path).path()));
    EXPECT_TRUE(QBNoteFile::filesInManagedObjectContext(moc(), {}).isEmpty());
}

TEST_F(NoteFile, ADeletionFromDiskIsLogged)
{
    const auto file = import(u"f.txt"_s);
    const QString line = u"Deleting attachment "_s + file->uniqueIdentifier();
    save();
    auto &log = QBLogger::sharedLogger();
    log.setFileLoggerEnabled(true);
    const auto isLogged = [&log, &line] {
        log.flush();
        QFile lines(log.lastLogFilePath());
        return !lines.fileName().isEmpty() && lines.open(QIODevice::ReadOnly) &&
               QString::fromUtf8(lines.readAll()).contains(line + u'\n');
    };
    file->permanentlyDelete();
    EXPECT_FALSE(isLogged()) << "nothing is removed before the save";
    save();
    EXPECT_TRUE(isLogged());
    log.setFileLoggerEnabled(false);
}

TEST_F(NoteFile, ARolledBackDeletionKeepsTheBinary)
{
    const auto file = import(u"f.txt"_s);
    const auto note = makeNote(file->textRepresentation());
    save();
    note->permanentlyDelete();
    moc().rollback();
    note->pin();
    save();
    EXPECT_TRUE(hasBinary(*file));
    note->permanentlyDelete();
    const QString path = file->fileURL()->toLocalFile();
    save();
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST_F(NoteFile, OffTheMainThreadTheDiskIsLeftAlone)
{
    const auto file = import(u"f.txt"_s);
    const QString path = file->fileURL()->toLocalFile();
    save();
    std::atomic<bool> isDone = false;
    stack->performBackgroundTask([&](NSManagedObjectContext &context) {
        context.deleteObject(context.existingObjectWithID(file->objectID()).get());
        EXPECT_TRUE(context.save());
        isDone = true;
    });
    while (!isDone || moc().hasChanges() || !QBNoteFile::filesInManagedObjectContext(moc(), {}).isEmpty()) {
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(QFileInfo::exists(path));
}

TEST_F(NoteFile, DuplicateHasABinaryOfItsOwn)
{
    const auto file = import(u"f.txt"_s, "one");
    file->setUploaded(true);
    file->setUploadedDate(NSDate::now());
    const auto copy = file->duplicate();
    EXPECT_NE(copy->uniqueIdentifier(), file->uniqueIdentifier());
    EXPECT_FALSE(copy->uploaded());
    EXPECT_FALSE(copy->uploadedDate().has_value());
    EXPECT_TRUE(file->uploadedDate().has_value());
    EXPECT_FALSE(copy->note());
    EXPECT_EQ(copy->filename(), u"f.txt"_s);
    EXPECT_TRUE(hasBinary(*copy));
    EXPECT_NE(copy->fileURL(), file->fileURL());
}

TEST_F(NoteFile, ADuplicateOfAFileWhoseNameBrokeItsMarkerHasANameThatHolds)
{
    const auto file = import(u"f.txt"_s, "one");
    const QString path = file->fileURL()->toLocalFile();
    file->setFilename(u"f\n.tx\nt"_s);
    ASSERT_TRUE(QFile::rename(path, file->fileURL()->toLocalFile()));
    const auto copy = file->duplicate();
    EXPECT_EQ(copy->filename(), u"f.txt"_s);
    EXPECT_EQ(copy->normalizedFileExtension(), u"txt"_s);
    EXPECT_TRUE(hasBinary(*copy));
    EXPECT_TRUE(hasBinary(*file));
}

TEST_F(NoteFile, DuplicateAndMergeOfNotesGiveEachItsOwnFiles)
{
    const auto file = import(u"f.txt"_s);
    const auto note = makeNote(file->textRepresentation() + u" and again "_s + file->textRepresentation());
    const auto copy = note->duplicateWithSyntax(0);
    ASSERT_EQ(copy->filesCount(), 1);
    const auto copied = copy->orderedFiles().constFirst();
    EXPECT_NE(copied, file);
    EXPECT_EQ(copy->text(), copied->textRepresentation() + u" and again "_s + copied->textRepresentation());
    EXPECT_EQ(note->orderedFiles(), QList{file});
    const auto merged = QBNote::mergeNotes({note, copy}, 0);
    EXPECT_EQ(merged->filesCount(), 2);
    EXPECT_EQ(QBNoteFile::filesInManagedObjectContext(moc(), {}).size(), 4);
}

TEST_F(NoteFile, ReplacingMarkersTouchesNothingElse)
{
    const QList<std::pair<QString, QString>> markers{{u"[file:A/x]"_s, u"[file:B/x]"_s}};
    const std::pair<QString, QString> cases[] = {
        {u""_s, u""_s},
        {u"[file:A/x][file:A/x]"_s, u"[file:B/x][file:B/x]"_s},
        {u"[[file:A/x]"_s, u"[[file:B/x]"_s},
        {u"[file:A/xy] [file:A/x"_s, u"[file:A/xy] [file:A/x"_s},
        {u"[file:AA/x] [image:A/x]"_s, u"[file:AA/x] [image:A/x]"_s},
    };
    for (const auto &[text, replaced] : cases) {
        EXPECT_EQ(QBNoteFile::stringByReplacingMarkers(text, markers), replaced);
    }
}

TEST_F(NoteFile, ManyMarkersTakeOneFetch)
{
    const auto file = import(u"f.txt"_s);
    QString text;
    for (int i = 0; i < 100'000; ++i) {
        text += u"[file:NOBODY"_s + QString::number(i) + u"/x] "_s;
    }
    const auto note = makeNote(text + file->textRepresentation());
    EXPECT_EQ(note->orderedFiles(), QList{file});
}

TEST_F(NoteFile, UploadAndDownloadLists)
{
    const auto file = import(u"f.txt"_s);
    const auto note = makeNote(file->textRepresentation());
    EXPECT_EQ(QBNoteFile::noteFilesToUploadInManagedObjectContext(moc()), QList{file});
    file->setUploaded(true);
    EXPECT_TRUE(QBNoteFile::noteFilesToUploadInManagedObjectContext(moc()).isEmpty());
    file->setDownloaded(false);
    EXPECT_EQ(QBNoteFile::noteFilesToDownloadInManagedObjectContext(moc()), QList{file});
    file->setUploaded(false);
    ASSERT_TRUE(QFile::remove(file->fileURL()->toLocalFile()));
    EXPECT_TRUE(QBNoteFile::noteFilesToUploadInManagedObjectContext(moc()).isEmpty());
}

TEST_F(NoteFile, NamesThatLeaveTheFolderHaveNoPlace)
{
    const auto file = import(u"f.txt"_s);
    for (const QString &name : {u"../../x"_s, u".."_s, u"a/b"_s}) {
        file->setFilename(name);
        EXPECT_FALSE(file->fileURL()) << name.toStdString();
    }
}

} // namespace quib::tests

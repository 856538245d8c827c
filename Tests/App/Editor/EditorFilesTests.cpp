// What an open note shows of its attachments when their files change.

#include "EditorPaneFixture.h"

#include <Graphics/NSColor.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Store/QBNoteFilesDowloadedNotification.h>
#include <Store/QBNoteImage.h>

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

class EditorFiles : public EditorPaneFixture
{
protected:
    [[nodiscard]] QUrl picture(const QString &name, QSize size, Qt::GlobalColor color) const
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(color);
        const QString path = folder.path(name);
        EXPECT_TRUE(image.save(path));
        return QUrl::fromLocalFile(path);
    }
    /// Puts another file in an attachment's place, and lets its row know.
    static void replace(QBNoteFile &file, const QUrl &by)
    {
        const QString path = file.fileURL()->toLocalFile();
        ASSERT_TRUE(QFile::remove(path));
        ASSERT_TRUE(QFile::copy(by.toLocalFile(), path));
        file.updateFileMetadata();
        file.deleteFileThumbnails();
    }
    [[nodiscard]] QList<QBGenericFileTextAttachment *> attachments()
    {
        QList<QBGenericFileTextAttachment *> found;
        view().textStorage().enumerateFilesAttachmentsUsingBlock(
            [&found](QBGenericFileTextAttachment &attachment, NSRange) { found.append(&attachment); });
        return found;
    }
    [[nodiscard]] static bool waitForColor(const QBImageTextAttachment &image, const NSColor &color)
    {
        return QTest::qWaitFor([&] {
            const NSImage &shown = image.attachmentImage();
            return !shown.isEmpty() && shown.colorAt(1, 1) == color;
        });
    }
};

TEST_F(EditorFiles, ShowsWhatBecameOfThem)
{
    const auto note = show({});
    pane->attachFiles(
        {picture(u"a.png"_s, {40, 20}, Qt::red), picture(u"b.png"_s, {40, 20}, Qt::red), userFile(u"c.txt"_s, "old")});
    pane->saveNote(/*forceSave=*/true);
    const auto before = attachments();
    ASSERT_EQ(before.size(), 3);
    auto &changed = dynamic_cast<QBImageTextAttachment &>(*before[0]);
    auto &other = dynamic_cast<QBImageTextAttachment &>(*before[1]);
    const NSColor red = NSColor::colorWithRed(1, 0, 0);
    ASSERT_TRUE(waitForColor(changed, red) && waitForColor(other, red));
    const auto rowOf = [this](const QBGenericFileTextAttachment &attachment) {
        return QBNoteFile::noteFileWithTextRepresentation(attachment.representedText(), moc());
    };
    const auto heightOfLine = [this] { return view().layoutManager().paragraphOfLocation(0).height; };
    const double height = heightOfLine();

    replace(*rowOf(changed), picture(u"new.png"_s, {60, 90}, Qt::blue));
    replace(*rowOf(other), picture(u"new.png"_s, {60, 90}, Qt::blue));
    const auto text = rowOf(*before[2]);
    text->setModificationDate(text->modificationDate()->dateByAddingTimeInterval(60));
    QBNoteFilesDowloadedNotification().notify(
        {rowOf(changed)->uniqueIdentifier(), text->uniqueIdentifier(), u"no attachment"_s});

    EXPECT_TRUE(waitForColor(changed, NSColor::colorWithRed(0, 0, 1)));
    EXPECT_EQ(changed.attachmentSize(), QSizeF(60, 90));
    EXPECT_GT(heightOfLine(), height + 50) << "the line makes room";
    EXPECT_EQ(before[2]->modificationDate(), text->modificationDate());
    EXPECT_EQ(other.attachmentImage().colorAt(1, 1), red) << "nobody told of it";
    EXPECT_EQ(attachments(), before) << "the text stays as it is";
}

TEST_F(EditorFiles, OfAnotherNoteBecomeTheNotesOwnWhileTheyAreFolded)
{
    const auto owner = show({});
    pane->attachFiles({userFile(u"letter.txt"_s, "Dear")});
    pane->saveNote(/*forceSave=*/true);
    const QString marker = owner->orderedFiles().first()->textRepresentation();
    preferences->setFoldCompletedTodo(true);
    const auto note = show(QString(u"+ read " % marker % u"\nrest"));
    ASSERT_EQ(buffer(), u"\uFFFC\nrest"_s);
    type(u"!"_s);
    pane->saveNote(/*forceSave=*/true);
    owner->permanentlyDelete();
    save();
    ASSERT_EQ(note->orderedFiles().size(), 1);
    const auto file = note->orderedFiles().first();
    EXPECT_EQ(stored(note), QString(u"+ read " % file->textRepresentation() % u"\nrest!"));
    EXPECT_NE(file->textRepresentation(), marker);
    EXPECT_EQ(QFileInfo(file->fileURL()->toLocalFile()).size(), 4);
    view().openAttachment(0);
    ASSERT_EQ(attachments().size(), 1);
    EXPECT_EQ(attachments().first()->fileURL(), file->fileURL());
    EXPECT_EQ(shown(), stored(note));
}

} // namespace

} // namespace quib::tests

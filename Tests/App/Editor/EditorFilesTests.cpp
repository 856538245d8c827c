// What an open note shows of its attachments when their files change.

#include "EditorPaneFixture.h"

#include <Graphics/NSColor.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Markup/Editing/QBNoteEditorCoreController.h>
#include <Store/QBNoteFilesDowloadedNotification.h>
#include <Store/QBNoteImage.h>

#include <QAction>
#include <QClipboard>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
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
    /// Folds a stretch, and a part of it before that.
    void fold(NSRange range, NSRange part)
    {
        QBNoteEditorCoreController controller(view().textKitStack());
        controller.foldTextInRange(part, u"part"_s, &view());
        controller.foldTextInRange({range.location, range.length + 1 - part.length}, u"whole"_s, &view());
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

TEST_F(EditorFiles, ShowsWhatBecameOfThemWhereTheyAreFolded)
{
    show({});
    pane->attachFiles({picture(u"a.png"_s, {40, 20}, Qt::red), userFile(u"b.txt"_s, "old")});
    pane->saveNote(/*forceSave=*/true);
    const auto before = attachments();
    ASSERT_EQ(before.size(), 2);
    auto &changed = dynamic_cast<QBImageTextAttachment &>(*before[0]);
    ASSERT_TRUE(waitForColor(changed, NSColor::colorWithRed(1, 0, 0)));
    const auto image = QBNoteFile::noteFileWithTextRepresentation(changed.representedText(), moc());
    const auto text = QBNoteFile::noteFileWithTextRepresentation(before[1]->representedText(), moc());
    const qint64 place = buffer().indexOf(QChar::ObjectReplacementCharacter);
    fold({0, view().textStorage().length()}, {place, 1});
    ASSERT_EQ(buffer().count(QChar::ObjectReplacementCharacter), 1);

    replace(*image, picture(u"new.png"_s, {60, 90}, Qt::blue));
    text->setModificationDate(text->modificationDate()->dateByAddingTimeInterval(60));
    QBNoteFilesDowloadedNotification().notify({image->uniqueIdentifier(), text->uniqueIdentifier()});
    view().openAttachment(0);
    view().openAttachment(place);

    EXPECT_EQ(attachments(), before) << "the text stays as it is";
    EXPECT_EQ(before[1]->modificationDate(), text->modificationDate());
    EXPECT_TRUE(waitForColor(changed, NSColor::colorWithRed(0, 0, 1)));
    EXPECT_EQ(changed.attachmentSize(), QSizeF(60, 90));
    EXPECT_GT(view().layoutManager().paragraphOfLocation(place).height, 90) << "the line makes room";
}

TEST_F(EditorFiles, GrowWithTheColumnWhereTheyAreFolded)
{
    const auto note = show({});
    pane->attachFiles({picture(u"wide.png"_s, {1200, 300}, Qt::green)});
    pane->saveNote(/*forceSave=*/true);
    pane->setNote(nullptr);
    pane->resize(300, 400);
    processEvents();
    pane->setNote(note);
    const auto before = attachments();
    ASSERT_EQ(before.size(), 1);
    auto &wide = dynamic_cast<QBImageTextAttachment &>(*before[0]);
    ASSERT_TRUE(waitForColor(wide, NSColor::colorWithRed(0, 1, 0)));
    const double narrow = wide.attachmentSize().width();
    ASSERT_LT(narrow, 300);
    fold({0, view().textStorage().length()}, {buffer().indexOf(QChar::ObjectReplacementCharacter), 1});
    pane->resize(800, 400);
    processEvents();
    clock.advance(0.5);
    EXPECT_GT(wide.attachmentSize().width(), narrow * 1.5);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return wide.attachmentImage().pixelSize().width() >= wide.attachmentSize().width() - 1; }));
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

TEST_F(EditorFiles, GoIntoANoteMadeOfAFold)
{
    const auto note = show({});
    pane->attachFiles({userFile(u"letter.txt"_s, "Dear")});
    pane->saveNote(/*forceSave=*/true);
    fold({0, view().textStorage().length()}, {0, 1});
    QString chosen;
    QObject::connect(pane.get(), &QBNoteEditorViewController::noteWasChosen,
                     [&chosen](const QString &identifier) { chosen = identifier; });
    view().selectAll();
    pane->action(u"note-from-selection"_s)->trigger();
    const auto made = QBNote::noteWithUniqueIdentifier(chosen, moc());
    ASSERT_TRUE(made);
    ASSERT_EQ(made->orderedFiles().size(), 1);
    ASSERT_EQ(note->orderedFiles().size(), 1);
    EXPECT_TRUE(made->text().contains(made->orderedFiles().first()->textRepresentation()));
    EXPECT_NE(made->orderedFiles().first()->uniqueIdentifier(), note->orderedFiles().first()->uniqueIdentifier());
}

TEST_F(EditorFiles, AreCopiedWithTheirFold)
{
    struct Case
    {
        const char *name;
        QString textBefore;
        bool isPicture;
    };
    for (const Case &testCase : {Case{"a picture alone", u""_s, true}, Case{"a picture with text", u"red "_s, false}}) {
        SCOPED_TRACE(testCase.name);
        const auto note = show(testCase.textBefore);
        pane->attachFiles({picture(u"a.png"_s, {40, 20}, Qt::red)});
        pane->saveNote(/*forceSave=*/true);
        const QString text = shown();
        fold({0, view().textStorage().length()}, {buffer().indexOf(QChar::ObjectReplacementCharacter), 1});
        view().selectAll();
        view().copy();
        const QMimeData *copied = QGuiApplication::clipboard()->mimeData();
        EXPECT_EQ(copied->text(), text);
        ASSERT_EQ(note->orderedImages().size(), 1);
        EXPECT_EQ(copied->urls(), QList<QUrl>{*note->orderedImages().first()->fileURL()});
        EXPECT_EQ(copied->hasImage(), testCase.isPicture);
    }
}

} // namespace

} // namespace quib::tests

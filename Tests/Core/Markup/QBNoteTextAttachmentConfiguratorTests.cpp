#include <Core/Store/StoreFixture.h>

#include <Graphics/GraphicsContext.h>
#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Markup/QBNoteTextAttachmentConfigurator.h>
#include <Store/QBNoteImage.h>
#include <Store/QBThumbFileManager.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace quib::tests {

class AttachmentConfigurator : public StoreFixture
{
protected:
    AttachmentConfigurator()
    {
        themeManager->loadDefaultTheme();
        configurator.setManagedObjectContext(moc().weak_from_this());
        configurator.setConfigureAttachmentSynchronously(true);
    }
    [[nodiscard]] Ref<QBNoteFile> import(const QString &name, const QByteArray &bytes) const
    {
        return QBNoteFile::factoryNoteFileForFileURL(userFile(name, bytes), moc());
    }
    [[nodiscard]] Ref<QBNoteFile> importPicture(const QString &name, QSize size) const
    {
        GraphicsContext context(size, 1, NSColor::colorWithRed(1, 0, 0));
        return import(name, name.endsWith(u".png"_s) ? context.image().pngData() : context.image().jpegData());
    }
    [[nodiscard]] std::shared_ptr<QBImageTextAttachment> imageFor(const QString &marker)
    {
        auto attachment = std::make_shared<QBImageTextAttachment>(marker, themeManager);
        attachment->setUpdateHandler([this](QBNotesTextAttachment &) { ++updates; });
        configurator.configureTextAttachment(*attachment);
        return attachment;
    }
    [[nodiscard]] static QStringList thumbs(const TemporaryFolder &folder)
    {
        return folder.names(u"net.quibworks.quib/Thumbs/Note Images"_s);
    }
    static void runMainQueue()
    {
        QBThumbFileManager::waitUntilBackgroundIsIdle();
        QCoreApplication::processEvents();
    }

    std::shared_ptr<QBNotesTextThemeManager> themeManager = std::make_shared<QBNotesTextThemeManager>();
    QBNoteTextAttachmentConfigurator configurator;
    int updates = 0;
};

TEST_F(AttachmentConfigurator, AFileGetsWhatItsRecordKnows)
{
    const auto file = import(u"a.txt"_s, "hello");
    QBGenericFileTextAttachment attachment(file->textRepresentation(), themeManager);
    configurator.configureTextAttachment(attachment);
    EXPECT_EQ(attachment.fileURL(), *file->fileURL());
    EXPECT_EQ(attachment.filename(), u"a.txt"_s);
    EXPECT_EQ(attachment.modificationDate(), file->modificationDate());
}

TEST_F(AttachmentConfigurator, AMarkerWithoutARecordStaysAnEmptyFile)
{
    const auto text = import(u"a.txt"_s, "hello");
    const QString markers[] = {u"[image:x/y]"_s, u"[image:/]"_s, u"nonsense"_s,
                               text->textRepresentation()}; // that is no picture
    for (const QString &marker : markers) {
        const auto attachment = imageFor(marker);
        EXPECT_TRUE(attachment->fileURL().isEmpty()) << marker.toStdString();
        EXPECT_TRUE(attachment->attachmentImage().isEmpty());
        EXPECT_TRUE(attachment->attachmentImageSize().isEmpty());
        EXPECT_EQ(attachment->representedText(), marker);
    }
    QBGenericFileTextAttachment file(u"[file:x/y]"_s, themeManager);
    configurator.configureTextAttachment(file);
    EXPECT_TRUE(file.fileURL().isEmpty());
    QBCheckBoxTextAttachment box(u"-"_s, themeManager);
    configurator.configureTextAttachment(box);
    EXPECT_EQ(box.representedText(), u"-"_s);
}

TEST_F(AttachmentConfigurator, PicturesShrinkToTheLimitsAndNeverGrow)
{
    struct Case
    {
        QSizeF limits;
        double scale;
        QSizeF size;
        QSizeF expected;
        bool isScaled;
    };
    const Case cases[] = {
        {{0, 0}, 1, {4000, 3000}, {4000, 3000}, false},
        {{100, 0}, 1, {200, 50}, {100, 25}, true},
        {{100, 0}, 1, {99, 50}, {99, 50}, false},
        {{100, 0}, 1, {100, 51}, {100, 51}, true},  // as wide as the limit counts as scaled
        {{100, 0}, 1, {300, 100}, {100, 33}, true}, // whole pixels in height
        {{0, 100}, 1, {50, 100}, {50, 100}, false}, // as high as the limit does not
        {{0, 100}, 1, {150, 300}, {50, 100}, true},
        {{0, 100}, 1, {100, 300}, {100.0 / 3, 100}, true},
        {{100, 100}, 1, {400, 200}, {100, 50}, true}, // both: height first, then width from the original
        {{100, 100}, 1, {200, 400}, {50, 100}, true},
        {{100, 0}, 2, {200, 100}, {200, 100}, true},
        {{100, 0}, 2, {199, 100}, {199, 100}, false},
        {{100, 0}, 2, {800, 100}, {200, 25}, true},
        {{100, 100}, 1, {0, 0}, {0, 0}, false},
    };
    for (const auto &given : cases) {
        configurator.setMaxAttachmentWidth(given.limits.width());
        configurator.setMaxAttachmentHeight(given.limits.height());
        configurator.setScale(given.scale);
        bool isScaled = !given.isScaled;
        EXPECT_EQ(configurator.imageThumbSizeForImageSize(given.size, &isScaled), given.expected)
            << given.size.width() << " by " << given.size.height();
        EXPECT_EQ(isScaled, given.isScaled) << given.size.width() << " by " << given.size.height();
    }
}

TEST_F(AttachmentConfigurator, OnlyQuickFormsOfSmallPicturesAreReadWhole)
{
    struct Case
    {
        QString name;
        QSizeF thumbSize;
        QSizeF originalSize;
        bool expected;
    };
    const Case cases[] = {
        {u"/a.png"_s, {10, 10}, {10, 10}, true},   {u"/a.JPG"_s, {10, 10}, {10, 10}, true},
        {u"/a.jpeg"_s, {10, 10}, {5, 10}, true},   {u"/a.gif"_s, {10, 10}, {10, 10}, false},
        {u"/a.heic"_s, {10, 10}, {1, 1}, false},   {u"/a"_s, {10, 10}, {1, 1}, false},
        {u"/a.png"_s, {10, 10}, {10, 11}, false},  {u"/a.png"_s, {10, 10}, {11, 10}, false},
        {u"/a.png.tiff"_s, {9, 9}, {9, 9}, false},
    };
    for (const auto &given : cases) {
        EXPECT_EQ(QBNoteTextAttachmentConfigurator::canLoadOriginalImageURL(QUrl::fromLocalFile(given.name),
                                                                            given.thumbSize, given.originalSize),
                  given.expected)
            << given.name.toStdString();
    }
}

TEST_F(AttachmentConfigurator, ALargePictureIsShownByASmallCopy)
{
    const auto file = importPicture(u"a.png"_s, {400, 200});
    configurator.setMaxAttachmentWidth(50);
    configurator.setScale(2);
    const auto attachment = imageFor(file->textRepresentation());
    EXPECT_EQ(attachment->fileURL(), *file->fileURL());
    EXPECT_EQ(attachment->originalImageSize(), QSizeF(400, 200));
    EXPECT_EQ(attachment->attachmentImageSize(), QSizeF(50, 25)) << "points, not pixels";
    EXPECT_EQ(attachment->attachmentImage().pixelSize(), QSize(100, 50));
    EXPECT_EQ(attachment->attachmentImage().size(), QSizeF(50, 25));
    EXPECT_EQ(updates, 1);
    ASSERT_EQ(thumbs(folder).size(), 1);

    ASSERT_TRUE(QFile::remove(file->fileURL()->toLocalFile()));
    EXPECT_TRUE(imageFor(file->textRepresentation())->attachmentImage().isEmpty()) << "without its file there is none";
}

TEST_F(AttachmentConfigurator, APictureOfAnUprightCameraIsShownUpright)
{
    GraphicsContext context({400, 200}, 1, NSColor::colorWithRed(1, 0, 0));
    QByteArray bytes = context.image().jpegData();
    // The mark of a picture that is to be turned clockwise by a quarter, behind the first two bytes.
    bytes.insert(2, QByteArray("\xFF\xE1\x00\x22"
                               "Exif\0\0"
                               "MM\0\x2A\0\0\0\x08"
                               "\0\x01"
                               "\x01\x12\0\x03\0\0\0\x01\0\x06\0\0"
                               "\0\0\0\0",
                               36));
    const auto file = import(u"upright.jpg"_s, bytes);
    const auto record = file.as<QBNoteImage>();
    ASSERT_EQ(record->width(), 200) << "the record tells how it is shown";
    configurator.setMaxAttachmentWidth(50);
    for (const QSize recorded : {QSize(200, 400), QSize(400, 200)}) { // the latter as a record from elsewhere has it
        record->setWidth(recorded.width());
        record->setHeight(recorded.height());
        const auto attachment = imageFor(file->textRepresentation());
        EXPECT_EQ(attachment->originalImageSize(), QSizeF(200, 400));
        EXPECT_EQ(attachment->attachmentImageSize(), QSizeF(50, 100));
        EXPECT_EQ(attachment->attachmentImage().pixelSize(), QSize(50, 100));
    }
}

TEST_F(AttachmentConfigurator, ADrawingInItsOwnSizeIsReadWhole)
{
    GraphicsContext context({40, 20}, 1, NSColor::colorWithRed(1, 0, 0));
    const QByteArray bytes = context.image().pngData();
    struct Case
    {
        QString name;
        double limit;
        bool isReadWhole;
    };
    // A form that is not quick to read goes by its small copy.
    const Case cases[] = {
        {u"quib_sketch 1.tiff"_s, 50, true},
        {u"quib_sketch 1.tiff"_s, 30, false},
        {u"my quib_sketch.tiff"_s, 50, false},
    };
    qsizetype thumbCount = 0;
    for (const auto &[name, limit, isReadWhole] : cases) {
        SCOPED_TRACE(name.toStdString());
        configurator.setMaxAttachmentWidth(limit);
        const auto attachment = imageFor(import(name, bytes)->textRepresentation());
        EXPECT_EQ(attachment->attachmentImage().pixelSize().width(), std::min(limit, 40.0));
        thumbCount += isReadWhole ? 0 : 1;
        EXPECT_EQ(thumbs(folder).size(), thumbCount);
    }
}

TEST_F(AttachmentConfigurator, ASmallPictureIsShownAsItIs)
{
    const auto file = importPicture(u"a.png"_s, {40, 20});
    configurator.setMaxAttachmentWidth(50);
    EXPECT_EQ(imageFor(file->textRepresentation())->attachmentImage().pixelSize(), QSize(40, 20));
    EXPECT_TRUE(thumbs(folder).isEmpty());
}

TEST_F(AttachmentConfigurator, TheWholePictureIsLoadedWhenAskedFor)
{
    const auto file = importPicture(u"a.jpg"_s, {400, 200});
    configurator.setMaxAttachmentWidth(50);
    configurator.setUseOriginalAttachment(true);
    const auto attachment = imageFor(file->textRepresentation());
    EXPECT_EQ(attachment->attachmentImage().pixelSize(), QSize(400, 200));
    EXPECT_EQ(attachment->attachmentImageSize(), QSizeF(50, 25));
    EXPECT_TRUE(thumbs(folder).isEmpty());
}

TEST_F(AttachmentConfigurator, OnlyURLsLoadNoPicture)
{
    const auto file = importPicture(u"a.png"_s, {40, 20});
    configurator.setConfigureAttachmentURLOnly(true);
    const auto attachment = imageFor(file->textRepresentation());
    EXPECT_EQ(attachment->fileURL(), *file->fileURL());
    EXPECT_EQ(attachment->originalImageSize(), QSizeF(40, 20));
    EXPECT_TRUE(attachment->attachmentImage().isEmpty());
    EXPECT_EQ(updates, 0);
}

TEST_F(AttachmentConfigurator, InTheBackgroundThePictureArrivesLater)
{
    const auto file = importPicture(u"a.png"_s, {400, 200});
    configurator.setConfigureAttachmentSynchronously(false);
    configurator.setMaxAttachmentWidth(50);
    const auto attachment = imageFor(file->textRepresentation());
    auto gone = imageFor(file->textRepresentation());
    EXPECT_EQ(attachment->attachmentImageSize(), QSizeF(50, 25)) << "the room is kept at once";
    EXPECT_TRUE(attachment->attachmentImage().isEmpty());
    gone.reset();
    EXPECT_EQ(updates, 0);
    runMainQueue();
    EXPECT_EQ(updates, 1);
    EXPECT_EQ(attachment->attachmentImage().pixelSize(), QSize(50, 25));
}

TEST_F(AttachmentConfigurator, APictureThatCannotBeReadKeepsItsRoom)
{
    GraphicsContext context({400, 200});
    const QByteArray whole = context.image().pngData();
    const auto file = import(u"cut.png"_s, whole.first(60));
    ASSERT_TRUE(file.as<QBNoteImage>());
    configurator.setMaxAttachmentWidth(50);
    const auto attachment = imageFor(file->textRepresentation());
    EXPECT_EQ(attachment->attachmentImageSize(), QSizeF(50, 25));
    EXPECT_TRUE(attachment->attachmentImage().isEmpty());
    EXPECT_TRUE(thumbs(folder).isEmpty());
    EXPECT_EQ(attachment->representedText(), file->textRepresentation());
}

TEST_F(AttachmentConfigurator, TheListenerIsTheConfigurators)
{
    const auto file = importPicture(u"a.png"_s, {40, 20});
    QBNotesTextAttachment *updated = nullptr;
    configurator.setUpdateHandler([&updated](QBNotesTextAttachment &attachment) { updated = &attachment; });
    const auto attachment = imageFor(file->textRepresentation());
    EXPECT_EQ(updated, attachment.get());
    EXPECT_EQ(updates, 0);
}

} // namespace quib::tests

// Markers of files and pictures.

#include "StyledBlocks.h"

#include <Files/TemporaryDirectory.h>
#include <Graphics/NSImage.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Markup/Stylers/QBNoteImageStyler.h>
#include <Markup/Stylers/QBNoteTextAttachmentConfiguring.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using quib::tests::StyledBlocks;

namespace {

/// Remembers what it was asked for, and gives each attachment a file.
class Configurator : public QBNoteTextAttachmentConfiguring
{
public:
    void configureTextAttachment(QBNotesTextAttachment &attachment, QBNoteTextStyler &forTextStyler) override
    {
        const bool isImage = dynamic_cast<QBNoteImageStyler *>(&forTextStyler) != nullptr;
        m_asked.append(QString((isImage ? u"image "_s : u"file "_s) % attachment.representedText()));
        m_hadTheme = m_hadTheme && attachment.themeManager() != nullptr;
        static_cast<QBGenericFileTextAttachment &>(attachment)
            .setFileURL(QUrl::fromLocalFile(QString(u"/"_s % attachment.representedText())));
    }
    [[nodiscard]] const QStringList &asked() const { return m_asked; }
    [[nodiscard]] bool hadTheme() const { return m_hadTheme; }

private:
    QStringList m_asked;
    bool m_hadTheme = true;
};

std::shared_ptr<QBGenericFileTextAttachment> fileAt(StyledBlocks &blocks, qint64 place)
{
    return blocks.text().attribute(NSAttachmentAttributeName, place).sharedAs<QBGenericFileTextAttachment>();
}

/// The stylers of files with a configurator.
StyledBlocks fileBlocks(Configurator &configurator)
{
    auto file = std::make_shared<QBNoteGenericFileStyler>();
    auto image = std::make_shared<QBNoteImageStyler>();
    file->setTextAttachmentConfigurator(&configurator);
    image->setTextAttachmentConfigurator(&configurator);
    return StyledBlocks({std::move(file), std::move(image)}, quib::tests::blockTheme());
}

} // namespace

TEST(FileBlockStylers, StandForWholeMarkers)
{
    const struct
    {
        QString text;
        QString shown;
    } rows[] = {
        {u"a [file:1/b c.txt] d"_s, u"a «[file:1/b c.txt]» d"_s},
        {u"[image:1/b.png]\n[file:2/c]"_s, u"«[image:1/b.png]»\n«[file:2/c]»"_s},
        {u"[image:1/b][image:1/b]"_s, u"«[image:1/b]»«[image:1/b]»"_s},
        {u"[file:1/2/3]]"_s, u"«[file:1/2/3]»]"_s},
        {u"[file:/a]"_s, u"[file:/a]"_s},
        {u"[file:1]"_s, u"[file:1]"_s},
        {u"[file:1/\n2]"_s, u"[file:1/\n2]"_s},
        {u"[File:1/2]"_s, u"[File:1/2]"_s},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(qPrintable(row.text));
        for (const auto theme : {StyledBlocks::Theme::None, StyledBlocks::Theme::Plain}) {
            StyledBlocks blocks(0, theme);
            blocks.load(row.text);
            EXPECT_EQ(blocks.shown(), row.shown);
            EXPECT_EQ(blocks.expanded(), row.text);
            blocks.restyle();
            EXPECT_EQ(blocks.shown(), row.shown);
        }
    }
}

TEST(FileBlockStylers, MakeEachAttachmentOfItsClass)
{
    StyledBlocks blocks;
    blocks.load(u"[image:1/b][file:2/c]"_s);
    EXPECT_TRUE(std::dynamic_pointer_cast<QBImageTextAttachment>(fileAt(blocks, 0)));
    ASSERT_TRUE(fileAt(blocks, 1));
    EXPECT_FALSE(std::dynamic_pointer_cast<QBImageTextAttachment>(fileAt(blocks, 1)));
}

TEST(FileBlockStylers, AskTheConfiguratorForEachNewAttachmentOnly)
{
    Configurator configurator;
    StyledBlocks blocks = fileBlocks(configurator);
    blocks.load(u"[file:1/a] [image:2/b] [file:1/a]"_s);
    EXPECT_EQ(configurator.asked(), (QStringList{u"file [file:1/a]"_s, u"file [file:1/a]"_s, u"image [image:2/b]"_s}));
    EXPECT_TRUE(configurator.hadTheme());
    EXPECT_EQ(fileAt(blocks, 0)->fileURL().path(), u"/[file:1/a]"_s);
    EXPECT_NE(fileAt(blocks, 0), fileAt(blocks, 4));
    const auto before = fileAt(blocks, 2);

    blocks.edit({1, 0}, u"typed "_s);
    blocks.edit({blocks.text().length(), 0}, u"]"_s);
    EXPECT_EQ(configurator.asked().size(), 3);
    EXPECT_EQ(fileAt(blocks, 8), before) << "what was loaded stays";
    EXPECT_EQ(blocks.shown(), u"«[file:1/a]»typed  «[image:2/b]» «[file:1/a]»]"_s);
}

TEST(FileBlockStylers, TakeTheAttributesOfTheTheme)
{
    StyledBlocks blocks;
    const auto &theme = *blocks.themeManager();
    auto &files = blocks.styler<QBNoteGenericFileStyler>();
    auto &images = blocks.styler<QBNoteImageStyler>();
    quib::AttributeSet file =
        files.attributedStringWithTextAttachmentForRepresentedText(u"[file:1/a]"_s)->attributesAtIndex(0);
    quib::AttributeSet image =
        images.attributedStringWithTextAttachmentForRepresentedText(u"[image:1/a]"_s)->attributesAtIndex(0);
    EXPECT_TRUE(file.contains(NSAttachmentAttributeName));
    file.remove(NSAttachmentAttributeName);
    image.remove(NSAttachmentAttributeName);
    EXPECT_EQ(file, theme.defaultTextAttributes());
    EXPECT_EQ(image, theme.defaultAttachmentAttributes());
}

TEST(FileBlockStylers, GiveWayToGuards)
{
    StyledBlocks blocks;
    blocks.load(u"a [file:1/b]"_s);
    blocks.edit({0, 0}, u"# "_s);
    EXPECT_EQ(blocks.shown(), u"«#» a [file:1/b]"_s);
}

TEST(FileBlockStylers, TellThePiecesOfMarkers)
{
    EXPECT_EQ(QBNoteGenericFileStyler::stylerMarkerComponents(), (QStringList{u"[file:"_s, u"]"_s}));
    EXPECT_EQ(QBNoteImageStyler::stylerMarkerComponents(), (QStringList{u"[image:"_s, u"]"_s}));
    const struct
    {
        QString marker;
        QString path;
        QString name;
    } rows[] = {
        {u"[file:ID/a b.txt]"_s, u"ID/a b.txt"_s, u"a%20b.txt"_s},
        {u"[image:ID/ü/ä?=&.png]"_s, u"ID/ü/ä?=&.png"_s, u"%C3%BC/%C3%A4?=&.png"_s},
        {u"[file:ID/a#b%c\"<>^`{|}.x]"_s, u"ID/a#b%c\"<>^`{|}.x"_s, u"a%23b%25c%22%3C%3E%5E%60%7B%7C%7D.x"_s},
        {u"[file:a:b/c]"_s, u"a:b/c"_s, u"c"_s},
        {u"abc"_s, {}, {}},
        {u":"_s, {}, {}},
        {{}, {}, {}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(qPrintable(row.marker));
        EXPECT_EQ(QBNoteGenericFileStyler::pathComponentFromTextRepresentation(row.marker), row.path);
        EXPECT_EQ(QBNoteGenericFileStyler::filenameFromAttachmentRepresentedString(row.marker), row.name);
    }
}

TEST(FileBlockStylers, RemoveMarkersAndTheLinesThatHeldNothingElse)
{
    const struct
    {
        QString text;
        NSRange range;
        QString left;
        NSRange rangeLeft;
    } rows[] = {
        {u"a\n[file:1/b]\nc"_s, {0, 14}, u"a\nc"_s, {0, 3}},
        {u"a [file:1/b] c\n"_s, {0, 15}, u"a  c\n"_s, {0, 5}},
        {u"[file:1/b][file:2/c]\nx"_s, {0, 22}, u"x"_s, {0, 1}},
        {u"a[file:1/b]\n[file:2/c]\n"_s, {0, 23}, u"a\n"_s, {0, 2}},
        {u"[file:1/b]"_s, {0, 10}, u""_s, {0, 0}},
        {u"a\n[file:1/b]"_s, {0, 12}, u"a\n"_s, {0, 2}},
        {u"[file:1/b]\n[file:2/c]"_s, {0, 11}, u"[file:2/c]"_s, {0, 0}},
        {u"[file:1/b]\nx"_s, {0, 10}, u"x"_s, {0, 0}},
        {u"[file:1/b] \n"_s, {0, 12}, u" \n"_s, {0, 2}},
        {u"[image:1/b]"_s, {0, 11}, u"[image:1/b]"_s, {0, 11}},
    };
    const QBNoteGenericFileStyler styler;
    for (const auto &row : rows) {
        SCOPED_TRACE(qPrintable(row.text));
        QString text = row.text;
        NSRange range = row.range;
        styler.removeInString(text, range);
        EXPECT_EQ(text, row.left);
        EXPECT_EQ(range, row.rangeLeft);
    }
    QString text = u"[image:1/b]\n[file:2/c]"_s;
    NSRange range{0, text.size()};
    QBNoteImageStyler().removeInString(text, range);
    EXPECT_EQ(text, u"[file:2/c]"_s);
}

TEST(FileBlockStylers, TellTheFilesOfPictures)
{
    NSError error;
    const QString folder = quib::makeTemporaryFolder(&error);
    ASSERT_FALSE(folder.isNull());
    // The bytes tell what a picture is, so a PNG serves as one with another name.
    const QString tiff = QString(folder % u"/scan.tiff");
    ASSERT_TRUE(
        NSImage::imageWithData(QByteArray::fromBase64("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42m"
                                                      "Nk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg=="),
                               u"pixel"_s, &error)
            ->writePNGToFile(tiff, &error));
    const QString broken = QString(folder % u"/broken.tiff");
    QFile brokenFile(broken);
    ASSERT_TRUE(brokenFile.open(QIODevice::WriteOnly) && brokenFile.write("no picture") > 0);
    brokenFile.close();

    StyledBlocks blocks;
    blocks.load(u"[image:1/a.jpg] [file:2/b] [image:3/scan.tiff] [image:4/c] [image:5/broken.tiff]"_s);
    fileAt(blocks, 0)->setFileURL(QUrl::fromLocalFile(u"/a.jpg"_s));
    fileAt(blocks, 2)->setFileURL(QUrl::fromLocalFile(u"/b"_s));
    fileAt(blocks, 4)->setFileURL(QUrl::fromLocalFile(tiff));
    fileAt(blocks, 8)->setFileURL(QUrl::fromLocalFile(broken));
    const QList<QUrl> urls = QBNoteImageStyler::imagesURLInAttributedString(blocks.text(), blocks.text().fullRange());
    ASSERT_EQ(urls.size(), 3);
    EXPECT_EQ(urls.at(0).path(), u"/a.jpg"_s);
    const QFileInfo copy(urls.at(1).toLocalFile());
    EXPECT_EQ(copy.fileName(), u"scan.png"_s);
    EXPECT_NE(copy.absolutePath(), folder);
    const auto image = NSImage::imageWithContentsOfFile(copy.filePath(), &error);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixelSize(), QSize(1, 1));
    EXPECT_EQ(urls.at(2).toLocalFile(), broken);
    quib::removeTemporaryFolders();
}

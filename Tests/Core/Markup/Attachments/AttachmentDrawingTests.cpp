#include "AttachmentFamily.h"

#include <Graphics/GraphicsContext.h>
#include <Markup/Attachments/AttachmentDrawing.h>

#include <Support/QtPrinters.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

constexpr double kMargin = 10;
constexpr double kScale = 2;

/// The pixels that differ from white.
struct Ink
{
    qint64 count = 0;
    QRect bounds;
};

Ink inkOf(const NSImage &image)
{
    Ink ink;
    for (int y = 0; y < image.pixelSize().height(); ++y) {
        for (int x = 0; x < image.pixelSize().width(); ++x) {
            if (image.colorAt(x, y) != NSColor::whiteColor()) {
                ++ink.count;
                ink.bounds |= QRect(x, y, 1, 1);
            }
        }
    }
    return ink;
}

} // namespace

class AttachmentDrawing : public testing::Test
{
protected:
    AttachmentDrawing() { themeManager->loadDefaultTheme(); }

    /// An attachment on white, with a margin around its rectangle.
    [[nodiscard]] static NSImage drawn(const QBNotesTextAttachment &attachment)
    {
        const QSizeF size = attachment.cachedAttachmentSize();
        GraphicsContext context(size + QSizeF(2 * kMargin, 2 * kMargin), kScale, NSColor::whiteColor());
        attachment.drawAttachmentForAttachmentRect(context, {{kMargin, kMargin}, size});
        return context.image();
    }
    [[nodiscard]] static QRect pixelRect(const QRectF &rect)
    {
        return QRectF(rect.topLeft() * kScale, rect.size() * kScale).toAlignedRect();
    }
    [[nodiscard]] static NSColor colorAtMiddle(const NSImage &image)
    {
        return image.colorAt(image.pixelSize().width() / 2, image.pixelSize().height() / 2);
    }

    std::shared_ptr<QBNotesTextThemeManager> themeManager = std::make_shared<QBNotesTextThemeManager>();
};

TEST_F(AttachmentDrawing, EachIsSeenInsideOfItsRoomAtAnySize)
{
    for (const double base : {9.0, 16.0, 40.0}) {
        themeManager->setZoomedBaseFontSize(base);
        for (const auto &member : attachmentFamily()) {
            SCOPED_TRACE(member.className.toStdString());
            const auto attachment = member.make(member.text, themeManager);
            const Ink ink = inkOf(drawn(*attachment));
            if (member.className == u"QBSpacerTextAttachment"_s) {
                EXPECT_EQ(ink.count, 0);
                continue;
            }
            const QRectF room({kMargin, kMargin}, attachment->cachedAttachmentSize());
            const QRectF drawRect = attachment->drawRectForAttachmentRect(room);
            EXPECT_TRUE(room.contains(drawRect));
            EXPECT_GT(ink.count, 0);
            EXPECT_TRUE(pixelRect(drawRect).contains(ink.bounds))
                << ink.bounds.x() << ' ' << ink.bounds.y() << ' ' << ink.bounds.right() << ' ' << ink.bounds.bottom();
        }
    }
}

TEST_F(AttachmentDrawing, ACheckedBoxDiffersByItsCheck)
{
    const NSImage open = drawn(QBCheckBoxTextAttachment(u"-"_s, themeManager));
    const NSImage done = drawn(QBCheckBoxTextAttachment(u"+"_s, themeManager));
    EXPECT_NE(open, done);
    EXPECT_EQ(done, drawn(QBCheckBoxTextAttachment(u"- [x]"_s, themeManager)));
    EXPECT_EQ(open, drawn(QBCheckBoxTextAttachment(u"- [ ]"_s, themeManager)));
    EXPECT_EQ(inkOf(open).bounds, inkOf(done).bounds) << "the check lies in the box";
}

TEST_F(AttachmentDrawing, ABadgeTellsItsLevel)
{
    std::vector<NSImage> badges;
    for (const auto &text : {u"#"_s, u"##"_s, u"###"_s, u"####"_s, u"#####"_s, u"######"_s}) {
        for (const NSImage &other : badges) {
            EXPECT_NE(drawn(QBHeaderTextAttachment(text, themeManager)), other);
        }
        badges.push_back(drawn(QBHeaderTextAttachment(text, themeManager)));
    }
}

TEST_F(AttachmentDrawing, AnArrowIsHeavierAtItsPoint)
{
    const auto inkOfHalves = [&](const QString &text) {
        const NSImage image = drawn(QBArrowTextAttachment(text, themeManager));
        const int middle = image.pixelSize().width() / 2;
        const auto half = [&](int start) {
            return inkOf(image.imageCroppedToPixelRect({start, 0, middle, image.pixelSize().height()})).count;
        };
        return std::pair(half(0), half(middle));
    };
    const auto [tail, point] = inkOfHalves(u"->"_s);
    EXPECT_GT(point, tail);
    const auto [flippedPoint, flippedTail] = inkOfHalves(u"<-"_s);
    EXPECT_GT(flippedPoint, flippedTail);
}

TEST_F(AttachmentDrawing, ASwatchShowsItsColorAndAnEdgeOnTheSameBackground)
{
    QBColorTextAttachment swatch({}, themeManager);
    swatch.setFullRepresentedText(u"#3366cc"_s);
    const NSImage image = drawn(swatch);
    const QPointF middle = swatch.drawRectForAttachmentRect({{kMargin, kMargin}, swatch.attachmentSize()}).center();
    EXPECT_EQ(image.colorAt(int(middle.x() * kScale), int(middle.y() * kScale)).hexString(), u"3366CC"_s);
    swatch.setFullRepresentedText(u"#ffffff"_s);
    EXPECT_GT(inkOf(drawn(swatch)).count, 0);
}

TEST_F(AttachmentDrawing, APictureFillsItsRoomAsFarAsItsRatioAllows)
{
    GraphicsContext red({40, 20}, 1, NSColor::colorWithRed(1, 0, 0));
    QBImageTextAttachment image(u"[image:1/a.png]"_s, themeManager);
    image.setAttachmentImageSize({80, 40});
    const NSImage placeholder = drawn(image);
    image.setAttachmentImage(red.image());
    const NSImage filled = drawn(image);
    EXPECT_NE(filled, placeholder);
    EXPECT_EQ(colorAtMiddle(filled).hexString(), u"FF0000"_s);
    EXPECT_EQ(inkOf(filled).bounds, pixelRect({kMargin, kMargin, 80, 40}));
    image.setAttachmentImageSize({40, 80}); // a room of another ratio
    const NSImage narrow = drawn(image);
    EXPECT_EQ(inkOf(narrow).bounds, pixelRect({kMargin, kMargin + 30, 40, 20}));
}

TEST_F(AttachmentDrawing, AFileShowsItsNameAndItsDateOnlyWhenItHasThem)
{
    QBGenericFileTextAttachment file(u"[file:1/a.pdf]"_s, themeManager);
    const qint64 empty = inkOf(drawn(file)).count;
    const NSImage emptyCard = drawn(file);
    file.setFilename(u"a.pdf"_s);
    const NSImage named = drawn(file);
    EXPECT_NE(named, emptyCard);
    file.setModificationDate(NSDate::dateWithTimeIntervalSince1970(1'500'000'000));
    EXPECT_NE(drawn(file), named);
    file.setModificationDate(std::nullopt);
    file.setFilename(QString(100'000, u'W') + u".pdf"_s);
    const Ink ink = inkOf(drawn(file));
    EXPECT_TRUE(pixelRect({{kMargin, kMargin}, file.attachmentSize()}).contains(ink.bounds));
    EXPECT_GE(ink.count, empty);
}

TEST_F(AttachmentDrawing, ALongNameLosesItsMiddleAndKeepsItsExtension)
{
    const NSFont font = themeManager->paragraphFont();
    const double wide = font.advanceOfText(u"a long name of a file.txt");
    EXPECT_EQ(elidedFilename(u"a long name of a file.txt"_s, font, wide), u"a long name of a file.txt"_s);
    const QString names[] = {
        u"a long name of a file that goes on and on.txt"_s,
        QString(100'000, u'x') + u".tar.gz"_s,
        QString(300, QChar(0xD83D)) + u".png"_s, // halves of characters
        u"😀"_s.repeated(300) + u".png"_s,
    };
    for (const QString &name : names) {
        const QString shown = elidedFilename(name, font, wide);
        EXPECT_LE(font.advanceOfText(shown), wide);
        EXPECT_TRUE(shown.endsWith(u"…"_s + name.sliced(name.lastIndexOf(u'.')))) << shown.toStdString();
        EXPECT_GT(shown.size(), 8);
    }
    const QString whole = elidedFilename(u"😀"_s.repeated(300) + u".png"_s, font, wide);
    EXPECT_EQ(whole.indexOf(u'…') % 2, 0) << "no half of a character is left";
    EXPECT_EQ(elidedFilename(u"long.txt"_s, font, 0), u"….txt"_s);
}

TEST_F(AttachmentDrawing, ARichCopyIsAPictureOfTheAttachment)
{
    const auto [name, bytes] = QBCheckBoxTextAttachment(u"+"_s, themeManager).createFileWrapper();
    const auto [otherName, otherBytes] = QBCheckBoxTextAttachment(u"+"_s, themeManager).createFileWrapper();
    EXPECT_TRUE(name.endsWith(u".png"_s));
    EXPECT_NE(name, otherName);
    EXPECT_EQ(bytes, otherBytes);
    const auto image = NSImage::imageWithData(bytes, name, nullptr);
    ASSERT_TRUE(image);
    const QSizeF size = QBCheckBoxTextAttachment(u"+"_s, themeManager).attachmentSize() * 2;
    EXPECT_EQ(image->pixelSize(), QSize(int(std::ceil(size.width())), int(std::ceil(size.height()))));
    EXPECT_FALSE(image->opaqueBounds().isEmpty());

    const auto [bareName, bare] = QBCheckBoxTextAttachment(u"+"_s, nullptr).createFileWrapper();
    EXPECT_TRUE(NSImage::imageWithData(bare, bareName, nullptr)) << "without a theme it is an empty picture";
}

} // namespace quib::tests

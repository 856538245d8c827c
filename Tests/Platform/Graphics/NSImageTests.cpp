#include "ImageSamples.h"

#include <Graphics/NSImage.h>

#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QBuffer>
#include <QColorSpace>
#include <QImageWriter>

#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

std::optional<NSImage> read(const QByteArray &data, std::optional<QSize> box = std::nullopt)
{
    NSError error;
    auto image = NSImage::imageWithData(data, u"sample"_s, &error, box);
    EXPECT_NE(image.has_value(), error.isSet());
    EXPECT_TRUE(!image || !image->isEmpty());
    return image;
}

NSError errorOf(const QByteArray &data)
{
    NSError error;
    EXPECT_FALSE(NSImage::imageWithData(data, u"sample"_s, &error));
    return error;
}

class EveryForm : public testing::TestWithParam<QByteArray>
{
};

} // namespace

TEST_P(EveryForm, IsReadAsItWasWritten)
{
    const auto image = read(encoded(quarters(64, 48), GetParam()));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixelSize(), QSize(64, 48));
    EXPECT_EQ(quartersOf(image->image()), "RGBW");
    EXPECT_FALSE(image->hasAlpha() && image->colorAt(10, 10).alphaComponent() < 1);
}

TEST_P(EveryForm, IsReadToFitABoxAtItsRatio)
{
    const QByteArray data = encoded(quarters(64, 48), GetParam());
    struct Case
    {
        QSize box;
        QSize size;
    };
    const Case cases[] = {
        {{32, 32}, {32, 24}},   {{10, 1000}, {10, 8}}, {{1000, 12}, {16, 12}}, {{64, 48}, {64, 48}},
        {{100, 100}, {64, 48}}, {{1, 1}, {1, 1}},      {{33, 33}, {33, 25}},
    };
    for (const auto &[box, size] : cases) {
        const auto image = read(data, box);
        ASSERT_TRUE(image);
        EXPECT_EQ(image->pixelSize(), size) << box.width() << 'x' << box.height();
        if (size.height() >= 8) {
            EXPECT_EQ(quartersOf(image->image()), "RGBW") << box.width() << 'x' << box.height();
        }
    }
}

TEST_P(EveryForm, CutOffAnywhereGivesAnErrorOrTheWholePicture)
{
    const QByteArray data = encoded(quarters(24, 16), GetParam());
    qsizetype lastRefused = 0;
    for (qsizetype length = 0; length < data.size(); ++length) {
        NSError error;
        const auto image = NSImage::imageWithData(data.first(length), u"cut"_s, &error);
        if (image) {
            // What is missing are bytes behind the picture.
            EXPECT_EQ(quartersOf(image->image()), "RGBW") << length << " of " << data.size();
        } else {
            EXPECT_TRUE(error.isSet());
            EXPECT_TRUE(error.localizedDescription().contains(u"cut"_s));
            lastRefused = length;
        }
    }
    EXPECT_GT(lastRefused, data.size() * 3 / 4);
}

TEST_P(EveryForm, WithBytesChangedNeverCrashes)
{
    auto random = TestSeed().generator();
    const QByteArray data = encoded(quarters(24, 16), GetParam());
    for (int round = 0; round < 150; ++round) {
        QByteArray changed = data;
        for (auto i = 1 + random() % 8; i > 0; --i) {
            changed[static_cast<qsizetype>(random() % static_cast<unsigned>(changed.size()))] =
                static_cast<char>(random());
        }
        (void)NSImage::imageWithData(changed, u"changed"_s, nullptr, QSize(16, 16));
    }
}

TEST_P(EveryForm, IsToldByItsBytesNotByItsName)
{
    const TemporaryFolder folder;
    const QByteArray data = encoded(quarters(24, 16), GetParam());
    for (const QString &name : {u"a.png"_s, u"a.jpg"_s, u"a.heic"_s, u"a.svg"_s, u"a.pdf"_s, u"a"_s}) {
        NSError error;
        const auto image = NSImage::imageWithContentsOfFile(folder.write(name, data), &error);
        ASSERT_TRUE(image) << name.toStdString() << error.localizedDescription().toStdString();
        EXPECT_EQ(quartersOf(image->image()), "RGBW");
    }
}

INSTANTIATE_TEST_SUITE_P(NSImageReading, EveryForm, testing::ValuesIn(sampleForms()),
                         [](const auto &form) { return form.param.toStdString(); });

TEST(NSImageReading, AlphaComesThrough)
{
    QImage half(16, 16, QImage::Format_ARGB32);
    half.fill(qRgba(255, 0, 0, 128));
    for (const char *form : {"png", "webp", "tiff", "heic", "jp2"}) {
        const auto image = read(encoded(half, form));
        ASSERT_TRUE(image) << form;
        EXPECT_TRUE(image->hasAlpha()) << form;
        const NSColor color = image->colorAt(8, 8);
        EXPECT_NEAR(color.alphaComponent(), 0.5, 0.03) << form;
        EXPECT_NEAR(color.redComponent(), 1, 0.05) << form;
        EXPECT_NEAR(color.greenComponent(), 0, 0.05) << form;
    }
}

TEST(NSImageReading, OrientationIsApplied)
{
    // Where the quarters of the picture as it was stored come to stand.
    constexpr const char *kUpright[] = {"RGBW", "GRWB", "WBGR", "BWRG", "RBGW", "BRWG", "WGBR", "GWRB"};
    for (int orientation = 1; orientation <= 8; ++orientation) {
        const QByteArray data = jpegWithOrientation(quarters(64, 32), orientation);
        const auto image = read(data);
        ASSERT_TRUE(image) << orientation;
        EXPECT_EQ(quartersOf(image->image()), kUpright[orientation - 1]) << orientation;
        const bool isTurned = orientation > 4;
        EXPECT_EQ(image->pixelSize(), isTurned ? QSize(32, 64) : QSize(64, 32)) << orientation;

        const auto small = read(data, QSize(16, 1000));
        ASSERT_TRUE(small) << orientation;
        EXPECT_EQ(quartersOf(small->image()), kUpright[orientation - 1]) << orientation;
        EXPECT_EQ(small->pixelSize(), isTurned ? QSize(16, 32) : QSize(16, 8)) << orientation;
    }
}

TEST(NSImageReading, OddOrientationsAreUpright)
{
    for (const int orientation : {0, 9, 0xFFFF}) {
        const auto image = read(jpegWithOrientation(quarters(64, 32), orientation));
        ASSERT_TRUE(image) << orientation;
        EXPECT_EQ(quartersOf(image->image()), "RGBW") << orientation;
    }
}

TEST(NSImageReading, TIFFsAreTurnedUpright)
{
    for (int turns = 0; turns < 8; ++turns) {
        QByteArray data;
        QBuffer buffer(&data);
        ASSERT_TRUE(buffer.open(QIODevice::WriteOnly));
        QImageWriter writer(&buffer, "tiff");
        writer.setTransformation(QImageIOHandler::Transformations(turns));
        ASSERT_TRUE(writer.write(quarters(64, 32)));
        constexpr const char *kUpright[] = {"RGBW", "GRWB", "BWRG", "WBGR", "BRWG", "WGBR", "RBGW", "GWRB"};
        const auto image = read(data, QSize(32, 32));
        ASSERT_TRUE(image) << turns;
        const std::string found = quartersOf(image->image());
        EXPECT_EQ(found, kUpright[turns]) << turns;
        EXPECT_EQ(image->pixelSize(), turns < 4 ? QSize(32, 16) : QSize(16, 32)) << turns;
    }
}

TEST(NSImageReading, EveryDepthIsRead)
{
    const QImage::Format formats[] = {QImage::Format_Mono,       QImage::Format_Indexed8,
                                      QImage::Format_Grayscale8, QImage::Format_RGB888,
                                      QImage::Format_RGBX64,     QImage::Format_Grayscale16,
                                      QImage::Format_RGB16,      QImage::Format_RGBA64_Premultiplied};
    QImage board(16, 16, QImage::Format_RGB32);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            board.setPixel(x, y, (x / 4 + y / 4) % 2 == 0 ? 0xFF000000 : 0xFFFFFFFF);
        }
    }
    for (const auto format : formats) {
        for (const char *form : {"png", "tiff"}) {
            const auto image = read(encoded(board.convertToFormat(format), form));
            ASSERT_TRUE(image) << form << ' ' << format;
            EXPECT_EQ(image->colorAt(1, 1), NSColor::blackColor()) << form << ' ' << format;
            EXPECT_EQ(image->colorAt(5, 1), NSColor::whiteColor()) << form << ' ' << format;
        }
    }
}

TEST(NSImageReading, ColoursOfOtherSpacesAreSRGB)
{
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(qRgb(200, 100, 60));
    image.setColorSpace(QColorSpace::SRgb);
    for (const auto space : {QColorSpace::DisplayP3, QColorSpace::AdobeRgb, QColorSpace::ProPhotoRgb}) {
        const QImage other = image.convertedToColorSpace(space);
        ASSERT_GT(std::abs(qRed(other.pixel(4, 4)) - 200), 5) << "the numbers differ in that space";
        for (const char *form : {"png", "jpeg"}) {
            const auto found = read(encoded(other, form));
            ASSERT_TRUE(found);
            EXPECT_NEAR(found->colorAt(4, 4).redComponent() * 255, 200, 3) << form << ' ' << space;
            EXPECT_NEAR(found->colorAt(4, 4).greenComponent() * 255, 100, 3) << form << ' ' << space;
            EXPECT_NEAR(found->colorAt(4, 4).blueComponent() * 255, 60, 3) << form << ' ' << space;
        }
    }
}

TEST(NSImageReading, JPEGsInManyScansAreReadWholeOrNotAtAll)
{
    QByteArray data;
    QBuffer buffer(&data);
    ASSERT_TRUE(buffer.open(QIODevice::WriteOnly));
    QImageWriter writer(&buffer, "jpeg");
    writer.setProgressiveScanWrite(true);
    writer.setQuality(95);
    ASSERT_TRUE(writer.write(quarters(64, 48)));
    const auto whole = read(data);
    ASSERT_TRUE(whole);
    EXPECT_EQ(quartersOf(whole->image()), "RGBW");
    for (qsizetype length = 0; length < data.size(); ++length) {
        EXPECT_FALSE(read(data.first(length))) << length;
    }
    // What cameras append behind the end is left alone.
    EXPECT_EQ(read(data + QByteArray(1000, '\xFF')), whole);
}

TEST(NSImageReading, DamagedPNGsAreToldByErrorsAlone)
{
    QImage profiled = quarters(12, 8);
    profiled.setColorSpace(QColorSpace::AdobeRgb);
    for (const QImage &picture : {profiled, quarters(12, 8).convertToFormat(QImage::Format_Indexed8)}) {
        const QByteArray whole = encoded(picture, "png");
        ASSERT_TRUE(read(whole));
        testing::internal::CaptureStderr();
        qsizetype refused = 0;
        for (qsizetype place = 0; place < whole.size(); ++place) {
            EXPECT_FALSE(read(whole.first(place))) << place;
            for (const char bit : {'\x01', '\x20', '\x80'}) {
                QByteArray damaged = whole;
                damaged[place] = static_cast<char>(damaged[place] ^ bit);
                refused += read(damaged) ? 0 : 1;
            }
        }
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        EXPECT_GT(refused, 100);
        // What is appended behind the end is left alone.
        EXPECT_EQ(read(whole + "more"), read(whole));
    }
}

TEST(NSImageReading, BombsAreRefusedBeforeTheyAreDecoded)
{
    QByteArray jpeg = encoded(quarters(16, 16), "jpeg");
    const qsizetype frame = jpeg.indexOf(QByteArray("\xFF\xC0"));
    jpeg.replace(frame + 5, 4, QByteArray("\xFF\xFF\xFF\xFF"));
    QByteArray gif = encoded(quarters(16, 16), "gif");
    gif.replace(6, 4, QByteArray("\xFF\xFF\xFF\xFF"));
    QByteArray heic = encoded(quarters(64, 64), "heic");
    heic.replace(heic.indexOf("ispe") + 8, 8, QByteArray("\0\0\x7F\xFF\0\0\x7F\xFF", 8));
    QByteArray jp2 = encoded(quarters(16, 16), "jp2");
    jp2.replace(jp2.indexOf("ihdr") + 4, 8, QByteArray("\0\0\x7F\xFF\0\0\x7F\xFF", 8));
    const std::pair<const char *, QByteArray> bombs[] = {
        {"png", pngHeader(30000, 20000)},
        {"jpeg", jpeg},
        {"gif", gif},
        {"heic", heic},
        {"jp2", jp2},
        {"svg", "<svg xmlns='http://www.w3.org/2000/svg' width='40000' height='40000'/>"},
    };
    for (const auto &[form, data] : bombs) {
        const NSError error = errorOf(data);
        EXPECT_EQ(error.code(), qint64(NSCocoaErrorCode::FileReadTooLarge)) << form;
        EXPECT_TRUE(error.localizedDescription().contains(u"sample"_s));
        EXPECT_TRUE(error.localizedDescription().contains(u" x "_s)) << error.localizedDescription().toStdString();
    }
}

TEST(NSImageReading, WhatIsNoPictureIsAnError)
{
    const QByteArray cases[] = {"",         "plain text", "<html><svg/></html>",
                                "<svg",     "%PDF-1.4",   QByteArray(100, '\0'),
                                "\xFF\xD8", "GIF89a",     "RIFF\0\0\0\0WEBP"};
    for (const QByteArray &data : cases) {
        const NSError error = errorOf(data);
        EXPECT_EQ(error.code(), qint64(NSCocoaErrorCode::FileReadCorruptFile)) << data.toStdString();
        EXPECT_TRUE(error.localizedDescription().contains(u"sample"_s));
    }
}

TEST(NSImageReading, MissingFilesAreAnError)
{
    const TemporaryFolder folder;
    NSError error;
    EXPECT_FALSE(NSImage::imageWithContentsOfFile(folder.path(u"none.png"_s), &error));
    EXPECT_EQ(error.code(), qint64(NSCocoaErrorCode::FileNoSuchFile));
    EXPECT_TRUE(error.localizedDescription().contains(u"none.png"_s));
    EXPECT_FALSE(NSImage::imageWithContentsOfFile(folder.path(), &error));
}

TEST(NSImageReading, BoxesWithoutAreaAreAnError)
{
    const QByteArray png = encoded(quarters(8, 8), "png");
    for (const QSize box : {QSize(0, 5), QSize(5, 0), QSize(-1, -1)}) {
        NSError error;
        EXPECT_FALSE(NSImage::imageWithData(png, u"sample"_s, &error, box));
        EXPECT_TRUE(error.isSet());
    }
}

TEST(NSImageReading, RunsOnManyThreadsAtOnce)
{
    std::vector<QByteArray> samples;
    for (const QByteArray &form : sampleForms()) {
        samples.push_back(encoded(quarters(64, 48), form));
    }
    std::vector<std::string> found(4);
    std::vector<std::thread> threads;
    for (std::string &each : found) {
        threads.emplace_back([&each, &samples] {
            for (const QByteArray &data : samples) {
                const auto image = NSImage::imageWithData(data, u"sample"_s, nullptr, QSize(32, 32));
                each += image ? quartersOf(image->image()) : "none";
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    std::string expected;
    for (size_t i = 0; i < samples.size(); ++i) {
        expected += "RGBW";
    }
    for (const std::string &each : found) {
        EXPECT_EQ(each, expected);
    }
}

TEST(NSImageScaling, AveragesAreasWhenItShrinks)
{
    // A board of single black and white pixels is grey from afar.
    QImage board(64, 64, QImage::Format_RGB32);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            board.setPixel(x, y, (x + y) % 2 == 0 ? 0xFF000000 : 0xFFFFFFFF);
        }
    }
    for (const int side : {32, 16, 8, 1}) {
        const NSImage small = NSImage(board).imageScaledToPixelSize({side, side});
        ASSERT_EQ(small.pixelSize(), QSize(side, side));
        for (int i = 0; i < side; ++i) {
            EXPECT_NEAR(small.colorAt(i, side - 1 - i).redComponent(), 0.5, 0.02) << side;
        }
    }
}

TEST(NSImageScaling, KeepsCoverageAtTransparentEdges)
{
    // Colour must not bleed in from pixels that are not seen.
    QImage image(4, 4, QImage::Format_ARGB32);
    image.fill(qRgba(0, 255, 0, 0));
    for (int y = 0; y < 4; ++y) {
        image.setPixel(0, y, qRgba(255, 0, 0, 255));
        image.setPixel(1, y, qRgba(255, 0, 0, 255));
    }
    const NSColor color = NSImage(image).imageScaledToPixelSize({1, 1}).colorAt(0, 0);
    EXPECT_NEAR(color.alphaComponent(), 0.5, 0.02);
    EXPECT_NEAR(color.redComponent(), 1, 0.02);
    EXPECT_NEAR(color.greenComponent(), 0, 0.02);
}

TEST(NSImage, TellsPointsByItsScale)
{
    const NSImage image(quarters(64, 48));
    EXPECT_EQ(image.size(), QSizeF(64, 48));
    EXPECT_EQ(image.imageWithScale(2).size(), QSizeF(32, 24));
    EXPECT_EQ(image.imageWithScale(2).pixelSize(), QSize(64, 48));
    EXPECT_FALSE(image == image.imageWithScale(2));
    EXPECT_EQ(image, NSImage(quarters(64, 48)));
    EXPECT_TRUE(NSImage().isEmpty());
    EXPECT_EQ(NSImage().size(), QSizeF(0, 0));
}

TEST(NSImage, OpaqueBoundsHoldWhatIsSeen)
{
    auto random = TestSeed().generator();
    for (int round = 0; round < 200; ++round) {
        QImage image(1 + int(random() % 12), 1 + int(random() % 12), QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QRect expected;
        for (auto dots = random() % 4; dots > 0; --dots) {
            const QPoint dot(int(random() % unsigned(image.width())), int(random() % unsigned(image.height())));
            image.setPixelColor(dot, QColor(1, 2, 3, 4 + int(random() % 200)));
            expected |= QRect(dot, QSize(1, 1));
        }
        EXPECT_EQ(NSImage(image).opaqueBounds(), expected);
    }
    EXPECT_EQ(NSImage(quarters(5, 6)).opaqueBounds(), QRect(0, 0, 5, 6));
    EXPECT_EQ(NSImage().opaqueBounds(), QRect(0, 0, 0, 0));
}

TEST(NSImage, IsCroppedToWhatThereIs)
{
    const NSImage image(quarters(8, 8));
    EXPECT_EQ(quartersOf(image.imageCroppedToPixelRect({2, 2, 4, 4}).image()), "RGBW");
    EXPECT_EQ(image.imageCroppedToPixelRect({6, 6, 10, 10}).pixelSize(), QSize(2, 2));
    EXPECT_TRUE(image.imageCroppedToPixelRect({20, 20, 4, 4}).isEmpty());
}

TEST(NSImageWriting, ComesBack)
{
    const TemporaryFolder folder;
    const NSImage image(quarters(32, 24));
    NSError error;
    ASSERT_TRUE(image.writePNGToFile(folder.path(u"a.png"_s), &error));
    EXPECT_EQ(NSImage::imageWithContentsOfFile(folder.path(u"a.png"_s), &error), image);
    ASSERT_TRUE(image.writeJPEGToFile(folder.path(u"a.jpg"_s), &error));
    const auto jpeg = NSImage::imageWithContentsOfFile(folder.path(u"a.jpg"_s), &error);
    ASSERT_TRUE(jpeg);
    EXPECT_EQ(quartersOf(jpeg->image()), "RGBW");
    EXPECT_EQ(folder.names(), (QStringList{u"a.jpg"_s, u"a.png"_s}));
}

TEST(NSImageWriting, JPEGLaysWhatIsTransparentOverWhite)
{
    QImage clear(16, 16, QImage::Format_ARGB32);
    clear.fill(Qt::transparent);
    const auto image = read(NSImage(clear).jpegData());
    ASSERT_TRUE(image);
    EXPECT_EQ(quartersOf(image->image()), "WWWW");
}

TEST(NSImageWriting, FailsWithAnErrorThatNamesTheFile)
{
    const TemporaryFolder folder;
    NSError error;
    EXPECT_FALSE(NSImage(quarters(2, 2)).writePNGToFile(folder.path(u"none/a.png"_s), &error));
    EXPECT_TRUE(error.localizedDescription().contains(u"none/a.png"_s));
    EXPECT_FALSE(NSImage().writePNGToFile(folder.path(u"empty.png"_s), &error));
    EXPECT_TRUE(folder.names().isEmpty());
}

} // namespace quib::tests

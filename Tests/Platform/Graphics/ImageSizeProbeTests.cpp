#include "ImageSamples.h"

#include <Graphics/ImageSizeProbe.h>
#include <Graphics/NSImage.h>
#include <Support/TemporaryFolder.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QBuffer>
#include <QSize>

#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace quib::tests {

TEST(ImageSizeProbe, SizesAreReadFromHeaders)
{
    const auto bytes = [](std::initializer_list<int> values) {
        QByteArray made;
        for (const int value : values) {
            made.append(static_cast<char>(value));
        }
        return made;
    };
    const QByteArray jpeg = bytes({0xFF, 0xD8, 0xFF, 0xE0, 0, 4, 1, 2, 0xFF, 0xFF, 0xC2, 0, 11, 8, 1, 0x2C, 2, 0x58});
    const QByteArray tiff = bytes(
        {'I', 'I', 42, 0, 8, 0, 0, 0, 2, 0, 0, 1, 3, 0, 1, 0, 0, 0, 7, 0, 0, 0, 1, 1, 4, 0, 1, 0, 0, 0, 9, 0, 0, 0});
    const QByteArray jp2 =
        bytes({0, 0, 0,  12,  'j', 'P', ' ', ' ', 13, 10, 0x87, 10, 0, 0, 0, 30, 'j', 'p', '2', 'h', 0,
               0, 0, 22, 'i', 'h', 'd', 'r', 0,   0,  0,  3,    0,  0, 0, 4, 0,  3,   7,   7,   0,   0});
    // Two pictures, of which the second is the file's: 5 by 6, and turned.
    const QByteArray heic = bytes(
        {0,   0,   0, 12, 'f', 't', 'y', 'p', 'h', 'e', 'i', 'c', 0,    0,   0,   120, 'm',  'e',  't', 'a', 0,   0,
         0,   0,   0, 0,  0,   14,  'p', 'i', 't', 'm', 0,   0,   0,    0,   0,   2,   0,    0,    0,   94,  'i', 'p',
         'r', 'p', 0, 0,  0,   57,  'i', 'p', 'c', 'o', 0,   0,   0,    20,  'i', 's', 'p',  'e',  0,   0,   0,   0,
         0,   0,   0, 50, 0,   0,   0,   60,  0,   0,   0,   20,  'i',  's', 'p', 'e', 0,    0,    0,   0,   0,   0,
         0,   5,   0, 0,  0,   6,   0,   0,   0,   9,   'i', 'r', 'o',  't', 3,   0,   0,    0,    29,  'i', 'p', 'm',
         'a', 0,   0, 0,  0,   0,   0,   0,   2,   0,   1,   1,   0x81, 0,   2,   2,   0x82, 0x83, 0,   0,   0,   0});
    const QByteArray riff = bytes({'R', 'I', 'F', 'F', 99, 0, 0, 0, 'W', 'E', 'B', 'P', 'V', 'P', '8'});
    const QByteArray webpExtended = riff + bytes({'X', 10, 0, 0, 0, 0, 0, 0, 0, 1, 1, 0, 2, 0, 1});
    const QByteArray webpLossless = riff + bytes({'L', 10, 0, 0, 0, 0x2F, 0x06, 0xC0, 0x02, 0, 0, 0, 0, 0, 0});
    const QByteArray webpLossy = riff + bytes({' ', 10, 0, 0, 0, 0, 0, 0, 0x9D, 1, 0x2A, 8, 0x40, 9, 0x80});
    const std::pair<QByteArray, std::optional<PixelSize>> cases[] = {
        {pngHeader(3, 2), PixelSize{3, 2}},
        {pngHeader(0, 2), std::nullopt},
        {pngHeader(1u << 30, 2), std::nullopt},
        {webpExtended, PixelSize{258, 65539}},
        {webpLossless, PixelSize{7, 12}},
        {webpLossy, PixelSize{8, 9}},
        {bytes({'G', 'I', 'F', '8', '9', 'a', 5, 1, 4, 0}), PixelSize{261, 4}},
        {jpeg, PixelSize{600, 300}},
        {tiff, PixelSize{7, 9}},
        {jp2, PixelSize{4, 3}},
        {heic, PixelSize{6, 5}},
        {"", std::nullopt},
        {"GIF89a", std::nullopt},
        {"plain text", std::nullopt},
    };
    const TemporaryFolder folder;
    int index = 0;
    for (const auto &[content, size] : cases) {
        const QString path = folder.write(u"probe"_s, content);
        EXPECT_EQ(pixelSizeOfImageFile(path), size) << "case " << index;
        // Every shorter form is answered too, without a size or with the same.
        for (qsizetype length = 0; length < content.size(); ++length) {
            QBuffer buffer;
            buffer.setData(content.first(length));
            ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
            const auto cut = pixelSizeOfImage(buffer);
            EXPECT_TRUE(!cut || cut == size) << "case " << index << " cut to " << length;
        }
        ++index;
    }
}

namespace {

std::optional<PixelSize> probed(const QByteArray &data)
{
    QBuffer buffer;
    buffer.setData(data);
    return buffer.open(QIODevice::ReadOnly) ? pixelSizeOfImage(buffer) : std::nullopt;
}

/// The header tells the size that the picture has once it is read.
void expectSizeOfReader(const QByteArray &data, const std::string &what)
{
    SCOPED_TRACE(what);
    NSError error;
    const auto image = NSImage::imageWithData(data, u"picture"_s, &error);
    ASSERT_TRUE(image) << error.localizedDescription().toStdString();
    const auto size = probed(data);
    ASSERT_TRUE(size);
    EXPECT_EQ(QSize(static_cast<int>(size->width), static_cast<int>(size->height)), image->pixelSize());
}

} // namespace

TEST(ImageSizeProbe, TellsWhatTheReaderShowsOfEveryForm)
{
    const TestSeed seed;
    auto random = seed.generator();
    std::vector<QSize> sizes = {{1, 1}, {100, 50}, {64, 64}, {65, 63}, {701, 401}};
    for (int round = 0; round < 8; ++round) {
        sizes.emplace_back(1 + static_cast<int>(random() % 200), 1 + static_cast<int>(random() % 200));
    }
    for (const QByteArray &form : sampleForms()) {
        for (const QSize size : sizes) {
            if (form.startsWith('j') && form != "jpeg" && std::min(size.width(), size.height()) < 4) {
                continue; // too small for the encoder, which halves them
            }
            expectSizeOfReader(encoded(quarters(size.width(), size.height()), form),
                               form.toStdString() + " " + std::to_string(size.width()) + " x " +
                                   std::to_string(size.height()));
        }
    }
}

TEST(ImageSizeProbe, TellsWhatTheReaderShowsOfATurnedPicture)
{
    const QImage picture = quarters(100, 50);
    for (const int orientation : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0x106}) {
        const std::string turned = " turned as " + std::to_string(orientation);
        expectSizeOfReader(jpegWithOrientation(picture, orientation), "jpeg" + turned);
        for (const bool isBigEndian : {false, true}) {
            expectSizeOfReader(tiffWithOrientation(picture, orientation, {.isBigEndian = isBigEndian}),
                               "tiff" + turned + (isBigEndian ? " big end first" : ""));
        }
        if (orientation >= 1 && orientation <= 8) {
            expectSizeOfReader(heicWithOrientation(picture, orientation), "heic" + turned);
        }
    }
    EXPECT_EQ(probed(jpegWithOrientation(picture, 6)), (PixelSize{50, 100}));
    EXPECT_EQ(probed(heicWithOrientation(picture, 8)), (PixelSize{50, 100}));
}

TEST(ImageSizeProbe, TellsWhatTheReaderShowsOfATIFFWithWideOffsets)
{
    for (const int orientation : {1, 3, 5, 8}) {
        for (const bool isBigEndian : {false, true}) {
            expectSizeOfReader(tiffWithOrientation(quarters(30, 20), orientation,
                                                   {.isBigEndian = isBigEndian, .hasWideOffsets = true}),
                               std::to_string(orientation) + (isBigEndian ? " big end first" : ""));
        }
    }
}

TEST(ImageSizeProbe, AnOrientationCountsOnlyWhereTheReaderTakesIt)
{
    const QByteArray turned = jpegWithOrientation(quarters(40, 20), 6);
    // Where the EXIF data lies: behind the two bytes of the start and four of its segment.
    constexpr qsizetype kExif = 6;
    const auto changed = [&turned](std::initializer_list<std::pair<qsizetype, int>> bytes) {
        QByteArray data = turned;
        for (const auto &[place, value] : bytes) {
            data[kExif + place] = static_cast<char>(value);
        }
        return data;
    };
    const std::pair<std::string, QByteArray> cases[] = {
        {"no EXIF data", changed({{0, 'e'}})},
        {"unknown order of bytes", changed({{6, 'X'}, {7, 'X'}})},
        {"no TIFF in it", changed({{9, 43}})},
        {"directory beyond the end", changed({{12, 1}})},
        {"directory before its head", changed({{13, 4}})},
        {"no entries", changed({{15, 0}})},
        {"more entries than there are", changed({{14, 0xFF}})},
        {"a long", changed({{19, 4}})},
        {"two of it", changed({{23, 2}})},
        {"another tag", changed({{17, 0x13}})},
        {"next directory in a circle", changed({{17, 0x13}, {31, 8}})},
    };
    for (const auto &[what, data] : cases) {
        expectSizeOfReader(data, what);
    }
}

TEST(ImageSizeProbe, OfAChangedFileIsAnsweredWithinItsBounds)
{
    const TestSeed seed;
    auto random = seed.generator();
    const QByteArray files[] = {heicWithOrientation(quarters(40, 20), 6), jpegWithOrientation(quarters(40, 20), 6),
                                tiffWithOrientation(quarters(40, 20), 6, {.hasWideOffsets = true}),
                                encoded(quarters(40, 20), "jp2")};
    for (const QByteArray &file : files) {
        const auto size = probed(file);
        for (qsizetype length = 0; length < file.size(); ++length) {
            const auto cut = probed(file.first(length));
            EXPECT_TRUE(!cut || cut == size) << length;
        }
        for (int round = 0; round < 2000; ++round) {
            QByteArray changed = file;
            for (auto i = 1 + random() % 4; i > 0; --i) {
                changed[static_cast<qsizetype>(random() %
                                               std::min<unsigned>(600, static_cast<unsigned>(file.size())))] =
                    static_cast<char>(random() % 2 == 0 ? 0xFF : random());
            }
            const auto answer = probed(changed);
            EXPECT_TRUE(!answer || (answer->width > 0 && answer->height > 0));
        }
    }
}

} // namespace quib::tests

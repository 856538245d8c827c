#include "ImageSamples.h"

#include <Graphics/ImageSizeProbe.h>
#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <QBuffer>

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
    const QByteArray heic = bytes({0, 0, 0, 12, 'f', 't', 'y', 'p', 'h', 'e', 'i', 'c', 0, 0, 0, 48, 'm', 'e', 't', 'a',
                                   0, 0, 0, 0,  0,   0,   0,   36,  'i', 'p', 'r', 'p', 0, 0, 0, 28, 'i', 'p', 'c', 'o',
                                   0, 0, 0, 20, 'i', 's', 'p', 'e', 0,   0,   0,   0,   0, 0, 0, 5,  0,   0,   0,   6});
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
        {heic, PixelSize{5, 6}},
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

} // namespace quib::tests

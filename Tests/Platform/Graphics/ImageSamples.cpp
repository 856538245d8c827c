#include "ImageSamples.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QColor>
#include <QImageWriter>
#include <QPainter>

#include <memory>

#include <libheif/heif.h>
#include <openjpeg.h>

namespace quib::tests {

namespace {

void appendBig(QByteArray &bytes, quint32 value, int count)
{
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) {
        bytes.append(static_cast<char>((value >> shift) & 0xFF));
    }
}

QByteArray encodedByQt(const QImage &image, const QByteArray &form)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    EXPECT_TRUE(buffer.open(QIODevice::WriteOnly));
    QImageWriter writer(&buffer, form);
    writer.setQuality(form == "tiff" || form == "png" ? -1 : 100);
    EXPECT_TRUE(writer.write(image)) << form.toStdString() << writer.errorString().toStdString();
    return bytes;
}

/// A GIF of up to 128 colours whose codes are all 8 bits wide: a code that empties the table comes before it would
/// grow.
QByteArray encodedAsGIF(const QImage &image)
{
    const QImage indexed = image.convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither);
    const auto appendLittle = [](QByteArray &bytes, int value) {
        bytes.append(static_cast<char>(value & 0xFF)).append(static_cast<char>(value >> 8));
    };
    QByteArray gif("GIF89a");
    appendLittle(gif, image.width());
    appendLittle(gif, image.height());
    gif.append('\xF6').append('\0').append('\0'); // a palette of 128 colours
    for (int i = 0; i < 128; ++i) {
        const QRgb color = i < indexed.colorCount() ? indexed.color(i) : 0;
        gif.append(static_cast<char>(qRed(color)))
            .append(static_cast<char>(qGreen(color)))
            .append(static_cast<char>(qBlue(color)));
    }
    gif.append(',');
    for (const int value : {0, 0, image.width(), image.height()}) {
        appendLittle(gif, value);
    }
    constexpr char kCodeSize = 7;
    constexpr char kClear = '\x80';
    constexpr char kEnd = '\x81';
    gif.append('\0').append(kCodeSize);
    QByteArray codes;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if ((y * image.width() + x) % 100 == 0) {
                codes.append(kClear);
            }
            codes.append(static_cast<char>(indexed.pixelIndex(x, y)));
        }
    }
    codes.append(kEnd);
    for (qsizetype offset = 0; offset < codes.size(); offset += 255) {
        const QByteArray block = codes.mid(offset, 255);
        gif.append(static_cast<char>(block.size())).append(block);
    }
    return gif.append('\0').append(';');
}

QByteArray encodedAsHEIC(const QImage &picture, int orientation = 1)
{
    const QImage rgba = picture.convertToFormat(QImage::Format_RGBA8888);
    heif_context *context = heif_context_alloc();
    heif_encoder *encoder = nullptr;
    EXPECT_EQ(heif_context_get_encoder_for_format(context, heif_compression_HEVC, &encoder).code, heif_error_Ok);
    heif_encoder_set_lossy_quality(encoder, 95);
    heif_image *image = nullptr;
    heif_image_create(rgba.width(), rgba.height(), heif_colorspace_RGB,
                      picture.hasAlphaChannel() ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB, &image);
    heif_image_add_plane(image, heif_channel_interleaved, rgba.width(), rgba.height(), 8);
    int stride = 0;
    uint8_t *plane = heif_image_get_plane(image, heif_channel_interleaved, &stride);
    for (int y = 0; y < rgba.height(); ++y) {
        for (int x = 0; x < rgba.width(); ++x) {
            const uchar *from = rgba.constScanLine(y) + 4 * x;
            const int size = picture.hasAlphaChannel() ? 4 : 3;
            std::copy_n(from, size, plane + y * stride + size * x);
        }
    }
    heif_encoding_options *options = heif_encoding_options_alloc();
    options->image_orientation = static_cast<heif_orientation>(orientation);
    const heif_error failure = heif_context_encode_image(context, image, encoder, options, nullptr);
    heif_encoding_options_free(options);
    EXPECT_EQ(failure.code, heif_error_Ok) << failure.message;
    QByteArray bytes;
    heif_writer writer{.writer_api_version = 1, .write = [](heif_context *, const void *data, size_t size, void *into) {
                           static_cast<QByteArray *>(into)->append(static_cast<const char *>(data),
                                                                   static_cast<qsizetype>(size));
                           return heif_error{heif_error_Ok, heif_suberror_Unspecified, ""};
                       }};
    heif_context_write(context, &writer, &bytes);
    heif_image_release(image);
    heif_encoder_release(encoder);
    heif_context_free(context);
    return bytes;
}

/// A growing file in memory, as OpenJPEG writes it.
struct Output
{
    QByteArray bytes;
    qsizetype offset = 0;

    void write(const void *data, qsizetype size)
    {
        bytes.resize(std::max(bytes.size(), offset + size));
        std::copy_n(static_cast<const char *>(data), size, bytes.data() + offset);
        offset += size;
    }
};

QByteArray encodedByOpenJPEG(const QImage &picture, OPJ_CODEC_FORMAT form)
{
    const OPJ_UINT32 count = picture.hasAlphaChannel() ? 4 : 3;
    const auto width = static_cast<OPJ_UINT32>(picture.width());
    const auto height = static_cast<OPJ_UINT32>(picture.height());
    std::vector<opj_image_cmptparm_t> components(count);
    for (auto &component : components) {
        component = {};
        component.dx = component.dy = 1;
        component.w = width;
        component.h = height;
        component.prec = 8;
    }
    opj_image_t *image = opj_image_create(count, components.data(), OPJ_CLRSPC_SRGB);
    image->x1 = width;
    image->y1 = height;
    for (OPJ_UINT32 i = 0; i < count; ++i) {
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb color = picture.pixel(x, y);
                const int values[] = {qRed(color), qGreen(color), qBlue(color), qAlpha(color)};
                image->comps[i].data[y * picture.width() + x] = values[i];
            }
        }
    }
    opj_cparameters_t parameters;
    opj_set_default_encoder_parameters(&parameters);
    parameters.tcp_numlayers = 1;
    parameters.cp_disto_alloc = 1;
    parameters.numresolution = 3;
    opj_codec_t *codec = opj_create_compress(form);
    EXPECT_TRUE(opj_setup_encoder(codec, &parameters, image));
    Output output;
    opj_stream_t *stream = opj_stream_default_create(OPJ_FALSE);
    opj_stream_set_user_data(stream, &output, nullptr);
    opj_stream_set_write_function(stream, [](void *data, OPJ_SIZE_T size, void *into) {
        static_cast<Output *>(into)->write(data, static_cast<qsizetype>(size));
        return size;
    });
    opj_stream_set_skip_function(stream, [](OPJ_OFF_T skippedCount, void *into) {
        auto *skipped = static_cast<Output *>(into);
        skipped->offset += skippedCount;
        return skippedCount;
    });
    opj_stream_set_seek_function(stream, [](OPJ_OFF_T offset, void *into) {
        static_cast<Output *>(into)->offset = offset;
        return OPJ_BOOL{OPJ_TRUE};
    });
    EXPECT_TRUE(opj_start_compress(codec, image, stream) && opj_encode(codec, stream) &&
                opj_end_compress(codec, stream));
    opj_stream_destroy(stream);
    opj_destroy_codec(codec);
    opj_image_destroy(image);
    return output.bytes;
}

char letterOf(QRgb color)
{
    constexpr std::pair<char, QRgb> kLetters[] = {
        {'R', 0xFFFF0000}, {'G', 0xFF00C000}, {'B', 0xFF0000FF}, {'W', 0xFFFFFFFF}};
    for (const auto &[letter, exact] : kLetters) {
        const int distance = std::abs(qRed(color) - qRed(exact)) + std::abs(qGreen(color) - qGreen(exact)) +
                             std::abs(qBlue(color) - qBlue(exact));
        if (distance < 48) {
            return letter;
        }
    }
    return '?';
}

} // namespace

QImage quarters(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            constexpr QRgb kColors[] = {0xFFFF0000, 0xFF00C000, 0xFF0000FF, 0xFFFFFFFF};
            image.setPixel(x, y, kColors[2 * y / height * 2 + 2 * x / width]);
        }
    }
    return image;
}

QByteArray encoded(const QImage &image, const QByteArray &form)
{
    if (form == "gif") {
        return encodedAsGIF(image);
    }
    if (form == "heic") {
        return encodedAsHEIC(image);
    }
    if (form == "jp2" || form == "j2k") {
        return encodedByOpenJPEG(image, form == "jp2" ? OPJ_CODEC_JP2 : OPJ_CODEC_J2K);
    }
    return encodedByQt(image, form);
}

std::vector<QByteArray> sampleForms()
{
    return {"png", "jpeg", "gif", "webp", "tiff", "heic", "jp2", "j2k"};
}

QByteArray jpegWithOrientation(const QImage &image, int orientation)
{
    QByteArray exif("Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01", 24);
    appendBig(exif, static_cast<quint32>(orientation), 2);
    exif.append(6, '\0'); // the rest of the value, and no further directory
    QByteArray segment("\xFF\xE1", 2);
    appendBig(segment, static_cast<quint32>(exif.size()) + 2, 2);
    return encoded(image, "jpeg").insert(2, QByteArray(segment + exif));
}

QByteArray heicWithOrientation(const QImage &image, int orientation)
{
    return encodedAsHEIC(image, orientation);
}

QByteArray tiffWithOrientation(const QImage &image, int orientation, TIFFKind kind)
{
    QByteArray bytes(kind.isBigEndian ? "MM" : "II");
    const auto append = [&](qint64 value, int count) {
        for (int i = 0; i < count; ++i) {
            const int shift = 8 * (kind.isBigEndian ? count - 1 - i : i);
            bytes.append(static_cast<char>((value >> shift) & 0xFF));
        }
    };
    constexpr int kShort = 3;
    constexpr int kLong = 4;
    struct Entry
    {
        int tag;
        int type;
        qint64 value;
    };
    const int offsetSize = kind.hasWideOffsets ? 8 : 4;
    const int countSize = kind.hasWideOffsets ? 8 : 2;
    std::vector<Entry> entries = {{256, kLong, image.width()},
                                  {257, kShort, image.height()},
                                  {258, kShort, 8},
                                  {259, kShort, 1},
                                  {262, kShort, 1},
                                  {273, kLong, 0},
                                  {274, kShort, orientation},
                                  {277, kShort, 1},
                                  {278, kLong, image.height()},
                                  {279, kLong, qint64{image.width()} * image.height()}};
    const int head = kind.hasWideOffsets ? 16 : 8;
    const auto count = static_cast<int>(entries.size());
    entries[5].value = head + countSize + count * (4 + 2 * offsetSize) + offsetSize;
    append(kind.hasWideOffsets ? 43 : 42, 2);
    if (kind.hasWideOffsets) {
        append(8, 2);
        append(0, 2);
    }
    append(head, offsetSize);
    append(count, countSize);
    for (const Entry &entry : entries) {
        const int size = entry.type == kShort ? 2 : 4;
        append(entry.tag, 2);
        append(entry.type, 2);
        append(1, offsetSize);
        append(entry.value, size);
        bytes.append(offsetSize - size, '\0');
    }
    append(0, offsetSize);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            bytes.append(static_cast<char>(qGray(image.pixel(x, y))));
        }
    }
    return bytes;
}

QByteArray pngHeader(quint32 width, quint32 height)
{
    QByteArray bytes("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16);
    appendBig(bytes, width, 4);
    appendBig(bytes, height, 4);
    return bytes + QByteArray(16, '\0');
}

std::string quartersOf(const QImage &image)
{
    std::string letters;
    for (const int y : {image.height() / 4, image.height() * 3 / 4}) {
        for (const int x : {image.width() / 4, image.width() * 3 / 4}) {
            letters += letterOf(image.pixel(x, y));
        }
    }
    return letters;
}

} // namespace quib::tests

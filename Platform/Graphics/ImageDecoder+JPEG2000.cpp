// JPEG 2000, in its file form and as a bare stream, by OpenJPEG.

#include "ImageDecoder_p.h"

#include "ImageSizeProbe.h"
#include "NSImage.h"

#include <QColorSpace>

#include <algorithm>
#include <cstring>
#include <memory>

#include <openjpeg.h>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// The decoder keeps four bytes of every component of every pixel. Units: bytes.
constexpr qint64 kMostComponentMemory = qint64{2} * 1024 * 1024 * 1024;

template <auto Free> struct Freeing
{
    template <typename T> void operator()(T *object) const { Free(object); }
};

using Codec = std::unique_ptr<opj_codec_t, Freeing<opj_destroy_codec>>;
using Stream = std::unique_ptr<opj_stream_t, Freeing<opj_stream_destroy>>;
using Picture = std::unique_ptr<opj_image_t, Freeing<opj_image_destroy>>;

/// Bytes that the codec reads from.
struct Input
{
    QByteArrayView bytes;
    qsizetype offset = 0;
};

OPJ_SIZE_T readInput(void *buffer, OPJ_SIZE_T count, void *userData)
{
    auto *input = static_cast<Input *>(userData);
    const qsizetype left = input->bytes.size() - input->offset;
    if (left <= 0) {
        return static_cast<OPJ_SIZE_T>(-1);
    }
    const qsizetype taken = std::min<qsizetype>(left, static_cast<qsizetype>(std::min<OPJ_SIZE_T>(count, 1 << 30)));
    std::memcpy(buffer, input->bytes.data() + input->offset, static_cast<size_t>(taken));
    input->offset += taken;
    return static_cast<OPJ_SIZE_T>(taken);
}

OPJ_OFF_T skipInput(OPJ_OFF_T count, void *userData)
{
    auto *input = static_cast<Input *>(userData);
    if (count < 0 || count > input->bytes.size() - input->offset) {
        return -1;
    }
    input->offset += count;
    return count;
}

OPJ_BOOL seekInput(OPJ_OFF_T offset, void *userData)
{
    auto *input = static_cast<Input *>(userData);
    if (offset < 0 || offset > input->bytes.size()) {
        return OPJ_FALSE;
    }
    input->offset = offset;
    return OPJ_TRUE;
}

Stream makeStream(Input &input)
{
    Stream stream(opj_stream_default_create(OPJ_TRUE));
    opj_stream_set_user_data(stream.get(), &input, nullptr);
    opj_stream_set_user_data_length(stream.get(), static_cast<OPJ_UINT64>(input.bytes.size()));
    opj_stream_set_read_function(stream.get(), readInput);
    opj_stream_set_skip_function(stream.get(), skipInput);
    opj_stream_set_seek_function(stream.get(), seekInput);
    return stream;
}

/// Keeps the first thing that the codec finds wrong.
void keepMessage(const char *message, void *userData)
{
    auto *kept = static_cast<QString *>(userData);
    if (kept->isEmpty()) {
        *kept = QString::fromUtf8(message).trimmed();
    }
}

void ignoreMessage(const char *, void *) {}

/// How often the picture may be halved in decoding so that it still fills what is asked for.
OPJ_UINT32 halvings(opj_codec_t *codec, QSize size, const std::optional<QSize> &box)
{
    if (!box) {
        return 0;
    }
    OPJ_UINT32 most = 0;
    opj_codestream_info_v2_t *info = opj_get_cstr_info(codec);
    if (info != nullptr && info->m_default_tile_info.tccp_info != nullptr) {
        const OPJ_UINT32 resolutions = info->m_default_tile_info.tccp_info[0].numresolutions;
        most = resolutions > 0 ? resolutions - 1 : 0;
    }
    opj_destroy_cstr_info(&info);
    const QSize wanted = sizeFittingBox(size, *box);
    OPJ_UINT32 count = 0;
    while (count < most && (size.width() >> (count + 1)) >= wanted.width() &&
           (size.height() >> (count + 1)) >= wanted.height()) {
        ++count;
    }
    return count;
}

/// One component as 8 bits a pixel of the whole picture, whatever its depth and its own, coarser grid.
class Plane
{
public:
    Plane(const opj_image_comp_t &component, int width, int height)
        : m_data(component.data)
        , m_width(static_cast<int>(component.w))
        , m_height(static_cast<int>(component.h))
        , m_fullWidth(width)
        , m_fullHeight(height)
        , m_offset(component.sgnd != 0 ? qint64{1} << (component.prec - 1) : 0)
        , m_largest((qint64{1} << component.prec) - 1)
    {
    }
    [[nodiscard]] static bool isUsable(const opj_image_comp_t &component)
    {
        return component.data != nullptr && component.w > 0 && component.h > 0 && component.prec > 0 &&
               component.prec <= 31;
    }
    [[nodiscard]] int at(int x, int y) const
    {
        const qint64 column = m_width == m_fullWidth ? x : qint64{x} * m_width / m_fullWidth;
        const qint64 row = m_height == m_fullHeight ? y : qint64{y} * m_height / m_fullHeight;
        const qint64 value = std::clamp<qint64>(m_data[row * m_width + column] + m_offset, 0, m_largest);
        return static_cast<int>(value * 255 / m_largest);
    }

private:
    const OPJ_INT32 *m_data;
    int m_width;
    int m_height;
    int m_fullWidth;
    int m_fullHeight;
    qint64 m_offset;
    qint64 m_largest;
};

/// Brightness and two colour differences as red, green and blue.
QRgb fromYCC(int y, int blueness, int redness, int alpha)
{
    const double cb = blueness - 128;
    const double cr = redness - 128;
    const auto byte = [](double value) { return std::clamp(static_cast<int>(value + 0.5), 0, 255); };
    return qRgba(byte(y + 1.402 * cr), byte(y - 0.344136 * cb - 0.714136 * cr), byte(y + 1.772 * cb), alpha);
}

QImage fromComponents(const opj_image_t &picture)
{
    const OPJ_UINT32 count = std::min<OPJ_UINT32>(picture.numcomps, 4);
    const auto width = static_cast<int>(picture.comps[0].w);
    const auto height = static_cast<int>(picture.comps[0].h);
    std::vector<Plane> planes;
    for (OPJ_UINT32 i = 0; i < count; ++i) {
        if (!Plane::isUsable(picture.comps[i])) {
            return {};
        }
        planes.emplace_back(picture.comps[i], width, height);
    }
    const bool isGray = count < 3;
    const bool hasAlpha = count == 2 || count == 4;
    const bool isYCC = !isGray && picture.color_space == OPJ_CLRSPC_SYCC;
    QImage image(width, height, hasAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (image.isNull()) {
        return {};
    }
    for (int y = 0; y < height; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const int alpha = hasAlpha ? planes.back().at(x, y) : 255;
            const int first = planes[0].at(x, y);
            if (isGray) {
                line[x] = qRgba(first, first, first, alpha);
            } else if (isYCC) {
                line[x] = fromYCC(first, planes[1].at(x, y), planes[2].at(x, y), alpha);
            } else {
                line[x] = qRgba(first, planes[1].at(x, y), planes[2].at(x, y), alpha);
            }
        }
    }
    if (picture.icc_profile_buf != nullptr && picture.icc_profile_len > 0) {
        image.setColorSpace(QColorSpace::fromIccProfile(
            QByteArray(reinterpret_cast<const char *>(picture.icc_profile_buf), picture.icc_profile_len)));
    }
    return image;
}

} // namespace

QImage decodeJPEG2000(const ImageSource &source, NSError *error)
{
    const bool isStream = source.data.startsWith('\xFF');
    const Codec codec(opj_create_decompress(isStream ? OPJ_CODEC_J2K : OPJ_CODEC_JP2));
    QString message = u"it is cut off or damaged"_s;
    QString found;
    opj_set_error_handler(codec.get(), keepMessage, &found);
    opj_set_warning_handler(codec.get(), ignoreMessage, nullptr);
    opj_set_info_handler(codec.get(), ignoreMessage, nullptr);
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    Input input{.bytes = source.data};
    const Stream stream = makeStream(input);
    const auto fail = [&] { return brokenImage(source, found.isEmpty() ? message : found, error); };

    opj_image_t *header = nullptr;
    const bool isSetUp = opj_setup_decoder(codec.get(), &parameters) != OPJ_FALSE &&
                         opj_decoder_set_strict_mode(codec.get(), OPJ_TRUE) != OPJ_FALSE;
    const bool hasHeader = isSetUp && opj_read_header(stream.get(), codec.get(), &header) != OPJ_FALSE;
    const Picture picture(header);
    if (!hasHeader || picture->numcomps == 0 || picture->x1 <= picture->x0 || picture->y1 <= picture->y0) {
        return fail();
    }
    const qint64 width = qint64{picture->x1} - picture->x0;
    const qint64 height = qint64{picture->y1} - picture->y0;
    if (isTooLarge(width, height) || std::max(width, height) > INT_MAX) {
        return tooLargeImage(source, width, height, error);
    }
    const QSize size(static_cast<int>(width), static_cast<int>(height));
    const OPJ_UINT32 reduction = halvings(codec.get(), size, source.box);
    if (reduction > 0 && opj_set_decoded_resolution_factor(codec.get(), reduction) == OPJ_FALSE) {
        return fail();
    }
    constexpr qint64 kBytesPerComponent = sizeof(OPJ_INT32);
    if (((width >> reduction) + 1) * ((height >> reduction) + 1) * picture->numcomps * kBytesPerComponent >
        kMostComponentMemory) {
        return tooLargeImage(source, width, height, error);
    }
    if (opj_decode(codec.get(), stream.get(), picture.get()) == OPJ_FALSE ||
        opj_end_decompress(codec.get(), stream.get()) == OPJ_FALSE) {
        return fail();
    }
    QImage image = fromComponents(*picture);
    return image.isNull() ? fail() : image;
}

} // namespace quib

// HEIC by libheif, which turns and crops as the file says.

#include "ImageDecoder_p.h"

#include <QColorSpace>

#include <memory>

#include <libheif/heif.h>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

template <auto Free> struct Freeing
{
    template <typename T> void operator()(T *object) const { Free(object); }
};

using Context = std::unique_ptr<heif_context, Freeing<heif_context_free>>;
using Handle = std::unique_ptr<heif_image_handle, Freeing<heif_image_handle_release>>;
using Pixels = std::unique_ptr<heif_image, Freeing<heif_image_release>>;
using Colors = std::unique_ptr<heif_color_profile_nclx, Freeing<heif_nclx_color_profile_free>>;
using Options = std::unique_ptr<heif_decoding_options, Freeing<heif_decoding_options_free>>;

QImage failed(const ImageSource &source, const heif_error &failure, NSError *error)
{
    return brokenImage(source, QString::fromUtf8(failure.message), error);
}

QColorSpace colorSpaceOf(const heif_image_handle *handle)
{
    const size_t size = heif_image_handle_get_raw_color_profile_size(handle);
    if (size > 0) {
        QByteArray profile(static_cast<qsizetype>(size), Qt::Uninitialized);
        if (heif_image_handle_get_raw_color_profile(handle, profile.data()).code == heif_error_Ok) {
            return QColorSpace::fromIccProfile(profile);
        }
    }
    // Made even where reading it fails.
    heif_color_profile_nclx *made = nullptr;
    const heif_error failure = heif_image_handle_get_nclx_color_profile(handle, &made);
    const Colors nclx(made);
    QColorSpace space;
    if (failure.code == heif_error_Ok && nclx != nullptr &&
        nclx->color_primaries == heif_color_primaries_SMPTE_EG_432_1) {
        space = QColorSpace::DisplayP3;
    }
    return space;
}

} // namespace

QImage decodeHEIC(const ImageSource &source, NSError *error)
{
    const Context context(heif_context_alloc());
    heif_error failure = heif_context_read_from_memory_without_copy(context.get(), source.data.constData(),
                                                                    static_cast<size_t>(source.data.size()), nullptr);
    if (failure.code != heif_error_Ok) {
        return failed(source, failure, error);
    }
    heif_image_handle *primary = nullptr;
    failure = heif_context_get_primary_image_handle(context.get(), &primary);
    const Handle handle(primary);
    if (failure.code != heif_error_Ok) {
        return failed(source, failure, error);
    }
    const int declaredWidth = heif_image_handle_get_width(primary);
    const int declaredHeight = heif_image_handle_get_height(primary);
    if (declaredWidth < 1 || declaredHeight < 1) {
        return brokenImage(source, u"it tells no size", error);
    }
    if (isTooLarge(declaredWidth, declaredHeight)) {
        return tooLargeImage(source, declaredWidth, declaredHeight, error);
    }
    // What is cut off is decoded all the same.
    const int codedWidth = heif_image_handle_get_ispe_width(primary);
    const int codedHeight = heif_image_handle_get_ispe_height(primary);
    if (isTooLarge(codedWidth, codedHeight)) {
        return tooLargeImage(source, codedWidth, codedHeight, error);
    }
    const Options options(heif_decoding_options_alloc());
    options->convert_hdr_to_8bit = 1;
    options->strict_decoding = 1;
    heif_image *decoded = nullptr;
    failure = heif_decode_image(primary, &decoded, heif_colorspace_RGB, heif_chroma_interleaved_RGBA, options.get());
    Pixels pixels(decoded);
    if (failure.code != heif_error_Ok) {
        return failed(source, failure, error);
    }
    int stride = 0;
    const uint8_t *plane = heif_image_get_plane_readonly(decoded, heif_channel_interleaved, &stride);
    const int width = heif_image_get_width(decoded, heif_channel_interleaved);
    const int height = heif_image_get_height(decoded, heif_channel_interleaved);
    if (plane == nullptr || width < 1 || height < 1) {
        return brokenImage(source, u"it has no pixels", error);
    }
    const auto format = heif_image_handle_has_alpha_channel(primary) == 0        ? QImage::Format_RGBX8888
                        : heif_image_handle_is_premultiplied_alpha(primary) != 0 ? QImage::Format_RGBA8888_Premultiplied
                                                                                 : QImage::Format_RGBA8888;
    // The picture holds on to the decoder's own memory: a second copy of a large one would not be cheap.
    QImage image(
        plane, width, height, stride, format, [](void *owned) { heif_image_release(static_cast<heif_image *>(owned)); },
        pixels.release());
    image.setColorSpace(colorSpaceOf(primary));
    return image;
}

} // namespace quib

// Pictures of any form: whatever the bytes, the answer is an error or a picture that fits the box.

#include <Graphics/GraphicsEnvironment.h>
#include <Graphics/NSImage.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// For the leak checker, where it is built in: what the libraries keep to the end, or lose in broken pictures.
extern "C" __attribute__((visibility("default"))) const char *__lsan_default_suppressions(); // NOLINT
extern "C" const char *__lsan_default_suppressions()                                         // NOLINT
{
    return "leak:libfontconfig\n";
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (!quib::GraphicsEnvironment::ensure()) {
        std::abort();
    }
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    NSError error;
    const QSize box(64, 64);
    const auto image = NSImage::imageWithData(bytes, QStringLiteral("input"), &error, box);
    if (image.has_value() == error.isSet()) {
        std::abort();
    }
    if (image && (image->isEmpty() || image->pixelSize().boundedTo(box) != image->pixelSize())) {
        std::abort();
    }
    return 0;
}

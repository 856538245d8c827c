// Property lists from foreign files: whatever is read can be written and read again with the same result.

#include <Files/PropertyList.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto value = quib::readPropertyList(bytes, nullptr);
    if (!value) {
        return 0;
    }
    const auto written = quib::writePropertyList(*value, quib::PropertyListFormat::Binary, nullptr);
    if (!written) {
        std::abort();
    }
    const auto again = quib::readPropertyList(*written, nullptr);
    // What shares values in the input may be too large once written out. Far dates may move by a rounding, so sizes are
    // compared.
    const auto rewritten =
        again ? quib::writePropertyList(*again, quib::PropertyListFormat::Binary, nullptr) : std::nullopt;
    if (again && (!rewritten || rewritten->size() != written->size())) {
        std::abort();
    }
    return 0;
}

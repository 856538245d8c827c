// Web pages from any bytes: decoding and the search for a title must end, in bounds. The first byte chooses what the
// server declares.

#include <URL/HTMLDocument.h>
#include <URL/PageDecoding.h>
#include <URL/URLFileName.h>

#include <cstdint>
#include <cstdlib>
#include <iterator>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, size_t size)
{
    const char *const declared[] = {"", "utf-8", "iso-8859-1", "shift_jis", "iso-2022-jp", "gb18030", "utf-16", "hz"};
    if (size == 0) {
        return 0;
    }
    const QByteArray bytes(reinterpret_cast<const char *>(data + 1), static_cast<qsizetype>(size - 1));
    const QString text = quib::decodePage(bytes, declared[data[0] % std::size(declared)]);
    const HTMLDocument document = HTMLDocument::documentWithString(text);
    if (document.title().size() > HTMLDocument::kLongestTitle) {
        std::abort();
    }
    const QString name = quib::fileNameForURL(text.left(2000), bytes);
    if (name.isEmpty() || name.startsWith(u'.') || name.contains(u'/') || name.toUtf8().size() > 255) {
        std::abort();
    }
    return 0;
}

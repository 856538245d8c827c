#include "PageDecoding.h"

#include <QHash>
#include <QList>
#include <QStringDecoder>

#include <algorithm>
#include <memory>
#include <optional>

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>
#include <unicode/ucsdet.h>

namespace quib {

namespace {

/// How far into a page its declaration is looked for. Units: bytes.
constexpr qsizetype kDeclarationReach = 4096;

struct CloseConverter
{
    void operator()(UConverter *converter) const { ucnv_close(converter); }
};
struct CloseDetector
{
    void operator()(UCharsetDetector *detector) const { ucsdet_close(detector); }
};

bool isASCII(const QByteArray &bytes)
{
    return std::all_of(bytes.cbegin(), bytes.cend(), [](char byte) { return static_cast<uchar>(byte) < 0x80; });
}

bool isBlank(char byte)
{
    return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\f' || byte == '\r';
}

/// The name by which a converter is opened; empty for names that are none, and for encodings that web pages hide text
/// in. Pages that name a small old set mean the Windows code page around it.
QByteArray converterName(const QByteArray &label)
{
    static const QHash<QByteArray, QByteArray> kWider = {
        {"ascii", "windows-1252"},
        {"us-ascii", "windows-1252"},
        {"latin1", "windows-1252"},
        {"iso-8859-1", "windows-1252"},
        {"iso8859-1", "windows-1252"},
        {"iso-8859-9", "windows-1254"},
        {"latin5", "windows-1254"},
        {"iso-8859-11", "windows-874"},
        {"tis-620", "windows-874"},
        {"gb2312", "gb18030"},
        {"gbk", "gb18030"},
        {"shift_jis", "windows-31j"},
        {"sjis", "windows-31j"},
        {"x-sjis", "windows-31j"},
        {"euc-kr", "windows-949"},
    };
    const QByteArray name = label.trimmed().toLower();
    const bool isName = !name.isEmpty() && name.size() <= 40 && std::all_of(name.cbegin(), name.cend(), [](char byte) {
        return (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') || byte == '-' || byte == '_' ||
               byte == '.' || byte == ':';
    });
    if (!isName || name.startsWith("utf-7") || name.startsWith("utf7") || name.startsWith("unicode-1-1-utf-7") ||
        name.startsWith("imap") || name.startsWith("scsu") || name.startsWith("bocu")) {
        return {};
    }
    return kWider.value(name, name);
}

std::optional<QString> decodedUtf8(const QByteArray &bytes)
{
    // A sequence that the end cuts is no error, since pages are cut where they grow too long; but behind nothing but
    // ASCII it is more likely a letter of another encoding.
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder.decode(bytes);
    const bool isCutAfterASCII = text.size() < bytes.size() && std::all_of(text.cbegin(), text.cend(), [](QChar unit) {
                                     return unit.unicode() < 0x80;
                                 });
    return decoder.hasError() || isCutAfterASCII ? std::nullopt : std::optional(text);
}

/// Errors: nullopt where a byte does not fit, unless losses are allowed; an encoding that is not known.
std::optional<QString> decoded(const QByteArray &bytes, const QByteArray &label, bool allowLosses)
{
    const QByteArray name = converterName(label);
    if (name.isEmpty()) {
        return std::nullopt;
    }
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, CloseConverter> converter(ucnv_open(name.constData(), &status));
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    ucnv_setToUCallBack(converter.get(), allowLosses ? UCNV_TO_U_CALLBACK_SUBSTITUTE : UCNV_TO_U_CALLBACK_STOP, nullptr,
                        nullptr, nullptr, &status);
    // No encoding makes more than two units of one byte.
    QString text(2 * bytes.size() + 16, Qt::Uninitialized);
    const int32_t length =
        ucnv_toUChars(converter.get(), reinterpret_cast<UChar *>(text.data()), static_cast<int32_t>(text.size()),
                      bytes.constData(), static_cast<int32_t>(bytes.size()), &status);
    if (U_FAILURE(status) && !(allowLosses && status == U_TRUNCATED_CHAR_FOUND)) {
        return std::nullopt;
    }
    text.truncate(std::clamp<qsizetype>(length, 0, text.size()));
    return text;
}

/// The value behind "KEY=" in a tag, without quotes.
QByteArray valueIn(const QByteArray &tag, const QByteArray &key)
{
    qsizetype start = tag.indexOf(key);
    if (start < 0) {
        return {};
    }
    const auto skipBlanks = [&tag, &start] {
        while (start < tag.size() && isBlank(tag[start])) {
            ++start;
        }
    };
    start += key.size();
    skipBlanks();
    if (start >= tag.size() || tag[start] != '=') {
        return {};
    }
    ++start;
    skipBlanks();
    if (start < tag.size() && (tag[start] == '"' || tag[start] == '\'')) {
        ++start;
    }
    qsizetype limit = start;
    while (limit < tag.size() && !isBlank(tag[limit]) && !QByteArrayView("\"';/>?").contains(tag[limit])) {
        ++limit;
    }
    return tag.sliced(start, limit - start);
}

QByteArray declaredByPage(const QByteArray &bytes)
{
    const QByteArray head = bytes.first(std::min(bytes.size(), kDeclarationReach)).toLower();
    if (head.startsWith("<?xml")) {
        if (QByteArray name = valueIn(head.first(head.indexOf('>') + 1), "encoding"); !name.isEmpty()) {
            return name;
        }
    }
    for (qsizetype tag = head.indexOf("<meta"); tag >= 0; tag = head.indexOf("<meta", tag + 1)) {
        const qsizetype limit = head.indexOf('>', tag);
        const QByteArray name = valueIn(head.sliced(tag, (limit < 0 ? head.size() : limit) - tag), "charset");
        // A page whose declaration can be read so is in no encoding of wider units.
        if (!name.isEmpty() && !name.startsWith("utf-16") && !name.startsWith("utf-32")) {
            return name;
        }
    }
    return {};
}

QByteArray detected(const QByteArray &bytes)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UCharsetDetector, CloseDetector> detector(ucsdet_open(&status));
    ucsdet_setText(detector.get(), bytes.constData(), static_cast<int32_t>(bytes.size()), &status);
    ucsdet_enableInputFilter(detector.get(), true); // tags tell of no language
    const UCharsetMatch *const match = ucsdet_detect(detector.get(), &status);
    const char *const name = U_SUCCESS(status) && match != nullptr ? ucsdet_getName(match, &status) : nullptr;
    return U_SUCCESS(status) && name != nullptr ? QByteArray(name) : QByteArray();
}

} // namespace

QString decodePage(const QByteArray &bytes, const QByteArray &declaredByServer)
{
    if (const auto marked = QStringConverter::encodingForData(bytes);
        marked && (bytes.startsWith("\xEF\xBB\xBF") || bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF"))) {
        return QStringDecoder(*marked).decode(bytes);
    }
    const auto utf8 = decodedUtf8(bytes);
    if (utf8 && !isASCII(bytes)) {
        return *utf8;
    }
    const QList<QByteArray> candidates{declaredByServer, declaredByPage(bytes)};
    for (const QByteArray &declared : candidates) {
        if (auto text = decoded(bytes, declared, /*allowLosses=*/false)) {
            return *text;
        }
    }
    if (utf8) {
        return *utf8;
    }
    for (const QByteArray &declared : candidates) {
        if (auto text = decoded(bytes, declared, /*allowLosses=*/true)) {
            return *text;
        }
    }
    for (const QByteArray &guess : {detected(bytes), QByteArray("windows-1252")}) {
        if (auto text = decoded(bytes, guess, /*allowLosses=*/false)) {
            return *text;
        }
    }
    return QString::fromUtf8(bytes);
}

} // namespace quib

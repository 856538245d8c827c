#include "PlainTextFile.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Units: bytes.
constexpr qint64 kReadAtOnce = 4 * 1024 * 1024;

std::nullopt_t fail(NSError *error, NSCocoaErrorCode code, const QString &message)
{
    NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(code), message);
    return std::nullopt;
}

/// The length of the well-formed UTF-8 sequence at bytes[i], or 0 where there is none. Surrogates and forms longer than
/// needed are not well formed.
qsizetype sequenceLength(const QByteArray &bytes, qsizetype i)
{
    const auto at = [&bytes](qsizetype position) {
        return position < bytes.size() ? static_cast<uchar>(bytes[position]) : uchar{0};
    };
    const auto isTail = [](uchar byte) { return (byte & 0xC0) == 0x80; };
    const uchar first = at(i);
    if (first < 0x80) {
        return 1;
    }
    if (first >= 0xC2 && first <= 0xDF) {
        return isTail(at(i + 1)) ? 2 : 0;
    }
    if (first >= 0xE0 && first <= 0xEF) {
        const uchar second = at(i + 1);
        const bool isSecondRight =
            isTail(second) && (first != 0xE0 || second >= 0xA0) && (first != 0xED || second < 0xA0);
        return isSecondRight && isTail(at(i + 2)) ? 3 : 0;
    }
    if (first >= 0xF0 && first <= 0xF4) {
        const uchar second = at(i + 1);
        const bool isSecondRight =
            isTail(second) && (first != 0xF0 || second >= 0x90) && (first != 0xF4 || second < 0x90);
        return isSecondRight && isTail(at(i + 2)) && isTail(at(i + 3)) ? 4 : 0;
    }
    return 0;
}

std::optional<QString> decodeUtf16(const QByteArray &bytes, bool isBigEndian, const QString &name, NSError *error)
{
    if (bytes.size() % 2 != 0) {
        return fail(error, NSCocoaErrorCode::FileReadCorruptFile,
                    u"%1: not text: half a UTF-16 unit at byte %2"_s.arg(name).arg(bytes.size() - 1));
    }
    QString text(bytes.size() / 2 - 1, Qt::Uninitialized);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const auto low = static_cast<uchar>(bytes[2 * i + (isBigEndian ? 3 : 2)]);
        const auto high = static_cast<uchar>(bytes[2 * i + (isBigEndian ? 2 : 3)]);
        text[i] = QChar(static_cast<char16_t>(high << 8 | low));
    }
    return text;
}

} // namespace

QByteArray readToEnd(QIODevice &device, qint64 atMost)
{
    QByteArray bytes;
    while (bytes.size() < atMost) {
        const QByteArray piece = device.read(std::min(kReadAtOnce, atMost - bytes.size()));
        if (piece.isEmpty()) {
            break;
        }
        bytes += piece;
    }
    return bytes;
}

std::optional<QString> decodePlainText(const QByteArray &bytes, const QString &name, NSError *error)
{
    if (bytes.startsWith("\xFF\xFE")) {
        return decodeUtf16(bytes, /*isBigEndian=*/false, name, error);
    }
    if (bytes.startsWith("\xFE\xFF")) {
        return decodeUtf16(bytes, /*isBigEndian=*/true, name, error);
    }
    const qsizetype start = bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    for (qsizetype i = start; i < bytes.size();) {
        const qsizetype length = sequenceLength(bytes, i);
        if (length == 0) {
            return fail(error, NSCocoaErrorCode::FileReadCorruptFile,
                        u"%1: not UTF-8 text at byte %2 (0x%3)"_s.arg(name).arg(i).arg(static_cast<uchar>(bytes[i]), 2,
                                                                                       16, QChar(u'0')));
        }
        i += length;
    }
    // A stateless decoder takes a second mark for text, as it is.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    return QString(decoder.decode(QByteArrayView(bytes).sliced(start)));
}

std::optional<QString> readPlainTextFile(const QString &path, NSError *error)
{
    QFile file;
    const bool isStandardInput = path == u"-"_s;
    const QString name = isStandardInput ? u"standard input"_s : path;
    if (isStandardInput) {
        if (!file.open(stdin, QIODevice::ReadOnly)) {
            return fail(error, NSCocoaErrorCode::FileReadUnknown, u"%1: %2"_s.arg(name, file.errorString()));
        }
    } else {
        const QFileInfo information(path);
        if (!information.exists()) {
            return fail(error, NSCocoaErrorCode::FileNoSuchFile, u"%1: no such file"_s.arg(name));
        }
        if (information.isDir()) {
            return fail(error, NSCocoaErrorCode::FileReadUnknown, u"%1: is a folder"_s.arg(name));
        }
        file.setFileName(path);
        if (!file.open(QIODevice::ReadOnly)) {
            return fail(error, NSCocoaErrorCode::FileReadNoPermission, u"%1: %2"_s.arg(name, file.errorString()));
        }
    }
    const QByteArray bytes = readToEnd(file, kMaximumTextBytes + 1);
    if (file.error() != QFileDevice::NoError) {
        return fail(error, NSCocoaErrorCode::FileReadUnknown, u"%1: %2"_s.arg(name, file.errorString()));
    }
    if (bytes.size() > kMaximumTextBytes) {
        return fail(error, NSCocoaErrorCode::FileReadUnknown,
                    u"%1: larger than %2 bytes"_s.arg(name).arg(kMaximumTextBytes));
    }
    return decodePlainText(bytes, name, error);
}

} // namespace quib

#include "URLParameters.h"

#include <Foundation/Identifiers.h>
#include <Text/Folding.h>

#include <limits>
#include <optional>

namespace quib {

namespace {

/// What the query of a URL may hold as it is, beside letters, digits and "-._~".
constexpr const char *kPlainInQuery = "!$&'()*+,;=:@/?";

std::optional<int> hexadecimalDigit(char byte)
{
    if (byte >= '0' && byte <= '9') {
        return byte - '0';
    }
    const char lower = static_cast<char>(byte | 0x20);
    return lower >= 'a' && lower <= 'f' ? std::optional(lower - 'a' + 10) : std::nullopt;
}

bool isHexadecimalDigit(QChar unit)
{
    return unit.unicode() < 0x80 && hexadecimalDigit(unit.toLatin1());
}

/// Whether two hexadecimal digits follow a place.
bool isEscape(QStringView text, qsizetype percent)
{
    return percent + 2 < text.size() && isHexadecimalDigit(text[percent + 1]) && isHexadecimalDigit(text[percent + 2]);
}

QString percentDecoded(QStringView text)
{
    if (!text.contains(u'%')) {
        return text.toString();
    }
    QByteArray bytes = toUtf8Lossless(text);
    char *const begin = bytes.data();
    const qsizetype size = bytes.size();
    qsizetype length = 0;
    for (qsizetype i = 0; i < size; ++i) {
        const auto high = begin[i] == '%' && i + 2 < size ? hexadecimalDigit(begin[i + 1]) : std::nullopt;
        const auto low = high ? hexadecimalDigit(begin[i + 2]) : std::nullopt;
        if (low) {
            begin[length++] = static_cast<char>(*high * 16 + *low);
            i += 2;
        } else {
            begin[length++] = begin[i];
        }
    }
    return fromUtf8Lossless(begin, length);
}

} // namespace

QString stringWithUUID()
{
    return uuidString();
}

QUrl urlFromText(const QString &text)
{
    QString escaped;
    qsizetype done = 0;
    for (qsizetype i = text.indexOf(u'%'); i >= 0; i = text.indexOf(u'%', i + 1)) {
        if (!isEscape(text, i)) {
            escaped += QStringView(text).sliced(done, i + 1 - done) % u"25";
            done = i + 1;
        }
    }
    return QUrl(done == 0 ? text : QString(escaped % QStringView(text).sliced(done)), QUrl::TolerantMode);
}

IACParameters parseURLParams(QStringView query)
{
    IACParameters parameters;
    for (const QStringView part : query.tokenize(u'&')) {
        const qsizetype equals = part.indexOf(u'=');
        if (equals < 0 || part.indexOf(u'=', equals + 1) >= 0) {
            continue;
        }
        parameters.insert(part.first(equals).toString(), percentDecoded(part.sliced(equals + 1)));
    }
    return parameters;
}

QString stringByAppendingURLParams(const QString &string, const IACParameters &params)
{
    QString url = string;
    if (!url.contains(u'?')) {
        url.append(u'?');
    } else if (!url.endsWith(u'&')) {
        url.append(u'&');
    }
    for (auto it = params.cbegin(); it != params.cend(); ++it) {
        const QByteArray value = toUtf8Lossless(it.value()).toPercentEncoding(kPlainInQuery);
        url.append(it.key() % u'=' % QString::fromLatin1(value) % u'&');
    }
    return url;
}

qint64 leadingInteger(QStringView text)
{
    text = text.trimmed();
    qsizetype length = text.startsWith(u'-') || text.startsWith(u'+') ? 1 : 0;
    const bool isNegative = text.startsWith(u'-');
    const qsizetype firstDigit = length;
    while (length < text.size() && text[length] >= u'0' && text[length] <= u'9') {
        ++length;
    }
    if (length == firstDigit) {
        return 0;
    }
    bool fits = false;
    const qint64 number = text.first(length).toLongLong(&fits);
    if (fits) {
        return number;
    }
    return isNegative ? std::numeric_limits<qint64>::min() : std::numeric_limits<qint64>::max();
}

} // namespace quib

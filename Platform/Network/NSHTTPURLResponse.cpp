#include "NSHTTPURLResponse.h"

#include <algorithm>

NSHTTPURLResponse::NSHTTPURLResponse(QUrl url, int statusCode, QList<Header> headers)
    : m_url(std::move(url))
    , m_statusCode(statusCode)
    , m_headers(std::move(headers))
{
}

QByteArray NSHTTPURLResponse::valueForHTTPHeaderField(const QByteArray &field) const
{
    const auto found = std::find_if(m_headers.cbegin(), m_headers.cend(), [&field](const Header &header) {
        return header.first.compare(field, Qt::CaseInsensitive) == 0;
    });
    return found == m_headers.cend() ? QByteArray() : found->second;
}

qint64 NSHTTPURLResponse::expectedContentLength() const
{
    bool isNumber = false;
    const qint64 length = valueForHTTPHeaderField("Content-Length").trimmed().toLongLong(&isNumber);
    return isNumber && length >= 0 ? length : -1;
}

QByteArray NSHTTPURLResponse::textEncodingName() const
{
    const QList<QByteArray> parameters = valueForHTTPHeaderField("Content-Type").split(';');
    for (const QByteArray &part : parameters.mid(1)) {
        const qsizetype equals = part.indexOf('=');
        if (equals < 0 || part.first(equals).trimmed().compare("charset", Qt::CaseInsensitive) != 0) {
            continue;
        }
        QByteArray name = part.sliced(equals + 1).trimmed();
        if (name.size() >= 2 && (name.front() == '"' || name.front() == '\'') && name.back() == name.front()) {
            name = name.sliced(1, name.size() - 2).trimmed();
        }
        return name;
    }
    return {};
}

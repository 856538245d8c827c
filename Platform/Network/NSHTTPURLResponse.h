#pragma once

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <utility>

/// What a server said before the body: where it said it, redirects followed, its status and its header lines. A value.
class NSHTTPURLResponse
{
public:
    using Header = std::pair<QByteArray, QByteArray>;

    NSHTTPURLResponse() = default;
    NSHTTPURLResponse(QUrl url, int statusCode, QList<Header> headers);

    [[nodiscard]] const QUrl &url() const { return m_url; }
    [[nodiscard]] int statusCode() const { return m_statusCode; }
    [[nodiscard]] const QList<Header> &allHeaderFields() const { return m_headers; }
    /// The first header line of a name, in any case; empty where there is none.
    [[nodiscard]] QByteArray valueForHTTPHeaderField(const QByteArray &field) const;
    /// Units: bytes; -1 where the server does not tell.
    [[nodiscard]] qint64 expectedContentLength() const;
    /// The "charset" of the type, without quotes; empty where there is none.
    [[nodiscard]] QByteArray textEncodingName() const;

private:
    QUrl m_url;
    int m_statusCode = 0;
    QList<Header> m_headers;
};

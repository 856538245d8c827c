#include "PercentEncoding.h"

#include <QByteArray>
#include <QUrl>

namespace quib {

namespace {

QByteArray encoded(const QString &text, PlainCharacters plainCharacters)
{
    switch (plainCharacters) {
    case PlainCharacters::Query:
        return QUrl::toPercentEncoding(text, QByteArrayLiteral("!$&'()*+,/:;=?@"));
    case PlainCharacters::QueryValue:
        return QUrl::toPercentEncoding(text, QByteArrayLiteral("!$'()*+,/:;@"));
    case PlainCharacters::Alphanumeric:
        return QUrl::toPercentEncoding(text, QByteArray(), QByteArrayLiteral("-._~"));
    }
    return {};
}

} // namespace

std::optional<QString> percentEncoded(const QString &text, PlainCharacters plainCharacters)
{
    if (!text.isValidUtf16()) {
        return std::nullopt;
    }
    return QString::fromLatin1(encoded(text, plainCharacters));
}

} // namespace quib

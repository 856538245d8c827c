#include "PercentEncoding.h"

#include <QByteArray>
#include <QUrl>

#include <algorithm>

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

/// Plain whatever the choice is.
bool isAlphanumeric(QChar unit)
{
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || (unit >= u'0' && unit <= u'9');
}

} // namespace

std::optional<QString> percentEncoded(const QString &text, PlainCharacters plainCharacters)
{
    if (std::ranges::all_of(text, isAlphanumeric)) {
        return text;
    }
    if (!text.isValidUtf16()) {
        return std::nullopt;
    }
    return QString::fromLatin1(encoded(text, plainCharacters));
}

} // namespace quib

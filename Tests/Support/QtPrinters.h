#pragma once

#include <QByteArray>
#include <QString>

#include <ostream>

// How failed comparisons print Qt's strings.

inline void PrintTo(const QString &text, std::ostream *stream)
{
    *stream << '"' << text.toUtf8().constData() << '"';
}

inline void PrintTo(const QByteArray &bytes, std::ostream *stream)
{
    *stream << '"' << bytes.toPercentEncoding(" !#$&'()*+,/:;=?@[]<>\"{}").constData() << '"';
}

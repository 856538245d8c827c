#pragma once

#include <QString>

/// Where log lines go. Called on the logger's queue only.
class LogSink
{
public:
    virtual ~LogSink() = default;
    /// Writes one line. Shape: bit is that of the operation (1 error ... 16 verbose); the line has no control
    /// characters but line feeds and tabs, and no end.
    virtual void write(int bit, const QString &line) = 0;
};

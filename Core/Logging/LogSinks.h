#pragma once

#include "LogSink.h"

#include <QStringList>

/// The system's log, under the name "quib".
class SystemLogSink final : public LogSink
{
public:
    SystemLogSink();
    void write(int bit, const QString &line) override;
};

/// Standard error.
class TerminalLogSink final : public LogSink
{
public:
    void write(int bit, const QString &line) override;
};

/// A file a day in a folder, the oldest removed. A file is named by the instant it was begun, and goes on being used by
/// later launches, and by other processes, until its time is over. What cannot be written is lost: logging never fails
/// the work that it tells of.
class RollingFileLogSink final : public LogSink
{
public:
    /// How long a file is written to. Units: seconds.
    static constexpr double kRollingFrequency = 86400;
    static constexpr qsizetype kMaximumNumberOfLogFiles = 7;

    explicit RollingFileLogSink(QString folder);
    void write(int bit, const QString &line) override;

    /// The log files of a folder, the oldest first.
    [[nodiscard]] static QStringList logFilePaths(const QString &folder);

private:
    /// The file for a line written now; begun, and old ones removed, where it is time.
    [[nodiscard]] QString currentPath();

    QString m_folder;
};

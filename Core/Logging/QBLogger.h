#pragma once

#include "LogSink.h"

#include <Foundation/DispatchQueue.h>

#include <QString>

#include <atomic>
#include <memory>
#include <vector>

/// The one path for log lines. Nothing is written until a level is turned on. Any thread; lines are written in the
/// order in which they were given, on the logger's own queue. An error's line is written when the call returns, so that
/// it survives a crash that follows at once.
class QBLogger
{
public:
    /// The bits of the level.
    enum Level
    {
        Error = 1,
        Warn = 2,
        Info = 4,
        Debug = 8,
        Verbose = 16,
    };

    /// The one instance, made on first use with the system log and the terminal as sinks.
    [[nodiscard]] static QBLogger &sharedLogger();

    /// A logger with sinks of its own; the level is the process's all the same. Reads the settings "QBLogLevel" and
    /// "QBLogFile".
    explicit QBLogger(std::vector<std::unique_ptr<LogSink>> sinks);
    ~QBLogger();
    QBLogger(const QBLogger &) = delete;
    QBLogger &operator=(const QBLogger &) = delete;

    // Each writes the line if the level has the operation's bit.
    void logError(const QString &line) { log(Error, line); }
    void logWarn(const QString &line) { log(Warn, line); }
    void logInfo(const QString &line) { log(Info, line); }
    void logDebug(const QString &line) { log(Debug, line); }
    void logVerbose(const QString &line) { log(Verbose, line); }

    [[nodiscard]] static int logLevel() { return level().load(std::memory_order_relaxed); }
    static bool isEnabled(int bit) { return (logLevel() & bit) != 0; }
    /// Sets the mask of the whole process.
    static void setLogLevel(int mask) { level().store(mask, std::memory_order_relaxed); }

    /// Turns the file log on, with all levels but verbose; or off, and with it every sink, since the level becomes 0.
    void setFileLoggerEnabled(bool enabled);
    /// The newest file of the file log; null where there is none.
    [[nodiscard]] QString lastLogFilePath() const;

    /// Waits until all lines given so far are written.
    void flush();

    /// "FUNCTION:LINE  MESSAGE".
    [[nodiscard]] static QString format(const char *function, int line, const QString &message);

private:
    void log(Level bit, const QString &line);
    void setupLogLevel();
    void setupLogFile();
    static std::atomic<int> &level();

    std::shared_ptr<quib::DispatchQueue> m_queue = quib::DispatchQueue::serial(QStringLiteral("log"));
    std::vector<std::unique_ptr<LogSink>> m_sinks; ///< used on m_queue
    std::unique_ptr<LogSink> m_fileLogger;         ///< used on m_queue; present while file logging is on
};

/// Logs a message with the place it comes from; the message is made only if the level asks for it.
#define QB_LOG(operation, bit, message)                                                                                \
    (::QBLogger::isEnabled(bit)                                                                                        \
         ? ::QBLogger::sharedLogger().operation(::QBLogger::format(__func__, __LINE__, (message)))                     \
         : static_cast<void>(0))
#define QBLogError(message) QB_LOG(logError, ::QBLogger::Error, message)
#define QBLogWarn(message) QB_LOG(logWarn, ::QBLogger::Warn, message)
#define QBLogInfo(message) QB_LOG(logInfo, ::QBLogger::Info, message)
#define QBLogDebug(message) QB_LOG(logDebug, ::QBLogger::Debug, message)
#define QBLogVerbose(message) QB_LOG(logVerbose, ::QBLogger::Verbose, message)

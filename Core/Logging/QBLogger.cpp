#include "QBLogger.h"

#include "LogSinks.h"

#include <Files/NSUserDefaults.h>
#include <Files/Profile.h>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

/// The line without control characters, with which a foreign name could play tricks on a terminal.
QString printable(const QString &line)
{
    QString result = line;
    for (QChar &unit : result) {
        const char16_t code = unit.unicode();
        if ((code < 0x20 && code != u'\n' && code != u'\t') || (code >= 0x7F && code < 0xA0)) {
            unit = QChar::ReplacementCharacter;
        }
    }
    return result;
}

} // namespace

std::atomic<int> &QBLogger::level()
{
    static std::atomic<int> mask = 0;
    return mask;
}

QBLogger &QBLogger::sharedLogger()
{
    // Never destroyed: whatever ends last may still log. Lines that wait at exit are written.
    static QBLogger *logger = [] {
        std::vector<std::unique_ptr<LogSink>> sinks;
        sinks.push_back(std::make_unique<SystemLogSink>());
        sinks.push_back(std::make_unique<TerminalLogSink>());
        std::atexit([] { sharedLogger().flush(); });
        return new QBLogger(std::move(sinks));
    }();
    return *logger;
}

QBLogger::QBLogger(std::vector<std::unique_ptr<LogSink>> sinks)
    : m_sinks(std::move(sinks))
{
    setupLogLevel();
    setupLogFile();
}

QBLogger::~QBLogger()
{
    flush();
}

void QBLogger::setupLogLevel()
{
    const quib::PropertyValue value = NSUserDefaults::standardUserDefaults()->objectForKey(u"QBLogLevel"_s);
    if (value.toBool()) {
        const QByteArray text = value.toString().toUtf8();
        std::fprintf(stderr, "Setting custom debug level %s\n", text.constData());
        setLogLevel(static_cast<int>(value.toInteger()));
    }
}

void QBLogger::setupLogFile()
{
    const quib::PropertyValue value = NSUserDefaults::standardUserDefaults()->objectForKey(u"QBLogFile"_s);
    if (value.toBool()) {
        setFileLoggerEnabled(value.toBool());
    }
}

void QBLogger::setFileLoggerEnabled(bool enabled)
{
    m_queue->sync([this, enabled] {
        m_fileLogger = enabled ? std::make_unique<RollingFileLogSink>(quib::Profile::logsFolder()) : nullptr;
    });
    setLogLevel(enabled ? Error | Warn | Info | Debug : 0);
}

QString QBLogger::lastLogFilePath() const
{
    const QStringList paths = RollingFileLogSink::logFilePaths(quib::Profile::logsFolder());
    return paths.isEmpty() ? QString() : paths.last();
}

void QBLogger::flush()
{
    m_queue->sync([] {});
}

QString QBLogger::format(const char *function, int line, const QString &message)
{
    return QString::fromUtf8(function) % u':' % QString::number(line) % u"  " % message;
}

void QBLogger::log(Level bit, const QString &line)
{
    if (!isEnabled(bit)) {
        return;
    }
    const auto write = [this, bit, line] {
        const QString safe = printable(line);
        for (const auto &sink : m_sinks) {
            sink->write(bit, safe);
        }
        if (m_fileLogger) {
            m_fileLogger->write(bit, safe);
        }
    };
    if (bit == Error) {
        m_queue->sync(write);
    } else {
        m_queue->async(write);
    }
}

#include "LogSinks.h"

#include <Files/AtomicFile.h>
#include <Foundation/NSDate.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTimeZone>

#include <cstdio>
#include <optional>

#include <fcntl.h>
#include <syslog.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView kFileNamePrefix{"Quib-"};
constexpr QLatin1StringView kFileNameSuffix{".log"};
constexpr QLatin1StringView kFileTimeFormat{"yyyyMMdd'T'hhmmss'Z'"};

int priorityFor(int bit)
{
    switch (bit) {
    case 1:
        return LOG_ERR;
    case 2:
        return LOG_WARNING;
    case 4:
        return LOG_INFO;
    default:
        return LOG_DEBUG;
    }
}

/// The instant in a log file's name; nothing where the file is none of ours.
std::optional<NSDate> begunAt(const QString &path)
{
    const QString name = path.section(u'/', -1);
    if (!name.startsWith(kFileNamePrefix) || !name.endsWith(kFileNameSuffix)) {
        return std::nullopt;
    }
    const QString time = name.sliced(kFileNamePrefix.size()).chopped(kFileNameSuffix.size());
    QDateTime begun = QDateTime::fromString(time, QString(kFileTimeFormat));
    begun.setTimeSpec(Qt::UTC);
    if (!begun.isValid()) {
        return std::nullopt;
    }
    return NSDate::dateWithTimeIntervalSince1970(static_cast<double>(begun.toSecsSinceEpoch()));
}

} // namespace

SystemLogSink::SystemLogSink()
{
    ::openlog("quib", LOG_PID, LOG_USER);
}

void SystemLogSink::write(int bit, const QString &line)
{
    ::syslog(priorityFor(bit), "%s", line.toUtf8().constData());
}

void TerminalLogSink::write(int /*bit*/, const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
}

RollingFileLogSink::RollingFileLogSink(QString folder)
    : m_folder(std::move(folder))
{
}

QStringList RollingFileLogSink::logFilePaths(const QString &folder)
{
    QStringList paths;
    // Names sort as their instants do.
    const QStringList names = QDir(folder).entryList(QDir::Files, QDir::Name);
    for (const QString &name : names) {
        if (begunAt(name)) {
            paths.append(folder % u'/' % name);
        }
    }
    return paths;
}

QString RollingFileLogSink::currentPath()
{
    QStringList paths = logFilePaths(m_folder);
    const NSDate now = NSDate::now();
    if (!paths.isEmpty()) {
        // A file from the future is the clock's fault and counts as over.
        const double age = now.timeIntervalSinceDate(*begunAt(paths.last()));
        if (age >= 0 && age < kRollingFrequency) {
            return paths.last();
        }
    }
    const auto seconds = static_cast<qint64>(now.timeIntervalSince1970());
    const QString time = QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC).toString(QString(kFileTimeFormat));
    const QString path = m_folder % u'/' % kFileNamePrefix % time % kFileNameSuffix;
    paths.removeAll(path);
    while (paths.size() >= kMaximumNumberOfLogFiles) {
        QFile::remove(paths.takeFirst());
    }
    return path;
}

void RollingFileLogSink::write(int /*bit*/, const QString &line)
{
    if (!quib::ensureFolder(m_folder, nullptr)) {
        return;
    }
    const int file =
        ::open(QFile::encodeName(currentPath()).constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0) {
        return;
    }
    // One call a line, at the end of the file: lines of several processes do not mix.
    const QByteArray bytes = NSDate::now().iso8601String().toUtf8() + ' ' + line.toUtf8() + '\n';
    [[maybe_unused]] const ssize_t written = ::write(file, bytes.constData(), static_cast<size_t>(bytes.size()));
    ::close(file);
}

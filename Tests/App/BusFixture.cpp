#include "BusFixture.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

constexpr int kPatience = 120'000;

void makeExecutable(const QString &path)
{
    EXPECT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

} // namespace

BusFixture::BusFixture()
{
    const auto system = QProcessEnvironment::systemEnvironment();
    for (const QString &name : {u"PATH"_s, u"ASAN_OPTIONS"_s, u"UBSAN_OPTIONS"_s, u"TSAN_OPTIONS"_s}) {
        if (system.contains(name)) {
            environment.insert(name, system.value(name));
        }
    }
    environment.insert(u"HOME"_s, folder.path());
    environment.insert(u"XDG_DATA_HOME"_s, folder.path(u"data"_s));
    environment.insert(u"XDG_CONFIG_HOME"_s, folder.path(u"config"_s));
    environment.insert(u"XDG_STATE_HOME"_s, folder.path(u"state"_s));
    environment.insert(u"XDG_CACHE_HOME"_s, folder.path(u"cache"_s));
    environment.insert(u"XDG_DATA_DIRS"_s, u"/usr/local/share:/usr/share"_s);
    environment.insert(u"TMPDIR"_s, folder.path());
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    environment.insert(u"TZ"_s, u"Europe/Rome"_s);
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    // Openers ask for a display before they look who takes a URL.
    environment.insert(u"WAYLAND_DISPLAY"_s, u"none"_s);
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, QString(u"unix:path="_s % folder.path(u"no bus"_s)));

    // The desktop's files, with the program where it was built.
    const auto adapted = [](const QString &name) {
        QFile file(QStringLiteral(QUIB_BINARY_DIR "/Resources/") + name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
        QByteArrayList lines = file.readAll().split('\n');
        for (QByteArray &line : lines) {
            if (line.startsWith("Exec=")) {
                const auto space = line.indexOf(' ');
                line = "Exec=" + quibProgram().toUtf8() + (space < 0 ? QByteArray() : line.mid(space));
            }
        }
        return lines.join('\n');
    };
    folder.write(u"data/applications/net.quibworks.Quib.desktop"_s, adapted(u"net.quibworks.Quib.desktop"_s));
    for (const QString &pipe : {u"callbacks"_s, u"ended"_s}) {
        EXPECT_EQ(::mkfifo(folder.path(pipe).toUtf8().constData(), 0600), 0);
    }
    const QByteArray callback = folder.path(u"callback"_s).toUtf8();
    folder.write(u"callback"_s, "#!/bin/sh\necho \"$1\" > '" + folder.path(u"callbacks"_s).toUtf8() + "'\n");
    makeExecutable(folder.path(u"callback"_s));
    folder.write(u"data/applications/callback.desktop"_s,
                 "[Desktop Entry]\nType=Application\nName=Callback\nExec=" + callback + " %u\n");
    folder.write(u"config/mimeapps.list"_s, "[Default Applications]\nx-scheme-handler/quib=net.quibworks.Quib.desktop\n"
                                            "x-scheme-handler/app=callback.desktop\n");
    // What the bus starts tells of its end.
    const QByteArray service = adapted(u"net.quibworks.Quib.service"_s);
    const QByteArray exec = service.mid(service.indexOf("Exec=") + 5).split('\n').first();
    folder.write(u"started"_s,
                 "#!/bin/sh\n" + exec + "\necho \"ended $?\" > '" + folder.path(u"ended"_s).toUtf8() + "'\n");
    makeExecutable(folder.path(u"started"_s));
    folder.write(u"data/dbus-1/services/net.quibworks.Quib.service"_s,
                 "[D-BUS Service]\nName=net.quibworks.Quib\nExec=" + folder.path(u"started"_s).toUtf8() + "\n");
}

BusFixture::~BusFixture()
{
    endBus();
}

void BusFixture::startBus()
{
    m_bus = std::make_unique<QProcess>();
    m_bus->setProcessEnvironment(environment);
    m_bus->start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address=1"_s});
    ASSERT_TRUE(m_bus->waitForReadyRead(kPatience)) << m_bus->readAllStandardError().toStdString();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, QString::fromUtf8(m_bus->readLine()).trimmed());
}

void BusFixture::endBus()
{
    if (m_bus) {
        m_bus->terminate();
        EXPECT_TRUE(m_bus->waitForFinished(kPatience));
        m_bus.reset();
    }
}

ProgramResult BusFixture::run(const QString &program, const QStringList &arguments, const QByteArray &input) const
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForStarted(kPatience)) {
        ADD_FAILURE() << program.toStdString() << " did not start";
        return {};
    }
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(kPatience) || process.exitStatus() != QProcess::NormalExit) {
        ADD_FAILURE() << program.toStdString() << ' ' << arguments.join(u' ').toStdString() << " crashed or hung\n"
                      << process.readAllStandardError().toStdString();
        return {};
    }
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

QString BusFixture::quibctl(const QStringList &arguments) const
{
    const ProgramResult result = run(quibctlProgram(), arguments);
    EXPECT_EQ(result.exitStatus, 0) << arguments.join(u' ').toStdString() << '\n' << result.messages.toStdString();
    return QString::fromUtf8(result.output).trimmed();
}

ProgramResult BusFixture::call(const QString &method, const QStringList &arguments) const
{
    return run(u"gdbus"_s, QStringList{u"call"_s, u"--session"_s, u"--dest"_s, u"net.quibworks.Quib"_s,
                                       u"--object-path"_s, u"/net/quibworks/Quib"_s, u"--method"_s, method} +
                               arguments);
}

std::unique_ptr<QProcess> BusFixture::startQuib(const QStringList &arguments) const
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(environment);
    process->start(quibProgram(), arguments);
    QByteArray told;
    while (!told.contains("running without a window")) {
        process->setReadChannel(QProcess::StandardError);
        if (!process->waitForReadyRead(kPatience)) {
            ADD_FAILURE() << "quib did not come up: " << told.toStdString();
            break;
        }
        told += process->readAllStandardError();
    }
    return process;
}

int BusFixture::terminate(QProcess &process)
{
    process.terminate();
    EXPECT_TRUE(process.waitForFinished(kPatience));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << process.readAllStandardError().toStdString();
    return process.exitCode();
}

QString BusFixture::nextLine(const QString &pipe) const
{
    return QString::fromUtf8(run(u"head"_s, {u"-n"_s, u"1"_s, folder.path(pipe)}).output).trimmed();
}

QStringList BusFixture::texts() const
{
    QStringList texts;
    const auto notes = QJsonDocument::fromJson(quibctl({u"list"_s, u"--json"_s}).toUtf8()).array();
    for (const QJsonValue note : notes) {
        const QString id = note.toObject().value("id"_L1).toString();
        const auto shown = QJsonDocument::fromJson(quibctl({u"show"_s, id, u"--json"_s}).toUtf8()).object();
        texts.append(shown.value("text"_L1).toString());
    }
    texts.sort();
    return texts;
}

QString BusFixture::quibProgram()
{
    return QStringLiteral(QUIB_BINARY_DIR "/App/quib");
}

QString BusFixture::quibctlProgram()
{
    return QStringLiteral(QUIB_BINARY_DIR "/CommandLine/quibctl");
}

} // namespace quib::tests

#include "QuibctlRunner.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>

using namespace Qt::StringLiterals;

QuibctlRunner::QuibctlRunner()
{
    EXPECT_TRUE(m_folder.isValid());
}

QString QuibctlRunner::program()
{
    return QStringLiteral(QUIB_BINARY_DIR "/CommandLine/quibctl");
}

QStringList QuibctlRunner::environment() const
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QUIB_PROFILE"_s, profile());
    environment.insert(u"HOME"_s, m_folder.path());
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    environment.insert(u"TZ"_s, u"Europe/Rome"_s);
    return environment.toStringList();
}

QuibctlResult QuibctlRunner::run(const QStringList &arguments, const QByteArray &input) const
{
    QProcess process;
    process.setEnvironment(environment());
    process.start(program(), arguments);
    if (!process.waitForStarted()) {
        ADD_FAILURE() << "quibctl did not start: " << program().toStdString();
        return {};
    }
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(120'000) || process.exitStatus() != QProcess::NormalExit) {
        ADD_FAILURE() << "quibctl " << arguments.join(u' ').toStdString() << " crashed or hung\n"
                      << process.readAllStandardError().toStdString();
        return {};
    }
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

QString QuibctlRunner::done(const QStringList &arguments, const QByteArray &input) const
{
    const QuibctlResult result = run(arguments, input);
    EXPECT_EQ(result.exitStatus, 0) << arguments.join(u' ').toStdString() << "\n" << result.messages.toStdString();
    return result.line();
}

QString QuibctlRunner::file(const QString &name, const QByteArray &bytes) const
{
    QFile file(m_folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    return file.fileName();
}

#pragma once

#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <memory>

namespace quib::tests {

/// What a program that ended gave.
struct ProgramResult
{
    int exitStatus = -1;
    QByteArray output;
    QByteArray messages;
};

/// A user's session of its own in a temporary folder: home, profile, desktop files, a session bus that starts Quib on
/// demand, and a program that answers "app:" URLs by writing them into a pipe. Everything in it is run as programs.
class BusFixture : public testing::Test
{
protected:
    BusFixture();
    ~BusFixture() override;

    /// Starts the bus; without it the session has none.
    void startBus();
    /// Ends the bus, as the end of a session does.
    void endBus();

    /// Runs a program to its end.
    ProgramResult run(const QString &program, const QStringList &arguments, const QByteArray &input = {}) const;
    ProgramResult quib(const QStringList &arguments, const QByteArray &input = {}) const
    {
        return run(quibProgram(), arguments, input);
    }
    /// Runs quibctl, expects success, and gives its trimmed output.
    QString quibctl(const QStringList &arguments) const;
    /// Calls a method of the instance of the user's own profile.
    ProgramResult call(const QString &method, const QStringList &arguments) const;
    /// Starts quib and waits until it tells that it serves.
    std::unique_ptr<QProcess> startQuib(const QStringList &arguments = {}) const;
    /// Asks a program to end; gives its exit status.
    static int terminate(QProcess &process);

    /// Waits for the next line in one of the pipes: a callback's URL, or the end of a process that the bus started.
    [[nodiscard]] QString nextLine(const QString &pipe) const;
    [[nodiscard]] QStringList texts() const;

    [[nodiscard]] static QString quibProgram();
    [[nodiscard]] static QString quibctlProgram();

    TemporaryFolder folder;
    QProcessEnvironment environment;

private:
    std::unique_ptr<QProcess> m_bus;
};

} // namespace quib::tests

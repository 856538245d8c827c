#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class QCommandLineParser;

namespace quib::cli {

class Session;

/// What a process ends with.
enum class ExitStatus : int
{
    Done = 0,
    Failed = 1,
    WrongUsage = 2,
    NotFound = 3
};

/// One option of a command, as help, completion and man page show it.
struct OptionDescription
{
    QString name;
    QString help;
    /// Empty for a flag.
    QString valueName = {};
};

/// One subcommand of quibctl: how it is called and what it does. The table of all commands is the only place that help,
/// completion and dispatch are made from.
struct Command
{
    /// One word, or two for grouped commands ("tag rename").
    QString name;
    /// The positional arguments as the usage line shows them: "[FILE|-]", "ID...".
    QString arguments;
    QString summary;
    /// A full command line and, after it, what it does.
    QString example;
    QList<OptionDescription> options = {};
    int minimumArguments = 0;
    /// -1: any number.
    int maximumArguments = 0;
    ExitStatus (*run)(Session &session, const QCommandLineParser &parser) = nullptr;
    /// The words that completion offers for the first argument; "@notes" and "@tags" and "@files" stand for live lists.
    QStringList completions = {};
    /// Whether it measures or draws text, for which the process must know the machine's fonts.
    bool needsFonts = false;
};

/// All commands, in the order of the help page.
[[nodiscard]] const QList<Command> &allCommands();
[[nodiscard]] const Command *commandNamed(const QString &name);

/// Subcommands that belong to features this build does not have.
[[nodiscard]] QStringList absentCommands();

} // namespace quib::cli

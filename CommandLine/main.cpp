// quibctl: Quib without a window, for scripts, tests and pipelines.

#include "Command.h"
#include "Help.h"
#include "Output.h"
#include "Session.h"

#include <Files/Profile.h>
#include <Foundation/WorkerThreads.h>
#include <Graphics/GraphicsEnvironment.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QLocale>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;
using namespace quib::cli;

namespace {

/// Takes "--profile DIR" and "--profile=DIR" out of the words, wherever before "--" they stand.
/// Errors: false when the folder is missing from the line.
bool takeProfile(QStringList &words, QString &profile)
{
    for (qsizetype i = 0; i < words.size() && words[i] != u"--"_s;) {
        if (words[i].startsWith(u"--profile="_s)) {
            profile = words.takeAt(i).mid(10);
        } else if (words[i] == u"--profile"_s) {
            words.removeAt(i);
            if (i >= words.size()) {
                return false;
            }
            profile = words.takeAt(i);
        } else {
            ++i;
            continue;
        }
        if (profile.isEmpty()) {
            return false;
        }
    }
    return true;
}

ExitStatus runCommand(const Command &command, QStringList words)
{
    QCommandLineParser parser;
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsOptions);
    parser.addOption(QCommandLineOption(QStringList{u"h"_s, u"help"_s}));
    for (const OptionDescription &option : command.options) {
        parser.addOption(QCommandLineOption(option.name, option.help, option.valueName));
    }
    words.prepend(u"quibctl"_s);
    if (!parser.parse(words)) {
        complain(parser.errorText());
        complain(u"see quibctl %1 --help"_s.arg(command.name));
        return ExitStatus::WrongUsage;
    }
    if (parser.isSet(u"help"_s)) {
        print(helpForCommand(command));
        return ExitStatus::Done;
    }
    const auto count = parser.positionalArguments().size();
    if (count < command.minimumArguments || (command.maximumArguments >= 0 && count > command.maximumArguments)) {
        complain(u"usage: %1"_s.arg(usageLine(command)));
        return ExitStatus::WrongUsage;
    }
    Session session;
    return command.run(session, parser);
}

ExitStatus runWords(QStringList words)
{
    if (words.isEmpty()) {
        complain(u"what shall be done? see quibctl --help"_s);
        return ExitStatus::WrongUsage;
    }
    const QString first = words.takeFirst();
    if (first == u"--help"_s || first == u"-h"_s || first == u"help"_s) {
        if (const Command *command = commandNamed(words.join(u' '))) {
            print(helpForCommand(*command));
        } else {
            print(helpForAllCommands());
        }
        return ExitStatus::Done;
    }
    if (first == u"--version"_s) {
        printLine(u"quibctl "_s + QCoreApplication::applicationVersion());
        return ExitStatus::Done;
    }
    if (!words.isEmpty()) {
        if (const Command *command = commandNamed(QString(first % u' ' % words.first()))) {
            return runCommand(*command, words.mid(1));
        }
    }
    if (const Command *command = commandNamed(first)) {
        return runCommand(*command, words);
    }
    if (absentCommands().contains(first)) {
        complain(u"this version of Quib has no \"%1\" yet"_s.arg(first));
        return ExitStatus::WrongUsage;
    }
    const QString group = first % u' ';
    QStringList members;
    for (const Command &command : allCommands()) {
        if (command.name.startsWith(group)) {
            members.append(command.name);
        }
    }
    if (members.isEmpty()) {
        complain(u"there is no command \"%1\"; see quibctl --help"_s.arg(singleLine(first)));
    } else {
        complain(u"\"%1\" is one of: %2"_s.arg(first, members.join(u", "_s)));
    }
    return ExitStatus::WrongUsage;
}

} // namespace

int main(int argc, char **argv)
{
    // A reader that closes the pipe early ends the output, not the work.
    std::signal(SIGPIPE, SIG_IGN);
    QStringList words;
    for (int i = 1; i < argc; ++i) {
        words.append(QString::fromLocal8Bit(argv[i]));
    }
    QString profile;
    const bool hasProfile = takeProfile(words, profile);
    const Command *command = commandNamed(QStringList(words.mid(0, 2)).join(u' '));
    const auto application = command != nullptr && command->needsFonts
                                 ? quib::GraphicsEnvironment::makeApplication(argc, argv)
                                 : std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication::setApplicationName(u"quibctl"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(QUIB_VERSION));
    QLocale::setDefault(QLocale::system());

    if (!hasProfile) {
        complain(u"--profile needs a folder"_s);
        return static_cast<int>(ExitStatus::WrongUsage);
    }
    if (!profile.isEmpty()) {
        quib::Profile::setRoot(profile);
    }
    ExitStatus status = runWords(words);
    if (!flushOutput() && status == ExitStatus::Done) {
        complain(u"the output could not be written"_s);
        status = ExitStatus::Failed;
    }
    return quib::WorkerThreads::endProcess(static_cast<int>(status));
}

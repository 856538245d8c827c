#include "Help.h"

#include <QCoreApplication>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

/// A command in a few words, for listings: its summary up to the first stop.
QString briefly(const Command &command)
{
    QString brief = command.summary.section(u". "_s, 0, 0).section(u": "_s, 0, 0);
    if (brief.endsWith(u'.')) {
        brief.chop(1);
    }
    return brief;
}

constexpr qsizetype kHelpColumn = 26;
constexpr qsizetype kPageWidth = 96;

/// Words in lines no longer than the page where they allow it, all but the first set in from the margin.
QString folded(const QString &text, qsizetype margin = 0)
{
    QString lines;
    qsizetype column = margin;
    for (const QString &word : text.split(u' ')) {
        if (column > margin && column + 1 + word.size() > kPageWidth) {
            lines += u'\n' + QString(margin, u' ');
            column = margin;
        } else if (column > margin) {
            lines += u' ';
            ++column;
        }
        lines += word;
        column += word.size();
    }
    return lines;
}

QString entry(const QString &name, const QString &help)
{
    const QString left = u"  "_s + name;
    const bool isLong = left.size() > kHelpColumn - 2;
    return isLong ? QString(left % u'\n' % QString(kHelpColumn, u' ') % folded(help, kHelpColumn) % u'\n')
                  : QString(left.leftJustified(kHelpColumn) % folded(help, kHelpColumn) % u'\n');
}

QString optionName(const OptionDescription &option)
{
    const QString name = (option.name.size() == 1 ? u"-"_s : u"--"_s) + option.name;
    return option.valueName.isEmpty() ? name : QString(name % u' ' % option.valueName);
}

QString roff(QString text)
{
    text.replace(u'\\', u"\\e"_s).replace(u'-', u"\\-"_s);
    return text.startsWith(u'.') || text.startsWith(u'\'') ? QString(u"\\&" % text) : text;
}

} // namespace

QString usageLine(const Command &command)
{
    QString line = u"quibctl "_s + command.name;
    if (!command.options.isEmpty()) {
        line += u" [OPTIONS]"_s;
    }
    if (!command.arguments.isEmpty()) {
        line += u' ' + command.arguments;
    }
    return line;
}

QString helpForCommand(const Command &command)
{
    QString page = u"Usage: "_s % usageLine(command) % u"\n\n"_s % folded(command.summary) % u"\n\n"_s;
    if (!command.options.isEmpty()) {
        page += u"Options:\n"_s;
        for (const OptionDescription &option : command.options) {
            page += entry(optionName(option), option.help);
        }
        page += u'\n';
    }
    page += u"Example:\n"_s;
    for (const QString &line : command.example.split(u'\n')) {
        page += QString(u"  " % line % u'\n');
    }
    return page;
}

QString helpForAllCommands()
{
    QString page = u"Usage: quibctl [--profile DIR] COMMAND [OPTIONS] [ARGUMENTS]\n\n"
                   u"Works on the notes of a profile without a window. Results go to standard output, messages to\n"
                   u"standard error. Exit status: 0 done, 1 failed, 2 wrong usage, 3 not found.\n\nCommands:\n"_s;
    for (const Command &command : allCommands()) {
        page += entry(command.name, briefly(command));
    }
    page += u"\nOptions for all:\n"_s;
    page += entry(u"--profile DIR"_s, u"Work on the profile in DIR instead of the user's own (also QUIB_PROFILE)."_s);
    page += entry(u"--help"_s, u"Show this page, or after a command the page of that command."_s);
    page += entry(u"--version"_s, u"Show the version."_s);
    page += u"\nA note is named by its identifier, or by the beginning of it if no other note's begins so.\n"_s;
    return page;
}

QString manualPage()
{
    QString page =
        u".TH QUIBCTL 1 \"\" \"Quib "_s % QCoreApplication::applicationVersion() %
        u"\" \"User Commands\"\n"
        u".SH NAME\nquibctl \\- work on Quib notes from the command line\n"
        u".SH SYNOPSIS\n.B quibctl\n[\\-\\-profile DIR] COMMAND [OPTIONS] [ARGUMENTS]\n"
        u".SH DESCRIPTION\n"
        u"Works on the notes of a profile without a window, for scripts, tests and pipelines. Results go to\n"
        u"standard output, one JSON document with \\-\\-json where a command has it; messages go to standard\n"
        u"error. A note is named by its identifier, or by the beginning of it, of at least four characters,\n"
        u"if no other note's begins so. A file named \\- is standard input.\n"
        u".PP\nText goes in as UTF\\-8, or as UTF\\-16 with a byte order mark; anything else is refused with\n"
        u"the place. The line end CR LF becomes LF on the way in.\n"
        u".SH COMMANDS\n"_s;
    for (const Command &command : allCommands()) {
        page += QString(u".TP\n.B " % roff(usageLine(command)) % u'\n' % roff(command.summary) % u'\n');
        for (const OptionDescription &option : command.options) {
            page += QString(u".RS\n.TP\n.B " % roff(optionName(option)) % u'\n' % roff(option.help) % u"\n.RE\n");
        }
        page += u".IP\nExample:\n.nf\n"_s;
        for (const QString &line : command.example.split(u'\n')) {
            page += QString(u"\\&  " % roff(line) % u'\n');
        }
        page += u".fi\n"_s;
    }
    page += u".SH EXIT STATUS\n.TP\n.B 0\ndone\n.TP\n.B 1\nfailed\n.TP\n.B 2\nwrong usage\n.TP\n.B 3\nnot found\n"
            u".SH ENVIRONMENT\n.TP\n.B QUIB_PROFILE\nA folder that holds the whole profile: notes, preferences, logs.\n"
            u".SH FILES\n.TP\n.I $XDG_DATA_HOME/QBTEAM0000.net.quibworks.quib/Application Data/database.sqlite\n"
            u"The notes.\n.TP\n"
            u".I $XDG_DATA_HOME/QBTEAM0000.net.quibworks.quib/Application Data/Local Files/\nTheir attachments.\n"_s;
    return page;
}

QString completionScript(const QString &shell)
{
    QStringList firsts;
    for (const Command &command : allCommands()) {
        const QString first = command.name.section(u' ', 0, 0);
        if (!firsts.contains(first)) {
            firsts.append(first);
        }
    }
    if (shell == u"bash"_s) {
        QString script = u"# bash completion for quibctl\n_quibctl() {\n"
                         u"    local cur=${COMP_WORDS[COMP_CWORD]} line=\"${COMP_WORDS[*]:1:COMP_CWORD-1}\"\n"
                         u"    local words=\"\"\n    case \"$line\" in\n"_s;
        script += QString(u"    \"\") words=\"" % firsts.join(u' ') % u" --help --version --profile\" ;;\n");
        QStringList groups;
        for (const Command &command : allCommands()) {
            QStringList words = command.completions.filter(QRegularExpression(u"^[^@]"_s));
            for (const OptionDescription &option : command.options) {
                words.append(u"--"_s + option.name);
            }
            words.append(u"--help"_s);
            if (command.completions.contains(u"@notes"_s)) {
                words.append(u"$(quibctl list --in all 2>/dev/null | cut -f1)"_s);
            }
            if (command.completions.contains(u"@tags"_s)) {
                words.append(u"$(quibctl tags 2>/dev/null | cut -f1)"_s);
            }
            script += QString(u"    \"" % command.name % u"\"|\"" % command.name % u" \"*) words=\"" %
                              words.join(u' ') % u"\" ;;\n");
            if (command.name.contains(u' ') && !groups.contains(command.name.section(u' ', 0, 0))) {
                groups.append(command.name.section(u' ', 0, 0));
            }
        }
        for (const QString &group : groups) {
            QStringList seconds;
            for (const Command &command : allCommands()) {
                if (command.name.startsWith(group + u' ')) {
                    seconds.append(command.name.section(u' ', 1, 1));
                }
            }
            script += QString(u"    \"" % group % u"\") words=\"" % seconds.join(u' ') % u"\" ;;\n");
        }
        script += u"    esac\n    COMPREPLY=($(compgen -W \"$words\" -- \"$cur\"))\n}\n"
                  u"complete -o default -F _quibctl quibctl\n"_s;
        return script;
    }
    if (shell == u"zsh"_s) {
        QString script = u"#compdef quibctl\n_quibctl() {\n    local -a commands options\n    commands=(\n"_s;
        for (const QString &first : firsts) {
            const Command *command = commandNamed(first);
            QString summary = command != nullptr ? briefly(*command) : u"several commands"_s;
            summary.replace(u'\'', u"'\\''"_s).replace(u':', u"\\:"_s);
            script += QString(u"        '" % first % u':' % summary % u"'\n");
        }
        script +=
            u"    )\n    if (( CURRENT == 2 )); then\n        _describe command commands\n        return\n    fi\n"
            u"    case \"$words[2] $words[3]\" in\n"_s;
        for (const Command &command : allCommands()) {
            QStringList words;
            for (const OptionDescription &option : command.options) {
                words.append(u"--"_s + option.name);
            }
            script += QString(u"    '" % command.name % (command.name.contains(u' ') ? u"'*"_s : u" '*"_s) %
                              u") options=(" % words.join(u' ') % u" --help) ;;\n");
        }
        script += u"    esac\n    compadd -- $options\n    _files\n}\n_quibctl \"$@\"\n"_s;
        return script;
    }
    if (shell == u"fish"_s) {
        QString script = u"# fish completion for quibctl\ncomplete -c quibctl -f\n"_s;
        const auto quoted = [](QString text) {
            return QString(u'\'' % text.replace(u'\\', u"\\\\"_s).replace(u'\'', u"\\'"_s) % u'\'');
        };
        for (const QString &first : firsts) {
            const Command *command = commandNamed(first);
            const QString summary = command != nullptr ? briefly(*command) : u"several commands"_s;
            script += QString(u"complete -c quibctl -n __fish_use_subcommand -a " % first % u" -d " % quoted(summary) %
                              u'\n');
        }
        for (const Command &command : allCommands()) {
            const QString first = command.name.section(u' ', 0, 0);
            const QString seen = u" -n '__fish_seen_subcommand_from "_s % first % u"'"_s;
            if (command.name.contains(u' ')) {
                script += QString(u"complete -c quibctl" % seen % u" -a " % command.name.section(u' ', 1, 1) % u'\n');
            }
            for (const OptionDescription &option : command.options) {
                script +=
                    QString(u"complete -c quibctl" % seen % u" -l " % option.name %
                            (option.valueName.isEmpty() ? u""_s : u" -r"_s) % u" -d " % quoted(option.help) % u'\n');
            }
            if (command.completions.contains(u"@notes"_s)) {
                script += QString(u"complete -c quibctl" % seen % u" -a '(quibctl list --in all | cut -f1)'\n");
            }
            if (command.completions.contains(u"@files"_s)) {
                script += QString(u"complete -c quibctl" % seen % u" -F\n");
            }
        }
        return script;
    }
    return {};
}

} // namespace quib::cli

#include "CommandGroup.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QVariant>

namespace quib {

namespace {

void collect(const QList<QAction *> &actions, QSet<QAction *> &seen, QList<QAction *> &commands)
{
    for (QAction *action : actions) {
        if (action->menu() != nullptr) {
            collect(action->menu()->actions(), seen, commands);
        } else if (!action->isSeparator() && !action->text().isEmpty() && !seen.contains(action)) {
            seen.insert(action);
            commands.append(action);
        }
    }
}

} // namespace

QString textWithoutMnemonic(const QString &text)
{
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        // Scripts without Latin letters have the key in parentheses behind the text.
        if (text[i] == u'(' && i + 3 < text.size() && text[i + 1] == u'&' && text[i + 3] == u')') {
            i += 3;
        } else if (text[i] != u'&') {
            plain.append(text[i]);
        } else if (i + 1 < text.size() && text[i + 1] == u'&') {
            plain.append(text[++i]);
        }
    }
    return plain;
}

QString nameOfCommand(const QAction &command)
{
    const QString name = command.property(kCommandNameProperty).toString();
    return textWithoutMnemonic(name.isEmpty() ? command.text() : name);
}

QList<CommandGroup> commandGroupsOfMenuBar(const QMenuBar &menuBar)
{
    QList<CommandGroup> groups;
    QSet<QAction *> seen;
    for (const QAction *entry : menuBar.actions()) {
        if (entry->menu() == nullptr) {
            continue;
        }
        CommandGroup group{.title = textWithoutMnemonic(entry->text()), .commands = {}};
        collect(entry->menu()->actions(), seen, group.commands);
        if (!group.commands.isEmpty()) {
            groups.append(std::move(group));
        }
    }
    return groups;
}

} // namespace quib

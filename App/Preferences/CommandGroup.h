#pragma once

#include <QList>
#include <QString>

QT_BEGIN_NAMESPACE
class QAction;
class QMenuBar;
QT_END_NAMESPACE

namespace quib {

/// Commands that a user looks for together, under a title. A value; the commands are their owner's.
struct CommandGroup
{
    QString title;
    QList<QAction *> commands;
};

/// The property with the name of a command whose text tells what it would do now.
inline constexpr char kCommandNameProperty[] = "commandName";
/// What the command is called, whatever it would do now.
[[nodiscard]] QString nameOfCommand(const QAction &command);

/// The text without the mark of its access key.
[[nodiscard]] QString textWithoutMnemonic(const QString &text);

/// The commands of a menu bar with those of the menus inside its menus, a group a menu, in their order. Separators and
/// commands without a text are left out, as are those that an earlier group has.
[[nodiscard]] QList<CommandGroup> commandGroupsOfMenuBar(const QMenuBar &menuBar);

} // namespace quib

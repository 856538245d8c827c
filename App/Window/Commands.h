#pragma once

#include "ChoicePanel.h"

#include <QList>
#include <QString>

QT_BEGIN_NAMESPACE
class QAction;
QT_END_NAMESPACE

namespace quib {

/// The commands that can be run now and whose names a query meets, the best first, each with its shortcut; with an
/// empty query all, in their order. Queue: main.
[[nodiscard]] QList<Choice> choicesOfCommands(const QList<QAction *> &commands, const QString &query,
                                              const QList<Choice> &more = {});

/// The text of a command without the mark of its access key.
[[nodiscard]] QString plainText(const QString &text);

} // namespace quib

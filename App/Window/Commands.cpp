#include "Commands.h"

#include "FuzzyMatch.h"

#include <QAction>
#include <QKeySequence>
#include <QPointer>

#include <algorithm>
#include <utility>
#include <vector>

namespace quib {

QString plainText(const QString &text)
{
    QString plain = text;
    plain.remove(u'&');
    return plain;
}

QList<Choice> choicesOfCommands(const QList<QAction *> &commands, const QString &query, const QList<Choice> &more)
{
    struct Found
    {
        Choice choice;
        int score;
    };
    std::vector<Found> found;
    const auto offer = [&found, &query](Choice choice) {
        if (auto match = FuzzyMatch::match(query, choice.title)) {
            choice.places = match->places;
            found.push_back({std::move(choice), query.isEmpty() ? 0 : match->score});
        }
    };
    for (QAction *command : commands) {
        if (command->isEnabled() && command->isVisible() && !command->text().isEmpty()) {
            offer(Choice{.title = plainText(command->text()),
                         .detail = command->shortcut().toString(QKeySequence::NativeText),
                         .symbol = {},
                         .places = {},
                         .choose = [command = QPointer<QAction>(command)] {
                             if (command != nullptr) {
                                 command->trigger();
                             }
                         }});
        }
    }
    for (const Choice &choice : more) {
        offer(choice);
    }
    std::ranges::stable_sort(found, [](const Found &a, const Found &b) { return a.score > b.score; });
    QList<Choice> choices;
    for (Found &each : found) {
        choices.append(std::move(each.choice));
    }
    return choices;
}

} // namespace quib

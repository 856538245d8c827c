#pragma once

#include <QStringList>

class QBNotesPreferenceManager;

namespace quib {

/// In which languages the spelling is checked, as the user chose. Without state. Queue: main.

/// The languages that were chosen, as their dictionaries are named: "de_DE". Empty where the desktop's count.
[[nodiscard]] QStringList chosenSpellingLanguages(const QBNotesPreferenceManager &preferences);
/// Keeps the choice, and has the spelling checked by it at once.
void setChosenSpellingLanguages(QBNotesPreferenceManager &preferences, const QStringList &languages);
/// Has the spelling checked by what was chosen, at the start of the program.
void applySpellingLanguages(const QBNotesPreferenceManager &preferences);

/// A language as its own readers name it: "Italiano (Italia)". Shape: as a dictionary is named.
[[nodiscard]] QString titleOfSpellingLanguage(const QString &language);

} // namespace quib

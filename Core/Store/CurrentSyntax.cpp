#include "CurrentSyntax.h"

#include "QBNotesPreferenceManager.h"

namespace quib {

int currentSyntax()
{
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    return preferences != nullptr ? preferences->currentSyntax() : 0;
}

} // namespace quib

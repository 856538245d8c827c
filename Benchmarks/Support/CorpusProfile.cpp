#include "CorpusProfile.h"

#include "CorpusGenerator.h"

#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNote.h>
#include <Store/QBNotesPreferenceManager.h>

namespace quib::benchmarks {

void fillProfileWithCorpus(qsizetype count)
{
    QBNotesPreferenceManager preferences;
    QBNotesPreferenceManager::setSharedPreferenceManager(&preferences);
    QBCoreDataStack stack;
    QBCoreDataStack::setSharedStack(&stack);
    stack.setupStackWithDelegate({});
    const CorpusGenerator generator;
    NSManagedObjectContext &context = *stack.managedObjectContext();
    for (qsizetype i = 0; i < count; ++i) {
        static_cast<void>(QBNote::noteWithText(generator.text(i), 0, context));
        if (i % 10'000 == 9'999) {
            stack.saveUsingCoalescence(false);
            context.reset();
        }
    }
    stack.saveUsingCoalescence(false);
    QBNotesPreferenceManager::setSharedPreferenceManager(nullptr);
}

} // namespace quib::benchmarks

// How long does the note list take from a key in the search field to the new list?
//
// Workloads (100,000 notes; unit: seconds a key): each key of a word met in most notes, of a rare one, of one that is
// nowhere; two words; a word beside a condition on fields, on tags; conditions alone, at their first key and after.
// Baseline, in the same run: the sweep of the folded texts alone, for the terms of the line; for conditions alone, the
// sweep for a word of frequent letters that is nowhere. A frame lasts 16.7 ms.

#include <Support/CorpusGenerator.h>
#include <Support/Measure.h>

#include <Files/Profile.h>
#include <Search/Lists/MRTFetchedResultsController.h>
#include <Search/NoteTextSearch.h>
#include <Search/QBNoteSearchManager.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNote.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace quib::benchmarks;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    quib::Profile::setRoot(folder.path());
    QBNotesPreferenceManager preferences;
    QBNotesPreferenceManager::setSharedPreferenceManager(&preferences);
    QBCoreDataStack stack(folder.path());
    QBCoreDataStack::setSharedStack(&stack);
    stack.setupStackWithDelegate({});
    const CorpusGenerator generator;
    const qsizetype count = sizeForRun(100'000, 200);
    for (qsizetype start = 0; start < count; start += sizeForRun(10'000, 100)) {
        for (qsizetype i = start; i < start + sizeForRun(10'000, 100); ++i) {
            static_cast<void>(QBNote::noteWithText(generator.text(i), 0, *stack.managedObjectContext()));
        }
        stack.saveUsingCoalescence(/*coalescence=*/false);
        stack.managedObjectContext()->reset();
    }
    const auto search = quib::NoteTextSearch::make(*stack.managedObjectContext());
    if (!search->fill()) {
        return 1;
    }
    NSFetchRequest request{.entityName = QBNote::entityName()};
    request.predicate = NSPredicate::predicateWithFormat(u"trashed == NO AND archived == NO"_s);
    request.sortDescriptors = {NSSortDescriptor(u"pinned"_s, /*ascending=*/false),
                               NSSortDescriptor(u"modificationDate"_s, /*ascending=*/false)};
    request.propertiesToFetch = {u"title"_s,     u"pinned"_s,          u"modificationDate"_s,
                                 u"subtitle"_s,  u"todoIncompleted"_s, u"todoCompleted"_s,
                                 u"hasImages"_s, u"uniqueIdentifier"_s};
    MRTFetchedResultsController list(stack.managedObjectContext(), request);
    list.setBulkFilter([&search](std::span<NSManagedObject *const> objects, const NSPredicate::Ref &predicate) {
        return search->objectsMatching(objects, predicate);
    });
    if (!list.performFetch()) {
        return 1;
    }

    Report report(u"a key in the search field"_s);
    const auto termsOf = [](const QString &line) {
        QStringList terms;
        for (const auto &term : QBNoteSearchManager::highlightTermsForSearchString(line)) {
            if (!term.text.startsWith(u'@')) {
                terms.append(term.text);
            }
        }
        return terms.isEmpty() ? QStringList{u"tnesartnesa"_s} : terms;
    };
    // Each key as if the line had been pasted: what the keys before it found would narrow it down.
    const auto forget = [&search] { search->arena().forgetFindings(); };
    const auto measureKey = [&](const QString &label, const QString &line) {
        const Timing sweep =
            measure([&] { keep(search->arena().keysOfTextsContainingAll(termsOf(line))); }, {}, forget);
        const Timing key =
            measure([&] { list.setFilterPredicate(QBNoteSearchManager::predicateForSearchString(line)); }, {}, forget);
        report.addTime(label, key, sweep, 0);
        return key.median;
    };
    double slowest = 0;
    const QList<std::pair<QString, QString>> words{{u"in most notes"_s, generator.word(3)},
                                                   {u"in few notes"_s, generator.word(5'000)},
                                                   {u"in no note"_s, u"zqqzzq"_s}};
    for (const auto &[label, word] : words) {
        for (qsizetype length = 1; length <= std::min<qsizetype>(word.size(), 4); ++length) {
            slowest = std::max(slowest, measureKey(u"%1, key %2"_s.arg(label).arg(length), word.left(length)));
        }
    }
    slowest = std::max(slowest, measureKey(u"two words"_s, QString(generator.word(50) % u' ' % generator.word(400))));
    slowest = std::max(slowest, measureKey(u"a word left out"_s, QString(u'-' % generator.word(50))));
    slowest = std::max(slowest, measureKey(u"a word and to-dos"_s, QString(generator.word(3) % u" @todo"_s)));
    slowest = std::max(slowest, measureKey(u"a word and tags"_s, QString(generator.word(3) % u" @tagged"_s)));
    for (const QString &word : {u"@todo"_s, u"@tagged"_s, u"@code"_s, u"@today"_s, u"@attachments"_s}) {
        const Timing sweep = measure([&] { keep(search->arena().keysOfTextsContaining(u"tnesartnesa")); }, {}, forget);
        const auto filter = [&] { list.setFilterPredicate(QBNoteSearchManager::predicateForSearchString(word)); };
        const Timing first = measure(filter, {.fewestRuns = 1, .mostRuns = 1, .warmUps = 0});
        report.addTime(QString(word % u", first"_s), first, sweep, 0);
        report.addTime(QString(word % u", after"_s), measure(filter), sweep, 0);
        slowest = std::max(slowest, first.median);
    }
    report.addValue(u"the slowest key / a frame"_s, slowest * 1000, 1000.0 / 60, 1, u"ms"_s);
    return 0;
}

// What does it cost to keep lists up to date?
//
// Workloads (100,000 notes with 300 tags; unit: seconds each):
//   one changed note in a list of 90,000, which goes from the middle, or from the end, to the top, told step by step;
//   against a copy of the memory of the list's pointers;
//   100 notes changed anywhere in the same list, which go to the top, against the same copy;
//   both by the plain rule, which copies the whole list and sorts it, to show what is gained;
//   the sidebar set up, against a raw read of the index that covers the note list.

#include <Support/CorpusGenerator.h>
#include <Support/Measure.h>
#include <Support/RawBaselines.h>

#include <Files/Profile.h>
#include <Search/Lists/MRTFetchedResultsController.h>
#include <Search/Lists/QBNoteSidebarCoreController.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNote.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Store/SQLNames.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <random>

using namespace Qt::StringLiterals;
using namespace quib::benchmarks;
using quib::Ref;

namespace {

class Listener : public MRTFetchedResultsControllerDelegate
{
public:
    [[nodiscard]] MRTFetchedResultsControllerDelegateHas delegateHas() const override
    {
        return {.controllerDidProgressivelyChangeObject = true};
    }
    void controllerDidProgressivelyChangeObject(MRTFetchedResultsController & /*controller*/,
                                                NSManagedObject & /*object*/, qint64 atIndex,
                                                qint64 /*progressiveIndex*/, MRTChangeType /*forChangeType*/,
                                                MRTChangeType /*forProgressiveChangeType*/, qint64 /*newIndex*/,
                                                qint64 newProgressiveIndex) override
    {
        sum += atIndex + newProgressiveIndex;
        ++reports;
    }
    qint64 sum = 0;
    qint64 reports = 0;
};

/// The plain rule: copy, sort all, look the indexes up.
void copyAndSort(QList<Ref<NSManagedObject>> &list, const QList<NSSortDescriptor> &order,
                 const QList<Ref<NSManagedObject>> &changed)
{
    const QList<Ref<NSManagedObject>> old = list;
    std::stable_sort(list.begin(), list.end(),
                     [&order](const auto &a, const auto &b) { return NSSortDescriptor::compare(order, *a, *b) < 0; });
    qint64 sum = 0;
    for (const auto &object : changed) {
        sum += old.indexOf(object) + list.indexOf(object);
    }
    keep(sum);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    quib::Profile::setRoot(folder.path());
    QBNotesPreferenceManager preferences;
    QBNotesPreferenceManager::setSharedPreferenceManager(&preferences);
    const CorpusGenerator generator;
    const qsizetype count = sizeForRun(100'000, 300);
    const qsizetype listed = sizeForRun(90'000, 250);
    const qsizetype batch = sizeForRun(10'000, 100);

    QBCoreDataStack stack(folder.path());
    QBCoreDataStack::setSharedStack(&stack);
    stack.setupStackWithDelegate({});
    const auto context = stack.managedObjectContext();
    const NSDate start = NSDate::now();
    for (qsizetype first = 0; first < count; first += batch) {
        for (qsizetype i = first; i < first + batch; ++i) {
            const auto note = QBNote::noteWithText(generator.text(i), 0, *context);
            note->setModificationDate(start.dateByAddingTimeInterval(-static_cast<double>((i * 7919) % count)));
        }
        stack.saveUsingCoalescence(false);
        context->reset();
    }
    Report report(u"live lists"_s);

    // 1. One note changed, and 100.
    {
        NSFetchRequest request = *QBNotesSidebarItem::sidebarItemWithManagedObjectContext(context)->notesFetchRequest();
        request.fetchLimit = listed;
        MRTFetchedResultsController controller(context, request);
        Listener listener;
        controller.performFetch();
        controller.setDelegate(&listener);
        const auto size = static_cast<size_t>(controller.count());
        std::vector<NSManagedObject *> from(size);
        std::vector<NSManagedObject *> to(size);
        const Timing copied = measure([&] {
            std::memcpy(to.data(), from.data(), size * sizeof(NSManagedObject *));
            keep(*to.data());
        });
        std::mt19937 random(20170302);
        double now = 1;
        QList<Ref<NSManagedObject>> changed;
        const auto change = [&](qint64 index) {
            const auto note = controller.objectAtIndex<QBNote>(index);
            note->setModificationDate(start.dateByAddingTimeInterval(now));
            now += 1;
            changed.append(note);
        };
        const auto changeOne = [&](qint64 index) {
            changed.clear();
            change(index);
        };
        const auto changeSome = [&] {
            changed.clear();
            for (int i = 0; i < 100; ++i) {
                change(std::uniform_int_distribution<qint64>(0, controller.count() - 1)(random));
            }
        };
        const auto tell = [&] { context->processPendingChanges(); };
        const MeasureOptions options{.fewestRuns = 50, .mostRuns = 1000, .seconds = 2, .warmUps = 10};
        const Timing middle = measure(tell, options, [&] { changeOne(controller.count() / 2); });
        const Timing last = measure(tell, options, [&] { changeOne(controller.count() - 1); });
        const Timing hundred = measure(tell, options, changeSome);
        report.addTime(u"the middle one changed / memcpy of the list"_s, middle, copied, 1.5);
        report.addTime(u"the last one changed / memcpy of the list"_s, last, copied, 1.5);
        report.addTime(u"100 changed / memcpy of the list"_s, hundred, copied, 30);

        QList<Ref<NSManagedObject>> plain;
        for (NSManagedObject *object : controller.arrangedObjects()) {
            plain.append(Ref<NSManagedObject>(object));
        }
        const MeasureOptions few{.fewestRuns = 3, .mostRuns = 10, .seconds = 1};
        const auto sortAnew = [&] { copyAndSort(plain, request.sortDescriptors, changed); };
        report.addTime(u"1 changed, copying and sorting"_s,
                       measure(sortAnew, few, [&] { changeOne(controller.count() / 2); }), copied, 0);
        report.addTime(u"100 changed, copying and sorting"_s, measure(sortAnew, few, changeSome), copied, 0);
        report.addRemark(u"%1 reports, list of %2"_s.arg(listener.reports).arg(size));
        controller.setDelegate(nullptr);
    }
    stack.saveUsingCoalescence(false);
    context->reset();

    // 2. The sidebar.
    QByteArray covered = "SELECT _pk, _version";
    for (const QString &name :
         {u"trashed"_s, u"archived"_s, u"pinned"_s, u"modificationDate"_s, u"uniqueIdentifier"_s, u"title"_s,
          u"subtitle"_s, u"creationDate"_s, u"hasImages"_s, u"hasFiles"_s, u"hasSourceCode"_s, u"todoCompleted"_s,
          u"todoIncompleted"_s, u"conflictUniqueIdentifier"_s}) {
        covered += ", " + quib::SQLNames::column(name);
    }
    covered += " FROM \"QBNote\" WHERE trashed = 0 AND archived = 0 ORDER BY pinned DESC, \"modificationDate\" DESC, "
               "_pk";
    RawDatabase raw(stack.persistentStoreURL());
    const Timing rawCovered = measure([&] { keep(raw.readAll(covered.constData())); });
    std::unique_ptr<QBNoteSidebarCoreController> sidebar;
    qsizetype items = 0;
    const auto settle = [&] {
        // Its question in the background is answered first, so that it costs the next one nothing.
        while (sidebar && sidebar->isLookingUpStatus()) {
            QCoreApplication::processEvents();
        }
        sidebar.reset();
        context->reset();
    };
    const Timing setUp = measure(
        [&] {
            sidebar = std::make_unique<QBNoteSidebarCoreController>();
            sidebar->setManagedObjectContext(context);
            items = sidebar->sidebarItems().size();
        },
        {.mostRuns = 30}, settle);
    report.addTime(u"sidebar of 300 tags / raw index read"_s, setUp, rawCovered, 0.5);
    report.addRemark(u"%1 items at the top"_s.arg(items));
    settle();
    return 0;
}

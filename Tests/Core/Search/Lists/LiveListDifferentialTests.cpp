#include "CopyAndSortModel.h"

#include <Core/Store/StoreFixture.h>
#include <Foundation/NSRange.h>
#include <Search/Lists/MRTFetchedResultsController.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;

namespace {

using quib::ListStep;
using quib::Ref;
using quib::tests::CopyAndSortModel;

constexpr int kBatches = 20'000;

/// One way of looking at the notes, as lists look at them.
struct View
{
    const char *name;
    QString predicate;
    QList<NSSortDescriptor> order;
    QString filter;
    QList<NSSortDescriptor> arrangement;
    bool isProgressive;
};

QList<View> views()
{
    using Sort = NSSortDescriptor;
    const QList<Sort> byPinned{Sort(u"pinned"_s, false), Sort(u"order"_s, true)};
    const QList<Sort> byTitle{Sort(u"title"_s, true, Sort::Comparison::LocalizedStandard)};
    const QString kept = u"trashed == NO"_s;
    return {
        {"every note, unordered", {}, {}, {}, {}, true},
        {"pinned first", kept, byPinned, {}, {}, true},
        {"pinned first, plain reports", kept, byPinned, {}, {}, false},
        {"all equal", kept, {Sort(u"locked"_s, true)}, {}, {}, true},
        {"by title, backwards", kept, {Sort(u"title"_s, false, Sort::Comparison::LocalizedStandard)}, {}, {}, true},
        {"filtered", kept, byPinned, u"todoIncompleted > 1"_s, {}, true},
        {"sorted anew", kept, byPinned, {}, byTitle, true},
        {"filtered and sorted anew, plain reports", {}, byPinned, u"pinned == YES"_s, byTitle, false},
    };
}

/// Writes down what a list reports, and performs the reports on a table.
class Table : public MRTFetchedResultsControllerDelegate
{
public:
    explicit Table(bool isProgressive)
        : m_isProgressive(isProgressive)
    {
    }
    [[nodiscard]] MRTFetchedResultsControllerDelegateHas delegateHas() const override
    {
        return {.controllerDidProgressivelyChangeObject = m_isProgressive};
    }
    void controllerWillChangeContent(MRTFetchedResultsController &controller) override
    {
        rows.assign(controller.arrangedObjects().begin(), controller.arrangedObjects().end());
        steps.clear();
        ++willChange;
    }
    void controllerDidChangeContent(MRTFetchedResultsController &controller) override
    {
        ++didChange;
        const auto after = controller.arrangedObjects();
        if (m_isProgressive) {
            EXPECT_TRUE(std::equal(rows.begin(), rows.end(), after.begin(), after.end()));
        }
    }
    void controllerDidChangeObject(MRTFetchedResultsController & /*controller*/, NSManagedObject &object,
                                   qint64 atIndex, MRTChangeType forChangeType, qint64 newIndex) override
    {
        EXPECT_FALSE(m_isProgressive);
        steps.append({&object, atIndex, 0, forChangeType, forChangeType, newIndex, 0});
    }
    void controllerDidProgressivelyChangeObject(MRTFetchedResultsController & /*controller*/, NSManagedObject &object,
                                                qint64 atIndex, qint64 progressiveIndex, MRTChangeType forChangeType,
                                                MRTChangeType forProgressiveChangeType, qint64 newIndex,
                                                qint64 newProgressiveIndex) override
    {
        steps.append({&object, atIndex, progressiveIndex, forChangeType, forProgressiveChangeType, newIndex,
                      newProgressiveIndex});
        if (progressiveIndex != NSNotFound) {
            ASSERT_LT(static_cast<size_t>(progressiveIndex), rows.size());
            ASSERT_EQ(rows[static_cast<size_t>(progressiveIndex)], &object);
            rows.erase(rows.begin() + progressiveIndex);
        }
        if (newProgressiveIndex != NSNotFound) {
            ASSERT_LE(static_cast<size_t>(newProgressiveIndex), rows.size());
            rows.insert(rows.begin() + newProgressiveIndex, &object);
        }
    }

    std::vector<NSManagedObject *> rows;
    QList<ListStep> steps;
    int willChange = 0;
    int didChange = 0;

private:
    bool m_isProgressive;
};

/// A live list of one view beside the model of it.
struct Watched
{
    explicit Watched(const View &watched, const std::shared_ptr<NSManagedObjectContext> &moc)
        : view(watched)
        , table(watched.isProgressive)
    {
        NSFetchRequest request{.entityName = u"QBNote"_s, .sortDescriptors = view.order};
        if (!view.predicate.isEmpty()) {
            request.predicate = NSPredicate::predicateWithFormat(view.predicate);
        }
        controller = std::make_unique<MRTFetchedResultsController>(moc, request);
        EXPECT_TRUE(controller->performFetch());
        const auto *entity = moc->managedObjectModel().entityNamed(request.entityName);
        const auto fetched = controller->fetchedObjects();
        fetchedModel = std::make_unique<CopyAndSortModel>(
            std::vector<NSManagedObject *>(fetched.begin(), fetched.end()), request, entity);
        if (!view.filter.isEmpty()) {
            controller->setFilterPredicate(NSPredicate::predicateWithFormat(view.filter));
            request.predicate = request.predicate
                                    ? NSPredicate::andPredicateWithSubpredicates(
                                          {NSPredicate::predicateWithFormat(view.filter), request.predicate})
                                    : NSPredicate::predicateWithFormat(view.filter);
        }
        if (!view.arrangement.isEmpty()) {
            controller->setSortDescriptors(view.arrangement);
            request.sortDescriptors = view.arrangement;
        }
        const auto shown = controller->arrangedObjects();
        shownModel = std::make_unique<CopyAndSortModel>(std::vector<NSManagedObject *>(shown.begin(), shown.end()),
                                                        request, entity);
        controller->setDelegate(&table);
    }

    void expectLike(const NSManagedObjectContext::Changes &changes)
    {
        SCOPED_TRACE(view.name);
        const QList<ListStep> expected = shownModel->take(changes);
        fetchedModel->take(changes);
        ASSERT_EQ(table.willChange, expected.isEmpty() ? 0 : 1);
        ASSERT_EQ(table.didChange, expected.isEmpty() ? 0 : 1);
        table.willChange = 0;
        table.didChange = 0;
        const auto shown = controller->arrangedObjects();
        ASSERT_EQ(std::vector<NSManagedObject *>(shown.begin(), shown.end()), shownModel->objects());
        const auto fetched = controller->fetchedObjects();
        ASSERT_EQ(std::vector<NSManagedObject *>(fetched.begin(), fetched.end()), fetchedModel->objects());
        if (expected.isEmpty()) {
            return;
        }
        ASSERT_EQ(table.steps.size(), expected.size());
        for (qsizetype i = 0; i < expected.size(); ++i) {
            SCOPED_TRACE(i);
            const ListStep &step = table.steps[i];
            ASSERT_EQ(step.object, expected[i].object);
            ASSERT_EQ(step.index, expected[i].index);
            ASSERT_EQ(step.type, expected[i].type);
            ASSERT_EQ(step.newIndex, expected[i].newIndex);
            if (view.isProgressive) {
                ASSERT_EQ(step.progressiveIndex, expected[i].progressiveIndex);
                ASSERT_EQ(step.progressiveType, expected[i].progressiveType);
                ASSERT_EQ(step.newProgressiveIndex, expected[i].newProgressiveIndex);
            }
        }
    }

    View view;
    Table table;
    std::unique_ptr<MRTFetchedResultsController> controller;
    std::unique_ptr<CopyAndSortModel> fetchedModel;
    std::unique_ptr<CopyAndSortModel> shownModel;
};

class LiveListDifferentialTests : public quib::tests::StoreFixture
{
protected:
    /// Rows in memory: no batch waits for a file.
    [[nodiscard]] const std::shared_ptr<NSManagedObjectContext> &context() const
    {
        return stack->inMemoryManagedObjectContext();
    }
    size_t below(size_t limit) { return std::uniform_int_distribution<size_t>(0, limit - 1)(m_random); }

    /// Few values a key, so that most notes equal some other.
    void change(NSManagedObject &note)
    {
        const QStringList titles{u"a"_s, u"a2"_s, u"a10"_s, u"B"_s, {}};
        switch (below(6)) {
        case 0:
            note.setValueForKey(below(3) == 0, u"pinned"_s);
            break;
        case 1:
            note.setValueForKey(static_cast<qint64>(below(4)), u"order"_s);
            break;
        case 2: {
            const QString title = titles[static_cast<qsizetype>(below(5))];
            note.setValueForKey(title.isNull() ? quib::Value() : quib::Value(title), u"title"_s);
            break;
        }
        case 3:
            note.setValueForKey(static_cast<qint64>(below(4)), u"todoIncompleted"_s);
            break;
        case 4:
            note.setValueForKey(below(3) == 0, u"trashed"_s);
            break;
        default:
            note.setValueForKey(u"by "_s + QString::number(below(100)), u"subtitle"_s);
            break;
        }
    }
    void insert()
    {
        m_notes.append(context()->insertNewObjectForEntityForName(u"QBNote"_s));
        change(*m_notes.last());
        change(*m_notes.last());
    }
    void doOneThing()
    {
        if (m_notes.isEmpty() || (below(8) == 0 && m_notes.size() < 60)) {
            insert();
            return;
        }
        const auto at = static_cast<qsizetype>(below(static_cast<size_t>(m_notes.size())));
        switch (below(12)) {
        case 0:
            context()->deleteObject(m_notes.takeAt(at).get());
            break;
        case 1:
            context()->refreshObject(m_notes[at].get(), /*mergeChanges=*/true);
            break;
        case 2:
            // A tag is no note: no list hears of it.
            context()->insertNewObjectForEntityForName(u"QBNoteTag"_s);
            break;
        default:
            change(*m_notes[at]);
            break;
        }
    }

    std::mt19937 m_random;
    QList<Ref<NSManagedObject>> m_notes;
};

TEST_F(LiveListDifferentialTests, GivesTheArraysAndReportsOfCopyingAndSorting)
{
    const quib::tests::TestSeed seed;
    m_random = seed.generator();
    for (int i = 0; i < 40; ++i) {
        insert();
    }
    NSError error;
    ASSERT_TRUE(context()->save(&error));

    std::optional<NSManagedObjectContext::Changes> told;
    const auto observer = context()->objectsDidChange.add(
        [&told](NSManagedObjectContext &, const NSManagedObjectContext::Changes &changes) {
            ASSERT_FALSE(told.has_value());
            told = changes;
        });
    context()->processPendingChanges();
    told.reset();
    std::vector<std::unique_ptr<Watched>> watched;
    for (const View &view : views()) {
        watched.push_back(std::make_unique<Watched>(view, context()));
    }
    for (int batch = 0; batch < kBatches; ++batch) {
        SCOPED_TRACE(testing::Message() << "batch " << batch);
        if (below(50) == 0) {
            ASSERT_TRUE(context()->save(&error)); // rows get their keys
            told.reset();
            for (const auto &one : watched) {
                one->table.willChange = 0;
                one->table.didChange = 0;
            }
        }
        const size_t things = below(10) == 0 ? 1 + below(40) : 1 + below(4);
        for (size_t i = 0; i < things; ++i) {
            doOneThing();
        }
        context()->processPendingChanges();
        if (!told) {
            continue;
        }
        for (const auto &one : watched) {
            ASSERT_NO_FATAL_FAILURE(one->expectLike(*told));
        }
        told.reset();
        if (HasFailure()) {
            return;
        }
    }
}

} // namespace

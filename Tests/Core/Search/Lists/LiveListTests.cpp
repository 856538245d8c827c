#include <Core/Store/StoreFixture.h>
#include <Foundation/NSRange.h>
#include <Search/Lists/MRTFetchedResultsController.h>

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

using quib::Ref;

/// Writes reports down as "update b 1 1", and calls back in the middle of them.
class Listener : public MRTFetchedResultsControllerDelegate
{
public:
    void controllerWillChangeContent(MRTFetchedResultsController &controller) override
    {
        told.append(u"will %1"_s.arg(controller.count()));
        if (atWillChange) {
            std::exchange(atWillChange, nullptr)(controller);
        }
    }
    void controllerDidChangeContent(MRTFetchedResultsController &controller) override
    {
        told.append(u"did %1"_s.arg(controller.count()));
    }
    void controllerDidChangeObject(MRTFetchedResultsController &controller, NSManagedObject &object, qint64 atIndex,
                                   MRTChangeType forChangeType, qint64 newIndex) override
    {
        const QStringList names{u"insert"_s, u"delete"_s, u"move"_s, u"update"_s};
        const auto index = [](qint64 at) { return at == NSNotFound ? u"-"_s : QString::number(at); };
        told.append(names[static_cast<int>(forChangeType) - 1] % u" "_s %
                    quib::valueOr<QString>(object.valueForKey(u"title"_s)) % u" "_s % index(atIndex) % u" "_s %
                    index(newIndex));
        if (atChange) {
            std::exchange(atChange, nullptr)(controller);
        }
    }

    /// All since the last call.
    [[nodiscard]] QString take() { return std::exchange(told, {}).join(u", "_s); }

    QStringList told;
    std::function<void(MRTFetchedResultsController &)> atWillChange;
    std::function<void(MRTFetchedResultsController &)> atChange;
};

/// A list of the notes a, b and c, by title.
class LiveListTests : public quib::tests::StoreFixture
{
protected:
    LiveListTests()
    {
        for (const QString &title : {u"a"_s, u"b"_s, u"c"_s}) {
            notes.append(insert(title));
        }
        save();
        fetch();
        list->setDelegate(&listener);
    }
    /// Makes the list anew: the notes that are not in the trash, by their titles.
    void fetch()
    {
        NSFetchRequest request{.entityName = u"QBNote"_s};
        request.predicate = NSPredicate::predicateWithFormat(u"trashed == NO"_s);
        request.sortDescriptors = {NSSortDescriptor(u"title"_s, /*ascending=*/true)};
        request.propertiesToFetch = QStringList{u"subtitle"_s};
        list = std::make_unique<MRTFetchedResultsController>(stack->managedObjectContext(), request);
        EXPECT_TRUE(list->performFetch());
    }
    [[nodiscard]] Ref<QBNote> insert(const QString &title) const
    {
        auto note = QBNote::insertInManagedObjectContext(moc());
        note->setTitle(title);
        return note;
    }
    QString told()
    {
        moc().processPendingChanges();
        return listener.take();
    }
    [[nodiscard]] QString shown() const
    {
        QString titles;
        for (qint64 i = 0; i < list->count(); ++i) {
            titles += list->objectAtIndex<QBNote>(i)->title();
        }
        return titles;
    }

    QList<Ref<QBNote>> notes;
    Listener listener;
    std::unique_ptr<MRTFetchedResultsController> list;
};

TEST_F(LiveListTests, TellsJustWhatConcernsIt)
{
    const auto hidden = insert(u"d"_s);
    hidden->setTrashed(true);
    EXPECT_EQ(told(), QString());
    notes[1]->setSubtitle(u"new"_s);
    EXPECT_EQ(told(), u"will 3, update b 1 1, did 3"_s);
    notes[2]->setTitle(u"A"_s);
    EXPECT_EQ(told(), u"will 3, move A 2 0, did 3"_s);
    notes[0]->setTrashed(true);
    EXPECT_EQ(told(), u"will 3, delete a 1 -, did 2"_s);
    hidden->setTrashed(false);
    EXPECT_EQ(told(), u"will 2, insert d - 2, did 3"_s);
    save();
    static_cast<void>(told());
    moc().refreshObject(notes[1].get(), /*mergeChanges=*/true);
    EXPECT_EQ(told(), u"will 3, update b 1 1, did 3"_s) << "a refreshed object counts as updated";
    moc().deleteObject(notes[1].get());
    EXPECT_EQ(told(), u"will 3, delete b 1 -, did 2"_s);
    EXPECT_EQ(list->indexOfObject(notes[1].get()), NSNotFound);
    EXPECT_EQ(list->indexOfObject(hidden.get()), 1);
}

TEST_F(LiveListTests, AFilterHidesChangesThatTheResultBeneathTakes)
{
    list->setFilterPredicate(NSPredicate::predicateWithFormat(u"title != 'b'"_s));
    EXPECT_EQ(listener.take(), QString()) << "the caller reloads";
    EXPECT_EQ(shown(), u"ac"_s);
    notes[1]->setTrashed(true);
    EXPECT_EQ(told(), QString());
    EXPECT_EQ(list->fetchedObjects().size(), 2U);
    list->setSortDescriptors({NSSortDescriptor(u"title"_s, /*ascending=*/false)});
    EXPECT_EQ(shown(), u"ca"_s);
    list->setFilterPredicate(nullptr);
    EXPECT_EQ(shown(), u"ca"_s);
    list->setSortDescriptors({});
    EXPECT_EQ(shown(), u"ac"_s);
    EXPECT_EQ(list->arrangedObjects().data(), list->fetchedObjects().data());
}

TEST_F(LiveListTests, AnIndexMayAnswerTheFilter)
{
    qsizetype asked = 0;
    list->setBulkFilter([&](std::span<NSManagedObject *const> objects,
                            const NSPredicate::Ref &predicate) -> std::optional<std::vector<NSManagedObject *>> {
        ++asked;
        if (predicate->predicateFormat().contains(u"!="_s) || objects.size() < 2) {
            return std::nullopt;
        }
        return std::vector{objects[1]};
    });
    list->setFilterPredicate(NSPredicate::predicateWithFormat(u"title == 'b'"_s));
    EXPECT_EQ(shown(), u"b"_s);
    list->setFilterPredicate(NSPredicate::predicateWithFormat(u"title != 'x'"_s));
    EXPECT_EQ(shown(), u"abc"_s) << "asked one by one";
    EXPECT_EQ(asked, 2);
}

TEST_F(LiveListTests, ChangesOfADelegateWaitForTheirTurn)
{
    listener.atChange = [this](auto &) {
        notes[0]->setTitle(u"z"_s);
        moc().processPendingChanges();
    };
    notes[1]->setTitle(u"y"_s);
    EXPECT_EQ(told(), u"will 3, move y 1 2, did 3, will 3, move z 0 2, did 3"_s);
    EXPECT_EQ(shown(), u"cyz"_s);
}

TEST_F(LiveListTests, ADelegateMayLetTheListGo)
{
    listener.atChange = [this](auto &) { list.reset(); };
    notes[0]->setTrashed(true);
    notes[1]->setTrashed(true);
    EXPECT_EQ(told(), u"will 3, delete a 0 -"_s);
}

TEST_F(LiveListTests, AViewLaidOverAListThatStillShowsItsOldStateTakesTheChange)
{
    listener.atWillChange = [](MRTFetchedResultsController &controller) {
        controller.setFilterPredicate(NSPredicate::predicateWithFormat(u"title != 'c'"_s));
    };
    notes[0]->setTitle(u"c"_s);
    EXPECT_EQ(told(), u"will 3, did 1"_s);
    EXPECT_EQ(shown(), u"b"_s);
    EXPECT_EQ(list->fetchedObjects().size(), 3U);
}

TEST_F(LiveListTests, ACopyFollowsTheContextOnItsOwn)
{
    const auto copy = list->copy();
    copy->setFilterPredicate(NSPredicate::predicateWithFormat(u"title == 'b'"_s));
    EXPECT_EQ(list->count(), 3);
    list.reset();
    notes[1]->setSubtitle(u"new"_s);
    EXPECT_EQ(told(), u"will 1, update b 0 0, did 1"_s);
}

TEST_F(LiveListTests, AQueryThatFailsGivesAnEmptyListAndTheError)
{
    MRTFetchedResultsController none(stack->managedObjectContext(), std::nullopt);
    EXPECT_FALSE(none.performFetch());
    NSFetchRequest wrong{.entityName = u"QBNote"_s};
    wrong.sortDescriptors = {NSSortDescriptor(u"nothing of the kind"_s, /*ascending=*/true)};
    MRTFetchedResultsController failing(stack->managedObjectContext(), wrong);
    NSError error;
    EXPECT_TRUE(failing.performFetch(&error));
    EXPECT_TRUE(error.isSet());
    EXPECT_EQ(failing.count(), 0);
}

/// What another process does to all notes of the store.
class LiveListOfFreshContextTests : public LiveListTests
{
protected:
    LiveListOfFreshContextTests()
    {
        // A fresh context, whose notes hold what the list fetched and no more.
        list.reset();
        notes.clear();
        moc().reset();
        fetch();
        list->setDelegate(&listener);
    }
    void changeElsewhere(const std::function<void(NSManagedObjectContext &, QBNote &)> &change) const
    {
        const auto elsewhere = std::make_shared<NSPersistentStoreCoordinator>(
            stack->managedObjectModel(), moc().persistentStoreCoordinator()->factories());
        NSError error;
        ASSERT_TRUE(elsewhere->addPersistentStoreWithType(NSSQLiteStoreType, stack->persistentStoreURL(), {}, &error));
        const auto other =
            NSManagedObjectContext::contextWithCoordinator(NSManagedObjectContextConcurrencyType::MainQueue, elsewhere);
        const auto rows = other->fetch<QBNote>({.entityName = u"QBNote"_s});
        ASSERT_TRUE(rows && rows->size() == 3);
        for (const auto &row : *rows) {
            change(*other, *row);
        }
        ASSERT_TRUE(other->save(&error)) << error.localizedDescription().toStdString();
    }
};

TEST_F(LiveListOfFreshContextTests, AsksTheStoreNothingWhenANoteChanges)
{
    changeElsewhere([](NSManagedObjectContext &context, QBNote &note) { context.deleteObject(&note); });
    list->objectAtIndex<QBNote>(0)->setTitle(u"bb"_s);
    EXPECT_EQ(told(), u"will 3, move bb 0 1, did 3"_s);
}

TEST_F(LiveListOfFreshContextTests, ReadsWhatARowShowsWhenItIsLookedAt)
{
    changeElsewhere([](NSManagedObjectContext & /*context*/, QBNote &note) {
        if (note.title() == u"a") {
            note.setTitle(u"z"_s);
        }
        note.setSubtitle(u"new "_s + note.title());
    });
    EXPECT_EQ(shown(), u"abc"_s) << "what the order goes by was read with the list";
    EXPECT_EQ(list->objectAtIndex<QBNote>(1)->subtitle(), u"new b"_s);
    EXPECT_EQ(told(), u"will 3, update b 1 1, did 3"_s) << "the row turned out to be another";
    EXPECT_EQ(list->objectAtIndex<QBNote>(0)->subtitle(), u"new z"_s);
    EXPECT_EQ(told(), u"will 3, move z 0 2, did 3"_s);
}

TEST_F(LiveListOfFreshContextTests, TakesWhatALaterFetchReads)
{
    const auto whole = moc().fetch<QBNote>({.entityName = u"QBNote"_s});
    ASSERT_TRUE(whole);
    changeElsewhere([](NSManagedObjectContext &context, QBNote &note) { context.deleteObject(&note); });
    for (const auto &note : *whole) {
        EXPECT_FALSE(note->uniqueIdentifier().isEmpty());
        EXPECT_TRUE(note->modificationDate());
    }
    EXPECT_EQ(told(), QString());
}

} // namespace

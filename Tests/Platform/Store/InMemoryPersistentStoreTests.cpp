// The store in memory against the one on disk: whatever is saved into both, every question has the same answer.

#include "ContextFixture.h"

#include <Support/TestSeed.h>

using namespace Qt::StringLiterals;
using quib::Value;

namespace {

class InMemoryStore : public ContextTest
{
protected:
    Context openInMemory(NSMergePolicy policy = NSMergePolicy::MergeByPropertyObjectTrump)
    {
        const auto coordinator = std::make_shared<NSPersistentStoreCoordinator>(m_model, NSManagedObjectFactories());
        NSError error;
        EXPECT_TRUE(coordinator->addPersistentStoreWithType(NSInMemoryStoreType, {}, {}, &error));
        const auto context = NSManagedObjectContext::contextWithCoordinator(
            NSManagedObjectContextConcurrencyType::MainQueue, coordinator);
        context->setMergePolicy(policy);
        return context;
    }
    int random(int bound) { return static_cast<int>(m_generator() % static_cast<unsigned>(bound)); }

    /// What is there, with both sides of the relationships, in words.
    static QString told(NSManagedObjectContext &context, const QString &condition)
    {
        NSFetchRequest request{.entityName = u"QBNote"_s};
        NSError error;
        request.predicate = NSPredicate::predicateWithFormat(condition, {}, &error);
        EXPECT_TRUE(request.predicate) << error.localizedDescription().toStdString();
        request.sortDescriptors = {{u"pinned"_s, false}, {u"todoIncompleted"_s, true}, {u"title"_s, true}};
        const auto count = context.countForFetchRequest(request, &error);
        request.fetchLimit = 15;
        const auto notes = context.executeFetchRequest(request, &error);
        const auto identities = context.executeDictionaryFetchRequest(request, {u"title"_s, u"pinned"_s}, &error);
        if (!count || !notes || !identities) {
            return error.localizedDescription();
        }
        QStringList lines{QString::number(*count), QString::number(identities->size())};
        for (const auto &note : *notes) {
            QStringList tags;
            for (const auto &tag : note->targetObjectsForKey(u"tags"_s)) {
                tags.append(string(tag, u"title"_s) % u'/' %
                            QString::number(tag->targetObjectsForKey(u"notes"_s).size()));
            }
            tags.sort();
            const auto files = note->targetObjectsForKey(u"files"_s);
            lines.append(string(note, u"title"_s) % u" \u00b7 " % string(note, u"text"_s) % u" \u00b7 " %
                         tags.join(u',') % u" \u00b7 " % QString::number(files.size()));
        }
        return lines.join(u'\n');
    }

    quib::tests::TestSeed m_seed;
    std::mt19937 m_generator = m_seed.generator();
};

TEST_F(InMemoryStore, AnswersAsTheOneOnDisk)
{
    const QList<Context> contexts{open(), openInMemory()};
    const QStringList conditions{u"trashed == NO"_s,
                                 u"title BEGINSWITH[cd] 'NOTE 1'"_s,
                                 u"text CONTAINS[cd] 'o'"_s,
                                 u"tags.@count == 0"_s,
                                 u"files.@count > 0 AND todoIncompleted > 2"_s,
                                 u"ANY tags.title == 'tag 2' OR title == nil"_s,
                                 u"SUBQUERY(tags, $t, $t.title ENDSWITH '1').@count > 0"_s};
    for (int round = 0; round < 25; ++round) {
        const auto seed = m_generator();
        for (const Context &context : contexts) {
            m_generator.seed(seed); // the same for both
            auto notes = all(*context, u"QBNote"_s);
            auto tags = all(*context, u"QBNoteTag"_s);
            const auto byTitle = [](const Object &a, const Object &b) {
                return string(a, u"title"_s) < string(b, u"title"_s);
            };
            std::sort(notes.begin(), notes.end(), byTitle);
            std::sort(tags.begin(), tags.end(), byTitle);
            for (int i = 0; i < 4; ++i) {
                notes.append(note(*context, u"Note %1"_s.arg(round * 10 + i)));
                notes.last()->setValueForKey(u"w\u00f6rds %1"_s.arg(random(100)), u"text"_s);
            }
            if (tags.size() < 4) {
                tags.append(tag(*context, u"tag %1"_s.arg(tags.size())));
            }
            for (int i = 0; i < 6; ++i) {
                const auto &object = notes.at(random(static_cast<int>(notes.size())));
                switch (random(5)) {
                case 0:
                    object->setValueForKey(random(2) == 0, random(2) == 0 ? u"trashed"_s : u"pinned"_s);
                    break;
                case 1:
                    object->setValueForKey(qint64{random(5)}, u"todoIncompleted"_s);
                    break;
                case 2:
                    object->setTargetObjectsForKey({tags.at(random(static_cast<int>(tags.size())))}, u"tags"_s);
                    break;
                case 3: {
                    const auto file = context->insertNewObjectForEntityForName(u"QBNoteImage"_s);
                    file->setTargetObjectForKey(object, u"note"_s);
                    break;
                }
                default:
                    object->setValueForKey(random(2) == 0 ? Value() : Value(u"lo\u0308ok"_s), u"text"_s);
                    break;
                }
            }
            context->deleteObject(notes.at(random(static_cast<int>(notes.size()))).get());
            expectSave(*context);
            if (random(3) == 0) {
                context->reset(); // all is read from the store again
            }
        }
        for (const QString &condition : conditions) {
            ASSERT_EQ(told(*contexts[0], condition), told(*contexts[1], condition)) << condition.toStdString();
        }
    }
    NSError error;
    for (const Context &context : contexts) {
        EXPECT_EQ(context->persistentStoreCoordinator()->persistentStore()->integrityProblems(&error), QStringList());
    }
}

TEST_F(InMemoryStore, SettlesConflictsOfTwoContextsByPolicy)
{
    const auto first = openInMemory();
    const auto second = NSManagedObjectContext::contextWithCoordinator(NSManagedObjectContextConcurrencyType::MainQueue,
                                                                       first->persistentStoreCoordinator());
    second->setMergePolicy(NSMergePolicy::MergeByPropertyStoreTrump);
    const auto mine = note(*first, u"old"_s);
    expectSave(*first);
    const auto theirs = second->existingObjectWithID(mine->objectID());
    EXPECT_EQ(string(theirs, u"title"_s), u"old"_s);

    mine->setValueForKey(u"first"_s, u"title"_s);
    expectSave(*first);
    theirs->setValueForKey(u"second"_s, u"title"_s);
    theirs->setValueForKey(u"text of second"_s, u"text"_s);
    expectSave(*second);
    EXPECT_EQ(string(theirs, u"title"_s), u"first"_s) << "the store wins, property by property";

    mine->setValueForKey(u"first again"_s, u"title"_s);
    expectSave(*first);
    EXPECT_EQ(string(mine, u"title"_s), u"first again"_s) << "the object wins here";
    EXPECT_EQ(string(mine, u"text"_s), u"text of second"_s);

    first->deleteObject(mine.get());
    expectSave(*first);
    theirs->setValueForKey(u"late"_s, u"subtitle"_s);
    expectSave(*second);
    EXPECT_TRUE(all(*second, u"QBNote"_s).isEmpty()) << "what was deleted stays deleted";
}

} // namespace

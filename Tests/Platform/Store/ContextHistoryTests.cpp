// Random histories of contexts against a plain model: whatever is done, what is fetched, what relationships say and
// what a reopened store holds is what the model holds.

#include "StoreFixture.h"

#include <Store/NSManagedObjectContext.h>
#include <Support/TestSeed.h>

#include <map>
#include <set>

using namespace Qt::StringLiterals;
using quib::Ref;
using quib::Value;

namespace {

struct PlainNote
{
    QString title;
    bool pinned = false;
    std::set<QString> tags;

    friend bool operator==(const PlainNote &a, const PlainNote &b) = default;
};

/// What a context should show: notes by identifier, tags by title, files by identifier with the note they belong to.
struct PlainModel
{
    std::map<QString, PlainNote> notes;
    std::set<QString> tags;
    std::map<QString, QString> files;

    friend bool operator==(const PlainModel &a, const PlainModel &b) = default;
};

QString text(const NSManagedObject &object, const QString &key)
{
    return quib::valueOr<QString>(object.valueForKey(key));
}

class History : public testing::Test
{
protected:
    void open()
    {
        m_main.reset();
        m_coordinator = std::make_shared<NSPersistentStoreCoordinator>(m_model, NSManagedObjectFactories());
        NSError error;
        ASSERT_TRUE(
            m_coordinator->addPersistentStoreWithType(NSSQLiteStoreType, m_folder.path(u"s.sqlite"_s), {}, &error))
            << error.localizedDescription().toStdString();
        m_main = NSManagedObjectContext::contextWithCoordinator(NSManagedObjectContextConcurrencyType::MainQueue,
                                                                m_coordinator);
        m_main->setMergePolicy(NSMergePolicy::MergeByPropertyStoreTrump);
    }
    int random(int bound) { return static_cast<int>(m_generator() % static_cast<unsigned>(bound)); }

    static QList<Ref<NSManagedObject>> all(NSManagedObjectContext &context, const QString &entity)
    {
        NSFetchRequest request{.entityName = entity};
        NSError error;
        const auto objects = context.executeFetchRequest(request, &error);
        EXPECT_TRUE(objects) << error.localizedDescription().toStdString();
        return objects.value_or(QList<Ref<NSManagedObject>>());
    }

    /// What a context shows, read from both sides of every relationship, which must agree.
    static PlainModel shown(NSManagedObjectContext &context)
    {
        PlainModel model;
        std::set<std::pair<QString, QString>> fromTags;
        for (const auto &tag : all(context, u"QBNoteTag"_s)) {
            model.tags.insert(text(*tag, u"title"_s));
            for (const auto &note : tag->targetObjectsForKey(u"notes"_s)) {
                fromTags.insert({text(*note, u"uniqueIdentifier"_s), text(*tag, u"title"_s)});
            }
        }
        std::map<QString, QString> filesOfNotes;
        std::set<std::pair<QString, QString>> fromNotes;
        for (const auto &note : all(context, u"QBNote"_s)) {
            PlainNote plain{text(*note, u"title"_s), quib::valueOr<bool>(note->valueForKey(u"pinned"_s)), {}};
            const QString identifier = text(*note, u"uniqueIdentifier"_s);
            EXPECT_EQ(text(*note, u"text"_s), QString(plain.title % u" text"));
            for (const auto &tag : note->targetObjectsForKey(u"tags"_s)) {
                plain.tags.insert(text(*tag, u"title"_s));
                fromNotes.insert({identifier, text(*tag, u"title"_s)});
            }
            for (const auto &file : note->targetObjectsForKey(u"files"_s)) {
                filesOfNotes.insert({text(*file, u"uniqueIdentifier"_s), identifier});
            }
            EXPECT_EQ(note->countForKey(u"files"_s), note->targetObjectsForKey(u"files"_s).size());
            model.notes.insert({identifier, plain});
        }
        EXPECT_EQ(fromNotes, fromTags);
        for (const auto &file : all(context, u"QBNoteFile"_s)) {
            const auto note = file->targetObjectForKey(u"note"_s);
            const QString identifier = text(*file, u"uniqueIdentifier"_s);
            model.files.insert({identifier, note ? text(*note, u"uniqueIdentifier"_s) : QString()});
            EXPECT_EQ(filesOfNotes.contains(identifier), static_cast<bool>(note));
        }
        return model;
    }

    /// Conditions answered by the context are those answered by the model.
    void expectFetches(NSManagedObjectContext &context, const PlainModel &model)
    {
        const auto fetched = [&context](const QString &format, const QList<NSPredicateArgument> &arguments = {}) {
            NSFetchRequest request{.entityName = u"QBNote"_s};
            NSError error;
            request.predicate = NSPredicate::predicateWithFormat(format, arguments, &error);
            EXPECT_TRUE(request.predicate) << error.localizedDescription().toStdString();
            request.sortDescriptors = {NSSortDescriptor(u"pinned"_s, false), NSSortDescriptor(u"title"_s, true)};
            const auto objects = context.executeFetchRequest(request, &error);
            EXPECT_EQ(objects->size(), context.countForFetchRequest(request, &error));
            for (qsizetype i = 1; i < objects->size(); ++i) {
                EXPECT_LE(NSSortDescriptor::compare(request.sortDescriptors, *objects->at(i - 1), *objects->at(i)), 0);
            }
            std::set<QString> identifiers;
            for (const auto &object : *objects) {
                identifiers.insert(text(*object, u"uniqueIdentifier"_s));
            }
            return identifiers;
        };
        std::set<QString> pinned;
        std::set<QString> untagged;
        std::set<QString> holding;
        for (const auto &[identifier, note] : model.notes) {
            if (note.pinned) {
                pinned.insert(identifier);
            }
            if (note.tags.empty()) {
                untagged.insert(identifier);
            }
            if (note.title.contains(u"1"_s)) {
                holding.insert(identifier);
            }
        }
        EXPECT_EQ(fetched(u"pinned == YES"_s), pinned);
        EXPECT_EQ(fetched(u"tags.@count == 0"_s), untagged);
        EXPECT_EQ(fetched(u"title CONTAINS[cd] %@"_s, {predicateArgument(u"1"_s)}), holding);
        NSFetchRequest populated{.entityName = u"QBNoteTag"_s};
        populated.predicate =
            NSPredicate::predicateWithFormat(u"SUBQUERY(notes, $note, $note.pinned == YES).@count > 0"_s);
        std::set<QString> tags;
        const auto found = context.executeFetchRequest(populated);
        for (const auto &tag : *found) {
            tags.insert(text(*tag, u"title"_s));
        }
        std::set<QString> expected;
        for (const auto &[identifier, note] : model.notes) {
            if (note.pinned) {
                expected.insert(note.tags.begin(), note.tags.end());
            }
        }
        EXPECT_EQ(tags, expected);
    }

    Ref<NSManagedObject> anyOf(NSManagedObjectContext &context, const QString &entity)
    {
        const auto objects = all(context, entity);
        return objects.isEmpty() ? nullptr : objects[random(static_cast<int>(objects.size()))];
    }

    /// One random change of a context and of what it should show.
    void change(NSManagedObjectContext &context, PlainModel &model)
    {
        const auto note = anyOf(context, u"QBNote"_s);
        const auto tag = anyOf(context, u"QBNoteTag"_s);
        const auto file = anyOf(context, u"QBNoteFile"_s);
        const QString noteID = note ? text(*note, u"uniqueIdentifier"_s) : QString();
        const QString tagTitle = tag ? text(*tag, u"title"_s) : QString();
        switch (random(11)) {
        case 0:
        case 1: {
            const auto made = context.insertNewObjectForEntityForName(u"QBNote"_s);
            const QString identifier = u"N%1"_s.arg(++m_counter);
            const QString title = u"t%1"_s.arg(random(100));
            made->setValueForKey(identifier, u"uniqueIdentifier"_s);
            made->setValueForKey(title, u"title"_s);
            made->setValueForKey(QString(title % u" text"), u"text"_s);
            model.notes.insert({identifier, {title, false, {}}});
            break;
        }
        case 2: {
            const auto made = context.insertNewObjectForEntityForName(u"QBNoteTag"_s);
            const QString title = u"tag%1"_s.arg(++m_counter);
            made->setValueForKey(title, u"title"_s);
            model.tags.insert(title);
            break;
        }
        case 3: {
            const auto made =
                context.insertNewObjectForEntityForName(random(2) ? u"QBNoteImage"_s : u"QBNoteGenericFile"_s);
            const QString identifier = u"F%1"_s.arg(++m_counter);
            made->setValueForKey(identifier, u"uniqueIdentifier"_s);
            made->setTargetObjectForKey(note, u"note"_s);
            model.files.insert({identifier, noteID});
            break;
        }
        case 4:
            if (note) {
                const QString title = u"t%1"_s.arg(random(100));
                note->setValueForKey(title, u"title"_s);
                note->setValueForKey(QString(title % u" text"), u"text"_s);
                model.notes[noteID].title = title;
            }
            break;
        case 5:
            if (note) {
                const bool pinned = random(2) != 0;
                note->setValueForKey(pinned, u"pinned"_s);
                model.notes[noteID].pinned = pinned;
            }
            break;
        case 6:
        case 7:
            if (note && tag) {
                auto tags = note->targetObjectsForKey(u"tags"_s);
                if (model.notes[noteID].tags.contains(tagTitle)) {
                    tags.removeAll(tag);
                    model.notes[noteID].tags.erase(tagTitle);
                } else {
                    tags.append(tag);
                    model.notes[noteID].tags.insert(tagTitle);
                }
                if (random(2)) {
                    note->setTargetObjectsForKey(tags, u"tags"_s);
                } else {
                    auto notes = tag->targetObjectsForKey(u"notes"_s);
                    if (notes.contains(note)) {
                        notes.removeAll(note);
                    } else {
                        notes.append(note);
                    }
                    tag->setTargetObjectsForKey(notes, u"notes"_s);
                }
            }
            break;
        case 8:
            if (file) {
                const bool isLoose = random(3) == 0;
                file->setTargetObjectForKey(isLoose ? nullptr : note, u"note"_s);
                model.files[text(*file, u"uniqueIdentifier"_s)] = isLoose ? QString() : noteID;
            }
            break;
        case 9:
            if (note && random(2)) {
                context.deleteObject(note.get());
                model.notes.erase(noteID);
                for (auto &[identifier, owner] : model.files) {
                    owner = owner == noteID ? QString() : owner;
                }
            }
            break;
        default:
            if (tag && random(2)) {
                context.deleteObject(tag.get());
                model.tags.erase(tagTitle);
                for (auto &[identifier, plain] : model.notes) {
                    plain.tags.erase(tagTitle);
                }
            } else if (file) {
                model.files.erase(text(*file, u"uniqueIdentifier"_s));
                context.deleteObject(file.get());
            }
        }
    }

    quib::tests::TestSeed m_seed;
    std::mt19937 m_generator = m_seed.generator();
    quib::tests::TemporaryFolder m_folder;
    std::shared_ptr<const NSManagedObjectModel> m_model = currentModel();
    std::shared_ptr<NSPersistentStoreCoordinator> m_coordinator;
    std::shared_ptr<NSManagedObjectContext> m_main;
    int m_counter = 0;
};

} // namespace

TEST_F(History, OfOneContextGivesWhatAPlainModelGives)
{
    open();
    PlainModel stored;
    PlainModel now;
    for (int step = 0; step < 1500 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        switch (random(30)) {
        case 0: {
            NSError error;
            ASSERT_TRUE(m_main->save(&error)) << error.localizedDescription().toStdString();
            stored = now;
            break;
        }
        case 1:
            m_main->rollback();
            now = stored;
            break;
        case 2:
            open();
            now = stored;
            break;
        case 3:
            m_main->refreshAllObjects(/*mergeChanges=*/true);
            break;
        default:
            change(*m_main, now);
        }
        if (step % 5 == 0) {
            EXPECT_EQ(shown(*m_main), now);
            expectFetches(*m_main, now);
        }
    }
}

TEST_F(History, OfChildrenReachesTheParentWhenTheySaveAndNotBefore)
{
    open();
    PlainModel above;
    for (int round = 0; round < 120 && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const auto child =
            NSManagedObjectContext::contextWithParent(NSManagedObjectContextConcurrencyType::PrivateQueue, m_main);
        PlainModel inside = above;
        child->performBlockAndWait([&] {
            for (int step = 0; step < 12; ++step) {
                change(*child, inside);
                if (random(8) == 0) {
                    EXPECT_TRUE(child->save());
                    above = inside;
                }
            }
            EXPECT_EQ(shown(*child), inside);
            expectFetches(*child, inside);
            if (random(3) != 0) {
                EXPECT_TRUE(child->save());
                above = inside;
                EXPECT_EQ(shown(*child), inside);
            }
        });
        EXPECT_EQ(shown(*m_main), above);
        if (random(3) == 0) {
            NSError error;
            ASSERT_TRUE(m_main->save(&error)) << error.localizedDescription().toStdString();
            child->performBlockAndWait([&] {
                if (!child->hasChanges()) {
                    EXPECT_EQ(shown(*child), above);
                }
            });
        }
        if (random(6) == 0) {
            NSError error;
            ASSERT_TRUE(m_main->save(&error)) << error.localizedDescription().toStdString();
            child->performBlockAndWait([&] { child->reset(); });
            open();
            EXPECT_EQ(shown(*m_main), above);
        }
    }
}

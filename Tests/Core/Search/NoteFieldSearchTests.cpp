// Conditions on notes' fields that are answered in memory are met by the notes that meet them in the store, whatever
// happened to the notes and their tags in between and whoever wrote them.

#include "TwoWritersFixture.h"

#include <Search/NoteFieldSearch.h>
#include <Store/NSPersistentStore.h>
#include <Store/QBNote.h>
#include <Store/QBNoteTag.h>

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

class FieldSearch : public quib::tests::TwoWritersFixture
{
protected:
    FieldSearch() { m_search = std::make_shared<quib::NoteFieldSearch>(context()); }

    QString anyText()
    {
        static const QStringList words{u"plan"_s,     u"#work "_s,   u"#home/garden "_s,       u"#work/desk "_s,
                                       u"- todo\n"_s, u"+ done\n"_s, u"\n```\nint x;\n```\n"_s};
        QString text;
        for (int n = 1 + random(6); n > 0; --n) {
            text += any(words);
        }
        return text;
    }
    void changeAnything(NSManagedObjectContext &writer)
    {
        const auto notes = QBNote::allNotesInManagedObjectContext(writer);
        const auto note = notes.isEmpty() ? nullptr : any(notes);
        const auto tag = QBNoteTag::tagWithName(any(QStringList{u"work"_s, u"home"_s, u"work/desk"_s}), writer);
        switch (random(9)) {
        case 0:
        case 1:
        case 2:
            for (int n = random(10) == 0 ? 300 : 1; n > 0; --n) {
                static_cast<void>(QBNote::noteWithText(anyText(), 0, writer));
            }
            break;
        case 3:
        case 4:
            if (note) {
                note->updateNoteWithText(anyText(), 0);
            }
            break;
        case 5:
            if (note) {
                note->permanentlyDelete();
            }
            break;
        case 6:
            if (note) {
                note->setModificationDate(m_past.dateByAddingTimeInterval(random(10)));
                note->setHasImages(random(2) == 0);
                note->setHasFiles(random(2) == 0);
            }
            break;
        case 7:
            if (tag) {
                tag->deleteTagWithSyntax(0);
            }
            break;
        default:
            // Nothing but who belongs to whom.
            if (tag && note) {
                tag->setNotes(random(2) == 0 ? QSet<Ref<QBNote>>() : QSet<Ref<QBNote>>{note});
            }
        }
    }
    NSPredicate::Ref anyCondition()
    {
        static const QStringList fields{u"hasImages"_s,     u"hasFiles"_s,        u"hasSourceCode"_s,
                                        u"todoCompleted"_s, u"todoIncompleted"_s, u"tags.@count"_s};
        static const QStringList operators{u"=="_s, u"!="_s, u"<"_s, u"<="_s, u">"_s, u">="_s};
        QString format;
        QList<NSPredicateArgument> arguments;
        for (int n = 1 + random(4); n > 0; --n) {
            format += format.isEmpty() ? QString() : any(QStringList{u" AND "_s, u" OR "_s});
            format += any(QStringList{QString(), u"NOT "_s});
            if (random(4) == 0) {
                format += any(QStringList{u"modificationDate "_s, u"creationDate "_s}) % any(operators) % u" %@"_s;
                arguments.append(quib::Value(m_past.dateByAddingTimeInterval(random(10))));
            } else {
                format += any(fields) % u' ' % any(operators) % u' ' %
                          any(QStringList{u"YES"_s, u"NO"_s, u"0"_s, u"1"_s, u"2"_s, u"-3"_s});
            }
        }
        return NSPredicate::predicateWithFormat(format, arguments);
    }
    [[nodiscard]] std::vector<qint64> stored(const NSPredicate::Ref &condition)
    {
        NSFetchRequest request{.entityName = QBNote::entityName()};
        request.predicate = condition;
        const auto identities = context().persistentStoreCoordinator()->persistentStore()->fetchIDs(request, nullptr);
        std::vector<qint64> keys;
        for (const NSManagedObjectID &identity : identities.value_or(QList<NSManagedObjectID>())) {
            keys.push_back(identity.key());
        }
        return keys;
    }

    std::shared_ptr<quib::NoteFieldSearch> m_search;
    NSDate m_past = NSDate::dateWithTimeIntervalSince1970(1'500'000'000.25);
};

} // namespace

TEST_F(FieldSearch, GivesWhatTheStoreGivesThroughEditsByAnyone)
{
    ASSERT_TRUE(m_search->fill());
    int answered = 0;
    qint64 found = 0;
    for (int step = 0; step < 250 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        const bool isElsewhere = random(8) == 0;
        QBCoreDataStack &stack = isElsewhere ? m_other : m_stack;
        changeAnything(*stack.managedObjectContext());
        // What is not saved yet is not in the store either.
        if (isElsewhere || random(4) != 0) {
            stack.saveUsingCoalescence(/*coalescence=*/false);
        }
        for (int i = 0; i < 4; ++i) {
            const NSPredicate::Ref condition = anyCondition();
            const auto keys = m_search->keysMeeting(condition->root());
            if (keys) {
                EXPECT_EQ(*keys, stored(condition)) << condition->predicateFormat().toStdString();
                ++answered;
                found += static_cast<qint64>(keys->size());
            }
        }
        if (isElsewhere) {
            // What this one read before is older than what is there now.
            context().refreshAllObjects(/*mergeChanges=*/true);
            ASSERT_TRUE(m_search->isFilled() || m_search->fill());
        }
    }
    EXPECT_GT(answered, 500);
    EXPECT_GT(found, 5000);
}

TEST_F(FieldSearch, ReadsTheFieldsAgainInTheBackgroundAfterSomebodyElseWrote)
{
    static_cast<void>(QBNote::noteWithText(u"plan\n- todo"_s, 0, context()));
    m_stack.saveUsingCoalescence(/*coalescence=*/false);
    const NSPredicate::Ref condition = NSPredicate::predicateWithFormat(u"todoIncompleted > 0"_s);
    const auto queue = quib::DispatchQueue::serial(u"fields"_s);
    const auto wait = [this] {
        while (!m_search->isFilled()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    };
    EXPECT_FALSE(m_search->keysMeeting(condition->root())) << "nothing is known before it is read";
    m_search->startFilling(queue);
    wait();
    EXPECT_EQ(m_search->keysMeeting(condition->root()), stored(condition));
    static_cast<void>(QBNote::noteWithText(u"other\n- todo"_s, 0, *m_other.managedObjectContext()));
    m_other.saveUsingCoalescence(/*coalescence=*/false);
    EXPECT_FALSE(m_search->keysMeeting(condition->root()));
    wait();
    const auto keys = m_search->keysMeeting(condition->root());
    ASSERT_TRUE(keys);
    EXPECT_EQ(keys->size(), 2U);
    EXPECT_EQ(*keys, stored(condition));
}

TEST_F(FieldSearch, LeavesToTheStoreWhatItDoesNotKnow)
{
    ASSERT_TRUE(m_search->fill());
    for (const QString &format : {u"pinned == YES"_s, u"title CONTAINS 'x'"_s, u"text CONTAINS[cd] 'x'"_s,
                                  u"files.@count > 0"_s, u"modificationDate == nil"_s, u"todoCompleted > 40000"_s,
                                  u"ANY tags.title == 'work'"_s, u"hasImages == YES OR trashed == NO"_s}) {
        const NSPredicate::Ref condition = NSPredicate::predicateWithFormat(format);
        ASSERT_NE(condition, nullptr) << format.toStdString();
        EXPECT_FALSE(m_search->keysMeeting(condition->root())) << format.toStdString();
    }
}

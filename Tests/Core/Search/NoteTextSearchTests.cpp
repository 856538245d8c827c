// Searches answered from the folded texts give the notes that the store gives, in the same order, whatever happened to
// the notes in between and whoever wrote them.

#include "TwoWritersFixture.h"

#include <Search/NoteTextSearch.h>
#include <Search/QBNoteSearchManager.h>
#include <Store/QBNote.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

class TextSearch : public quib::tests::TwoWritersFixture
{
protected:
    QString anyText()
    {
        static const QStringList words{
            u"Caffè"_s, u"caffe"_s, u"plan"_s,    u"#work"_s, u"- todo\n"_s,         u"+ done\n"_s,
            u"日本"_s,  u"ß"_s,     u"STRASSE"_s, u"x"_s,     QString(QChar(0xD800))};
        QString text;
        for (int n = 1 + random(6); n > 0; --n) {
            text += QString(words[random(static_cast<int>(words.size()))] % u' ');
        }
        return text;
    }
    QString anyQuery()
    {
        static const QStringList words{u"caffe"_s, u"CAFFÈ"_s,  u"plan"_s,       u"-plan"_s,     u"strasse"_s,
                                       u"@code"_s, u"@done"_s,  u"-@today"_s,    u"@untagged"_s, u"-@task"_s,
                                       u"@todo"_s, u"@task"_s,  u"\"plan x\""_s, u"-\"x x\""_s,  u"@tagged"_s,
                                       u"日"_s,    u"nowhere"_s};
        QStringList query;
        for (int n = 1 + random(3); n > 0; --n) {
            query.append(words[random(static_cast<int>(words.size()))]);
        }
        return query.join(u' ');
    }
    static Ref<QBNote> anyNote(NSManagedObjectContext &context, int index)
    {
        const auto notes = QBNote::allNotesInManagedObjectContext(context);
        return notes.isEmpty() ? nullptr : notes[index % notes.size()];
    }
    void expectSame(const QString &query)
    {
        NSFetchRequest request{.entityName = QBNote::entityName()};
        request.predicate = QBNoteSearchManager::predicateForSearchString(query);
        request.sortDescriptors = {NSSortDescriptor(u"modificationDate"_s, /*ascending=*/false)};
        NSError error;
        const auto fast = m_search->executeFetchRequest(request, &error);
        const auto slow = m_stack.managedObjectContext()->executeFetchRequest(request, &error);
        ASSERT_TRUE(fast && slow) << error.localizedDescription().toStdString();
        EXPECT_EQ(*fast, *slow) << query.toStdString();
        m_found += slow->size();
    }
    /// Filtering in memory, with unsaved changes as well, gives what asking each note does.
    void expectSameFiltered(const QString &query)
    {
        const auto notes = QBNote::allNotesInManagedObjectContext(*m_stack.managedObjectContext());
        const NSPredicate::Ref predicate = QBNoteSearchManager::predicateForSearchString(query);
        std::vector<NSManagedObject *> objects;
        std::vector<NSManagedObject *> expected;
        for (const auto &note : notes) {
            objects.push_back(note.get());
            if (predicate->evaluateWithObject(*note)) {
                expected.push_back(note.get());
            }
        }
        const auto filtered = m_search->objectsMatching(objects, predicate);
        ASSERT_TRUE(filtered);
        EXPECT_EQ(*filtered, expected) << query.toStdString();
        m_filtered += static_cast<qint64>(filtered->size());
    }

    std::shared_ptr<quib::NoteTextSearch> m_search;
    qint64 m_found = 0;
    qint64 m_filtered = 0;
};

} // namespace

TEST_F(TextSearch, GivesWhatTheStoreGivesThroughEditsByAnyone)
{
    NSManagedObjectContext &context = *m_stack.managedObjectContext();
    NSManagedObjectContext &elsewhere = *m_other.managedObjectContext();
    m_search = quib::NoteTextSearch::make(context);
    for (int step = 0; step < 300 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        if (step == 20) {
            ASSERT_TRUE(m_search->fill());
        }
        const bool isElsewhere = random(3) == 0;
        QBCoreDataStack &stack = isElsewhere ? m_other : m_stack;
        NSManagedObjectContext &writer = isElsewhere ? elsewhere : context;
        const auto note = anyNote(writer, random(1000));
        switch (random(4)) {
        case 0:
        case 1:
            static_cast<void>(QBNote::noteWithText(anyText(), 0, writer));
            break;
        case 2:
            if (note) {
                note->updateNoteWithText(anyText(), 0);
            }
            break;
        default:
            if (note && random(3) == 0) {
                note->permanentlyDelete();
            }
        }
        // Now and then the search meets changes that are not saved yet.
        if (isElsewhere || random(4) != 0) {
            stack.saveUsingCoalescence(/*coalescence=*/false);
        }
        const QString query = anyQuery();
        expectSame(query);
        if (isElsewhere) {
            // What the context read before is older than what the search knows.
            context.refreshAllObjects(/*mergeChanges=*/true);
        }
        expectSameFiltered(query);
    }
    EXPECT_TRUE(m_search->isFilled());
    EXPECT_GT(m_found, 500);
    EXPECT_GT(m_filtered, 500);
}

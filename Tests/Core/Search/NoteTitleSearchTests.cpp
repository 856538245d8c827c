// Notes that are found by a part of their titles are those that the store finds, in the same order, whatever happened
// to the notes in between and whoever wrote them.

#include "TwoWritersFixture.h"

#include <Search/NoteTitleSearch.h>
#include <Store/QBNote.h>

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

class TitleSearch : public quib::tests::TwoWritersFixture
{
protected:
    TitleSearch() { m_search = std::make_shared<quib::NoteTitleSearch>(context()); }

    QString anyWords(int most)
    {
        static const QStringList words{u"Caffè"_s,  u"caffe"_s, u"plan"_s,
                                       u"pl"_s,     u"日本"_s,  u"STRASSE"_s,
                                       u"Straße"_s, u"x"_s,     QString(QChar(0xD800)),
                                       u"a"_s};
        QStringList some;
        for (int n = 1 + random(most); n > 0; --n) {
            some.append(words[random(static_cast<int>(words.size()))]);
        }
        return some.join(u' ');
    }
    void changeAnyNote(NSManagedObjectContext &writer)
    {
        const auto notes = QBNote::allNotesInManagedObjectContext(writer);
        const auto note = notes.isEmpty() ? nullptr : notes[random(1000) % notes.size()];
        const int kind = note ? random(9) : 0;
        if (kind <= 2) {
            static_cast<void>(QBNote::noteWithText(QString(u"# "_s % anyWords(3)), 0, writer));
        } else if (kind == 3) {
            note->updateNoteWithText(random(4) == 0 ? QString() : QString(u"# "_s % anyWords(3)), 0);
        } else if (kind == 4) {
            note->updateNoteWithText(QString(note->text() % u"\nmore"_s), 0); // the title stays
        } else if (kind == 5) {
            note->isTrashed() ? note->restoreFromTrash() : note->trash();
        } else if (kind == 6) {
            note->isArchived() ? note->unarchive() : note->archive();
        } else if (kind == 7) {
            note->permanentlyDelete();
        } else {
            note->setModificationDate(
                NSDate::dateWithTimeIntervalSince1970(1'700'000'000 + random(3))); // as old as another
        }
    }
    /// Gives whether the search knew an answer.
    bool expectSame()
    {
        const QString query = anyWords(1).first(1 + random(2) % 2);
        const qint64 limit = random(2) == 0 ? 20 : random(5);
        const auto known = m_search->findNotesForPartialtitle(query, limit);
        if (known) {
            EXPECT_EQ(*known, QBNote::findNotesForPartialtitle(query, context(), limit)) << query.toStdString();
            m_found += known->size();
        }
        return known.has_value();
    }

    std::shared_ptr<quib::NoteTitleSearch> m_search;
    qint64 m_found = 0;
};

} // namespace

TEST_F(TitleSearch, GivesWhatTheStoreGivesThroughEdits)
{
    EXPECT_FALSE(expectSame()) << "nothing was read yet";
    ASSERT_TRUE(m_search->fill());
    for (int step = 0; step < 400 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        changeAnyNote(context());
        // Now and then the search meets changes that are not saved yet.
        if (random(4) != 0) {
            m_stack.saveUsingCoalescence(/*coalescence=*/false);
        }
        EXPECT_TRUE(expectSame());
    }
    EXPECT_GT(m_found, 400);
}

TEST_F(TitleSearch, LeavesItToTheStoreWhatOthersWrote)
{
    for (int step = 0; step < 60 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        context().refreshAllObjects(/*mergeChanges=*/true);
        ASSERT_TRUE(m_search->fill());
        EXPECT_TRUE(expectSame());
        static_cast<void>(QBNote::noteWithText(QString(u"# "_s % anyWords(3)), 0, *m_other.managedObjectContext()));
        m_other.saveUsingCoalescence(/*coalescence=*/false);
        EXPECT_FALSE(expectSame());
        if (step % 2 == 0) {
            changeAnyNote(context());
            m_stack.saveUsingCoalescence(/*coalescence=*/false);
            EXPECT_FALSE(expectSame());
        }
    }
}

TEST_F(TitleSearch, ReadsAgainOnItsQueueWhatOthersWrote)
{
    const auto queue = quib::DispatchQueue::serial(u"titles"_s);
    const auto waitFor = [&](bool isKnown) {
        for (;;) {
            const auto known = m_search->findNotesForPartialtitle(u"plan"_s, 20);
            if (known.has_value() == isKnown) {
                return known ? known->size() : -1;
            }
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    };
    m_search->startFilling(queue);
    EXPECT_EQ(waitFor(true), 0);
    static_cast<void>(QBNote::noteWithText(u"# The plan"_s, 0, *m_other.managedObjectContext()));
    m_other.saveUsingCoalescence(/*coalescence=*/false);
    EXPECT_EQ(waitFor(false), -1);
    EXPECT_EQ(waitFor(true), 1);
}

TEST_F(TitleSearch, ClearsReplacedTitlesAway)
{
    ASSERT_TRUE(m_search->fill());
    const auto note = QBNote::noteWithText(u"# first"_s, 0, context());
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(m_search->isFilled());
        note->setTitle(QString(QString(600'000, u'x') % QString::number(i)));
        m_stack.saveUsingCoalescence(/*coalescence=*/false);
    }
    EXPECT_FALSE(m_search->isFilled()) << "read anew";
    ASSERT_TRUE(m_search->fill());
    EXPECT_EQ(m_search->findNotesForPartialtitle(u"xx"_s, 20)->size(), 1);
}

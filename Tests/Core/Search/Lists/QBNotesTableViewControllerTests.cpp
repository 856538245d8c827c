#include "NoteListFixture.h"

#include <Search/QBNoteSearchManager.h>
#include <Store/QBNoteGenericFile.h>
#include <Store/QBNoteImage.h>
#include <Support/TestSeed.h>

#include <map>

using namespace Qt::StringLiterals;
using quib::Ref;
using RowKind = QBNotesTableViewController::RowKind;
using RowHeight = QBNotesTableViewController::RowHeight;

namespace {

class NoteList : public quib::tests::NoteListFixture, public QBNotesTableViewControllerDelegate
{
protected:
    void notesTableViewController(QBNotesTableViewController &, const QString &didPerformSearch) override
    {
        m_searches.append(didPerformSearch);
    }
    void addImage(QBNote &note)
    {
        const auto image = QBNoteImage::insertInManagedObjectContext(moc());
        note.addFilesObject(image.get());
        note.setHasImages(true);
    }

    QStringList m_searches;
};

} // namespace

TEST_F(NoteList, ShowsTheNotesOfItsItem)
{
    static_cast<void>(makeNote(u"b"_s));
    static_cast<void>(makeNote(u"a"_s));
    makeNote(u"c"_s)->trash();
    EXPECT_EQ(controller->numberOfRows(), 0);
    EXPECT_EQ(controller->kindOfRow(0), RowKind::Plain);
    EXPECT_EQ(controller->attributedStringForRow(0).length(), 0);
    show();
    EXPECT_EQ(shown(), u"a b"_s);
    show(u"trashed == YES"_s);
    EXPECT_EQ(shown(), u"c"_s);
    EXPECT_EQ(controller->attributedStringForRow(0).string().toString(), u"c"_s);
    EXPECT_EQ(controller->infoAttributedStringForRow(0).string().toString(), u"now \n"_s);
    controller->setRepresentedObject(nullptr);
    EXPECT_EQ(shown(), u""_s);
    EXPECT_EQ(controller->fetchedResultController(), nullptr);
}

TEST_F(NoteList, AsksAgainForTheDayAtMidnight)
{
    static_cast<void>(makeNote(u"yesterday"_s));
    static_cast<void>(makeNote(u"kept"_s));
    show();
    controller->searchFieldUpdated(u"@today"_s);
    ASSERT_EQ(shown(), u"kept yesterday"_s);
    select({1});
    clock.advance(86'400);
    EXPECT_EQ(shown(), u""_s);
    EXPECT_EQ(table.leavings, 1) << "nobody chose to leave the selected note";
    static_cast<void>(makeNote(u"new"_s));
    save();
    EXPECT_EQ(shown(), u"new"_s);
    // A list that does not name the day is left alone.
    controller->searchFieldUpdated({});
    const int reloads = table.reloads;
    clock.advance(86'400);
    EXPECT_EQ(table.reloads, reloads);
    EXPECT_EQ(shown(), u"kept new yesterday"_s);
}

TEST_F(NoteList, KeepsTheSelectionAcrossItems)
{
    for (const QString &title : {u"a"_s, u"b"_s, u"c"_s}) {
        static_cast<void>(makeNote(title));
    }
    show();
    select({1, 2});
    table.position = 100;
    // The notes get permanent names meanwhile.
    save();
    show(u"title != \"b\""_s);
    EXPECT_EQ(shown(), u"a c"_s);
    EXPECT_EQ(selection(), u"c"_s);
    EXPECT_EQ(table.position, 0);
    select({});
    table.position = 50;
    show();
    EXPECT_EQ(selection(), u""_s);
    EXPECT_EQ(table.position, 50);
}

TEST_F(NoteList, KindsOfRowsFollowNoteItemAndSearch)
{
    const auto root = makeNote(u"a"_s);
    const auto copy = makeNote(u"b"_s);
    copy->markAsConflictedFromNote(*root);
    const auto pictures = makeNote(u"c"_s);
    addImage(*pictures);
    const auto both = makeNote(u"d"_s);
    both->markAsConflictedFromNote(*root);
    addImage(*both);
    const auto silent = makeNote(u""_s);
    addImage(*silent);
    const auto grouping = item(u"trashed == NO"_s);
    grouping->isGrouping = true;
    const auto kinds = [&] {
        std::map<QString, RowKind> found;
        for (qint64 row = 0; row < controller->numberOfRows(); ++row) {
            found[controller->noteAtRow(row).as<QBNote>()->title()] = controller->kindOfRow(row);
        }
        return found;
    };
    using Kinds = std::map<QString, RowKind>;
    controller->setRepresentedObject(grouping);
    EXPECT_EQ(kinds(), (Kinds{{u""_s, RowKind::Image},
                              {u"a"_s, RowKind::ConflictRoot},
                              {u"b"_s, RowKind::Conflict},
                              {u"c"_s, RowKind::Image},
                              {u"d"_s, RowKind::Conflict}}));
    EXPECT_TRUE(controller->attributedStringForRow(1).string().startsWith(u"Conflicted\na   "_s));
    EXPECT_TRUE(controller->attributedStringForRow(2).string().startsWith(u"b   "_s));
    controller->searchFieldUpdated(u"-zzz"_s);
    EXPECT_EQ(kinds()[u"a"_s], RowKind::Plain);
    EXPECT_EQ(kinds()[u"d"_s], RowKind::Image);
    controller->searchFieldUpdated({});
    // An item that doesn't group shows the same notes one by one.
    show();
    EXPECT_EQ(kinds()[u"a"_s], RowKind::Plain);
    EXPECT_EQ(kinds()[u"b"_s], RowKind::Plain);
    std::map<QString, RowHeight> heights;
    for (qint64 row = 0; row < controller->numberOfRows(); ++row) {
        heights[controller->noteAtRow(row).as<QBNote>()->title()] = controller->heightOfRow(row);
    }
    EXPECT_EQ(heights, (std::map<QString, RowHeight>{{u""_s, RowHeight::Plain},
                                                     {u"a"_s, RowHeight::Plain},
                                                     {u"b"_s, RowHeight::Plain},
                                                     {u"c"_s, RowHeight::Image},
                                                     {u"d"_s, RowHeight::Image}}));
}

TEST_F(NoteList, ATableThatDoesWhatItIsToldShowsTheList)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    const auto random = [&generator](size_t bound) { return generator() % bound; };
    show();
    QList<Ref<QBNote>> notes;
    for (int batch = 0; batch < 400 && !HasFailure(); ++batch) {
        SCOPED_TRACE(batch);
        for (size_t n = 1 + random(4); n > 0; --n) {
            const QString text = QString(QChar(static_cast<char16_t>(u'a' + random(6))));
            const Ref<QBNote> note =
                notes.isEmpty() ? nullptr : notes[static_cast<qsizetype>(random(static_cast<size_t>(notes.size())))];
            switch (random(note ? 6 : 1)) {
            case 0:
                notes.append(makeNote(text));
                break;
            case 1:
                note->updateNoteWithText(text, 0);
                break;
            case 2:
                note->isTrashed() ? note->restoreFromTrash() : note->trash();
                break;
            case 3:
                note->isPinned() ? note->unpin() : note->pin();
                break;
            case 4:
                note->setModificationDate(NSDate::now());
                break;
            default:
                notes.removeOne(note);
                moc().deleteObject(note.get());
            }
        }
        const int updates = table.updates;
        turn();
        if (table.updates == updates) {
            continue;
        }
        for (const qint64 row : table.reloaded) {
            EXPECT_LT(row, controller->numberOfRows());
        }
    }
    EXPECT_GT(table.updates, 300);
    EXPECT_EQ(table.reloads, 1);
}

TEST_F(NoteList, DrawsChangedRowsAnewWhereTheyStandThen)
{
    for (const QString &title : {u"a"_s, u"b"_s, u"c"_s}) {
        static_cast<void>(makeNote(title));
    }
    show();
    const auto last = controller->noteAtRow(2).as<QBNote>();
    last->pin();
    turn();
    EXPECT_EQ(shown(), u"c a b"_s);
    EXPECT_EQ(table.reloaded, QList<qint64>{0});
    last->setModificationDate(NSDate::now().dateByAddingTimeInterval(5));
    turn();
    EXPECT_EQ(table.reloaded, QList<qint64>{0});
}

TEST_F(NoteList, ASearchFiltersAndTellsItsDelegate)
{
    static_cast<void>(makeNote(u"apple pie"_s));
    makeNote(u"apple"_s)->trash();
    static_cast<void>(makeNote(u"bread"_s));
    static_cast<void>(makeNote(u"cake\n- todo"_s));
    controller->setDelegate(this);
    show();
    controller->searchFieldUpdated(u"APPLE"_s);
    EXPECT_EQ(shown(), u"apple pie"_s);
    controller->searchFieldUpdated(u"@todo"_s);
    EXPECT_EQ(shown(), u"cake"_s);
    // A new note that the filter leaves out moves nothing; one that it lets in is there at once.
    static_cast<void>(makeNote(u"soup"_s));
    turn();
    EXPECT_EQ(table.updates, 0);
    static_cast<void>(makeNote(u"duty\n- one"_s));
    turn();
    EXPECT_EQ(shown(), u"cake duty"_s);
    controller->searchFieldUpdated(u"   "_s);
    EXPECT_EQ(controller->numberOfRows(), 5);
    controller->setCurrentSearch(u"bread"_s);
    EXPECT_EQ(shown(), u"bread"_s);
    EXPECT_EQ(table.field, u"bread"_s);
    EXPECT_EQ(table.focusings, 1);
    EXPECT_EQ(controller->currentSearch(), u"bread"_s);
    // The field still says so when another item is chosen.
    show(u"trashed == YES"_s);
    EXPECT_EQ(shown(), u""_s);
    controller->searchFieldUpdated(u"app"_s);
    EXPECT_EQ(shown(), u"apple"_s);
    EXPECT_EQ(m_searches, (QStringList{u"APPLE"_s, u"@todo"_s, u"   "_s, u"bread"_s, u"app"_s}));
}

TEST_F(NoteList, AnEmptiedSearchBringsSelectionAndPlaceBack)
{
    for (const QString &title : {u"a"_s, u"ab"_s, u"b"_s, u"bc"_s}) {
        static_cast<void>(makeNote(title));
    }
    show();
    select({1, 2});
    table.position = 300;
    controller->searchFieldUpdated(u"a"_s);
    EXPECT_EQ(selection(), u"ab"_s);
    select({0});
    table.position = 10;
    controller->searchFieldUpdated(u"ab"_s);
    EXPECT_EQ(selection(), u""_s);
    controller->searchFieldUpdated(u""_s);
    EXPECT_EQ(selection(), u"ab b"_s);
    EXPECT_EQ(table.position, 300);
    // A second search remembers anew.
    select({0});
    table.position = 5;
    controller->searchFieldUpdated(u"b"_s);
    table.position = 0;
    // The place belongs to a list that is gone.
    show(u"title != \"c\""_s);
    controller->searchFieldUpdated(u""_s);
    EXPECT_EQ(selection(), u"a"_s);
    EXPECT_EQ(table.position, 0);
}

TEST_F(NoteList, TheArenaFiltersAsAskingEachNoteDoes)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    const auto random = [&generator](size_t bound) { return generator() % bound; };
    const QStringList words{
        u"Caffè"_s, u"plan"_s, u"#work"_s, u"\n- todo\n"_s, u"STRASSE"_s, u"x"_s, u"\n```\ncode\n```\n"_s};
    const QStringList queries{u"caffe"_s, u"c"_s,         u"-plan"_s,      u"straße"_s,
                              u"@todo"_s, u"@tagged x"_s, u"plan @task"_s, u"\"plan x\""_s,
                              u"@code"_s, u"-@today"_s,   u""_s,           u"@untagged -x"_s};
    const auto anyText = [&] {
        QString text;
        for (size_t n = 1 + random(5); n > 0; --n) {
            text += QString(words[static_cast<qsizetype>(random(static_cast<size_t>(words.size())))] % u' ');
        }
        return text;
    };
    const auto search = quib::NoteTextSearch::make(moc());
    make(search);
    show();
    qint64 found = 0;
    for (int step = 0; step < 120 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        if (step == 20) {
            ASSERT_TRUE(search->fill());
        }
        const auto notes = QBNote::allNotesInManagedObjectContext(moc());
        if (notes.isEmpty() || random(3) == 0) {
            static_cast<void>(makeNote(anyText()));
        } else {
            const auto note = notes[static_cast<qsizetype>(random(static_cast<size_t>(notes.size())))];
            random(8) == 0 ? note->trash() : note->updateNoteWithText(anyText(), 0);
        }
        if (random(3) != 0) {
            save();
        }
        turn();
        const QString query = queries[static_cast<qsizetype>(random(static_cast<size_t>(queries.size())))];
        controller->searchFieldUpdated(query);
        const auto predicate = QBNoteSearchManager::predicateForSearchString(query);
        std::vector<const NSManagedObject *> expected;
        for (const auto *object : controller->fetchedResultController()->fetchedObjects()) {
            if (predicate == nullptr || predicate->evaluateWithObject(*object)) {
                expected.push_back(object);
            }
        }
        EXPECT_EQ(table.rows, expected) << query.toStdString();
        found += static_cast<qint64>(expected.size());
    }
    EXPECT_GT(found, 300);
    controller.reset();
}

#include "NoteListFixture.h"

#include <Search/Lists/QBStaticSidebarItem.h>
#include <Search/Lists/QBTagSidebarItem.h>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

class NoteCommands : public quib::tests::NoteListFixture
{
protected:
    /// The flags of notes by their titles' order: p, t, a.
    [[nodiscard]] static QString flags(const QList<Ref<QBNote>> &notes)
    {
        QStringList all;
        for (const auto &note : notes) {
            QString one = note->title();
            one += note->isPinned() ? u"+pinned"_s : QString();
            one += note->isTrashed() ? u"+trashed"_s : QString();
            one += note->isArchived() ? u"+archived"_s : QString();
            all.append(one);
        }
        return all.join(u' ');
    }
    template <typename Item> void showItem()
    {
        controller->setRepresentedObject(Item::sidebarItemWithManagedObjectContext(stack->managedObjectContext()));
    }
    void showTag(const QString &title)
    {
        controller->setRepresentedObject(
            QBTagSidebarItem::initWithTag(QBNoteTag::getOrCreateTagWithName(title, moc())));
    }
};

} // namespace

TEST_F(NoteCommands, HaveTheirInverseOnTheUndoStack)
{
    using Command = void (QBNotesTableViewController::*)();
    struct Case
    {
        Command command;
        QString after;
        QString name;
        QString inverseName;
    };
    // One note is as the command would make it: undoing leaves it so.
    const QString before = u"a b+pinned c+trashed d+archived"_s;
    const Case cases[] = {
        {&QBNotesTableViewController::pinNotes, u"a+pinned b+pinned c+pinned+trashed d+pinned+archived"_s,
         u"Pin notes"_s, u"Unpin notes"_s},
        {&QBNotesTableViewController::unpinNotes, u"a b c+trashed d+archived"_s, u"Unpin notes"_s, u"Pin notes"_s},
        {&QBNotesTableViewController::archiveNotes, u"a+archived b+pinned+archived c+archived d+archived"_s,
         u"Archive notes"_s, u"Unarchive notes"_s},
        {&QBNotesTableViewController::unarchiveNotes, u"a b+pinned c+trashed d"_s, u"Unarchive notes"_s,
         u"Archive notes"_s},
        {&QBNotesTableViewController::restoreNotes, u"a b+pinned c d+archived"_s, u"Restore notes"_s,
         u"Delete notes"_s},
        {&QBNotesTableViewController::deleteNotes, u"a+trashed b+pinned+trashed c+trashed d+trashed+archived"_s,
         u"Delete notes"_s, u"Restore notes"_s},
    };
    const QList<Ref<QBNote>> notes{makeNote(u"a"_s), makeNote(u"b"_s), makeNote(u"c"_s), makeNote(u"d"_s)};
    notes[1]->pin();
    notes[2]->trash();
    notes[3]->archive();
    ASSERT_EQ(flags(notes), before);
    for (const Case &one : cases) {
        SCOPED_TRACE(one.name.toStdString());
        show(u"title != \"\""_s);
        select({0, 1, 2, 3});
        (controller.get()->*one.command)();
        EXPECT_EQ(flags(notes), one.after);
        EXPECT_EQ(undoManager.undoActionName(), one.name);
        undoManager.undo();
        EXPECT_EQ(flags(notes), before);
        EXPECT_EQ(undoManager.redoActionName(), one.inverseName);
        undoManager.redo();
        EXPECT_EQ(flags(notes), one.after);
        EXPECT_EQ(undoManager.undoActionName(), one.name);
        undoManager.undo();
        EXPECT_EQ(flags(notes), before);
        clock.advance(1);
        EXPECT_FALSE(moc().hasChanges()) << "saved at the end of the turn";
    }
}

TEST_F(NoteCommands, ChangeTheSelectionAlone)
{
    const QList<Ref<QBNote>> notes{makeNote(u"a"_s), makeNote(u"b"_s), makeNote(u"c"_s)};
    show();
    select({1});
    controller->pinNotes();
    EXPECT_EQ(flags(notes), u"a b+pinned c"_s);
    select({});
    controller->archiveNotes();
    EXPECT_EQ(undoManager.undoActionName(), u"Pin notes"_s);
    // Pinning what is pinned leaves nothing to undo.
    undoManager.removeAllActions();
    controller->pinNotes({notes[1]});
    EXPECT_FALSE(undoManager.canUndo());
}

TEST_F(NoteCommands, DoNothingThatTheItemDoesNotAllow)
{
    const QList<Ref<QBNote>> notes{makeNote(u"a"_s)};
    const auto strict = item(u"title != \"\""_s);
    strict->canDelete = false;
    strict->canPin = false;
    controller->setRepresentedObject(strict);
    select({0});
    controller->deleteNotes();
    controller->pinNotes();
    notes[0]->pin();
    controller->unpinNotes();
    EXPECT_EQ(flags(notes), u"a+pinned"_s);
}

TEST_F(NoteCommands, SkipNotesThatAreGone)
{
    const auto a = makeNote(u"a"_s);
    const auto b = makeNote(u"b"_s);
    show();
    select({0, 1});
    controller->pinNotes();
    a->permanentlyDelete();
    save();
    undoManager.undo();
    EXPECT_FALSE(b->isPinned());
    undoManager.redo();
    EXPECT_TRUE(b->isPinned());
    b->permanentlyDelete();
    undoManager.undo();
    EXPECT_FALSE(undoManager.canRedo());
}

TEST_F(NoteCommands, TheTrashDeletesForGoodAfterAQuestion)
{
    const auto inTrash = [&](const QString &title) {
        const auto note = makeNote(title);
        note->trash();
        return note;
    };
    inTrash(u"a"_s);
    inTrash(u"b"_s);
    const auto restored = inTrash(u"c"_s);
    showItem<QBNotesTrashSidebarItem>();
    select({0});
    controller->deleteNotes();
    ASSERT_EQ(table.questions.size(), 1);
    EXPECT_EQ(table.questions[0].message, u"Are you sure you want to permanently delete the selected notes?"_s);
    EXPECT_EQ(table.questions[0].notes.size(), 1);
    EXPECT_EQ(table.questions[0].suppressionText, u"Do not show this warning again."_s);
    EXPECT_EQ(table.questions[0].suppressionKey, u"PermanentlyDeleteNoteSuppressionKey"_s);
    table.answer(/*isConfirmed=*/false, /*isSuppressed=*/true);
    turn();
    EXPECT_EQ(shown(), u"a b c"_s);
    controller->deleteNotes();
    table.answer(/*isConfirmed=*/true, /*isSuppressed=*/false);
    turn();
    EXPECT_EQ(shown(), u"b c"_s);
    EXPECT_FALSE(undoManager.canUndo());
    // A note that left the trash while the question stood is not what was asked about.
    select({0, 1});
    controller->deleteNotes();
    EXPECT_EQ(table.questions.size(), 3);
    restored->restoreFromTrash();
    table.answer(/*isConfirmed=*/true, /*isSuppressed=*/true);
    turn();
    EXPECT_FALSE(restored->isDeleted());
    EXPECT_EQ(shown(), u""_s);
    // Not asked again.
    restored->trash();
    turn();
    select({0});
    controller->deleteNotes();
    turn();
    EXPECT_EQ(table.questions.size(), 3);
    EXPECT_TRUE(QBNote::allNotesInManagedObjectContext(moc()).isEmpty());
}

TEST_F(NoteCommands, AnAnswerThatComesTooLateDoesNothing)
{
    makeNote(u"a"_s)->trash();
    showItem<QBNotesTrashSidebarItem>();
    select({0});
    controller->deleteNotes();
    controller.reset();
    table.answer(/*isConfirmed=*/true, /*isSuppressed=*/false);
    EXPECT_EQ(QBNote::allNotesInManagedObjectContext(moc()).size(), 1);
}

TEST_F(NoteCommands, NothingCanBeUndoneOnceTheListIsGone)
{
    const auto note = makeNote(u"a"_s);
    show();
    controller->pinNotes({note});
    EXPECT_TRUE(undoManager.canUndo());
    controller.reset();
    EXPECT_FALSE(undoManager.canUndo());
}

TEST_F(NoteCommands, MergeAndUnmerge)
{
    const QList<Ref<QBNote>> notes{makeNote(u"a"_s), makeNote(u"b"_s), makeNote(u"c"_s)};
    show();
    select({0, 2});
    controller->mergeNotes();
    turn();
    EXPECT_EQ(undoManager.undoActionName(), u"Merge notes"_s);
    EXPECT_EQ(flags(notes), u"a+trashed b c+trashed"_s);
    const auto merged = controller->noteAtRow(0).as<QBNote>();
    EXPECT_EQ(merged->text(), u"a\n\nc"_s);
    undoManager.undo();
    turn();
    EXPECT_EQ(undoManager.redoActionName(), u"Unmerge notes"_s);
    EXPECT_EQ(shown(), u"a b c"_s);
    undoManager.redo();
    turn();
    EXPECT_EQ(undoManager.undoActionName(), u"Merge notes"_s);
    EXPECT_EQ(shown(), u"a b"_s);
    // What was written into the result is kept, in the trash.
    const auto second = controller->noteAtRow(0).as<QBNote>();
    second->updateNoteWithText(u"a, c and more"_s, 0);
    undoManager.undo();
    turn();
    EXPECT_EQ(shown(), u"a b c"_s);
    EXPECT_TRUE(second->isTrashed());
    EXPECT_EQ(second->text(), u"a, c and more"_s);
    // A source that is gone does not keep the other from coming back.
    controller->mergeNotes({notes[0], notes[1]});
    notes[0]->permanentlyDelete();
    undoManager.undo();
    turn();
    EXPECT_EQ(shown(), u"b c"_s);
}

TEST_F(NoteCommands, MergingOneNoteDoesNothing)
{
    const auto note = makeNote(u"a"_s);
    controller->mergeNotes({note});
    EXPECT_FALSE(undoManager.canUndo());
    EXPECT_FALSE(note->isTrashed());
}

TEST_F(NoteCommands, DuplicatesAreSelectedAndGoToTheTrash)
{
    static_cast<void>(makeNote(u"a\nbody"_s));
    static_cast<void>(makeNote(u"b"_s));
    show();
    select({0});
    controller->duplicate();
    turn();
    EXPECT_EQ(shown(), u"a a b"_s);
    ASSERT_EQ(controller->selectedNotes().size(), 1);
    const auto copy = controller->selectedNotes().front();
    EXPECT_EQ(copy->text(), u"a\nbody"_s);
    EXPECT_EQ(undoManager.undoActionName(), u"Duplicate notes"_s);
    undoManager.undo();
    turn();
    EXPECT_EQ(shown(), u"a b"_s);
    EXPECT_TRUE(copy->isTrashed());
    undoManager.redo();
    turn();
    EXPECT_EQ(shown(), u"a a b"_s);
}

TEST_F(NoteCommands, RemovedTagsComeBackWhereTheyStood)
{
    struct Case
    {
        QString text;
        QString tag;
        QString without;
    };
    const Case cases[] = {
        {u"# A\n#work here\ntext"_s, u"work"_s, u"# A\nhere\ntext"_s},
        {u"# A\n#work/plans and #work\ntext"_s, u"work"_s, {}},
        {u"# A\n#work/plans end"_s, u"work/plans"_s, u"# A\n#work end"_s},
    };
    for (const Case &one : cases) {
        SCOPED_TRACE(one.text.toStdString());
        const auto note = makeNote(one.text);
        const auto other = makeNote(one.text);
        const auto tags = sortedTags(*note);
        save();
        clock.advance(10);
        const auto date = note->modificationDate();
        controller->removeTag(one.tag, {note});
        EXPECT_EQ(undoManager.undoActionName(), u"Remove tag"_s);
        EXPECT_FALSE(note->tagsStrings().contains(one.tag));
        const QString without = note->text();
        if (!one.without.isNull()) {
            EXPECT_EQ(without, one.without);
        }
        EXPECT_EQ(other->text(), one.text);
        save();
        undoManager.undo();
        EXPECT_EQ(undoManager.redoActionName(), u"Re-add tag"_s);
        EXPECT_EQ(note->text(), one.text);
        EXPECT_EQ(sortedTags(*note), tags);
        undoManager.redo();
        EXPECT_EQ(note->text(), without);
        EXPECT_EQ(note->modificationDate(), date);
        // Written in since: the tag is added to what stands there.
        note->updateNoteWithText(u"# B\nnew"_s, 0);
        undoManager.undo();
        EXPECT_TRUE(note->text().contains(u"new"_s));
        EXPECT_TRUE(note->tagsStrings().contains(one.tag));
        other->permanentlyDelete();
    }
}

TEST_F(NoteCommands, TheSelectedItemsTagIsRemovedFromTheSelection)
{
    const auto note = makeNote(u"a #work"_s);
    const auto other = makeNote(u"b #work"_s);
    save();
    showTag(u"work"_s);
    ASSERT_EQ(controller->numberOfRows(), 2);
    select({controller->fetchedResultController()->indexOfObject(note.get())});
    controller->removeSelectedTag();
    EXPECT_EQ(note->tagsStrings(), QStringList());
    EXPECT_EQ(other->tagsStrings(), QStringList{u"work"_s});
    controller->unremoveTag(u"work"_s, {note});
    EXPECT_EQ(note->tagsStrings(), QStringList{u"work"_s});
}

TEST_F(NoteCommands, NewNotesBeginAsTheListSuggests)
{
    struct Case
    {
        const char *label;
        QString search;
        QString tag;
        bool isTodo;
        QString native;
        QString markdown;
    };
    const Case cases[] = {
        {"plain", {}, {}, false, u"# "_s, u"# "_s},
        {"a search", u"Plan B"_s, {}, false, u"# Plan B"_s, u"# Plan B"_s},
        {"a tag", {}, u"work"_s, false, u"# \n#work"_s, u"# \n#work"_s},
        {"a tag of two words", {}, u"two words"_s, false, u"# \n#two words#"_s, u"# \n#two words#"_s},
        {"a search in a tag", u"x"_s, u"work"_s, false, u"# x\n#work"_s, u"# x\n#work"_s},
        {"to-dos", {}, {}, true, u"- "_s, u"- [ ] "_s},
        {"a search in to-dos", u"x"_s, {}, true, u"- "_s, u"- [ ] "_s},
    };
    for (const int syntax : {0, 1}) {
        preferences->setMarkdownCompatibilityMode(syntax == 1);
        for (const Case &one : cases) {
            SCOPED_TRACE(testing::Message() << one.label << " in " << syntax);
            if (!one.tag.isNull()) {
                showTag(one.tag);
            } else if (one.isTodo) {
                showItem<QBTodoSidebarItem>();
            } else {
                show();
            }
            controller->searchFieldUpdated(one.search);
            const auto note = controller->createNewNote();
            ASSERT_TRUE(note);
            EXPECT_EQ(note->text(), syntax == 0 ? one.native : one.markdown);
            EXPECT_EQ(note->managedObjectContext(), &moc());
            turn();
            // It stands in the list that it was made in.
            EXPECT_TRUE(one.isTodo || one.search.size() > 0 || shown().contains(note->title()));
            controller->searchFieldUpdated({});
        }
    }
}

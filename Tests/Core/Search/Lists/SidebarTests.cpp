#include <Core/Store/StoreFixture.h>

#include <Foundation/NSRange.h>
#include <Search/Lists/QBNoteSidebarCoreController.h>
#include <Search/Lists/TagIcons.h>
#include <Search/QBNoteSearchManager.h>
#include <Store/QBStaticNote.h>

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using quib::Ref;
using Pointer = QBSidebarItem::Pointer;

/// A list of items as text: "work(plans(deep) team) home".
QString drawn(const QList<Pointer> &items)
{
    QStringList parts;
    for (const Pointer &item : items) {
        QString part = item->isSeparator() ? u"-"_s : item->title();
        if (!item->childs().isEmpty() && dynamic_cast<QBTagSidebarItem *>(item.get()) != nullptr) {
            part += u"("_s % drawn(item->childs()) % u")"_s;
        }
        parts.append(part);
    }
    return parts.join(u' ');
}

/// Performs every report on a table of its own.
class Recorder : public QBNoteSidebarCoreControllerDelegate
{
public:
    void sidebarControllerWillChangeContent(QBNoteSidebarCoreController & /*controller*/) override { ++depth; }
    void sidebarControllerDidChangeContent(QBNoteSidebarCoreController &controller) override
    {
        --depth;
        EXPECT_EQ(table, controller.sidebarItems());
    }
    void sidebarControllerDidChangeObject(QBNoteSidebarCoreController & /*controller*/, const Pointer &object,
                                          qint64 atIndex, qint64 progressiveIndex, MRTChangeType forChangeType,
                                          MRTChangeType /*progressiveChangeType*/, qint64 newIndex,
                                          qint64 newProgressiveIndex) override
    {
        EXPECT_EQ(depth, 1);
        const QStringList names{u"insert"_s, u"delete"_s, u"move"_s, u"update"_s};
        const auto index = [](qint64 at) { return at == NSNotFound ? u"-"_s : QString::number(at); };
        told.append(names[static_cast<int>(forChangeType) - 1] % u" "_s % object->title() % u" "_s % index(atIndex) %
                    u" "_s % index(newIndex));
        if (progressiveIndex != NSNotFound) {
            ASSERT_EQ(table.value(progressiveIndex), object);
            table.removeAt(progressiveIndex);
        }
        if (newProgressiveIndex != NSNotFound) {
            table.insert(newProgressiveIndex, object);
        }
    }
    void sidebarControllerRedrawItems(QBNoteSidebarCoreController & /*controller*/,
                                      const QList<Pointer> &items) override
    {
        for (const Pointer &item : items) {
            redrawn.append(item->title());
        }
    }
    void sidebarControllerDidChangeNotesOrder(QBNoteSidebarCoreController & /*controller*/) override { ++orders; }

    QList<Pointer> table;
    QStringList told;
    QStringList redrawn;
    int orders = 0;
    int depth = 0;
};

class SidebarTests : public quib::tests::StoreFixture
{
protected:
    void open()
    {
        save();
        sidebar.setManagedObjectContext(stack->managedObjectContext());
        settle();
        recorder.table = sidebar.sidebarItems();
        sidebar.setDelegate(&recorder);
    }
    ~SidebarTests() override { sidebar.setDelegate(nullptr); }

    void add(const QString &text) const { static_cast<void>(makeNote(text)); }
    /// Lets all changes be told and all look-ups answer.
    void settle()
    {
        clock.advance(1); // tags are stamped, and an equal stamp is no change
        moc().processPendingChanges();
        do {
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        } while (sidebar.isLookingUpStatus());
        moc().processPendingChanges();
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
    [[nodiscard]] QString tags() const
    {
        return drawn(sidebar.sidebarItems().mid(sidebar.staticSidebarItems().size()));
    }
    [[nodiscard]] QStringList titlesIn(const Pointer &item) const
    {
        const auto request = item->notesFetchRequest();
        if (!request) {
            return {u"no request"_s};
        }
        NSError error;
        const auto found = item->managedObjectContext()->fetch<QBNote>(*request, &error);
        EXPECT_TRUE(found.has_value()) << error.localizedDescription().toStdString();
        QStringList titles;
        for (const auto &note : *found) {
            titles.append(note->title());
        }
        return titles;
    }

    std::shared_ptr<NSUbiquitousKeyValueStore> chosen = std::make_shared<NSUbiquitousKeyValueStore>();
    Recorder recorder;
    QBNoteSidebarCoreController sidebar{chosen};
};

TEST_F(SidebarTests, TodayIsEmptyOnTheNextDay)
{
    add(u"# a"_s);
    open();
    const auto &fixed = sidebar.sidebarItems().front()->childs();
    const auto found = std::find_if(fixed.begin(), fixed.end(), [](const Pointer &item) {
        return item->uniqueIdentifier() == u"QBTodaySidebarItem"_s;
    });
    ASSERT_NE(found, fixed.end());
    const auto today = std::static_pointer_cast<QBStaticSidebarItem>(*found);
    EXPECT_TRUE(today->hasNotes());
    clock.advance(86400);
    settle();
    EXPECT_FALSE(today->hasNotes());
}

TEST_F(SidebarTests, AnotherStoreIsLookedUpThoughOneIsBeingLookedUp)
{
    add(u"# a"_s);
    open();
    sidebar.updateStaticSidebarItemStatus();
    sidebar.setManagedObjectContext(moc().shared_from_this());
    settle();
    recorder.table = sidebar.sidebarItems();
    QBNote::noteWithText(u"# b"_s, 0, moc())->setArchived(true);
    EXPECT_TRUE(moc().save());
    settle();
    EXPECT_TRUE(drawn(sidebar.sidebarItems()).contains(u"Archive"_s)) << drawn(sidebar.sidebarItems()).toStdString();
}

TEST_F(SidebarTests, ShowsTheFixedEntriesThenTheTagsInUseAsATree)
{
    add(u"# a\n#work/plans/deep #work/Team"_s);
    add(u"# b\n#home"_s);
    makeNote(u"# c\n#gone"_s)->trash();
    open();
    EXPECT_EQ(drawn(sidebar.sidebarItems()), u"Notes Trash - home work(plans(deep) team)"_s);
    const auto deep = sidebar.itemWithUniqueIdentifier(u"work/plans/deep"_s);
    ASSERT_TRUE(deep);
    EXPECT_EQ(deep->father(), sidebar.itemWithUniqueIdentifier(u"work/plans"_s));
    EXPECT_EQ(sidebar.levelForItem(*deep), 2);
    EXPECT_EQ(sidebar.levelForItem(*sidebar.notesSidebarItem()), 0);
    EXPECT_EQ(sidebar.levelForItem(*sidebar.notesSidebarItem()->childs().constFirst()), 1);
    const auto work = sidebar.itemWithUniqueIdentifier(u"work"_s);
    EXPECT_EQ(drawn(sidebar.relatedSidebarItemsForSidebarItem(deep->father())), u"work(plans(deep) team) deep"_s);
    EXPECT_TRUE(sidebar.relatedSidebarItemsForSidebarItem(sidebar.notesSidebarItem()).isEmpty());
    EXPECT_FALSE(sidebar.itemWithUniqueIdentifier(u"gone"_s));
    EXPECT_TRUE(QBNoteTag::tagWithName(u"gone"_s, moc())) << "the row remains";
    EXPECT_EQ(sidebar.itemWithUniqueIdentifier(u"QBTodaySidebarItem"_s)->father(), sidebar.notesSidebarItem());
}

TEST_F(SidebarTests, TheArchiveComesWithItsFirstNoteAndGoesWithItsLast)
{
    const auto note = makeNote(u"# a"_s);
    open();
    note->archive();
    save();
    settle();
    EXPECT_EQ(drawn(sidebar.sidebarItems()), u"Notes Archive Trash -"_s);
    EXPECT_EQ(recorder.told, QStringList{u"insert Archive - 1"_s});
    recorder.told.clear();
    note->unarchive();
    save();
    settle();
    EXPECT_EQ(drawn(sidebar.sidebarItems()), u"Notes Trash -"_s);
    EXPECT_EQ(recorder.told, QStringList{u"delete Archive 1 -"_s});
    sidebar.showArchiveSidebarItem(false);
    EXPECT_EQ(recorder.told.size(), 1);
}

TEST_F(SidebarTests, ANestedTagReachesTheListAsAnUpdateOfItsRoot)
{
    add(u"# a\n#home #work"_s);
    open();
    const auto note = makeNote(u"# b\n#work/plans"_s);
    settle();
    EXPECT_EQ(tags(), u"home work(plans)"_s);
    EXPECT_TRUE(recorder.told.contains(u"update work 4 4"_s));
    recorder.told.clear();
    note->trash();
    settle();
    EXPECT_EQ(tags(), u"home work"_s);
    EXPECT_TRUE(recorder.told.contains(u"update work 4 4"_s));
    add(u"# c\n#mid"_s);
    settle();
    EXPECT_EQ(tags(), u"home mid work"_s);
    EXPECT_TRUE(recorder.told.contains(u"insert mid - 4"_s));
}

TEST_F(SidebarTests, ATagWhoseNotesAreAllInTheTrashLeaves)
{
    const auto note = makeNote(u"# a\n#work/plans"_s);
    open();
    EXPECT_EQ(tags(), u"work(plans)"_s);
    note->trash();
    settle();
    EXPECT_EQ(tags(), QString());
    EXPECT_EQ(recorder.told, QStringList{u"delete work 3 -"_s});
    note->restoreFromTrash();
    settle();
    EXPECT_EQ(tags(), u"work(plans)"_s);
}

TEST_F(SidebarTests, OrdersTagsByTitleOrByNotesAndThenByTitle)
{
    add(u"# a\n#a2 #a10 #a10/x"_s);
    add(u"# b\n#b #a10"_s);
    add(u"# c\n#c #a10"_s);
    open();
    EXPECT_EQ(tags(), u"a2 a10(x) b c"_s);
    preferences->setTagsListSortAscending(false);
    settle();
    EXPECT_EQ(tags(), u"c b a10(x) a2"_s);
    preferences->setTagsListSortBy(u"notes"_s);
    settle();
    EXPECT_EQ(tags(), u"a10(x) a2 b c"_s) << "equal counts go by title";
    preferences->setTagsListSortAscending(true);
    settle();
    EXPECT_EQ(tags(), u"a2 b c a10(x)"_s);
    add(u"# d\n#b"_s);
    settle();
    EXPECT_EQ(tags(), u"a2 c b a10(x)"_s);
    EXPECT_EQ(recorder.orders, 0);
    preferences->setNotesListSortBy(u"title"_s);
    settle();
    EXPECT_EQ(recorder.orders, 1);
}

TEST_F(SidebarTests, EachEntryHoldsItsNotesInItsOrder)
{
    const auto stamp = [this](const Ref<QBNote> &note) {
        clock.advance(1);
        note->setModificationDate(NSDate::now());
        return note;
    };
    makeNote(u"# sample"_s)->setConflictUniqueIdentifier(u"x"_s);
    stamp(makeNote(u"# b2 \n- a to-do"_s));
    stamp(makeNote(u"# b10\n#work"_s));
    stamp(makeNote(u"# pinned"_s))->pin();
    stamp(makeNote(u"# old"_s))->setModificationDate(NSDate::now().dateByAddingTimeInterval(-3 * 86400));
    stamp(makeNote(u"# trashed"_s))->trash();
    clock.advance(1);
    stamp(makeNote(u"# trashed later"_s))->trash();
    stamp(makeNote(u"# archived"_s))->archive();
    open();
    const auto in = [this](const QString &identifier) {
        return titlesIn(sidebar.itemWithUniqueIdentifier(identifier)).join(u", "_s);
    };
    EXPECT_EQ(titlesIn(sidebar.notesSidebarItem()).join(u", "_s), u"sample, pinned, b10, b2, old"_s);
    EXPECT_EQ(titlesIn(sidebar.archiveSidebarItem()), QStringList{u"archived"_s});
    EXPECT_EQ(titlesIn(sidebar.trashSidebarItem()).join(u", "_s), u"trashed later, trashed"_s);
    EXPECT_EQ(in(u"QBUntaggedSidebarItem"_s), u"pinned, b2, sample, old"_s);
    EXPECT_EQ(in(u"QBTodoSidebarItem"_s), u"b2"_s);
    EXPECT_EQ(in(u"QBTodaySidebarItem"_s), u"pinned, b10, b2, sample"_s);
    EXPECT_EQ(in(u"work"_s), u"b10"_s);
    EXPECT_EQ(in(u"QBNotesSpacerSidebarItem"_s), u"no request"_s);
    preferences->setNotesListSortBy(u"title"_s);
    preferences->setNotesListSortAscending(true);
    EXPECT_EQ(in(u"QBUntaggedSidebarItem"_s), u"pinned, b2, old, sample"_s);
    EXPECT_EQ(in(u"QBNotesSidebarItem"_s), u"sample, pinned, b2, b10, old"_s);
    for (const auto &child : sidebar.notesSidebarItem()->childs()) {
        EXPECT_TRUE(std::static_pointer_cast<QBStaticSidebarItem>(child)->hasNotes()) << child->title().toStdString();
    }
    EXPECT_TRUE(sidebar.trashSidebarItem()->hasNotes());
}

TEST_F(SidebarTests, EntriesSayWhatTheirNotesAllow)
{
    add(u"# a\n#work"_s);
    open();
    const auto special =
        QBSpecialNotesSidebarItem::sidebarItemWithManagedObjectContext(stack->inMemoryManagedObjectContext());
    const auto allows = [](const Pointer &item) {
        QString text;
        text += item->canAddNotes() ? u'a' : u'-';
        text += item->canCreateNotes() ? u'c' : u'-';
        text += item->canDeleteNotes() ? u'd' : u'-';
        text += item->canPinNotes() ? u'p' : u'-';
        text += item->canShareNotes() ? u's' : u'-';
        text += item->groupConflictedNotes() ? u'g' : u'-';
        return text;
    };
    EXPECT_EQ(allows(sidebar.notesSidebarItem()), u"acdpsg"_s);
    EXPECT_EQ(allows(sidebar.archiveSidebarItem()), u"a-dps-"_s);
    EXPECT_EQ(allows(sidebar.trashSidebarItem()), u"a-d-s-"_s);
    for (const auto &child : sidebar.notesSidebarItem()->childs()) {
        EXPECT_EQ(allows(child), u"-cdps-"_s);
    }
    EXPECT_EQ(allows(sidebar.itemWithUniqueIdentifier(u"work"_s)), u"acdps-"_s);
    EXPECT_EQ(allows(special), u"----s-"_s);
}

TEST_F(SidebarTests, NotesDroppedOnAnEntryBecomeItsOwn)
{
    const auto note = makeNote(u"# a"_s);
    add(u"# b\n#work"_s);
    open();
    sidebar.trashSidebarItem()->addNotes({note});
    EXPECT_TRUE(note->isTrashed());
    EXPECT_FALSE(moc().hasChanges());
    sidebar.notesSidebarItem()->addNotes({note});
    EXPECT_FALSE(note->isTrashed());
    sidebar.archiveSidebarItem()->addNotes({note});
    EXPECT_TRUE(note->isArchived());
    sidebar.notesSidebarItem()->addNotes({note});
    EXPECT_FALSE(note->isArchived());
    const auto work = sidebar.itemWithUniqueIdentifier(u"work"_s);
    work->addNotes({note});
    EXPECT_TRUE(note->text().contains(u"#work"_s));
    EXPECT_FALSE(moc().hasChanges());
    work->deleteItem();
    settle();
    EXPECT_FALSE(note->text().contains(u"#work"_s));
    EXPECT_EQ(tags(), QString());
}

TEST_F(SidebarTests, SampleNotesComeInTheirOrder)
{
    const auto &memory = stack->inMemoryManagedObjectContext();
    const auto first = QBStaticNote::staticNoteWithItem({u"1"_s, u"# one"_s, u"one"_s, {}}, *memory);
    const auto second = QBStaticNote::staticNoteWithItem({u"2"_s, u"# two"_s, u"two"_s, {}}, *memory);
    first->setOrder(2);
    second->setOrder(1);
    const auto item = QBSpecialNotesSidebarItem::sidebarItemWithManagedObjectContext(memory);
    const auto found = memory->fetch<QBStaticNote>(*item->notesFetchRequest());
    ASSERT_TRUE(found && found->size() == 2);
    EXPECT_EQ(found->at(0)->title(), u"two"_s);
}

TEST_F(SidebarTests, PicturesOfTagsGoByKeywordUnlessTheUserChose)
{
    add(u"# a\n#cucina/Récipes #other #Work"_s);
    open();
    const auto icon = [this](const QString &tag) { return sidebar.itemWithUniqueIdentifier(tag)->icon(); };
    EXPECT_EQ(icon(u"cucina/Récipes"_s), u"tag-food"_s);
    EXPECT_EQ(icon(u"Work"_s), u"tag-work"_s);
    EXPECT_EQ(icon(u"other"_s), u"tag"_s);
    using Dictionary = quib::PropertyValue::Dictionary;
    const auto choice = [](const QString &key, const QString &name) {
        Dictionary values;
        values.insert(key, quib::PropertyValue(name));
        return values;
    };
    chosen->receiveValues(choice(u"QBTC_other"_s, u"tag-music"_s), NSUbiquitousKeyValueStore::ServerChange);
    settle();
    EXPECT_EQ(icon(u"other"_s), u"tag-music"_s);
    EXPECT_EQ(recorder.redrawn, QStringList{u"other"_s});
    chosen->receiveValues(choice(u"QBTC_Work"_s, u"tag-bug"_s), NSUbiquitousKeyValueStore::QuotaViolationChange);
    chosen->receiveValues(choice(u"QBXX_Work"_s, u"tag-bug"_s), NSUbiquitousKeyValueStore::ServerChange);
    settle();
    EXPECT_EQ(recorder.redrawn.size(), 1);
    EXPECT_EQ(icon(u"Work"_s), u"tag-work"_s);
    preferences->setTagsListUsesCustomTagsIcons(false);
    EXPECT_EQ(icon(u"other"_s), u"tag"_s);
}

} // namespace

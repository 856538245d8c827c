#include "StoreFixture.h"

#include <Support/TestSeed.h>
#include <Text/Folding.h>

#include <algorithm>
#include <map>
#include <set>

using namespace Qt::StringLiterals;

namespace quib::tests {

class NoteTag : public StoreFixture
{
protected:
    [[nodiscard]] Ref<QBNoteTag> tag(const QString &name) const { return QBNoteTag::tagWithName(name, moc()); }
    [[nodiscard]] static QStringList titles(const QList<Ref<QBNoteTag>> &tags)
    {
        QStringList all;
        for (const auto &each : tags) {
            all.append(each->title());
        }
        return all;
    }
};

TEST_F(NoteTag, SanitisesNames)
{
    const std::pair<QString, QString> cases[] = {
        {u" #a/b/ "_s, u"a/b"_s},
        {u"//a"_s, u"a"_s},
        {u"///"_s, u""_s},
        {u"a//b"_s, u"a//b"_s},
        {u"two words"_s, u"two words"_s},
        {u"/ / a / "_s, u"a"_s},
        {u"a\nb\tc\r"_s, u"abc"_s},
        {u""_s, u""_s},
        {u"a#b"_s, u"ab"_s},
    };
    for (const auto &[name, sanitized] : cases) {
        EXPECT_EQ(QBNoteTag::sanitizeTagName(name), sanitized) << name.toStdString();
    }
}

TEST_F(NoteTag, OneRowForSpellingsThatDifferInCaseAndMarks)
{
    const auto first = QBNoteTag::getOrCreateTagWithName(u"Café"_s, moc());
    EXPECT_EQ(QBNoteTag::getOrCreateTagWithName(u"cafe"_s, moc()), first);
    EXPECT_EQ(QBNoteTag::getOrCreateTagWithName(u" #CAFÉ/ "_s, moc()), first);
    EXPECT_EQ(first->title(), u"Café"_s);
    EXPECT_FALSE(QBNoteTag::getOrCreateTagWithName(u"//"_s, moc()));
    const auto note = makeNote(u"#CAFE #café"_s);
    EXPECT_EQ(note->tagsStrings(), QStringList{u"Café"_s});
    reopen();
    EXPECT_EQ(QBNoteTag::notesTagsInManagedObjectContext(moc()).size(), 1);
    EXPECT_TRUE(tag(u"CAFE"_s));
}

TEST_F(NoteTag, RememberedTagsFollowRenamesDeletionsAndOtherWriters)
{
    const auto a = QBNoteTag::getOrCreateTagWithName(u"a"_s, moc());
    EXPECT_EQ(tag(u"A"_s), a);
    a->setTitle(u"b"_s);
    EXPECT_FALSE(tag(u"a"_s));
    EXPECT_EQ(tag(u"b"_s), a);
    moc().deleteObject(a.get());
    EXPECT_FALSE(tag(u"b"_s));
    const auto other = QBNoteTag::getOrCreateTagWithName(u"b"_s, moc());
    EXPECT_NE(other, a);
    save();
    const auto child = stack->backgroundPrivateManagedObjectContext();
    child->performBlockAndWait([&] {
        const auto seen = QBNoteTag::tagWithName(u"B"_s, *child);
        ASSERT_TRUE(seen);
        child->deleteObject(seen.get());
        ASSERT_TRUE(child->save());
    });
    EXPECT_FALSE(tag(u"b"_s));
}

TEST_F(NoteTag, HierarchyIsTheTitleAlone)
{
    const auto note = makeNote(u"#Work/Home/x #Work/Y"_s);
    const auto work = tag(u"work"_s);
    const auto home = tag(u"work/home"_s);
    const auto x = tag(u"work/home/x"_s);
    ASSERT_TRUE(work && home && x);
    EXPECT_EQ(x->tagComponents(), (QStringList{u"work"_s, u"home"_s, u"x"_s}));
    EXPECT_EQ(x->fatherTagName(), u"work/home"_s);
    EXPECT_EQ(x->fatherTag(), home);
    EXPECT_EQ(x->rootFatherTag(), work);
    EXPECT_EQ(x->leafTagName(), u"x"_s);
    EXPECT_FALSE(work->rootFatherTag());
    EXPECT_FALSE(work->fatherTag());
    EXPECT_TRUE(work->fatherTagName().isNull());
    EXPECT_TRUE(home->isChildOfTag(*work));
    EXPECT_FALSE(x->isChildOfTag(*work));
    const QList<NSSortDescriptor> byTitle{{u"title"_s, true}};
    EXPECT_EQ(titles(work->childsAndSubChildsTagsWithSortDescriptors(byTitle)),
              (QStringList{u"Work/Home"_s, u"Work/Home/x"_s, u"Work/Y"_s}));
    EXPECT_EQ(titles(work->childTagsWithSortDescriptors(byTitle)), (QStringList{u"Work/Home"_s, u"Work/Y"_s}));
    EXPECT_EQ(titles(QBNoteTag::rootTagsInManagedObjectContext(moc())), QStringList{u"Work"_s});

    const auto accented = QBNoteTag::addNewTagWithName(u"Été/Île"_s, moc());
    EXPECT_EQ(accented->tagComponentsLowerCaseDiacritic(), (QStringList{u"ete"_s, u"ile"_s}));
    accented->setTitle(u"Other"_s);
    EXPECT_EQ(accented->tagComponentsLowerCaseDiacritic(), QStringList{u"other"_s});
}

TEST_F(NoteTag, ListsHoldTagsOfActiveNotesInNaturalOrder)
{
    const auto active = makeNote(u"#b10 #b9 #a"_s);
    const auto archived = makeNote(u"#gone"_s);
    archived->archive();
    EXPECT_EQ(titles(QBNoteTag::populatedNotesTagsInManagedObjectContext(moc())),
              (QStringList{u"a"_s, u"b9"_s, u"b10"_s}));
    QBNoteTag::deleteAllUnusedTagsInManagedObjectContext(moc());
    EXPECT_TRUE(tag(u"gone"_s)) << "a tag of archived notes stays";
    EXPECT_EQ(tag(u"gone"_s)->untrashedNotesCount(), 0);
    EXPECT_EQ(tag(u"a"_s)->untrashedNotesCount(), 1);
    archived->updateNoteWithText(u"none"_s, 0);
    QBNoteTag::deleteAllUnusedTagsInManagedObjectContext(moc());
    EXPECT_FALSE(tag(u"gone"_s));
}

TEST_F(NoteTag, DuplicateRowsAreMerged)
{
    const auto a = makeNote(u"a"_s);
    const auto b = makeNote(u"b"_s);
    a->setTags({QBNoteTag::addNewTagWithName(u"Tag"_s, moc())});
    b->setTags({QBNoteTag::addNewTagWithName(u"tág"_s, moc())});
    save();
    QBNoteTag::mergeDuplicateTagsInInManagedObjectContext(moc());
    const auto all = QBNoteTag::notesTagsInManagedObjectContext(moc());
    ASSERT_EQ(all.size(), 1);
    EXPECT_EQ(all.constFirst()->notes(), (QSet{a, b}));
}

TEST_F(NoteTag, AddingWritesTheTagIntoNotesThatLackIt)
{
    const auto has = makeNote(u"x #two words#"_s);
    const auto lacks = makeNote(u"y"_s);
    const auto made = lacks->modificationDate();
    clock.advance(60);
    tag(u"two words"_s)->addTagToNotes({has, lacks}, 0);
    EXPECT_EQ(has->text(), u"x #two words#"_s);
    EXPECT_EQ(lacks->tagsStrings(), QStringList{u"two words"_s});
    EXPECT_EQ(lacks->modificationDate(), made);
}

struct RenameCase
{
    QString tag;
    QString newName;
    QStringList before;
    QStringList after;
    QString survivor; // empty: nothing is done
};

TEST_F(NoteTag, RenamesInTheTextOfAllNotes)
{
    const RenameCase cases[] = {
        {u"a"_s, u"b"_s, {u"#a x"_s, u"#a/c y"_s, u"#ab z"_s}, {u"#b x"_s, u"#b/c y"_s, u"#ab z"_s}, u"b"_s},
        {u"a"_s, u"b"_s, {u"#a"_s, u"#b"_s}, {u"#b"_s, u"#b"_s}, u"b"_s},
        {u"a"_s, u"A"_s, {u"#a"_s}, {u"#A"_s}, u"A"_s},
        {u"a"_s, u"a"_s, {u"#a"_s}, {u"#a"_s}, QString()},
        {u"a"_s, u""_s, {u"#a"_s}, {u"#a"_s}, QString()},
        {u"a"_s, u"//"_s, {u"#a"_s}, {u"#a"_s}, QString()},
        {u"a"_s, u"two words"_s, {u"#a z"_s}, {u"#two words# z"_s}, u"two words"_s},
        {u"a"_s, u"a/x"_s, {u"#a"_s, u"#a/x q"_s}, {u"#a/x"_s, u"#a/x/x q"_s}, u"a/x"_s},
        {u"a/x"_s, u"a"_s, {u"#a/x"_s, u"#a/x/x q"_s}, {u"#a"_s, u"#a/x q"_s}, u"a"_s},
        {u"caffè"_s, u"tea"_s, {u"#Caffe #CAFFÈ/latte"_s}, {u"#tea #tea/latte"_s}, u"tea"_s},
    };
    for (const RenameCase &each : cases) {
        SCOPED_TRACE(each.tag.toStdString() + " -> " + each.newName.toStdString());
        QList<Ref<QBNote>> notes;
        for (const QString &text : each.before) {
            notes.append(makeNote(text));
        }
        const auto made = notes.constFirst()->modificationDate();
        clock.advance(60);
        const auto renamed = tag(each.tag);
        ASSERT_TRUE(renamed);
        const auto survivor = renamed->renameTagWithTagNamed(each.newName, 0);
        ASSERT_EQ(static_cast<bool>(survivor), !each.survivor.isEmpty());
        if (survivor) {
            EXPECT_EQ(survivor->title(), each.survivor);
        }
        for (qsizetype i = 0; i < notes.size(); ++i) {
            EXPECT_EQ(notes.at(i)->text(), each.after.at(i));
        }
        EXPECT_EQ(notes.constFirst()->modificationDate(), made);
        for (const auto &note : notes) {
            moc().deleteObject(note.get());
        }
        QBNoteTag::deleteAllUnusedTagsInManagedObjectContext(moc());
        save();
    }
}

TEST_F(NoteTag, RenameOfSomeNotesLeavesTheOthers)
{
    const auto one = makeNote(u"#a"_s);
    const auto two = makeNote(u"#a"_s);
    tag(u"a"_s)->renameTagWithTagNamed(u"b"_s, QList{one}, 0);
    EXPECT_EQ(one->text(), u"#b"_s);
    EXPECT_EQ(two->text(), u"#a"_s);
}

TEST_F(NoteTag, DeletingLeavesTheFatherOrNothing)
{
    const auto deep = makeNote(u"x #a/b/c y"_s);
    tag(u"a/b/c"_s)->deleteTagWithSyntax(0);
    EXPECT_EQ(deep->text(), u"x #a/b y"_s);
    const auto below = makeNote(u"p #a/d q"_s);
    tag(u"a"_s)->deleteTagWithSyntax(0);
    EXPECT_EQ(deep->text(), u"x y"_s);
    EXPECT_EQ(below->text(), u"p q"_s);
    EXPECT_TRUE(deep->tags().isEmpty());
}

TEST_F(NoteTag, RandomRenamesAgreeWithAModelOfSets)
{
    // The model: each note is a set of single-word paths; a rename maps prefixes.
    const TestSeed seed;
    auto random = seed.generator();
    const QStringList names{u"a"_s, u"b"_s, u"a/x"_s, u"a/y"_s, u"b/x"_s, u"c"_s, u"c/x/z"_s};
    const auto pick = [&] { return names.at(static_cast<qsizetype>(random() % static_cast<unsigned>(names.size()))); };
    std::vector<std::set<QString>> model;
    QList<Ref<QBNote>> notes;
    for (int i = 0; i < 12; ++i) {
        std::set<QString> paths{pick(), pick()};
        QString text = u"text"_s;
        for (const QString &path : paths) {
            text += u" #"_s + path;
        }
        notes.append(makeNote(text));
        model.push_back(paths);
    }
    const auto withAncestors = [](const std::set<QString> &paths) {
        std::set<QString> all;
        for (QString path : paths) {
            for (;;) {
                all.insert(path);
                const qsizetype slash = path.lastIndexOf(u'/');
                if (slash < 0) {
                    break;
                }
                path.truncate(slash);
            }
        }
        return all;
    };
    for (int step = 0; step < 60; ++step) {
        const QString from = pick();
        const QString to = pick();
        const auto renamed = tag(from);
        if (!renamed || renamed->untrashedNotesCount() == 0 || renamed->title() != from) {
            continue;
        }
        renamed->renameTagWithTagNamed(to, 0);
        for (auto &paths : model) {
            std::set<QString> mapped;
            for (const QString &path : paths) {
                const bool isHit = from != to && (path == from || path.startsWith(from + u'/'));
                mapped.insert(isHit ? to + path.mid(from.size()) : path);
            }
            paths = mapped;
        }
        QBNoteTag::deleteAllUnusedTagsInManagedObjectContext(moc());
        for (qsizetype i = 0; i < notes.size(); ++i) {
            const QStringList strings = notes.at(i)->tagsStrings();
            ASSERT_EQ(std::set<QString>(strings.cbegin(), strings.cend()),
                      withAncestors(model.at(static_cast<size_t>(i))))
                << "step " << step << ": " << from.toStdString() << " -> " << to.toStdString() << " in "
                << notes.at(i)->text().toStdString();
        }
    }
}

TEST_F(NoteTag, OneNoteMayHaveVeryManyTags)
{
    QString text;
    for (int i = 0; i < 100'000; ++i) {
        text += u"#t"_s + QString::number(i) + u' ';
    }
    const auto note = makeNote(text);
    EXPECT_EQ(note->tagsCount(), 100'000);
    note->updateNoteWithText(text, 0);
    EXPECT_EQ(QBNoteTag::notesTagsInManagedObjectContext(moc()).size(), 100'000);
}

} // namespace quib::tests

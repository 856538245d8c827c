#include "StoreFixture.h"

#include <Store/QBNoteFileServerData.h>
#include <Store/QBStoreChecker.h>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace quib::tests {

class StoreChecker : public StoreFixture
{
protected:
    QList<QBStoreFinding> check(bool repair = false)
    {
        save();
        NSProgress progress;
        NSError error;
        const auto findings = QBStoreChecker(*stack).checkStore(repair, progress, &error);
        EXPECT_TRUE(findings) << error.localizedDescription().toStdString();
        return findings.value_or(QList<QBStoreFinding>());
    }
    /// What is wrong is told, repaired when asked for, and then gone.
    void expectRepairable(QBStoreFinding::Kind kind)
    {
        const auto found = check();
        ASSERT_EQ(found.size(), 1);
        EXPECT_EQ(found.constFirst().kind, kind);
        EXPECT_FALSE(found.constFirst().isRepaired);
        const auto repaired = check(/*repair=*/true);
        ASSERT_EQ(repaired.size(), 1);
        EXPECT_TRUE(repaired.constFirst().isRepaired);
        EXPECT_TRUE(check().isEmpty());
    }
    [[nodiscard]] Ref<QBNoteFile> import(const QString &name) const
    {
        return QBNoteFile::factoryNoteFileForFileURL(userFile(name, "bytes"), moc());
    }
};

TEST_F(StoreChecker, ASoundStoreHasNoFindings)
{
    const auto file = import(u"f.txt"_s);
    const auto note = makeNote(u"# T #a/b\n- x\n```\n- y\n```\n"_s + file->textRepresentation());
    const auto trashed = makeNote(u"#gone [image:NOBODY/x.png]"_s);
    trashed->trash();
    EXPECT_TRUE(check().isEmpty());
    note->updateAttributesForNewSyntax(0);
    EXPECT_EQ(note->todoIncompleted(), 2);
    EXPECT_TRUE(check().isEmpty()) << "a change of the syntax counts code too";
}

TEST_F(StoreChecker, WrongDerivedFieldsAreRepairedWithoutTouchingTheText)
{
    const auto note = makeNote(u"# T #a\n- x"_s);
    const auto clockBytes = note->vectorClock();
    note->setTitle(u"wrong"_s);
    note->setTags({});
    expectRepairable(QBStoreFinding::Kind::DerivedFields);
    EXPECT_EQ(note->title(), QBNote::parseTitleFromText(note->text()));
    EXPECT_EQ(note->tagsStrings(), QStringList{u"a"_s});
    EXPECT_EQ(note->vectorClock(), clockBytes);
}

TEST_F(StoreChecker, LinksToWhatIsGoneAreRemoved)
{
    const auto note = makeNote(u"#tag"_s);
    save();
    const auto *tags = note->entity()->relationshipNamed(QBNoteRelationships::tags);
    auto &store = *moc().persistentStoreCoordinator()->persistentStore();
    const NSManagedObjectID ghostTag(tags->destinationEntity, 4711);
    const NSManagedObjectID ghostNote(note->entity(), 4712);
    SaveRequest request;
    request.joinChanges.append({tags, note->objectID(), ghostTag, /*isInsertion=*/true});
    request.joinChanges.append({tags, ghostNote, note->tags().constBegin()->get()->objectID(), /*isInsertion=*/true});
    ASSERT_EQ(store.save(request).outcome, SaveResult::Outcome::Saved);
    const auto found = check();
    ASSERT_GE(found.size(), 2);
    EXPECT_EQ(found.at(0).kind, QBStoreFinding::Kind::DanglingLink);
    EXPECT_EQ(found.at(1).kind, QBStoreFinding::Kind::DanglingLink);
    check(/*repair=*/true);
    EXPECT_TRUE(check().isEmpty());
    EXPECT_EQ(note->tagsStrings(), QStringList{u"tag"_s});
}

TEST_F(StoreChecker, DuplicateTagsAreMerged)
{
    const auto note = makeNote(u"#tag"_s);
    QBNoteTag::addNewTagWithName(u"Tàg"_s, moc());
    expectRepairable(QBStoreFinding::Kind::DuplicateTag);
    EXPECT_EQ(QBNoteTag::notesTagsInManagedObjectContext(moc()).size(), 1);
}

TEST_F(StoreChecker, AMissingBinaryIsToldAndFetchedAgainWhereItCanBe)
{
    const auto file = import(u"f.txt"_s);
    const auto note = makeNote(file->textRepresentation());
    save();
    ASSERT_TRUE(QFile::remove(file->fileURL()->toLocalFile()));
    const auto found = check(/*repair=*/true);
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found.constFirst().kind, QBStoreFinding::Kind::MissingBinary);
    EXPECT_FALSE(found.constFirst().isRepaired);
    file->setUploaded(true);
    expectRepairable(QBStoreFinding::Kind::MissingBinary);
    EXPECT_FALSE(file->downloaded());
}

TEST_F(StoreChecker, ALostAttachmentGetsItsRowBack)
{
    const auto file = import(u"f.txt"_s);
    const QString marker = file->textRepresentation();
    const QString stored = file->fileURL()->toLocalFile();
    const QString identifier = file->uniqueIdentifier();
    const auto note = makeNote(u"x "_s + marker);
    // As after a crash between the copy and the save: text and folder, no row.
    moc().deleteObject(file.get());
    note->repairDerivedFieldsWithSyntax(0);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(stored).path()));
    QFile lost(stored);
    ASSERT_TRUE(lost.open(QIODevice::WriteOnly));
    lost.close();
    expectRepairable(QBStoreFinding::Kind::LostAttachment);
    EXPECT_EQ(note->filesCount(), 1);
    EXPECT_EQ(note->orderedFiles().constFirst()->uniqueIdentifier(), identifier);
    EXPECT_EQ(note->text(), u"x "_s + marker);
}

TEST_F(StoreChecker, AttachmentsThatReachedNoTextAreForgottenAfterADay)
{
    const auto forgotten = import(u"forgotten.txt"_s);
    const auto taken = import(u"taken.txt"_s);
    const auto inCode = import(u"code.txt"_s);
    const auto inTrash = import(u"trash.txt"_s);
    const auto broken = import(u"broken.txt"_s);
    const auto unused = import(u"unused.txt"_s);
    const auto uploaded = import(u"uploaded.txt"_s);
    const auto known = import(u"known.txt"_s);
    const auto note =
        makeNote(taken->textRepresentation() + u"\n```\n"_s + inCode->textRepresentation() + u"\n```\n"_s);
    makeNote(u"x\n`"_s + inTrash->textRepresentation() + u'`')->trash();
    makeNote(u"[file:"_s + broken->uniqueIdentifier() + u"/a\nb.txt]"_s)->archive();
    unused->setUnused(true);
    uploaded->setUploaded(true);
    known->setServerData(
        moc().insertNewObjectForEntityForName(QBNoteFileServerData::entityName()).as<QBNoteFileServerData>());
    const double real = static_cast<double>(QDateTime::currentSecsSinceEpoch());
    clock.setNow(NSDate::dateWithTimeIntervalSince1970(real + 60));
    EXPECT_TRUE(check().isEmpty()) << "it may be in an editor that is open";
    clock.setNow(NSDate::dateWithTimeIntervalSince1970(real + 2.0 * 24 * 60 * 60));
    expectRepairable(QBStoreFinding::Kind::ForgottenAttachment);
    EXPECT_TRUE(forgotten->unused());
    for (const auto &file : {taken, inCode, inTrash, broken, uploaded, known}) {
        EXPECT_FALSE(file->unused()) << file->filename().toStdString();
    }
    // A text that takes it up keeps it.
    note->appendNoteWithText(forgotten->textRepresentation(), 0);
    EXPECT_FALSE(forgotten->unused());
}

TEST_F(StoreChecker, OnlyOldFoldersAreOrphans)
{
    const auto file = import(u"f.txt"_s);
    const auto note = makeNote(file->textRepresentation());
    const QString orphan = QFileInfo(file->fileURL()->toLocalFile()).path() + u"/../ORPHAN"_s;
    ASSERT_TRUE(QDir().mkpath(orphan));
    const double real = static_cast<double>(QDateTime::currentSecsSinceEpoch());
    clock.setNow(NSDate::dateWithTimeIntervalSince1970(real + 60));
    EXPECT_TRUE(check().isEmpty()) << "it may be an import that is under way";
    clock.setNow(NSDate::dateWithTimeIntervalSince1970(real + 2.0 * 24 * 60 * 60));
    expectRepairable(QBStoreFinding::Kind::OrphanedFolder);
    EXPECT_FALSE(QFileInfo::exists(orphan));
}

} // namespace quib::tests

#include "XurlFixture.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

using namespace Qt::StringLiterals;

namespace quib::tests {
namespace {

/// "Hello", as base 64 in a URL.
QString hello()
{
    return u"SGVsbG8%3D"_s;
}

QString noteMissing()
{
    return u"The note could not be found"_s;
}

/// Notes of every kind an action may meet.
class XurlNotes : public XurlFixture
{
protected:
    XurlNotes()
    {
        static_cast<void>(makeNote(u"# Plan\nfirst\n## Shopping List\nmilk\n## Later\nsleep"_s));
        makeNote(u"# Gone\nold"_s)->trash();
        makeNote(u"# Kept\nold"_s)->archive();
        save();
    }
};

class XurlNoteCases : public XurlNotes, public testing::WithParamInterface<ActionCase>
{
};

TEST_P(XurlNoteCases, CallsBackAndWorksInWindowsInThisOrder)
{
    EXPECT_EQ(run(GetParam().action, GetParam().query), GetParam().log);
    EXPECT_TRUE(isDurable());
}

INSTANTIATE_TEST_SUITE_P(
    OpenNote, XurlNoteCases,
    testing::Values(
        ActionCase{u"NothingNamed"_s, u"open-note"_s, {}, {u"error 1 Note identifier or title required"_s}},
        ActionCase{u"EmptyNames"_s, u"open-note"_s, u"id=&title="_s, {u"error 1 Note identifier or title required"_s}},
        ActionCase{u"UnknownIdentifier"_s, u"open-note"_s, u"id=x"_s, {u"error 2 "_s + noteMissing()}},
        ActionCase{
            u"IdentifierGoesBeforeTitle"_s, u"open-note"_s, u"id=x&title=Plan"_s, {u"error 2 "_s + noteMissing()}},
        ActionCase{u"ByTitleInAnyCase"_s,
                   u"open-note"_s,
                   u"title=plan"_s,
                   {u"search []"_s, u"show Plan"_s, u"success"_s, u"main"_s}},
        ActionCase{u"ByIdentifier"_s,
                   u"open-note"_s,
                   u"id={Plan}"_s,
                   {u"search []"_s, u"show Plan"_s, u"success"_s, u"main"_s}},
        ActionCase{u"HeaderInAnyCase"_s,
                   u"open-note"_s,
                   u"id={Plan}&header=%20shopping%20LIST%0A"_s,
                   {u"search []"_s, u"show Plan"_s, u"scroll [shopping list][]"_s, u"success"_s, u"main"_s}},
        ActionCase{
            u"BadHeaderOpensAllTheSame"_s,
            u"open-note"_s,
            u"id={Plan}&header=nowhere"_s,
            {u"error 1 The note header could not be found"_s, u"search []"_s, u"show Plan"_s, u"success"_s, u"main"_s}},
        ActionCase{u"Attachment"_s,
                   u"open-note"_s,
                   u"id={Plan}&attachment=photo.png"_s,
                   {u"search []"_s, u"show Plan"_s, u"scroll [][photo.png]"_s, u"success"_s, u"main"_s}},
        ActionCase{u"NewWindow"_s,
                   u"open-note"_s,
                   u"id={Plan}&new_window=yes&show_window=no"_s,
                   {u"detach Plan"_s, u"success"_s}},
        ActionCase{u"FloatingAndEdited"_s,
                   u"open-note"_s,
                   u"id={Plan}&new_window=YES&float=yes&edit=yes"_s,
                   {u"detach Plan floating"_s, u"edit Plan"_s, u"success"_s, u"main"_s}},
        ActionCase{u"TrashedIsNotFound"_s, u"open-note"_s, u"id={Gone}"_s, {u"error 2 "_s + noteMissing()}},
        ActionCase{u"TrashedTitleIsNotFound"_s, u"open-note"_s, u"title=Gone"_s, {u"error 2 "_s + noteMissing()}},
        ActionCase{u"TrashedWhenAskedForAndNeverEdited"_s,
                   u"open-note"_s,
                   u"id={Gone}&exclude_trashed=no&edit=yes"_s,
                   {u"search []"_s, u"show Gone"_s, u"success"_s, u"main"_s}},
        ActionCase{u"ArchivedIsNeverEdited"_s,
                   u"open-note"_s,
                   u"title=Kept&edit=yes"_s,
                   {u"search []"_s, u"show Kept"_s, u"success"_s, u"main"_s}}),
    nameOfCase);

INSTANTIATE_TEST_SUITE_P(
    AddText, XurlNoteCases,
    testing::Values(
        ActionCase{u"NothingNamed"_s, u"add-text"_s, u"text=x"_s, {u"error 1 Note identifier or title required"_s}},
        ActionCase{u"NoText"_s, u"add-text"_s, u"id={Plan}"_s, {u"error 1 Text provided empty"_s}},
        ActionCase{u"UnknownIdentifier"_s, u"add-text"_s, u"id=x&text=x"_s, {u"error 2 "_s + noteMissing()}},
        ActionCase{u"Trashed"_s, u"add-text"_s, u"id={Gone}&text=x"_s, {u"error 2 "_s + noteMissing()}},
        // With the wrong code, unlike the same words elsewhere.
        ActionCase{
            u"BadHeader"_s, u"add-text"_s, u"id={Plan}&text=x&header=nowhere"_s, {u"error 1 "_s + noteMissing()}},
        ActionCase{u"UnknownModeIsReportedTwice"_s,
                   u"add-text"_s,
                   u"id={Plan}&text=x&mode=sideways"_s,
                   {u"error 1 Unrecognized mode provided"_s, u"error 4 Unable to write note"_s}},
        ActionCase{u"TellsBeforeItShows"_s,
                   u"add-text"_s,
                   u"id={Plan}&text=x&header=later"_s,
                   {u"success"_s, u"search []"_s, u"show Plan"_s, u"scroll [later][]"_s, u"main"_s}},
        ActionCase{u"NeverFloats"_s,
                   u"add-text"_s,
                   u"id={Plan}&text=x&new_window=yes&float=yes"_s,
                   {u"success"_s, u"detach Plan"_s, u"main"_s}},
        ActionCase{
            u"WithoutOpening"_s, u"add-text"_s, u"id={Plan}&text=x&open_note=no&show_window=no"_s, {u"success"_s}}),
    nameOfCase);

INSTANTIATE_TEST_SUITE_P(
    AddFile, XurlNoteCases,
    testing::Values(
        ActionCase{u"NoFile"_s, u"add-file"_s, u"filename=a&id={Plan}"_s, {u"error 1 Base64 file not provided"_s}},
        ActionCase{
            u"CutFile"_s, u"add-file"_s, u"file=SGVsbG8&filename=a"_s, {u"error 1 File not in a valid base64 form"_s}},
        ActionCase{u"NothingInFile"_s,
                   u"add-file"_s,
                   u"file=%21%21%21%21&filename=a"_s,
                   {u"error 1 File not in a valid base64 form"_s}},
        ActionCase{u"NoName"_s, u"add-file"_s, u"file="_s + hello(), {u"error 1 File name not provied"_s}},
        ActionCase{u"UnknownIdentifier"_s,
                   u"add-file"_s,
                   u"filename=a&id=x&file="_s + hello(),
                   {u"error 2 "_s + noteMissing()}},
        ActionCase{
            u"UnknownTitle"_s, u"add-file"_s, u"filename=a&title=x&file="_s + hello(), {u"error 2 "_s + noteMissing()}},
        ActionCase{u"BadHeader"_s,
                   u"add-file"_s,
                   u"filename=a&id={Plan}&header=nowhere&file="_s + hello(),
                   {u"error 1 "_s + noteMissing()}},
        ActionCase{u"UnknownModeIsReportedTwice"_s,
                   u"add-file"_s,
                   u"filename=a&id={Plan}&mode=sideways&file="_s + hello(),
                   {u"error 1 Unrecognized mode provided"_s, u"error 4 Unable to write note"_s}},
        ActionCase{u"NameOfWhichNothingIsLeft"_s,
                   u"add-file"_s,
                   u"filename=%2F%0A&id={Plan}&file="_s + hello(),
                   {u"error 4 Unable to write note"_s}},
        ActionCase{u"TrashedNotesToo"_s,
                   u"add-file"_s,
                   u"filename=a&id={Gone}&file="_s + hello(),
                   {u"success"_s, u"search []"_s, u"show Gone"_s, u"main"_s}}),
    nameOfCase);

TEST_F(XurlNotes, AVisibleNoteKeepsTheSearch)
{
    windows.isEveryNoteVisible = true;
    EXPECT_EQ(run(u"open-note"_s, u"title=Plan"_s), QStringList({u"show Plan"_s, u"success"_s, u"main"_s}));
}

TEST_F(XurlNotes, OpenNoteTellsTextAndDates)
{
    const auto note = noteTitled(u"Plan"_s);
    note->setCreationDate(std::nullopt);
    run(u"open-note"_s, u"title=Plan"_s);
    EXPECT_EQ(result, IACParameters({{u"note"_s, note->text()},
                                     {u"identifier"_s, note->uniqueIdentifier()},
                                     {u"title"_s, u"Plan"_s},
                                     {u"is_trashed"_s, u"no"_s},
                                     {u"modificationDate"_s, u"2017-07-14T02:40:00Z"_s},
                                     {u"creationDate"_s, u""_s}}));
    run(u"open-note"_s, u"title=Gone&exclude_trashed=no"_s);
    EXPECT_EQ(result.value(u"is_trashed"_s), u"yes"_s);
}

struct ModeCase
{
    QString query;
    QString text;
};

TEST_F(XurlNotes, AddTextPutsTheTextWhereTheModeSays)
{
    const QString whole = textOf(u"Plan"_s);
    const ModeCase cases[] = {
        {{}, whole + u"\nnew"},
        {u"mode=append"_s, whole + u"\nnew"},
        {u"mode=prepend"_s, u"# Plan\nnew\nfirst\n## Shopping List\nmilk\n## Later\nsleep"_s},
        {u"mode=replace"_s, u"# Plan\nnew"_s},
        {u"mode=replace_all"_s, u"new"_s},
        {u"header=shopping list"_s, u"# Plan\nfirst\n## Shopping List\nmilk\nnew\n## Later\nsleep"_s},
        {u"header=shopping list&mode=prepend"_s, u"# Plan\nfirst\n## Shopping List\nnew\nmilk\n## Later\nsleep"_s},
        {u"header=shopping list&mode=replace"_s, u"# Plan\nfirst\n## Shopping List\nnew\n## Later\nsleep"_s},
        {u"header=shopping list&mode=replace_all"_s, u"new"_s},
        {u"tags=home,two words"_s, whole + u"\nnew\n\n#home #two words#"},
    };
    const auto note = noteTitled(u"Plan"_s);
    for (const ModeCase &given : cases) {
        note->updateNoteWithText(whole, 0);
        run(u"add-text"_s, u"text=new&id=" + note->uniqueIdentifier() + u'&' + given.query);
        EXPECT_EQ(note->text(), given.text) << given.query.toStdString();
        EXPECT_EQ(result, IACParameters({{u"note"_s, given.text}, {u"title"_s, note->title()}}));
    }
}

TEST_F(XurlNotes, AddTextUsesTheSyntaxOfTheProfile)
{
    preferences->setMarkdownCompatibilityMode(true);
    run(u"add-text"_s, u"id={Plan}&text=- [ ] milk"_s);
    EXPECT_EQ(noteTitled(u"Plan"_s)->todoIncompleted(), 1);
}

TEST_F(XurlNotes, AddTextToATitleThatNoNoteHasMakesTheNote)
{
    EXPECT_EQ(run(u"add-text"_s, u"title=Fresh&text=x"_s),
              QStringList({u"success"_s, u"search []"_s, u"show Fresh"_s, u"main"_s}));
    EXPECT_EQ(textOf(u"Fresh"_s), u"# Fresh\nx"_s);
    // One in the trash does not count, unless it is asked for.
    run(u"add-text"_s, u"title=Gone&text=x"_s);
    EXPECT_EQ(QBNote::untrashedNoteWithTitle(u"Gone"_s, moc())->text(), u"# Gone\nx"_s);
}

TEST_F(XurlNotes, ANoteMadeForATitleStaysWhenALaterStepFails)
{
    EXPECT_EQ(run(u"add-text"_s, u"title=Fresh&text=x&header=y"_s), QStringList{u"error 1 "_s + noteMissing()});
    clock.advance(0); // the next turn of the loop
    EXPECT_TRUE(isDurable());
    EXPECT_EQ(textOf(u"Fresh"_s), u"# Fresh\n"_s);
}

TEST_F(XurlNotes, TagsAloneAreATextToAdd)
{
    run(u"add-text"_s, u"id={Plan}&tags=home"_s);
    EXPECT_EQ(sortedTags(*noteTitled(u"Plan"_s)), QStringList{u"home"_s});
}

/// The names and bytes of all attachments on the disk.
QMap<QString, QByteArray> storedFiles(const QString &root)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        if (it.filePath().contains(u"/Local Files/") && file.open(QIODevice::ReadOnly)) {
            files.insert(it.fileName(), file.readAll());
        }
    }
    return files;
}

TEST_F(XurlNotes, AddFileWithoutANameForTheNoteMakesOne)
{
    run(u"add-file"_s, u"filename=hello.txt&title=%20&file="_s + hello());
    const auto files = QBNoteFile::filesInManagedObjectContext(moc(), nullptr);
    ASSERT_EQ(files.size(), 1);
    const auto note = files.constFirst()->note();
    ASSERT_TRUE(note);
    EXPECT_EQ(note->text(), QString(u"[file:" % files.constFirst()->uniqueIdentifier() % u"/hello.txt]"));
    EXPECT_EQ(result, IACParameters({{u"note"_s, note->text()}}));
    EXPECT_TRUE(note->hasFiles());
    EXPECT_EQ(storedFiles(folder.path()), (QMap<QString, QByteArray>{{u"hello.txt"_s, "Hello"}}));
}

TEST_F(XurlNotes, AFilesExtensionDecidesItsMarker)
{
    const std::pair<QString, QString> cases[] = {
        {u"a.png"_s, u"[image:"_s}, {u"a.JPG"_s, u"[image:"_s}, {u"a.jpeg"_s, u"[image:"_s}, {u"a.gif"_s, u"[image:"_s},
        {u"a.tiff"_s, u"[file:"_s}, {u"a.txt"_s, u"[file:"_s},  {u"png"_s, u"[file:"_s},
    };
    for (const auto &[name, marker] : cases) {
        run(u"add-file"_s, u"filename=" + name + u"&file=" + hello());
        EXPECT_TRUE(result.value(u"note"_s).startsWith(marker)) << name.toStdString();
    }
}

TEST_F(XurlNotes, AFileGoesIntoASectionToo)
{
    run(u"add-file"_s, u"id={Plan}&header=later&mode=prepend&filename=a.txt&file="_s + hello());
    EXPECT_TRUE(textOf(u"Plan"_s).contains(QStringView(u"## Later\n[file:")));
    EXPECT_TRUE(textOf(u"Plan"_s).endsWith(u"/a.txt]\nsleep"));
}

TEST_F(XurlNotes, UnknownCharactersInBase64ArePassedOver)
{
    for (const QString &file : {u"SGVs%0D%0AbG8%3D"_s, u"%20SG-Vs_bG8*%3D%00"_s, u"é%E2%82%ACSGVsbG8%3D"_s}) {
        run(u"add-file"_s, u"filename=a.bin&file="_s + file);
        EXPECT_EQ(storedFiles(folder.path()).value(u"a.bin"_s), "Hello") << file.toStdString();
    }
}

TEST_F(XurlNotes, AFileThatNoNoteTakesIsNotKept)
{
    run(u"add-file"_s, u"id={Plan}&mode=sideways&filename=a.txt&file="_s + hello());
    run(u"add-file"_s, u"id={Plan}&header=nowhere&filename=b.txt&file="_s + hello());
    clock.advance(0);
    EXPECT_TRUE(QBNoteFile::filesInManagedObjectContext(moc(), nullptr).isEmpty());
    EXPECT_TRUE(storedFiles(folder.path()).isEmpty());
}

TEST_F(XurlNotes, NoNameOfAFileLeavesItsFolder)
{
    const QString names[] = {
        u"../../../../evil.txt"_s,
        u"/etc/evil.txt"_s,
        u"..\\..\\evil.txt"_s,
        u".."_s,
        u"."_s,
        u"C:evil.txt"_s,
        QString(u"evil\0.txt"_s),
        u"evil\n]# Not a header.txt"_s,
        u"[]"_s,
        u"~/evil.txt"_s,
        u"%2e%2e%2fevil.txt"_s,
        u"\u202etxt.exe"_s,
        QString(QChar(0xd83d)) + u"half.txt",
        QString(5'000, u'x') + u".txt",
        u"\u2028line.txt"_s,
    };
    const QString root = folder.path();
    for (const QString &name : names) {
        run(u"add-file"_s, IACParameters{{u"filename"_s, name}, {u"file"_s, u"SGVsbG8="_s}});
        EXPECT_EQ(log.constLast() == u"error 4 Unable to write note", !log.contains(u"success"_s));
        if (log.contains(u"success"_s)) {
            // The marker is one line, and names the file that is there.
            EXPECT_FALSE(result.value(u"note"_s).contains(u'\n'));
            const auto file = QBNoteFile::noteFileWithTextRepresentation(result.value(u"note"_s), moc());
            ASSERT_TRUE(file) << name.toStdString();
            EXPECT_TRUE(file->note());
            const QString path = QFileInfo(file->fileURL()->toLocalFile()).canonicalFilePath();
            EXPECT_TRUE(path.startsWith(QFileInfo(root).canonicalFilePath() + u"/")) << path.toStdString();
            EXPECT_TRUE(path.contains(QString(u"/Local Files/Note Files/" % file->uniqueIdentifier() % u'/')));
        }
    }
    QDirIterator it(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        EXPECT_TRUE(path.contains(u"/Local Files/") || !path.contains(u"evil")) << path.toStdString();
    }
}

TEST_F(XurlNotes, ATemporaryFileIsNotLeftBehind)
{
    run(u"add-file"_s, u"filename=hello.txt&file="_s + hello());
    QDirIterator it(Profile::temporaryFolder(), {u"hello.txt"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        EXPECT_TRUE(it.next().contains(u"/Local Files/")) << it.filePath().toStdString();
    }
}

} // namespace
} // namespace quib::tests

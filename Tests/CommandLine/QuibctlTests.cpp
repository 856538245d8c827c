// quibctl as a person meets it: commands run as programs on a clean profile.

#include "QuibctlRunner.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

QStringList titles(const QuibctlResult &result)
{
    QStringList titles;
    for (const auto &note : result.json().array()) {
        titles.append(note.toObject().value(u"title"_s).toString());
    }
    titles.sort();
    return titles;
}

TEST(Quibctl, ShowsHowATextIsStyledAndEdited)
{
    const QuibctlRunner quib;
    const auto styled = quib.run({u"inspect"_s, u"style"_s}, "# T\n*b* #tag").json().object();
    EXPECT_EQ(styled.value(u"buffer"_s).toString(), u"\ufffc T\n*b* \ufffc#tag\ufffc"_s);
    EXPECT_EQ(styled.value(u"expanded"_s).toString(), u"# T\n*b* #tag"_s);
    ASSERT_EQ(styled.value(u"attachments"_s).toArray().size(), 3);
    EXPECT_EQ(
        styled.value(u"attachments"_s).toArray().at(0).toObject(),
        (QJsonObject{{u"location"_s, 0}, {u"class"_s, u"QBHeaderTextAttachment"_s}, {u"representedText"_s, u"#"_s}}));
    qint64 end = 0;
    for (const QJsonValue &run : styled.value(u"runs"_s).toArray()) {
        EXPECT_EQ(run.toObject().value(u"location"_s).toInteger(), end);
        end += run.toObject().value(u"length"_s).toInteger();
    }
    EXPECT_EQ(end, styled.value(u"buffer"_s).toString().size());

    const QByteArray edits = R"({"text":"*one","edits":[{"location":1,"length":0,"string":" "},
                                 {"location":0,"length":2,"string":"","selection":[0,0]}]})";
    const auto results = quib.run({u"inspect"_s, u"edit"_s}, edits).json().array();
    ASSERT_EQ(results.size(), 2);
    EXPECT_EQ(results.at(0).toObject().value(u"buffer"_s), u"\ufffc one"_s);
    EXPECT_EQ(results.at(0).toObject().value(u"replaced"_s), true);
    EXPECT_EQ(results.at(0).toObject().value(u"proposedSelection"_s), (QJsonArray{2, 0}));
    EXPECT_EQ(results.at(1).toObject().value(u"expanded"_s), u"one"_s);
    for (const QByteArray &bad :
         {QByteArray("{"), QByteArray("[]"), QByteArray(R"({"text":"a","edits":[{"location":2,"length":0}]})"),
          QByteArray(R"({"text":"a","edits":[{"location":0,"length":-1}]})")}) {
        EXPECT_EQ(quib.run({u"inspect"_s, u"edit"_s}, bad).exitStatus, 1) << bad.toStdString();
    }
}

TEST(Quibctl, NamesWhatIsWrongWithEdits)
{
    const QuibctlRunner quib;
    const std::pair<QByteArray, QByteArray> cases[] = {
        {R"({"text":5,"edits":[]})", R"("text" is no string)"},
        {R"({"edits":[]})", R"("text" is missing)"},
        {R"({"text":"a"})", R"("edits" is missing)"},
        {R"({"text":"a","edits":{}})", R"("edits" is no array)"},
        {R"({"text":"a","syntax":"x","edits":[]})", R"("syntax" is no whole number)"},
        {R"({"text":"a","syntax":0.5,"edits":[]})", R"("syntax" is no whole number)"},
        {R"({"text":"a","syntax":2,"edits":[]})", R"("syntax" is 0 or 1)"},
        {R"({"text":"a","edits":[1]})", "edit 1 is no object"},
        {R"({"text":"a","edits":[{"location":0,"length":0},{"location":0}]})", R"(edit 2: "length" is missing)"},
        {R"({"text":"a","edits":[{"location":"0","length":0}]})", R"(edit 1: "location" is no whole number)"},
        {R"({"text":"a","edits":[{"location":0,"length":0,"string":7}]})", R"(edit 1: "string" is no string)"},
        {R"({"text":"a","edits":[{"location":0,"length":0,"selection":7}]})", R"(edit 1: "selection" is no array)"},
        {R"({"text":"a","edits":[{"location":0,"length":0,"selection":[7]}]})",
         R"(edit 1: "selection" is a location and a length)"},
        {R"({"text":"a","edits":[{"location":0,"length":0,"selection":[0,"1"]}]})",
         R"(edit 1: "selection" is a location and a length)"},
        {R"({"text":"a","edits":[{"location":2,"length":0}]})", "edit 1 does not fit the text of 1 units"},
    };
    for (const auto &[input, message] : cases) {
        const auto result = quib.run({u"inspect"_s, u"edit"_s}, input);
        EXPECT_EQ(result.exitStatus, 1) << input.toStdString();
        EXPECT_TRUE(result.messages.contains(message)) << input.toStdString() << ": " << result.messages.toStdString();
        EXPECT_EQ(result.output, "") << input.toStdString();
    }
    EXPECT_EQ(quib.done({u"inspect"_s, u"edit"_s}, R"({"text":"a","syntax":1,"edits":[]})"), u"[]"_s);
}

TEST(Quibctl, ShowsThemesAndDrawsNotes)
{
    const QuibctlRunner quib;
    const auto theme = quib.run({u"inspect"_s, u"theme"_s, u"--theme"_s, u"Print"_s}).json().object();
    EXPECT_EQ(theme.value(u"text"_s).toObject().value(u"Background Text Color"_s), u"rgba(255, 255, 255, 1.00)"_s);
    EXPECT_EQ(quib.run({u"inspect"_s, u"theme"_s, u"--theme"_s, u"Nonesuch"_s}).exitStatus, 2);

    const QString note = quib.done({u"new"_s, u"-"_s}, "# Title\n- todo\n---\n```\ncode\n```\n> quote #tag");
    const QString picture = quib.file(u"page.png"_s, "");
    EXPECT_EQ(quib.run({u"inspect"_s, u"render"_s, note, u"-o"_s, picture, u"--scale"_s, u"1"_s}).exitStatus, 0);
    QFile file(picture);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().startsWith("\x89PNG"));
    EXPECT_EQ(quib.run({u"inspect"_s, u"render"_s, note}).exitStatus, 2);
    EXPECT_EQ(quib.run({u"inspect"_s, u"render"_s, u"nosuch"_s, u"-o"_s, picture}).exitStatus, 3);
    EXPECT_EQ(quib.run({u"inspect"_s, u"render"_s, note, u"-o"_s, u"/nonexistent/x.png"_s}).exitStatus, 1);
}

} // namespace

TEST(Quibctl, ANoteGoesInIsDerivedAndComesOutAsItWas)
{
    const QuibctlRunner quib;
    const QByteArray text = "# Plan *bold*\nCall the caffè #work/alpha\n- open\n+ done\n```\n#code\n```\n";
    const QString id = quib.done({u"new"_s, u"-"_s}, text);
    EXPECT_FALSE(id.isEmpty());
    EXPECT_EQ(quib.run({u"show"_s, id}).output, text);
    const QJsonObject note = quib.run({u"show"_s, id, u"--json"_s}).json().object();
    EXPECT_EQ(note.value(u"title"_s).toString(), u"Plan *bold*"_s);
    EXPECT_EQ(note.value(u"tags"_s).toArray(), (QJsonArray{u"work"_s, u"work/alpha"_s}));
    EXPECT_EQ(note.value(u"todoIncompleted"_s).toInt(), 1);
    EXPECT_EQ(note.value(u"todoCompleted"_s).toInt(), 1);
    EXPECT_TRUE(note.value(u"hasSourceCode"_s).toBool());
    EXPECT_EQ(note.value(u"text"_s).toString(), QString::fromUtf8(text));
}

TEST(Quibctl, NewComposesTitleTagsAndPin)
{
    const QuibctlRunner quib;
    const QString id = quib.done(
        {u"new"_s, u"--title"_s, u"Plan"_s, u"--tags"_s, u"home, two words,#x,,"_s, u"--pin"_s, u"-"_s}, "Text");
    EXPECT_EQ(quib.run({u"show"_s, id}).output, "# Plan\nText\n\n#home #two words# #x");
    EXPECT_EQ(quib.run({u"list"_s, u"--json"_s}).json().array().at(0).toObject().value(u"pinned"_s), true);
    EXPECT_EQ(quib.run({u"new"_s, u"--title"_s, u"  "_s, u"-"_s}).exitStatus, 2);
}

TEST(Quibctl, WhatIsNoTextIsRefusedWithNameAndPlace)
{
    const QuibctlRunner quib;
    const QuibctlResult latin = quib.run({u"new"_s, quib.file(u"latin.txt"_s, "caff\xE8 nero")});
    EXPECT_EQ(latin.exitStatus, 1);
    EXPECT_TRUE(latin.messages.contains("latin.txt") && latin.messages.contains("byte 4")) << latin.messages.data();
    EXPECT_EQ(quib.run({u"new"_s, quib.folder() + u"/missing.md"_s}).exitStatus, 3);
    EXPECT_EQ(quib.run({u"new"_s, quib.folder()}).exitStatus, 1);
    EXPECT_EQ(quib.run({u"list"_s, u"--json"_s}).json().array().size(), 0);

    const QString id = quib.done({u"new"_s, quib.file(u"wide.txt"_s, QByteArray("\xFF\xFEh\0i\0\0\0!\0", 10))});
    EXPECT_EQ(quib.run({u"show"_s, id}).output, QByteArray("hi\0!", 4));
    const QString lines = quib.done({u"new"_s, u"-"_s}, "a\r\nb\rc");
    EXPECT_EQ(quib.run({u"show"_s, lines}).output, "a\nb\rc");
}

TEST(Quibctl, EditReplacesAppendsAndPrepends)
{
    const QuibctlRunner quib;
    const QString id = quib.done({u"new"_s, u"-"_s}, "# T\nbody\n#tag");
    quib.done({u"edit"_s, id, u"-"_s, u"--append"_s}, "end");
    EXPECT_EQ(quib.run({u"show"_s, id}).output, "# T\nbody\nend\n\n#tag");
    quib.done({u"edit"_s, id, u"-"_s, u"--prepend"_s}, "start");
    EXPECT_EQ(quib.run({u"show"_s, id}).output, "# T\nstart\nbody\nend\n\n#tag");
    quib.done({u"edit"_s, id, quib.file(u"new.md"_s, "fresh")});
    EXPECT_EQ(quib.run({u"show"_s, id}).output, "fresh");
    EXPECT_EQ(quib.run({u"tags"_s, u"--json"_s}).json().array().size(), 0);
}

TEST(Quibctl, StatesMoveNotesBetweenLists)
{
    const QuibctlRunner quib;
    const QString a = quib.done({u"new"_s, u"-"_s}, "a");
    const QString b = quib.done({u"new"_s, u"-"_s}, "b\n- todo");
    const QString c = quib.done({u"new"_s, u"-"_s}, "c #tag");
    quib.done({u"trash"_s, a});
    quib.done({u"archive"_s, c});
    const auto list = [&quib](const QString &name) {
        return titles(quib.run({u"list"_s, u"--in"_s, name, u"--json"_s}));
    };
    EXPECT_EQ(list(u"notes"_s), QStringList{u"b"_s});
    EXPECT_EQ(list(u"todo"_s), QStringList{u"b"_s});
    EXPECT_EQ(list(u"untagged"_s), QStringList{u"b"_s});
    EXPECT_EQ(list(u"trash"_s), QStringList{u"a"_s});
    EXPECT_EQ(list(u"archive"_s), QStringList{u"c #tag"_s});
    EXPECT_EQ(list(u"tag:tag"_s), QStringList{});
    EXPECT_EQ(list(u"all"_s).size(), 3);
    quib.done({u"restore"_s, a});
    quib.done({u"unarchive"_s, c});
    quib.done({u"pin"_s, a, c});
    EXPECT_EQ(list(u"notes"_s).size(), 3);
    EXPECT_EQ(list(u"tag:tag"_s), QStringList{u"c #tag"_s});
    const QJsonArray first = quib.run({u"list"_s, u"--json"_s, u"--limit"_s, u"2"_s}).json().array();
    EXPECT_TRUE(first.at(0).toObject().value(u"pinned"_s).toBool());
    EXPECT_TRUE(first.at(1).toObject().value(u"pinned"_s).toBool());
    quib.done({u"delete"_s, a, b});
    EXPECT_EQ(list(u"all"_s), QStringList{u"c #tag"_s});
    EXPECT_EQ(quib.run({u"list"_s, u"--in"_s, u"nowhere"_s}).exitStatus, 2);
    EXPECT_EQ(quib.run({u"list"_s, u"--in"_s, u"tag:none"_s}).exitStatus, 3);
}

TEST(Quibctl, ManyNotesChangeTogetherOrNotAtAll)
{
    const QuibctlRunner quib;
    const QString a = quib.done({u"new"_s, u"-"_s}, "a");
    EXPECT_EQ(quib.run({u"trash"_s, a, u"FFFF-none"_s}).exitStatus, 3);
    EXPECT_EQ(quib.run({u"list"_s, u"--in"_s, u"trash"_s, u"--json"_s}).json().array().size(), 0);
}

TEST(Quibctl, NotesAreNamedByTheBeginningOfTheirIdentifier)
{
    const QuibctlRunner quib;
    const QString id = quib.done({u"new"_s, u"-"_s}, "a");
    EXPECT_EQ(quib.run({u"show"_s, id.left(12)}).output, "a");
    EXPECT_EQ(quib.run({u"show"_s, id.left(3)}).exitStatus, 3);
    EXPECT_EQ(quib.run({u"show"_s, u"%"_s}).exitStatus, 3);
}

TEST(Quibctl, SearchFindsWhateverCaseAndMarks)
{
    const QuibctlRunner quib;
    quib.done({u"new"_s, u"-"_s}, "# One\nCaffè NERO");
    quib.done({u"new"_s, u"-"_s}, "# Two\nblack tea\n- buy");
    EXPECT_EQ(titles(quib.run({u"search"_s, u"caffe nero"_s, u"--json"_s})), QStringList{u"One"_s});
    EXPECT_EQ(titles(quib.run({u"search"_s, u"\"black tea\""_s, u"--json"_s})), QStringList{u"Two"_s});
    EXPECT_EQ(titles(quib.run({u"search"_s, u"--json"_s, u"--"_s, u"-tea"_s})), QStringList{u"One"_s});
    EXPECT_EQ(titles(quib.run({u"list"_s, u"--search"_s, u"@todo"_s, u"--json"_s})), QStringList{u"Two"_s});
    EXPECT_EQ(quib.done({u"inspect"_s, u"predicate"_s, u"  "_s}), u"null"_s);
    EXPECT_EQ(quib.done({u"inspect"_s, u"predicate"_s, u"foo @todo"_s}),
              u"text CONTAINS[cd] \"foo\" AND todoIncompleted > 0"_s);
    EXPECT_EQ(quib.done({u"inspect"_s, u"highlight-pattern"_s, u"a.b c"_s}), u"(a\\.b)|(c)"_s);
}

TEST(Quibctl, TagsAreRenamedAndDeletedThroughTheText)
{
    const QuibctlRunner quib;
    const QString a = quib.done({u"new"_s, u"-"_s}, "one #work/alpha x");
    const QString b = quib.done({u"new"_s, u"-"_s}, "two #work");
    EXPECT_EQ(quib.done({u"tags"_s}), u"work\t2\nwork/alpha\t1"_s);
    quib.done({u"tag"_s, u"rename"_s, u"WORK"_s, u"job"_s});
    EXPECT_EQ(quib.run({u"show"_s, a}).output, "one #job/alpha x");
    EXPECT_EQ(quib.run({u"show"_s, b}).output, "two #job");
    EXPECT_EQ(quib.done({u"tags"_s}), u"job\t2\njob/alpha\t1"_s);
    quib.done({u"tag"_s, u"delete"_s, u"job/alpha"_s});
    EXPECT_EQ(quib.run({u"show"_s, a}).output, "one #job x");
    quib.done({u"tag"_s, u"delete"_s, u"job"_s});
    EXPECT_EQ(quib.run({u"show"_s, a}).output, "one x");
    EXPECT_EQ(quib.run({u"tag"_s, u"delete"_s, u"job"_s}).exitStatus, 3);
    EXPECT_EQ(quib.run({u"tag"_s, u"rename"_s, u"x"_s, u"///"_s}).exitStatus, 2);
}

TEST(Quibctl, AttachmentsAreCopiedMarkedDuplicatedAndMerged)
{
    const QuibctlRunner quib;
    const QString id = quib.done({u"new"_s, u"-"_s}, "# Trip");
    const QString marker = quib.done({u"attach"_s, id, quib.file(u"a[1].txt"_s, "hello")});
    EXPECT_TRUE(marker.startsWith(u"[file:")) << marker.toStdString();
    EXPECT_TRUE(marker.endsWith(u"/a1.txt]")) << marker.toStdString();
    const QString copy = quib.done({u"duplicate"_s, id});
    const QString merged = quib.done({u"merge"_s, id, copy});
    QSet<QString> paths;
    for (const QString &note : {id, copy, merged}) {
        const QJsonArray files = quib.run({u"show"_s, note, u"--json"_s}).json().object().value(u"files"_s).toArray();
        for (const auto &file : files) {
            const QString path = file.toObject().value(u"path"_s).toString();
            QFile content(path);
            EXPECT_TRUE(content.open(QIODevice::ReadOnly)) << path.toStdString();
            EXPECT_EQ(content.readAll(), "hello");
            EXPECT_TRUE(path.startsWith(quib.profile()));
            paths.insert(path);
        }
    }
    EXPECT_EQ(paths.size(), 4); // one each for the two sources, two of its own for the merged note
    EXPECT_EQ(quib.run({u"list"_s, u"--in"_s, u"trash"_s, u"--json"_s}).json().array().size(), 2);
    EXPECT_EQ(quib.run({u"check"_s}).exitStatus, 0);
    quib.done({u"delete"_s, merged});
    EXPECT_EQ(quib.run({u"check"_s}).exitStatus, 0);
}

TEST(Quibctl, PreferencesAreTypedKeptAndReset)
{
    const QuibctlRunner quib;
    EXPECT_EQ(quib.done({u"preferences"_s, u"get"_s, u"notesListSortBy"_s}), u"modificationDate"_s);
    quib.done({u"preferences"_s, u"set"_s, u"notesListSortBy"_s, u"title"_s});
    EXPECT_EQ(quib.done({u"preferences"_s, u"get"_s, u"notesListSortBy"_s}), u"title"_s);
    EXPECT_EQ(quib.run({u"preferences"_s, u"set"_s, u"notesListSortBy"_s, u"colour"_s}).exitStatus, 2);
    EXPECT_EQ(quib.run({u"preferences"_s, u"set"_s, u"exportTags"_s, u"maybe"_s}).exitStatus, 2);
    EXPECT_EQ(quib.run({u"preferences"_s, u"set"_s, u"nonsense"_s, u"1"_s}).exitStatus, 3);
    quib.done({u"preferences"_s, u"reset"_s});
    EXPECT_EQ(quib.done({u"preferences"_s, u"get"_s, u"notesListSortBy"_s}), u"modificationDate"_s);
}

TEST(Quibctl, TheMarkdownSyntaxIsUsedAndCountsAnew)
{
    const QuibctlRunner quib;
    const QString id = quib.done({u"new"_s, u"-"_s}, "- [ ] a\n- [x] b\n- c");
    const auto counts = [&quib, &id] {
        const QJsonObject note = quib.run({u"show"_s, id, u"--json"_s}).json().object();
        return std::pair(note.value(u"todoIncompleted"_s).toInt(), note.value(u"todoCompleted"_s).toInt());
    };
    EXPECT_EQ(counts(), std::pair(3, 0));
    quib.done({u"preferences"_s, u"set"_s, u"markdownCompatibilityMode"_s, u"true"_s});
    EXPECT_EQ(counts(), std::pair(1, 1));
    EXPECT_EQ(quib.run({u"check"_s}).exitStatus, 0);
}

TEST(Quibctl, InspectLanguageNamesTheLanguageOfCode)
{
    const QuibctlRunner quib;
    EXPECT_EQ(quib.done({u"inspect"_s, u"language"_s}, "console.log (1)\n"), u"javascript"_s);
    EXPECT_EQ(quib.done({u"inspect"_s, u"language"_s, u"-"_s}, ""), u"Unknown"_s);
    EXPECT_EQ(quib.done({u"inspect"_s, u"language"_s, quib.file(u"list.py"_s, "if a:\r\n\r\n  pass\r\nelse:\r\n")}),
              u"python"_s);
    EXPECT_EQ(quib.run({u"inspect"_s, u"language"_s, u"/nonexistent/x.py"_s}).exitStatus, 3);
}

TEST(Quibctl, InspectParseTellsWhatATextHolds)
{
    const QuibctlRunner quib;
    const QJsonObject parsed =
        quib.run({u"inspect"_s, u"parse"_s, u"-"_s}, "# T\nx #a/b\n## S\nmore\n").json().object();
    EXPECT_EQ(parsed.value(u"title"_s).toString(), u"T"_s);
    EXPECT_EQ(parsed.value(u"tags"_s).toArray(), (QJsonArray{u"a/b"_s, u"a"_s}));
    const QJsonObject section = parsed.value(u"sections"_s).toArray().at(1).toObject();
    EXPECT_EQ(section.value(u"title"_s).toString(), u"S"_s);
    EXPECT_EQ(section.value(u"titleLocation"_s).toInt(), 11);
    EXPECT_EQ(section.value(u"titleLength"_s).toInt(), 5);
    EXPECT_EQ(section.value(u"sectionLocation"_s).toInt(), 16);
    EXPECT_EQ(section.value(u"sectionLength"_s).toInt(), 5);
}

TEST(Quibctl, EveryCommandHasHelpWithAnExampleAndWrongUsageIsTold)
{
    const QuibctlRunner quib;
    const QString page = quib.done({u"--help"_s});
    const auto lines = page.section(u"Commands:\n"_s, 1).section(u"\n\n"_s, 0, 0).split(u'\n');
    ASSERT_GT(lines.size(), 25);
    for (const QString &line : lines) {
        static const QRegularExpression name(u"^  (\\S+(?: \\S+)?)(?:  |$)"_s);
        const QString command = name.match(line).captured(1);
        if (command.isEmpty()) {
            continue;
        }
        const QuibctlResult help = quib.run(command.split(u' ') << u"--help"_s);
        EXPECT_EQ(help.exitStatus, 0) << command.toStdString();
        EXPECT_TRUE(help.output.contains("Example:\n  quibctl ") || help.output.contains("| quibctl "))
            << command.toStdString();
        for (const QByteArray &told : help.output.left(help.output.indexOf("Example:")).split('\n')) {
            EXPECT_LE(told.size(), 96) << told.toStdString();
        }
    }
    EXPECT_EQ(quib.run({}).exitStatus, 2);
    EXPECT_EQ(quib.run({u"frobnicate"_s}).exitStatus, 2);
    EXPECT_EQ(quib.run({u"show"_s}).exitStatus, 2);
    EXPECT_EQ(quib.run({u"show"_s, u"--wrong"_s, u"x"_s}).exitStatus, 2);
    EXPECT_EQ(quib.run({u"sync"_s}).exitStatus, 2);
    EXPECT_EQ(quib.run({u"tag"_s}).exitStatus, 2);
    for (const QString &shell : {u"bash"_s, u"zsh"_s, u"fish"_s}) {
        EXPECT_TRUE(quib.run({u"completion"_s, shell}).output.contains("duplicate"));
    }
    EXPECT_EQ(quib.run({u"completion"_s, u"tcsh"_s}).exitStatus, 2);
}

TEST(Quibctl, EverythingKeptIsForTheOwnerAlone)
{
    const QuibctlRunner quib;
    const QString id = quib.done({u"new"_s, u"-"_s}, "secret");
    quib.done({u"attach"_s, id, quib.file(u"f.txt"_s, "x")});
    QStringList folders{quib.profile()};
    int files = 0;
    while (!folders.isEmpty()) {
        const QString folder = folders.takeFirst();
        for (const QFileInfo &entry :
             QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
            const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
            EXPECT_FALSE(entry.permissions() & others) << entry.filePath().toStdString();
            if (entry.isDir()) {
                folders.append(entry.filePath());
            } else {
                ++files;
            }
        }
    }
    EXPECT_GE(files, 2);
}

TEST(Quibctl, AStoreThatCannotBeOpenedIsNamed)
{
    const QuibctlRunner quib;
    quib.done({u"new"_s, u"-"_s}, "a");
    const QString path = quib.profile() + u"/QBTEAM0000.net.quibworks.quib/Application Data/database.sqlite"_s;
    ASSERT_TRUE(QFile::exists(path)) << path.toStdString();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.write("this is no database, whatever its name tells");
    file.close();
    const QuibctlResult result = quib.run({u"list"_s});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_TRUE(result.messages.contains("database.sqlite")) << result.messages.data();
}

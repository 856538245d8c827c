// What quibctl acknowledged is there, however the process ended and whoever else wrote meanwhile.

#include "QuibctlRunner.h"

#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QSet>

#include <csignal>
#include <memory>
#include <vector>

#include <sys/types.h>

using namespace Qt::StringLiterals;

namespace {

/// A shell in a process group of its own that makes notes one after the other and prints "number identifier" for each
/// one acknowledged.
std::unique_ptr<QProcess> startWriter(const QuibctlRunner &quib, const QString &name, int count)
{
    auto process = std::make_unique<QProcess>();
    process->setEnvironment(quib.environment());
    const QString script = u"for i in $(seq 1 %1); do id=$(printf '# %2 %s\\nbody of %s #kill/%2\\n- todo' $i $i | "
                           u"\"$0\" new -) && echo \"$i $id\"; done"_s.arg(count)
                               .arg(name);
    process->start(u"setsid"_s, {u"sh"_s, u"-c"_s, script, QuibctlRunner::program()});
    return process;
}

/// The acknowledged notes: identifier to number.
QHash<QString, QString> acknowledged(QProcess &process)
{
    QHash<QString, QString> notes;
    const QByteArray output = process.readAllStandardOutput();
    for (const QString &line : QString::fromUtf8(output.left(output.lastIndexOf('\n') + 1)).split(u'\n')) {
        if (!line.isEmpty()) {
            notes.insert(line.section(u' ', 1), line.section(u' ', 0, 0));
        }
    }
    return notes;
}

/// Kills every process of the group that setsid made, wherever it stands.
void killGroup(QProcess &process)
{
    // The shell leads its group; setsid became it.
    EXPECT_EQ(::kill(-static_cast<pid_t>(process.processId()), SIGKILL), 0);
    process.waitForFinished();
}

void expectKept(const QuibctlRunner &quib, const QString &name, const QHash<QString, QString> &notes)
{
    for (auto note = notes.cbegin(); note != notes.cend(); ++note) {
        const QByteArray number = note.value().toUtf8();
        const QByteArray expected =
            "# " + name.toUtf8() + ' ' + number + "\nbody of " + number + " #kill/" + name.toUtf8() + "\n- todo";
        EXPECT_EQ(quib.run({u"show"_s, note.key()}).output, expected);
    }
}

} // namespace

TEST(Durability, NoAcknowledgedNoteIsLostWhenTheProcessIsKilled)
{
    const QuibctlRunner quib;
    const quib::tests::TestSeed seed;
    QRandomGenerator random(seed.value());
    const int rounds = qEnvironmentVariableIsSet("QUIB_NIGHTLY") ? 200 : 20;
    int total = 0;
    for (int round = 0; round < rounds; ++round) {
        SCOPED_TRACE(round);
        const QString name = u"r%1"_s.arg(round);
        const auto writer = startWriter(quib, name, 1000);
        ASSERT_TRUE(writer->waitForStarted());
        // The kill comes after some notes and a random moment more, wherever the next write then stands.
        const int after = random.bounded(1, 4);
        QElapsedTimer timer;
        timer.start();
        while (writer->bytesAvailable() < after * 20 && timer.elapsed() < 30'000) {
            writer->waitForReadyRead(100);
        }
        writer->waitForReadyRead(random.bounded(1, 60));
        killGroup(*writer);
        const auto notes = acknowledged(*writer);
        total += static_cast<int>(notes.size());
        const QuibctlResult check = quib.run({u"check"_s});
        EXPECT_EQ(check.exitStatus, 0) << check.output.data() << check.messages.data();
        expectKept(quib, name, notes);
        if (testing::Test::HasFailure()) {
            return;
        }
    }
    EXPECT_GT(total, rounds);
}

TEST(Durability, TwoWritersAtOnceLoseNothing)
{
    const QuibctlRunner quib;
    constexpr int kNotes = 15;
    std::vector<std::unique_ptr<QProcess>> writers;
    for (const QString &name : {u"left"_s, u"right"_s, u"third"_s}) {
        writers.push_back(startWriter(quib, name, kNotes));
        ASSERT_TRUE(writers.back()->waitForStarted());
    }
    const QStringList names{u"left"_s, u"right"_s, u"third"_s};
    for (size_t i = 0; i < writers.size(); ++i) {
        ASSERT_TRUE(writers[i]->waitForFinished(120'000));
        EXPECT_EQ(writers[i]->readAllStandardError(), QByteArray());
        const auto notes = acknowledged(*writers[i]);
        EXPECT_EQ(notes.size(), kNotes);
        expectKept(quib, names[static_cast<qsizetype>(i)], notes);
    }
    EXPECT_EQ(quib.run({u"list"_s, u"--json"_s}).json().array().size(), 3 * kNotes);
    EXPECT_EQ(quib.done({u"tags"_s}), u"kill\t45\nkill/left\t15\nkill/right\t15\nkill/third\t15"_s);
    EXPECT_EQ(quib.run({u"check"_s}).exitStatus, 0);
}

TEST(Durability, AnEditThatLosesARaceIsKeptInACopy)
{
    const QuibctlRunner quib;
    const QString id = quib.done({u"new"_s, u"-"_s}, "start");
    QSet<QByteArray> allowed{"start"};
    std::vector<std::unique_ptr<QProcess>> editors;
    QList<QByteArray> texts;
    for (int i = 0; i < 6; ++i) {
        texts.append("edit number " + QByteArray::number(i));
        auto process = std::make_unique<QProcess>();
        process->setEnvironment(quib.environment());
        process->start(QuibctlRunner::program(), {u"edit"_s, id, u"-"_s});
        ASSERT_TRUE(process->waitForStarted());
        process->write(texts.last());
        process->closeWriteChannel();
        editors.push_back(std::move(process));
    }
    for (const auto &editor : editors) {
        ASSERT_TRUE(editor->waitForFinished(60'000));
        EXPECT_EQ(editor->exitCode(), 0) << editor->readAllStandardError().data();
    }
    allowed.unite(QSet<QByteArray>(texts.cbegin(), texts.cend()));
    const QJsonArray notes = quib.run({u"list"_s, u"--in"_s, u"all"_s, u"--json"_s}).json().array();
    ASSERT_GE(notes.size(), 1);
    for (const auto &note : notes) {
        const QByteArray text = quib.run({u"show"_s, note.toObject().value(u"id"_s).toString()}).output;
        EXPECT_TRUE(allowed.contains(text)) << text.data();
    }
    EXPECT_EQ(quib.run({u"check"_s}).exitStatus, 0);
}

TEST(Corpus, EveryMarkdownFileGoesInAndIsFoundRenamedTrashedAndRestored)
{
    const QString folder = qEnvironmentVariable("QUIB_CORPORA", QStringLiteral(QUIB_SOURCE_DIR "/../shared/corpora"));
    if (!QFileInfo::exists(folder)) {
        GTEST_SKIP() << "no corpora here";
    }
    const QuibctlRunner quib;
    QHash<QString, QByteArray> texts;
    QDirIterator files(folder, {u"*.md"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        QByteArray text = file.readAll();
        const QuibctlResult result = quib.run({u"new"_s, file.fileName()});
        if (!QString::fromUtf8(text).isValidUtf16() || QString::fromUtf8(text).contains(QChar::ReplacementCharacter)) {
            continue; // not UTF-8: refused, or holding the replacement character itself
        }
        ASSERT_EQ(result.exitStatus, 0) << file.fileName().toStdString() << result.messages.data();
        if (text.startsWith("\xEF\xBB\xBF")) {
            text.remove(0, 3);
        }
        texts.insert(result.line(), text.replace("\r\n", "\n"));
    }
    EXPECT_GT(texts.size(), 300);
    const QJsonArray list = quib.run({u"list"_s, u"--json"_s}).json().array();
    EXPECT_GE(list.size(), texts.size());
    for (const auto &entry : list) {
        const QJsonObject note = entry.toObject();
        const auto text = texts.constFind(note.value(u"id"_s).toString());
        if (text == texts.constEnd()) {
            continue;
        }
        const QuibctlResult parsed = quib.run({u"inspect"_s, u"parse"_s}, *text);
        const QJsonObject expected = parsed.json().object();
        EXPECT_EQ(note.value(u"title"_s), expected.value(u"title"_s));
        EXPECT_EQ(note.value(u"todoIncompleted"_s), expected.value(u"todoIncompleted"_s));
        EXPECT_EQ(note.value(u"hasSourceCode"_s), expected.value(u"hasSourceCode"_s));
    }
    const auto found = quib.run({u"search"_s, u"license"_s, u"--json"_s}).json().array();
    qsizetype holding = 0;
    for (const QByteArray &text : texts) {
        holding += QString::fromUtf8(text).contains(u"license"_s, Qt::CaseInsensitive) ? 1 : 0;
    }
    EXPECT_GE(found.size(), holding);
    EXPECT_EQ(quib.run({u"check"_s}).exitStatus, 0) << quib.run({u"check"_s}).output.data();

    // The first hundred go to the trash and come back with the same text.
    const QStringList some = QStringList(texts.keys()).mid(0, 100);
    quib.done(QStringList{u"trash"_s} + some);
    EXPECT_EQ(quib.run({u"list"_s, u"--in"_s, u"trash"_s, u"--json"_s}).json().array().size(), 100);
    quib.done(QStringList{u"restore"_s} + some);
    for (const QString &id : some.mid(0, 20)) {
        EXPECT_EQ(quib.run({u"show"_s, id}).output, texts.value(id));
    }
    const QString tag = quib.done({u"tags"_s}).section(u'\t', 0, 0);
    if (!tag.isEmpty()) {
        quib.done({u"tag"_s, u"rename"_s, tag, u"renamed/by test"_s});
        EXPECT_TRUE(quib.done({u"tags"_s}).contains(u"renamed/by test"_s));
    }
    EXPECT_EQ(quib.run({u"check"_s}).exitStatus, 0);
}

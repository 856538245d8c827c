// How long does a search take over a whole library, next to the least that reading every byte costs?
//
// Workloads (100,000 notes, whatever case and accents; unit: seconds a search):
//   a term in most Latin notes; one in few; two in none; an accented one; a Cyrillic one; two terms.
// Baselines, in the same run: memchr over the folded bytes for a byte that is not there; `rg -i -c` over the same texts
// in one file.

#include <Support/CorpusGenerator.h>
#include <Support/Measure.h>

#include <Search/FoldedTextArena.h>
#include <Text/Folding.h>

#include <QFile>
#include <QTemporaryDir>

#include <cstring>

using namespace Qt::StringLiterals;
using namespace quib::benchmarks;

int main()
{
    const CorpusGenerator generator;
    const qsizetype count = sizeForRun(100'000, 200);
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"notes.txt"_s));
    if (!file.open(QIODevice::WriteOnly)) {
        return 1;
    }
    quib::FoldedTextArena arena;
    QByteArray folded;
    for (qsizetype index = 0; index < count; ++index) {
        const QString text = generator.text(index);
        const QByteArray one = quib::foldedUtf8(text);
        folded += one;
        arena.setFoldedText(index + 1, 1, one);
        file.write(text.toUtf8() + '\n');
    }
    file.close();

    Report report(u"a search over all notes"_s);
    report.addRemark(u"%1 notes, %2 MB folded"_s.arg(count).arg(folded.size() / 1'000'000));
    const Timing sweep = measure([&] { keep(std::memchr(folded.constData(), 1, static_cast<size_t>(folded.size()))); });
    const QList<std::pair<QString, QString>> terms{{u"in most notes"_s, generator.word(3)},
                                                   {u"in few notes"_s, generator.word(5000)},
                                                   {u"in no note, of frequent letters"_s, u"tnesartnesa"_s},
                                                   {u"in no note, of rare letters"_s, u"zzqqzz"_s},
                                                   {u"accented"_s, u"caffè"_s},
                                                   {u"Cyrillic"_s, u"привет"_s}};
    // Each search as if none was before it.
    const auto forget = [&arena] { arena.forgetFindings(); };
    for (const auto &[label, term] : terms) {
        const Timing search = measure([&, &term = term] { keep(arena.keysOfTextsContaining(term)); }, {}, forget);
        report.addTime(QString(label % u" / memchr"), search, sweep, 1.5);
        if (const auto external = measureProgram({u"rg"_s, u"-i"_s, u"-c"_s, term, file.fileName()})) {
            report.addTime(QString(label % u" / ripgrep"), search, *external, 0.35);
        }
    }
    const Timing two = measure(
        [&] {
            keep(arena.keysOfTextsContainingAll({generator.word(50), generator.word(400)}));
        },
        {}, forget);
    report.addTime(u"two terms / memchr"_s, two, sweep, 2);
    return 0;
}

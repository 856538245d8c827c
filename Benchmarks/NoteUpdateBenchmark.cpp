// How long does a note take to derive its fields after an edit?
//
// Workloads: title, subtitle, code, both to-do counts and tags
//   of a note of 1 MB, against the cmark program on the same text as a process;
//   of a note of 10 KB, against the note of 1 MB: a hundredth of the text.
//   of 1 MB on one line of unpaired marks, against the ordinary note: no text may be much dearer than another.

#include <Markup/Syntax/QBNoteTextParser.h>
#include <Support/CorpusGenerator.h>
#include <Support/Measure.h>
#include <Tags/QBTagDataDetector.h>

#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace quib::benchmarks;

namespace {

constexpr int kNativeSyntax = 0;

void derive(const QString &text)
{
    keep(QBNoteTextParser::parseTitleFromText(text));
    keep(QBNoteTextParser::parseSubtitleFromText(text));
    keep(QBNoteTextParser::parseTodoFromText(text, kNativeSyntax));
    keep(QBNoteTextParser::parseCompletedTodoFromText(text, kNativeSyntax));
    bool hasCode = false;
    const QString plain = QBNoteTextParser::removeCodeFromText(text, &hasCode, kNativeSyntax);
    keep(hasCode);
    keep(QBTagDataDetector::sharedDetector().matchesInString(plain, {}, NSRange{0, plain.size()}).size());
}

} // namespace

int main()
{
    const CorpusGenerator generator;
    const qsizetype large = sizeForRun(1'000'000, 20'000);
    const QString text = generator.textWithBytes(1, large);
    const QString small = generator.textWithBytes(1, large / 100);
    const QString marks = QString(u"*a _b `c ::d [[e #f/g "_s).repeated(large / 22);

    const QTemporaryDir folder;
    QFile file(folder.filePath(u"note.md"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0) {
        qFatal("the note can't be written");
    }
    file.close();

    Report report(u"Deriving a note's fields"_s);
    const Timing ofLarge = measure([&] { derive(text); });
    if (const auto cmark = measureProgram({u"cmark"_s, file.fileName()})) {
        report.addTime(u"1 MB note, against the cmark program"_s, ofLarge, *cmark, /*target=*/2.0);
    } else {
        report.addRemark(u"cmark is not installed"_s);
    }
    report.addTime(u"10 KB note, against the 1 MB note"_s, measure([&] { derive(small); }), ofLarge,
                   /*target=*/1.0 / 80);
    report.addTime(u"1 MB of unpaired marks on one line"_s, measure([&] { derive(marks); }), ofLarge, /*target=*/0);
    return 0;
}

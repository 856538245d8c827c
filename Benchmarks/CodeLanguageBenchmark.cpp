// What does it cost to name the language of a piece of code, however it is written?
//
// Workloads (1 MB of text; unit: seconds a text):
//   code in lines of ordinary length; the same code in one line; one line of each of several repetitions that nearly
//   match a pattern of the table from everywhere.
// Baseline, in the same run: twice the time of half the text, which a linear detector takes.
// And: 100 lines, which is what pasting looks at, beside the same table matched by the expression engine.

#include <Support/Measure.h>

#include <Code/QBCodeLanguageDetector.h>
#include <Text/NSRegularExpression.h>

using namespace Qt::StringLiterals;
using namespace quib::benchmarks;

namespace {

QString codeOfSize(qsizetype size, QChar between)
{
    const QStringList lines{
        u"static int countOf(const char *name, struct list *items) {"_s,
        u"    for (struct item *item = items->first; item != NULL; item = item->next) {"_s,
        u"        if (strcmp(item->name, name) == 0 && !item->isHidden) {"_s,
        u"            total += item->count * 2 + offsets[item->index % 7];"_s,
        u"        } else if (item->next == NULL) { printf(\"%s: nothing\\n\", name); }"_s,
        u"    }"_s,
        u"    return total; // what is hidden does not count"_s,
        u"}"_s,
    };
    const QString block = lines.join(between) + between;
    return block.repeated(size / block.size() + 1).first(size);
}

Timing timeFor(const QString &text)
{
    return measure([&text] { keep(QBCodeLanguageDetector().detectLanguageWithString(text)); },
                   {.fewestRuns = 3, .seconds = 1});
}

void addLinear(Report &report, const QString &name, const std::function<QString(qsizetype)> &textOfSize)
{
    const qsizetype size = sizeForRun(1'000'000, 20'000);
    Timing twice = timeFor(textOfSize(size / 2));
    for (double *seconds : {&twice.minimum, &twice.median, &twice.maximum}) {
        *seconds *= 2;
    }
    report.addTime(name, timeFor(textOfSize(size)), twice, 1.3);
}

} // namespace

int main()
{
    Report linear(u"the language of 1 MB of code, beside twice the time of half of it"_s);
    addLinear(linear, u"lines of code"_s, [](qsizetype size) { return codeOfSize(size, u'\n'); });
    addLinear(linear, u"one line of code"_s, [](qsizetype size) { return codeOfSize(size, u' '); });
    addLinear(linear, u"lines of one letter"_s, [](qsizetype size) { return u"x\n"_s.repeated(size / 2); });
    for (const QString &piece : {u"w"_s, u"("_s, u"' "_s, u"function(("_s, u"<a \""_s, u"if a ["_s, u"漢"_s}) {
        addLinear(linear, u"one line of %1"_s.arg(piece),
                  [&piece](qsizetype size) { return piece.repeated(size / piece.size()); });
    }

    const QString pasted = codeOfSize(6'000, u'\n');
    QList<std::shared_ptr<const NSRegularExpression>> expressions;
    for (const QBCodeLanguage &language : QBCodeLanguageDetector::languages()) {
        for (const QBCodeLanguageChecker &checker : language.checkers) {
            expressions.append(NSRegularExpression::regularExpressionWithPattern(checker.pattern,
                                                                                 NSRegularExpression::CaseInsensitive));
        }
    }
    const Timing engine = measure([&] {
        for (const QStringView line : QStringView(pasted).split(u'\n')) {
            for (const auto &expression : expressions) {
                keep(expression->rangeOfFirstMatchInString(line, 0, {0, line.size()}).location);
            }
        }
    });
    Report beside(u"the language of 6 KB of code, beside the expression engine"_s);
    beside.addTime(u"lines of code"_s, timeFor(pasted), engine, 1);
    return 0;
}

// What does the markup engine cost: to load a note, to type into it, to get its text back, to change its theme?
//
// Workloads (a realistic note and one full of markup, of 10 KB, 100 KB and 1,000,000 units, in both syntaxes):
//   load: the text becomes a styled one, against the cmark program on the same text as a process;
//   key: one unit typed in a paragraph of 300 units in the middle, and taken out again, against the load;
//   worst lines: one line of nothing but an opener, unpaired fences, brackets, hashes, deep nesting, minified JSON,
//     loaded and edited at either end, against the realistic note of the same size;
//   expand: the styled text as plain text, against a copy of it in memory and 50 ns a run;
//   theme: the styled text in another theme, against the load;
//   memory: bytes a unit of the styled text, the text's own included.
//
// Most are measured in turn with what they are held against: the machine's speed changes from minute to minute.

#include <Graphics/GraphicsEnvironment.h>
#include <Markup/QBNoteTextKitStack.h>
#include <Markup/StyledEdit.h>
#include <Support/CorpusGenerator.h>
#include <Support/Measure.h>
#include <Themes/QBNotesThemesManager.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstring>
#include <optional>

using namespace Qt::StringLiterals;
using namespace quib;
using namespace quib::benchmarks;

namespace {

/// A note as the editor holds it.
struct Note
{
    explicit Note(int syntax)
    {
        stack.themeManager()->loadDefaultTheme();
        stack.stylerManager()->setSyntax(syntax);
    }
    QBNotesTextStorage &storage() { return stack.noteTextStorage(); }

    QBNoteTextKitStack stack;
};

QString realistic(qsizetype units)
{
    const CorpusGenerator generator;
    QString text;
    for (qsizetype index = 0; text.size() < units; ++index) {
        text += generator.text(index) + u'\n';
    }
    text.truncate(units);
    return text;
}

QString full(qsizetype units)
{
    static const QString block = u"# Title with `code`\n"
                                 "Some *bold*, /slanted/, _under_ and -gone- words, ::marked:: ones too.\n"
                                 "* a bullet with #a/tag and [[A note]]\n- to do [link](https://example.com/a)\n"
                                 "+ done -> https://example.com/b\n1. one #aabbcc\n> quoted **strong** ~~out~~\n"
                                 "---\n```cpp\nint main() { return *p; }\n```\n"_s;
    QString text = block.repeated(units / block.size() + 1);
    text.truncate(units);
    return text;
}

struct Line
{
    QString name;
    QString text;
};

QList<Line> worstLines(qsizetype units)
{
    QList<Line> lines;
    const auto add = [&](const QString &name, const QString &piece) {
        lines.append({name, QString(piece).repeated(units / piece.size())});
    };
    add(u"unclosed bold"_s, u"*a "_s);
    add(u"unclosed slanted"_s, u" /a"_s);
    add(u"unclosed underline"_s, u"_a "_s);
    add(u"unclosed strike"_s, u"-a "_s);
    add(u"unclosed highlight"_s, u"::a "_s);
    add(u"backticks"_s, u"``` a"_s);
    add(u"unclosed wiki links"_s, u"[[a "_s);
    add(u"brackets"_s, u"["_s);
    add(u"closing brackets"_s, u"](("_s);
    add(u"hashes"_s, u"#"_s);
    add(u"tags"_s, u"#a/b c "_s);
    add(u"unclosed file markers"_s, u"[file:a"_s);
    add(u"colons of links"_s, u"http://"_s);
    add(u"dots"_s, u"a."_s);
    add(u"at signs"_s, u"a@"_s);
    add(u"unpaired fences"_s, u"a\n```x\n\n"_s);
    add(u"nesting"_s, u"*/_-::`[["_s);
    add(u"minified JSON"_s, u"{\"a\":[1,2,{\"b\":\"c/d_e\"}],\"f\":-1.5e3},"_s);
    return lines;
}

/// One key typed in place and taken out again.
void typeKey(QBNotesTextStorage &storage, qint64 place)
{
    keep(StyledEdit::replaceCharactersInRange(storage, {place, 0}, u"x", {place + 1, 0}));
    keep(StyledEdit::replaceCharactersInRange(storage, {place, 1}, u"", {place, 0}));
}

/// What one of two keys takes.
TimingPair halfOf(const TimingPair &two)
{
    const Timing &keys = two.work;
    return {{keys.minimum / 2, keys.median / 2, keys.maximum / 2, keys.runs, keys.processor / 2}, two.baseline};
}

/// Puts a paragraph of 300 plain units in the middle.
void insertParagraph(QString &text)
{
    const qsizetype middle = text.indexOf(u'\n', text.size() / 2);
    text.insert(middle, QString(u"\n\n"_s % u"plain words "_s.repeated(25) % u"\n\n"));
}

} // namespace

int main(int argc, char **argv)
{
    const auto application = GraphicsEnvironment::makeApplication(argc, argv);
    const qsizetype large = sizeForRun(1'000'000, 20'000);
    const QTemporaryDir folder;
    Report report(u"The markup engine"_s);
    report.judgeByProcessorTime();
    const MeasureOptions options{.fewestRuns = 5, .seconds = 2};

    for (const int syntax : {0, 1}) {
        const QString of = syntax == 0 ? u"native"_s : u"Markdown"_s;
        for (const bool isFull : {false, true}) {
            const QString kind = QString((isFull ? u"full of markup, "_s : u"realistic, "_s) % of);
            std::optional<Note> smallNote;
            qint64 inSmallBuffer = 0;
            for (const qsizetype units : {large / 100, large / 10, large}) {
                QString text = isFull ? full(units) : realistic(units);
                insertParagraph(text);
                QFile file(folder.filePath(u"note.md"_s));
                if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0) {
                    qFatal("the note can't be written");
                }
                file.close();

                Note note(syntax);
                const QString name = u"%1 units, %2: "_s.arg(units).arg(kind);
                const auto load = [&] { note.storage().loadString(text); };
                const auto besideCmark = measureInTurn(load, {u"cmark"_s, file.fileName()}, options);
                if (besideCmark) {
                    report.addTime(QString(name % u"load / cmark"), *besideCmark, units == large ? 3 : 0);
                }
                const Timing loadTime = besideCmark ? besideCmark->work : measure(load, options);
                const qint64 inBuffer = note.storage().string().indexOf(u"plain words plain", 0) + 150;
                const auto key = [&] { typeKey(note.storage(), inBuffer); };
                if (units == large / 100) {
                    smallNote.emplace(syntax);
                    smallNote->storage().loadString(text);
                    inSmallBuffer = inBuffer;
                }
                if (units == large) {
                    // Not in turn with it: the first key after a load has a text to copy.
                    report.addTime(QString(name % u"two keys / load"), measure(key, options), loadTime, 2.0 / 500);
                    const auto smallKey = [&] { typeKey(smallNote->storage(), inSmallBuffer); };
                    report.addTime(QString(name % u"key / key in the small note"),
                                   measureInTurn(key, smallKey, options), 1.3);
                    const auto runs = static_cast<double>(note.storage().attributedString().runs().runCount());
                    QString copy(text.size(), Qt::Uninitialized);
                    const Timing memory = measure([&] {
                        std::memcpy(copy.data(), text.constData(), static_cast<size_t>(text.size()) * 2);
                        keep(copy);
                    });
                    const Timing bound{memory.minimum * 3 + runs * 50e-9, memory.median * 3 + runs * 50e-9,
                                       memory.maximum, memory.runs, memory.processor * 3 + runs * 50e-9};
                    report.addTime(QString(name % u"expand / bound"),
                                   measure([&] { keep(note.storage().stringWithExpandedTextAttachments()); }, options),
                                   bound, 1);
                    int turn = 0;
                    const auto themes = QList{QBNotesThemesManager::textThemeForThemeName(u"Cobalt"_s, u"System"_s),
                                              QBNotesThemesManager::textThemeForThemeName(u"Ayu"_s, u"Georgia"_s)};
                    const auto theme = [&] { note.stack.themeManager()->loadTheme(themes.at(++turn % 2)); };
                    report.addTime(QString(name % u"theme / load"), measureInTurn(theme, load, options), 1);
                }
            }
            const QString text = isFull ? full(large) : realistic(large);
            const qint64 before = heapBytes();
            Note note(syntax);
            note.storage().loadString(text);
            report.addValue(u"%1 units, %2: bytes a unit"_s.arg(large).arg(kind),
                            static_cast<double>(heapBytes() - before) / static_cast<double>(large), 40, 1, u"B"_s);
        }
        Note usual(syntax);
        const QString text = realistic(large);
        const auto load = [&] { usual.storage().loadString(text); };
        for (const Line &line : worstLines(large)) {
            Note note(syntax);
            const MeasureOptions few{.fewestRuns = 3, .seconds = 0.3, .warmUps = 0};
            report.addTime(u"%1, %2: load / realistic"_s.arg(line.name, of),
                           measureInTurn([&] { note.storage().loadString(line.text); }, load, few), 5);
            report.addTime(u"%1, %2: key at the end / load of realistic"_s.arg(line.name, of),
                           halfOf(measureInTurn([&] { typeKey(note.storage(), note.storage().length()); }, load, few)),
                           5);
            report.addTime(u"%1, %2: key at the start / load of realistic"_s.arg(line.name, of),
                           halfOf(measureInTurn([&] { typeKey(note.storage(), 0); }, load, few)), 5);
        }
    }
    return 0;
}

// What does a row of the note list cost while a search shows its hit in a note of a megabyte?
//
// Workloads (one note of 1 MB; unit: seconds a row):
//   the row's text with a snippet, for a word at the text's end, one that is nowhere, one met everywhere, an accented
//   one, a phrase, two words; the same row once more, which was kept; the row of a note whose text was not read yet.
// Baseline, in the same run: a search of the note's folded text to its end; of two words, a search for each.

#include <Support/CorpusGenerator.h>
#include <Support/Measure.h>

#include <Files/Profile.h>
#include <Graphics/GraphicsEnvironment.h>
#include <Search/FoldedTextArena.h>
#include <Search/Lists/QBNoteTableCellTextRenderer.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNote.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Themes/QBNotesAppThemeManager.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QCoreApplication>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace quib::benchmarks;

int main(int argc, char **argv)
{
    const auto application = quib::GraphicsEnvironment::makeApplication(argc, argv);
    const QTemporaryDir folder;
    quib::Profile::setRoot(folder.path());
    QBNotesPreferenceManager preferences;
    QBNotesPreferenceManager::setSharedPreferenceManager(&preferences);
    QBCoreDataStack stack(folder.path());
    QBCoreDataStack::setSharedStack(&stack);
    stack.setupStackWithDelegate({});
    QBNotesAppThemeManager theme;
    theme.loadDefaultTheme();
    QBNotesTextThemeManager textTheme;
    textTheme.loadDefaultTheme();

    const CorpusGenerator generator;
    const QString text = generator.textWithBytes(3, sizeForRun(1'000'000, 20'000)) + u"\nthe last words zanzibar\n"_s;
    const auto note = QBNote::noteWithText(text, 0, *stack.managedObjectContext());
    stack.saveUsingCoalescence(/*coalescence=*/false);
    quib::FoldedTextArena arena;
    arena.setText(1, 1, text);

    Report report(u"a row with a snippet of a 1 MB note"_s);
    report.addRemark(
        u"%1 units, %2 bytes folded; the baseline is a search of the folded text for zanzibar"_s.arg(text.size())
            .arg(arena.sizeInBytes()));
    const Timing search = measure([&] { keep(arena.keysOfTextsContaining(u"zanzibar")); });
    const Timing twoSearches = measure([&] {
        keep(arena.keysOfTextsContaining(u"zanzibar"));
        keep(arena.keysOfTextsContaining(u"zqqzzq"));
    });
    QBNoteTableCellTextRenderer renderer(&theme, &textTheme);
    const QList<std::pair<QString, QString>> searches{
        {u"a word at the end"_s, u"zanzibar"_s},         {u"a word that is nowhere"_s, u"zqqzzq"_s},
        {u"a word met everywhere"_s, generator.word(3)}, {u"an accented word"_s, u"çàffèqq"_s},
        {u"a phrase"_s, u"\"words zanzibar\""_s},        {u"two words"_s, u"zanzibar zqqzzq"_s}};
    for (const auto &[label, searched] : searches) {
        const Timing row =
            measure([&, term = searched] { keep(renderer.noteTableCellAttributedStringForNote(*note, term).length()); },
                    {}, [&] { renderer.emptyCache(); });
        report.addTime(label, row, searched.contains(u' ') && !searched.startsWith(u'"') ? twoSearches : search, 3);
    }
    const Timing kept =
        measure([&] { keep(renderer.noteTableCellAttributedStringForNote(*note, u"zanzibar"_s).length()); });
    report.addTime(u"once more"_s, kept, search, 0);
    const Timing unread =
        measure([&] { keep(renderer.noteTableCellAttributedStringForNote(*note, u"zanzibar"_s).length()); }, {},
                [&] {
                    renderer.emptyCache();
                    stack.managedObjectContext()->refreshObject(note.get(), /*mergeChanges=*/false);
                });
    report.addTime(u"with the reading of the text"_s, unread, search, 0);
    return 0;
}

// How long does the view of a very long note take from what the user does to what is seen, beside the toolkit's own
// text edit with the same text in the same fonts and colours?
//
// Workloads (a note of a million units, a window of 900 by 700 points; unit: seconds until the frame is painted):
//   open: a formatted text is put into a new view; the view of notes is timed with its styling beside that;
//   key: a letter typed in the middle of the note, with the styling that the editor does after each key;
//   jump: to the end of a note that was just opened;
//   resize: a window made narrower and wider again, at the end of the note.
// Baseline, in the same run: QTextEdit.

#include <Editor/QBNoteTextView.h>
#include <Graphics/GraphicsAttributes.h>
#include <Markup/QBNotesTextStorage.h>
#include <Support/CorpusGenerator.h>
#include <Support/Measure.h>
#include <Text/NSAttributeName.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextEdit>

#include <algorithm>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;
using namespace quib;
using namespace quib::benchmarks;

namespace {

constexpr QSize kSize(900, 700);

QString textOfUnits(qsizetype units)
{
    const CorpusGenerator generator;
    QString text;
    for (qsizetype index = 0; text.size() < units; ++index) {
        text += generator.text(index) + u'\n';
    }
    text.truncate(units);
    return text;
}

/// Styles what was typed, as the editor does.
class StylingDelegate : public QBNoteTextViewDelegate
{
public:
    void qbNoteTextViewDidChangeText(QBNoteTextView &view) override
    {
        QBNotesTextStorage &storage = view.textStorage();
        const NSRange range = storage.rangeToStyle();
        NSRange selection = kNotFoundRange;
        if (const auto styled = storage.styleTextInRange(range, view.selectedRange(), &selection)) {
            view.replaceCharactersInrange(range, *styled, selection);
        }
    }
};

/// One formatted stretch, as the toolkit's text edit takes it.
struct Run
{
    QString text;
    QTextCharFormat format;
};

std::vector<Run> runsOf(const NSAttributedString &text)
{
    std::vector<Run> runs;
    text.enumerateAttributesInRange(
        text.fullRange(), NSAttributedStringEnumerationOptions::Forward,
        [&](const AttributeSet &attributes, NSRange range, bool * /*stop*/) {
            Run run{.text = text.stringInRange(range).toString().replace(QChar::ObjectReplacementCharacter, u'\u00A0'),
                    .format = {}};
            if (const NSFont *font = fontOfAttribute(attributes.value(NSFontAttributeName))) {
                run.format.setFont(font->font());
            }
            const AttributeValue foreground = attributes.value(NSForegroundColorAttributeName);
            if (const NSColor *color = colorOfAttribute(foreground)) {
                run.format.setForeground(QColor::fromRgbF(float(color->redComponent()), float(color->greenComponent()),
                                                          float(color->blueComponent())));
            }
            runs.push_back(std::move(run));
        });
    return runs;
}

/// Lets everything that waits be done, painting included.
void paint()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

void sendKey(QWidget &widget, int key, const QString &text = {}, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QCoreApplication::sendEvent(&widget, &press);
}

Timing timeOf(const std::function<void()> &work)
{
    return measure(work, {.fewestRuns = 1, .mostRuns = 1, .seconds = 0, .warmUps = 0});
}

/// What several runs took, together.
Timing timingOf(std::vector<Timing> runs)
{
    std::ranges::sort(runs, {}, &Timing::median);
    return {.minimum = runs.front().median,
            .median = runs[runs.size() / 2].median,
            .maximum = runs.back().median,
            .runs = qsizetype(runs.size()),
            .processor = std::ranges::min(runs, {}, &Timing::processor).processor};
}

struct Series
{
    std::vector<Timing> open;
    std::vector<Timing> openStyled;
    std::vector<Timing> jump;
    std::vector<Timing> resize;
    std::vector<Timing> keys;
};

template <typename View> void resizeAtEnd(View &view, Series *series)
{
    for (const int width : {700, 520, 840, 900}) {
        series->resize.push_back(timeOf([&] {
            view.resize(width, kSize.height());
            paint();
        }));
    }
}

template <typename View, typename Place> void typeKeys(View &view, const Place &placeCaret, Series *series)
{
    placeCaret();
    paint();
    sendKey(view, Qt::Key_A, u"a"_s);
    paint();
    for (qsizetype key = 0; key < sizeForRun(60, 3); ++key) {
        series->keys.push_back(timeOf([&] {
            sendKey(view, Qt::Key_A, key % 7 == 6 ? u" "_s : u"a"_s);
            paint();
        }));
    }
}

void measureNoteView(QBNoteTextKitStack &stack, const QString &text, Series *series)
{
    const NSAttributedString styled = stack.noteTextStorage().attributedSubstringFromRange(
        stack.noteTextStorage().fullRange(), /*expandTextAttachment=*/false);
    stack.noteTextStorage().setAttributedString({});
    StylingDelegate delegate;
    std::unique_ptr<QBNoteTextView> view;
    series->open.push_back(timeOf([&] {
        view = std::make_unique<QBNoteTextView>(stack);
        view->setDelegate(&delegate);
        view->resize(kSize);
        stack.noteTextStorage().setAttributedString(styled);
        view->show();
        paint();
    }));
    series->jump.push_back(timeOf([&] {
        sendKey(*view, Qt::Key_End, {}, Qt::ControlModifier);
        paint();
    }));
    resizeAtEnd(*view, series);
    view->setFocus();
    typeKeys(
        *view,
        [&] {
            const NSRange middle = {stack.noteTextStorage().length() / 2, 0};
            view->setSelectedRange(middle);
            view->scrollRangeToVisible(middle);
        },
        series);
    view.reset();
    view = std::make_unique<QBNoteTextView>(stack);
    view->setDelegate(&delegate);
    view->resize(kSize);
    series->openStyled.push_back(timeOf([&] {
        view->loadString(text);
        view->show();
        paint();
    }));
}

void measureTextEdit(const std::vector<Run> &runs, Series *series)
{
    auto edit = std::make_unique<QTextEdit>();
    edit->setAcceptRichText(false);
    edit->resize(kSize);
    series->open.push_back(timeOf([&] {
        QTextCursor cursor(edit->document());
        cursor.beginEditBlock();
        for (const Run &run : runs) {
            cursor.insertText(run.text, run.format);
        }
        cursor.endEditBlock();
        edit->moveCursor(QTextCursor::Start);
        edit->show();
        paint();
    }));
    series->jump.push_back(timeOf([&] {
        sendKey(*edit, Qt::Key_End, {}, Qt::ControlModifier);
        paint();
    }));
    resizeAtEnd(*edit, series);
    edit->setFocus();
    typeKeys(
        *edit,
        [&] {
            QTextCursor cursor = edit->textCursor();
            cursor.setPosition(edit->document()->characterCount() / 2);
            edit->setTextCursor(cursor);
        },
        series);
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    QApplication::setCursorFlashTime(0);
    const QString text = textOfUnits(sizeForRun(1'000'000, 5'000));
    QBNoteTextKitStack stack;
    stack.themeManager()->loadDefaultTheme();
    stack.noteTextStorage().loadString(text);
    const std::vector<Run> runs = runsOf(stack.noteTextStorage().attributedString());

    Series note;
    Series edit;
    for (qsizetype round = 0; round < sizeForRun(5, 1); ++round) {
        // In turns, so that what else the machine does weighs on both.
        measureTextEdit(runs, &edit);
        measureNoteView(stack, text, &note);
    }
    Report report(u"a note of a million units: from what is done to what is seen"_s);
    report.judgeByProcessorTime();
    report.addTime(u"open"_s, timingOf(note.open), timingOf(edit.open), 1.0 / 5);
    report.addTime(u"open, styling it too"_s, timingOf(note.openStyled), timingOf(edit.open), 0);
    report.addTime(u"key"_s, timingOf(note.keys), timingOf(edit.keys), 1.0 / 4);
    report.addTime(u"jump to the end"_s, timingOf(note.jump), timingOf(edit.jump), 1.0 / 15);
    report.addTime(u"resize"_s, timingOf(note.resize), timingOf(edit.resize), 1.0 / 15);
    report.addRemark(u"%1 units in %2 runs"_s.arg(text.size()).arg(runs.size()));
    return 0;
}

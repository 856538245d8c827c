// Random events of every kind in the view of a note: after each, the text is what a plain string has that the same was
// done to. In both syntaxes, in the view alone and in the editor's pane. QUIB_NIGHTLY=1 makes many more of them.

#include "EditorFixture.h"
#include "EditorPaneFixture.h"

#include <Editor/CompletionPopup.h>
#include <Editor/LineMarker.h>
#include <Support/TestSeed.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <gtest/gtest.h>

#include <QAction>
#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QImage>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QTextBoundaryFinder>
#include <QWheelEvent>

#include <algorithm>
#include <functional>
#include <optional>
#include <random>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using namespace quib::tests;
using quib::isWithinMarker;

namespace {

/// More text than this is taken away, so that very many events stay quick. Units: UTF-16 units.
constexpr qsizetype kMostText = 1500;

int roundsOf(int byDay, int byNight)
{
    return qEnvironmentVariableIsSet("QUIB_NIGHTLY") ? byNight : byDay;
}

/// A stretch of the note's text.
struct Stretch
{
    qsizetype start = 0;
    qsizetype limit = 0;
};

/// Whether the beginning of a line is the marker of a bullet, a box or a heading, and no more.
bool isMarker(QStringView lineStart)
{
    static const QRegularExpression marker(
        QRegularExpression::anchoredPattern(u"\\s*([-*+\u2022]|#{1,6}|- \\[[ x]\\])"));
    return marker.match(lineStart.toString()).hasMatch();
}

qsizetype lineStartOf(QStringView text, qsizetype place)
{
    return place == 0 ? 0 : text.lastIndexOf(u'\n', place - 1) + 1;
}

/// The most that may go when a stretch is taken out: the whole links and colours that it touches, and the blank of a
/// marker that it ends with.
Stretch mostTaken(const QString &text, Stretch taken)
{
    static const QRegularExpression pieces(u"\\[[^\\]\\n]*\\]\\([^)\\n]*\\)|#[0-9a-fA-F]{3,8}"_s);
    Stretch most = taken;
    for (auto match = pieces.globalMatch(text); match.hasNext();) {
        const auto piece = match.next();
        if (piece.capturedStart() <= taken.limit && piece.capturedEnd() >= taken.start) {
            most = {std::min(most.start, piece.capturedStart()), std::max(most.limit, piece.capturedEnd())};
        }
    }
    if (taken.limit < text.size() && text[taken.limit] == u' ' &&
        isMarker(QStringView(text)
                     .sliced(lineStartOf(text, taken.limit))
                     .first(taken.limit - lineStartOf(text, taken.limit)))) {
        most.limit = std::max(most.limit, taken.limit + 1);
    }
    return most;
}

/// A text without what the editor does to lines of lists by itself: their markers, numbers, and indents.
QString withoutLists(const QString &text)
{
    static const QRegularExpression marker(u"^(\\s*([-*+>\u2022]|\\[[ x]\\]|\\d+\\.)(\\s|$))*\\s*"_s);
    QStringList lines;
    for (QString line : text.split(u'\n')) {
        line.remove(marker);
        if (!line.isEmpty()) {
            lines.append(line);
        }
    }
    return lines.join(u'\n');
}

class Monkey
{
public:
    Monkey(std::mt19937 generator, QBNoteTextView &view, QWidget &window, bool isPane)
        : m_random(generator)
        , m_view(view)
        , m_window(window)
        , m_isPane(isPane)
    {
        m_seen.insert(m_model);
    }

    /// Does one thing. Gives its name, for messages.
    QString act()
    {
        switch (number(22)) {
        case 0:
        case 1:
        case 2:
        case 3:
        case 4:
            return type();
        case 5:
            return takeAway(Qt::Key_Backspace);
        case 6:
            return takeAway(Qt::Key_Delete);
        case 7:
        case 8:
        case 9:
            return move();
        case 10:
            return click();
        case 11:
            return drag();
        case 12:
            return drop();
        case 13:
            return compose();
        case 14:
            return commit();
        case 15:
            return undoAndRedo();
        case 16:
            return undo();
        case 17:
            return look();
        case 18:
            return paste();
        case 19:
            return tab();
        case 20:
            return moveText();
        default:
            return tick();
        }
    }

    void check(const QString &what)
    {
        const QString now = text();
        if (m_isPane && now != m_model) {
            ASSERT_EQ(withoutLists(now), withoutLists(m_model)) << "after " << what.toStdString();
            m_model = now;
        }
        ASSERT_EQ(now, m_model) << "after " << what.toStdString();
        ASSERT_TRUE(now.isValidUtf16()) << "half a character is left after " << what.toStdString();
        const NSRange selection = m_view.selectedRange();
        ASSERT_TRUE(selection.location >= 0 && selection.limit() <= m_view.textStorage().length())
            << "after " << what.toStdString();
        const QStringView buffer = m_view.textStorage().string();
        for (const qint64 place : {selection.location, selection.limit()}) {
            ASSERT_FALSE(place < buffer.size() && buffer[place].isLowSurrogate())
                << "in the middle of a character after " << what.toStdString() << ": " << place;
        }
        m_seen.insert(m_model);
        if (m_model.size() > kMostText) {
            m_view.setSelectedRange({0, m_view.textStorage().length() * 9 / 10});
            takeAway(Qt::Key_Backspace);
        }
    }

    size_t number(size_t limit) { return m_random() % limit; }
    [[nodiscard]] QString text() const { return m_view.textStorage().stringWithExpandedTextAttachments(); }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&m_view, static_cast<Qt::Key>(key), modifiers);
    }
    /// A list of completions was open for a key: it changed what stands before the caret, and no more.
    void expectCompleted(qsizetype caret)
    {
        constexpr qsizetype kLongest = 40;
        const QString now = text();
        const qsizetype kept = std::max<qsizetype>(0, caret - kLongest);
        const qsizetype rest = std::min(m_model.size(), caret + kLongest);
        EXPECT_TRUE(now.startsWith(QStringView(m_model).first(kept)));
        EXPECT_TRUE(now.endsWith(QStringView(m_model).sliced(rest)));
        m_model = now;
    }
    qint64 inText(qint64 place)
    {
        return m_view.textStorage().stringWithExpandedTextAttachmentsWithRange({0, place}).size();
    }

private:
    QString randomText()
    {
        static const QStringList pieces = {u"a"_s,   u"b c"_s,          u" "_s,       u"#"_s,
                                           u"*"_s,   u"* "_s,           u"/"_s,       u"_"_s,
                                           u"-"_s,   u"+ "_s,           u"1. "_s,     u"- [ ] "_s,
                                           u"`"_s,   u"[["_s,           u"]]"_s,      u"[t](http://a.b/) "_s,
                                           u"-> "_s, u" #ff8000 "_s,    u"> "_s,      u"::"_s,
                                           u"- "_s,  u"\u05D0\u05D1"_s, u"e\u0301"_s, u"\U0001F600"_s};
        return pieces[qsizetype(number(size_t(pieces.size())))];
    }
    QPoint randomPoint()
    {
        const QRect area = m_view.viewport()->rect();
        return {int(number(size_t(area.width()))), int(number(size_t(area.height())))};
    }
    /// The model with a text in the place of a stretch. A heading that is written right behind the marker of one takes
    /// its place.
    [[nodiscard]] QString replacedInModel(Stretch stretch, const QString &with) const
    {
        static const QRegularExpression emptyHeading(QRegularExpression::anchoredPattern(u"#{1,6} (#{0,6})"));
        static const QRegularExpression heading(u"^#{1,6} "_s);
        const qsizetype line = lineStartOf(m_model, stretch.start);
        const auto before = emptyHeading.match(m_model.sliced(line, stretch.start - line));
        const QString hashes = before.captured(1);
        const auto written = heading.match(hashes + with);
        const bool isHeading = before.hasMatch() && written.hasMatch() && written.capturedLength() > hashes.size();
        const qsizetype start = isHeading ? line : stretch.start;
        return QString(m_model).replace(start, stretch.limit - start, isHeading ? QString(hashes + with) : with);
    }
    /// Does what writes a text over the selection: that is gone with what belongs to it, and nothing else is.
    void write(const QString &with, const std::function<void()> &act, bool mayShiftLines = false)
    {
        const NSRange selection = m_view.selectedRange();
        const Stretch tight = selectedText();
        const Stretch wide = selection.length > 0 ? mostTaken(m_model, tight) : tight;
        const bool mayRefuse = !m_view.textStorage().canEditTextInRange(selection);
        act();
        const QString now = text();
        if ((mayRefuse && now == m_model) || (mayShiftLines && withoutLists(now) == withoutLists(m_model))) {
            return;
        }
        std::optional<QString> written;
        for (qsizetype start = tight.start; !written && start >= wide.start; --start) {
            for (qsizetype limit = tight.limit; !written && limit <= wide.limit; ++limit) {
                QString candidate = replacedInModel({start, limit}, with);
                if (candidate == now || (m_isPane && withoutLists(candidate) == withoutLists(now))) {
                    written = std::move(candidate);
                }
            }
        }
        EXPECT_TRUE(written) << "what is written takes the place of " << tight.start << " to " << tight.limit
                             << ", at most of " << wide.start << " to " << wide.limit << ", in\n"
                             << m_model.toStdString() << "\nand left\n"
                             << now.toStdString();
        m_model = written.value_or(now);
    }
    /// What is left must be the model without a stretch, which has the tight one within it and lies within the wide
    /// one. Nothing need go where the text may refuse.
    void expectTaken(const QString &what, Stretch tight, Stretch wide, bool mayRefuse)
    {
        const QString now = text();
        if (mayRefuse && now == m_model) {
            return;
        }
        const auto isLeft = [this, &now](Stretch taken) {
            const QString left = QString(m_model).remove(taken.start, taken.limit - taken.start);
            return left == now || (m_isPane && withoutLists(left) == withoutLists(now));
        };
        bool isFound = isLeft(tight);
        for (qsizetype start = tight.start; !isFound && start >= wide.start; --start) {
            for (qsizetype limit = tight.limit; !isFound && limit <= wide.limit; ++limit) {
                isFound = isLeft({start, limit});
            }
        }
        EXPECT_TRUE(isFound) << what.toStdString() << " took more, or less, than " << tight.start << " to "
                             << tight.limit << ", at most " << wide.start << " to " << wide.limit << ", from\n"
                             << m_model.toStdString() << "\nand left\n"
                             << now.toStdString();
        m_model = now;
    }
    Stretch selectedText()
    {
        const NSRange selection = m_view.selectedRange();
        return {inText(selection.location), inText(selection.limit())};
    }
    /// What a key beside the caret takes at most: a character, or the words up to the next edge of one.
    Stretch besideCaret(bool forward, bool isWord)
    {
        const QStringView buffer = m_view.textStorage().string();
        const qint64 caret = m_view.caret();
        const auto isPart = [&](qint64 place) {
            const QChar unit = buffer[place];
            return unit.isLetterOrNumber();
        };
        const auto joins = [&](qint64 place) {
            return buffer[place].isMark() || QStringView(u"_.:").contains(buffer[place]);
        };
        const auto unitAt = [&](qint64 edge) { return forward ? edge : edge - 1; };
        const auto isEdge = [&](qint64 edge) { return forward ? edge >= buffer.size() : edge <= 0; };
        const qint64 step = forward ? 1 : -1;
        qint64 edge = caret;
        // What stands for nothing is passed over, and one unit is taken, whatever it stands for.
        while (!isEdge(edge) && inText(edge) == inText(caret)) {
            edge += step;
        }
        if (isWord) {
            edge = caret;
            while (!isEdge(edge) && !isPart(unitAt(edge))) {
                edge += step;
            }
            while (!isEdge(edge) && (isPart(unitAt(edge)) || joins(unitAt(edge)))) {
                edge += step;
            }
        }
        const qsizetype place = inText(caret);
        qsizetype reached = inText(edge);
        QTextBoundaryFinder graphemes(QTextBoundaryFinder::Grapheme, m_model);
        graphemes.setPosition(place);
        if (forward) {
            reached = std::max(reached, std::max<qsizetype>(graphemes.toNextBoundary(), place));
        } else {
            const qsizetype before = graphemes.toPreviousBoundary();
            reached = before < 0 ? reached : std::min(reached, before);
        }
        return {std::min(place, reached), std::max(place, reached)};
    }

    QString type()
    {
        const QString written = number(10) == 0 ? u"\n"_s : randomText();
        if (written == u"\n") {
            write(written, [this] { press(Qt::Key_Return); });
            return u"return"_s;
        }
        write(written, [this, &written] { m_view.typeText(written); });
        return u"typing "_s + written;
    }
    QString takeAway(int key)
    {
        const bool isWord = number(6) == 0;
        const bool isForward = key == Qt::Key_Delete;
        const NSRange selection = m_view.selectedRange();
        Stretch tight = selectedText();
        Stretch wide = tight;
        if (selection.length == 0) {
            wide = besideCaret(isForward, isWord);
            const qsizetype line = lineStartOf(m_model, wide.start);
            const bool isBlank = wide.limit - wide.start == 1 && m_model[wide.start] == u' ';
            if (isBlank && isMarker(QStringView(m_model).sliced(line, wide.start - line))) {
                wide.start = line; // the marker goes with its blank
            }
        }
        wide = mostTaken(m_model, wide);
        const bool mayRefuse =
            selection.length == 0 || tight.start == tight.limit || !m_view.textStorage().canEditTextInRange(selection);
        const QString before = m_model;
        press(key, isWord ? Qt::ControlModifier : Qt::NoModifier);
        expectTaken(u"taking away"_s, tight, wide, mayRefuse);
        return u"taking away"_s;
    }
    QString tab()
    {
        const bool isBack = number(3) == 0;
        const NSRange selection = m_view.selectedRange();
        const auto press = [this, isBack] {
            this->press(isBack ? Qt::Key_Backtab : Qt::Key_Tab, isBack ? Qt::ShiftModifier : Qt::NoModifier);
        };
        if (m_view.textStorage().string().sliced(selection.location, selection.length).contains(u'\n')) {
            const NSRange lines = m_view.textStorage().attributedString().paragraphRangeForRange(selection);
            const Stretch stretch{inText(lines.location), inText(lines.limit())};
            press();
            if (text() != m_model && !m_isPane) {
                m_model = shiftedInModel(stretch, isBack);
            }
            return isBack ? u"lines backwards"_s : u"lines forwards"_s;
        }
        if (isBack) {
            press();
            return u"tab backwards"_s;
        }
        write(u"\t"_s, press, /*mayShiftLines=*/m_isPane);
        return u"tab"_s;
    }
    /// The model with the lines of a stretch further in by a tab, or out by one or up to four blanks.
    [[nodiscard]] QString shiftedInModel(Stretch lines, bool isBack) const
    {
        static const QRegularExpression start(u"^"_s, QRegularExpression::MultilineOption);
        static const QRegularExpression indent(u"^(\\t| {1,4})"_s, QRegularExpression::MultilineOption);
        QString shifted = m_model.sliced(lines.start, lines.limit - lines.start);
        const bool isEnded = shifted.endsWith(u'\n');
        shifted.chop(isEnded ? 1 : 0);
        isBack ? shifted.remove(indent) : shifted.replace(start, u"\t"_s);
        return QString(m_model).replace(lines.start, lines.limit - lines.start, isEnded ? shifted + u'\n' : shifted);
    }
    QString moveText()
    {
        const NSRange selection = m_view.selectedRange();
        auto to = qint64(number(size_t(m_view.textStorage().length() + 1)));
        const QStringView buffer = m_view.textStorage().string();
        to -= to > 0 && to < buffer.size() && buffer[to].isLowSurrogate() ? 1 : 0;
        const Stretch tight = selectedText();
        const Stretch wide = mostTaken(m_model, tight);
        const qsizetype target = inText(to);
        const QString before = std::exchange(m_model, QString());
        if (!m_view.moveText(selection, to)) {
            m_model = before;
            return u"no text moved"_s;
        }
        const QString now = text();
        for (qsizetype start = tight.start; m_model.isNull() && start >= wide.start; --start) {
            for (qsizetype limit = tight.limit; m_model.isNull() && limit <= wide.limit; ++limit) {
                QString moved = before;
                const QString taken = before.sliced(start, limit - start);
                if (target <= start) {
                    moved.remove(start, taken.size()).insert(target, taken);
                } else if (target >= limit) {
                    moved.insert(target, taken).remove(start, taken.size());
                }
                if (moved == now || (m_isPane && withoutLists(moved) == withoutLists(now))) {
                    m_model = now;
                }
            }
        }
        EXPECT_EQ(m_model, now) << "moving " << tight.start << " to " << tight.limit << " to " << target << " in\n"
                                << before.toStdString();
        return u"moving text"_s;
    }
    QString move()
    {
        constexpr int kKeys[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up,     Qt::Key_Down,
                                 Qt::Key_Home, Qt::Key_End,   Qt::Key_PageUp, Qt::Key_PageDown};
        Qt::KeyboardModifiers modifiers;
        modifiers.setFlag(Qt::ShiftModifier, number(3) == 0);
        modifiers.setFlag(Qt::ControlModifier, number(5) == 0);
        press(kKeys[number(std::size(kKeys))], modifiers);
        return u"moving"_s;
    }
    QString click()
    {
        const QPoint at = randomPoint();
        if (m_view.layoutManager().attachmentAtPoint(at)) {
            return u"a click that would tick"_s;
        }
        if (number(4) == 0) {
            QTest::mouseDClick(m_view.viewport(), Qt::LeftButton, {}, at);
        } else {
            QTest::mouseClick(m_view.viewport(), Qt::LeftButton, number(3) == 0 ? Qt::ShiftModifier : Qt::NoModifier,
                              at);
        }
        allowOneTick();
        return u"a click"_s;
    }
    QString drag()
    {
        QWidget *viewport = m_view.viewport();
        m_view.setSelection(m_view.caret(), m_view.caret()); // or the text itself is dragged
        const QPoint from = randomPoint();
        if (m_view.layoutManager().attachmentAtPoint(from)) {
            return u"no drag"_s;
        }
        QTest::mousePress(viewport, Qt::LeftButton, {}, from);
        const QPointF to = randomPoint() + QPoint(0, int(number(200)) - 100);
        QMouseEvent event(QEvent::MouseMove, to, viewport->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(viewport, &event);
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, to.toPoint());
        allowOneTick();
        return u"a drag"_s;
    }
    QString drop()
    {
        const QPoint at = randomPoint();
        QMimeData data;
        data.setText(randomText());
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_view.viewport(), &enter);
        if (number(4) == 0) {
            QDragLeaveEvent leave;
            QCoreApplication::sendEvent(m_view.viewport(), &leave);
            return u"a drop that went away"_s;
        }
        const qint64 place = m_view.locationAtViewportPoint(at);
        const bool isInMarker = isWithinMarker(m_view.textStorage().attributedString(), place);
        m_view.setSelectedRange({place + (isInMarker ? 1 : 0), 0});
        write(data.text(), [&] {
            QDropEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(m_view.viewport(), &event);
        });
        return u"a drop of "_s + data.text();
    }
    QString compose()
    {
        const QString composed = randomText().repeated(int(number(4)));
        QInputMethodEvent event(composed,
                                {{QInputMethodEvent::Cursor, int(number(size_t(composed.size() + 1))), 1, QVariant()}});
        QCoreApplication::sendEvent(&m_view, &event);
        return u"composing "_s + composed;
    }
    QString commit()
    {
        const QString committed = randomText();
        write(committed, [&] {
            QInputMethodEvent event;
            event.setCommitString(committed);
            QCoreApplication::sendEvent(&m_view, &event);
        });
        return u"committing "_s + committed;
    }
    QString undoAndRedo()
    {
        // There and back again.
        QStringList texts;
        for (size_t steps = number(6); steps > 0 && m_view.undoManager().canUndo(); --steps) {
            texts.append(text());
            press(Qt::Key_Z, Qt::ControlModifier);
        }
        while (!texts.isEmpty()) {
            press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
            EXPECT_EQ(text(), texts.takeLast());
        }
        return u"undo and redo"_s;
    }
    QString undo()
    {
        press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_TRUE(m_seen.contains(text())) << "undo gives a text that was there before";
        m_model = text();
        return u"undo"_s;
    }
    QString look()
    {
        switch (number(4)) {
        case 0:
            m_window.resize(200 + int(number(500)), 150 + int(number(300)));
            return u"another size"_s;
        case 1:
            m_view.textKitStack().themeManager()->setZoomedBaseFontSize(9 + double(number(14)));
            return u"other letters"_s;
        case 2:
            m_view.setFocusMode(number(2) == 0);
            m_view.setTypewriterScrolling(number(2) == 0);
            return u"another mode"_s;
        default: {
            const QPoint turned(0, int(number(400)) - 200);
            QWheelEvent wheel(QPointF(9, 9), m_view.mapToGlobal(QPointF(9, 9)), turned, turned, Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(m_view.viewport(), &wheel);
            return u"the wheel"_s;
        }
        }
    }
    QString paste()
    {
        const NSRange selection = m_view.selectedRange();
        const Stretch tight = selectedText();
        if (number(2) == 0 && tight.limit > tight.start) {
            const Stretch wide = mostTaken(m_model, tight);
            const QString before = m_model;
            press(Qt::Key_X, Qt::ControlModifier);
            const QString taken = QGuiApplication::clipboard()->text();
            EXPECT_TRUE(taken.contains(before.sliced(tight.start, tight.limit - tight.start)));
            EXPECT_TRUE(before.sliced(wide.start, wide.limit - wide.start).contains(taken));
            expectTaken(u"cutting"_s, tight, wide, !m_view.textStorage().canEditTextInRange(selection));
            EXPECT_TRUE(m_isPane || m_model == before || m_model.size() + taken.size() == before.size())
                << "what is gone is what was copied";
            return u"cutting"_s;
        }
        QGuiApplication::clipboard()->setText(randomText());
        write(QGuiApplication::clipboard()->text(), [this] { press(Qt::Key_V, Qt::ControlModifier); });
        return u"pasting"_s;
    }
    static QChar otherState(QChar state)
    {
        switch (state.unicode()) {
        case u'-':
            return u'+';
        case u'+':
            return u'-';
        case u' ':
            return u'x';
        default:
            return u' ';
        }
    }
    /// A tick is no step of its own here: what was undone comes back as it was ticked.
    void forgetSteps()
    {
        m_view.breakUndoCoalescing();
        m_view.undoManager().removeAllActions();
        m_seen.clear();
    }
    /// The mouse may have hit a box.
    void allowOneTick()
    {
        const QString now = text();
        const auto differing = std::mismatch(now.begin(), now.end(), m_model.begin(), m_model.end());
        if (now.size() != m_model.size() || differing.first == now.end()) {
            return;
        }
        const qsizetype place = differing.first - now.begin();
        QString ticked = m_model;
        ticked[place] = otherState(ticked[place]);
        if (ticked == now) {
            m_model = ticked;
            forgetSteps();
        }
    }
    QString tick()
    {
        if (const auto box = m_view.checkBoxInParagraph(m_view.caret())) {
            const qint64 place = inText(*box);
            const qint64 state = inText(*box + 1) - place == 1 ? place : place + 3;
            m_model[state] = otherState(m_model[state]);
            m_view.toggleCheckBox(*box);
            forgetSteps();
        }
        return u"ticking"_s;
    }

    std::mt19937 m_random;
    QBNoteTextView &m_view;
    QWidget &m_window;
    bool m_isPane = false;
    QString m_model;
    QSet<QString> m_seen;
};

} // namespace

TEST(NoteTextViewMonkey, LeavesTheTextThatAModelHas)
{
    for (const int syntax : {0, 1}) {
        SCOPED_TRACE(syntax == 0 ? "native" : "markdown");
        const TestSeed seed;
        const int rounds = roundsOf(2'000, 50'000);
        EditorFixture editor(syntax);
        Monkey monkey(seed.generator(), editor.view(), editor.view(), /*isPane=*/false);
        for (int round = 0; round < rounds; ++round) {
            const QString what = monkey.act();
            monkey.check(what);
            if (testing::Test::HasFailure()) {
                FAIL() << "round " << round << ", " << what.toStdString();
            }
            if (round % 53 == 0) {
                (void)editor.painted();
                QCoreApplication::processEvents();
            }
        }
    }
}

namespace quib::tests {

class NotePaneMonkey : public EditorPaneFixture, public testing::WithParamInterface<bool>
{
};

TEST_P(NotePaneMonkey, LosesNoTextThatNobodyTook)
{
    const TestSeed seed;
    const int rounds = roundsOf(2'000, 20'000);
    preferences->setMarkdownCompatibilityMode(GetParam());
    const auto note = show({});
    Monkey monkey(seed.generator(), view(), *pane, /*isPane=*/true);
    for (int round = 0; round < rounds; ++round) {
        QString what;
        const bool isCompleting = pane->completionPopup().isOpen();
        const size_t kind = monkey.number(30);
        if (isCompleting && kind < 15) {
            const qsizetype caret = monkey.inText(view().caret());
            press(kind < 5 ? Qt::Key_Return : kind < 10 ? Qt::Key_Down : Qt::Key_Escape);
            monkey.expectCompleted(caret);
            what = u"a key for the completions"_s;
        } else if (kind == 15) {
            pane->completionPopup().close(); // which would put it off
            clock.advance(2.1);
            EXPECT_EQ(note->text(), monkey.text());
            what = u"saving"_s;
        } else if (kind == 16) {
            pane->action(u"fold-completed"_s)->trigger();
            what = u"folding"_s;
        } else if (kind == 17) {
            pane->action(u"unfold-completed"_s)->trigger();
            what = u"unfolding"_s;
        } else {
            pane->completionPopup().close();
            what = monkey.act();
        }
        monkey.check(what);
        if (HasFailure()) {
            FAIL() << "round " << round << ", " << what.toStdString();
        }
        if (round % 53 == 0) {
            (void)view().viewport()->grab();
            processEvents();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Syntaxes, NotePaneMonkey, testing::Bool(),
                         [](const auto &syntax) { return syntax.param ? "Markdown" : "Native"; });

} // namespace quib::tests

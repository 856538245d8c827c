// Random events of every kind in the view of a note: after each, the text is what a plain string has that the same was
// done to. QUIB_LONG_TESTS=1 makes a hundred thousand of them.

#include "EditorFixture.h"

#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <gtest/gtest.h>

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QImage>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QSet>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;
using namespace quib::tests;

namespace {

/// More text than this is taken away, so that a hundred thousand events stay quick. Units: UTF-16 units.
constexpr qsizetype kMostText = 1500;

class Monkey
{
public:
    explicit Monkey(std::mt19937 generator)
        : m_random(generator)
    {
        m_seen.insert(m_model);
    }

    /// Does one thing. Gives its name, for messages.
    QString act()
    {
        switch (number(20)) {
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
        default:
            return tick();
        }
    }

    void check(const QString &what)
    {
        const QString now = m_editor.text();
        ASSERT_EQ(now, m_model) << "after " << what.toStdString();
        const NSRange selection = m_editor.view().selectedRange();
        ASSERT_TRUE(selection.location >= 0 && selection.limit() <= m_editor.view().textStorage().length())
            << "after " << what.toStdString();
        m_seen.insert(m_model);
        if (m_model.size() > kMostText) {
            m_editor.view().setSelectedRange({0, m_editor.view().textStorage().length() * 9 / 10});
            takeAway(Qt::Key_Backspace);
        }
    }

    EditorFixture &editor() { return m_editor; }

private:
    size_t number(size_t limit) { return m_random() % limit; }
    QString randomText()
    {
        static const QStringList pieces = {u"a"_s,
                                           u"b c"_s,
                                           u" "_s,
                                           u"#"_s,
                                           u"*"_s,
                                           u"/"_s,
                                           u"_"_s,
                                           u"-"_s,
                                           u"+ "_s,
                                           u"1. "_s,
                                           u"`"_s,
                                           u"[["_s,
                                           u"]]"_s,
                                           u"> "_s,
                                           u"::"_s,
                                           u"- "_s,
                                           u"\u05D0\u05D1"_s,
                                           u"e\u0301"_s,
                                           u"\U0001F600"_s};
        return pieces[qsizetype(number(size_t(pieces.size())))];
    }
    qint64 inText(qint64 place)
    {
        return m_editor.view().textStorage().stringWithExpandedTextAttachmentsWithRange({0, place}).size();
    }
    QPoint randomPoint()
    {
        const QRect area = m_editor.view().viewport()->rect();
        return {int(number(size_t(area.width()))), int(number(size_t(area.height())))};
    }
    /// Puts a text in the place of a range of the view, in the model alone.
    void replaceInModel(NSRange range, const QString &text)
    {
        if (m_editor.view().textStorage().canEditTextInRange(range)) {
            const qint64 start = inText(range.location);
            m_model.replace(start, inText(range.limit()) - start, text);
        }
    }
    /// The view says what goes with an attachment; it is one stretch, and nothing else goes or comes.
    void expectTaken(const QString &what)
    {
        const QString now = m_editor.text();
        const auto same = std::mismatch(now.begin(), now.end(), m_model.begin(), m_model.end());
        const qsizetype kept = same.first - now.begin();
        EXPECT_LE(now.size(), m_model.size()) << what.toStdString();
        EXPECT_TRUE(m_model.endsWith(QStringView(now).sliced(kept))) << what.toStdString();
        m_model = now;
    }

    QString type()
    {
        const QString text = number(10) == 0 ? u"\n"_s : randomText();
        const NSRange selection = m_editor.view().selectedRange();
        if (text == u"\n") {
            replaceInModel(selection, text);
            m_editor.press(Qt::Key_Return);
            return u"return"_s;
        }
        replaceInModel(selection, text);
        m_editor.view().typeText(text);
        return u"typing "_s + text;
    }
    QString takeAway(int key)
    {
        m_editor.press(key, number(6) == 0 ? Qt::ControlModifier : Qt::NoModifier);
        expectTaken(u"taking away"_s);
        return u"taking away"_s;
    }
    QString move()
    {
        constexpr int kKeys[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up,     Qt::Key_Down,
                                 Qt::Key_Home, Qt::Key_End,   Qt::Key_PageUp, Qt::Key_PageDown};
        Qt::KeyboardModifiers modifiers;
        modifiers.setFlag(Qt::ShiftModifier, number(3) == 0);
        modifiers.setFlag(Qt::ControlModifier, number(5) == 0);
        m_editor.press(kKeys[number(std::size(kKeys))], modifiers);
        return u"moving"_s;
    }
    QString click()
    {
        const QPoint at = randomPoint();
        if (m_editor.view().layoutManager().attachmentAtPoint(at)) {
            return u"a click that would tick"_s;
        }
        if (number(4) == 0) {
            QTest::mouseDClick(m_editor.view().viewport(), Qt::LeftButton, {}, at);
        } else {
            QTest::mouseClick(m_editor.view().viewport(), Qt::LeftButton,
                              number(3) == 0 ? Qt::ShiftModifier : Qt::NoModifier, at);
        }
        return u"a click"_s;
    }
    QString drag()
    {
        QWidget *viewport = m_editor.view().viewport();
        m_editor.view().setSelection(m_editor.view().caret(), m_editor.view().caret()); // or the text itself is dragged
        const QPoint from = randomPoint();
        if (m_editor.view().layoutManager().attachmentAtPoint(from)) {
            return u"no drag"_s;
        }
        QTest::mousePress(viewport, Qt::LeftButton, {}, from);
        const QPointF to = randomPoint() + QPoint(0, int(number(200)) - 100);
        QMouseEvent event(QEvent::MouseMove, to, viewport->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(viewport, &event);
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, to.toPoint());
        return u"a drag"_s;
    }
    QString drop()
    {
        const QPoint at = randomPoint();
        QMimeData data;
        data.setText(randomText());
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_editor.view().viewport(), &enter);
        if (number(4) == 0) {
            QDragLeaveEvent leave;
            QCoreApplication::sendEvent(m_editor.view().viewport(), &leave);
            return u"a drop that went away"_s;
        }
        replaceInModel({m_editor.view().locationAtViewportPoint(at), 0}, data.text());
        QDropEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_editor.view().viewport(), &event);
        return u"a drop of "_s + data.text();
    }
    QString compose()
    {
        const QString composed = randomText().repeated(int(number(4)));
        QInputMethodEvent event(composed,
                                {{QInputMethodEvent::Cursor, int(number(size_t(composed.size() + 1))), 1, QVariant()}});
        QCoreApplication::sendEvent(&m_editor.view(), &event);
        return u"composing "_s + composed;
    }
    QString commit()
    {
        const QString committed = randomText();
        replaceInModel(m_editor.view().selectedRange(), committed);
        QInputMethodEvent event;
        event.setCommitString(committed);
        QCoreApplication::sendEvent(&m_editor.view(), &event);
        return u"committing "_s + committed;
    }
    QString undoAndRedo()
    {
        // There and back again.
        QStringList texts;
        for (size_t steps = number(6); steps > 0 && m_editor.view().undoManager().canUndo(); --steps) {
            texts.append(m_editor.text());
            m_editor.press(Qt::Key_Z, Qt::ControlModifier);
        }
        while (!texts.isEmpty()) {
            m_editor.press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
            EXPECT_EQ(m_editor.text(), texts.takeLast());
        }
        return u"undo and redo"_s;
    }
    QString undo()
    {
        m_editor.press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_TRUE(m_seen.contains(m_editor.text())) << "undo gives a text that was there before";
        m_model = m_editor.text();
        return u"undo"_s;
    }
    QString look()
    {
        switch (number(4)) {
        case 0:
            m_editor.view().resize(200 + int(number(500)), 150 + int(number(300)));
            return u"another size"_s;
        case 1:
            m_editor.stack().themeManager()->setZoomedBaseFontSize(9 + double(number(14)));
            return u"other letters"_s;
        case 2:
            m_editor.view().setFocusMode(number(2) == 0);
            m_editor.view().setTypewriterScrolling(number(2) == 0);
            return u"another mode"_s;
        default: {
            const QPoint turned(0, int(number(400)) - 200);
            QWheelEvent wheel(QPointF(9, 9), m_editor.view().mapToGlobal(QPointF(9, 9)), turned, turned, Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(m_editor.view().viewport(), &wheel);
            return u"the wheel"_s;
        }
        }
    }
    QString paste()
    {
        if (number(2) == 0 && m_editor.view().selectedRange().length > 0) {
            const NSRange selection = m_editor.view().selectedRange();
            const QString taken = m_editor.view().textStorage().stringWithExpandedTextAttachmentsWithRange(selection);
            m_editor.press(Qt::Key_X, Qt::ControlModifier);
            EXPECT_EQ(QGuiApplication::clipboard()->text(), taken);
            expectTaken(u"cutting"_s);
            return u"cutting"_s;
        }
        QGuiApplication::clipboard()->setText(randomText());
        replaceInModel(m_editor.view().selectedRange(), QGuiApplication::clipboard()->text());
        m_editor.press(Qt::Key_V, Qt::ControlModifier);
        return u"pasting"_s;
    }
    QString tick()
    {
        if (const auto box = m_editor.view().checkBoxInParagraph(m_editor.view().caret())) {
            const qint64 place = inText(*box);
            m_model[place] = m_model[place] == u'-' ? u'+' : u'-';
            m_editor.view().toggleCheckBox(*box);
            // That is no step of its own here: what was undone comes back as it was ticked.
            m_editor.view().breakUndoCoalescing();
            m_editor.view().undoManager().removeAllActions();
            m_seen.clear();
        }
        return u"ticking"_s;
    }

    std::mt19937 m_random;
    EditorFixture m_editor;
    QString m_model;
    QSet<QString> m_seen;
};

} // namespace

TEST(NoteTextViewMonkey, LeavesTheTextThatAModelHas)
{
    const TestSeed seed;
    const int rounds = qEnvironmentVariableIntValue("QUIB_LONG_TESTS") > 0 ? 100'000 : 2'500;
    Monkey monkey(seed.generator());
    for (int round = 0; round < rounds; ++round) {
        const QString what = monkey.act();
        monkey.check(what);
        if (testing::Test::HasFailure()) {
            FAIL() << "round " << round << ", " << what.toStdString();
        }
        if (round % 53 == 0) {
            (void)monkey.editor().painted();
            QCoreApplication::processEvents();
        }
    }
}

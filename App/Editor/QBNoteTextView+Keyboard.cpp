#include "QBNoteTextView.h"

#include "LineMarker.h"
#include "UnfoldedText.h"

#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Markup/Editing/QBNoteEditorCoreController.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Markup/Syntax/StylerSyntax.h>
#include <Markup/TextlessAttachments.h>
#include <Text/NSAttributeName.h>
#include <Text/NSStringHelpers.h>

#include <QApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QStyleHints>
#include <QTextBoundaryFinder>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

/// So many characters are undone at once at most.
constexpr int kTypedTogether = 60;
/// The marker of a heading of the deepest level, and as many hashes behind it. Units: UTF-16 units.
constexpr qint64 kLongestHeadingStart = 13;

/// Whether all that lies in a range stands for no text, so that nobody sees or saves it.
bool isWithoutText(const NSAttributedString &text, NSRange range)
{
    for (qint64 place = range.location; place < range.limit(); ++place) {
        if (!isTextlessAttachment(text, place)) {
            return false;
        }
    }
    return range.length > 0;
}

/// Whether what stands between two edges of words is one: it may begin with an underscore.
bool isWord(QStringView piece)
{
    const QList<uint> letters = piece.toUcs4();
    return std::any_of(letters.cbegin(), letters.cend(), [](uint letter) { return QChar::isLetterOrNumber(letter); });
}

/// Whether a key writes the third or fourth letter on it. Some keyboards say so by Ctrl and Alt together.
bool isThirdLevel(Qt::KeyboardModifiers modifiers)
{
    return modifiers.testFlag(Qt::GroupSwitchModifier) || modifiers.testFlags(Qt::ControlModifier | Qt::AltModifier);
}

} // namespace

void QBNoteTextView::keyPressEvent(QKeyEvent *event)
{
    if (moveByKey(event) || (!m_isReadOnly && editByKey(event))) {
        event->accept();
        return;
    }
    const QString text = event->text();
    const bool isCommand = !isThirdLevel(event->modifiers()) &&
                           (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    if (!m_isReadOnly && !isCommand && !text.isEmpty() && (text[0].isPrint() || text[0].isSurrogate())) {
        typeText(text);
        event->accept();
        return;
    }
    event->ignore();
}

bool QBNoteTextView::moveByKey(QKeyEvent *event)
{
    struct Move
    {
        QKeySequence::StandardKey moving;
        QKeySequence::StandardKey selecting;
        std::function<void(bool isSelecting)> go;
    };
    const qint64 length = m_stack.noteTextStorage().length();
    const NSRange selection = selectedRange();
    // Without Shift, a step from a selection goes to its edge.
    const auto horizontally = [&](bool right, bool isSelecting) {
        if (!isSelecting && selection.length > 0) {
            const bool isRightToLeft = m_layout.isRightToLeft(m_caret);
            moveCaret(right != isRightToLeft ? selection.limit() : selection.location, false);
            return;
        }
        moveCaret(steppedOver(m_caret, /*isVisual=*/true, right), isSelecting);
    };
    const auto word = [&](bool forward, bool isSelecting) { moveCaret(wordBoundary(m_caret, forward), isSelecting); };
    const Move moves[] = {
        {QKeySequence::MoveToNextChar, QKeySequence::SelectNextChar, [&](bool s) { horizontally(true, s); }},
        {QKeySequence::MoveToPreviousChar, QKeySequence::SelectPreviousChar, [&](bool s) { horizontally(false, s); }},
        {QKeySequence::MoveToNextWord, QKeySequence::SelectNextWord,
         [&](bool s) { word(!m_layout.isRightToLeft(m_caret), s); }},
        {QKeySequence::MoveToPreviousWord, QKeySequence::SelectPreviousWord,
         [&](bool s) { word(m_layout.isRightToLeft(m_caret), s); }},
        {QKeySequence::MoveToNextLine, QKeySequence::SelectNextLine, [&](bool s) { moveVertically(false, s); }},
        {QKeySequence::MoveToPreviousLine, QKeySequence::SelectPreviousLine, [&](bool s) { moveVertically(true, s); }},
        {QKeySequence::MoveToNextPage, QKeySequence::SelectNextPage,
         [&](bool s) { moveVertically(false, s, viewport()->height() * 0.9); }},
        {QKeySequence::MoveToPreviousPage, QKeySequence::SelectPreviousPage,
         [&](bool s) { moveVertically(true, s, viewport()->height() * 0.9); }},
        {QKeySequence::MoveToStartOfLine, QKeySequence::SelectStartOfLine,
         [&](bool s) { moveCaret(startOfLine(), s); }},
        {QKeySequence::MoveToEndOfLine, QKeySequence::SelectEndOfLine,
         [&](bool s) {
             const NSRange line = m_layout.lineRange(m_caret, m_isUpstream);
             const bool isWrapped = line.limit() < m_layout.paragraphOfLocation(line.location).range.limit() &&
                                    !isParagraphEnd(m_stack.noteTextStorage().string()[line.limit()].unicode());
             moveCaret(line.limit(), s, isWrapped);
         }},
        {QKeySequence::MoveToStartOfBlock, QKeySequence::SelectStartOfBlock,
         [&](bool s) {
             const NSRange paragraph = paragraphRange({m_caret, 0});
             moveCaret(paragraph.location == m_caret && m_caret > 0 ? paragraphRange({m_caret - 1, 0}).location
                                                                    : paragraph.location,
                       s);
         }},
        {QKeySequence::MoveToEndOfBlock, QKeySequence::SelectEndOfBlock,
         [&](bool s) {
             const QStringView text = m_stack.noteTextStorage().string();
             const qint64 limit = paragraphRange({m_caret, 0}).limit();
             const bool isEnded = limit > m_caret + 1 && isParagraphEnd(text[limit - 1].unicode());
             moveCaret(isEnded ? limit - 1 : limit, s);
         }},
        {QKeySequence::MoveToStartOfDocument, QKeySequence::SelectStartOfDocument,
         [&](bool s) {
             // All of it is selected, but what is typed belongs to the heading.
             const qint64 behind = startOfText();
             moveCaret(s || m_caret == behind ? 0 : behind, s);
         }},
        {QKeySequence::MoveToEndOfDocument, QKeySequence::SelectEndOfDocument, [&](bool s) { moveCaret(length, s); }},
    };
    for (const Move &move : moves) {
        const bool isSelecting = event->matches(move.selecting);
        if (isSelecting || event->matches(move.moving)) {
            move.go(isSelecting);
            return true;
        }
    }
    if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
        return true;
    }
    if (event->matches(QKeySequence::Copy)) {
        copy();
        return true;
    }
    return false;
}

bool QBNoteTextView::editByKey(QKeyEvent *event)
{
    const auto matches = [event](QKeySequence::StandardKey key) { return event->matches(key); };
    if (matches(QKeySequence::Undo)) {
        undo();
    } else if (matches(QKeySequence::Redo)) {
        redo();
    } else if (matches(QKeySequence::Cut)) {
        cut();
    } else if (matches(QKeySequence::Paste)) {
        paste();
    } else if (matches(QKeySequence::DeleteStartOfWord)) {
        deleteTo(wordBoundary(m_caret, false));
    } else if (matches(QKeySequence::DeleteEndOfWord)) {
        deleteTo(wordBoundary(m_caret, true));
    } else if (matches(QKeySequence::DeleteEndOfLine)) {
        deleteTo(m_layout.lineRange(m_caret, m_isUpstream).limit());
    } else if (matches(QKeySequence::Delete)) {
        deleteForward();
    } else if (event->key() == Qt::Key_Backspace &&
               (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0) {
        deleteBackward();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if ((event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0) {
            return false;
        }
        insertNewLine((event->modifiers() & Qt::ShiftModifier) != 0);
    } else if (event->key() == Qt::Key_Backtab || event->key() == Qt::Key_Tab) {
        insertTab(event->key() == Qt::Key_Backtab || (event->modifiers() & Qt::ShiftModifier) != 0);
    } else {
        return false;
    }
    return true;
}

qint64 QBNoteTextView::startOfText()
{
    return placeBehindMarker(m_stack.noteTextStorage().attributedString(), paragraphRange({0, 0}));
}

qint64 QBNoteTextView::startOfLine()
{
    const NSRange line = m_layout.lineRange(m_caret, m_isUpstream);
    const qint64 behind =
        placeBehindMarker(m_stack.noteTextStorage().attributedString(), paragraphRange({line.location, 0}));
    const bool isInLine = behind > line.location && behind <= line.limit();
    return isInLine && m_caret != behind ? behind : line.location;
}

qint64 QBNoteTextView::outsideOfMarker(qint64 location) const
{
    return isWithinMarker(m_stack.noteTextStorage().attributedString(), location) ? location + 1 : location;
}

void QBNoteTextView::moveCaret(qint64 location, bool isSelecting, bool upstream)
{
    breakUndoCoalescing();
    m_goalX = -1;
    moveSelection(isSelecting ? m_anchor : location, location, upstream);
    ensureCaretVisible();
}

void QBNoteTextView::moveVertically(bool up, bool isSelecting, double distance)
{
    breakUndoCoalescing();
    const QRectF caret = m_layout.caretRect(m_caret, m_isUpstream);
    const double x = m_goalX >= 0 ? m_goalX : caret.left();
    bool upstream = m_isUpstream;
    qint64 location = m_caret;
    if (distance > 0) {
        const double y = caret.center().y() + (up ? -distance : distance);
        location = y < 0                   ? 0
                   : y > m_layout.height() ? m_stack.noteTextStorage().length()
                                           : m_layout.locationAtPoint({x, y}, &upstream);
        scrollBy(up ? -distance : distance);
    } else {
        location = up ? m_layout.locationAbove(m_caret, &upstream, x) : m_layout.locationBelow(m_caret, &upstream, x);
    }
    location = outsideOfMarker(location);
    moveSelection(isSelecting ? m_anchor : location, location, upstream);
    m_goalX = x;
    ensureCaretVisible();
}

qint64 QBNoteTextView::steppedOver(qint64 location, bool isVisual, bool right)
{
    const NSAttributedString &text = m_stack.noteTextStorage().attributedString();
    for (qint64 from = location;;) {
        const qint64 next = isVisual ? (right ? m_layout.locationRightOf(from) : m_layout.locationLeftOf(from))
                                     : (right ? m_layout.locationAfter(from) : m_layout.locationBefore(from));
        const NSRange passed = {std::min(from, next), std::abs(next - from)};
        if (next == from || (!isWithoutText(text, passed) && !isWithinMarker(text, next))) {
            return next;
        }
        from = next;
    }
}

qint64 QBNoteTextView::stepped(qint64 location, bool forward)
{
    return steppedOver(location, /*isVisual=*/false, forward);
}

NSRange QBNoteTextView::paragraphRange(NSRange range)
{
    return m_stack.noteTextStorage().attributedString().paragraphRangeForRange(range);
}

qint64 QBNoteTextView::wordBoundary(qint64 location, bool forward)
{
    const qint64 length = m_stack.noteTextStorage().length();
    for (qint64 from = location;;) {
        if (forward ? from >= length : from <= 0) {
            return from;
        }
        const NSRange paragraph = paragraphRange(forward ? NSRange{from, 0} : NSRange{from - 1, 0});
        const QString text = m_stack.noteTextStorage().attributedString().stringInRange(paragraph).toString();
        QTextBoundaryFinder words(QTextBoundaryFinder::Word, text);
        words.setPosition(from - paragraph.location);
        for (qsizetype found = forward ? words.toNextBoundary() : words.toPreviousBoundary(); found >= 0;
             found = forward ? words.toNextBoundary() : words.toPreviousBoundary()) {
            const qsizetype other = forward ? words.toPreviousBoundary() : words.toNextBoundary();
            if (isWord(QStringView(text).sliced(std::min(found, other), std::abs(found - other)))) {
                return paragraph.location + found;
            }
            words.setPosition(found);
        }
        from = forward ? paragraph.limit() : paragraph.location;
        if (!forward && from == location) {
            --from;
        }
        if (forward && from == location) {
            ++from;
        }
    }
}

NSRange QBNoteTextView::wordRange(qint64 location)
{
    const NSAttributedString &text = m_stack.noteTextStorage().attributedString();
    if (location < text.length()) {
        // A tag is taken as a whole.
        NSRange run;
        if (text.attribute(QBNoteFullSelectionRangeAttributeName, location, &run, text.fullRange())) {
            return run;
        }
    }
    const NSRange paragraph = paragraphRange({location, 0});
    const QString string = text.stringInRange(paragraph).toString();
    QTextBoundaryFinder words(QTextBoundaryFinder::Word, string);
    words.setPosition(location - paragraph.location);
    const qsizetype start = words.isAtBoundary() ? words.position() : words.toPreviousBoundary();
    words.setPosition(location - paragraph.location);
    const qsizetype end = words.toNextBoundary();
    if (start < 0 || end <= start) {
        return {location, 0};
    }
    NSRange word = {paragraph.location + start, end - start};
    while (word.length > 0 && isParagraphEnd(text.characterAtIndex(word.limit() - 1))) {
        --word.length;
    }
    return word;
}

NSRange QBNoteTextView::rangeAround(qint64 location, Granularity granularity)
{
    switch (granularity) {
    case Granularity::Word:
        return wordRange(location);
    case Granularity::Paragraph:
        return paragraphRange({location, 0});
    case Granularity::Character:
        break;
    }
    return {location, 0};
}

void QBNoteTextView::beginTyping(Typing typing)
{
    // What is typed in one place, up to the end of a line, is undone together; so is what is deleted, but not the two:
    // who deletes too much gets back what stood there before the first deletion.
    if (m_typing != typing || m_typedLocation != m_caret || m_typedCount >= kTypedTogether) {
        breakUndoCoalescing();
    }
    if (m_typing == Typing::None) {
        m_undoManager->beginUndoGrouping();
        m_typing = typing;
        m_typedCount = 0;
    }
    ++m_typedCount;
}

void QBNoteTextView::breakUndoCoalescing()
{
    if (m_typing != Typing::None) {
        m_typing = Typing::None;
        m_undoManager->endUndoGrouping();
        Q_EMIT undoAvailabilityChanged();
    }
}

std::optional<QBNoteTextView::Heading> QBNoteTextView::headingForText(QStringView text, NSRange replacedRange)
{
    // 1. The line up to what is written must be the marker of a heading and no more than hashes.
    const NSRange paragraph = paragraphRange({replacedRange.location, 0});
    const NSRange before = {paragraph.location, replacedRange.location - paragraph.location};
    if (before.length == 0 || before.length > kLongestHeadingStart) {
        return std::nullopt;
    }
    const QString start = m_stack.noteTextStorage().stringWithExpandedTextAttachmentsWithRange(before);
    const auto &pattern = syntax::stylerRegularExpression(syntax::Construct::Header, m_stack.stylerManager()->syntax());
    const auto marker = [&pattern](QStringView line) {
        const auto match = pattern.firstMatchInString(line, 0, {0, line.size()});
        return match && match->range().location == 0 ? match->range().length : 0;
    };
    const qsizetype markerLength = marker(start);
    const QStringView hashes = QStringView(start).sliced(markerLength);
    if (markerLength == 0 || std::any_of(hashes.cbegin(), hashes.cend(), [](QChar unit) { return unit != u'#'; })) {
        return std::nullopt;
    }
    // 2. With what is written they must become one.
    QString heading = hashes % text;
    if (marker(heading) <= hashes.size()) {
        return std::nullopt;
    }
    return Heading{NSUnionRange(before, replacedRange), std::move(heading)};
}

void QBNoteTextView::typeText(const QString &text)
{
    typeText(text, rangeTaken(selectedRange()));
}

void QBNoteTextView::typeText(const QString &text, NSRange replacedRange)
{
    if (m_isReadOnly || !m_stack.noteTextStorage().canEditTextInRange(replacedRange)) {
        QApplication::beep();
        return;
    }
    if (replacedRange.length > 0) {
        breakUndoCoalescing();
    }
    beginTyping(Typing::Writing);
    const QScopedValueRollback typed(m_isTypedChange, true);
    const auto heading = headingForText(text, replacedRange);
    insertText(heading ? heading->text : text, heading ? heading->replaced : replacedRange);
    didChangeText();
    m_typedLocation = m_caret;
    if (text.contains(u' ') && m_typedCount > kTypedTogether / 2) {
        breakUndoCoalescing();
    }
}

void QBNoteTextView::replaceText(NSRange range, const QString &text)
{
    if (m_isReadOnly || !m_stack.noteTextStorage().canEditTextInRange(range)) {
        QApplication::beep();
        return;
    }
    breakUndoCoalescing();
    m_undoManager->beginUndoGrouping();
    insertText(text, range);
    didChangeText();
    m_undoManager->endUndoGrouping();
    Q_EMIT undoAvailabilityChanged();
}

void QBNoteTextView::insertNewLine(bool isShiftDown)
{
    breakUndoCoalescing();
    const NSRange taken = rangeTaken(selectedRange());
    if (!m_stack.noteTextStorage().canEditTextInRange(taken)) {
        QApplication::beep();
        return;
    }
    m_undoManager->beginUndoGrouping();
    if (taken != selectedRange()) {
        setSelectedRange(taken); // what is selected goes, whoever makes the line
    }
    if (m_delegate == nullptr || m_delegate->qbNoteTextViewShouldInsertNewLine(*this, isShiftDown)) {
        insertText(u"\n"_s, selectedRange());
        didChangeText();
    }
    m_undoManager->endUndoGrouping();
    ensureCaretVisible();
    Q_EMIT undoAvailabilityChanged();
}

void QBNoteTextView::insertTab(bool backwards)
{
    breakUndoCoalescing();
    if (!m_stack.noteTextStorage().canEditTextInRange(rangeTaken(selectedRange()))) {
        QApplication::beep();
        return;
    }
    m_undoManager->beginUndoGrouping();
    if (m_delegate == nullptr || m_delegate->qbNoteTextViewShouldInsertTab(*this, backwards)) {
        const QStringView selected = m_stack.noteTextStorage().attributedString().stringInRange(selectedRange());
        if (std::any_of(selected.begin(), selected.end(), [](QChar unit) { return isParagraphEnd(unit.unicode()); })) {
            QBNoteEditorCoreController(m_stack).shiftSelectionRight(!backwards, *this);
            didChangeText();
        } else if (!backwards) {
            insertText(u"\t"_s, rangeTaken(selectedRange()));
            didChangeText();
        }
    }
    m_undoManager->endUndoGrouping();
    Q_EMIT undoAvailabilityChanged();
}

NSRange QBNoteTextView::rangeTaken(NSRange range)
{
    return range.length > 0 ? QBNoteEditorCoreController(m_stack).rangeTakenWithRange(range) : range;
}

void QBNoteTextView::deleteRange(NSRange range)
{
    removeText(rangeTaken(range));
}

void QBNoteTextView::removeText(NSRange range)
{
    if (range.length <= 0) {
        return;
    }
    if (!m_stack.noteTextStorage().canEditTextInRange(range)) {
        QApplication::beep();
        return;
    }
    insertText(u""_s, range);
    didChangeText();
}

void QBNoteTextView::deleteBesideCaret(NSRange range)
{
    const NSAttributedString &text = m_stack.noteTextStorage().attributedString();
    const auto isEmpty = [&text](qint64 place) { return isWithoutText(text, {place, 1}); };
    NSRange seen = range;
    while (seen.length > 0 && isEmpty(seen.location)) {
        ++seen.location;
        --seen.length;
    }
    while (seen.length > 0 && isEmpty(seen.limit() - 1)) {
        --seen.length;
    }
    if (seen.length == 0) {
        return;
    }
    if (openFolds(seen)) {
        return;
    }
    if (seen.length == 1 && seen.location > 0 && text.characterAtIndex(seen.location) == u' ' &&
        rangeTaken({seen.location - 1, 1}) == NSRange{seen.location - 1, 2}) {
        // The blank of a line's marker goes with the marker.
        seen = {seen.location - 1, 2};
    }
    removeText(NSUnionRange(range, rangeTaken(seen)));
}

void QBNoteTextView::deleteTo(qint64 location)
{
    breakUndoCoalescing();
    const NSRange selection = selectedRange();
    m_undoManager->beginUndoGrouping();
    if (selection.length > 0) {
        deleteRange(selection);
    } else {
        deleteBesideCaret({std::min(m_caret, location), std::abs(location - m_caret)});
    }
    m_undoManager->endUndoGrouping();
    Q_EMIT undoAvailabilityChanged();
}

void QBNoteTextView::deleteBackward()
{
    const QScopedValueRollback typed(m_isTypedChange, true);
    if (selectedRange().length > 0) {
        deleteTo(m_caret);
    } else if (m_caret > 0) {
        beginTyping(Typing::DeletingBackward);
        const qint64 start = stepped(m_caret, false);
        deleteBesideCaret({start, m_caret - start});
        m_typedLocation = m_caret;
    }
}

void QBNoteTextView::deleteForward()
{
    if (selectedRange().length > 0) {
        deleteTo(m_caret);
    } else {
        beginTyping(Typing::DeletingForward);
        deleteBesideCaret({m_caret, stepped(m_caret, true) - m_caret});
        m_typedLocation = m_caret;
    }
}

std::optional<qint64> QBNoteTextView::checkBoxInParagraph(qint64 location) const
{
    const NSAttributedString &text = m_stack.noteTextStorage().attributedString();
    std::optional<qint64> found;
    text.enumerateAttribute(NSAttachmentAttributeName, text.paragraphRangeForRange({location, 0}),
                            NSAttributedStringEnumerationOptions::Forward,
                            [&](const AttributeValue &value, NSRange run, bool *stop) {
                                const auto attachment = value.sharedAs<NSTextAttachment>();
                                if (dynamic_cast<QBCheckBoxTextAttachment *>(attachment.get()) != nullptr) {
                                    found = run.location;
                                    *stop = true;
                                }
                            });
    return found;
}

void QBNoteTextView::openAttachment(qint64 location)
{
    const auto attachment = m_stack.noteTextStorage()
                                .attributedString()
                                .attribute(NSAttachmentAttributeName, location)
                                .sharedAs<NSTextAttachment>();
    if (m_delegate != nullptr && attachment != nullptr) {
        breakUndoCoalescing();
        const QScopedValueRollback typed(m_isTypedChange, false);
        m_delegate->qbNoteTextViewDidOpenAttachment(*this, attachment, location);
    }
}

bool QBNoteTextView::openFolds(NSRange range)
{
    const NSAttributedString &text = m_stack.noteTextStorage().attributedString();
    const auto attachmentAt = [&text](qint64 place) {
        return place < text.length() ? text.attribute(NSAttachmentAttributeName, place).sharedAs<NSTextAttachment>()
                                     : nullptr;
    };
    const std::vector<qint64> folds = foldsInRange(text, range);
    bool isOpened = false;
    for (auto fold = folds.crbegin(); fold != folds.crend(); ++fold) {
        const auto before = attachmentAt(*fold);
        openAttachment(*fold);
        isOpened = isOpened || attachmentAt(*fold) != before;
    }
    return isOpened;
}

void QBNoteTextView::toggleCheckBox(qint64 location)
{
    const auto attachment = m_stack.noteTextStorage()
                                .attributedString()
                                .attribute(NSAttachmentAttributeName, location)
                                .sharedAs<NSTextAttachment>();
    if (m_delegate != nullptr && !m_isReadOnly && attachment != nullptr) {
        m_delegate->qbNoteTextViewDidClickAttachment(*this, attachment, location);
    }
}

void QBNoteTextView::undo()
{
    breakUndoCoalescing();
    if (!m_isReadOnly && m_undoManager->canUndo()) {
        m_undoManager->undo();
        showChange();
    }
}

void QBNoteTextView::redo()
{
    breakUndoCoalescing();
    if (!m_isReadOnly && m_undoManager->canRedo()) {
        m_undoManager->redo();
        showChange();
    }
}

void QBNoteTextView::selectAll()
{
    breakUndoCoalescing();
    moveSelection(0, m_stack.noteTextStorage().length(), false);
}

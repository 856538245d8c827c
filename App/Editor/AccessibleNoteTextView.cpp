#include "AccessibleNoteTextView.h"

#include "QBNoteTextView.h"

#include <Graphics/GraphicsAttributes.h>
#include <Markup/QBNotesTextStorage.h>
#include <Text/NSAttributeName.h>

#include <QScrollBar>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

QAccessibleInterface *makeInterface(const QString & /*className*/, QObject *object)
{
    auto *view = qobject_cast<QBNoteTextView *>(object);
    return view != nullptr ? new AccessibleNoteTextView(*view) : nullptr; // the toolkit owns what its factories make
}

/// The unit of a text around a place, as a finder of boundaries has it.
NSRange unitOfString(const QString &string, qint64 place, QTextBoundaryFinder::BoundaryType type)
{
    QTextBoundaryFinder finder(type, string);
    finder.setPosition(place);
    const qsizetype start = finder.isAtBoundary() ? place : std::max<qsizetype>(0, finder.toPreviousBoundary());
    finder.setPosition(place);
    const qsizetype end = finder.toNextBoundary();
    return {start, std::max<qsizetype>(0, (end < 0 ? string.size() : end) - start)};
}

QString colorText(const NSColor &color)
{
    const auto part = [](double value) { return static_cast<int>(std::lround(value * 255)); };
    return u"rgb(%1,%2,%3)"_s.arg(part(color.redComponent()))
        .arg(part(color.greenComponent()))
        .arg(part(color.blueComponent()));
}

int toInt(qint64 offset)
{
    return static_cast<int>(offset);
}

} // namespace

AccessibleNoteTextView::AccessibleNoteTextView(QBNoteTextView &view)
    : QAccessibleWidget(&view, QAccessible::EditableText)
    , m_edits(view.textStorage().observeEdits([this](quint32 /*mask*/, NSRange editedRange, qint64 changeInLength) {
        if (const auto change = m_words ? m_words->textDidEdit(editedRange, changeInLength) : std::nullopt) {
            tellOfChange(*change);
        }
    }))
    , m_selections(QObject::connect(&view, &QBNoteTextView::selectionChanged, &view, [this] { tellOfSelection(); }))
    , m_attachments(QObject::connect(&view, &QBNoteTextView::attachmentsMayLookDifferent, &view, [this] {
        if (m_words) {
            for (const SpokenNoteText::Change &change : m_words->attachmentsDidChange()) {
                tellOfChange(change);
            }
        }
    }))
{
}

AccessibleNoteTextView::~AccessibleNoteTextView()
{
    QObject::disconnect(m_selections);
    QObject::disconnect(m_attachments);
}

void AccessibleNoteTextView::install()
{
    QAccessible::installFactory(makeInterface);
}

QBNoteTextView &AccessibleNoteTextView::view() const
{
    return *static_cast<QBNoteTextView *>(widget());
}

void AccessibleNoteTextView::tell(QAccessibleEvent &event)
{
    QAccessible::updateAccessibility(&event);
}

void AccessibleNoteTextView::tellOfChange(const SpokenNoteText::Change &change)
{
    const int offset = toInt(change.offset);
    if (change.removed.isEmpty()) {
        QAccessibleTextInsertEvent event(widget(), offset, change.inserted);
        tell(event);
    } else if (change.inserted.isEmpty()) {
        QAccessibleTextRemoveEvent event(widget(), offset, change.removed);
        tell(event);
    } else {
        QAccessibleTextUpdateEvent event(widget(), offset, change.removed, change.inserted);
        tell(event);
    }
}

const SpokenNoteText &AccessibleNoteTextView::words() const
{
    if (!m_words) {
        m_words = std::make_unique<SpokenNoteText>(view().textStorage().attributedString());
    }
    return *m_words;
}

void AccessibleNoteTextView::tellOfSelection()
{
    if (!m_words) {
        return;
    }
    const NSRange selection = words().offsetsOfRange(view().selectedRange());
    QAccessibleTextCursorEvent moved(widget(), cursorPosition());
    tell(moved);
    if (selection != m_toldSelection && (selection.length > 0 || m_toldSelection.length > 0)) {
        QAccessibleTextSelectionEvent selected(widget(), toInt(selection.location), toInt(selection.limit()));
        selected.setCursorPosition(cursorPosition());
        tell(selected);
    }
    m_toldSelection = selection;
}

// QAccessibleInterface

void *AccessibleNoteTextView::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface) {
        return static_cast<QAccessibleTextInterface *>(this);
    }
    if (type == QAccessible::EditableTextInterface && !view().isReadOnly()) {
        return static_cast<QAccessibleEditableTextInterface *>(this);
    }
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State AccessibleNoteTextView::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.multiLine = true;
    state.selectableText = true;
    state.editable = !view().isReadOnly();
    state.readOnly = view().isReadOnly();
    return state;
}

QString AccessibleNoteTextView::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Value ? words().string() : QAccessibleWidget::text(kind);
}

// QAccessibleTextInterface

qint64 AccessibleNoteTextView::locationOf(int offset) const
{
    // Toolkits name the end by -1.
    const qint64 count = words().string().size();
    return words().locationOfOffset(offset < 0 ? count : std::min<qint64>(offset, count));
}

NSRange AccessibleNoteTextView::rangeOf(int startOffset, int endOffset) const
{
    const qint64 count = words().string().size();
    const qint64 end = endOffset < 0 ? count : std::min<qint64>(endOffset, count);
    const qint64 start = std::clamp<qint64>(startOffset, 0, end);
    return words().rangeOfOffsets({start, end - start});
}

void AccessibleNoteTextView::selection(int selectionIndex, int *startOffset, int *endOffset) const
{
    const NSRange selected = words().offsetsOfRange(view().selectedRange());
    const bool isThere = selectionIndex == 0 && selected.length > 0;
    *startOffset = isThere ? toInt(selected.location) : 0;
    *endOffset = isThere ? toInt(selected.limit()) : 0;
}

int AccessibleNoteTextView::selectionCount() const
{
    return view().selectedRange().length > 0 ? 1 : 0;
}

void AccessibleNoteTextView::addSelection(int startOffset, int endOffset)
{
    setSelection(0, startOffset, endOffset);
}

void AccessibleNoteTextView::removeSelection(int selectionIndex)
{
    if (selectionIndex == 0) {
        view().setSelection(view().caret(), view().caret());
    }
}

void AccessibleNoteTextView::setSelection(int selectionIndex, int startOffset, int endOffset)
{
    if (selectionIndex == 0) {
        view().breakUndoCoalescing();
        view().setSelection(locationOf(startOffset), locationOf(endOffset));
    }
}

int AccessibleNoteTextView::cursorPosition() const
{
    return toInt(words().offsetOfLocation(view().caret()));
}

void AccessibleNoteTextView::setCursorPosition(int position)
{
    view().breakUndoCoalescing();
    const qint64 location = locationOf(position);
    view().setSelection(location, location);
    view().scrollRangeToVisible({location, 0});
}

QString AccessibleNoteTextView::text(int startOffset, int endOffset) const
{
    const qint64 count = words().string().size();
    const qint64 end = endOffset < 0 ? count : std::min<qint64>(endOffset, count);
    const qint64 start = std::clamp<qint64>(startOffset, 0, end);
    return words().string().mid(start, end - start);
}

NSRange AccessibleNoteTextView::unitAround(qint64 offset, QAccessible::TextBoundaryType boundaryType) const
{
    const QString &all = words().string();
    if (boundaryType == QAccessible::NoBoundary) {
        return {0, all.size()};
    }
    const NSRange paragraph = words().offsetsOfRange(
        view().textStorage().attributedString().paragraphRangeForRange({words().locationOfOffset(offset), 0}));
    if (boundaryType == QAccessible::ParagraphBoundary) {
        return paragraph;
    }
    if (boundaryType == QAccessible::LineBoundary) {
        const NSRange line =
            words().offsetsOfRange(view().layoutManager().lineRange(words().locationOfOffset(offset), false));
        // The last line of a paragraph has its line end with it.
        const bool isLast = line.limit() < paragraph.limit() && all[line.limit()] == u'\n';
        return {line.location, line.length + (isLast ? 1 : 0)};
    }
    // Nothing smaller goes on beyond its paragraph.
    const QString string = all.mid(paragraph.location, paragraph.length);
    const auto type = boundaryType == QAccessible::CharBoundary   ? QTextBoundaryFinder::Grapheme
                      : boundaryType == QAccessible::WordBoundary ? QTextBoundaryFinder::Word
                                                                  : QTextBoundaryFinder::Sentence;
    const NSRange unit = unitOfString(string, std::clamp<qint64>(offset - paragraph.location, 0, string.size()), type);
    return {paragraph.location + unit.location, unit.length};
}

QString AccessibleNoteTextView::told(NSRange offsets, int *startOffset, int *endOffset) const
{
    *startOffset = toInt(offsets.location);
    *endOffset = toInt(offsets.limit());
    return words().string().mid(offsets.location, offsets.length);
}

QString AccessibleNoteTextView::textAtOffset(int offset, QAccessible::TextBoundaryType boundaryType, int *startOffset,
                                             int *endOffset) const
{
    const qint64 count = words().string().size();
    const qint64 place = offset == -1 ? count : offset == -2 ? cursorPosition() : offset;
    if (place < 0 || place > count) {
        *startOffset = *endOffset = -1;
        return {};
    }
    return told(unitAround(place, boundaryType), startOffset, endOffset);
}

QString AccessibleNoteTextView::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundaryType,
                                                 int *startOffset, int *endOffset) const
{
    (void)textAtOffset(offset, boundaryType, startOffset, endOffset);
    if (*startOffset <= 0) {
        *startOffset = *endOffset = -1;
        return {};
    }
    return told(unitAround(*startOffset - 1, boundaryType), startOffset, endOffset);
}

QString AccessibleNoteTextView::textAfterOffset(int offset, QAccessible::TextBoundaryType boundaryType,
                                                int *startOffset, int *endOffset) const
{
    (void)textAtOffset(offset, boundaryType, startOffset, endOffset);
    if (*endOffset < 0 || *endOffset >= words().string().size()) {
        *startOffset = *endOffset = -1;
        return {};
    }
    return told(unitAround(*endOffset, boundaryType), startOffset, endOffset);
}

int AccessibleNoteTextView::characterCount() const
{
    return toInt(words().string().size());
}

QRect AccessibleNoteTextView::characterRect(int offset) const
{
    const qint64 location = locationOf(offset);
    const auto paragraph = view().layoutManager().paragraphOfLocation(location);
    const auto boxes = paragraph.textRectsForRange({location, 1});
    QRectF rect = view().caretRectInViewport(location);
    if (!boxes.empty() && location < view().textStorage().length()) {
        rect.setLeft(boxes.front().left());
        rect.setRight(boxes.front().right());
    }
    return {view().viewport()->mapToGlobal(rect.topLeft().toPoint()), rect.toAlignedRect().size()};
}

int AccessibleNoteTextView::offsetAtPoint(const QPoint &point) const
{
    const QPoint local = view().viewport()->mapFromGlobal(point);
    if (!view().viewport()->rect().contains(local)) {
        return -1;
    }
    return toInt(words().offsetOfLocation(view().locationAtViewportPoint(local)));
}

void AccessibleNoteTextView::scrollToSubstring(int startIndex, int endIndex)
{
    view().scrollRangeToVisible(rangeOf(startIndex, endIndex));
}

QString AccessibleNoteTextView::attributes(int offset, int *startOffset, int *endOffset) const
{
    const NSAttributedString &text = view().textStorage().attributedString();
    const qint64 location = locationOf(offset);
    if (location >= text.length()) {
        *startOffset = *endOffset = characterCount();
        return {};
    }
    NSRange run;
    const AttributeSet set = text.attributesAtIndex(location, &run);
    const NSRange offsets = words().offsetsOfRange(run);
    *startOffset = toInt(offsets.location);
    *endOffset = toInt(offsets.limit());
    QStringList pairs;
    if (const NSFont *font = fontOfAttribute(set.value(NSFontAttributeName))) {
        pairs << QString(u"font-family:\"" % font->familyName() % u'"')
              << QString(u"font-size:" % QString::number(font->pointSize()) % u"pt")
              << QString(u"font-weight:" % QString::number(font->weight()));
        if (font->traits().isItalic) {
            pairs << u"font-style:italic"_s;
        }
    }
    if (const AttributeValue value = set.value(NSForegroundColorAttributeName)) {
        if (const NSColor *color = colorOfAttribute(value)) {
            pairs << QString(u"color:" % colorText(*color));
        }
    }
    if (set.value(NSUnderlineStyleAttributeName).boolValue()) {
        pairs << u"text-underline-type:single"_s << u"text-underline-style:solid"_s;
    }
    if (set.value(NSStrikethroughStyleAttributeName).boolValue()) {
        pairs << u"text-line-through-type:single"_s;
    }
    if (view().spellingMarkAtLocation(location)) {
        pairs << u"invalid:spelling"_s;
    }
    return pairs.join(u';') + (pairs.isEmpty() ? u""_s : u";"_s);
}

// QAccessibleEditableTextInterface

void AccessibleNoteTextView::deleteText(int startOffset, int endOffset)
{
    view().replaceText(rangeOf(startOffset, endOffset), {});
}

void AccessibleNoteTextView::insertText(int offset, const QString &text)
{
    const NSRange place = {locationOf(offset), 0};
    if (place != view().selectedRange()) {
        view().replaceText(place, text);
        return;
    }
    // What writes at the caret, as a keyboard on the screen does, is typing, though each piece is a step of its own.
    view().breakUndoCoalescing();
    view().typeText(text);
    view().breakUndoCoalescing();
}

void AccessibleNoteTextView::replaceText(int startOffset, int endOffset, const QString &text)
{
    view().replaceText(rangeOf(startOffset, endOffset), text);
}

// QAccessibleActionInterface

QStringList AccessibleNoteTextView::actionNames() const
{
    QStringList names = QAccessibleWidget::actionNames();
    if (!view().isReadOnly() && view().checkBoxInParagraph(view().caret())) {
        names.prepend(toggleAction());
    }
    return names;
}

QString AccessibleNoteTextView::localizedActionDescription(const QString &name) const
{
    return name == toggleAction() ? tr("Checks or unchecks the item at the caret")
                                  : QAccessibleWidget::localizedActionDescription(name);
}

void AccessibleNoteTextView::doAction(const QString &actionName)
{
    if (actionName != toggleAction()) {
        QAccessibleWidget::doAction(actionName);
    } else if (const auto box = view().checkBoxInParagraph(view().caret())) {
        view().toggleCheckBox(*box);
    }
}

} // namespace quib

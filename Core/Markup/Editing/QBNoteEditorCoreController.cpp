#include "QBNoteEditorCoreController.h"

#include "SelectionInStyledText.h"

#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Markup/QBNoteTextKitStack.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Text/NSAttributedString.h>
#include <Text/NSStringHelpers.h>

#include <QUrl>

#include <memory>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using quib::AttributeValue;
using quib::NoteTextView;

namespace {

/// The scheme of the program's own links.
constexpr QStringView kInternalScheme = u"quib";

/// What of a line stands before its end.
qint64 lengthWithoutNewlines(QStringView line)
{
    qsizetype length = line.size();
    while (length > 0 && quib::isNewline(line[length - 1].unicode())) {
        --length;
    }
    return length;
}

/// The whole tag around a place between two units; not-found where it lies in none.
NSRange tagAroundPlace(const NSAttributedString &text, qint64 place)
{
    if (place <= 0 || place >= text.length()) {
        return kNotFoundRange;
    }
    NSRange tag;
    const auto identity = text.attribute(QBNoteTagStylerAttributeName, place, &tag, text.fullRange());
    return identity && tag.location < place ? tag : kNotFoundRange;
}

/// The boxes of a range with their places, in order.
std::vector<std::pair<std::shared_ptr<QBCheckBoxTextAttachment>, qint64>> checkboxes(const NSAttributedString &text,
                                                                                     NSRange range)
{
    std::vector<std::pair<std::shared_ptr<QBCheckBoxTextAttachment>, qint64>> found;
    text.enumerateAttribute(NSAttachmentAttributeName, range, NSAttributedStringEnumerationOptions::Forward,
                            [&found](const AttributeValue &value, NSRange place, bool * /*stop*/) {
                                if (auto box = value.sharedAs<QBCheckBoxTextAttachment>()) {
                                    found.emplace_back(std::move(box), place.location);
                                }
                            });
    return found;
}

void toggle(QBCheckBoxTextAttachment &box, qint64 place, NoteTextView &view)
{
    box.toggleCheck();
    QBNotesTextStorage &storage = view.textStorage();
    storage.applyStylingInRange(storage.attributedString().paragraphRangeForRange({place, 1}));
    view.setNeedsDisplay();
    // By its place: another box may stand there once the text around it was undone and done again.
    view.undoManager().registerUndoWithTarget(&view, [&view, place] {
        const auto value = view.textStorage().attributedString().attribute(NSAttachmentAttributeName, place);
        if (const auto sameBox = value.sharedAs<QBCheckBoxTextAttachment>()) {
            toggle(*sameBox, place, view);
            view.didUndoOrRedo();
        }
    });
}

} // namespace

void QBNoteEditorCoreController::performStylingInTextView(NoteTextView &textView)
{
    QBNotesTextStorage &storage = textView.textStorage();
    const NSRange range = storage.rangeToStyle();
    if (textView.undoManager().isUndoing() || textView.undoManager().isRedoing()) {
        storage.applyStylingInRange(range);
        return;
    }
    const NSRange selection = textView.selectedRange();
    NSRange proposedSelection;
    if (const auto styled = storage.styleTextInRange(range, selection, &proposedSelection)) {
        if (selection.length > 0) {
            // What is proposed shrinks with each spacer that goes from its start and comes back: the next command would
            // find less selected than this one.
            proposedSelection = quib::selectionInStyledText(selection, storage.attributedString(),
                                                            NSIntersectionRange(range, storage.fullRange()), *styled);
        }
        textView.replaceCharactersInrange(range, *styled, proposedSelection);
    }
    reorderOrderedListInTextView(textView);
}

void QBNoteEditorCoreController::reorderOrderedListInTextView(NoteTextView &textView)
{
    QBNotesTextStorage &storage = textView.textStorage();
    const auto result = m_noteTextKitStack.styleEditor().ensureOrderedListOrderInAttributedString(
        storage.attributedString(), textView.selectedRange());
    if (!result) {
        return;
    }
    textView.replaceCharactersInrange(result->replacementRange, result->replamentAttributedString,
                                      result->proposedSelectionRange);
    const NSRange replaced = {result->replacementRange.location, result->replamentAttributedString.length()};
    storage.applyStylingInRange(storage.attributedString().paragraphRangeForRange(replaced));
}

void QBNoteEditorCoreController::correctTagSelectionAfterInsertionInTextView(NoteTextView &textView)
{
    const NSAttributedString &text = textView.textStorage().attributedString();
    const NSRange selection = textView.selectedRange();
    NSRange corrected = selection;
    const NSRange atEnd = tagAroundPlace(text, selection.limit());
    if (selection.length == 0) {
        // Only the spacer is left between the caret and the tag's end.
        if (atEnd.isFound() && atEnd.limit() == selection.location + 1) {
            corrected.location = atEnd.limit();
        }
    } else {
        const NSRange atStart = tagAroundPlace(text, selection.location);
        corrected = atStart.isFound() ? NSUnionRange(corrected, atStart) : corrected;
        corrected = atEnd.isFound() ? NSUnionRange(corrected, atEnd) : corrected;
    }
    if (corrected != selection) {
        textView.setSelectedRange(corrected);
    }
}

bool QBNoteEditorCoreController::matchRepeatableStyleOnNewLineInTextView(NoteTextView &textView)
{
    QBNotesTextStorage &storage = textView.textStorage();
    const NSAttributedString &text = storage.attributedString();
    const NSRange selection = textView.selectedRange();
    if (!selection.isFound() || selection.limit() > text.length()) {
        return false;
    }
    // The line that is continued is the one the selection begins in.
    const NSRange line = text.paragraphRangeForRange({selection.location, 0});
    NSRange marker;
    QString markerText;
    if (!storage.hasRepeatableNewLineStyleInRange(line, &marker, &markerText) ||
        selection.location <= marker.location) {
        return false;
    }
    const NSRange prefix = {line.location, marker.location - line.location};
    const NSRange beginning = {line.location, prefix.length + marker.length};
    if (selection == NSRange{marker.limit(), 0} &&
        lengthWithoutNewlines(text.stringInRange(line)) == beginning.length) {
        // Nothing stands behind the marker: the list ends here.
        textView.insertText(u""_s, beginning);
        textView.setSelectedRange({line.location, 0});
        return true;
    }
    const NSAttributedString newLine = storage.styledAttributedStringFromString(
        QString(u'\n' % storage.stringWithExpandedTextAttachmentsWithRange(prefix) % markerText));
    textView.replaceCharactersInrange(selection, newLine, {selection.location + newLine.length(), 0});
    return true;
}

bool QBNoteEditorCoreController::indentTabbableStyle(bool backwards, NoteTextView &textView)
{
    QBNotesTextStorage &storage = textView.textStorage();
    const NSRange lines = storage.attributedString().paragraphRangeForRange(
        quib::rangeCutToLength(textView.selectedRange(), storage.length()));
    NSRange marker;
    if (!storage.hasTabbableStyleInRange(lines, &marker)) {
        return false;
    }
    shiftSelectionRight(!backwards, textView);
    return true;
}

bool QBNoteEditorCoreController::containsCheckboxesInRange(NSRange range) const
{
    return !checkboxes(m_noteTextKitStack.noteTextStorage().attributedString(), range).empty();
}

void QBNoteEditorCoreController::toggleCheckboxAttachment(QBCheckBoxTextAttachment &attachment, qint64 atIndex,
                                                          NoteTextView &inTextView)
{
    toggle(attachment, atIndex, inTextView);
}

void QBNoteEditorCoreController::setCheckboxAttachmentsState(bool state, NSRange InRange, NoteTextView &inTextView)
{
    NSUndoManager &undoManager = inTextView.undoManager();
    undoManager.beginUndoGrouping();
    for (const auto &[box, place] : checkboxes(inTextView.textStorage().attributedString(), InRange)) {
        if (box->isChecked() != state) {
            toggle(*box, place, inTextView);
        }
    }
    undoManager.endUndoGrouping();
}

void QBNoteEditorCoreController::disableInternalURLsInRange(NSRange range)
{
    QBNotesTextStorage &storage = m_noteTextKitStack.noteTextStorage();
    std::vector<NSRange> links;
    storage.attributedString().enumerateAttribute(NSLinkAttributeName, range,
                                                  NSAttributedStringEnumerationOptions::Forward,
                                                  [&links](const AttributeValue &value, NSRange run, bool * /*stop*/) {
                                                      if (value && value.urlValue().scheme() == kInternalScheme) {
                                                          links.push_back(run);
                                                      }
                                                  });
    for (const NSRange link : links) {
        storage.removeAttribute(NSLinkAttributeName, link);
    }
}

NSRange QBNoteEditorCoreController::rangeWidenedInRange(
    NSRange range, const std::function<NSRange(const QBNotesTextAttachment &attachment, NSRange place)> &by) const
{
    const NSAttributedString &text = m_noteTextKitStack.noteTextStorage().attributedString();
    const NSRange inText = quib::rangeCutToLength(range, text.length());
    NSRange whole = inText;
    text.enumerateAttribute(NSAttachmentAttributeName, inText, NSAttributedStringEnumerationOptions::Forward,
                            [&](const AttributeValue &value, NSRange place, bool * /*stop*/) {
                                if (const auto *attachment = value.as<QBNotesTextAttachment>()) {
                                    whole = NSUnionRange(whole, by(*attachment, place));
                                }
                            });
    return whole;
}

NSRange QBNoteEditorCoreController::extraAttachmentsRangeForRange(NSRange range) const
{
    const NSAttributedString &text = m_noteTextKitStack.noteTextStorage().attributedString();
    return rangeWidenedInRange(range, [&text](const QBNotesTextAttachment &attachment, NSRange place) {
        return attachment.extraAttachmentRangeForAttachmentRange(place, text);
    });
}

NSRange QBNoteEditorCoreController::rangeTakenWithRange(NSRange range) const
{
    const NSAttributedString &text = m_noteTextKitStack.noteTextStorage().attributedString();
    return rangeWidenedInRange(range, [&text](const QBNotesTextAttachment &attachment, NSRange place) {
        const bool beginsLine = attachment.isFullLine() && !attachment.canBeDraggedAlone();
        if (!beginsLine) {
            return attachment.extraAttachmentRangeForAttachmentRange(place, text);
        }
        const bool hasBlank = place.limit() < text.length() && text.characterAtIndex(place.limit()) == u' ';
        return NSRange{place.location, place.length + (hasBlank ? 1 : 0)};
    });
}

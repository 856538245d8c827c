#include "QBNoteEditorCoreController.h"

#include <Markup/Attachments/QBFoldTextAttachment.h>
#include <Markup/QBNoteTextKitStack.h>
#include <Text/NSMutableAttributedString.h>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using quib::AttributeValue;
using quib::NoteTextView;

// Stretches of a text that are put away behind one character.

namespace {

/// Many changes as one: the storage processes them together, and they are undone together.
class GroupedEdits
{
public:
    GroupedEdits(QBNotesTextStorage &storage, NoteTextView *view)
        : m_storage(storage)
        , m_view(view)
    {
        m_storage.beginEditing();
        if (m_view != nullptr) {
            m_view->undoManager().beginUndoGrouping();
        }
    }
    GroupedEdits(const GroupedEdits &) = delete;
    GroupedEdits &operator=(const GroupedEdits &) = delete;
    ~GroupedEdits()
    {
        if (m_view != nullptr) {
            m_view->undoManager().endUndoGrouping();
        }
        m_storage.endEditing();
    }

private:
    QBNotesTextStorage &m_storage;
    NoteTextView *m_view;
};

/// Where a place of the text is after a stretch became another of some length.
qint64 placeAfterReplacing(qint64 place, NSRange range, qint64 newLength)
{
    if (place <= range.location) {
        return place;
    }
    return place >= range.limit() ? place - range.length + newLength : range.location + newLength;
}

} // namespace

void QBNoteEditorCoreController::foldTextWithAttributeName(const NSAttributeName &name, NSRange inRange,
                                                           NoteTextView *textView)
{
    QBNotesTextStorage &storage = m_noteTextKitStack.noteTextStorage();
    std::vector<NSRange> runs;
    storage.attributedString().enumerateAttribute(name, inRange, NSAttributedStringEnumerationOptions::Reverse,
                                                  [&runs](const AttributeValue &value, NSRange run, bool * /*stop*/) {
                                                      if (value) {
                                                          runs.push_back(run);
                                                      }
                                                  });
    if (runs.empty()) {
        return;
    }
    const GroupedEdits edits(storage, textView);
    for (const NSRange run : runs) {
        foldTextInRange(run, name.string(), textView);
    }
}

void QBNoteEditorCoreController::foldTextInRange(NSRange range, const QString &foldIdentifier, NoteTextView *textView)
{
    QBNotesTextStorage &storage = m_noteTextKitStack.noteTextStorage();
    NSRange folded = quib::rangeCutToLength(range, storage.length());
    QString representedText = storage.stringWithExpandedTextAttachmentsWithRange(folded);
    const bool hasLineFeed =
        folded.length > 0 && storage.attributedString().characterAtIndex(folded.limit() - 1) == u'\n';
    if (hasLineFeed) {
        representedText.chop(1);
        --folded.length;
    }
    if (folded.length == 0) {
        return;
    }
    const auto &themeManager = m_noteTextKitStack.themeManager();
    const auto attachment = std::make_shared<QBFoldTextAttachment>(representedText, themeManager);
    attachment->setFoldIdentifier(foldIdentifier);
    attachment->setRepresentedAttributedString(
        storage.attributedSubstringFromRange(folded, /*expandTextAttachment=*/false));
    quib::AttributeSet attributes = themeManager->defaultTextAttributes();
    attributes.insert(NSAttachmentAttributeName, attachment);
    NSMutableAttributedString fold(NSTextAttachment::placeholderString(), attributes);
    if (hasLineFeed) {
        fold.appendAttributedString(NSAttributedString(u"\n"_s));
        ++folded.length;
    }
    replaceCharactersInRange(folded, fold, textView);
}

void QBNoteEditorCoreController::unfoldTextWithFoldIdentifier(const QString &foldIdentifier, NSRange inRange,
                                                              NoteTextView *textView)
{
    QBNotesTextStorage &storage = m_noteTextKitStack.noteTextStorage();
    std::vector<std::pair<std::shared_ptr<QBFoldTextAttachment>, NSRange>> folds;
    storage.attributedString().enumerateAttribute(
        NSAttachmentAttributeName, inRange, NSAttributedStringEnumerationOptions::Reverse,
        [&](const AttributeValue &value, NSRange place, bool * /*stop*/) {
            if (auto fold = value.sharedAs<QBFoldTextAttachment>(); fold && fold->foldIdentifier() == foldIdentifier) {
                folds.emplace_back(std::move(fold), place);
            }
        });
    if (folds.empty()) {
        return;
    }
    const GroupedEdits edits(storage, textView);
    for (const auto &[fold, place] : folds) {
        unfoldFoldAttachment(*fold, place, textView);
    }
}

void QBNoteEditorCoreController::unfoldFoldAttachment(QBFoldTextAttachment &attachment, NSRange attachmentRange,
                                                      NoteTextView *textView)
{
    const NSAttributedString &folded = attachment.representedAttributedString();
    // What the fold stands for counts: a copy of a fold has nothing else.
    const QString representedText = attachment.representedText();
    const bool isWhole =
        QBNotesTextStorage::stringWithExpandedTextAttachmentsFromAttributedString(folded) == representedText;
    NSMutableAttributedString unfolded;
    // One fold may stand side by side with itself.
    for (qint64 i = 0; i < attachmentRange.length; ++i) {
        unfolded.appendAttributedString(isWhole ? folded : NSAttributedString(representedText));
    }
    replaceCharactersInRange(attachmentRange, unfolded, textView);
}

void QBNoteEditorCoreController::replaceCharactersInRange(NSRange range, const NSAttributedString &withAttributedString,
                                                          NoteTextView *inTextView)
{
    if (inTextView == nullptr) {
        static_cast<NSTextStorage &>(m_noteTextKitStack.noteTextStorage())
            .replaceCharactersInRange(range, withAttributedString);
        return;
    }
    const NSRange selection = inTextView->selectedRange();
    const qint64 start = placeAfterReplacing(selection.location, range, withAttributedString.length());
    const qint64 end = placeAfterReplacing(selection.limit(), range, withAttributedString.length());
    inTextView->replaceCharactersInrange(range, withAttributedString, {start, end - start});
}

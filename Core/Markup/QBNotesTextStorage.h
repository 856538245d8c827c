#pragma once

#include <Foundation/NSRange.h>
#include <Markup/Stylers/QBCodeSyntaxHighlighterDelegate.h>
#include <Markup/Stylers/QBNoteStylersManager.h>
#include <Text/NSTextStorage.h>

#include <QString>

#include <functional>
#include <memory>
#include <optional>

class QBGenericFileTextAttachment;
class QBHeaderTextAttachment;
class QBImageTextAttachment;

/// The live text of one note: it remembers of each edit just enough to tell what must be styled again, runs the
/// stylers, and turns attachments back into the text they stand for, which is the note's real content. Owned by the
/// note's text stack; confined to the queue of its editor.
class QBNotesTextStorage : public NSTextStorage, public QBCodeSyntaxHighlighterDelegate
{
public:
    QBNotesTextStorage();
    ~QBNotesTextStorage() override;

    [[nodiscard]] const std::shared_ptr<QBNoteStylersManager> &noteStylersManager() const
    {
        return m_noteStylersManager;
    }
    void setNoteStylersManager(std::shared_ptr<QBNoteStylersManager> noteStylersManager);

    // Primitive changes

    using NSTextStorage::replaceCharactersInRange;
    /// A null string changes nothing.
    void replaceCharactersInRange(NSRange range, QStringView withString) override;
    void setAttributedString(NSAttributedString string) override;

    // Loading: QBNotesTextStorage+Styling.cpp

    /// Replaces everything by a note's text, styled. Null and empty make an empty text.
    void loadString(const QString &string);
    /// A styled copy; this text stays as it is.
    [[nodiscard]] NSAttributedString styledAttributedStringFromString(const QString &string);
    [[nodiscard]] NSAttributedString styledAttributedStringFromAttributedString(const NSAttributedString &string);
    /// A piece of text as it would look in a place of this one.
    [[nodiscard]] NSAttributedString styledAttributedStringFromString(const QString &string,
                                                                      NSRange ifItWasInsertedInRange) const;

    // After an edit

    /// What the last edit calls to be styled again; the first paragraph where there was none since the load.
    [[nodiscard]] NSRange rangeToStyle() const;
    [[nodiscard]] NSRange rangeToStyleFromEditedRange(NSRange range, qint64 changeInLength, bool insertedNewline) const;
    /// How far constructs of several paragraphs reach beyond an edited one; not-found where it stands alone.
    [[nodiscard]] static NSRange
    multipleParagraphStyleRangeForEditedParagraphRange(NSRange range, bool insertedNewline,
                                                       const NSAttributedString &attributedString);
    /// Styles a range again. Returns the new text when attachments came or went: the caller puts it in the place of the
    /// range, as one step that can be undone, and selects the proposed selection. Otherwise the text here is styled
    /// already, the proposed selection is not-found, and nothing is returned.
    [[nodiscard]] std::optional<NSMutableAttributedString> styleTextInRange(NSRange range, NSRange selectionRange,
                                                                            NSRange *proposedSelectionRange);
    /// Styles a range in place; attachments neither come nor go.
    void applyStylingInRange(NSRange range);
    /// Whether the last edit took away text and put nothing much in its place.
    [[nodiscard]] bool lastEditDidDeleteText() const;
    [[nodiscard]] bool canEditTextInRange(NSRange range) const;
    /// A text of its own with this part, attributes included, and the same stylers.
    [[nodiscard]] std::unique_ptr<QBNotesTextStorage> subTextStorageWithRange(NSRange range) const;

    // What lines begin with: QBNotesTextStorage+Lists.cpp

    /// Whether a line has a style that the next line takes over: a bullet, a box, a quote or a number. Shape:
    /// stylerMarkerRange becomes the range of its marker with the blank, not-found without one; stylerMarker what the
    /// next line begins with: the marker that commands insert, or the next number.
    [[nodiscard]] bool hasRepeatableNewLineStyleInRange(NSRange range, NSRange *stylerMarkerRange,
                                                        QString *stylerMarker) const;
    [[nodiscard]] bool hasRepeatableNewLineStyleInRange(NSRange range, NSRange *stylerMarkerRange) const;
    /// Whether a line has a style that a tab moves as a whole: a bullet, a box or a number.
    [[nodiscard]] bool hasTabbableStyleInRange(NSRange range, NSRange *stylerMarkerRange) const;

    // Coloured code: QBNotesTextStorage+Highlighting.cpp

    /// Puts coloured code in its place, unless the code is another one by now.
    void codeSyntaxHighlighter(QBNoteCodeHighlighting &highlighter, const NSAttributedString &highlightedString,
                               const QString &forCodeUUID) override;

    // Represented text: QBNotesTextStorage+Expanding.cpp

    /// The note's text: every attachment as what it stands for.
    [[nodiscard]] QString stringWithExpandedTextAttachments() const;
    [[nodiscard]] QString stringWithExpandedTextAttachmentsWithRange(NSRange range) const;
    [[nodiscard]] static QString
    stringWithExpandedTextAttachmentsFromAttributedString(const NSAttributedString &attributedString);
    /// Shape: what an attachment stands for comes without attributes.
    [[nodiscard]] NSAttributedString attributedSubstringFromRange(NSRange range, bool expandTextAttachment) const;

    /// Those that are folded too. Shape: the range of one that is folded is its fold's.
    void enumerateImagesAttachmentsUsingBlock(
        const std::function<void(QBImageTextAttachment &attachment, NSRange range)> &block) const;
    void enumerateImagesAttachmentsInRange(
        NSRange range, const std::function<void(QBImageTextAttachment &attachment, NSRange range)> &usingBlock) const;
    /// Pictures are files too. Those that are folded as above.
    void enumerateFilesAttachmentsUsingBlock(
        const std::function<void(QBGenericFileTextAttachment &attachment, NSRange range)> &block) const;
    void enumerateFilesAttachmentsInRange(
        NSRange range,
        const std::function<void(QBGenericFileTextAttachment &attachment, NSRange range)> &usingBlock) const;
    /// Shape: the range is the header's line.
    void enumerateHeadersUsingBlock(
        const std::function<void(QBHeaderTextAttachment &attachment, NSRange range)> &block) const;

protected:
    void processEditing() override;

private:
    /// What plain text has: the ground that the stylers begin on.
    [[nodiscard]] quib::AttributeSet groundAttributes() const;
    /// Those that have something left to do where the ground was laid anew.
    [[nodiscard]] QBNoteStylersManager::Stylers stylersAfterReset() const;

    std::shared_ptr<QBNoteStylersManager> m_noteStylersManager;
    NSRange m_previousEditedRange = kNotFoundRange;
    qint64 m_previousChangeInLength = 0;
    bool m_previousEditInsertedNewline = false;
};

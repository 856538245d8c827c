#pragma once

#include "QBNoteTextStyler.h"

#include <Markup/Attachments/QBNotesTextAttachment.h>

#include <QCache>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QBNoteTextAttachmentConfiguring;

/// A styler that turns markers into attachments: characters that show a bullet, a box, a picture, and give the marker
/// back when the text is saved.
class QBNoteAttachmentTextStyler : public QBNoteTextStyler
{
public:
    using Replacement = NSMutableAttributedString::Replacement;
    /// Told of each replacement: the range as it was at that moment, and the text and attributes that came in its
    /// place.
    using ReplacementBlock = std::function<void(NSRange range, const Replacement &replacement, bool *stop)>;
    using AttachmentBlock =
        std::function<void(const std::shared_ptr<QBNotesTextAttachment> &attachment, NSRange range)>;

    /// Takes out the attachments that nothing justifies any more, and puts in those that are missing.
    virtual void replaceTextAttachmentsInAttributedString(NSMutableAttributedString &attributedString, NSRange &range,
                                                          const ReplacementBlock &usingBlock);
    /// The second half alone, for a text that was never styled.
    virtual void addTextAttachmentsInAttributedString(NSMutableAttributedString &attributedString, NSRange &range,
                                                      const ReplacementBlock &usingBlock);

    [[nodiscard]] QBNoteAttachmentTextStyler *attachmentStyler() final { return this; }
    /// Also forgets the templates, which hold the theme of before.
    void setThemeManager(std::shared_ptr<QBNotesTextThemeManager> themeManager) override
    {
        cleanStylerCache();
        QBNoteTextStyler::setThemeManager(std::move(themeManager));
    }
    /// Not owned; set back to null before it goes.
    virtual void setTextAttachmentConfigurator(QBNoteTextAttachmentConfiguring *textAttachmentConfigurator)
    {
        m_textAttachmentConfigurator = textAttachmentConfigurator;
    }
    [[nodiscard]] QBNoteTextAttachmentConfiguring *textAttachmentConfigurator() const
    {
        return m_textAttachmentConfigurator;
    }
    void cleanStylerCache() override;

    /// The attachment that stands for a text, on its one character; nullopt where the text can have none.
    [[nodiscard]] std::optional<NSAttributedString>
    attributedStringWithTextAttachmentForRepresentedText(const QString &representedText);

protected:
    /// Finds a marker that an attachment stands for already; null where there is no such pattern.
    [[nodiscard]] virtual const NSRegularExpression *attachmentRegularExpression() const { return nullptr; }
    /// A new attachment of the styler's class.
    [[nodiscard]] virtual std::shared_ptr<QBNotesTextAttachment>
    makeTextAttachment(const QString &representedText) const = 0;
    /// Whether an attachment is of the styler's class, which is the same for all attachments of one class.
    [[nodiscard]] virtual bool isOwnTextAttachment(const QBNotesTextAttachment &attachment) const = 0;
    /// The classes that isOwnTextAttachment may say yes to; what is styled without them is not looked through.
    [[nodiscard]] virtual quib::AttributeNameMask ownTextAttachmentClasses() const = 0;

    [[nodiscard]] virtual int stylerRegularExpressionRepresentedTextGroupIndex() const { return 1; }
    [[nodiscard]] virtual int attachmentRegularExpressionTextGroupIndex() const { return 1; }
    [[nodiscard]] virtual NSRange matchedRangeForTextCheckingResult(const NSTextCheckingResult &result) const;
    /// What the attachment takes the place of; with length 0 it is put in front.
    [[nodiscard]] virtual NSRange offsetMatchedRange(NSRange range, const QString &forMatchedString) const;
    [[nodiscard]] virtual bool shouldCacheTextAttachment() const { return true; }
    [[nodiscard]] virtual bool shouldRemoveAttachment(const QBNotesTextAttachment &attachment,
                                                      const NSAttributedString &inAttributedString,
                                                      NSRange attachmentRange, NSRange editedRange) const;
    [[nodiscard]] static bool
    shouldSkipAttachmentReplacementInAttributedString(const NSAttributedString &attributedString, NSRange range);
    /// Calls block for each attachment of the styler that stands where its pattern wants one.
    virtual void enumerateValidAttachmentsInAttributedString(const NSAttributedString &attributedString, NSRange range,
                                                             const AttachmentBlock &usingBlock) const;
    /// The attachments of the styler's class in a range, in order. The block may change attributes but no characters.
    void enumerateOwnAttachments(const NSAttributedString &attributedString, NSRange range,
                                 const AttachmentBlock &usingBlock) const;
    struct PlacedAttachment
    {
        const QBNotesTextAttachment *attachment = nullptr;
        NSRange range;
        const quib::AttributeSet *attributes = nullptr; ///< of the first unit
    };
    /// The same without a list of them. The block must leave the text alone.
    void forEachOwnAttachment(const NSAttributedString &attributedString, NSRange range,
                              const std::function<void(const PlacedAttachment &placed)> &block) const;
    /// As enumerateOwnAttachments for those that are wanted, which is told by the class; none is of another class than
    /// those of the mask.
    static void enumerateAttachments(const NSAttributedString &attributedString, NSRange range,
                                     quib::AttributeNameMask classes,
                                     const std::function<bool(const QBNotesTextAttachment &attachment)> &isWanted,
                                     const AttachmentBlock &usingBlock);
    /// The attributes of an attachment's character; nullopt where the text can have no attachment.
    [[nodiscard]] virtual std::optional<quib::AttributeSet>
    attributesWithTextAttachmentForRepresentedText(const QString &representedText);

    /// Templates by their keys; what stands in a text is always a copy.
    QCache<QString, std::shared_ptr<QBNotesTextAttachment>> m_stylerCache{kCachedAttachments};

private:
    /// An attachment and the theme's default attributes.
    [[nodiscard]] quib::AttributeSet
    attributesWithTextAttachment(const std::shared_ptr<QBNotesTextAttachment> &attachment) const;

    static constexpr int kCachedAttachments = 256;
    /// Longer ones seldom come twice. Units: UTF-16 units.
    static constexpr qsizetype kLongestCachedText = 1024;

    void removeUnusedTextAttachmentsInAttributedString(NSMutableAttributedString &attributedString, NSRange &range,
                                                       const ReplacementBlock &usingBlock);

    QBNoteTextAttachmentConfiguring *m_textAttachmentConfigurator = nullptr;
};

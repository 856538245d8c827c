#pragma once

#include <Text/NSAttributedString.h>
#include <Text/NSTextAttachment.h>

#include <Foundation/NSRange.h>

#include <QRectF>
#include <QSizeF>
#include <QString>

#include <functional>
#include <memory>
#include <utility>

class QBNotesTextThemeManager;

namespace quib {
class GraphicsContext;
}

/// An inline object that stands for a stretch of markup and can always give that text back: a note is saved by putting
/// each attachment's represented text in its place. Owned by the texts it stands in; lives on their queue. Holds the
/// theme's manager, which its size and its picture follow.
class QBNotesTextAttachment : public NSTextAttachment
{
public:
    QBNotesTextAttachment(QString representedText, std::shared_ptr<QBNotesTextThemeManager> themeManager);
    QBNotesTextAttachment &operator=(const QBNotesTextAttachment &) = delete;
    ~QBNotesTextAttachment() override;

    /// A new attachment of the same class with the same text and theme; no other state goes along, the listener
    /// neither.
    [[nodiscard]] virtual std::shared_ptr<QBNotesTextAttachment> copy() const = 0;
    /// The class's name, as the cache keys have it.
    [[nodiscard]] virtual QString className() const = 0;

    [[nodiscard]] virtual QString representedText() const { return m_representedText; }
    void setRepresentedText(const QString &representedText) { m_representedText = representedText; }
    [[nodiscard]] const std::shared_ptr<QBNotesTextThemeManager> &themeManager() const { return m_themeManager; }
    void setThemeManager(std::shared_ptr<QBNotesTextThemeManager> themeManager)
    {
        m_themeManager = std::move(themeManager);
    }

    // What it is to the layout and the selection

    /// Stands at the start of a block's line, as its prefix. Each class says it of itself, and each attachment what its
    /// class says.
    static constexpr bool kIsFullLine = false;
    [[nodiscard]] virtual bool isFullLine() const { return kIsFullLine; }
    /// Flows in a line of text; likewise.
    static constexpr bool kIsInline = false;
    [[nodiscard]] virtual bool isInline() const { return kIsInline; }
    /// The selection takes the characters around it as one unit. Spelled so.
    [[nodiscard]] virtual bool needWrappingCharaters() const { return false; }
    [[nodiscard]] virtual bool canBeDraggedAlone() const { return false; }
    /// The whole text that belongs with the attachment, for copying and deleting.
    [[nodiscard]] virtual NSRange
    extraAttachmentRangeForAttachmentRange(NSRange range, const NSAttributedString &inAttributedString) const;

    // Size and picture. Units: points.

    [[nodiscard]] virtual QSizeF attachmentSize() const { return {0, 0}; }
    /// Below the baseline where negative.
    [[nodiscard]] virtual double attachmentBaselineOffset() const { return 0; }
    /// Both by way of the theme's cache, which goes with the theme and with its font sizes.
    [[nodiscard]] QSizeF cachedAttachmentSize() const;
    [[nodiscard]] double cachedAttachmentBaselineOffset() const;
    /// Attachments of one key have one size. Empty for one whose size is its own and is not cached.
    [[nodiscard]] virtual QString baseCacheKey() const { return className(); }
    /// The part of the attachment's rectangle that is drawn: what the spacings leave.
    [[nodiscard]] virtual QRectF drawRectForAttachmentRect(const QRectF &rect) const
    {
        return rect.adjusted(attachmentLeftSpacing(), 0, -attachmentRightSpacing(), 0);
    }
    /// Draws nothing here. Requires: a theme.
    virtual void drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const;
    /// The attachment as a PNG, for rich copies. Shape: the first is the file's name, a new UUID and ".png".
    [[nodiscard]] std::pair<QString, QByteArray> createFileWrapper() const;

    using UpdateHandler = std::function<void(QBNotesTextAttachment &attachment)>;
    /// Tells whoever shows the attachment that its picture or size is another one.
    void updateTextAttachment();
    /// Called on the attachment's queue. One listener, the view or the stack that shows it.
    void setUpdateHandler(UpdateHandler handler)
    {
        m_updateHandler = handler ? std::make_unique<UpdateHandler>(std::move(handler)) : nullptr;
    }

protected:
    /// The empty room at the sides; part of the size.
    [[nodiscard]] virtual double attachmentLeftSpacing() const { return 0; }
    [[nodiscard]] virtual double attachmentRightSpacing() const { return 0; }
    /// Puts the middle of the attachment in the middle between ascender and descender of the paragraph font.
    [[nodiscard]] double attachmentBaselineOffsetForCenteredAttachmentHeight(double height) const;
    /// A size of so many parts of the theme's base size, in whole points; 0 without a theme.
    [[nodiscard]] double wholePointsOfBaseSize(double parts) const;

private:
    QString m_representedText;
    std::shared_ptr<QBNotesTextThemeManager> m_themeManager;
    /// Null for most: a pointer, since texts have very many attachments.
    std::unique_ptr<UpdateHandler> m_updateHandler;
};

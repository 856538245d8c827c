#pragma once

#include <Markup/Stylers/QBNoteTextAttachmentConfiguring.h>

#include <QSizeF>
#include <QUrl>

#include <functional>
#include <memory>

class NSManagedObjectContext;
class QBImageTextAttachment;

/// Gives the attachments of a text their files: looks up the record of each marker, and loads the picture of an image,
/// as small as the text shows it. Owned by who owns the text. Lives on the queue of the text, which is that of the
/// context too; pictures that are loaded in the background arrive on the main queue, so texts of other queues
/// configure synchronously.
class QBNoteTextAttachmentConfigurator : public QBNoteTextAttachmentConfiguring
{
public:
    using UpdateHandler = std::function<void(QBNotesTextAttachment &attachment)>;

    /// Not owned. Without one no attachment finds its file.
    void setManagedObjectContext(std::weak_ptr<NSManagedObjectContext> managedObjectContext);
    [[nodiscard]] std::shared_ptr<NSManagedObjectContext> managedObjectContext() const;

    /// Pixels to a point of the surface that shows the text.
    [[nodiscard]] double scale() const { return m_scale; }
    void setScale(double scale) { m_scale = scale; }
    /// No picture is wider; 0 for no limit. Units: points.
    [[nodiscard]] double maxAttachmentWidth() const { return m_maxAttachmentWidth; }
    void setMaxAttachmentWidth(double maxAttachmentWidth) { m_maxAttachmentWidth = maxAttachmentWidth; }
    /// No picture is higher; 0 for no limit. Units: points.
    [[nodiscard]] double maxAttachmentHeight() const { return m_maxAttachmentHeight; }
    void setMaxAttachmentHeight(double maxAttachmentHeight) { m_maxAttachmentHeight = maxAttachmentHeight; }
    /// Loads the whole picture even where a smaller copy would do.
    [[nodiscard]] bool useOriginalAttachment() const { return m_useOriginalAttachment; }
    void setUseOriginalAttachment(bool useOriginalAttachment) { m_useOriginalAttachment = useOriginalAttachment; }
    /// Pictures are there when configuring returns.
    [[nodiscard]] bool configureAttachmentSynchronously() const { return m_configureAttachmentSynchronously; }
    void setConfigureAttachmentSynchronously(bool configureAttachmentSynchronously)
    {
        m_configureAttachmentSynchronously = configureAttachmentSynchronously;
    }
    /// Loads no pictures at all.
    [[nodiscard]] bool configureAttachmentURLOnly() const { return m_configureAttachmentURLOnly; }
    void setConfigureAttachmentURLOnly(bool configureAttachmentURLOnly)
    {
        m_configureAttachmentURLOnly = configureAttachmentURLOnly;
    }
    /// What attachments of files tell when they are to be drawn anew.
    void setUpdateHandler(UpdateHandler updateHandler) { m_updateHandler = std::move(updateHandler); }

    void configureTextAttachment(QBNotesTextAttachment &attachment, QBNoteTextStyler &forTextStyler) override;
    /// Requires: for a picture in the background, that a std::shared_ptr owns the attachment; it may go before the
    ///           picture arrives.
    void configureTextAttachment(QBNotesTextAttachment &attachment);

    /// The size that a picture of a size is shown in at most. Shape: scaled becomes whether it is another one.
    /// Units: pixels.
    [[nodiscard]] QSizeF imageThumbSizeForImageSize(QSizeF imageSize, bool *scaled) const;
    /// Whether the file itself costs no more than a smaller copy: it is as small, and in a form that is quick to read.
    [[nodiscard]] static bool canLoadOriginalImageURL(const QUrl &imageURL, QSizeF ForThumbSize, QSizeF originalSize);
    /// Gives the attachment its size, and its picture when that is loaded.
    void loadImageForImageAttachment(QBImageTextAttachment &attachment);

private:
    std::weak_ptr<NSManagedObjectContext> m_managedObjectContext;
    double m_scale = 1;
    double m_maxAttachmentWidth = 0;
    double m_maxAttachmentHeight = 0;
    bool m_useOriginalAttachment = false;
    bool m_configureAttachmentSynchronously = false;
    bool m_configureAttachmentURLOnly = false;
    UpdateHandler m_updateHandler;
};

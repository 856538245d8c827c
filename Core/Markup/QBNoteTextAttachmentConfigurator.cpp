#include "QBNoteTextAttachmentConfigurator.h"

#include <Foundation/DispatchQueue.h>
#include <Graphics/NSImage.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNoteFile.h>
#include <Store/QBNoteImage.h>
#include <Store/QBThumbFileManager.h>

#include <QFileInfo>

#include <array>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// What the names of drawings begin with that were made in the program.
constexpr QLatin1StringView kSketchPrefix{"quib_sketch"};

/// The small copy of a picture: the one that is there, or a new one where there is none or it cannot be read.
std::optional<NSImage> thumbOfPicture(const QBThumbFileManager &manager, const QUrl &imageURL, QSizeF thumbSize)
{
    const QString thumb = manager.thumbURLForImageURL(imageURL, thumbSize).toLocalFile();
    if (QFileInfo::exists(thumb)) {
        if (auto image = NSImage::imageWithContentsOfFile(thumb, nullptr)) {
            return image;
        }
    }
    return manager.makeThumbForImageURL(imageURL, thumbSize, QBThumbFileManager::defaultThumbOptions());
}

} // namespace

void QBNoteTextAttachmentConfigurator::setManagedObjectContext(
    std::weak_ptr<NSManagedObjectContext> managedObjectContext)
{
    m_managedObjectContext = std::move(managedObjectContext);
}

std::shared_ptr<NSManagedObjectContext> QBNoteTextAttachmentConfigurator::managedObjectContext() const
{
    return m_managedObjectContext.lock();
}

void QBNoteTextAttachmentConfigurator::configureTextAttachment(QBNotesTextAttachment &attachment,
                                                               QBNoteTextStyler & /*forTextStyler*/)
{
    configureTextAttachment(attachment);
}

void QBNoteTextAttachmentConfigurator::configureTextAttachment(QBNotesTextAttachment &attachment)
{
    auto *file = dynamic_cast<QBGenericFileTextAttachment *>(&attachment);
    const auto moc = managedObjectContext();
    if (file == nullptr || !moc) {
        return;
    }
    if (m_updateHandler) {
        attachment.setUpdateHandler(m_updateHandler);
    }
    const auto record = QBNoteFile::noteFileWithTextRepresentation(attachment.representedText(), *moc);
    auto *picture = dynamic_cast<QBImageTextAttachment *>(file);
    if (picture == nullptr) {
        if (record) {
            file->setFileURL(record->fileURL().value_or(QUrl()));
            file->setFilename(record->filename());
            file->setModificationDate(record->modificationDate());
        }
        return;
    }
    if (const auto image = record.as<QBNoteImage>()) {
        picture->setFileURL(image->fileURL().value_or(QUrl()));
        picture->setOriginalImageSize({static_cast<double>(image->width()), static_cast<double>(image->height())});
        if (!m_configureAttachmentURLOnly) {
            loadImageForImageAttachment(*picture);
        }
    }
}

QSizeF QBNoteTextAttachmentConfigurator::imageThumbSizeForImageSize(QSizeF imageSize, bool *scaled) const
{
    double width = imageSize.width();
    double height = imageSize.height();
    bool isScaled = false;
    if (m_maxAttachmentHeight > 0) {
        const double limit = m_maxAttachmentHeight * m_scale;
        if (limit < height) {
            width = limit * width / height;
            height = limit;
            isScaled = true;
        }
    }
    if (m_maxAttachmentWidth > 0) {
        const double limit = m_maxAttachmentWidth * m_scale;
        if (limit <= width) {
            height = std::floor(imageSize.height() * limit / imageSize.width());
            width = limit;
            isScaled = true;
        }
    }
    if (scaled != nullptr) {
        *scaled = isScaled;
    }
    return {width, height};
}

bool QBNoteTextAttachmentConfigurator::canLoadOriginalImageURL(const QUrl &imageURL, QSizeF ForThumbSize,
                                                               QSizeF originalSize)
{
    constexpr std::array kQuickExtensions{"png"_L1, "jpg"_L1, "jpeg"_L1};
    const QString extension = QFileInfo(imageURL.toLocalFile()).suffix().toLower();
    return originalSize.width() <= ForThumbSize.width() && originalSize.height() <= ForThumbSize.height() &&
           std::find(kQuickExtensions.begin(), kQuickExtensions.end(), extension) != kQuickExtensions.end();
}

void QBNoteTextAttachmentConfigurator::loadImageForImageAttachment(QBImageTextAttachment &attachment)
{
    // 1. The size in the text is known before any pixel is.
    const QSizeF originalSize = attachment.originalImageSize();
    bool isScaled = false;
    const QSizeF thumbSize = imageThumbSizeForImageSize(originalSize, &isScaled);
    const double scale = isScaled ? m_scale : 1;
    attachment.setAttachmentImageSize(thumbSize / scale);

    // 2. Without a file there is nothing to load.
    const QUrl url = attachment.fileURL();
    if (url.isEmpty() || thumbSize.isEmpty() || !QFileInfo::exists(url.toLocalFile())) {
        attachment.updateTextAttachment();
        return;
    }

    // 3. A whole picture is read when it was asked for, or when it is shown in its own size and is quick to read, as
    //    drawings of the program's own always are.
    const bool isSketch = url.fileName(QUrl::FullyDecoded).startsWith(kSketchPrefix);
    const bool loadsOriginal =
        m_useOriginalAttachment || (isSketch && !isScaled) || canLoadOriginalImageURL(url, thumbSize, originalSize);

    // 4. The picture arrives at once, or when it is there.
    const auto *manager = QBThumbFileManager::thumbFileManagerForPathComponent(QBThumbFileManager::kNoteImages);
    const auto load = [manager, url, thumbSize, scale, loadsOriginal]() -> NSImage {
        const auto image = loadsOriginal ? NSImage::imageWithContentsOfFile(url.toLocalFile(), nullptr)
                                         : thumbOfPicture(*manager, url, thumbSize);
        return image ? image->imageWithScale(scale) : NSImage();
    };
    if (m_configureAttachmentSynchronously) {
        attachment.setAttachmentImage(load());
        attachment.updateTextAttachment();
        return;
    }
    QBThumbFileManager::performInBackground([load, weak = attachment.weak_from_this()] {
        if (weak.expired()) {
            return;
        }
        quib::DispatchQueue::main()->async([image = load(), weak] {
            if (const auto self = weak.lock()) {
                self->setAttachmentImage(image);
                self->updateTextAttachment();
            }
        });
    });
}

#include "QBNoteTextAttachmentConfigurator.h"

#include <Foundation/DispatchQueue.h>
#include <Graphics/NSImage.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNoteFile.h>
#include <Store/QBNoteImage.h>
#include <Store/QBThumbFileManager.h>

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// What the names of drawings begin with that were made in the program.
constexpr QLatin1StringView kSketchPrefix{"quib_sketch"};

/// The most room that a picture gets. Units: points, but for the scale.
struct Limits
{
    double width = 0;
    double height = 0;
    double scale = 1;
};

/// A picture as it is to be shown.
struct ShownPicture
{
    NSImage image;
    QSizeF originalSize; ///< in pixels
    QSizeF shownSize;    ///< in points
};

QSizeF thumbSizeWithin(const Limits &limits, QSizeF imageSize, bool *scaled)
{
    double width = imageSize.width();
    double height = imageSize.height();
    *scaled = false;
    if (limits.height > 0) {
        const double limit = limits.height * limits.scale;
        if (limit < height) {
            width = limit * width / height;
            height = limit;
            *scaled = true;
        }
    }
    if (limits.width > 0) {
        const double limit = limits.width * limits.scale;
        if (limit <= width) {
            height = std::floor(imageSize.height() * limit / imageSize.width());
            width = limit;
            *scaled = true;
        }
    }
    return {width, height};
}

/// The small copy of a picture: the one that is there, or a new one where there is none or it cannot be read.
std::optional<NSImage> thumbOfPicture(const QUrl &imageURL, QSizeF thumbSize)
{
    const auto *manager = QBThumbFileManager::thumbFileManagerForPathComponent(QBThumbFileManager::kNoteImages);
    const QString thumb = manager->thumbURLForImageURL(imageURL, thumbSize).toLocalFile();
    if (QFileInfo::exists(thumb)) {
        if (auto image = NSImage::imageWithContentsOfFile(thumb, nullptr)) {
            return image;
        }
    }
    return manager->makeThumbForImageURL(imageURL, thumbSize, QBThumbFileManager::defaultThumbOptions());
}

/// Reads the whole picture when that was asked for, or when it is shown in its own size and is quick to read, as
/// drawings of the program's own always are; otherwise the small copy.
ShownPicture readPicture(const QUrl &url, QSizeF originalSize, const Limits &limits, bool useOriginalAttachment)
{
    bool isScaled = false;
    const QSizeF thumbSize = thumbSizeWithin(limits, originalSize, &isScaled);
    const double scale = isScaled ? limits.scale : 1;
    const bool isSketch = url.fileName(QUrl::FullyDecoded).startsWith(kSketchPrefix);
    const bool readsOriginal = useOriginalAttachment || (isSketch && !isScaled) ||
                               QBNoteTextAttachmentConfigurator::canLoadOriginalImageURL(url, thumbSize, originalSize);
    const auto image =
        readsOriginal ? NSImage::imageWithContentsOfFile(url.toLocalFile(), nullptr) : thumbOfPicture(url, thumbSize);
    return {image ? image->imageWithScale(scale) : NSImage(), originalSize, thumbSize / scale};
}

/// Whether a picture stands upright while a size is that of the same picture lying, or the other way round.
bool isTurned(QSize image, QSizeF size)
{
    return (image.width() - image.height()) * (size.width() - size.height()) < 0;
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
    return thumbSizeWithin({m_maxAttachmentWidth, m_maxAttachmentHeight, m_scale}, imageSize, scaled);
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
    attachment.setAttachmentImageSize(isScaled ? thumbSize / m_scale : thumbSize);

    // 2. Without a file there is nothing to load.
    const QUrl url = attachment.fileURL();
    if (url.isEmpty() || thumbSize.isEmpty() || !QFileInfo::exists(url.toLocalFile())) {
        attachment.updateTextAttachment();
        return;
    }

    // 3. A camera held upright stores its picture lying. A record from elsewhere may tell the stored size; the pixels
    // tell the true one.
    const Limits limits{m_maxAttachmentWidth, m_maxAttachmentHeight, m_scale};
    const auto load = [url, originalSize, limits, usesOriginal = m_useOriginalAttachment] {
        const auto picture = readPicture(url, originalSize, limits, usesOriginal);
        return isTurned(picture.image.pixelSize(), originalSize)
                   ? readPicture(url, originalSize.transposed(), limits, usesOriginal)
                   : picture;
    };
    const auto show = [](const ShownPicture &picture, QBImageTextAttachment &inAttachment) {
        inAttachment.setOriginalImageSize(picture.originalSize);
        inAttachment.setAttachmentImageSize(picture.shownSize);
        inAttachment.setAttachmentImage(picture.image);
        inAttachment.updateTextAttachment();
    };

    // 4. The picture arrives at once, or when it is there.
    if (m_configureAttachmentSynchronously) {
        show(load(), attachment);
        return;
    }
    QBThumbFileManager::performInBackground([load, show, weak = attachment.weak_from_this()] {
        if (weak.expired()) {
            return;
        }
        quib::DispatchQueue::main()->async([picture = load(), show, weak] {
            if (const auto self = weak.lock()) {
                show(picture, *self);
            }
        });
    });
}

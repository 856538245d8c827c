#include "QBNoteImage.h"

#include <Files/UniformType.h>
#include <Graphics/ImageSizeProbe.h>
#include <Store/NSManagedObjectContext.h>

#include <QFileInfo>

using namespace Qt::StringLiterals;
using quib::Ref;

Ref<QBNoteImage> QBNoteImage::insertInManagedObjectContext(NSManagedObjectContext &moc)
{
    auto image = _QBNoteImage::insertInManagedObjectContext(moc);
    image->updateUniqueIdentifier();
    return image;
}

bool QBNoteImage::canImportFileURL(const QUrl &fileURL)
{
    const QString type =
        UTTypeCreatePreferredIdentifierForTag(kUTTagClassFilenameExtension, QFileInfo(fileURL.toLocalFile()).suffix());
    const auto conforms = [&type](QLatin1StringView kind) { return UTTypeConformsTo(type, kind); };
    return fileURL.isLocalFile() && (conforms(kUTTypePNG) || conforms(kUTTypeJPEG) || conforms(kUTTypeJPEG2000) ||
                                     conforms(kUTTypeTIFF) || conforms(kUTTypeGIF) || conforms(kUTTypeHEIC));
}

Ref<QBNoteImage> QBNoteImage::noteFileForFileURL(const QUrl &fileURL, NSManagedObjectContext &inManagedObjectContext,
                                                 NSError *error)
{
    auto image = insertInManagedObjectContext(inManagedObjectContext);
    return image->importFile(fileURL, error) ? image : Ref<QBNoteImage>();
}

void QBNoteImage::updateFileMetadata()
{
    _QBNoteImage::updateFileMetadata();
    const auto url = fileURL();
    if (const auto size = url ? quib::pixelSizeOfImageFile(url->toLocalFile()) : std::nullopt) {
        setWidth(size->width);
        setHeight(size->height);
    }
}

QString QBNoteImage::textRepresentation() const
{
    return u"[image:"_s + uniqueIdentifier() + u'/' + filename() + u']';
}

QString QBNoteImage::localFolderName() const
{
    return _QBNoteImage::localFolderName() + u"/Note Images"_s;
}

QHash<QString, quib::Value> QBNoteImage::additionalFileData() const
{
    return {{u"width"_s, quib::Value(width())}, {u"height"_s, quib::Value(height())}};
}

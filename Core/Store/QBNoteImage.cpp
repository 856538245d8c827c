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
    if (!image->importFile(fileURL, error)) {
        return {};
    }
    const auto size = quib::pixelSizeOfImageFile(image->fileURL()->toLocalFile());
    image->setWidth(size ? size->width : 0);
    image->setHeight(size ? size->height : 0);
    return image;
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

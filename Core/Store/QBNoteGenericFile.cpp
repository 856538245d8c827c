#include "QBNoteGenericFile.h"

#include <Store/NSManagedObjectContext.h>

using namespace Qt::StringLiterals;
using quib::Ref;

Ref<QBNoteGenericFile> QBNoteGenericFile::insertInManagedObjectContext(NSManagedObjectContext &moc)
{
    auto file = _QBNoteGenericFile::insertInManagedObjectContext(moc);
    file->updateUniqueIdentifier();
    return file;
}

bool QBNoteGenericFile::canImportFileURL(const QUrl &fileURL)
{
    return fileURL.isLocalFile();
}

Ref<QBNoteGenericFile> QBNoteGenericFile::noteFileForFileURL(const QUrl &fileURL,
                                                             NSManagedObjectContext &inManagedObjectContext,
                                                             NSError *error)
{
    auto file = insertInManagedObjectContext(inManagedObjectContext);
    return file->importFile(fileURL, error) ? file : Ref<QBNoteGenericFile>();
}

QString QBNoteGenericFile::textRepresentation() const
{
    return u"[file:"_s + uniqueIdentifier() + u'/' + filename() + u']';
}

QString QBNoteGenericFile::localFolderName() const
{
    return _QBNoteGenericFile::localFolderName() + u"/Note Files"_s;
}

QHash<QString, quib::Value> QBNoteGenericFile::additionalFileData() const
{
    const auto date = modificationDate();
    return {{u"filename"_s, quib::Value(filename())},
            {u"modificationDate"_s, date ? quib::Value(*date) : quib::Value()}};
}

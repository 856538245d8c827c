#include "QBNoteVideo.h"

using namespace Qt::StringLiterals;

quib::Ref<QBNoteVideo> QBNoteVideo::insertInManagedObjectContext(NSManagedObjectContext &moc)
{
    auto file = _QBNoteVideo::insertInManagedObjectContext(moc);
    file->updateUniqueIdentifier();
    return file;
}

QString QBNoteVideo::localFolderName() const
{
    return _QBNoteVideo::localFolderName() + u"/Note Videos"_s;
}

#include "FileMarker.h"

#include <Markup/Stylers/QBNoteGenericFileStyler.h>
#include <Markup/Stylers/QBNoteImageStyler.h>
#include <Store/QBNoteFile.h>

using namespace Qt::StringLiterals;

namespace quib {

QString markerForFile(const QBNoteFile &file)
{
    const QString extension = file.normalizedFileExtension();
    const bool isPicture =
        extension == "png"_L1 || extension == "jpg"_L1 || extension == "jpeg"_L1 || extension == "gif"_L1;
    const QStringList components =
        isPicture ? QBNoteImageStyler::stylerMarkerComponents() : QBNoteGenericFileStyler::stylerMarkerComponents();
    return components.at(0) % file.uniqueIdentifier() % u'/' % file.filename() % components.at(1);
}

} // namespace quib

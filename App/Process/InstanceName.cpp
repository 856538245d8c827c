#include "InstanceName.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace quib {

InstanceName InstanceName::forProfile(const QString &root)
{
    InstanceName name{.busName = kApplicationName, .objectPath = u"/net/quibworks/Quib"_s};
    if (root.isEmpty()) {
        return name;
    }
    // A folder that is not there yet has no links to resolve.
    QString path = QFileInfo(root).canonicalFilePath();
    if (path.isEmpty()) {
        path = QDir::cleanPath(QFileInfo(root).absoluteFilePath());
    }
    const QString suffix =
        u"Profile_"_s +
        QString::fromLatin1(QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex().left(16));
    name.busName += u'.' + suffix;
    name.objectPath += u'/' + suffix;
    return name;
}

} // namespace quib

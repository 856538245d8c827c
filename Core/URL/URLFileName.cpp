#include "URLFileName.h"

#include <Files/FileMoving.h>
#include <Store/QBSafeFileWriter.h>
#include <Text/NSStringHelpers.h>

#include <QMimeDatabase>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// How much of a file its type is told from. Units: bytes.
constexpr qsizetype kTypeReach = 16 * 1024;

/// The longest extension that is kept as one. Units: UTF-16 code units.
constexpr qsizetype kLongestExtension = 16;

QString lastPathComponent(const QString &url)
{
    // 1. Without query and fragment.
    QStringView path = url;
    for (const QChar end : {u'?', u'#'}) {
        const qsizetype found = path.indexOf(end);
        path = found < 0 ? path : path.first(found);
    }
    // 2. Without scheme and host.
    const qsizetype host = path.indexOf("://"_L1);
    if (host >= 0) {
        const qsizetype slash = path.indexOf(u'/', host + 3);
        path = slash < 0 ? QStringView() : path.sliced(slash);
    }
    while (path.endsWith(u'/')) {
        path.chop(1);
    }
    return QUrl::fromPercentEncoding(path.sliced(path.lastIndexOf(u'/') + 1).toUtf8());
}

/// Without what does not show: controls, marks of direction, lone surrogates, line ends of all kinds.
QString shown(const QString &name)
{
    QString kept;
    for (const char32_t character : name.toUcs4()) {
        const QChar::Category category = QChar::category(character);
        const bool isHidden = (category >= QChar::Other_Control && category <= QChar::Other_NotAssigned) ||
                              category == QChar::Separator_Line || category == QChar::Separator_Paragraph ||
                              character == 0xFFFC || character == 0xFFFD;
        if (!isHidden) {
            kept.append(QChar::fromUcs4(character));
        }
    }
    return kept;
}

qsizetype extensionStart(const QString &name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot >= 0 && dot + 1 < name.size() && name.size() - dot <= kLongestExtension ? dot : name.size();
}

/// The extension, with its dot, of the picture that the bytes show; empty where they show none.
QString pictureExtension(const QByteArray &data)
{
    const QMimeType type = QMimeDatabase().mimeTypeForData(data.first(std::min(data.size(), kTypeReach)));
    const QString suffix = type.preferredSuffix();
    return type.name().startsWith("image/"_L1) && !suffix.isEmpty() ? QString(u'.' % suffix) : QString();
}

} // namespace

QString fileNameForURL(const QString &url, const QByteArray &data)
{
    QString name = QBSafeFileWriter::sanitizeFilename(shown(lastPathComponent(url)));
    while (name.endsWith(u'.') || (!name.isEmpty() && name.back().isSpace())) {
        name.chop(1);
    }
    name = trimmedWhitespace(name);
    qsizetype start = extensionStart(name);
    QString extension = name.sliced(start);
    QString base = name.first(start);
    while (base.startsWith(u'.') || base.startsWith(u' ')) {
        base.remove(0, 1);
    }
    if (base.isEmpty()) {
        base = u"file"_s;
    }
    const QString lower = extension.toLower();
    if (lower != ".jpg"_L1 && lower != ".jpeg"_L1 && lower != ".png"_L1) {
        if (const QString picture = pictureExtension(data); !picture.isEmpty()) {
            extension = picture;
        }
    }
    return cutToBytes(base, kLongestFileName - extension.toUtf8().size()) % extension;
}

} // namespace quib

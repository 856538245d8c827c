#include "UniformType.h"

#include <QMimeDatabase>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView kDynamicPrefix{"dyn."};

struct KnownType
{
    const char *identifier;
    const char *kindOf;     ///< the types it is a kind of, by blanks
    const char *extensions; ///< lower case, by blanks; one extension stands at one type only
};

constexpr KnownType kKnownTypes[] = {
    {"public.data", "", ""},
    {"public.composite-content", "", ""},
    {"public.image", "public.data", ""},
    {"public.png", "public.image", "png"},
    {"public.jpeg", "public.image", "jpg jpeg jpe jfif"},
    {"public.jpeg-2000", "public.image", "jp2 j2k jpf jpx"},
    {"public.tiff", "public.image", "tif tiff"},
    {"com.compuserve.gif", "public.image", "gif"},
    {"com.microsoft.bmp", "public.image", "bmp"},
    {"public.heif", "public.image", "heif hif"},
    {"public.heic", "public.heif", "heic"},
    {"org.webmproject.webp", "public.image", "webp"},
    {"public.svg-image", "public.image public.xml", "svg svgz"},
    {"public.text", "public.data", ""},
    {"public.plain-text", "public.text", "txt text"},
    {"net.daringfireball.markdown", "public.plain-text", "md markdown mdown mdwn mkd mkdn mdtxt mdtext"},
    {"com.taskpaper.text", "public.plain-text", "taskpaper"},
    {"public.source-code", "public.plain-text", ""},
    {"public.html", "public.text", "html htm shtml"},
    {"public.xhtml", "public.xml", "xhtml xht"},
    {"public.xml", "public.text", "xml"},
    {"public.json", "public.text", "json"},
    {"public.comma-separated-values-text", "public.plain-text", "csv"},
    {"com.apple.property-list", "public.data", "plist"},
    {"com.apple.web-internet-location", "public.data", "webloc"},
    {"public.rtf", "public.text", "rtf"},
    {"com.apple.rtfd", "public.composite-content", "rtfd"},
    {"com.adobe.pdf", "public.composite-content public.data", "pdf"},
    {"org.openxmlformats.wordprocessingml.document", "public.composite-content public.data", "docx"},
    {"org.idpf.epub-container", "public.composite-content public.data", "epub"},
    {"org.textbundle.package", "public.composite-content", "textbundle"},
    {"org.textbundle.compressed", "public.archive", "textpack"},
    {"net.quibworks.quib.note", "public.composite-content", "quibnote"},
    {"net.quibworks.quib.backup", "public.archive", "quibbk"},
    {"com.evernote.enex", "public.xml", "enex"},
    {"public.archive", "public.data", ""},
    {"public.zip-archive", "public.archive", "zip"},
    {"public.audio", "public.data", ""},
    {"public.movie", "public.data", ""},
    {"public.mpeg-4", "public.movie", "mp4 m4v"},
    {"com.apple.quicktime-movie", "public.movie", "mov qt"},
};

bool holdsWord(const char *words, QStringView word)
{
    const QLatin1StringView list(words);
    qsizetype start = 0;
    while (start < list.size()) {
        qsizetype limit = list.indexOf(u' ', start);
        limit = limit < 0 ? list.size() : limit;
        if (list.sliced(start, limit - start) == word) {
            return true;
        }
        start = limit + 1;
    }
    return false;
}

const KnownType *knownType(QStringView identifier)
{
    for (const KnownType &type : kKnownTypes) {
        if (QLatin1StringView(type.identifier).compare(identifier, Qt::CaseInsensitive) == 0) {
            return &type;
        }
    }
    return nullptr;
}

/// The known type that a file with an extension unknown here is a kind of.
QString kindOfDynamicType(QStringView extension)
{
    const QMimeDatabase database;
    const QMimeType mime = database.mimeTypeForFile(QString(u"name." % extension), QMimeDatabase::MatchExtension);
    const QString name = mime.name();
    if (name.startsWith(u"image/")) {
        return u"public.image"_s;
    }
    if (name.startsWith(u"audio/")) {
        return u"public.audio"_s;
    }
    if (name.startsWith(u"video/")) {
        return u"public.movie"_s;
    }
    if (mime.isValid() && mime.inherits(u"text/plain"_s)) {
        return u"public.plain-text"_s;
    }
    return u"public.data"_s;
}

} // namespace

QString UTTypeCreatePreferredIdentifierForTag(const QString &tagClass, const QString &tag)
{
    if (tagClass != kUTTagClassFilenameExtension || tag.isEmpty()) {
        return {};
    }
    const QString extension = tag.toLower();
    for (const KnownType &type : kKnownTypes) {
        if (holdsWord(type.extensions, extension)) {
            return QString::fromLatin1(type.identifier);
        }
    }
    return kDynamicPrefix % extension;
}

bool UTTypeConformsTo(const QString &type, const QString &conformsTo)
{
    if (type.compare(conformsTo, Qt::CaseInsensitive) == 0) {
        return !type.isEmpty();
    }
    if (type.startsWith(kDynamicPrefix, Qt::CaseInsensitive)) {
        return UTTypeConformsTo(kindOfDynamicType(QStringView(type).sliced(kDynamicPrefix.size())), conformsTo);
    }
    const KnownType *known = knownType(type);
    if (known == nullptr) {
        return false;
    }
    const QStringList parents = QString::fromLatin1(known->kindOf).split(u' ', Qt::SkipEmptyParts);
    return std::any_of(parents.begin(), parents.end(),
                       [&conformsTo](const QString &parent) { return UTTypeConformsTo(parent, conformsTo); });
}

#include "FileMarkers.h"

#include "QBNoteFile.h"

#include <Files/FileMoving.h>
#include <Markup/Syntax/StylerSyntax.h>

using namespace Qt::StringLiterals;

namespace quib {

QList<FileMarker> fileMarkersInText(const QString &text)
{
    QList<FileMarker> markers;
    const QStringView view(text);
    using syntax::Construct;
    for (const Construct construct : {Construct::Image, Construct::GenericFile}) {
        const NSRegularExpression &expression = syntax::stylerRegularExpression(construct, /*syntax=*/0);
        expression.enumerateMatchesInString(
            view, 0, NSRange{0, text.size()}, [&](const NSTextCheckingResult &result, bool *) {
                const NSRange range = result.range();
                const QStringView marker = view.sliced(range.location, range.length);
                const QString identifier = QBNoteFile::uniqueIdentifierFromTextRepresentation(marker);
                if (!identifier.isEmpty()) {
                    markers.append({identifier, range.location});
                }
            });
    }
    return markers;
}

QString fileNameForMarker(const QString &name)
{
    QString kept = name;
    kept.removeIf([](QChar unit) {
        const QChar::Category category = unit.category();
        return unit == u'[' || unit == u']' || unit == u'`' || unit == QChar::ObjectReplacementCharacter ||
               category == QChar::Other_Control || category == QChar::Separator_Line ||
               category == QChar::Separator_Paragraph;
    });
    return isSafeFileName(kept) ? kept : u"file"_s;
}

} // namespace quib

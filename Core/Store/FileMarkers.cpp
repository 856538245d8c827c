#include "FileMarkers.h"

#include "QBNoteFile.h"

#include <Markup/Syntax/StylerSyntax.h>

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

} // namespace quib

#include "QBNoteSection.h"

#include "StylerSyntax.h"

#include <Text/NSStringHelpers.h>

QString QBNoteSection::titleForXURL() const
{
    return quib::trimmedWhitespaceAndNewlines(quib::lowercaseString(title));
}

QList<QBNoteSection> QBNoteSection::noteSectionsInText(const QString &text)
{
    QList<QBNoteSection> sections;
    const QStringView view(text);
    quib::syntax::sectionRegularExpression().enumerateMatchesInString(
        view, 0, {0, view.size()}, [&](const NSTextCheckingResult &result, bool *) {
            const NSRange paragraph = quib::paragraphRangeForRange(view, result.range());
            const QStringView heading = view.sliced(paragraph.location, paragraph.length);
            const qsizetype blank = heading.indexOf(u' ');
            const QString title = blank < 0 ? QString() : quib::trimmedWhitespaceAndNewlines(heading.sliced(blank + 1));
            if (!title.isEmpty()) {
                sections.append({title, paragraph.location, paragraph.length, paragraph.limit(), 0});
            }
        });
    for (qsizetype i = 0; i < sections.size(); ++i) {
        const qint64 limit = i + 1 < sections.size() ? sections[i + 1].titleLocation : view.size();
        sections[i].sectionLength = limit - sections[i].sectionLocation;
    }
    return sections;
}

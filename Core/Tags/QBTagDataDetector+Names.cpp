#include "QBTagDataDetector.h"

#include "TagScanner.h"

#include <Markup/Syntax/QBNoteTextStylerRegexHelper.h>
#include <Text/Folding.h>
#include <Text/NSStringHelpers.h>

bool QBTagDataDetector::isSingleTag(QStringView string)
{
    return string.startsWith(u'#') && !string.contains(u' ') &&
           quib::tags::lengthOfSingleTagAt(string, 0) == string.size();
}

QString QBTagDataDetector::hashTagStringForTagName(const QString &tagName)
{
    QString hashtag = u'#' + tagName;
    if (!isSingleTag(hashtag)) {
        hashtag.append(u'#');
    }
    return hashtag;
}

QStringList QBTagDataDetector::hashtagsFromTagsStrings(const QStringList &tagsStrings)
{
    QStringList hashtags;
    hashtags.reserve(tagsStrings.size());
    for (const QString &string : tagsStrings) {
        const QString name = quib::trimmedWhitespaceAndNewlines(string);
        if (!name.isEmpty()) {
            hashtags.append(hashTagStringForTagName(name));
        }
    }
    return hashtags;
}

std::shared_ptr<const NSRegularExpression>
QBTagDataDetector::tagRegularExpressionForHashtagString(const QString &hashtagString)
{
    QString pattern = NSRegularExpression::escapedPatternForString(hashtagString);
    if (isSingleTag(hashtagString)) {
        // Unlike the boundary behind a tag in general, this one also lets a hash follow.
        pattern = QString(QBNoteTextStylerRegexHelper::inlineBeginPattern() % u'(' % pattern %
                          QStringLiteral("\\/?#?)(?=$|\\s|[:;,\u060C\u3001\u2026!.?\\)\\]\\}\\\"#'])"));
    }
    return std::make_shared<const NSRegularExpression>(pattern, NSRegularExpression::CaseInsensitive |
                                                                    NSRegularExpression::AnchorsMatchLines);
}

QStringList QBTagDataDetector::diacriticTagComponentsFromString(QStringView string)
{
    QString name = string.toString();
    name.remove(u'#');
    while (name.endsWith(u'/')) {
        name.chop(1);
    }
    QStringList components = quib::lowercaseString(name).split(u'/');
    for (QString &component : components) {
        component = quib::foldedString(component, quib::FoldOption::Diacritic);
    }
    return components;
}

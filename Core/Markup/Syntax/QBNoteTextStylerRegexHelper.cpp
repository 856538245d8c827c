#include "QBNoteTextStylerRegexHelper.h"

using namespace Qt::StringLiterals;

QString QBNoteTextStylerRegexHelper::inlineBeginPattern()
{
    return QString(u"(?<=^|\\s|[" % allowedPunctuationCharactersBeforeInlineStyler().join(QString()) % u"])");
}

QString QBNoteTextStylerRegexHelper::inlineEndPattern()
{
    return QString(u"(?=$|\\s|[" % allowedPunctuationCharactersAfterInlineStyler().join(QString()) % u"])");
}

QString QBNoteTextStylerRegexHelper::inlineContentWithoutBoundarySpaces()
{
    return u"(|\\S|\\S.*?\\S)"_s;
}

QString QBNoteTextStylerRegexHelper::inlineNonEmptyContentWithoutBoundarySpaces()
{
    return u"(\\S|\\S.*?\\S)"_s;
}

QString
QBNoteTextStylerRegexHelper::inlineNonEmptyContentWithoutBoundarySpacesExludingCharacters(const QString &characters)
{
    return QString(u"([^" % characters % u"\\s]{1}|[^" % characters % u"\\s]{1}[^" % characters % u"]*?[^" %
                   characters % u"\\s]{1})");
}

QString QBNoteTextStylerRegexHelper::hexColorPattern()
{
    return u"#[0-9a-fA-F]{6}"_s;
}

QStringList QBNoteTextStylerRegexHelper::allowedPunctuationCharactersBeforeInlineStyler()
{
    return {u"\\["_s, u"\\("_s, u"\""_s, u"\\{"_s, u"'"_s};
}

QStringList QBNoteTextStylerRegexHelper::allowedPunctuationCharactersAfterInlineStyler()
{
    return {u";"_s, u":"_s,   u"\u060C"_s, u","_s,   u"\u2026"_s, u"\u3001"_s, u"."_s,
            u"!"_s, u"\\)"_s, u"?"_s,      u"\\}"_s, u"\\]"_s,    u"'"_s,      u"\""_s};
}

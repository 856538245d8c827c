#include "QBPunctuationCharactersSets.h"

using namespace Qt::StringLiterals;

QStringList QBPunctuationCharactersSets::allowedPunctuationCharactersAfterStyler()
{
    return {u";"_s, u":"_s, u"\u060C"_s, u","_s, u"\u2026"_s, u"\u3001"_s, u"."_s, u"!"_s, u"?"_s};
}

QString QBPunctuationCharactersSets::allowedPunctuationCharactersAfterStylerString()
{
    return allowedPunctuationCharactersAfterStyler().join(QString());
}

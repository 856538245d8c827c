#include "XURLParameters.h"

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Whether the value of a key is a word; the answer for a missing key is given.
bool isWord(const IACParameters &parameters, const QString &key, QStringView word, bool whereMissing)
{
    const auto found = parameters.constFind(key);
    return found == parameters.cend() ? whereMissing : found->compare(word, Qt::CaseInsensitive) == 0;
}

} // namespace

bool xurlShowWindow(const IACParameters &parameters)
{
    return isWord(parameters, u"show_window"_s, u"yes", true);
}

bool xurlOpenNote(const IACParameters &parameters)
{
    return isWord(parameters, u"open_note"_s, u"yes", true);
}

bool xurlWait(const IACParameters &parameters)
{
    return isWord(parameters, u"wait"_s, u"yes", true);
}

bool xurlExcludeTrashed(const IACParameters &parameters)
{
    return isWord(parameters, u"exclude_trashed"_s, u"yes", true);
}

bool xurlNewWindow(const IACParameters &parameters)
{
    return isWord(parameters, u"new_window"_s, u"yes", false);
}

bool xurlFloatOnTop(const IACParameters &parameters)
{
    return isWord(parameters, u"float"_s, u"yes", false);
}

bool xurlEditNote(const IACParameters &parameters)
{
    return isWord(parameters, u"edit"_s, u"yes", false);
}

bool xurlPinNote(const IACParameters &parameters)
{
    return isWord(parameters, u"pin"_s, u"yes", false);
}

bool xurlAddURL(const IACParameters &parameters)
{
    return !isWord(parameters, u"appendurl"_s, u"no", false);
}

bool xurlDownloadImages(const IACParameters &parameters)
{
    return isWord(parameters, u"noimages"_s, u"no", true);
}

QString xurlHeader(const IACParameters &parameters)
{
    return parameters.value(u"header"_s);
}

} // namespace quib

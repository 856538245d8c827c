#include "QBNotePasteFromCoreController.h"

#include <Markup/Stylers/QBNoteCodeTextStyler.h>
#include <Text/NSStringHelpers.h>
#include <Text/TextAroundRange.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView kUnknownLanguage = u"Unknown";

/// The beginning of a text, no more than so many lines of it.
QString firstLines(const QString &text, qint64 count)
{
    qsizetype end = -1;
    for (qint64 line = 0; line < count; ++line) {
        end = text.indexOf(u'\n', end + 1);
        if (end < 0) {
            return text;
        }
    }
    return text.first(end);
}

} // namespace

QString QBNotePasteFromCoreController::pasteStringFromCode(const QString &code) const
{
    if (code.isEmpty()) {
        return {};
    }
    QString language = m_detectLanguageWithString(firstLines(code, kDetectedLines));
    if (language == kUnknownLanguage) {
        language.clear();
    }
    const QString fence = QBNoteCodeTextStyler::stylerMarker();
    // The closing fence needs a line of its own.
    const QString end = code.endsWith(u'\n') ? QString() : u"\n"_s;
    return QString(fence % language % u'\n' % code % end % fence);
}

QString quib::stringForSmartCopyInRange(QStringView string, NSRange range, const QString &withString)
{
    if (std::ranges::all_of(withString, [](QChar unit) { return isWhitespaceOrNewline(unit.unicode()); })) {
        return withString;
    }
    bool isAtStart = false;
    bool isAtEnd = false;
    const bool isApartBefore = qbCharBeforeRange(string, range, isWhitespaceOrNewline, &isAtStart) || isAtStart;
    const bool isApartBehind = qbCharAfterRange(string, range, isWhitespaceOrNewline, &isAtEnd) || isAtEnd;
    QString spaced;
    if (!isApartBefore && !isWhitespace(withString.front().unicode())) {
        spaced += u' ';
    }
    spaced += withString;
    if (!isApartBehind && !isWhitespace(withString.back().unicode())) {
        spaced += u' ';
    }
    return spaced;
}

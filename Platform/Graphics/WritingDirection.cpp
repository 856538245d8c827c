#include "WritingDirection.h"

#include <Text/NSStringHelpers.h>

#include <algorithm>

namespace quib {

namespace {

/// What is further away says nothing of a line. Units: UTF-16 units.
constexpr qsizetype kFar = 4096;

} // namespace

std::optional<bool> isRightToLeft(QStringView text)
{
    int isolated = 0; // what is isolated says nothing of the text around it
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isPair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        const char32_t character = isPair ? QChar::surrogateToUcs4(text[i], text[i + 1]) : char32_t(text[i].unicode());
        i += isPair ? 1 : 0;
        const QChar::Direction direction = QChar::direction(character);
        switch (direction) {
        case QChar::DirLRI:
        case QChar::DirRLI:
        case QChar::DirFSI:
            ++isolated;
            break;
        case QChar::DirPDI:
            isolated = std::max(0, isolated - 1);
            break;
        case QChar::DirL:
        case QChar::DirR:
        case QChar::DirAL:
            if (isolated == 0) {
                return direction != QChar::DirL;
            }
            break;
        default:
            break;
        }
    }
    return std::nullopt;
}

std::optional<bool> isRightToLeftAround(QStringView text, NSRange range)
{
    const qsizetype first = std::max<qsizetype>(0, range.location - kFar);
    for (qsizetype limit = range.location; limit > first;) {
        qsizetype start = limit - 1; // its own line end
        while (start > first && !isParagraphEnd(text[start - 1].unicode())) {
            --start;
        }
        if (const auto found = isRightToLeft(text.sliced(start, limit - start))) {
            return found;
        }
        limit = start;
    }
    const qsizetype behind = std::min(range.limit(), text.size());
    return isRightToLeft(text.sliced(behind, std::min(kFar, text.size() - behind)));
}

} // namespace quib

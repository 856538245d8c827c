#include "QBNoteTextParser.h"

#include "StylerSyntax.h"
#include "TextHumanizer.h"

#include <Text/NSStringHelpers.h>

#include <QStringList>

using namespace Qt::StringLiterals;
using quib::syntax::Construct;

namespace {

// Units: UTF-16 code units. What is one longer than a limit is cut.
constexpr qsizetype kTitleLimit = 500;
constexpr qsizetype kSubtitleWindow = 500;
constexpr qsizetype kSubtitleLimit = 200;

QString cutToComposedCharacters(const QString &text, qsizetype limit)
{
    if (text.size() <= limit) {
        return text;
    }
    const NSRange kept = quib::rangeOfComposedCharacterSequencesForRange(text, {0, limit});
    return text.mid(kept.location, kept.length);
}

QString notNull(const QString &text)
{
    return text.isNull() ? u""_s : text;
}

/// A text without the matches of an expression.
QString withoutMatches(const QString &text, const NSRegularExpression &expression, bool *isFound)
{
    const QStringView view(text);
    QString kept;
    qint64 copied = 0;
    expression.enumerateMatchesInString(view, 0, {0, view.size()}, [&](const NSTextCheckingResult &result, bool *) {
        if (copied == 0) {
            kept.reserve(view.size());
        }
        kept.append(view.sliced(copied, result.range().location - copied));
        copied = result.range().limit();
    });
    *isFound = copied > 0;
    if (copied == 0) {
        return text;
    }
    kept.append(view.sliced(copied));
    return kept;
}

} // namespace

QString QBNoteTextParser::parseTitleFromText(const QString &text)
{
    const qsizetype lineEnd = text.indexOf(u'\n');
    QString line = lineEnd < 0 ? text : text.left(lineEnd);
    const NSRange heading = quib::syntax::stylerRegularExpression(Construct::Header, 0)
                                .rangeOfFirstMatchInString(line, 0, {0, line.size()});
    if (heading.location == 0) {
        NSRange range{0, line.size()};
        quib::syntax::humanizeTextInInString({Construct::Header, 0}, line, range);
    } else {
        line = quib::syntax::humanizedString(line);
    }
    return notNull(quib::trimmedWhitespace(cutToComposedCharacters(line, kTitleLimit)));
}

QString QBNoteTextParser::parseSubtitleFromText(const QString &text)
{
    // A window that humanises to less than the limit is continued by the subtitle of the text from that window's length
    // on. The parts are gathered from the front and put together from the back; every part moves the start on by a
    // window, and what was found out about line ends and white space is kept, so that all of it is linear.
    const QStringView view(text);
    qsizetype textLimit = view.size();
    while (textLimit > 0 && quib::isWhitespaceOrNewline(view[textLimit - 1].unicode())) {
        --textLimit;
    }
    QStringList parts;
    bool isContinued = true;
    qsizetype lineEnd = -1;
    qsizetype bodyStart = -1;
    for (qsizetype start = 0; isContinued && start <= view.size();) {
        if (lineEnd < start) {
            lineEnd = view.indexOf(u'\n', start);
        }
        if (lineEnd < 0) {
            parts.append(u""_s);
            break;
        }
        if (bodyStart < lineEnd) {
            bodyStart = lineEnd;
            while (bodyStart < textLimit && quib::isWhitespaceOrNewline(view[bodyStart].unicode())) {
                ++bodyStart;
            }
        }
        QStringView body = bodyStart < textLimit ? view.sliced(bodyStart, textLimit - bodyStart) : QStringView();
        qsizetype window = 0;
        if (body.size() > kSubtitleWindow) {
            const NSRange paragraph = quib::paragraphRangeForRange(body, {0, kSubtitleWindow});
            window = paragraph.length;
            const NSRange composed = quib::rangeOfComposedCharacterSequencesForRange(body, paragraph);
            body = body.sliced(composed.location, composed.length);
        }
        const QString part = quib::qbCleanConcatenatedString(quib::syntax::humanizedString(body.toString()));
        parts.append(part);
        isContinued = window > 0 && part.size() < kSubtitleLimit;
        // The window was measured in the body and is counted from the start of the text, first line included: the
        // continuation begins at the first line end behind that place.
        start += window;
    }
    QString subtitle;
    for (qsizetype i = parts.size() - 1; i >= 0; --i) {
        const bool isLast = i == parts.size() - 1;
        const QString joined = isLast ? parts[i] : QString(parts[i] % u' ' % subtitle);
        subtitle = quib::trimmedWhitespaceAndNewlines(cutToComposedCharacters(joined, kSubtitleLimit));
    }
    return notNull(subtitle);
}

QString QBNoteTextParser::removeCodeFromText(const QString &text, bool *hasCodeBlocks, int syntax)
{
    bool isFound = false;
    const QString withoutBlocks =
        withoutMatches(text, quib::syntax::stylerRegularExpression(Construct::CodeBlock, syntax), &isFound);
    if (isFound && hasCodeBlocks != nullptr) {
        *hasCodeBlocks = true;
    }
    return withoutMatches(withoutBlocks, quib::syntax::stylerRegularExpression(Construct::CodeInline, syntax),
                          &isFound);
}

qint64 QBNoteTextParser::parseTodoFromText(const QString &text, int syntax)
{
    return quib::syntax::uncheckedRegularExpression(syntax).numberOfMatchesInString(text, 0, {0, text.size()});
}

qint64 QBNoteTextParser::parseCompletedTodoFromText(const QString &text, int syntax)
{
    return quib::syntax::checkedRegularExpression(syntax).numberOfMatchesInString(text, 0, {0, text.size()});
}

bool QBNoteTextParser::parseContainSourceCodeFromText(const QString &text, int syntax)
{
    return quib::syntax::stylerRegularExpression(Construct::CodeBlock, syntax)
        .firstMatchInString(text, 0, {0, text.size()})
        .has_value();
}

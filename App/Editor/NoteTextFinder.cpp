#include "NoteTextFinder.h"

#include "UnfoldedText.h"

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Units: UTF-16 units.
constexpr qsizetype kLongestReplaced = 64 * 1024 * 1024;

} // namespace

NoteTextFinder::NoteTextFinder(const QString &text, const FindOptions &options)
    : m_expandsTemplates(options.isRegularExpression)
{
    if (text.isEmpty()) {
        return;
    }
    QString pattern = options.isRegularExpression ? text : NSRegularExpression::escapedPatternForString(text);
    if (options.findsWholeWords) {
        pattern = u"(?<![\\p{L}\\p{N}_])(?:"_s % pattern % u")(?![\\p{L}\\p{N}_])"_s;
    }
    NSRegularExpression::Options flags = NSRegularExpression::AnchorsMatchLines;
    if (!options.isCaseSensitive) {
        flags |= NSRegularExpression::CaseInsensitive;
    }
    NSError error;
    m_expression = NSRegularExpression::regularExpressionWithPattern(pattern, flags, &error);
    if (!m_expression) {
        m_problem = error.localizedDescription();
    }
}

QList<NSRange> NoteTextFinder::matches(QStringView text) const
{
    QList<NSRange> found;
    if (m_expression) {
        m_expression->enumerateMatchesInString(text, 0, {0, text.size()},
                                               [&found](const NSTextCheckingResult &match, bool *stop) {
                                                   if (match.range().length > 0) {
                                                       found.append(match.range());
                                                   }
                                                   *stop = found.size() >= kMostMatches;
                                               });
    }
    return found;
}

QString NoteTextFinder::expanded(QStringView text, const NSTextCheckingResult &match, const QString &withTemplate) const
{
    if (!m_expandsTemplates) {
        return withTemplate.isNull() ? u""_s : withTemplate;
    }
    QString out = u""_s;
    for (qsizetype i = 0; i < withTemplate.size(); ++i) {
        const QChar character = withTemplate[i];
        const bool hasNext = i + 1 < withTemplate.size();
        if (character == u'\\' && hasNext) {
            const QChar escaped = withTemplate[++i];
            out.append(escaped == u'n' ? QChar(u'\n') : escaped == u't' ? QChar(u'\t') : escaped);
        } else if (character == u'$' && hasNext && withTemplate[i + 1] >= u'0' && withTemplate[i + 1] <= u'9') {
            const NSRange group = match.rangeAtIndex(withTemplate[++i].unicode() - u'0');
            if (group.isFound()) {
                out.append(text.sliced(group.location, group.length));
            }
        } else {
            out.append(character);
        }
    }
    return out;
}

QString NoteTextFinder::replacement(QStringView text, NSRange match, const QString &withTemplate) const
{
    QString found;
    if (m_expression) {
        m_expression->enumerateMatchesInString(text, 0, {0, text.size()},
                                               [&](const NSTextCheckingResult &candidate, bool *stop) {
                                                   if (candidate.range() == match) {
                                                       found = expanded(text, candidate, withTemplate);
                                                   }
                                                   *stop = candidate.range().location >= match.location;
                                               });
    }
    return found;
}

std::optional<NoteTextFinder::ReplacedText> NoteTextFinder::replacingAll(const UnfoldedText &text,
                                                                         const QString &withTemplate) const
{
    if (!m_expression) {
        return std::nullopt;
    }
    const QStringView string = text.string();
    ReplacedText replaced;
    NSRange whole;
    qint64 done = 0;
    m_expression->enumerateMatchesInString(string, 0, {0, string.size()},
                                           [&](const NSTextCheckingResult &match, bool *stop) {
                                               const NSRange range = match.range();
                                               if (range.length == 0) {
                                                   return;
                                               }
                                               if (replaced.count == 0) {
                                                   whole = text.rangeWithWholeFolds(range);
                                                   done = whole.location;
                                               }
                                               replaced.text += text.expandedString({done, range.location - done});
                                               replaced.text += expanded(string, match, withTemplate);
                                               done = range.limit();
                                               ++replaced.count;
                                               *stop = replaced.text.size() > kLongestReplaced;
                                           });
    if (replaced.count == 0) {
        return std::nullopt;
    }
    if (replaced.text.size() > kLongestReplaced) {
        return ReplacedText{};
    }
    whole.length = text.rangeWithWholeFolds({done - 1, 1}).limit() - whole.location;
    replaced.text += text.expandedString({done, whole.limit() - done});
    replaced.range = text.shownRange(whole);
    return replaced;
}

} // namespace quib

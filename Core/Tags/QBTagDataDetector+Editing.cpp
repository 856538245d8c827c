#include "QBTagDataDetector.h"

#include <Text/NSStringHelpers.h>

#include <algorithm>
#include <iterator>

namespace {

/// A text that is edited from its end to its start: the head is untouched, the tail, kept backwards, is done. Every
/// edit happens where they meet and costs what it changes, so any number of edits is linear.
class BackwardEditor
{
public:
    explicit BackwardEditor(const QString &text)
        : m_head(text)
    {
        m_reversedTail.reserve(text.size());
    }

    [[nodiscard]] qint64 headSize() const { return m_head.size(); }
    [[nodiscard]] bool isTailEmpty() const { return m_reversedTail.size() == m_cutAtEnd; }
    [[nodiscard]] bool headEndsWith(char16_t unit) const { return m_head.endsWith(unit); }
    /// True when the unit stands at that distance behind the place of the edit.
    [[nodiscard]] bool tailHas(qint64 distance, char16_t unit) const
    {
        const qint64 index = m_reversedTail.size() - 1 - distance;
        return index >= m_cutAtEnd && m_reversedTail[index] == unit;
    }

    /// Moves the end of the head into the tail, so that the next edit happens at position.
    void moveTo(qint64 position)
    {
        prepend(m_head.sliced(position));
        m_head.truncate(position);
    }
    void dropFromHead(qint64 count) { m_head.chop(count); }
    void dropFromTail(qint64 count) { m_reversedTail.chop(std::min(count, m_reversedTail.size() - m_cutAtEnd)); }
    void prepend(QStringView text) { std::reverse_copy(text.begin(), text.end(), std::back_inserter(m_reversedTail)); }
    /// Deletes the text's last unit if it is this one.
    void dropAtEnd(char16_t unit)
    {
        if (isTailEmpty()) {
            m_head.chop(headEndsWith(unit) ? 1 : 0);
        } else if (m_reversedTail[m_cutAtEnd] == unit) {
            ++m_cutAtEnd;
        }
    }
    /// Deletes the line around the place of the edit when it is blank. A line end other than a line feed is not blank.
    void dropBlankLine()
    {
        qint64 start = m_head.size();
        while (start > 0 && quib::isWhitespace(m_head[start - 1].unicode())) {
            --start;
        }
        if (start > 0 && !isLineEnd(m_head[start - 1].unicode())) {
            return;
        }
        if (start == m_head.size() && headEndsWith(u'\r') && tailHas(0, u'\n')) {
            return;
        }
        qint64 limit = m_reversedTail.size();
        while (limit > m_cutAtEnd && quib::isWhitespace(m_reversedTail[limit - 1].unicode())) {
            --limit;
        }
        if (limit > m_cutAtEnd && m_reversedTail[limit - 1] != u'\n') {
            return;
        }
        m_head.truncate(start);
        m_reversedTail.truncate(limit > m_cutAtEnd ? limit - 1 : limit);
    }

    [[nodiscard]] QString text() const
    {
        QString whole = m_head.toString();
        whole.reserve(m_head.size() + m_reversedTail.size());
        std::reverse_copy(m_reversedTail.cbegin() + m_cutAtEnd, m_reversedTail.cend(), std::back_inserter(whole));
        return whole;
    }

private:
    [[nodiscard]] static bool isLineEnd(char16_t unit)
    {
        return unit == u'\n' || unit == u'\r' || unit == u'\u0085' || unit == u'\u2028' || unit == u'\u2029';
    }

    QStringView m_head;
    QString m_reversedTail;
    /// Units deleted at the text's end: they stay in front of the reversed tail.
    qint64 m_cutAtEnd = 0;
};

/// What a tag is replaced by; for a deletion, the neighbouring blank goes along.
void replaceTag(BackwardEditor &editor, NSRange range, const QString &replacement)
{
    editor.moveTo(range.limit());
    editor.dropFromHead(range.length);
    if (!replacement.isEmpty()) {
        editor.prepend(replacement);
        return;
    }
    // The rule sees the neighbours as they are now: behind the tag the text is edited already.
    const bool edgeBefore = editor.headSize() == 0;
    const bool edgeAfter = editor.isTailEmpty();
    const bool spaceBefore = editor.headEndsWith(u' ');
    const bool spaceAfter = editor.tailHas(0, u' ');
    const bool lineFeedBefore = editor.headEndsWith(u'\n');
    if (spaceAfter && (spaceBefore || lineFeedBefore || edgeBefore)) {
        editor.dropFromTail(1);
    } else if ((spaceBefore && (edgeAfter || editor.tailHas(0, u'\n'))) || (lineFeedBefore && edgeAfter)) {
        editor.dropFromHead(1);
    }
}

} // namespace

QString QBTagDataDetector::stringByReplacingHashtag(const QString &hashtag, const QString &withHastag,
                                                    const QString &inString)
{
    QString replacement = withHastag;
    if (hashtag.endsWith(u'#') && !replacement.isEmpty() && !replacement.endsWith(u'#')) {
        replacement.append(u'#');
    }
    const QString closedReplacement =
        replacement.isEmpty() || replacement.endsWith(u'#') ? replacement : QString(replacement % u'#');
    const QStringList key = diacriticTagComponentsFromString(hashtag);
    const QStringView text = inString;

    std::vector<NSRange> ranges;
    sharedDetector().enumerateMatchesInString(
        text, 0, {0, text.size()}, [&](const NSTextCheckingResult &match, bool *) {
            const NSRange range = match.range();
            if (diacriticTagComponentsFromString(text.sliced(range.location, range.length)) == key) {
                ranges.push_back(range);
            }
        });
    if (ranges.empty()) {
        return inString;
    }
    BackwardEditor editor(inString);
    for (auto range = ranges.crbegin(); range != ranges.crend(); ++range) {
        replaceTag(editor, *range, text[range->limit() - 1] == u'#' ? closedReplacement : replacement);
    }
    return editor.text();
}

QString QBTagDataDetector::stringByAddingHashtags(const QStringList &hashtags, const QString &toString)
{
    if (hashtags.isEmpty()) {
        return toString;
    }
    QStringList kept = hashtags;
    kept.removeAll(QString());
    const QString line = kept.join(u' ');
    if (toString.isEmpty()) {
        return line;
    }

    const QStringView text = toString;
    qint64 last = text.size() - 1;
    while (last >= 0 && quib::isWhitespaceOrNewline(text[last].unicode())) {
        --last;
    }
    if (last > 0 && text[last].isLowSurrogate() && text[last - 1].isHighSurrogate()) {
        --last;
    }
    if (last <= 0) {
        return toString % u"\n\n" % line;
    }

    const NSRange paragraph = quib::paragraphRangeForRange(text, {last, 1});
    NSRange lastTag = kNotFoundRange;
    sharedDetector().enumerateMatchesInString(
        text, 0, paragraph, [&lastTag](const NSTextCheckingResult &match, bool *) { lastTag = match.range(); });
    // Behind the last character there is nothing but white space.
    if (lastTag.isFound() && lastTag.limit() > last) {
        return text.first(lastTag.limit()) % u' ' % line % text.sliced(lastTag.limit());
    }
    const qint64 end = paragraph.limit() - (text[paragraph.limit() - 1] == u'\n' ? 1 : 0);
    return text.first(end) % u"\n\n" % line % text.sliced(end);
}

void QBTagDataDetector::removeTagsInString(QString &string, NSRange range) const
{
    const QString copy = string;
    removeTagsInString(string, matchesInString(copy, 0, range), range);
}

void QBTagDataDetector::removeTagsInString(QString &string, const QList<NSTextCheckingResult> &withMatches,
                                           NSRange inRange) const
{
    const std::optional<NSRange> limits = quib::rangeCutToString(string, inRange);
    if (!limits) {
        return;
    }
    BackwardEditor editor(string);
    for (auto match = withMatches.crbegin(); match != withMatches.crend(); ++match) {
        const NSRange range = match->range();
        if (range.length <= 0 || range.location < limits->location || range.location > editor.headSize() ||
            range.length > qMin(editor.headSize(), limits->limit()) - range.location) {
            continue;
        }
        editor.moveTo(range.limit());
        editor.dropFromHead(range.length);
        // 1. At a line start the blank behind the tag goes too.
        const bool atLineStart = editor.headSize() == 0 || editor.headEndsWith(u'\n');
        if (atLineStart && editor.tailHas(0, u' ')) {
            editor.dropFromTail(1);
        } else if (!editor.tailHas(1, u'\0') && editor.headEndsWith(u' ')) {
            // 2. Elsewhere the blank in front of it, except where a NUL stands one behind the place after the tag.
            editor.dropFromHead(1);
        }
        // 3. A line that is left blank goes as a whole.
        editor.dropBlankLine();
        // 4. So does one line feed at the text's end, for each tag.
        editor.dropAtEnd(u'\n');
    }
    string = editor.text();
}

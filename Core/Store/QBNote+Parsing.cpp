#include "QBNote.h"

#include <Markup/Syntax/QBNoteTextParser.h>
#include <Markup/Syntax/StylerSyntax.h>
#include <Tags/QBTagDataDetector.h>

#include <algorithm>
#include <array>

namespace {

/// A path of more levels than this is listed by its first ones only: a note belongs to every ancestor of its tags, and
/// a line of slashes must not ask for more text than a note can have.
constexpr qsizetype kMaximumTagLevels = 64;

using quib::syntax::Construct;

/// What is deleted before tags are looked for, in this order. Of a header that is the marker alone.
constexpr std::array kConstructsWithoutTags{Construct::Color,       Construct::CodeBlock, Construct::CodeInline,
                                            Construct::Highlighter, Construct::TitledURL, Construct::Header,
                                            Construct::GenericFile, Construct::Image};

/// The text without all that an expression matches in it.
QString textWithoutMatches(const QString &text, const NSRegularExpression &expression)
{
    const QStringView view(text);
    QString kept;
    qsizetype copied = 0;
    expression.enumerateMatchesInString(view, 0, NSRange{0, text.size()},
                                        [&](const NSTextCheckingResult &result, bool *) {
                                            const NSRange range = result.range();
                                            kept.append(view.sliced(copied, range.location - copied));
                                            copied = range.limit();
                                        });
    return copied == 0 ? text : kept + view.sliced(copied);
}

/// Adds a tag's path and all its ancestors, the longest first.
void appendWithAncestors(QStringList &tags, QStringView hashtag)
{
    QStringList components = hashtag.toString().remove(u'#').split(u'/', Qt::SkipEmptyParts);
    components.resize(std::min(components.size(), kMaximumTagLevels));
    QString path = components.join(u'/');
    while (!components.isEmpty()) {
        tags.append(path);
        path.chop(std::min(components.constLast().size() + 1, path.size()));
        components.removeLast();
    }
}

} // namespace

QStringList QBNote::parseHashTagsFromText(const QString &text, int syntax)
{
    if (!text.contains(u'#')) {
        return {}; // deleting makes no hash
    }
    QString rest = text;
    for (const Construct construct : kConstructsWithoutTags) {
        rest = textWithoutMatches(rest, quib::syntax::stylerRegularExpression(construct, syntax));
    }
    QStringList tags;
    const QStringView view(rest);
    QBTagDataDetector::sharedDetector().enumerateMatchesInString(
        view, 0, NSRange{0, rest.size()}, [&](const NSTextCheckingResult &result, bool *) {
            const NSRange range = result.range();
            appendWithAncestors(tags, view.sliced(range.location, range.length));
        });
    return tags;
}

QString QBNote::parseTitleFromText(const QString &text)
{
    return QBNoteTextParser::parseTitleFromText(text);
}

QString QBNote::parseSubtitleFromText(const QString &text)
{
    return QBNoteTextParser::parseSubtitleFromText(text);
}

qint64 QBNote::parseTodoFromText(const QString &text, int syntax)
{
    return QBNoteTextParser::parseTodoFromText(text, syntax);
}

qint64 QBNote::parseCompletedTodoFromText(const QString &text, int syntax)
{
    return QBNoteTextParser::parseCompletedTodoFromText(text, syntax);
}

bool QBNote::parseContainSourceCodeFromText(const QString &text, int syntax)
{
    return QBNoteTextParser::parseContainSourceCodeFromText(text, syntax);
}

QString QBNote::removeCodeFromText(const QString &text, bool *hasCodeBlocks, int syntax)
{
    return QBNoteTextParser::removeCodeFromText(text, hasCodeBlocks, syntax);
}

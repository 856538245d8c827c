#pragma once

class NSAttributedString;
class QBNoteCodeHighlighting;
class QString;

/// Takes coloured code back. Called on the queue of the text, some time after the code was asked for: the text may have
/// changed since.
class QBCodeSyntaxHighlighterDelegate
{
public:
    virtual ~QBCodeSyntaxHighlighterDelegate() = default;
    virtual void codeSyntaxHighlighter(QBNoteCodeHighlighting &highlighter, const NSAttributedString &highlightedString,
                                       const QString &forCodeUUID) = 0;
};

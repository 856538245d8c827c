#pragma once

#include <QString>

/// What a note derives from its text, but for tags and files: pure functions, any thread, time linear in the text.
class QBNoteTextParser
{
public:
    /// The first line without its markup, or without its heading mark only; at most about 500 units, never null.
    [[nodiscard]] static QString parseTitleFromText(const QString &text);
    /// The beginning of what follows the first line, on one line; at most about 200 units, never null.
    [[nodiscard]] static QString parseSubtitleFromText(const QString &text);
    /// The text without code blocks and inline code. hasCodeBlocks, where given, becomes true when there was a block
    /// and is left alone otherwise.
    [[nodiscard]] static QString removeCodeFromText(const QString &text, bool *hasCodeBlocks, int syntax);
    [[nodiscard]] static qint64 parseTodoFromText(const QString &text, int syntax);
    [[nodiscard]] static qint64 parseCompletedTodoFromText(const QString &text, int syntax);
    [[nodiscard]] static bool parseContainSourceCodeFromText(const QString &text, int syntax);
};

#pragma once

#include "SyntaxScanner.h"

namespace quib::syntax {

/// A pair of backticks on one line that is no fence. Groups: 1 open, 2 content, 3 close.
class InlineCodeScanner final : public SyntaxScanner
{
public:
    explicit InlineCodeScanner(const QString &pattern)
        : SyntaxScanner(pattern, AnchorsMatchLines)
    {
    }

protected:
    void scan(QStringView region, Sink &sink) const override;
};

/// Two fences, each at a line's start. Groups: 1 opening fence, 2 language, 3 body, 4 the closing fence's line.
class CodeBlockScanner final : public SyntaxScanner
{
public:
    explicit CodeBlockScanner(const QString &pattern)
        : SyntaxScanner(pattern, AnchorsMatchLines | DotMatchesLineSeparators)
    {
    }

protected:
    void scan(QStringView region, Sink &sink) const override;
};

} // namespace quib::syntax

#pragma once

#include <Text/NSRegularExpression.h>

namespace quib::search {

/// Finds the quoted phrases of a search line: between white space or the line's ends, a hyphen perhaps, a quote, at
/// least one character, a quote (groups 1 to 3: quote, phrase, quote). The pattern is the definition; a scanner gives
/// its matches in one pass, where unclosed quotes would make the pattern read the line again for each. Immutable.
class QuotedPhraseExpression : public NSRegularExpression
{
public:
    /// Built at its first use and kept.
    [[nodiscard]] static const QuotedPhraseExpression &shared();

    QuotedPhraseExpression();
    ~QuotedPhraseExpression() override;

    void enumerateMatchesInString(QStringView string, Options matchingOptions, NSRange range,
                                  const MatchCallback &usingBlock) const override;
};

} // namespace quib::search

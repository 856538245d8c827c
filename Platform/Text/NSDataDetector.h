#pragma once

#include "NSRegularExpression.h"

/// Finds links, or postal addresses, in a text, as an expression finds its pattern: what it sees ends with the range it
/// is asked about, and the range's ends are ends of words. Immutable; any thread. One pass over the text, whatever it
/// holds. A link's match carries its URL; Docs/decisions.md lists what counts as a link.
class NSDataDetector : public NSRegularExpression
{
public:
    enum class CheckingType : quint32
    {
        Address = 16,
        Link = 32,
    };

    explicit NSDataDetector(CheckingType type);

    /// The one for the process, made at its first use.
    [[nodiscard]] static const NSDataDetector &sharedDetector(CheckingType type);

    [[nodiscard]] CheckingType checkingType() const { return m_type; }

    void enumerateMatchesInString(QStringView string, Options matchingOptions, NSRange range,
                                  const MatchCallback &usingBlock) const override;

private:
    CheckingType m_type;
};

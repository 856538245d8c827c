#pragma once

#include <Foundation/NSRange.h>

#include <QStringView>

#include <cstdint>
#include <string>
#include <vector>

namespace quib {

/// What a line feed of a searched text counts as.
enum class LineFeeds : quint8
{
    Stand,
    /// As blanks, for texts that will be shown in one line.
    AreBlanks,
};

/// Finds a term in texts at the very places where a case-insensitive regular expression with nothing but the term in it
/// matches: by full case folding, code point by code point, and never a part of what one of them folds to. Linear in
/// the text, many units at a time. Immutable; any thread.
class CaselessTermSearch
{
public:
    explicit CaselessTermSearch(QStringView term, LineFeeds lineFeeds = LineFeeds::Stand);

    /// The first match that begins before startBefore, or kNotFoundRange. An empty term is found nowhere.
    [[nodiscard]] NSRange firstMatchInString(QStringView string, qint64 startBefore = NSNotFound) const;

private:
    /// One unit of the term as most texts have it: in one of two cases, which differ in the bits of spread.
    struct Place
    {
        qint64 offset = 0;
        char16_t spread = 0;
        char16_t value = 0;
        friend bool operator==(const Place &a, const Place &b) = default;
    };

    void choosePlaces();
    void collectOddities();
    /// The length of the match that begins at start, or 0.
    [[nodiscard]] qint64 matchAt(QStringView string, qint64 start) const;
    /// Tries every place from start to limit.
    [[nodiscard]] NSRange findPlain(QStringView string, qint64 start, qint64 limit) const;
    [[nodiscard]] NSRange findWide(QStringView string, qint64 limit) const;
    /// For terms that are too long to be tried at every place.
    [[nodiscard]] NSRange findLong(QStringView string, qint64 limit) const;

    LineFeeds m_lineFeeds;
    std::u32string m_folded;
    /// How many units before an oddity a match that holds it may begin.
    qint64 m_reach = 0;
    Place m_first;
    Place m_second;
    /// Units that take part in matches which do not lie unit on unit upon the term: third cases, ligatures.
    std::vector<char16_t> m_oddities;
};

} // namespace quib

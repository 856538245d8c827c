#pragma once

#include <Text/NSRegularExpression.h>

#include <QStringView>

#include <initializer_list>

namespace quib::syntax {

/// A pattern of the markup with an exact scanner beside it: the pattern is the definition, the scanner gives the very
/// same matches in time linear in the text. Immutable, any thread.
class SyntaxScanner : public NSRegularExpression
{
public:
    using NSRegularExpression::NSRegularExpression;

    void enumerateMatchesInString(QStringView string, Options matchingOptions, NSRange range,
                                  const MatchCallback &usingBlock) const final;
    [[nodiscard]] qint64 numberOfMatchesInString(QStringView string, Options matchingOptions,
                                                 NSRange range) const final;
    /// The matches as the pattern alone gives them; what tests hold the scanner against.
    void enumerateByDefinition(QStringView string, NSRange range, const MatchCallback &usingBlock) const
    {
        enumeratePatternMatches(string, range, usingBlock);
    }

protected:
    /// Tells the matches of a region one after the other, groups as [start, limit) pairs.
    class Sink
    {
    public:
        Sink(qint64 offset, const MatchCallback *callback)
            : m_offset(offset)
            , m_callback(callback)
        {
        }
        struct Group
        {
            qsizetype start;
            qsizetype limit;
        };
        /// The whole match first. Gives false when no more matches are wanted.
        bool match(std::initializer_list<Group> groups);
        [[nodiscard]] qint64 count() const { return m_count; }

    private:
        qint64 m_offset;
        const MatchCallback *m_callback; // null: only count
        qint64 m_count = 0;
    };

    /// Region: nothing outside of it counts, its ends are ends of lines.
    virtual void scan(QStringView region, Sink &sink) const = 0;
};

} // namespace quib::syntax

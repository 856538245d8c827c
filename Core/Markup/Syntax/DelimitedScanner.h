#pragma once

#include "SyntaxScanner.h"

#include <QStringList>

namespace quib::syntax {

/// Bold, underline, strike, highlight and wiki links: an opening marker, content that neither begins nor ends in white
/// space and stays on its line, a closing marker. Groups: 1 open, 2 content, 3 close.
class DelimitedScanner final : public SyntaxScanner
{
public:
    struct Rule
    {
        /// One opening marker, or two of the same length.
        QStringList openers;
        QStringList closers;
        /// White space, punctuation or a line's end must stand around the construct.
        bool needsBoundaries = false;
        /// The marker must not touch another of its kind.
        bool standsAlone = false;
        /// One colon more may stand before the closing marker.
        bool takesColon = false;
    };
    DelimitedScanner(const QString &pattern, Rule rule);

protected:
    void scan(QStringView region, Sink &sink) const override;

private:
    struct Closing
    {
        qsizetype start = -1;
        qsizetype limit = -1;
    };
    class Closers;
    [[nodiscard]] static qsizetype markerLength(QStringView region, qsizetype place, const QStringList &markers);
    /// The closing marker at a place, by itself: what stands before it is the caller's to judge.
    [[nodiscard]] Closing closingAt(QStringView region, qsizetype place) const;
    [[nodiscard]] bool standsAloneAt(QStringView region, qsizetype place, qsizetype length) const;

    Rule m_rule;
};

} // namespace quib::syntax

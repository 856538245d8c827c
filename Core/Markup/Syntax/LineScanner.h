#pragma once

#include "SyntaxScanner.h"

namespace quib::syntax {

/// A construct that a line's first characters tell: optional indentation, a marker, and what must follow it. Group 1:
/// the marker. Only the beginnings of lines are looked at.
class LineScanner final : public SyntaxScanner
{
public:
    /// The length of the marker at a place of a line, [place, limit), or 0. followLength: what must follow it and
    /// belongs to the match.
    using Marker = qsizetype (*)(QStringView region, qsizetype place, qsizetype *followLength);

    LineScanner(const QString &pattern, bool mayBeIndented, Marker marker)
        : SyntaxScanner(pattern, AnchorsMatchLines)
        , m_mayBeIndented(mayBeIndented)
        , m_marker(marker)
    {
    }

protected:
    void scan(QStringView region, Sink &sink) const override;

private:
    bool m_mayBeIndented;
    Marker m_marker;
};

} // namespace quib::syntax

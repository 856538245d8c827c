#pragma once

#include "StylerSyntax.h"

#include <Foundation/NSRange.h>

#include <QList>
#include <QString>

/// Turning markup into what a reader sees, for titles, snippets and names.
///
/// Decided: the marks of bold, italic, underline, strike, highlight, inline code and wiki links go, what they enclose
/// stays; a code block leaves its body; a header loses its prefix; a link leaves its title; a file marker leaves the
/// file's name; image markers and line separators leave nothing. Slashes and underscores inside web addresses stay.
namespace quib::syntax {

/// One construct in one syntax, as the humanising operation of a styler.
struct HumanizeStyler
{
    Construct construct;
    int syntax;
};

/// The stylers that titles and subtitles go through, in their order.
[[nodiscard]] const QList<HumanizeStyler> &stringHumanizeStylers();

/// Humanises one construct in a range of a string, in one pass. range afterwards covers what the range became.
void humanizeTextInInString(const HumanizeStyler &styler, QString &string, NSRange &range);

/// All of stringHumanizeStylers over a whole string.
[[nodiscard]] QString humanizedString(const QString &string);

} // namespace quib::syntax

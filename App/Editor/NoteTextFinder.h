#pragma once

#include <Foundation/NSError.h>
#include <Foundation/NSRange.h>
#include <Text/NSRegularExpression.h>

#include <QList>
#include <QString>
#include <QStringView>

#include <memory>
#include <optional>

namespace quib {

class UnfoldedText;

/// How a text is looked for.
struct FindOptions
{
    bool isCaseSensitive = false;
    bool findsWholeWords = false;
    bool isRegularExpression = false;

    friend bool operator==(const FindOptions &a, const FindOptions &b) = default;
};

/// Looks for a text, or a pattern, in a note, and tells what stands in the place of what was found. Immutable. A
/// pattern that takes too long finds what it found until then.
class NoteTextFinder
{
public:
    /// More is not shown as found in one text.
    static constexpr qsizetype kMostMatches = 10000;

    /// Finds nothing.
    NoteTextFinder() = default;
    NoteTextFinder(const QString &text, const FindOptions &options);

    /// Nothing where the pattern is none; otherwise why.
    [[nodiscard]] const QString &problem() const { return m_problem; }
    /// The places in order. Empty matches are no matches.
    [[nodiscard]] QList<NSRange> matches(QStringView text) const;
    /// What stands for the text of a match: in a pattern's template "$1" stands for its group 1, "\n" for a line feed.
    /// Shape: null where there is no match at the range any more.
    [[nodiscard]] QString replacement(QStringView text, NSRange match, const QString &withTemplate) const;

    struct ReplacedText
    {
        NSRange range; ///< of the shown text: from the first match to the last, and the folds they are in
        QString text;  ///< what takes its place, attachments spelled out
        qsizetype count = 0;
    };
    /// All matches replaced as one edit, however many; nothing where there are none, and none of them where the text
    /// would not be a note's any more.
    [[nodiscard]] std::optional<ReplacedText> replacingAll(const UnfoldedText &text, const QString &withTemplate) const;

private:
    [[nodiscard]] QString expanded(QStringView text, const NSTextCheckingResult &match,
                                   const QString &withTemplate) const;

    std::shared_ptr<const NSRegularExpression> m_expression;
    bool m_expandsTemplates = false;
    QString m_problem;
};

} // namespace quib

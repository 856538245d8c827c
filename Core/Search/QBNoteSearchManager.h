#pragma once

#include <Foundation/NSDate.h>
#include <Store/NSPredicate.h>
#include <Text/NSRegularExpression.h>

#include <QList>
#include <QString>

#include <memory>

/// The search language: one line of words, "quoted phrases" and @ terms becomes a condition on notes, and an expression
/// that highlights the hits. Phrases come first, all terms are joined by AND as text, and the whole is parsed once;
/// that is why "@task" and "@done" lose their parentheses beside other terms, and why "-@today" negates only the first
/// comparison. Class-level only, without state; any thread.
class QBNoteSearchManager
{
public:
    QBNoteSearchManager() = delete;

    /// The condition for a search line; null for a blank one, which means no filter.
    [[nodiscard]] static NSPredicate::Ref predicateForSearchString(const QString &searchString);
    /// The text of an @ term's condition; null for a word that is none. The word is in lower case.
    [[nodiscard]] static QString predicateStringForSpecialSearch(const QString &word);

    /// What a search highlights: its phrases, then its words, without the negated ones.
    struct HighlightTerm
    {
        QString text;
        /// A phrase is an expression of its own; a word is meant as it stands.
        bool isExpression = false;
    };
    [[nodiscard]] static QList<HighlightTerm> highlightTermsForSearchString(const QString &searchString);
    /// The pattern of all phrases (as expressions of their own) and words (as they stand) that are not negated.
    [[nodiscard]] static QString likeOrPatternForSearchString(const QString &searchString);
    /// That pattern, case-insensitive; null when it does not build or holds nothing.
    [[nodiscard]] static std::shared_ptr<const NSRegularExpression>
    likeOrRegexForSearchString(const QString &searchString);
    /// What the note list and the editor highlight.
    [[nodiscard]] static std::shared_ptr<const NSRegularExpression>
    defaultSearchRegexForSearchString(const QString &searchString);

    /// The first and the last second of a local day; either may be null.
    static void endAndBeginOfDayDatesFromDate(NSDate date, NSDate *beginDate, NSDate *endDate);
};

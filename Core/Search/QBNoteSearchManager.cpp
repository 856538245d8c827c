#include "QBNoteSearchManager.h"

#include "QBDateHelper.h"
#include "QuotedPhraseExpression.h"

#include <Text/NSStringHelpers.h>

#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr double kSecondsPerDay = 86'400;
/// Days are reckoned between the years 1 and 9999; an instant beyond counts as the nearest.
constexpr double kFirstReckonedSecond = -62'135'596'800;
constexpr double kLastReckonedSecond = 253'402'300'799;

struct SpecialTerm
{
    QStringView word;
    const char16_t *condition;
};

/// Go into the joined text as they stand.
constexpr SpecialTerm kPlainTerms[] = {
    {u"@tagged", u"tags.@count != 0"},
    {u"@untagged", u"tags.@count == 0"},
    {u"@attachments", u"( hasImages == YES || hasFiles == YES )"},
};

/// Are parsed and printed first, which takes the outer parentheses away.
constexpr SpecialTerm kPrintedTerms[] = {
    {u"@images", u"hasImages == YES"},
    {u"@files", u"hasFiles == YES"},
    {u"@task", u"( todoCompleted > 0 OR todoIncompleted > 0 )"},
    {u"@done", u"( todoCompleted > 0 AND todoIncompleted == 0 )"},
    {u"@todo", u"todoIncompleted > 0"},
    {u"@code", u"hasSourceCode == YES"},
};

constexpr char16_t kModified[] = u"(modificationDate >= %@) AND (modificationDate <= %@)";
constexpr char16_t kCreated[] = u"(creationDate >= %@) AND (creationDate <= %@)";

[[nodiscard]] QString printed(const QString &format, const QList<NSPredicateArgument> &arguments = {})
{
    const NSPredicate::Ref predicate = NSPredicate::predicateWithFormat(format, arguments);
    return predicate == nullptr ? QString() : predicate->predicateFormat();
}

[[nodiscard]] QString printedPlainTerm(const QString &term)
{
    return printed(u"text CONTAINS[cd] %@"_s, {predicateArgument(term)});
}

/// Both ends of the range belong to it.
[[nodiscard]] QString printedDays(const char16_t *format, NSDate first, NSDate last)
{
    NSDate begin;
    NSDate end;
    QBNoteSearchManager::endAndBeginOfDayDatesFromDate(first, &begin, nullptr);
    QBNoteSearchManager::endAndBeginOfDayDatesFromDate(last, nullptr, &end);
    return printed(QStringView(format).toString(), {quib::Value(begin), quib::Value(end)});
}

/// The whole number at the start of a text, white space and a sign allowed; 0 when there is none.
[[nodiscard]] qint64 integerValue(QStringView text)
{
    const QString trimmed = quib::trimmedWhitespaceAndNewlines(text);
    qsizetype position = 0;
    const bool isNegative = trimmed.startsWith(u'-');
    if (isNegative || trimmed.startsWith(u'+')) {
        ++position;
    }
    qint64 value = 0;
    for (; position < trimmed.size() && trimmed[position] >= u'0' && trimmed[position] <= u'9'; ++position) {
        const qint64 digit = trimmed[position].unicode() - u'0';
        if (value > (std::numeric_limits<qint64>::max() - digit) / 10) {
            value = std::numeric_limits<qint64>::max();
            break;
        }
        value = value * 10 + digit;
    }
    return isNegative ? -value : value;
}

/// What stands in a "name(...)" form whose first closing parenthesis is its last character.
[[nodiscard]] std::optional<NSDate> dayInForm(const QString &word, QStringView opening)
{
    if (!word.startsWith(opening) || word.indexOf(u')') != word.size() - 1) {
        return std::nullopt;
    }
    return QBDateHelper::shortDateFromString(word.sliced(opening.size(), word.size() - 1 - opening.size()));
}

/// One quoted phrase of a search line.
struct Phrase
{
    bool isNegated = false;
    QString text;
};

/// A search line taken apart: the phrases in their order, and the words of what is left of it.
struct SearchLine
{
    std::vector<Phrase> phrases;
    QStringList words;
    /// Nothing is left of the line but its phrases.
    bool isRestEmpty = true;

    explicit SearchLine(const QString &line)
    {
        QString rest;
        qint64 done = 0;
        quib::search::QuotedPhraseExpression::shared().enumerateMatchesInString(
            line, 0, {0, line.size()}, [&](const NSTextCheckingResult &match, bool *) {
                const NSRange range = match.range();
                const NSRange content = match.rangeAtIndex(2);
                phrases.push_back({line[range.location] == u'-', line.sliced(content.location, content.length)});
                rest.append(QStringView(line).sliced(done, range.location - done));
                done = range.limit();
            });
        rest.append(QStringView(line).sliced(done));
        isRestEmpty = rest.isEmpty();
        words = rest.split(u' ', Qt::SkipEmptyParts);
    }
};

/// The line as the language reads it: trimmed, line ends as blanks.
[[nodiscard]] QString joinedLine(const QString &searchString)
{
    QString line = quib::trimmedWhitespaceAndNewlines(searchString);
    for (QChar &unit : line) {
        if (quib::isNewline(unit.unicode())) {
            unit = u' ';
        }
    }
    return line;
}

void appendTerm(QString &joined, bool isNegated, const QString &condition)
{
    if (!joined.isEmpty()) {
        joined.append(u" AND "_s);
    }
    if (isNegated) {
        joined.append(u"NOT "_s);
    }
    joined.append(condition);
}

} // namespace

NSPredicate::Ref QBNoteSearchManager::predicateForSearchString(const QString &searchString)
{
    const QString line = joinedLine(searchString);
    if (line.isEmpty()) {
        return nullptr;
    }
    const SearchLine terms(line);
    QString joined;
    for (const Phrase &phrase : terms.phrases) {
        appendTerm(joined, phrase.isNegated, printedPlainTerm(phrase.text));
    }
    for (QString word : terms.words) {
        // A hyphen alone is a word like any other.
        const bool isNegated = word.startsWith(u'-') && word.size() >= 2;
        if (isNegated) {
            word.remove(0, 1);
        }
        const QString special = predicateStringForSpecialSearch(quib::lowercaseString(word));
        appendTerm(joined, isNegated, special.isEmpty() ? printedPlainTerm(word) : special);
    }
    return joined.isEmpty() ? nullptr : NSPredicate::predicateWithFormat(joined);
}

QString QBNoteSearchManager::predicateStringForSpecialSearch(const QString &word)
{
    if (!word.startsWith(u'@')) {
        return {};
    }
    for (const SpecialTerm &term : kPlainTerms) {
        if (word == term.word) {
            return QStringView(term.condition).toString();
        }
    }
    for (const SpecialTerm &term : kPrintedTerms) {
        if (word == term.word) {
            return printed(QStringView(term.condition).toString());
        }
    }
    const NSDate now = NSDate::now();
    if (word == u"@today"_s) {
        return printedDays(kModified, now, now);
    }
    if (word == u"@yesterday"_s) {
        const NSDate yesterday = now.dateByAddingTimeInterval(-kSecondsPerDay);
        return printedDays(kModified, yesterday, yesterday);
    }
    static constexpr QStringView kLast = u"@last";
    static constexpr QStringView kDays = u"days";
    if (word.startsWith(kLast) && word.endsWith(kDays)) {
        const qint64 days =
            integerValue(QStringView(word).sliced(kLast.size(), word.size() - kLast.size() - kDays.size()));
        if (days != 0) {
            return printedDays(kModified, now.dateByAddingTimeInterval(-kSecondsPerDay * static_cast<double>(days)),
                               now);
        }
    }
    if (const std::optional<NSDate> day = dayInForm(word, u"@date(")) {
        return printedDays(kModified, *day, *day);
    }
    if (const std::optional<NSDate> day = dayInForm(word, u"@cdate(")) {
        return printedDays(kCreated, *day, *day);
    }
    return {};
}

QList<QBNoteSearchManager::HighlightTerm>
QBNoteSearchManager::highlightTermsForSearchString(const QString &searchString)
{
    const SearchLine line(searchString);
    QList<HighlightTerm> terms;
    for (const Phrase &phrase : line.phrases) {
        if (!phrase.isNegated) {
            terms.append({phrase.text, /*isExpression=*/true});
        }
    }
    for (const QString &word : line.words) {
        if (!word.startsWith(u'-')) {
            terms.append({word, /*isExpression=*/false});
        }
    }
    return terms;
}

QString QBNoteSearchManager::likeOrPatternForSearchString(const QString &searchString)
{
    QStringList alternatives;
    for (const HighlightTerm &term : highlightTermsForSearchString(searchString)) {
        alternatives.append(
            u'(' % (term.isExpression ? term.text : NSRegularExpression::escapedPatternForString(term.text)) % u')');
    }
    return alternatives.join(u'|');
}

std::shared_ptr<const NSRegularExpression> QBNoteSearchManager::likeOrRegexForSearchString(const QString &searchString)
{
    return NSRegularExpression::regularExpressionWithPattern(likeOrPatternForSearchString(searchString),
                                                             NSRegularExpression::CaseInsensitive);
}

std::shared_ptr<const NSRegularExpression>
QBNoteSearchManager::defaultSearchRegexForSearchString(const QString &searchString)
{
    return likeOrRegexForSearchString(searchString);
}

void QBNoteSearchManager::endAndBeginOfDayDatesFromDate(NSDate date, NSDate *beginDate, NSDate *endDate)
{
    const double seconds = std::clamp(date.timeIntervalSince1970(), kFirstReckonedSecond, kLastReckonedSecond);
    const QDate day = QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::floor(seconds * 1000))).date();
    const auto instant = [day](QTime time) {
        return NSDate::dateWithTimeIntervalSince1970(
            static_cast<double>(QDateTime(day, time, Qt::LocalTime).toSecsSinceEpoch()));
    };
    if (beginDate != nullptr) {
        *beginDate = instant(QTime(0, 0, 0));
    }
    if (endDate != nullptr) {
        *endDate = instant(QTime(23, 59, 59));
    }
}

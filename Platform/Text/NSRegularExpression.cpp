#include "NSRegularExpression.h"

#include "NSStringHelpers.h"

#include <algorithm>
#include <array>
#include <limits>
#include <mutex>

#include <unicode/parseerr.h>
#include <unicode/uregex.h>

namespace {

/// Work allowed to one enumeration, in ICU's ticks of 10,000 saved states: about a second for a small text and a fixed
/// share for each unit of a long one. Ordinary patterns save a handful of states a unit; only one that backtracks
/// without bounds gets here, and it ends with the matches found so far instead of holding its thread.
constexpr qint64 kTicksForAnyText = 10'000;
constexpr qint64 kUnitsPerTick = 250;
/// Backtracking memory of one matcher, in bytes.
constexpr int32_t kStackLimit = 32 * 1024 * 1024;
/// A matcher that saw a longer text is not kept: its backtracking stack may have grown to the limit.
constexpr qint64 kLongestPooledText = 1'000'000;
constexpr size_t kPoolSize = 4;

struct ExpressionCloser
{
    void operator()(URegularExpression *expression) const { uregex_close(expression); }
};
using Matcher = std::unique_ptr<URegularExpression, ExpressionCloser>;

uint32_t icuFlags(NSRegularExpression::Options options)
{
    uint32_t flags = 0;
    if ((options & NSRegularExpression::CaseInsensitive) != 0) {
        flags |= UREGEX_CASE_INSENSITIVE;
    }
    if ((options & NSRegularExpression::DotMatchesLineSeparators) != 0) {
        flags |= UREGEX_DOTALL;
    }
    if ((options & NSRegularExpression::AnchorsMatchLines) != 0) {
        flags |= UREGEX_MULTILINE;
    }
    return flags;
}

NSError patternError(UErrorCode status, const UParseError &where)
{
    const QString message =
        QStringLiteral("the pattern does not build: %1 at line %2, offset %3")
            .arg(QString::fromLatin1(u_errorName(status)), QString::number(where.line), QString::number(where.offset));
    return NSError(QStringLiteral("NSRegularExpressionErrorDomain"), 1, message, status);
}

} // namespace

/// The built pattern and the matchers at rest. The mutex guards prototype (cloning reads it) and idle.
struct NSRegularExpression::Compiled
{
    QString pattern;
    Options options = 0;
    NSError error;
    qint64 groupCount = 0;
    std::mutex mutex;
    Matcher prototype;
    std::vector<Matcher> idle;

    Matcher take()
    {
        const std::lock_guard lock(mutex);
        if (!idle.empty()) {
            Matcher matcher = std::move(idle.back());
            idle.pop_back();
            return matcher;
        }
        UErrorCode status = U_ZERO_ERROR;
        Matcher matcher(uregex_clone(prototype.get(), &status));
        if (U_FAILURE(status) || matcher == nullptr) {
            return nullptr;
        }
        uregex_setStackLimit(matcher.get(), kStackLimit, &status);
        return U_SUCCESS(status) ? std::move(matcher) : nullptr;
    }

    void giveBack(Matcher matcher)
    {
        // The caller's buffer must not be reachable from a matcher at rest.
        static constexpr std::array<UChar, 1> kEmptyText{};
        UErrorCode status = U_ZERO_ERROR;
        uregex_setText(matcher.get(), kEmptyText.data(), 0, &status);
        const std::lock_guard lock(mutex);
        if (U_SUCCESS(status) && idle.size() < kPoolSize) {
            idle.push_back(std::move(matcher));
        }
    }
};

NSRegularExpression::NSRegularExpression(const QString &pattern, Options options)
    : m_compiled(std::make_unique<Compiled>())
{
    m_compiled->pattern = pattern;
    m_compiled->options = options;
    UErrorCode status = U_ZERO_ERROR;
    UParseError where{};
    if (pattern.isEmpty() || pattern.size() > std::numeric_limits<int32_t>::max()) {
        status = U_ILLEGAL_ARGUMENT_ERROR;
    } else {
        m_compiled->prototype.reset(uregex_open(reinterpret_cast<const UChar *>(pattern.utf16()),
                                                static_cast<int32_t>(pattern.size()), icuFlags(options), &where,
                                                &status));
    }
    if (U_SUCCESS(status)) {
        m_compiled->groupCount = uregex_groupCount(m_compiled->prototype.get(), &status);
    }
    if (U_FAILURE(status)) {
        m_compiled->prototype.reset();
        m_compiled->groupCount = 0;
        m_compiled->error = patternError(status, where);
    }
}

NSRegularExpression::~NSRegularExpression() = default;

std::shared_ptr<const NSRegularExpression>
NSRegularExpression::regularExpressionWithPattern(const QString &pattern, Options options, NSError *error)
{
    auto expression = std::make_shared<const NSRegularExpression>(pattern, options);
    if (expression->isValid()) {
        return expression;
    }
    if (error != nullptr) {
        *error = expression->m_compiled->error;
    }
    return nullptr;
}

QString NSRegularExpression::escapedPatternForString(QStringView string)
{
    static constexpr QStringView kMetacharacters = u"*?+[(){}^$|\\./";
    QString escaped;
    escaped.reserve(string.size() + string.size() / 8);
    for (const QChar character : string) {
        if (kMetacharacters.contains(character)) {
            escaped.append(u'\\');
        }
        escaped.append(character);
    }
    return escaped;
}

const QString &NSRegularExpression::pattern() const
{
    return m_compiled->pattern;
}

NSRegularExpression::Options NSRegularExpression::options() const
{
    return m_compiled->options;
}

bool NSRegularExpression::isValid() const
{
    return m_compiled->prototype != nullptr;
}

qint64 NSRegularExpression::numberOfCaptureGroups() const
{
    return m_compiled->groupCount;
}

void NSRegularExpression::enumerateMatchesInString(QStringView string, Options matchingOptions, NSRange range,
                                                   const MatchCallback &usingBlock) const
{
    static_cast<void>(matchingOptions);
    enumeratePatternMatches(string, range, usingBlock);
}

QList<NSTextCheckingResult> NSRegularExpression::matchesInString(QStringView string, Options matchingOptions,
                                                                 NSRange range) const
{
    QList<NSTextCheckingResult> results;
    enumerateMatchesInString(string, matchingOptions, range,
                             [&results](const NSTextCheckingResult &result, bool *) { results.append(result); });
    return results;
}

qint64 NSRegularExpression::numberOfMatchesInString(QStringView string, Options matchingOptions, NSRange range) const
{
    qint64 count = 0;
    enumerateMatchesInString(string, matchingOptions, range,
                             [&count](const NSTextCheckingResult &, bool *) { ++count; });
    return count;
}

std::optional<NSTextCheckingResult> NSRegularExpression::firstMatchInString(QStringView string, Options matchingOptions,
                                                                            NSRange range) const
{
    std::optional<NSTextCheckingResult> first;
    enumerateMatchesInString(string, matchingOptions, range, [&first](const NSTextCheckingResult &result, bool *stop) {
        first = result;
        *stop = true;
    });
    return first;
}

NSRange NSRegularExpression::rangeOfFirstMatchInString(QStringView string, Options matchingOptions, NSRange range) const
{
    NSRange found = kNotFoundRange;
    enumerateMatchesInString(string, matchingOptions, range, [&found](const NSTextCheckingResult &result, bool *stop) {
        found = result.range();
        *stop = true;
    });
    return found;
}

void NSRegularExpression::enumeratePatternMatches(QStringView string, NSRange range,
                                                  const MatchCallback &usingBlock) const
{
    const std::optional<NSRange> searched = quib::rangeCutToString(string, range);
    if (!isValid() || !searched) {
        return;
    }
    // OPTIMIZATION: the matcher sees the searched units as its whole text. Nothing may look past a region with
    // anchoring and without transparent bounds, so the matches are those of the region.
    static constexpr char16_t kNothing = 0;
    const QStringView text = string.sliced(searched->location, searched->length);
    const auto *units = reinterpret_cast<const UChar *>(text.isEmpty() ? &kNothing : text.utf16());
    Matcher matcher = text.size() <= std::numeric_limits<int32_t>::max() ? m_compiled->take() : nullptr;
    if (matcher == nullptr) {
        return;
    }
    UErrorCode status = U_ZERO_ERROR;
    uregex_setText(matcher.get(), units, static_cast<int32_t>(text.size()), &status);
    uregex_setTimeLimit(matcher.get(), static_cast<int32_t>(kTicksForAnyText + text.size() / kUnitsPerTick), &status);

    const auto groups = static_cast<int32_t>(m_compiled->groupCount);
    bool stop = false;
    while (!stop && U_SUCCESS(status) && uregex_findNext(matcher.get(), &status) != 0 && U_SUCCESS(status)) {
        NSTextCheckingResult::Ranges ranges;
        ranges.reserve(qsizetype(groups) + 1);
        for (int32_t group = 0; group <= groups; ++group) {
            const int32_t start = uregex_start(matcher.get(), group, &status);
            const int32_t limit = uregex_end(matcher.get(), group, &status);
            ranges.push_back(start < 0 ? kNotFoundRange : NSRange{searched->location + start, limit - start});
        }
        usingBlock(NSTextCheckingResult(std::move(ranges)), &stop);
    }
    if (text.size() <= kLongestPooledText && U_SUCCESS(status)) {
        m_compiled->giveBack(std::move(matcher));
    }
}

namespace {

/// Reads the decimal number of a group behind a "$": as many digits as still name a group. -1 when there is none.
qint64 groupInTemplate(QStringView replacement, qsizetype *position, qint64 groupCount)
{
    qint64 group = -1;
    while (*position < replacement.size()) {
        const char16_t unit = replacement[*position].unicode();
        if (unit < u'0' || unit > u'9') {
            break;
        }
        const qint64 next = (group < 0 ? 0 : group * 10) + (unit - u'0');
        if (group >= 0 && next > groupCount) {
            break;
        }
        group = next;
        ++*position;
    }
    return group;
}

void appendTemplate(QString &out, QStringView replacement, QStringView string, const NSTextCheckingResult &match)
{
    qsizetype position = 0;
    while (position < replacement.size()) {
        const QChar character = replacement[position++];
        if (character == u'\\' && position < replacement.size()) {
            out.append(replacement[position++]);
            continue;
        }
        if (character == u'$') {
            const qint64 group = groupInTemplate(replacement, &position, match.numberOfRanges() - 1);
            if (group >= 0) {
                const NSRange range = match.rangeAtIndex(group);
                if (range.isFound()) {
                    out.append(string.sliced(range.location, range.length));
                }
                continue;
            }
        }
        out.append(character);
    }
}

} // namespace

QString NSRegularExpression::stringByReplacingMatchesInString(QStringView string, NSRange range,
                                                              QStringView withTemplate) const
{
    QString out;
    out.reserve(string.size());
    qint64 done = 0;
    enumerateMatchesInString(string, 0, range, [&](const NSTextCheckingResult &match, bool *) {
        out.append(string.sliced(done, match.range().location - done));
        appendTemplate(out, withTemplate, string, match);
        done = match.range().limit();
    });
    out.append(string.sliced(done));
    return out;
}

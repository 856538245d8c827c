#pragma once

#include <Foundation/NSError.h>
#include <Foundation/NSRange.h>

#include <QList>
#include <QString>
#include <QStringView>
#include <QUrl>
#include <QVarLengthArray>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

/// One match: the range of the whole (index 0) and of each capture group, kNotFoundRange for a group that took no part.
/// A link found by a data detector also has its URL. A value.
class NSTextCheckingResult
{
public:
    /// Enough for all patterns of the markup without a block of memory.
    using Ranges = QVarLengthArray<NSRange, 5>;

    NSTextCheckingResult() = default;
    explicit NSTextCheckingResult(Ranges ranges)
        : m_ranges(std::move(ranges))
    {
    }
    NSTextCheckingResult(Ranges ranges, QUrl url)
        : m_ranges(std::move(ranges))
        , m_url(std::move(url))
    {
    }

    /// What a link leads to; empty for any other match.
    [[nodiscard]] const QUrl &URL() const { return m_url; }
    [[nodiscard]] NSRange range() const { return m_ranges.isEmpty() ? kNotFoundRange : m_ranges.front(); }
    /// kNotFoundRange also for an index that the expression does not have.
    [[nodiscard]] NSRange rangeAtIndex(qint64 index) const
    {
        return index >= 0 && index < m_ranges.size() ? m_ranges[index] : kNotFoundRange;
    }
    [[nodiscard]] qint64 numberOfRanges() const { return m_ranges.size(); }
    friend bool operator==(const NSTextCheckingResult &a, const NSTextCheckingResult &b) = default;

private:
    Ranges m_ranges;
    QUrl m_url;
};

/// An ICU pattern over a string's own UTF-16 buffer, without copying. Immutable after its making, may be used on any
/// thread, and may be subclassed by exact scanners that override enumerateMatchesInString: every other query is built
/// on that one. The searched range is a region with anchoring bounds and without transparent bounds: nothing looks past
/// it. A pattern that does not build matches nothing.
class NSRegularExpression
{
public:
    enum Option : quint32
    {
        CaseInsensitive = 1,
        DotMatchesLineSeparators = 8,
        AnchorsMatchLines = 16,
    };
    using Options = quint32;
    using MatchCallback = std::function<void(const NSTextCheckingResult &result, bool *stop)>;

    explicit NSRegularExpression(const QString &pattern, Options options = 0);
    NSRegularExpression(const NSRegularExpression &) = delete;
    NSRegularExpression &operator=(const NSRegularExpression &) = delete;
    virtual ~NSRegularExpression();

    /// Errors: null when the pattern does not build; error then tells why and where.
    [[nodiscard]] static std::shared_ptr<const NSRegularExpression>
    regularExpressionWithPattern(const QString &pattern, Options options, NSError *error = nullptr);
    /// The text with a backslash before each character that a pattern would read as its own.
    [[nodiscard]] static QString escapedPatternForString(QStringView string);

    [[nodiscard]] const QString &pattern() const;
    [[nodiscard]] Options options() const;
    [[nodiscard]] bool isValid() const;
    [[nodiscard]] qint64 numberOfCaptureGroups() const;

    /// Calls block for each match in order of location. The string must outlive the call and not change during it.
    /// Shape: matchingOptions is unused and 0. A range outside of the string is cut to it.
    virtual void enumerateMatchesInString(QStringView string, Options matchingOptions, NSRange range,
                                          const MatchCallback &usingBlock) const;
    [[nodiscard]] virtual QList<NSTextCheckingResult> matchesInString(QStringView string, Options matchingOptions,
                                                                      NSRange range) const;
    [[nodiscard]] virtual qint64 numberOfMatchesInString(QStringView string, Options matchingOptions,
                                                         NSRange range) const;
    [[nodiscard]] virtual std::optional<NSTextCheckingResult>
    firstMatchInString(QStringView string, Options matchingOptions, NSRange range) const;
    [[nodiscard]] virtual NSRange rangeOfFirstMatchInString(QStringView string, Options matchingOptions,
                                                            NSRange range) const;
    /// The text with each match in range replaced by a template in which $1 stands for group 1 and a backslash escapes.
    [[nodiscard]] QString stringByReplacingMatchesInString(QStringView string, NSRange range,
                                                           QStringView withTemplate) const;

protected:
    /// The matches of the pattern itself, whatever a subclass does: the definition that its scanner is tested against.
    void enumeratePatternMatches(QStringView string, NSRange range, const MatchCallback &usingBlock) const;

private:
    struct Compiled;
    std::unique_ptr<Compiled> m_compiled;
};

#include "QBCodeLanguageDetector.h"

#include <Text/LinePattern.h>

#include <QHash>

#include <algorithm>
#include <array>
#include <vector>

using namespace Qt::StringLiterals;
using quib::LineAlphabet;
using quib::LinePattern;

namespace {

constexpr QStringView kUnknown = u"Unknown";
constexpr qint64 kPointsOfUnknown = 1;
/// One in so many lines is near the top.
constexpr qint64 kTopShare = 10;

/// The patterns of the table, each once, however many languages share it.
class TablePatterns
{
public:
    static TablePatterns &shared()
    {
        static TablePatterns patterns;
        return patterns;
    }

    /// In how many lines a pattern is found, and in how many of those near the top.
    struct Count
    {
        qint64 lines = 0;
        qint64 linesNearTop = 0;
    };

    /// One count a pattern.
    [[nodiscard]] std::vector<Count> countsInLines(const QList<QStringView> &lines)
    {
        std::vector<Count> counts(m_patterns.size());
        std::vector<LineAlphabet::Letter> letters;
        for (qint64 index = 0; index < lines.size(); ++index) {
            LineAlphabet::shared().spell(lines[index], letters);
            const bool isNearTop = QBCodeLanguageDetector::isNearTop(index, lines);
            for (size_t i = 0; i < m_patterns.size(); ++i) {
                if ((isNearTop || !m_patterns[i].isOnlyNearTop) && m_patterns[i].pattern.isFoundIn(letters)) {
                    ++counts[i].lines;
                    counts[i].linesNearTop += isNearTop ? 1 : 0;
                }
            }
        }
        return counts;
    }

    [[nodiscard]] size_t indexOf(const QString &pattern) const { return m_indices.value(pattern); }

private:
    struct Entry
    {
        LinePattern pattern;
        bool isOnlyNearTop = true;
    };

    TablePatterns()
    {
        for (const QBCodeLanguage &language : QBCodeLanguageDetector::languages()) {
            for (const QBCodeLanguageChecker &checker : language.checkers) {
                if (!m_indices.contains(checker.pattern)) {
                    m_indices.insert(checker.pattern, m_patterns.size());
                    m_patterns.push_back({LinePattern(checker.pattern, LinePattern::Case::Insensitive)});
                }
                if (!checker.neartop) {
                    m_patterns[m_indices.value(checker.pattern)].isOnlyNearTop = false;
                }
            }
        }
    }

    std::vector<Entry> m_patterns;
    QHash<QString, size_t> m_indices;
};

/// The lines of a text. Line ends of any kind are one, and so are several in a row; only the first and the last line
/// can be empty. What is returned points into normalised.
QList<QStringView> linesOf(const QString &string, QString &normalised)
{
    normalised.reserve(string.size());
    bool isBehindLineEnd = false;
    for (const QChar unit : string) {
        const bool isLineEnd = unit == u'\n' || unit == u'\r';
        if (!isLineEnd) {
            normalised.append(unit);
        } else if (!isBehindLineEnd) {
            normalised.append(u'\n');
        }
        isBehindLineEnd = isLineEnd;
    }
    return QStringView(normalised).split(u'\n');
}

/// How many pairs of a line and a pattern there are, so that the pattern is found in the line; stops at enough.
template <size_t Count>
bool areFound(std::array<LinePattern, Count> &patterns, const QList<QStringView> &lines, int enough)
{
    int found = 0;
    std::vector<LineAlphabet::Letter> letters;
    for (const QStringView line : lines) {
        LineAlphabet::shared().spell(line, letters);
        for (LinePattern &pattern : patterns) {
            found += pattern.isFoundIn(letters) ? 1 : 0;
        }
        if (found >= enough) {
            return true;
        }
    }
    return false;
}

} // namespace

QString QBCodeLanguageDetector::detectLanguageWithString(const QString &string) const
{
    if (string.isEmpty()) {
        return kUnknown.toString();
    }
    QString normalised;
    const QList<QStringView> lines = linesOf(string, normalised);
    const ResultArray results = resultArrayForLines(lines);
    // The first of those with the most points: what a stable sort would put at the top.
    const QString language = std::ranges::max_element(results, {}, &QBCodeLanguageResult::points)->language;
    const bool isSwift = (language == u"javascript" && checkIfSwiftAgainstJavascript(lines)) ||
                         (language == u"objective-c" && checkIfSwiftAgainstObjectiveC(lines));
    return isSwift ? u"swift"_s : language;
}

QBCodeLanguageDetector::ResultArray QBCodeLanguageDetector::buildResultsArray()
{
    ResultArray results;
    for (const QStringView language : {u"java", u"javascript", u"c", u"c++", u"python", u"html", u"css", u"ruby",
                                       u"php", u"go", u"objective-c", u"Unknown"}) {
        results.append({language.toString(), 0});
    }
    return results;
}

void QBCodeLanguageDetector::updateResultArray(ResultArray &resultArray, const QString &withLanguage, qint64 points)
{
    const auto record = std::ranges::find(resultArray, withLanguage, &QBCodeLanguageResult::language);
    if (record != resultArray.end()) {
        record->points += points;
    }
}

QBCodeLanguageDetector::ResultArray QBCodeLanguageDetector::resultArrayForLines(const QList<QStringView> &lines)
{
    ResultArray results = buildResultsArray();
    const auto counts = TablePatterns::shared().countsInLines(lines);
    for (const QBCodeLanguage &language : languages()) {
        if (language.language == kUnknown) {
            updateResultArray(results, language.language, kPointsOfUnknown);
            continue;
        }
        qint64 sum = 0;
        for (const QBCodeLanguageChecker &checker : language.checkers) {
            const auto &count = counts[TablePatterns::shared().indexOf(checker.pattern)];
            sum += checker.points * (checker.neartop ? count.linesNearTop : count.lines);
        }
        updateResultArray(results, language.language, sum);
    }
    return results;
}

bool QBCodeLanguageDetector::isNearTop(qint64 index, const QList<QStringView> &lines)
{
    return lines.size() <= kTopShare || index < lines.size() / kTopShare;
}

bool QBCodeLanguageDetector::checkIfSwiftAgainstJavascript(const QList<QStringView> &lines)
{
    static std::array<LinePattern, 2> patterns{LinePattern(uR"(\b((NS|CG|UI)\w+))", LinePattern::Case::Sensitive),
                                               LinePattern(u"AnyObject", LinePattern::Case::Sensitive)};
    return areFound(patterns, lines, 2);
}

bool QBCodeLanguageDetector::checkIfSwiftAgainstObjectiveC(const QList<QStringView> &lines)
{
    static std::array<LinePattern, 2> patterns{LinePattern(uR"((let|var)( )+\w+( )*=?)", LinePattern::Case::Sensitive),
                                               LinePattern(uR"((func)( )+\w+( )*=?)", LinePattern::Case::Sensitive)};
    return areFound(patterns, lines, 1);
}

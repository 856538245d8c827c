#include "CaselessTermSearch.h"

#include <QString>

#include <algorithm>
#include <map>

#include <unicode/uchar.h>
#include <unicode/uset.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace quib {

namespace {

/// A term of more is found by a table, so that no text of its repeating makes it be tried over and over.
constexpr size_t kLongTerm = 64;

char32_t supplementary(char16_t lead, char16_t trail)
{
    return QChar::surrogateToUcs4(lead, trail);
}

/// One or two units; a lone surrogate is itself.
QString unitsOf(char32_t codePoint)
{
    QString units;
    if (QChar::requiresSurrogates(codePoint)) {
        units.append(QChar(QChar::highSurrogate(codePoint)));
        units.append(QChar(QChar::lowSurrogate(codePoint)));
    } else {
        units.append(QChar(static_cast<char16_t>(codePoint)));
    }
    return units;
}

/// A term with more is tried at every place.
constexpr size_t kMostOddities = 8;

/// What case folding does to code points, turned round. Made once, of those that have case: no other folds.
struct FoldTable
{
    struct Expansion
    {
        char32_t codePoint = 0;
        std::u32string folded;
    };

    /// Code points that fold to one other, by that one, ascending.
    std::map<char32_t, std::vector<char32_t>> variants;
    /// Those that fold to several, ascending.
    std::vector<Expansion> expansions;

    static const FoldTable &shared()
    {
        static const FoldTable s_table;
        return s_table;
    }

    [[nodiscard]] const Expansion *expansion(char32_t codePoint) const
    {
        const auto found =
            std::lower_bound(expansions.begin(), expansions.end(), codePoint,
                             [](const Expansion &candidate, char32_t wanted) { return candidate.codePoint < wanted; });
        return found == expansions.end() || found->codePoint != codePoint ? nullptr : &*found;
    }

private:
    FoldTable()
    {
        UErrorCode status = U_ZERO_ERROR;
        USet *const cased = uset_openEmpty();
        uset_applyIntPropertyValue(cased, UCHAR_CASED, 1, &status);
        for (int32_t index = 0; U_SUCCESS(status) && index < uset_getRangeCount(cased); ++index) {
            UChar32 first = 0;
            UChar32 last = 0;
            uset_getItem(cased, index, &first, &last, nullptr, 0, &status);
            for (UChar32 codePoint = first; codePoint <= last; ++codePoint) {
                add(static_cast<char32_t>(codePoint));
            }
        }
        uset_close(cased);
    }

    void add(char32_t codePoint)
    {
        const std::u32string folded = foldedTerm(unitsOf(codePoint));
        if (folded.size() == 1 && folded.front() == codePoint) {
            return;
        }
        if (folded.size() == 1) {
            variants[folded.front()].push_back(codePoint);
        } else {
            expansions.push_back({codePoint, folded});
        }
    }

public:
    /// The full folding of a text; lone surrogates stay as they are.
    static std::u32string foldedTerm(QStringView term)
    {
        std::vector<UChar> units(static_cast<size_t>(term.size()) * 3 + 1);
        UErrorCode status = U_ZERO_ERROR;
        const int32_t length = u_strFoldCase(units.data(), static_cast<int32_t>(units.size()),
                                             reinterpret_cast<const UChar *>(term.utf16()),
                                             static_cast<int32_t>(term.size()), U_FOLD_CASE_DEFAULT, &status);
        std::u32string folded;
        for (int32_t index = 0; U_SUCCESS(status) && index < length;) {
            char32_t codePoint = units[static_cast<size_t>(index++)];
            if (U16_IS_LEAD(codePoint) && index < length && U16_IS_TRAIL(units[static_cast<size_t>(index)])) {
                codePoint = supplementary(static_cast<char16_t>(codePoint), units[static_cast<size_t>(index++)]);
            }
            folded.push_back(codePoint);
        }
        return folded;
    }
};

/// Reads a text code point by code point, in folded form.
class FoldedReader
{
public:
    FoldedReader(QStringView string, LineFeeds lineFeeds, qint64 position)
        : m_string(string)
        , m_lineFeeds(lineFeeds)
        , m_position(position)
    {
    }

    [[nodiscard]] bool isAtEnd() const { return m_position >= m_string.size(); }
    [[nodiscard]] qint64 position() const { return m_position; }
    /// What the code point at the position folds to; the position moves behind it. Valid until the next reading.
    /// Requires: not at the end.
    [[nodiscard]] std::u32string_view next()
    {
        const char16_t unit = m_string[m_position++].unicode();
        if (unit < 0x80) {
            m_one = unit >= u'A' && unit <= u'Z'                           ? unit + 0x20U
                    : unit == u'\n' && m_lineFeeds == LineFeeds::AreBlanks ? U' '
                                                                           : unit;
            return {&m_one, 1};
        }
        auto codePoint = static_cast<char32_t>(unit);
        if (U16_IS_LEAD(unit) && !isAtEnd() && U16_IS_TRAIL(m_string[m_position].unicode())) {
            codePoint = supplementary(unit, m_string[m_position].unicode());
            ++m_position;
        }
        if (const auto *expansion = m_table.expansion(codePoint)) {
            return expansion->folded;
        }
        m_one = static_cast<char32_t>(u_foldCase(static_cast<UChar32>(codePoint), U_FOLD_CASE_DEFAULT));
        return {&m_one, 1};
    }

private:
    const FoldTable &m_table = FoldTable::shared();
    QStringView m_string;
    LineFeeds m_lineFeeds;
    qint64 m_position;
    char32_t m_one = 0;
};

/// How often a unit is met, in no unit of measure: what is looked for first is what is rare in the scripts that leave a
/// choice.
int commonness(char16_t unit)
{
    static constexpr QStringView kLettersByRarity = u"qzxjkvbpygfwmucldrhsnioate";
    if (unit == u' ' || unit == u'\n') {
        return 100;
    }
    const qsizetype rank = kLettersByRarity.indexOf(QChar(unit));
    return rank >= 0 ? static_cast<int>(rank) : unit < 0x80 ? 5 : 10;
}

qint64 unitCount(char32_t codePoint)
{
    return QChar::requiresSurrogates(codePoint) ? 2 : 1;
}

} // namespace

CaselessTermSearch::CaselessTermSearch(QStringView term, LineFeeds lineFeeds)
    : m_lineFeeds(lineFeeds)
    , m_folded(FoldTable::foldedTerm(term))
    , m_reach(static_cast<qint64>(2 * m_folded.size()))
{
    if (!m_folded.empty() && m_folded.size() <= kLongTerm) {
        choosePlaces();
        collectOddities();
    }
}

void CaselessTermSearch::choosePlaces()
{
    const FoldTable &table = FoldTable::shared();
    std::vector<Place> places;
    qint64 offset = 0;
    for (const char32_t codePoint : m_folded) {
        char32_t other = codePoint;
        if (codePoint == U' ' && m_lineFeeds == LineFeeds::AreBlanks) {
            other = U'\n';
        } else if (const auto found = table.variants.find(codePoint); found != table.variants.end()) {
            if (unitCount(found->second.front()) == unitCount(codePoint)) {
                other = found->second.front();
            }
        }
        const QString units = unitsOf(codePoint);
        const QString others = unitsOf(other);
        for (qsizetype i = 0; i < units.size(); ++i) {
            const char16_t unit = units[i].unicode();
            const auto spread = static_cast<char16_t>(unit ^ others[i].unicode());
            places.push_back({offset++, spread, static_cast<char16_t>(unit | spread)});
        }
    }
    std::stable_sort(places.begin(), places.end(),
                     [](const Place &a, const Place &b) { return commonness(a.value) < commonness(b.value); });
    m_first = places.front();
    m_second = places[std::min<size_t>(1, places.size() - 1)];
}

void CaselessTermSearch::collectOddities()
{
    const FoldTable &table = FoldTable::shared();
    const auto add = [this](char32_t codePoint) {
        const auto unit = unitsOf(codePoint).front().unicode();
        if (std::find(m_oddities.begin(), m_oddities.end(), unit) == m_oddities.end()) {
            m_oddities.push_back(unit);
        }
    };
    for (const char32_t codePoint : m_folded) {
        if (const auto found = table.variants.find(codePoint); found != table.variants.end()) {
            for (size_t i = 0; i < found->second.size(); ++i) {
                if (i > 0 || unitCount(found->second[i]) != unitCount(codePoint)) {
                    add(found->second[i]);
                }
            }
        }
    }
    for (const FoldTable::Expansion &expansion : table.expansions) {
        if (m_folded.find(expansion.folded) != std::u32string::npos) {
            add(expansion.codePoint);
        }
    }
}

qint64 CaselessTermSearch::matchAt(QStringView string, qint64 start) const
{
    if (start > 0 && string[start].isLowSurrogate() && string[start - 1].isHighSurrogate()) {
        return 0;
    }
    FoldedReader reader(string, m_lineFeeds, start);
    for (size_t done = 0; done < m_folded.size();) {
        if (reader.isAtEnd()) {
            return 0;
        }
        const std::u32string_view piece = reader.next();
        if (m_folded.compare(done, piece.size(), piece) != 0) {
            return 0;
        }
        done += piece.size();
    }
    return reader.position() - start;
}

NSRange CaselessTermSearch::findPlain(QStringView string, qint64 start, qint64 limit) const
{
    for (; start < std::min<qint64>(limit, string.size()); ++start) {
        if (const qint64 length = matchAt(string, start); length > 0) {
            return {start, length};
        }
    }
    return kNotFoundRange;
}

#if defined(__x86_64__)

namespace {

__attribute__((target("avx2"))) inline __m256i load(const char16_t *at)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i *>(at));
}

__attribute__((target("avx2"))) inline __m256i spreadOut(char16_t unit)
{
    return _mm256_set1_epi16(static_cast<short>(unit));
}

} // namespace

// OPTIMIZATION: sixteen places a turn. A match lies unit on unit upon the term, so that its two rarest units stand
// where the term has them, or it holds an oddity: then all places from which the oddity can be reached are tried.
__attribute__((target("avx2"))) NSRange CaselessTermSearch::findWide(QStringView string, qint64 limit) const
{
    constexpr qint64 kWidth = 16;
    const char16_t *const text = string.utf16();
    const qint64 size = string.size();
    const qint64 ahead = std::max(m_first.offset, m_second.offset) + kWidth;
    const __m256i firstSpread = spreadOut(m_first.spread);
    const __m256i firstValue = spreadOut(m_first.value);
    const __m256i secondSpread = spreadOut(m_second.spread);
    const __m256i secondValue = spreadOut(m_second.value);
    __m256i oddities[kMostOddities];
    const size_t oddityCount = std::min(m_oddities.size(), kMostOddities);
    for (size_t i = 0; i < oddityCount; ++i) {
        oddities[i] = spreadOut(m_oddities[i]);
    }
    qint64 verified = 0; // no match begins before
    qint64 place = 0;
    // A match that begins before the limit may hold an oddity behind it.
    for (; place + ahead <= size && place - m_reach < limit; place += kWidth) {
        // OPTIMIZATION: most stretches hold nothing of interest; four are asked together.
        for (; place + ahead + 3 * kWidth <= size && place - m_reach < limit; place += 4 * kWidth) {
            __m256i any = _mm256_setzero_si256();
            for (qint64 part = place; part < place + 4 * kWidth; part += kWidth) {
                const __m256i first = _mm256_or_si256(load(text + part + m_first.offset), firstSpread);
                const __m256i second = _mm256_or_si256(load(text + part + m_second.offset), secondSpread);
                any = _mm256_or_si256(any, _mm256_and_si256(_mm256_cmpeq_epi16(first, firstValue),
                                                            _mm256_cmpeq_epi16(second, secondValue)));
                for (size_t i = 0; i < oddityCount; ++i) {
                    any = _mm256_or_si256(any, _mm256_cmpeq_epi16(load(text + part), oddities[i]));
                }
            }
            if (_mm256_testz_si256(any, any) == 0) {
                break;
            }
        }
        if (place + ahead > size) {
            break;
        }
        const __m256i first = _mm256_or_si256(load(text + place + m_first.offset), firstSpread);
        const __m256i second = _mm256_or_si256(load(text + place + m_second.offset), secondSpread);
        const __m256i hits =
            _mm256_and_si256(_mm256_cmpeq_epi16(first, firstValue), _mm256_cmpeq_epi16(second, secondValue));
        __m256i odd = _mm256_setzero_si256();
        for (size_t i = 0; i < oddityCount; ++i) {
            odd = _mm256_or_si256(odd, _mm256_cmpeq_epi16(load(text + place), oddities[i]));
        }
        const __m256i any = _mm256_or_si256(hits, odd);
        if (_mm256_testz_si256(any, any) != 0) {
            continue;
        }
        if (_mm256_testz_si256(odd, odd) == 0) {
            const NSRange match =
                findPlain(string, std::max(verified, place - m_reach), std::min(limit, place + kWidth));
            if (match.isFound()) {
                return match;
            }
            verified = place + kWidth;
            continue;
        }
        auto mask = static_cast<uint32_t>(_mm256_movemask_epi8(hits)) & 0x55555555U;
        for (; mask != 0; mask &= mask - 1) {
            const qint64 start = place + __builtin_ctz(mask) / 2;
            if (start >= limit) {
                break;
            }
            if (const qint64 length = matchAt(string, start); length > 0) {
                // One that begins before may hold an oddity that was not reached yet.
                const NSRange earlier =
                    m_oddities.empty() ? kNotFoundRange : findPlain(string, std::max(verified, start - m_reach), start);
                return earlier.isFound() ? earlier : NSRange{start, length};
            }
        }
    }
    return findPlain(string, std::max(verified, place - m_reach), limit);
}

#endif

NSRange CaselessTermSearch::findLong(QStringView string, qint64 limit) const
{
    // The classic automaton: how much of the term's beginning stands at the end of what was read.
    std::vector<size_t> shorter(m_folded.size(), 0);
    for (size_t i = 1, state = 0; i < m_folded.size(); ++i) {
        while (state > 0 && m_folded[i] != m_folded[state]) {
            state = shorter[state - 1];
        }
        state += m_folded[i] == m_folded[state] ? 1U : 0U;
        shorter[i] = state;
    }
    // Where each of the last code points read began, or -1 for one within an expansion.
    std::vector<qint64> starts(m_folded.size(), -1);
    size_t count = 0;
    size_t state = 0;
    FoldedReader reader(string, m_lineFeeds, 0);
    while (!reader.isAtEnd()) {
        const qint64 start = reader.position();
        const std::u32string_view piece = reader.next();
        for (size_t i = 0; i < piece.size(); ++i) {
            starts[count++ % starts.size()] = i == 0 ? start : -1;
            while (state > 0 && (state == m_folded.size() || piece[i] != m_folded[state])) {
                state = shorter[state - 1];
            }
            state += piece[i] == m_folded[state] ? 1U : 0U;
            if (state < m_folded.size()) {
                continue;
            }
            const qint64 matchStart = starts[count % starts.size()];
            if (matchStart >= 0 && i + 1 == piece.size()) {
                return matchStart < limit ? NSRange{matchStart, reader.position() - matchStart} : kNotFoundRange;
            }
        }
        if (start - m_reach >= limit) {
            break;
        }
    }
    return kNotFoundRange;
}

NSRange CaselessTermSearch::firstMatchInString(QStringView string, qint64 startBefore) const
{
    const qint64 limit = std::min<qint64>(startBefore, string.size());
    if (m_folded.empty() || limit <= 0) {
        return kNotFoundRange;
    }
    if (m_folded.size() > kLongTerm) {
        return findLong(string, limit);
    }
#if defined(__x86_64__)
    static const bool s_isWide = __builtin_cpu_supports("avx2") != 0;
    if (s_isWide && m_oddities.size() <= kMostOddities) {
        return findWide(string, limit);
    }
#endif
    return findPlain(string, 0, limit);
}

} // namespace quib

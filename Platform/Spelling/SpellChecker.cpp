#include "SpellChecker.h"

#include "HunspellDictionary.h"

#include <Files/AtomicFile.h>

#include <QFileInfo>

#include <algorithm>
#include <array>

#include <unicode/ubrk.h>
#include <unicode/uscript.h>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// A paragraph is read so far. Units: UTF-16.
constexpr qsizetype kLongestParagraph = 100'000;
constexpr qsizetype kMostAnswers = 20'000;
constexpr qint64 kLargestOwnWords = 4 * 1024 * 1024;
/// A language that knows so many of a paragraph's words is the right one: no other is tried.
constexpr double kSureShare = 0.7;
/// One that knows fewer is not.
constexpr double kLeastShare = 0.4;

struct BreakCloser
{
    void operator()(UBreakIterator *iterator) const { ubrk_close(iterator); }
};

/// Whether the units between which a word stands make it a part of something else: an address, a path, a tag.
bool isPartOfMore(QStringView paragraph, NSRange range)
{
    static constexpr QStringView kJoining = u"@#\\/_~";
    const bool before = range.location > 0 && kJoining.contains(paragraph[range.location - 1]);
    const bool behind = range.limit() < paragraph.size() && kJoining.contains(paragraph[range.limit()]);
    return before || behind;
}

/// Letters in one case, or a capital before small ones; marks and apostrophes count as neither.
bool looksLikeAWord(QStringView word)
{
    if (word.size() < 2) {
        return false;
    }
    bool hasSmall = false;
    bool hasLaterCapital = false;
    for (qsizetype i = 0; i < word.size(); ++i) {
        const QChar unit = word[i];
        if (unit.isDigit() || unit == u'_' || unit == u'.' || unit == u':') {
            return false;
        }
        hasSmall = hasSmall || unit.isLower();
        hasLaterCapital = hasLaterCapital || (i > 0 && unit.isUpper());
    }
    const bool isCapitals = hasLaterCapital && !hasSmall;
    // "L'Aquila", but not "iPhone".
    const bool isMixed = hasLaterCapital && hasSmall && !word.contains(u'\'') && !word.contains(u'\u2019');
    return !isCapitals && !isMixed;
}

/// The scripts that a language is written in, by its name.
std::vector<int> scriptsOfLanguage(const QString &language)
{
    constexpr int32_t kMostScripts = 8;
    std::array<UScriptCode, kMostScripts> scripts{};
    UErrorCode status = U_ZERO_ERROR;
    const int32_t count = uscript_getCode(language.toLatin1().constData(), scripts.data(), kMostScripts, &status);
    return U_FAILURE(status) ? std::vector<int>() : std::vector<int>(scripts.begin(), scripts.begin() + count);
}

/// Whether a dictionary of some scripts can know a word: what is written otherwise is no mistake in its language.
bool isWrittenIn(const std::vector<int> &scripts, const QString &word)
{
    UErrorCode status = U_ZERO_ERROR;
    const UScriptCode script = uscript_getScript(static_cast<UChar32>(word.toUcs4().constFirst()), &status);
    return scripts.empty() || U_FAILURE(status) || script == USCRIPT_COMMON || script == USCRIPT_INHERITED ||
           std::ranges::find(scripts, static_cast<int>(script)) != scripts.end();
}

/// As dictionaries write it: composed, without soft hyphens, with straight apostrophes.
QString plainWord(QStringView word)
{
    QString plain = word.toString().normalized(QString::NormalizationForm_C);
    plain.remove(QChar(0x00AD));
    plain.replace(QChar(0x2019), u'\'');
    return plain;
}

} // namespace

SpellChecker::SpellChecker(Options options)
    : m_options(std::move(options))
{
}

SpellChecker::~SpellChecker() = default;

void SpellChecker::setLanguages(const QStringList &languages, bool hasOnlyLanguages)
{
    m_options.languages = languages;
    m_options.hasOnlyLanguages = hasOnlyLanguages;
    m_languages.clear();
    m_isPrepared = false;
}

void SpellChecker::prepare()
{
    if (m_isPrepared) {
        return;
    }
    m_isPrepared = true;
    auto found = spellingDictionariesInFolders(m_options.folders);
    if (m_options.hasOnlyLanguages) {
        found.removeIf(
            [this](const SpellingDictionaryFile &file) { return !m_options.languages.contains(file.language); });
    }
    const auto files = spellingDictionariesForLanguages(found, m_options.languages);
    for (const SpellingDictionaryFile &file : files.first(std::min(files.size(), kMostLanguages))) {
        Language &language = m_languages.emplace_back();
        language.file = file;
        language.scripts = scriptsOfLanguage(file.language);
    }
    for (const QString &word : wordsInFile(nullptr).value_or(QStringList())) {
        m_ownWords.insert(word);
    }
}

std::optional<QStringList> SpellChecker::wordsInFile(NSError *error) const
{
    if (!QFileInfo::exists(m_options.ownWordsPath)) {
        return QStringList();
    }
    const auto bytes = readWholeFile(m_options.ownWordsPath, error, kLargestOwnWords);
    if (!bytes) {
        return std::nullopt;
    }
    QStringList words;
    for (const QString &line : QString::fromUtf8(*bytes).split(u'\n')) {
        const QString word = plainWord(line.trimmed());
        if (!word.isEmpty() && word.size() <= HunspellDictionary::kLongestWord) {
            words.append(word);
        }
    }
    return words;
}

bool SpellChecker::load(Language &language)
{
    if (!language.isTried) {
        language.isTried = true;
        language.dictionary = HunspellDictionary::dictionaryWithFile(language.file, nullptr);
    }
    return language.dictionary != nullptr;
}

bool SpellChecker::isRight(Language &language, const QString &word)
{
    if (const auto known = language.answers.constFind(word); known != language.answers.constEnd()) {
        return *known;
    }
    if (language.answers.size() >= kMostAnswers) {
        language.answers.clear();
    }
    const bool right = language.dictionary->isRight(word);
    language.answers.insert(word, right);
    return right;
}

bool SpellChecker::isOwn(const QString &word) const
{
    if (m_ownWords.contains(word)) {
        return true;
    }
    QString small = word;
    small.front() = small.front().toLower();
    return m_ownWords.contains(small);
}

std::vector<SpellChecker::Word> SpellChecker::wordsOf(QStringView paragraph, std::span<const NSRange> skipped)
{
    const QStringView read = paragraph.first(std::min(paragraph.size(), kLongestParagraph));
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UBreakIterator, BreakCloser> iterator(ubrk_open(
        UBRK_WORD, "en", reinterpret_cast<const UChar *>(read.utf16()), static_cast<int32_t>(read.size()), &status));
    std::vector<Word> words;
    if (U_FAILURE(status)) {
        return words;
    }
    auto skip = skipped.begin();
    int32_t start = ubrk_first(iterator.get());
    for (int32_t end = ubrk_next(iterator.get()); end != UBRK_DONE; start = end, end = ubrk_next(iterator.get())) {
        const int32_t kind = ubrk_getRuleStatus(iterator.get());
        const NSRange range{start, end - start};
        // Letters; ideographs and kana are in no dictionary.
        if (kind < UBRK_WORD_LETTER || kind >= UBRK_WORD_LETTER_LIMIT ||
            range.length > HunspellDictionary::kLongestWord) {
            continue;
        }
        while (skip != skipped.end() && skip->limit() < range.location) {
            ++skip;
        }
        const bool isSkipped = skip != skipped.end() && skip->location <= range.limit();
        const QStringView word = read.sliced(range.location, range.length);
        if (isSkipped || !looksLikeAWord(word) || isPartOfMore(read, range)) {
            continue;
        }
        if (QString plain = plainWord(word); !plain.isEmpty()) {
            words.push_back({range, std::move(plain)});
        }
    }
    return words;
}

SpellChecker::Language *SpellChecker::languageOfWords(const std::vector<Word> &words)
{
    const auto sample = std::span(words).first(std::min<size_t>(words.size(), kWordsToGuessBy));
    const bool isEnough = sample.size() >= kFewestWordsToGuessBy;
    Language *best = nullptr;
    double bestShare = -1;
    for (Language &language : m_languages) {
        // A word or two are no reason to load another language.
        const bool mayLoad = isEnough || best == nullptr;
        if ((!mayLoad && language.dictionary == nullptr) || !load(language)) {
            continue;
        }
        const auto known = std::ranges::count_if(
            sample, [this, &language](const Word &word) { return isOwn(word.text) || isRight(language, word.text); });
        const double share = static_cast<double>(known) / static_cast<double>(sample.size());
        if (share > bestShare) {
            best = &language;
            bestShare = share;
        }
        if (share >= kSureShare) {
            break;
        }
    }
    return isEnough && bestShare < kLeastShare ? nullptr : best;
}

std::vector<NSRange> SpellChecker::misspeltRangesInParagraph(QStringView paragraph, std::span<const NSRange> skipped)
{
    prepare();
    std::vector<NSRange> misspelt;
    if (m_languages.empty()) {
        return misspelt;
    }
    const std::vector<Word> words = wordsOf(paragraph, skipped);
    Language *language = words.empty() ? nullptr : languageOfWords(words);
    if (language == nullptr) {
        return misspelt;
    }
    for (const Word &word : words) {
        if (!isOwn(word.text) && isWrittenIn(language->scripts, word.text) && !isRight(*language, word.text)) {
            misspelt.push_back(word.range);
            if (static_cast<qsizetype>(misspelt.size()) == kMostMarks) {
                break;
            }
        }
    }
    return misspelt;
}

QStringList SpellChecker::suggestionsForWord(const QString &word, QStringView inParagraph)
{
    prepare();
    const std::vector<Word> words = wordsOf(inParagraph, {});
    const Language *language = words.empty() ? nullptr : languageOfWords(words);
    return language != nullptr ? language->dictionary->suggestionsForWord(plainWord(word)) : QStringList();
}

void SpellChecker::ignoreWord(const QString &word)
{
    prepare();
    if (const QString plain = plainWord(word); !plain.isEmpty()) {
        m_ownWords.insert(plain);
    }
}

bool SpellChecker::learnWord(const QString &word, NSError *error)
{
    ignoreWord(word);
    const QString plain = plainWord(word);
    // Others may have added words meanwhile: they stay.
    auto words = wordsInFile(error);
    if (!words || plain.isEmpty() || plain.contains(u'\n') || words->contains(plain)) {
        return words.has_value();
    }
    words->append(plain);
    return ensureFolder(QFileInfo(m_options.ownWordsPath).path(), error) &&
           writeFileAtomically(m_options.ownWordsPath, QString(words->join(u'\n') % u'\n').toUtf8(), error);
}

} // namespace quib

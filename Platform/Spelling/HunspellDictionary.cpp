#include "HunspellDictionary.h"

#include "HunspellProcess.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>

#include <unicode/ucnv.h>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// The largest dictionaries that are around are a fourth as large. Units: bytes.
constexpr qint64 kLargestAffixes = 16 * 1024 * 1024;
constexpr qint64 kLargestWords = 64 * 1024 * 1024;
/// The words' file begins with their number, by which memory is taken: it may be a little wrong, as many are.
constexpr qint64 kNumberTolerance = 10'000;
/// The longest encoded word. Units: bytes.
constexpr qsizetype kLongestEncoded = HunspellDictionary::kLongestWord * 4;

struct ConverterCloser
{
    void operator()(UConverter *converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

/// Errors: null for an encoding that nobody knows.
Converter converterForEncoding(QByteArray encoding)
{
    // What dictionaries call otherwise than the rest of the world.
    if (encoding.startsWith("microsoft-")) {
        encoding.remove(0, 10);
    } else if (encoding.startsWith("TIS620")) {
        encoding = "TIS-620";
    }
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(encoding.constData(), &status));
    if (U_SUCCESS(status)) {
        // A character that the encoding lacks is an error, not a question mark.
        ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    }
    return U_SUCCESS(status) ? std::move(converter) : nullptr;
}

bool isPlausible(const SpellingDictionaryFile &file)
{
    const QFileInfo affixes(file.affixPath);
    QFile words(file.wordsPath);
    if (!affixes.isFile() || affixes.size() > kLargestAffixes || !QFileInfo(file.wordsPath).isFile() ||
        words.size() > kLargestWords || !words.open(QIODevice::ReadOnly)) {
        return false;
    }
    QByteArray firstLine = words.readLine(200);
    if (firstLine.startsWith("\xEF\xBB\xBF")) {
        firstLine.remove(0, 3);
    }
    bool isNumber = false;
    const qint64 number = firstLine.simplified().split(' ').value(0).toLongLong(&isNumber);
    return isNumber && number > 0 && number <= words.size() + kNumberTolerance;
}

} // namespace

struct HunspellDictionary::Handle
{
    std::unique_ptr<HunspellProcess> process;
    Converter converter;

    /// Empty for a word that the encoding has not.
    [[nodiscard]] QByteArray encoded(const QString &word) const
    {
        std::array<char, kLongestEncoded + 1> bytes{};
        UErrorCode status = U_ZERO_ERROR;
        const int32_t size =
            ucnv_fromUChars(converter.get(), bytes.data(), static_cast<int32_t>(kLongestEncoded),
                            reinterpret_cast<const UChar *>(word.utf16()), static_cast<int32_t>(word.size()), &status);
        return U_SUCCESS(status) && size > 0 && size <= kLongestEncoded ? QByteArray(bytes.data(), size) : QByteArray();
    }

    [[nodiscard]] QString decoded(const QByteArray &bytes) const
    {
        std::array<UChar, kLongestEncoded> units{};
        UErrorCode status = U_ZERO_ERROR;
        const int32_t size = ucnv_toUChars(converter.get(), units.data(), static_cast<int32_t>(units.size()),
                                           bytes.constData(), static_cast<int32_t>(bytes.size()), &status);
        return U_SUCCESS(status) ? QString(reinterpret_cast<const QChar *>(units.data()), size) : QString();
    }
};

HunspellDictionary::HunspellDictionary(std::unique_ptr<Handle> handle)
    : m_handle(std::move(handle))
{
}

HunspellDictionary::~HunspellDictionary() = default;

std::unique_ptr<HunspellDictionary> HunspellDictionary::dictionaryWithFile(const SpellingDictionaryFile &file,
                                                                           NSError *error)
{
    const auto fail = [error, &file](const QString &why) -> std::unique_ptr<HunspellDictionary> {
        if (error != nullptr) {
            *error = NSError(u"SpellingErrorDomain"_s, 1, QString(file.wordsPath % u": "_s % why));
        }
        return nullptr;
    };
    if (!isPlausible(file)) {
        return fail(u"the dictionary is missing, too large, or does not begin with the number of its words"_s);
    }
    auto handle = std::make_unique<Handle>();
    handle->process =
        HunspellProcess::processWithFiles(QFile::encodeName(file.affixPath), QFile::encodeName(file.wordsPath));
    if (handle->process == nullptr) {
        return fail(u"the dictionary is broken"_s);
    }
    handle->converter = converterForEncoding(handle->process->encoding());
    if (handle->converter == nullptr) {
        return fail(u"the dictionary's encoding is not known"_s);
    }
    return std::unique_ptr<HunspellDictionary>(new HunspellDictionary(std::move(handle)));
}

bool HunspellDictionary::isRight(const QString &word) const
{
    if (word.isEmpty() || word.size() > kLongestWord || word.contains(QChar(u'\0'))) {
        return true;
    }
    const QByteArray encoded = m_handle->encoded(word);
    return encoded.isEmpty() || m_handle->process->isRight(encoded).value_or(true);
}

QStringList HunspellDictionary::suggestionsForWord(const QString &word) const
{
    const QByteArray encoded =
        word.size() > kLongestWord || word.contains(QChar(u'\0')) ? QByteArray() : m_handle->encoded(word);
    const QByteArray found =
        encoded.isEmpty() ? QByteArray() : m_handle->process->suggestions(encoded).value_or(QByteArray());
    QStringList suggestions;
    for (const QByteArray &line : found.split('\n')) {
        const QString suggestion = line.size() <= kLongestEncoded ? m_handle->decoded(line) : QString();
        if (!suggestion.isEmpty() && !suggestions.contains(suggestion)) {
            suggestions.append(suggestion);
        }
        if (suggestions.size() == kMostSuggestions) {
            break;
        }
    }
    return suggestions;
}

} // namespace quib

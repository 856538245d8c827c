// Holds the language detector to the patterns of its table, as the expression engine matches them, on any text.

#include <Code/QBCodeLanguageDetector.h>
#include <Text/LinePattern.h>
#include <Text/NSRegularExpression.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

using quib::LineAlphabet;
using quib::LinePattern;

namespace {

struct Pair
{
    LinePattern scanned;
    std::shared_ptr<const NSRegularExpression> matched;
};

std::vector<Pair> pairsOfTable()
{
    std::vector<Pair> pairs;
    for (const QBCodeLanguage &language : QBCodeLanguageDetector::languages()) {
        for (const QBCodeLanguageChecker &checker : language.checkers) {
            pairs.push_back({LinePattern(checker.pattern, LinePattern::Case::Insensitive),
                             NSRegularExpression::regularExpressionWithPattern(checker.pattern,
                                                                               NSRegularExpression::CaseInsensitive)});
        }
    }
    return pairs;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, size_t size)
{
    static std::vector<Pair> pairs = pairsOfTable();
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    std::vector<LineAlphabet::Letter> letters;
    for (const QStringView whole : QStringView(text).split(u'\n')) {
        // Beyond that the expression engine may give up, and the patterns define nothing.
        const QStringView line = whole.first(qMin<qsizetype>(whole.size(), 60));
        LineAlphabet::shared().spell(line, letters);
        for (Pair &pair : pairs) {
            if (pair.scanned.isFoundIn(letters) !=
                pair.matched->firstMatchInString(line, 0, {0, line.size()}).has_value()) {
                std::abort();
            }
        }
    }
    const QBCodeLanguageDetector detector;
    const QString language = detector.detectLanguageWithString(text);
    // Neither the kind of the line ends nor empty lines between others decide anything.
    QString spread = text;
    spread.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    spread.replace(QStringLiteral("\n"), QStringLiteral("\r\n\r"));
    if (language.isEmpty() || detector.detectLanguageWithString(spread) != language) {
        std::abort();
    }
    return 0;
}

#include "DefinedResults.h"

#include <Text/NSRegularExpression.h>

#include <QHash>

#include <memory>

QBCodeLanguageDetector::ResultArray quib::tests::definedResults(const QList<QStringView> &lines)
{
    static const auto expressions = [] {
        QHash<QString, std::shared_ptr<const NSRegularExpression>> built;
        for (const QBCodeLanguage &language : QBCodeLanguageDetector::languages()) {
            for (const QBCodeLanguageChecker &checker : language.checkers) {
                built.insert(checker.pattern, NSRegularExpression::regularExpressionWithPattern(
                                                  checker.pattern, NSRegularExpression::CaseInsensitive));
            }
        }
        return built;
    }();
    auto results = QBCodeLanguageDetector::buildResultsArray();
    for (const QBCodeLanguage &language : QBCodeLanguageDetector::languages()) {
        qint64 sum = language.language == u"Unknown" ? 1 : 0;
        for (const QBCodeLanguageChecker &checker : language.checkers) {
            for (qsizetype index = 0; index < lines.size(); ++index) {
                if ((!checker.neartop || QBCodeLanguageDetector::isNearTop(index, lines)) &&
                    expressions[checker.pattern]->firstMatchInString(lines[index], 0, {0, lines[index].size()})) {
                    sum += checker.points;
                }
            }
        }
        QBCodeLanguageDetector::updateResultArray(results, language.language, sum);
    }
    return results;
}

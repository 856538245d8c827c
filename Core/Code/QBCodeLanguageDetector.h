#pragma once

#include "QBCodeLanguage.h"

#include <QList>
#include <QString>
#include <QStringView>

/// Names the likely programming language of a text: each line in which one of a language's patterns is found votes for
/// or against it. All that is known of the languages is one table, the same for the life of the process; an instance
/// has nothing of its own. Main queue. The time is linear in the text, whatever the text is: 1 MB takes some 0.5 s.
///
/// Pasted code is named so:
///     QBNotePasteFromCoreController paste([](const QString &code) {
///         return QBCodeLanguageDetector().detectLanguageWithString(code);
///     });
class QBCodeLanguageDetector
{
public:
    using ResultArray = QList<QBCodeLanguageResult>;

    /// The language with the most points; of several the first of the result array.
    /// Shape: "java", "javascript", "c", "c++", "python", "html", "css", "ruby", "php", "objective-c", "swift" or
    /// "Unknown"; that also for a null or empty text. Line ends may be of any kind, empty lines don't count.
    [[nodiscard]] QString detectLanguageWithString(const QString &string) const;

    // MARK: Its steps

    /// The table. Its last language is "Unknown", which has no checkers and gets one point.
    [[nodiscard]] static const QList<QBCodeLanguage> &languages();
    /// A record of no points for each language, in the order that decides between equals. "go" is among them, though
    /// the table does not know it: it never wins.
    [[nodiscard]] static ResultArray buildResultsArray();
    /// Adds points to the record of a language; a language without one is passed over.
    static void updateResultArray(ResultArray &resultArray, const QString &withLanguage, qint64 points);
    /// What detection sorts: the points of a text that is not empty.
    [[nodiscard]] static ResultArray resultArrayForLines(const QList<QStringView> &lines);

    /// Whether a line, counted from 0, is in the top tenth; every line of a text of ten or less.
    [[nodiscard]] static bool isNearTop(qint64 index, const QList<QStringView> &lines);
    /// Whether what looks like JavaScript names classes as Swift does, on two occasions.
    [[nodiscard]] static bool checkIfSwiftAgainstJavascript(const QList<QStringView> &lines);
    /// Whether what looks like Objective-C declares as Swift does.
    [[nodiscard]] static bool checkIfSwiftAgainstObjectiveC(const QList<QStringView> &lines);
};

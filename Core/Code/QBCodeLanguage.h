#pragma once

#include <QList>
#include <QString>

/// What speaks for a language, or against it: lines in which a pattern is found. A value.
struct QBCodeLanguageChecker
{
    /// Searched without regard to case.
    QString pattern;
    /// What a line counts, however often the pattern is found in it. Below 0: evidence against; -50 is a veto.
    int points = 0;
    /// Only the top tenth of the text is looked at.
    bool neartop = false;
};

/// A language and what tells it. A value.
struct QBCodeLanguage
{
    QString language;
    QList<QBCodeLanguageChecker> checkers;
};

/// What a language got. A value.
struct QBCodeLanguageResult
{
    QString language;
    qint64 points = 0;
    friend bool operator==(const QBCodeLanguageResult &a, const QBCodeLanguageResult &b) = default;
};

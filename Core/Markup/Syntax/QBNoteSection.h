#pragma once

#include <Foundation/NSRange.h>

#include <QList>
#include <QString>

/// One heading of a text with what follows it, up to the next heading of the levels 1 to 3. A value.
/// Units: UTF-16 code units from the text's beginning.
struct QBNoteSection
{
    /// Trimmed.
    QString title;
    /// The heading's whole paragraph, line end included.
    qint64 titleLocation = 0;
    qint64 titleLength = 0;
    qint64 sectionLocation = 0;
    qint64 sectionLength = 0;

    [[nodiscard]] NSRange titleRange() const { return {titleLocation, titleLength}; }
    [[nodiscard]] NSRange sectionRange() const { return {sectionLocation, sectionLength}; }
    /// The title in lower case, trimmed of white space and line ends: how URLs name a section.
    [[nodiscard]] QString titleForXURL() const;
    friend bool operator==(const QBNoteSection &a, const QBNoteSection &b) = default;

    /// The sections of a text in its order. A heading without a title makes none.
    [[nodiscard]] static QList<QBNoteSection> noteSectionsInText(const QString &text);
};

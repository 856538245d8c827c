#pragma once

#include <QString>
#include <QStringView>

#include <functional>

/// Reads a string piece by piece from left to right. A piece that is not there leaves the location unchanged. Nothing
/// is skipped between pieces unless told. A value; compares units exactly unless told. Units: locations are UTF-16 code
/// units from 0.
class NSScanner
{
public:
    using CharacterSet = std::function<bool(char16_t unit)>;

    explicit NSScanner(QString string);

    [[nodiscard]] const QString &string() const { return m_string; }
    [[nodiscard]] qint64 scanLocation() const { return m_location; }
    /// Requires: a location in the string or at its end.
    void setScanLocation(qint64 scanLocation);
    /// The units passed over before each piece; an empty function, which is the start, passes over none.
    void setCharactersToBeSkipped(CharacterSet characters) { m_skipped = std::move(characters); }
    void setCaseSensitive(bool caseSensitive);
    /// True when nothing but skipped units is left.
    [[nodiscard]] bool isAtEnd() const;

    /// Reads the string given. False, reading nothing, when something else stands here or the string is empty.
    bool scanString(QStringView string, QString *intoString = nullptr);
    /// Reads up to the string given, or to the end where it does not follow. False when nothing lies between.
    bool scanUpToString(QStringView string, QString *intoString = nullptr);
    /// Reads the longest run of units of the set. False when there is none.
    bool scanCharactersFromSet(const CharacterSet &set, QString *intoString = nullptr);
    /// Reads the longest run of units outside of the set. False when there is none.
    bool scanUpToCharactersFromSet(const CharacterSet &set, QString *intoString = nullptr);
    /// Reads a decimal number with an optional sign. A number too large is read to its end and gives the largest, or
    /// the smallest, one.
    bool scanInteger(qint64 *value);

private:
    /// The location behind the skipped units.
    [[nodiscard]] qint64 startOfPiece() const;
    void take(qint64 start, qint64 limit, QString *intoString);

    QString m_string;
    qint64 m_location = 0;
    CharacterSet m_skipped;
    Qt::CaseSensitivity m_caseSensitivity = Qt::CaseSensitive;
};

#pragma once

#include <QString>
#include <QUrl>

#include <optional>

/// The token by which a script may read notes through URLs. It lies in a file of this machine that only its user can
/// read, and never travels. Main queue.
class QBXurlTokenController
{
public:
    /// Over the folder "XURL Token" of the profile's application support, which is made where it is missing.
    QBXurlTokenController();

    [[nodiscard]] const QUrl &baseURL() const { return m_baseURL; }

    /// The token in the file; nothing without a file, and for an empty one.
    [[nodiscard]] std::optional<QString> token() const;
    /// The token that is there, else a new one, stored: this never replaces a token. A failure to store is logged.
    [[nodiscard]] QString generateToken();
    /// A new token in place of the one that is there, which is worth nothing from then on. It is made of chance: nobody
    /// can tell it from the time of its making. A failure to store is logged.
    QString renewToken();
    /// Whether there is a token and it is this one. The time taken does not tell where the two differ.
    [[nodiscard]] bool isTokenValid(const QString &token) const;

    /// Compares in a time that depends on the lengths alone.
    [[nodiscard]] static bool areEqualInConstantTime(QStringView a, QStringView b);

private:
    [[nodiscard]] QString filePath() const;
    void store(const QString &token) const;

    QUrl m_baseURL;
};

#include "QBXurlTokenController.h"

#include <Files/AtomicFile.h>
#include <Files/Profile.h>
#include <Logging/QBLogger.h>
#include <Search/QBDateHelper.h>

#include <QCryptographicHash>
#include <QFile>
#include <QRandomGenerator>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kLongestTokenFile = 4096;

/// Which bytes of the digest make the token, in their order.
constexpr std::array<qsizetype, 9> kTokenBytes = {1, 9, 4, 6, 3, 8, 5, 12, 15};

QString tokenOfDigest(const QByteArray &digest)
{
    QString made;
    for (size_t i = 0; i < kTokenBytes.size(); ++i) {
        if (i > 0 && i % 3 == 0) {
            made.append(u'-');
        }
        made.append(QString::fromLatin1(digest.sliced(kTokenBytes.at(i), 1).toHex().toUpper()));
    }
    return made;
}

} // namespace

QBXurlTokenController::QBXurlTokenController()
    : m_baseURL(QUrl::fromLocalFile(quib::Profile::applicationSupportFolder() % u"/XURL Token"))
{
    NSError error;
    if (!quib::ensureFolder(m_baseURL.toLocalFile(), &error)) {
        QBLogError(error.localizedDescription());
    }
}

QString QBXurlTokenController::filePath() const
{
    return m_baseURL.toLocalFile() % u"/url.token";
}

std::optional<QString> QBXurlTokenController::token() const
{
    const auto bytes = quib::readWholeFile(filePath(), nullptr, kLongestTokenFile);
    if (!bytes || bytes->isEmpty()) {
        return std::nullopt;
    }
    return QString::fromUtf8(*bytes);
}

QString QBXurlTokenController::generateToken()
{
    if (const auto present = token()) {
        QFile::setPermissions(filePath(), QFile::ReadOwner | QFile::WriteOwner);
        return *present;
    }
    const QString made = tokenOfDigest(
        QCryptographicHash::hash(QBDateHelper::currentDateWithFormat(0).toUtf8(), QCryptographicHash::Md5));
    store(made);
    return made;
}

QString QBXurlTokenController::renewToken()
{
    std::array<quint32, 4> chance{};
    QRandomGenerator::system()->fillRange(chance.data(), qsizetype(chance.size()));
    const QString made = tokenOfDigest(QByteArray(reinterpret_cast<const char *>(chance.data()), sizeof chance));
    store(made);
    return made;
}

void QBXurlTokenController::store(const QString &token) const
{
    NSError error;
    if (!quib::ensureFolder(m_baseURL.toLocalFile(), &error) ||
        !quib::writeFileAtomically(filePath(), token.toUtf8(), &error)) {
        QBLogError(error.localizedDescription());
        return;
    }
    // A file that stood there empty kept its mode.
    QFile::setPermissions(filePath(), QFile::ReadOwner | QFile::WriteOwner);
}

bool QBXurlTokenController::isTokenValid(const QString &token) const
{
    const auto present = this->token();
    return present && areEqualInConstantTime(*present, token);
}

bool QBXurlTokenController::areEqualInConstantTime(QStringView a, QStringView b)
{
    if (a.size() != b.size()) {
        return false;
    }
    unsigned difference = 0;
    for (qsizetype i = 0; i < a.size(); ++i) {
        difference |= static_cast<unsigned>(a[i].unicode() ^ b[i].unicode());
        // The compiler must not end the loop once it knows the answer.
        asm volatile("" : "+r"(difference));
    }
    return difference == 0;
}

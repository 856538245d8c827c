#pragma once

#include <QString>

#include <utility>

/// The domain of file and store errors whose codes stand in NSCocoaErrorCode.
inline constexpr QLatin1StringView kNSCocoaErrorDomain{"NSCocoaErrorDomain"};

/// An error of an operation: domain, code and message, with the foreign code that caused it where there was one.
/// A value. A default-made one means "no error". Callers branch on domain and code; the message is for people and logs:
/// lower case, no full stop, it names the object or the path and carries no note text.
class NSError
{
public:
    NSError() = default;
    NSError(QString domain, qint64 code, QString message, qint64 causeCode = 0)
        : m_domain(std::move(domain))
        , m_code(code)
        , m_message(std::move(message))
        , m_causeCode(causeCode)
    {
    }

    [[nodiscard]] bool isSet() const { return !m_domain.isEmpty(); }
    [[nodiscard]] const QString &domain() const { return m_domain; }
    [[nodiscard]] qint64 code() const { return m_code; }
    [[nodiscard]] const QString &localizedDescription() const { return m_message; }
    /// The code of the library that failed (an SQLite result, an errno), or 0.
    [[nodiscard]] qint64 causeCode() const { return m_causeCode; }

    /// Fills an out error that may be null, and gives false, so that a failing function ends in one line.
    static bool fill(NSError *error, QString domain, qint64 code, QString message, qint64 causeCode = 0)
    {
        if (error != nullptr) {
            *error = NSError(std::move(domain), code, std::move(message), causeCode);
        }
        return false;
    }

private:
    QString m_domain;
    qint64 m_code = 0;
    QString m_message;
    qint64 m_causeCode = 0;
};

/// Codes of kNSCocoaErrorDomain.
enum class NSCocoaErrorCode : qint64
{
    FileNoSuchFile = 4,
    FileLocking = 255,
    FileReadUnknown = 256,
    FileReadNoPermission = 257,
    FileReadCorruptFile = 259,
    FileReadTooLarge = 263,
    FileWriteUnknown = 512,
    FileWriteNoPermission = 513,
    FileWriteInvalidFileName = 514,
    FileWriteFileExists = 516,
    FileWriteOutOfSpace = 640,
    FileWriteVolumeReadOnly = 642,
    PropertyListReadCorrupt = 3840,
    PropertyListWriteInvalid = 3851,
    PersistentStoreIncompatibleVersion = 134100,
    PersistentStoreOpen = 134080,
    PersistentStoreSave = 134030,
    PersistentStoreTimeout = 134090,
    PersistentStoreCorrupt = 134060,
    ManagedObjectMerge = 133020,
    MigrationMissingSourceModel = 134130,
    MigrationMissingMappingModel = 134140,
    Migration = 134110,
};

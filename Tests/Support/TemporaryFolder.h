#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace quib::tests {

/// An empty folder that goes away, with all in it, at the end of the test.
class TemporaryFolder
{
public:
    TemporaryFolder();

    [[nodiscard]] QString path() const { return m_folder.path(); }
    /// The path of an item in the folder; nothing is made.
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

    /// Writes a file, making the folders above it; gives its path. A failure fails the test.
    QString write(const QString &name, const QByteArray &bytes) const;
    /// The bytes of a file in the folder; null when there is none.
    [[nodiscard]] QByteArray read(const QString &name) const;
    [[nodiscard]] bool contains(const QString &name) const;
    /// The names in a folder below, hidden ones too, sorted.
    [[nodiscard]] QStringList names(const QString &folder = QString()) const;

private:
    QTemporaryDir m_folder;
};

} // namespace quib::tests

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace quib::tests {

TemporaryFolder::TemporaryFolder()
{
    EXPECT_TRUE(m_folder.isValid());
}

QString TemporaryFolder::write(const QString &name, const QByteArray &bytes) const
{
    const QString file = path(name);
    EXPECT_TRUE(QDir().mkpath(QFileInfo(file).path()));
    QFile written(file);
    EXPECT_TRUE(written.open(QIODevice::WriteOnly)) << qPrintable(file);
    EXPECT_EQ(written.write(bytes), bytes.size());
    return file;
}

QByteArray TemporaryFolder::read(const QString &name) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray bytes = file.readAll();
    return bytes.isNull() ? QByteArray("") : bytes;
}

bool TemporaryFolder::contains(const QString &name) const
{
    return QFileInfo::exists(path(name));
}

QStringList TemporaryFolder::names(const QString &folder) const
{
    return QDir(path(folder))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace quib::tests

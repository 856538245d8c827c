#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// What one run of quibctl gave.
struct QuibctlResult
{
    int exitStatus = -1;
    QByteArray output;
    QByteArray messages;

    [[nodiscard]] QString line() const { return QString::fromUtf8(output).trimmed(); }
    [[nodiscard]] QJsonDocument json() const { return QJsonDocument::fromJson(output); }
};

/// A profile of its own in a temporary folder, and quibctl run on it as a program, with a fixed home, locale and zone.
class QuibctlRunner
{
public:
    QuibctlRunner();

    /// Runs to the end, with input on standard input.
    QuibctlResult run(const QStringList &arguments, const QByteArray &input = {}) const;
    /// Runs, expects status 0, and gives the trimmed output.
    QString done(const QStringList &arguments, const QByteArray &input = {}) const;

    [[nodiscard]] QString profile() const { return m_folder.path() + u"/profile"; }
    [[nodiscard]] QString folder() const { return m_folder.path(); }
    /// Writes a file into the folder beside the profile and gives its path.
    [[nodiscard]] QString file(const QString &name, const QByteArray &bytes) const;
    [[nodiscard]] static QString program();
    [[nodiscard]] QStringList environment() const;

private:
    QTemporaryDir m_folder;
};

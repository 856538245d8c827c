#pragma once

#include <Foundation/NSError.h>

#include <QString>

#include <optional>

/// Small text files in the user's documents folder. Names stand for one item of the folder; others are refused. Any
/// thread.
class QBFileHelper
{
public:
    /// The one instance, over the documents of the profile in force at each call.
    [[nodiscard]] static QBFileHelper &sharedHelper();

    [[nodiscard]] bool createDirectoryWithName(const QString &name, NSError *error = nullptr);
    /// "DOCUMENTS/NAME".
    [[nodiscard]] QString getDirectoryPathWithName(const QString &name) const;
    /// "DOCUMENTS/data.plist".
    [[nodiscard]] QString getDataPlistPath() const;
    /// Writes a text as UTF-8, in one step. A user's file is new with the mode that the user gives to new files; any
    /// other is private.
    [[nodiscard]] bool writeFileWithName(const QString &name, const QString &andText, bool userFile,
                                         NSError *error = nullptr);
    [[nodiscard]] std::optional<QString> loadFileForName(const QString &name, NSError *error = nullptr) const;
    bool deleteFileForName(const QString &name);
    /// Errors: as for files; a name that is taken stays as it is.
    [[nodiscard]] bool renameFile(const QString &name, const QString &toNewName, NSError *error = nullptr);
    [[nodiscard]] bool fileExistsWithName(const QString &name) const;
};

#pragma once

#include "InstanceRequest.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

class QIODevice;

namespace quib {

/// What the words on the command line of quib ask for. A value.
struct LaunchOptions
{
    /// The folder of the profile; null where the environment decides.
    QString profile;
    bool send = false;
    bool newNote = false;
    bool quickNote = false;
    /// Set for --search; the text to search for may be empty.
    std::optional<QString> search;
    /// Started by the session bus: asked for nothing yet.
    bool isService = false;
    bool showsHelp = false;
    bool showsVersion = false;
    /// Files and URLs as they were given.
    QStringList words;

    /// Errors: nullopt, with a message for the user, for options that do not exist or do not go together.
    /// Shape:   the words without the program's own name.
    [[nodiscard]] static std::optional<LaunchOptions> parse(const QStringList &words, QString *message);

    /// What an instance is asked to do. Files are told by absolute paths, so that it does not matter where it runs.
    /// Texts for --send are read from the device given.
    /// Errors: nullopt, with a message, for a file that is not there, a URL that is none of ours, an input too large.
    [[nodiscard]] std::optional<std::vector<InstanceRequest>> requests(QIODevice &input, QString *message) const;

    [[nodiscard]] static QString helpText();

    /// The largest text that --send takes. Units: bytes.
    static constexpr qint64 kLargestText = 64 * 1024 * 1024;
};

} // namespace quib

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace quib {

/// One thing that an instance of the application is asked to do, by its own command line, by another process's, or over
/// the bus. A value.
struct InstanceRequest
{
    enum class Kind : quint8
    {
        Activate, ///< show yourself
        Open,     ///< uris: files and URLs of the program's own scheme
        Action,   ///< action, with an argument that may be empty
        SendURIs, ///< a note of uris: files or URLs of any kind
        SendText, ///< a note of text
    };

    Kind kind = Kind::Activate;
    QStringList uris = {};
    QString action = {};
    QString argument = {};
    QByteArray text = {}; ///< UTF-8, or UTF-16 with its mark

    friend bool operator==(const InstanceRequest &, const InstanceRequest &) = default;
};

/// The actions that an instance knows; the first three are those of the program's icon.
inline constexpr QLatin1StringView kActionNewNote{"new-note"};
inline constexpr QLatin1StringView kActionQuickNote{"quick-note"};
inline constexpr QLatin1StringView kActionSearch{"search"};
inline constexpr QLatin1StringView kActionShow{"show"};
inline constexpr QLatin1StringView kActionOpenLink{"open-link"};
inline constexpr QLatin1StringView kActionQuit{"quit"};

} // namespace quib

#pragma once

#include <Graphics/NSColor.h>
#include <Graphics/NSImage.h>

#include <QString>

#include <optional>

/// A row of the panel of formatting. A value.
struct QBStyleItem
{
    QString name;
    /// As it is shown beside the name.
    QString hotkey;
    NSImage image;
    std::optional<NSColor> separatorColor;
    /// The command that it runs.
    QString selector;
    /// A line between groups, without a command.
    bool separator = false;
};

#pragma once

#include "Command.h"

#include <QString>

namespace quib::cli {

/// "quibctl new [OPTIONS] [FILE|-]".
[[nodiscard]] QString usageLine(const Command &command);
/// The page of --help: usage, what it does, options, an example.
[[nodiscard]] QString helpForCommand(const Command &command);
[[nodiscard]] QString helpForAllCommands();
/// quibctl(1) in man's own markup.
[[nodiscard]] QString manualPage();
/// Errors: an empty text for a shell that is none of bash, zsh and fish.
[[nodiscard]] QString completionScript(const QString &shell);

} // namespace quib::cli

#pragma once

#include "Command.h"

#include <QString>

#include <memory>
#include <optional>

class QBTheme;
class QCommandLineParser;

namespace quib::cli {

/// What --syntax says: 0 native, which is the default, or 1 Markdown.
/// Errors: nullopt after it was told what it may be.
[[nodiscard]] std::optional<int> syntaxOfOptions(const QCommandLineParser &parser);
/// The text of the file that the first argument names, or of standard input.
/// Errors: nullopt after the reason was told; status is then what the process ends with.
[[nodiscard]] std::optional<QString> textOfInput(const QCommandLineParser &parser, ExitStatus *status);

[[nodiscard]] std::optional<QString> textOfFile(const QString &path, ExitStatus *status);
/// The text theme that --theme and --font name, or the default one.
/// Errors: null after "there is no theme ..." was told.
[[nodiscard]] std::shared_ptr<QBTheme> textThemeOfOptions(const QCommandLineParser &parser);

} // namespace quib::cli

#include "InspectInput.h"

#include "Output.h"

#include <Files/PlainTextFile.h>
#include <Themes/QBNotesThemesManager.h>

#include <QCommandLineParser>

using namespace Qt::StringLiterals;

namespace quib::cli {

std::optional<int> syntaxOfOptions(const QCommandLineParser &parser)
{
    const QString name = parser.isSet(u"syntax"_s) ? parser.value(u"syntax"_s) : u"native"_s;
    if (name != u"native"_s && name != u"markdown"_s) {
        complain(u"--syntax is native or markdown"_s);
        return std::nullopt;
    }
    return name == u"markdown"_s ? 1 : 0;
}

std::optional<QString> textOfInput(const QCommandLineParser &parser, ExitStatus *status)
{
    return textOfFile(parser.positionalArguments().value(0, u"-"_s), status);
}

std::optional<QString> textOfFile(const QString &path, ExitStatus *status)
{
    NSError error;
    auto text = readPlainTextFile(path, &error);
    if (!text) {
        complain(error.localizedDescription());
        *status = error.code() == static_cast<qint64>(NSCocoaErrorCode::FileNoSuchFile) ? ExitStatus::NotFound
                                                                                        : ExitStatus::Failed;
    }
    return text;
}

std::shared_ptr<QBTheme> textThemeOfOptions(const QCommandLineParser &parser)
{
    const QString name = parser.isSet(u"theme"_s) ? parser.value(u"theme"_s) : QBNotesThemesManager::defaultThemeName();
    const QString fontName =
        parser.isSet(u"font"_s) ? parser.value(u"font"_s) : QBNotesThemesManager::defaultFontThemeName();
    if (!QBNotesThemesManager::availableThemesNames().contains(name) && name != u"Print"_s) {
        complain(u"there is no theme \"%1\"; there are: %2"_s.arg(
            singleLine(name), QBNotesThemesManager::availableThemesNames().join(u", "_s) % u", Print"_s));
        return nullptr;
    }
    if (!QBNotesThemesManager::availableFontThemesNames().contains(fontName)) {
        complain(u"there is no font theme \"%1\"; there are: %2"_s.arg(
            singleLine(fontName), QBNotesThemesManager::availableFontThemesNames().join(u", "_s)));
        return nullptr;
    }
    return QBNotesThemesManager::textThemeForThemeName(name, fontName);
}

} // namespace quib::cli

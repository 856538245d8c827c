#include "Commands.h"
#include "Help.h"
#include "Output.h"

#include <QCommandLineParser>

using namespace Qt::StringLiterals;

namespace quib::cli {

ExitStatus runCompletion(Session & /*session*/, const QCommandLineParser &parser)
{
    const QString script = completionScript(parser.positionalArguments().constFirst());
    if (script.isEmpty()) {
        complain(u"completion is made for bash, zsh and fish"_s);
        return ExitStatus::WrongUsage;
    }
    print(script);
    return ExitStatus::Done;
}

ExitStatus runManual(Session & /*session*/, const QCommandLineParser & /*parser*/)
{
    print(manualPage());
    return ExitStatus::Done;
}

} // namespace quib::cli

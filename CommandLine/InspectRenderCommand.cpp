#include "Commands.h"
#include "InspectInput.h"
#include "Output.h"
#include "Session.h"

#include <Graphics/NSImage.h>
#include <Markup/NotePageRenderer.h>
#include <Markup/QBNoteTextAttachmentConfigurator.h>
#include <Markup/QBNoteTextKitStack.h>

#include <QCommandLineParser>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

constexpr double kUsualWidth = 700;
constexpr double kUsualScale = 2;

/// The number of an option. Errors: nullopt after it was told what it may be.
std::optional<double> numberOfOption(const QCommandLineParser &parser, const QString &name, double usual, double least,
                                     double most)
{
    if (!parser.isSet(name)) {
        return usual;
    }
    bool isNumber = false;
    const double number = parser.value(name).toDouble(&isNumber);
    if (!isNumber || !(number >= least && number <= most)) {
        complain(u"--%1 is a number from %2 to %3"_s.arg(name).arg(least).arg(most));
        return std::nullopt;
    }
    return number;
}

} // namespace

ExitStatus runInspectRender(Session &session, const QCommandLineParser &parser)
{
    const auto syntax = parser.isSet(u"syntax"_s) ? syntaxOfOptions(parser) : std::optional(session.syntax());
    const auto theme = syntax ? textThemeOfOptions(parser) : nullptr;
    const auto width = numberOfOption(parser, u"width"_s, kUsualWidth, 100, 4'000);
    const auto scale = numberOfOption(parser, u"scale"_s, kUsualScale, 0.25, 4);
    if (!theme || !width || !scale) {
        return ExitStatus::WrongUsage;
    }
    const QString path = parser.value(u"o"_s);
    if (path.isEmpty()) {
        complain(u"-o names the picture to write"_s);
        return ExitStatus::WrongUsage;
    }
    QString text;
    if (parser.isSet(u"text"_s)) {
        ExitStatus status = ExitStatus::Done;
        const auto read = textOfFile(parser.value(u"text"_s), &status);
        if (!read) {
            return status;
        }
        text = *read;
    } else {
        if (parser.positionalArguments().isEmpty()) {
            complain(u"name a note, or a file with --text"_s);
            return ExitStatus::WrongUsage;
        }
        if (session.context() == nullptr) {
            return ExitStatus::Failed;
        }
        const auto note = session.note(parser.positionalArguments().constFirst());
        if (!note) {
            return ExitStatus::NotFound;
        }
        text = note->text();
    }

    QBNoteTextKitStack stack(QSizeF(*width, 0));
    stack.themeManager()->loadTheme(theme);
    QBNoteTextAttachmentConfigurator configurator;
    if (!parser.isSet(u"text"_s)) {
        configurator.setManagedObjectContext(session.context()->weak_from_this());
    }
    configurator.setScale(*scale);
    configurator.setMaxAttachmentWidth(*width - 2 * stack.textContainer()->lineFragmentPadding() -
                                       2 * stack.themeManager()->paragraphHeadIndent());
    configurator.setConfigureAttachmentSynchronously(true);
    stack.stylerManager()->setSyntax(*syntax);
    stack.stylerManager()->setTextAttachmentConfigurator(&configurator);
    stack.noteTextStorage().loadString(text);
    const NotePageRenderer page(stack.noteTextStorage(), stack.themeManager(), *width);
    NSError error;
    if (!page.image(*scale).writePNGToFile(path, &error)) {
        complain(error.localizedDescription());
        return ExitStatus::Failed;
    }
    return ExitStatus::Done;
}

} // namespace quib::cli

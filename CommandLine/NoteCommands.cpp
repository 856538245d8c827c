#include "Commands.h"
#include "NoteDescription.h"
#include "Output.h"
#include "Session.h"

#include <Files/PlainTextFile.h>
#include <Store/QBNoteFile.h>
#include <Store/QBNoteTag.h>
#include <Tags/QBTagDataDetector.h>

#include <QCommandLineParser>
#include <QFileInfo>
#include <QUrl>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

/// A text from outside, its line ends as notes have them.
std::optional<QString> readText(const QString &path, ExitStatus *status)
{
    NSError error;
    auto text = readPlainTextFile(path, &error);
    if (!text) {
        complain(error.localizedDescription());
        *status = error.code() == static_cast<qint64>(NSCocoaErrorCode::FileNoSuchFile) ? ExitStatus::NotFound
                                                                                        : ExitStatus::Failed;
        return std::nullopt;
    }
    return text->replace(u"\r\n"_s, u"\n"_s);
}

} // namespace

ExitStatus runNew(Session &session, const QCommandLineParser &parser)
{
    auto status = ExitStatus::Done;
    std::optional<QString> text = QString();
    if (!parser.positionalArguments().isEmpty()) {
        text = readText(parser.positionalArguments().constFirst(), &status);
    } else if (isatty(STDIN_FILENO) == 0 && !parser.isSet(u"title"_s)) {
        text = readText(u"-"_s, &status);
    }
    if (!text) {
        return status;
    }
    if (parser.isSet(u"title"_s)) {
        const QString title = singleLine(parser.value(u"title"_s)).trimmed();
        if (title.isEmpty()) {
            complain(u"a title cannot be empty"_s);
            return ExitStatus::WrongUsage;
        }
        text = text->isEmpty() ? QString(u"# " % title) : QString(u"# " % title % u'\n' % *text);
    }
    if (parser.isSet(u"tags"_s)) {
        QStringList names;
        for (const QString &word : parser.value(u"tags"_s).split(u',')) {
            if (const QString name = QBNoteTag::sanitizeTagName(word); !name.isEmpty()) {
                names.append(name);
            }
        }
        text = QBTagDataDetector::stringByAddingHashtags(QBTagDataDetector::hashtagsFromTagsStrings(names), *text);
    }
    NSManagedObjectContext *context = session.context();
    if (context == nullptr) {
        return ExitStatus::Failed;
    }
    const auto note = QBNote::noteWithText(*text, session.syntax(), *context);
    if (parser.isSet(u"pin"_s)) {
        note->pin();
    }
    if (!session.save()) {
        return ExitStatus::Failed;
    }
    if (parser.isSet(u"json"_s)) {
        printJson(jsonForNote(*note, /*withText=*/true));
    } else {
        printLine(note->uniqueIdentifier());
    }
    return ExitStatus::Done;
}

ExitStatus runShow(Session &session, const QCommandLineParser &parser)
{
    if (session.context() == nullptr) {
        return ExitStatus::Failed;
    }
    const auto note = session.note(parser.positionalArguments().constFirst());
    if (!note) {
        return ExitStatus::NotFound;
    }
    if (parser.isSet(u"json"_s)) {
        printJson(jsonForNote(*note, /*withText=*/true));
        return ExitStatus::Done;
    }
    const QString text = note->text();
    print(text);
    if (isTerminal() && !text.endsWith(u'\n')) {
        printLine({});
    }
    return ExitStatus::Done;
}

ExitStatus runEdit(Session &session, const QCommandLineParser &parser)
{
    if (parser.isSet(u"append"_s) && parser.isSet(u"prepend"_s)) {
        complain(u"--append and --prepend cannot go together"_s);
        return ExitStatus::WrongUsage;
    }
    if (session.context() == nullptr) {
        return ExitStatus::Failed;
    }
    const auto note = session.note(parser.positionalArguments().constFirst());
    if (!note) {
        return ExitStatus::NotFound;
    }
    auto status = ExitStatus::Done;
    const auto text = readText(parser.positionalArguments().at(1), &status);
    if (!text) {
        return status;
    }
    if (parser.isSet(u"append"_s)) {
        note->appendNoteWithText(*text, session.syntax());
    } else if (parser.isSet(u"prepend"_s)) {
        note->prependNoteWithText(*text, session.syntax());
    } else if (note->text() != *text) {
        note->updateNoteWithText(*text, session.syntax());
    }
    return session.save() ? ExitStatus::Done : ExitStatus::Failed;
}

ExitStatus runDuplicate(Session &session, const QCommandLineParser &parser)
{
    if (session.context() == nullptr) {
        return ExitStatus::Failed;
    }
    const auto note = session.note(parser.positionalArguments().constFirst());
    if (!note) {
        return ExitStatus::NotFound;
    }
    const auto copy = note->duplicateWithSyntax(session.syntax());
    if (!copy || !session.save()) {
        return ExitStatus::Failed;
    }
    printLine(copy->uniqueIdentifier());
    return ExitStatus::Done;
}

ExitStatus runMerge(Session &session, const QCommandLineParser &parser)
{
    if (session.context() == nullptr) {
        return ExitStatus::Failed;
    }
    const auto sources = session.notes(parser.positionalArguments());
    if (sources.isEmpty()) {
        return ExitStatus::NotFound;
    }
    for (qsizetype i = 1; i < sources.size(); ++i) {
        if (sources.mid(0, i).contains(sources[i])) {
            complain(u"the same note is named twice: %1"_s.arg(sources[i]->uniqueIdentifier()));
            return ExitStatus::WrongUsage;
        }
    }
    const auto merged = QBNote::mergeNotes(sources, session.syntax());
    if (!merged || !session.save()) {
        return ExitStatus::Failed;
    }
    printLine(merged->uniqueIdentifier());
    return ExitStatus::Done;
}

ExitStatus runAttach(Session &session, const QCommandLineParser &parser)
{
    NSManagedObjectContext *context = session.context();
    if (context == nullptr) {
        return ExitStatus::Failed;
    }
    const auto note = session.note(parser.positionalArguments().constFirst());
    if (!note) {
        return ExitStatus::NotFound;
    }
    const QFileInfo file(parser.positionalArguments().at(1));
    if (!file.exists()) {
        complain(u"%1: no such file"_s.arg(file.filePath()));
        return ExitStatus::NotFound;
    }
    if (!file.isFile()) {
        complain(u"%1: is not a file"_s.arg(file.filePath()));
        return ExitStatus::Failed;
    }
    const QUrl url = QUrl::fromLocalFile(file.absoluteFilePath());
    const auto attachment = QBNoteFile::factoryNoteFileForFileURL(url, *context);
    if (!attachment) {
        complain(u"%1: could not be copied into the profile"_s.arg(file.filePath()));
        return ExitStatus::Failed;
    }
    const QString marker = attachment->textRepresentation();
    note->appendNoteWithText(marker, session.syntax());
    if (!session.save()) {
        return ExitStatus::Failed;
    }
    printLine(marker);
    return ExitStatus::Done;
}

} // namespace quib::cli

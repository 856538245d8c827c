#include "Commands.h"
#include "Output.h"
#include "Session.h"

#include <QCommandLineParser>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

/// Does one thing to all named notes in one save, or nothing when a note is missing.
template <typename Change>
ExitStatus changeNotes(Session &session, const QCommandLineParser &parser, const Change &change)
{
    if (session.context() == nullptr) {
        return ExitStatus::Failed;
    }
    const auto notes = session.notes(parser.positionalArguments());
    if (notes.isEmpty()) {
        return ExitStatus::NotFound;
    }
    for (const auto &note : notes) {
        change(*note);
    }
    return session.save() ? ExitStatus::Done : ExitStatus::Failed;
}

} // namespace

ExitStatus runTrash(Session &session, const QCommandLineParser &parser)
{
    return changeNotes(session, parser, [](QBNote &note) { note.trash(); });
}

ExitStatus runRestore(Session &session, const QCommandLineParser &parser)
{
    return changeNotes(session, parser, [](QBNote &note) { note.restoreFromTrash(); });
}

ExitStatus runArchive(Session &session, const QCommandLineParser &parser)
{
    return changeNotes(session, parser, [](QBNote &note) { note.archive(); });
}

ExitStatus runUnarchive(Session &session, const QCommandLineParser &parser)
{
    return changeNotes(session, parser, [](QBNote &note) { note.unarchive(); });
}

ExitStatus runPin(Session &session, const QCommandLineParser &parser)
{
    return changeNotes(session, parser, [](QBNote &note) { note.pin(); });
}

ExitStatus runUnpin(Session &session, const QCommandLineParser &parser)
{
    return changeNotes(session, parser, [](QBNote &note) { note.unpin(); });
}

ExitStatus runDelete(Session &session, const QCommandLineParser &parser)
{
    return changeNotes(session, parser, [](QBNote &note) {
        if (!note.isDeleted()) {
            note.permanentlyDelete();
        }
    });
}

} // namespace quib::cli

#include "Commands.h"
#include "NoteDescription.h"
#include "NoteList.h"
#include "Output.h"
#include "Session.h"

#include <Store/QBCoreDataStack.h>
#include <Store/QBNote.h>
#include <Store/QBNoteTag.h>

#include <QCommandLineParser>
#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

ExitStatus listNotes(Session &session, const QCommandLineParser &parser, const QString &list, const QString &search)
{
    qint64 limit = 0;
    if (parser.isSet(u"limit"_s)) {
        bool isNumber = false;
        limit = parser.value(u"limit"_s).toLongLong(&isNumber);
        if (!isNumber || limit < 1) {
            complain(u"--limit needs a whole number above 0"_s);
            return ExitStatus::WrongUsage;
        }
        if (parser.optionNames().contains(u"watch"_s)) {
            complain(u"--limit and --watch do not go together"_s);
            return ExitStatus::WrongUsage;
        }
    }
    NSManagedObjectContext *context = session.context();
    if (context == nullptr) {
        return ExitStatus::Failed;
    }
    auto status = ExitStatus::Done;
    auto request = requestForList(list, search, *context, &status);
    if (!request) {
        return status;
    }
    if (parser.optionNames().contains(u"watch"_s)) {
        return watchList(*context, session.stack()->persistentStoreURL(),
                         [&] { return requestForList(list, search, *context, &status); });
    }
    request->fetchLimit = limit;
    NSError error;
    const auto notes = context->fetch<QBNote>(*request, &error);
    if (!notes) {
        complain(error.localizedDescription());
        return ExitStatus::Failed;
    }
    // Held, so that each tag is read once for all its notes.
    const auto tags = parser.isSet(u"json"_s)
                          ? context->fetch<QBNoteTag>({.entityName = QBNoteTag::entityName()}, &error)
                          : std::nullopt;
    QJsonArray array;
    for (const auto &note : *notes) {
        if (parser.isSet(u"json"_s)) {
            array.append(jsonForNote(*note, /*withText=*/false));
        } else {
            printLine(lineForNote(*note));
        }
    }
    if (parser.isSet(u"json"_s)) {
        printJson(array);
    }
    return ExitStatus::Done;
}

} // namespace

ExitStatus runList(Session &session, const QCommandLineParser &parser)
{
    return listNotes(session, parser, parser.isSet(u"in"_s) ? parser.value(u"in"_s) : u"notes"_s,
                     parser.value(u"search"_s));
}

ExitStatus runSearch(Session &session, const QCommandLineParser &parser)
{
    return listNotes(session, parser, u"notes"_s, parser.positionalArguments().join(u' '));
}

} // namespace quib::cli

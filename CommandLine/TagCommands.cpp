#include "Commands.h"
#include "Output.h"
#include "Session.h"

#include <Store/QBNoteTag.h>

#include <QCommandLineParser>
#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

Ref<QBNoteTag> tagNamed(const QString &name, NSManagedObjectContext &context)
{
    const auto tag = QBNoteTag::tagWithName(QBNoteTag::sanitizeTagName(name), context);
    if (!tag) {
        complain(u"there is no tag \"%1\""_s.arg(singleLine(name)));
    }
    return tag;
}

} // namespace

ExitStatus runTags(Session &session, const QCommandLineParser &parser)
{
    NSManagedObjectContext *context = session.context();
    if (context == nullptr) {
        return ExitStatus::Failed;
    }
    QJsonArray array;
    for (const auto &tag : QBNoteTag::populatedNotesTagsInManagedObjectContext(*context)) {
        const qint64 count = tag->untrashedNotesCount().value_or(0);
        if (parser.isSet(u"json"_s)) {
            array.append(QJsonObject{{u"title"_s, tag->title()}, {u"notes"_s, count}});
        } else {
            printLine(QString(singleLine(tag->title()) % u'\t' % QString::number(count)));
        }
    }
    if (parser.isSet(u"json"_s)) {
        printJson(array);
    }
    return ExitStatus::Done;
}

ExitStatus runTagRename(Session &session, const QCommandLineParser &parser)
{
    NSManagedObjectContext *context = session.context();
    if (context == nullptr) {
        return ExitStatus::Failed;
    }
    const QString name = QBNoteTag::sanitizeTagName(parser.positionalArguments().at(1));
    if (name.isEmpty()) {
        complain(u"a tag's name cannot be empty"_s);
        return ExitStatus::WrongUsage;
    }
    const auto tag = tagNamed(parser.positionalArguments().constFirst(), *context);
    if (!tag) {
        return ExitStatus::NotFound;
    }
    // A rename to the very same name gives no tag and changes nothing, which is what was asked for.
    if (tag->title() != name) {
        tag->renameTagWithTagNamed(name, session.syntax());
        QBNoteTag::deleteAllUnusedTagsInManagedObjectContext(*context);
    }
    return session.save() ? ExitStatus::Done : ExitStatus::Failed;
}

ExitStatus runTagDelete(Session &session, const QCommandLineParser &parser)
{
    NSManagedObjectContext *context = session.context();
    if (context == nullptr) {
        return ExitStatus::Failed;
    }
    const auto tag = tagNamed(parser.positionalArguments().constFirst(), *context);
    if (!tag) {
        return ExitStatus::NotFound;
    }
    tag->deleteTagWithSyntax(session.syntax());
    QBNoteTag::deleteAllUnusedTagsInManagedObjectContext(*context);
    return session.save() ? ExitStatus::Done : ExitStatus::Failed;
}

} // namespace quib::cli

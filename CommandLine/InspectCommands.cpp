#include "Commands.h"
#include "Output.h"

#include <Files/PlainTextFile.h>
#include <Markup/Syntax/QBNoteSection.h>
#include <Search/QBNoteSearchManager.h>
#include <Store/QBNote.h>

#include <QCommandLineParser>
#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace quib::cli {

ExitStatus runInspectParse(Session & /*session*/, const QCommandLineParser &parser)
{
    int syntax = 0;
    if (parser.isSet(u"syntax"_s)) {
        const QString name = parser.value(u"syntax"_s);
        if (name != u"native"_s && name != u"markdown"_s) {
            complain(u"--syntax is native or markdown"_s);
            return ExitStatus::WrongUsage;
        }
        syntax = name == u"markdown"_s ? 1 : 0;
    }
    NSError error;
    const auto text = readPlainTextFile(parser.positionalArguments().value(0, u"-"_s), &error);
    if (!text) {
        complain(error.localizedDescription());
        return error.code() == static_cast<qint64>(NSCocoaErrorCode::FileNoSuchFile) ? ExitStatus::NotFound
                                                                                     : ExitStatus::Failed;
    }
    bool hasSourceCode = false;
    const QString withoutCode = QBNote::removeCodeFromText(*text, &hasSourceCode, syntax);
    QJsonArray sections;
    for (const QBNoteSection &section : QBNoteSection::noteSectionsInText(*text)) {
        sections.append(QJsonObject{{u"title"_s, section.title},
                                    {u"titleLocation"_s, section.titleLocation},
                                    {u"titleLength"_s, section.titleLength},
                                    {u"sectionLocation"_s, section.sectionLocation},
                                    {u"sectionLength"_s, section.sectionLength}});
    }
    printJson(QJsonObject{
        {u"title"_s, QBNote::parseTitleFromText(*text)},
        {u"subtitle"_s, QBNote::parseSubtitleFromText(*text)},
        {u"tags"_s, QJsonArray::fromStringList(QBNote::parseHashTagsFromText(withoutCode, syntax))},
        {u"todoIncompleted"_s, QBNote::parseTodoFromText(withoutCode, syntax)},
        {u"todoCompleted"_s, QBNote::parseCompletedTodoFromText(withoutCode, syntax)},
        {u"hasSourceCode"_s, hasSourceCode},
        {u"sections"_s, sections},
    });
    return ExitStatus::Done;
}

ExitStatus runInspectPredicate(Session & /*session*/, const QCommandLineParser &parser)
{
    const auto predicate = QBNoteSearchManager::predicateForSearchString(parser.positionalArguments().join(u' '));
    printLine(predicate ? predicate->predicateFormat() : u"null"_s);
    return ExitStatus::Done;
}

ExitStatus runInspectHighlightPattern(Session & /*session*/, const QCommandLineParser &parser)
{
    printLine(QBNoteSearchManager::likeOrPatternForSearchString(parser.positionalArguments().join(u' ')));
    return ExitStatus::Done;
}

} // namespace quib::cli

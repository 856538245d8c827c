#include "Commands.h"
#include "InspectInput.h"
#include "Output.h"

#include <Code/QBCodeLanguageDetector.h>
#include <Markup/Syntax/QBNoteSection.h>
#include <Search/QBNoteSearchManager.h>
#include <Store/QBNote.h>

#include <QCommandLineParser>
#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace quib::cli {

ExitStatus runInspectParse(Session & /*session*/, const QCommandLineParser &parser)
{
    const auto chosen = syntaxOfOptions(parser);
    if (!chosen) {
        return ExitStatus::WrongUsage;
    }
    const int syntax = *chosen;
    ExitStatus status = ExitStatus::Done;
    const auto text = textOfInput(parser, &status);
    if (!text) {
        return status;
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

ExitStatus runInspectLanguage(Session & /*session*/, const QCommandLineParser &parser)
{
    ExitStatus status = ExitStatus::Done;
    const auto code = textOfInput(parser, &status);
    if (!code) {
        return status;
    }
    printLine(QBCodeLanguageDetector().detectLanguageWithString(*code));
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

#include "Commands.h"
#include "InspectInput.h"
#include "Output.h"

#include <Markup/QBNoteTextKitStack.h>
#include <Markup/StyledEdit.h>
#include <Markup/StyledTextDescription.h>
#include <Themes/QBNotesThemesManager.h>

#include <QCommandLineParser>
#include <QJsonDocument>

#include <array>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

QJsonArray rangeInWords(NSRange range)
{
    return range.isFound() ? QJsonArray{range.location, range.length} : QJsonArray();
}

/// One edit of the input of "inspect edit". Errors: nullopt unless all that is needed is there, and fits the text.
struct Edit
{
    NSRange range;
    QString string;
    NSRange selection;

    static std::optional<Edit> fromJson(const QJsonObject &object, qint64 length)
    {
        const auto number = [](const QJsonValue &value) { return value.toInteger(-1); };
        Edit edit{{number(object.value(u"location"_s)), number(object.value(u"length"_s))},
                  object.value(u"string"_s).toString(u""_s),
                  {}};
        const bool fits = edit.range.location >= 0 && edit.range.length >= 0 && edit.range.location <= length &&
                          edit.range.length <= length - edit.range.location;
        if (!fits) {
            return std::nullopt;
        }
        edit.selection = {edit.range.location + edit.string.size(), 0};
        if (const QJsonArray given = object.value(u"selection"_s).toArray(); given.size() == 2) {
            edit.selection = {number(given[0]), number(given[1])};
            const qint64 lengthAfter = length - edit.range.length + edit.string.size();
            if (edit.selection.location < 0 || edit.selection.length < 0 || edit.selection.location > lengthAfter ||
                edit.selection.length > lengthAfter - edit.selection.location) {
                return std::nullopt;
            }
        }
        return edit;
    }
};

} // namespace

ExitStatus runInspectStyle(Session & /*session*/, const QCommandLineParser &parser)
{
    const auto syntax = syntaxOfOptions(parser);
    const auto theme = syntax ? textThemeOfOptions(parser) : nullptr;
    if (!theme) {
        return ExitStatus::WrongUsage;
    }
    ExitStatus status = ExitStatus::Done;
    const auto text = textOfInput(parser, &status);
    if (!text) {
        return status;
    }
    QBNoteTextKitStack stack;
    stack.themeManager()->loadTheme(theme);
    stack.stylerManager()->setSyntax(*syntax);
    auto &storage = stack.noteTextStorage();
    storage.loadString(*text);
    printJson(QJsonObject{
        {u"buffer"_s, storage.string().toString()},
        {u"expanded"_s, storage.stringWithExpandedTextAttachments()},
        {u"attachments"_s, StyledTextDescription::attachmentsOfText(storage.attributedString())},
        {u"runs"_s, StyledTextDescription(stack.themeManager()).runsOfText(storage.attributedString())},
    });
    return ExitStatus::Done;
}

ExitStatus runInspectEdit(Session & /*session*/, const QCommandLineParser &parser)
{
    ExitStatus status = ExitStatus::Done;
    const auto input = textOfInput(parser, &status);
    if (!input) {
        return status;
    }
    QJsonParseError fault;
    const QJsonDocument document = QJsonDocument::fromJson(input->toUtf8(), &fault);
    if (!document.isObject()) {
        complain(fault.error == QJsonParseError::NoError
                     ? u"the input is no JSON object"_s
                     : u"the input is no JSON: %1 at byte %2"_s.arg(fault.errorString()).arg(fault.offset));
        return ExitStatus::Failed;
    }
    const QJsonObject object = document.object();
    QBNoteTextKitStack stack;
    stack.themeManager()->loadDefaultTheme();
    stack.stylerManager()->setSyntax(object.value(u"syntax"_s).toInt());
    auto &storage = stack.noteTextStorage();
    storage.loadString(object.value(u"text"_s).toString());
    QJsonArray results;
    for (const QJsonValue &value : object.value(u"edits"_s).toArray()) {
        const auto edit = Edit::fromJson(value.toObject(), storage.length());
        if (!edit) {
            complain(u"edit %1 does not fit the text of %2 units"_s.arg(results.size() + 1).arg(storage.length()));
            return ExitStatus::Failed;
        }
        const auto result = StyledEdit::replaceCharactersInRange(storage, edit->range, edit->string, edit->selection);
        results.append(QJsonObject{
            {u"rangeToStyle"_s, rangeInWords(result.rangeToStyle)},
            {u"replaced"_s, result.isReplaced},
            {u"proposedSelection"_s, rangeInWords(result.proposedSelection)},
            {u"buffer"_s, storage.string().toString()},
            {u"expanded"_s, storage.stringWithExpandedTextAttachments()},
        });
    }
    printJson(results);
    return ExitStatus::Done;
}

ExitStatus runInspectTheme(Session & /*session*/, const QCommandLineParser &parser)
{
    const auto theme = textThemeOfOptions(parser);
    if (!theme) {
        return ExitStatus::WrongUsage;
    }
    QBNotesTextThemeManager manager;
    manager.loadTheme(theme);
    const auto values = [](const QBTheme &of) {
        QJsonObject words;
        for (const auto &item : of.themeItems()) {
            if (item->key().isEmpty() || item->isVariable()) {
                continue;
            }
            if (const auto color = of.colorForKey(item->key()); color && item->kind() == u"color"_s) {
                words.insert(item->key(), color->rgbaString());
            } else if (const auto number = of.numberForKey(item->key())) {
                words.insert(item->key(), *number);
            } else if (item->kind() == u"font"_s) {
                words.insert(item->key(), of.fontForKey(item->key(), 12).fontName());
            }
        }
        return words;
    };
    const QString name = parser.isSet(u"theme"_s) ? parser.value(u"theme"_s) : QBNotesThemesManager::defaultThemeName();
    printJson(QJsonObject{
        {u"theme"_s, name},
        {u"text"_s, values(*theme)},
        {u"app"_s, values(*QBNotesThemesManager::appThemeForThemeName(name))},
        {u"metrics"_s, QJsonObject{{u"baseFontSize"_s, manager.baseFontSize()},
                                   {u"paragraphLineHeight"_s, manager.paragraphLineHeight()},
                                   {u"paragraphLineSpacing"_s, manager.paragraphLineSpacing()},
                                   {u"paragraphSpacing"_s, manager.paragraphSpacing()},
                                   {u"paragraphHeadIndent"_s, manager.paragraphHeadIndent()},
                                   {u"textColumnTopBottomInset"_s, manager.textColumnTopBottomInset()},
                                   {u"textColumnLeftRightInset"_s, manager.textColumnLeftRightInset()},
                                   {u"textColumnMaxSize"_s, manager.textColumnMaxSize()}}},
    });
    return ExitStatus::Done;
}

} // namespace quib::cli

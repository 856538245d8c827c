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
#include <initializer_list>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

QJsonArray rangeInWords(NSRange range)
{
    return range.isFound() ? QJsonArray{range.location, range.length} : QJsonArray();
}

/// A member of an object of the input.
struct Member
{
    enum class Kind
    {
        String,
        WholeNumber,
        Array,
    };
    QLatin1StringView name;
    Kind kind = Kind::String;
    bool isNeeded = false;
};

bool isWholeNumber(const QJsonValue &value)
{
    return value.isDouble() && value.toInteger(0) == value.toInteger(1);
}

/// What is wrong with the members of an object; empty where nothing is. Others than those that are named do not count.
QString faultOfMembers(const QJsonObject &object, std::initializer_list<Member> members)
{
    for (const auto &[name, kind, isNeeded] : members) {
        const QJsonValue value = object.value(name);
        if (value.isUndefined()) {
            if (isNeeded) {
                return u"\"%1\" is missing"_s.arg(name);
            }
            continue;
        }
        switch (kind) {
        case Member::Kind::String:
            if (!value.isString()) {
                return u"\"%1\" is no string"_s.arg(name);
            }
            break;
        case Member::Kind::WholeNumber:
            if (!isWholeNumber(value)) {
                return u"\"%1\" is no whole number"_s.arg(name);
            }
            break;
        case Member::Kind::Array:
            if (!value.isArray()) {
                return u"\"%1\" is no array"_s.arg(name);
            }
            break;
        }
    }
    return {};
}

QString faultOfEdits(const QJsonObject &input)
{
    using Kind = Member::Kind;
    const QString fault = faultOfMembers(
        input,
        {{"text"_L1, Kind::String, true}, {"syntax"_L1, Kind::WholeNumber, false}, {"edits"_L1, Kind::Array, true}});
    if (!fault.isEmpty()) {
        return fault;
    }
    if (const qint64 syntax = input.value(u"syntax"_s).toInteger(); syntax != 0 && syntax != 1) {
        return u"\"syntax\" is 0 or 1"_s;
    }
    int number = 0;
    for (const QJsonValue &edit : input.value(u"edits"_s).toArray()) {
        ++number;
        if (!edit.isObject()) {
            return u"edit %1 is no object"_s.arg(number);
        }
        const QString faultOfEdit = faultOfMembers(edit.toObject(), {{"location"_L1, Kind::WholeNumber, true},
                                                                     {"length"_L1, Kind::WholeNumber, true},
                                                                     {"string"_L1, Kind::String, false},
                                                                     {"selection"_L1, Kind::Array, false}});
        if (!faultOfEdit.isEmpty()) {
            return u"edit %1: %2"_s.arg(number).arg(faultOfEdit);
        }
        const QJsonArray selection = edit.toObject().value(u"selection"_s).toArray({0, 0});
        if (selection.size() != 2 || !isWholeNumber(selection[0]) || !isWholeNumber(selection[1])) {
            return u"edit %1: \"selection\" is a location and a length"_s.arg(number);
        }
    }
    return {};
}

/// One edit of the input of "inspect edit". Errors: nullopt unless it fits the text.
/// Requires: what faultOfEdits finds no fault with.
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
    if (const QString faultOfInput = faultOfEdits(object); !faultOfInput.isEmpty()) {
        complain(faultOfInput);
        return ExitStatus::Failed;
    }
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

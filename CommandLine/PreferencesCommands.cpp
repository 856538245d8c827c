#include "Commands.h"
#include "Output.h"
#include "Session.h"

#include <Store/QBNotesPreferenceManager.h>

#include <QCommandLineParser>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

using Manager = QBNotesPreferenceManager;

/// A preference by its accessor's name: how it reads as JSON and how a text sets it.
struct Preference
{
    QString name;
    std::function<QJsonValue(const Manager &)> get;
    /// Errors: false for a text that is no value of it. Empty for one that cannot be set.
    std::function<bool(Manager &, const QString &)> set;
};

std::optional<bool> boolean(const QString &text)
{
    const QString word = text.toLower();
    if (word == u"true"_s || word == u"yes"_s || word == u"1"_s) {
        return true;
    }
    if (word == u"false"_s || word == u"no"_s || word == u"0"_s) {
        return false;
    }
    return std::nullopt;
}

template <typename Get, typename Set> Preference flag(const QString &name, Get get, Set set)
{
    return {name,
            [get](const Manager &manager) -> QJsonValue {
                if constexpr (std::is_same_v<decltype((manager.*get)()), bool>) {
                    return (manager.*get)();
                } else {
                    const auto value = (manager.*get)();
                    return value ? QJsonValue(*value) : QJsonValue();
                }
            },
            [set](Manager &manager, const QString &text) {
                const auto value = boolean(text);
                if (value) {
                    (manager.*set)(*value);
                }
                return value.has_value();
            }};
}

Preference number(const QString &name, std::optional<double> (Manager::*get)() const,
                  void (Manager::*set)(std::optional<double>))
{
    return {name,
            [get](const Manager &manager) -> QJsonValue {
                const auto value = (manager.*get)();
                return value ? QJsonValue(*value) : QJsonValue();
            },
            [set](Manager &manager, const QString &text) {
                bool isNumber = false;
                const double value = text.toDouble(&isNumber);
                if (!isNumber || !(value > 0) || value > 1000) {
                    return false;
                }
                (manager.*set)(value);
                return true;
            }};
}

/// allowed: the values it may have; empty for any.
Preference text(const QString &name, QString (Manager::*get)() const, void (Manager::*set)(const QString &),
                const QStringList &allowed = {})
{
    return {name,
            [get](const Manager &manager) -> QJsonValue {
                const QString value = (manager.*get)();
                return value.isNull() ? QJsonValue() : QJsonValue(value);
            },
            [set, allowed](Manager &manager, const QString &value) {
                if (!allowed.isEmpty() && !allowed.contains(value)) {
                    return false;
                }
                (manager.*set)(value);
                return true;
            }};
}

Preference date(const QString &name, std::optional<NSDate> (Manager::*get)() const)
{
    return {name,
            [get](const Manager &manager) -> QJsonValue {
                const auto value = (manager.*get)();
                return value ? QJsonValue(value->iso8601String()) : QJsonValue();
            },
            nullptr};
}

QList<Preference> makePreferences()
{
    using M = Manager;
    const QStringList noteKeys{u"modificationDate"_s, u"creationDate"_s, u"title"_s};
    const QStringList tagKeys{u"title"_s, u"untrashedNotesCount"_s};
    return {
        text(u"appThemeName"_s, &M::appThemeName, &M::setAppThemeName),
        text(u"appDarkThemeName"_s, &M::appDarkThemeName, &M::setAppDarkThemeName),
        text(u"fontThemeName"_s, &M::fontThemeName, &M::setFontThemeName),
        flag(u"appIconMatchesTheme"_s, &M::appIconMatchesTheme, &M::setAppIconMatchesTheme),
        flag(u"markdownCompatibilityMode"_s, &M::markdownCompatibilityMode, &M::setMarkdownCompatibilityMode),
        flag(u"autograbURLTitles"_s, &M::autograbURLTitles, &M::setAutograbURLTitles),
        flag(u"foldCompletedTodo"_s, &M::foldCompletedTodo, &M::setFoldCompletedTodo),
        flag(u"editorShowImagesAsThumbnails"_s, &M::editorShowImagesAsThumbnails, &M::setEditorShowImagesAsThumbnails),
        flag(u"enableHapticFeedback"_s, &M::enableHapticFeedback, &M::setEnableHapticFeedback),
        flag(u"enableTextExpander"_s, &M::enableTextExpander, &M::setEnableTextExpander),
        flag(u"exportTags"_s, &M::exportTags, &M::setExportTags),
        flag(u"excludeCopyAsTags"_s, &M::excludeCopyAsTags, &M::setExcludeCopyAsTags),
        number(u"editorFontSize"_s, &M::editorFontSize, &M::setEditorFontSize),
        number(u"editorLineHeightMultiplier"_s, &M::editorLineHeightMultiplier, &M::setEditorLineHeightMultiplier),
        number(u"editorLineWidthMultiplier"_s, &M::editorLineWidthMultiplier, &M::setEditorLineWidthMultiplier),
        number(u"editorParagraphSpacingMultiplier"_s, &M::editorParagraphSpacingMultiplier,
               &M::setEditorParagraphSpacingMultiplier),
        {u"markedPreviewExpirationTime"_s,
         [](const M &manager) -> QJsonValue { return manager.markedPreviewExpirationTime(); }, nullptr},
        text(u"notesListSortBy"_s, &M::notesListSortBy, &M::setNotesListSortBy, noteKeys),
        flag(u"notesListSortAscending"_s, &M::notesListSortAscending, &M::setNotesListSortAscending),
        text(u"tagsListSortBy"_s, &M::tagsListSortBy, &M::setTagsListSortBy, tagKeys),
        flag(u"tagsListSortAscending"_s, &M::tagsListSortAscending, &M::setTagsListSortAscending),
        flag(u"autocompleteEnabled"_s, &M::autocompleteEnabled, &M::setAutocompleteEnabled),
        flag(u"spellCheckingEnabled"_s, &M::spellCheckingEnabled, &M::setSpellCheckingEnabled),
        flag(u"editorTypewriterScrolling"_s, &M::editorTypewriterScrolling, &M::setEditorTypewriterScrolling),
        flag(u"editorFocusMode"_s, &M::editorFocusMode, &M::setEditorFocusMode),
        flag(u"editorFormatBar"_s, &M::editorFormatBar, &M::setEditorFormatBar),
        flag(u"tagsListUsesCustomTagsIcons"_s, &M::tagsListUsesCustomTagsIcons, &M::setTagsListUsesCustomTagsIcons),
        flag(u"syncDisabledByUser"_s, &M::syncDisabledByUser, &M::setSyncDisabledByUser),
        date(u"lastSyncDate"_s, &M::lastSyncDate),
        date(u"syncEnabledUntilDate"_s, &M::syncEnabledUntilDate),
        flag(u"logToFile"_s, &M::logToFile, &M::setLogToFile),
    };
}

const Preference *preferenceNamed(const QString &name)
{
    static const QList<Preference> preferences = makePreferences();
    for (const Preference &preference : preferences) {
        if (preference.name == name) {
            return &preference;
        }
    }
    complain(u"there is no preference \"%1\"; see quibctl preferences"_s.arg(singleLine(name)));
    return nullptr;
}

QString plain(const QJsonValue &value)
{
    if (value.isBool()) {
        return value.toBool() ? u"true"_s : u"false"_s;
    }
    return value.isDouble() ? QString::number(value.toDouble(), 'g', 15) : value.toString();
}

/// The syntax decides what counts as a to-do, so that all counts are taken anew. A batch a save, so that memory stays
/// bounded.
ExitStatus recountTodos(Session &session)
{
    constexpr qsizetype kBatch = 500;
    NSManagedObjectContext *context = session.context();
    if (context == nullptr) {
        return ExitStatus::Failed;
    }
    NSError error;
    const auto identities = context->persistentStoreCoordinator()->persistentStore()->fetchIDs(
        {.entityName = QBNote::entityName()}, &error);
    if (!identities) {
        complain(error.localizedDescription());
        return ExitStatus::Failed;
    }
    for (qsizetype start = 0; start < identities->size(); start += kBatch) {
        for (const NSManagedObjectID &objectID : identities->mid(start, kBatch)) {
            if (const auto note = context->existingObjectWithID(objectID).as<QBNote>()) {
                note->updateAttributesForNewSyntax(session.syntax());
            }
        }
        if (!session.save()) {
            return ExitStatus::Failed;
        }
    }
    return ExitStatus::Done;
}

} // namespace

ExitStatus runPreferences(Session & /*session*/, const QCommandLineParser &parser)
{
    const Manager &manager = *Manager::sharedPreferenceManager();
    QJsonObject object;
    for (const Preference &preference : makePreferences()) {
        const QJsonValue value = preference.get(manager);
        object.insert(preference.name, value);
        if (!parser.isSet(u"json"_s)) {
            printLine(QString(preference.name % u'\t' % plain(value)));
        }
    }
    if (parser.isSet(u"json"_s)) {
        printJson(object);
    }
    return ExitStatus::Done;
}

ExitStatus runPreferencesGet(Session & /*session*/, const QCommandLineParser &parser)
{
    const Preference *preference = preferenceNamed(parser.positionalArguments().constFirst());
    if (preference == nullptr) {
        return ExitStatus::NotFound;
    }
    printLine(plain(preference->get(*Manager::sharedPreferenceManager())));
    return ExitStatus::Done;
}

ExitStatus runPreferencesSet(Session &session, const QCommandLineParser &parser)
{
    const Preference *preference = preferenceNamed(parser.positionalArguments().constFirst());
    if (preference == nullptr) {
        return ExitStatus::NotFound;
    }
    if (!preference->set) {
        complain(u"%1 cannot be set"_s.arg(preference->name));
        return ExitStatus::WrongUsage;
    }
    Manager &manager = *Manager::sharedPreferenceManager();
    const int syntaxBefore = manager.currentSyntax();
    if (!preference->set(manager, parser.positionalArguments().at(1))) {
        complain(u"\"%1\" is no value of %2"_s.arg(singleLine(parser.positionalArguments().at(1)), preference->name));
        return ExitStatus::WrongUsage;
    }
    return manager.currentSyntax() == syntaxBefore ? ExitStatus::Done : recountTodos(session);
}

ExitStatus runPreferencesReset(Session &session, const QCommandLineParser & /*parser*/)
{
    Manager &manager = *Manager::sharedPreferenceManager();
    const int syntaxBefore = manager.currentSyntax();
    manager.resetToDefaultPreferences();
    return manager.currentSyntax() == syntaxBefore ? ExitStatus::Done : recountTodos(session);
}

} // namespace quib::cli

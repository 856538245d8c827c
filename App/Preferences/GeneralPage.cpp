#include "GeneralPage.h"

#include "InlineQuestion.h"
#include "SpellingLanguages.h"
#include "Switch.h"

#include <Files/Profile.h>
#include <Logging/QBLogger.h>
#include <Process/DesktopOpener.h>
#include <Store/QBLocalFileManager.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QDir>
#include <QPushButton>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// "~" for the home folder, as people write it.
QString shownPath(const QString &path)
{
    const QString home = QDir::homePath();
    // The signs keep the slashes in their places between words of other scripts.
    const QString shown =
        path.startsWith(QString(home % u'/')) ? QString(u'~' % QStringView(path).mid(home.size())) : path;
    return QString(u'\u2066' % shown % u'\u2069');
}

void openFolder(const QString &folder)
{
    if (!openWithDesktop(QUrl::fromLocalFile(folder))) {
        QBLogWarn(QString(u"the desktop could not open "_s % folder));
    }
}

} // namespace

GeneralPage::GeneralPage(QWidget *parent)
    : PreferencesForm(parent)
{
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    if (preferences == nullptr) {
        return;
    }
    // 1. Lists.
    addGroup(tr("Lists"));
    addChoice(
        tr("Sort notes by"), {}, {u"notesListSortBy"_s},
        {{tr("Date Changed"), u"modificationDate"_s},
         {tr("Date Created"), u"creationDate"_s},
         {tr("Title"), u"title"_s}},
        [preferences] { return preferences->notesListSortBy(); },
        [preferences](const QVariant &key) { preferences->setNotesListSortBy(key.toString()); });
    addChoice(
        tr("Order of notes"), tr("Pinned notes stand above all others."), {u"notesListSortAscending"_s},
        {{tr("Descending"), false}, {tr("Ascending"), true}},
        [preferences] { return preferences->notesListSortAscending(); },
        [preferences](const QVariant &isAscending) { preferences->setNotesListSortAscending(isAscending.toBool()); });
    addChoice(
        tr("Sort tags by"), {}, {u"tagsListSortBy"_s}, {{tr("Title"), u"title"_s}, {tr("Number of Notes"), u"notes"_s}},
        [preferences] { return preferences->tagsListSortBy(); },
        [preferences](const QVariant &key) { preferences->setTagsListSortBy(key.toString()); });
    addChoice(
        tr("Order of tags"), {}, {u"tagsListSortAscending"_s}, {{tr("Ascending"), true}, {tr("Descending"), false}},
        [preferences] { return preferences->tagsListSortAscending(); },
        [preferences](const QVariant &isAscending) { preferences->setTagsListSortAscending(isAscending.toBool()); });
    addSwitch(
        tr("Symbols for tags"), tr("Tags in the sidebar get a symbol that fits their name."),
        {u"tagsListUsesCustomTagsIcons"_s}, [preferences] { return preferences->tagsListUsesCustomTagsIcons(); },
        [preferences](bool isOn) { preferences->setTagsListUsesCustomTagsIcons(isOn); });
    // 2. Links.
    addGroup(tr("Links"));
    addSwitch(
        tr("Look up the titles of copied links"),
        tr("A web address on the clipboard gets the title of its page before you paste it. Quib asks that page for "
           "it."),
        {u"autograbURLTitles"_s}, [preferences] { return preferences->autograbURLTitles(); },
        [preferences](bool isOn) { preferences->setAutograbURLTitles(isOn); });
    // 3. Where things are.
    addGroup(tr("On this computer"));
    const QString notesFolder = QBLocalFileManager::applicationPersistentDataURL().toLocalFile();
    auto *showNotes = new QPushButton(tr("Show Folder"), this);
    showNotes->setAccessibleName(tr("Show the folder of the notes"));
    connect(showNotes, &QPushButton::clicked, this, [notesFolder] { openFolder(notesFolder); });
    addRow(tr("Notes and attachments"), shownPath(notesFolder), showNotes);
    addSwitch(
        tr("Write a log file"), tr("For finding out what went wrong. The log has no text of your notes."),
        {u"logToFile"_s}, [preferences] { return preferences->logToFile().value_or(false); },
        [preferences](bool isOn) {
            preferences->setLogToFile(isOn);
            QBLogger::sharedLogger().setFileLoggerEnabled(isOn);
        });
    auto *showLogs = new QPushButton(tr("Show Folder"), this);
    showLogs->setAccessibleName(tr("Show the folder of the logs"));
    connect(showLogs, &QPushButton::clicked, this, [] { openFolder(Profile::logsFolder()); });
    addRow(tr("Logs"), shownPath(Profile::logsFolder()), showLogs);
    // 4. Back.
    addReset();
}

void GeneralPage::addReset()
{
    addGroup(tr("Start again"));
    auto *question = new InlineQuestion(tr("Reset…"), this);
    question->setQuestion(tr("Reset all preferences?"), tr("Reset"), [] {
        if (auto *manager = QBNotesPreferenceManager::sharedPreferenceManager(); manager != nullptr) {
            manager->resetToDefaultPreferences();
            setChosenSpellingLanguages(*manager, {});
            // The themes in force are told of by this name alone.
            manager->setCurrentAppThemeName(QString());
        }
    });
    addRow(tr("Reset all preferences"),
           tr("Themes, fonts, lists and writing go back to how they were. No note changes."), question);
}

} // namespace quib

#include "QBMainWindowController.h"

#include "DetachedWindow.h"
#include "EditorPane.h"
#include "WindowStyle.h"

#include <Files/PropertyList.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QSplitter>

#include <utility>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

// One dictionary under one key, so that what is restored belongs together.
constexpr auto kStateKey = "QBMainWindowState"_L1;
constexpr auto kGeometry = "geometry"_L1;
constexpr auto kSplitter = "splitter"_L1;
constexpr auto kColumns = "columns"_L1;
constexpr auto kList = "list"_L1;
constexpr auto kExpanded = "expanded"_L1;
constexpr auto kNotes = "notes"_L1;
constexpr auto kPosition = "position"_L1;
constexpr auto kEditor = "editor"_L1;
constexpr auto kWindows = "windows"_L1;
constexpr auto kNote = "note"_L1;
constexpr auto kIsFloating = "floating"_L1;

PropertyValue::Dictionary storedState()
{
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    if (preferences == nullptr) {
        return {};
    }
    const PropertyValue value = preferences->preferenceValueForKey(kStateKey);
    return value.asDictionary() != nullptr ? *value.asDictionary() : PropertyValue::Dictionary();
}

PropertyValue::Array arrayOf(const QStringList &strings)
{
    PropertyValue::Array array;
    for (const QString &string : strings) {
        array.append(PropertyValue(string));
    }
    return array;
}

QStringList stringsOf(const PropertyValue &value)
{
    QStringList strings;
    if (const PropertyValue::Array *array = value.asArray(); array != nullptr) {
        for (const PropertyValue &each : *array) {
            strings.append(each.toString());
        }
    }
    return strings;
}

} // namespace

void QBMainWindowController::invalidateRestorableState()
{
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    if (preferences == nullptr || !m_notes) {
        return;
    }
    PropertyValue::Dictionary state;
    state.insert(kGeometry, PropertyValue(saveGeometry()));
    state.insert(kSplitter, PropertyValue(m_splitter->saveState()));
    state.insert(kColumns, PropertyValue(int(m_columns)));
    state.insert(kList, PropertyValue(m_sidebar->selectedIdentifier()));
    state.insert(kExpanded, PropertyValue(arrayOf(m_sidebar->expandedIdentifiers())));
    state.insert(kNotes, PropertyValue(arrayOf(m_notes->selectedNotesURIRepresentations())));
    state.insert(kPosition, PropertyValue(m_list->scrollPosition()));
    state.insert(kEditor, m_editor->editor().archivedStates());
    PropertyValue::Array windows;
    for (DetachedWindow *window : std::as_const(m_detached)) {
        if (const Ref<QBNote> &note = window->editor().note()) {
            PropertyValue::Dictionary each;
            each.insert(kNote, PropertyValue(note->uniqueIdentifier()));
            each.insert(kGeometry, PropertyValue(window->saveGeometry()));
            each.insert(kIsFloating, PropertyValue(window->isFloating()));
            windows.append(PropertyValue(each));
        }
    }
    state.insert(kWindows, PropertyValue(windows));
    preferences->savePreferenceValue(PropertyValue(state), kStateKey);
}

void QBMainWindowController::restoreWindow()
{
    const PropertyValue::Dictionary state = storedState();
    if (const auto geometry = state.value(kGeometry).asData()) {
        restoreGeometryOnScreen(*this, *geometry);
    }
    if (const auto splitter = state.value(kSplitter).asData()) {
        m_splitter->restoreState(*splitter);
    }
    m_splitter->setHandleWidth(1);
    const qint64 columns = state.value(kColumns).toInteger();
    setColumns(columns == 1 ? Columns::ListAndEditor : columns == 2 ? Columns::EditorOnly : Columns::All);
    revealColumn(columnWorkedAt());
}

void QBMainWindowController::restoreLists()
{
    const PropertyValue::Dictionary state = storedState();
    m_editor->editor().unarchiveStates(state.value(kEditor));
    if (state.contains(kExpanded)) {
        m_sidebar->setExpandedIdentifiers(stringsOf(state.value(kExpanded)));
    }
    if (const QString list = state.value(kList).toString(); !list.isEmpty()) {
        if (list == u"QBArchiveSidebarItem") {
            m_sidebar->sidebarModel().controller().showArchiveSidebarItem(true);
        }
        m_sidebar->selectIdentifier(list);
    }
    if (const QStringList notes = stringsOf(state.value(kNotes)); !notes.isEmpty()) {
        m_notes->selectNotesWithURIRepresentations(notes);
        m_list->setScrollPosition(state.value(kPosition).toDouble());
    }
    const PropertyValue windows = state.value(kWindows);
    if (const PropertyValue::Array *array = windows.asArray(); array != nullptr) {
        for (const PropertyValue &value : *array) {
            const auto *each = value.asDictionary();
            if (each == nullptr) {
                continue;
            }
            if (const auto note = QBNote::noteWithUniqueIdentifier(each->value(kNote).toString(), *m_context)) {
                makeDetachedWindow(*note, each->value(kIsFloating).toBool(), each->value(kGeometry).asData());
            }
        }
    }
}

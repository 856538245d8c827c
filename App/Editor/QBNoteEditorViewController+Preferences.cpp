#include "QBNoteEditorViewController.h"

#include <Store/CurrentSyntax.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Themes/QBNotesTextThemeManager.h>
#include <Themes/QBNotesThemesManager.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

/// Units: sizes of the font.
constexpr double kNarrowestLine = 20;
constexpr double kWidestLine = 100;

} // namespace

void QBNoteEditorViewController::observePreferences()
{
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    if (preferences == nullptr) {
        return;
    }
    const auto observe = [&](const QString &name, void (QBNoteEditorViewController::*change)()) {
        m_preferenceObservations.push_back(
            preferences->addObserver(name, [this, change](const QString & /*keyPath*/) { (this->*change)(); }));
    };
    for (const auto &name : {u"currentAppThemeName"_s, u"fontThemeName"_s, u"editorLineHeightMultiplier"_s,
                             u"editorLineWidthMultiplier"_s, u"editorParagraphSpacingMultiplier"_s}) {
        observe(name, &QBNoteEditorViewController::themeMayHaveChanged);
    }
    observe(u"editorFontSize"_s, &QBNoteEditorViewController::fontSizeMayHaveChanged);
    observe(u"foldCompletedTodo"_s, &QBNoteEditorViewController::foldingMayHaveChanged);
    observe(u"markdownCompatibilityMode"_s, &QBNoteEditorViewController::syntaxMayHaveChanged);
}

void QBNoteEditorViewController::loadFirstTheme()
{
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    loadTheme(/*zoomedBaseFontSize=*/preferences == nullptr ? 0
                                                            : preferences->preferenceValueForKey(kZoomKey).toDouble());
}

void QBNoteEditorViewController::themeMayHaveChanged()
{
    loadTheme(m_stack.themeManager()->zoomedBaseFontSize());
}

void QBNoteEditorViewController::fontSizeMayHaveChanged()
{
    // Who sets a size wants to see it, here and in the panes to come.
    if (auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager(); preferences != nullptr) {
        preferences->savePreferenceValue({}, kZoomKey);
    }
    loadTheme(/*zoomedBaseFontSize=*/0);
}

void QBNoteEditorViewController::loadTheme(double zoomedBaseFontSize)
{
    QBNotesTextThemeManager &manager = *m_stack.themeManager();
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    if (preferences == nullptr) {
        manager.loadDefaultTheme();
        return;
    }
    // The theme is read anew, so that a number that was set before and is set no more goes back to the theme's.
    manager.loadTheme(
        QBNotesThemesManager::textThemeForThemeName(preferences->currentAppThemeName(), preferences->fontThemeName()),
        /*updateStylableObjects=*/false);
    if (const auto size = preferences->editorFontSize()) {
        manager.setBaseFontSize(*size);
    }
    if (const auto multiplier = preferences->editorLineHeightMultiplier()) {
        manager.setLineHeightMultiplier(*multiplier);
    }
    if (const auto multiplier = preferences->editorLineWidthMultiplier()) {
        manager.setLineWidthMultiplier(*multiplier);
    }
    if (const auto multiplier = preferences->editorParagraphSpacingMultiplier()) {
        manager.setParagraphSpacingMultiplier(*multiplier);
    }
    manager.setZoomedBaseFontSize(zoomedBaseFontSize); // which restyles
}

void QBNoteEditorViewController::syntaxMayHaveChanged()
{
    if (!m_note || m_stack.stylerManager()->syntax() == currentSyntax()) {
        return;
    }
    saveNote(/*forceSave=*/true);
    m_states = {}; // their places are of the other syntax
    const PlacesInText places = placesInText();
    loadNote();
    restorePlaces(places);
}

void QBNoteEditorViewController::foldingMayHaveChanged()
{
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    if (!m_note || preferences == nullptr) {
        return;
    }
    preferences->foldCompletedTodo() ? foldCompletedTodo() : unfoldCompletedTodo();
}

void QBNoteEditorViewController::changeLineWidth(double change)
{
    if (auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager(); preferences != nullptr) {
        const double width = m_stack.themeManager()->lineWidthMultiplier() + change;
        preferences->setEditorLineWidthMultiplier(std::clamp(width, kNarrowestLine, kWidestLine));
    }
}

#include "QBNoteEditorViewController.h"

#include <Store/CurrentSyntax.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Themes/QBNotesTextThemeManager.h>
#include <Themes/QBNotesThemesManager.h>

using namespace Qt::StringLiterals;
using namespace quib;

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
    for (const auto &name :
         {u"currentAppThemeName"_s, u"fontThemeName"_s, u"editorFontSize"_s, u"editorLineHeightMultiplier"_s,
          u"editorLineWidthMultiplier"_s, u"editorParagraphSpacingMultiplier"_s}) {
        observe(name, &QBNoteEditorViewController::loadTheme);
    }
    observe(u"markdownCompatibilityMode"_s, &QBNoteEditorViewController::syntaxMayHaveChanged);
}

void QBNoteEditorViewController::loadTheme()
{
    QBNotesTextThemeManager &manager = *m_stack.themeManager();
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    if (preferences == nullptr) {
        manager.loadDefaultTheme();
        return;
    }
    // The theme is read anew, so that a number that was set before and is set no more goes back to the theme's.
    const double zoom = manager.zoomedBaseFontSize();
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
    manager.setZoomedBaseFontSize(zoom); // which restyles
}

void QBNoteEditorViewController::syntaxMayHaveChanged()
{
    if (!m_note || m_stack.stylerManager()->syntax() == currentSyntax()) {
        return;
    }
    saveNote(/*forceSave=*/true);
    m_leftStates.clear(); // their buffers are of the other syntax
    loadNote();
}

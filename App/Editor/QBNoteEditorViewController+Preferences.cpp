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
    for (const auto &name :
         {u"currentAppThemeName"_s, u"fontThemeName"_s, u"editorFontSize"_s, u"editorLineHeightMultiplier"_s,
          u"editorLineWidthMultiplier"_s, u"editorParagraphSpacingMultiplier"_s}) {
        observe(name, &QBNoteEditorViewController::loadTheme);
    }
    observe(u"foldCompletedTodo"_s, &QBNoteEditorViewController::foldingMayHaveChanged);
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
    const double zoom = manager.zoomedBaseFontSize() > 0 ? manager.zoomedBaseFontSize()
                                                         : preferences->preferenceValueForKey(kZoomKey).toDouble();
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
    m_states = {}; // their places are of the other syntax
    loadNote();
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

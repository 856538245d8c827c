#pragma once

#include "QBNoteStyleEditor.h"
#include "QBNotesTextContainer.h"
#include "QBNotesTextStorage.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <memory>
#include <optional>

/// Everything that one note's text needs: its theme, its stylers, its storage, and off screen the column it is set in.
/// Owned by the editor, or by whoever renders a note; lives on that one's queue. Follows its theme: when that changes,
/// the text is styled anew in place.
class QBNoteTextKitStack : public quib::StylableObject
{
public:
    /// For a view that brings its own column.
    QBNoteTextKitStack();
    /// For layout off screen.
    explicit QBNoteTextKitStack(QSizeF withTextContainerSize);
    ~QBNoteTextKitStack() override;
    QBNoteTextKitStack(const QBNoteTextKitStack &) = delete;
    QBNoteTextKitStack &operator=(const QBNoteTextKitStack &) = delete;

    [[nodiscard]] const std::shared_ptr<QBNotesTextThemeManager> &themeManager() const { return m_themeManager; }
    [[nodiscard]] const std::shared_ptr<QBNoteStylersManager> &stylerManager() const { return m_stylerManager; }
    [[nodiscard]] QBNotesTextStorage &noteTextStorage() { return m_noteTextStorage; }
    [[nodiscard]] const QBNotesTextStorage &noteTextStorage() const { return m_noteTextStorage; }
    /// The commands of formatting, in the syntax of the stylers.
    [[nodiscard]] const QBNoteStyleEditor &styleEditor() const { return m_styleEditor; }
    /// Nullopt for a stack whose view has one.
    [[nodiscard]] const std::optional<QBNotesTextContainer> &textContainer() const { return m_textContainer; }

    /// Forgets what the stylers made for the theme's fonts and colours.
    void cleanStylerCache();
    void themeManagerWillChangeStyles(QBThemeManager &manager) override;
    void styleObjectWithThemeManager(QBThemeManager &manager) override;

private:
    std::shared_ptr<QBNotesTextThemeManager> m_themeManager;
    std::shared_ptr<QBNoteStylersManager> m_stylerManager;
    QBNotesTextStorage m_noteTextStorage;
    QBNoteStyleEditor m_styleEditor;
    std::optional<QBNotesTextContainer> m_textContainer;
};

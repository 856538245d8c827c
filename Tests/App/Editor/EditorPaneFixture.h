#pragma once

#include <Core/Store/StoreFixture.h>
#include <Editor/QBNoteEditorViewController.h>

#include <QString>

#include <memory>

namespace quib::tests {

/// The editor's pane in a window of its own, over a store in a fresh profile and a clock that stands still.
class EditorPaneFixture : public StoreFixture
{
protected:
    EditorPaneFixture();
    ~EditorPaneFixture() override;

    /// A note that is saved, shown, and has the keyboard at the end of its text.
    Ref<QBNote> show(const QString &text);
    void type(const QString &text);
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    [[nodiscard]] QBNoteTextView &view() { return pane->textView(); }
    /// The shown text with everything spelled out.
    [[nodiscard]] QString shown() { return view().textStorage().stringWithExpandedTextAttachments(); }
    [[nodiscard]] QString buffer() { return view().textStorage().string().toString(); }
    /// The shown text with the caret as "|", or the selection in brackets.
    [[nodiscard]] QString marked();
    /// What the store's file has, as another program reads it.
    [[nodiscard]] QString stored(const Ref<QBNote> &note) const;
    /// The texts of all notes, sorted.
    [[nodiscard]] QStringList texts() const;
    /// Another writer of this process changes a note and saves it.
    void changeElsewhere(const Ref<QBNote> &note, const QString &text) const;
    static void processEvents();

    std::unique_ptr<QBNoteEditorViewController> pane;
};

} // namespace quib::tests

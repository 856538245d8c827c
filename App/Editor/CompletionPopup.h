#pragma once

#include <Markup/Editing/QBEditorAutoCompleteItemsProvider.h>

#include <QListWidget>
#include <QString>

namespace quib {

/// The list of completions below the caret. The text keeps the keyboard; its keys that choose are handed to keyPress,
/// and assistive programs are told of each choice as if the list had it. Owned by the editor's pane, in whose
/// coordinates it is placed; main queue.
class CompletionPopup final : public QListWidget
{
    Q_OBJECT

public:
    explicit CompletionPopup(QWidget *parent);

    /// Shows entries, the first one chosen, below a caret or above it where there is more room, with a symbol and with
    /// what was typed of them standing out. None hide the list.
    void open(const QBEditorAutoCompleteItemsProvider::Items &items, const QString &symbol, const QString &typed,
              const QRect &caret);
    void close();
    [[nodiscard]] bool isOpen() const { return isVisible(); }
    [[nodiscard]] QBEditorAutoCompleteItem::Ref chosenItem() const;
    /// Whether what was typed is one of the entries already, and no other was chosen by keys.
    [[nodiscard]] bool isTypedWhole() const;
    /// Whether the key was the list's: arrows and pages move, return and tab take the entry, escape hides the list.
    bool keyPress(int key, Qt::KeyboardModifiers modifiers);

Q_SIGNALS:
    void itemWasChosen();
    /// The user wants none of them.
    void wasDismissed();

private:
    void tellOfChoice();

    QBEditorAutoCompleteItemsProvider::Items m_items;
    QString m_typed;
};

} // namespace quib

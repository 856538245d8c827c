#pragma once

#include "SpokenNoteText.h"

#include <Foundation/NSRange.h>
#include <Foundation/NotificationCenter.h>

#include <QAccessibleWidget>
#include <QMetaObject>
#include <QString>
#include <QStringList>

#include <memory>

class QBNoteTextView;

namespace quib {

/// The view of a note's text to assistive programs: a text to be read and edited, with its caret, selection, looks and
/// places, and an action that ticks the box of the caret's line. It tells of each change of the text, the caret and
/// the selection. Made by the toolkit when first asked for, and owned by it. Main queue.
/// Units: offsets count in the words that are read, see SpokenNoteText; points of the screen.
class AccessibleNoteTextView : public QAccessibleWidget,
                               public QAccessibleTextInterface,
                               public QAccessibleEditableTextInterface
{
    Q_DECLARE_TR_FUNCTIONS(quib::AccessibleNoteTextView)

public:
    explicit AccessibleNoteTextView(QBNoteTextView &view);
    ~AccessibleNoteTextView() override;

    /// Has views of notes made accessible from now on.
    static void install();

    // QAccessibleInterface

    [[nodiscard]] void *interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;

    // QAccessibleTextInterface

    void selection(int selectionIndex, int *startOffset, int *endOffset) const override;
    [[nodiscard]] int selectionCount() const override;
    void addSelection(int startOffset, int endOffset) override;
    void removeSelection(int selectionIndex) override;
    void setSelection(int selectionIndex, int startOffset, int endOffset) override;
    [[nodiscard]] int cursorPosition() const override;
    void setCursorPosition(int position) override;
    [[nodiscard]] QString text(int startOffset, int endOffset) const override;
    [[nodiscard]] QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundaryType, int *startOffset,
                                           int *endOffset) const override;
    [[nodiscard]] QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundaryType, int *startOffset,
                                          int *endOffset) const override;
    [[nodiscard]] QString textAtOffset(int offset, QAccessible::TextBoundaryType boundaryType, int *startOffset,
                                       int *endOffset) const override;
    [[nodiscard]] int characterCount() const override;
    [[nodiscard]] QRect characterRect(int offset) const override;
    [[nodiscard]] int offsetAtPoint(const QPoint &point) const override;
    void scrollToSubstring(int startIndex, int endIndex) override;
    [[nodiscard]] QString attributes(int offset, int *startOffset, int *endOffset) const override;

    // QAccessibleEditableTextInterface

    void deleteText(int startOffset, int endOffset) override;
    void insertText(int offset, const QString &text) override;
    void replaceText(int startOffset, int endOffset, const QString &text) override;

    // QAccessibleActionInterface

    [[nodiscard]] QStringList actionNames() const override;
    [[nodiscard]] QString localizedActionDescription(const QString &name) const override;
    void doAction(const QString &actionName) override;

protected:
    /// Hands an event over to whoever listens.
    virtual void tell(QAccessibleEvent &event);

private:
    [[nodiscard]] QBNoteTextView &view() const;
    [[nodiscard]] qint64 locationOf(int offset) const;
    [[nodiscard]] NSRange rangeOf(int startOffset, int endOffset) const;
    /// The unit of the words around an offset, by offsets.
    [[nodiscard]] NSRange unitAround(qint64 offset, QAccessible::TextBoundaryType boundaryType) const;
    [[nodiscard]] QString told(NSRange offsets, int *startOffset, int *endOffset) const;
    void tellOfChange(const SpokenNoteText::Change &change);
    void tellOfSelection();

    /// Made when the text is first read: who never asks costs nothing.
    [[nodiscard]] const SpokenNoteText &words() const;

    mutable std::unique_ptr<SpokenNoteText> m_words;
    NSRange m_toldSelection;
    ObservationToken m_edits;
    QMetaObject::Connection m_selections;
    QMetaObject::Connection m_attachments;
};

} // namespace quib

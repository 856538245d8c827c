#pragma once

#include "SpellingController.h"

#include <QObject>

class QBNoteTextView;

QT_BEGIN_NAMESPACE
class QMenu;
QT_END_NAMESPACE

namespace quib {

/// Joins a view of a note's text with the checking of its spelling: tells the controller what happens in the view, and
/// offers other words in the context menu. Follows the preference. Owned by the view; main queue.
class NoteTextViewSpelling final : public QObject, private SpellableView
{
    Q_OBJECT

public:
    explicit NoteTextViewSpelling(QBNoteTextView &view);
    ~NoteTextViewSpelling() override;

    /// Another text is shown in the view, or may be changed there now.
    void textWasLoaded() { m_controller.textWasLoaded(); }
    /// Adds what can be done about a misspelt word at a place, if there is one.
    void fillContextMenu(QMenu &menu, qint64 location);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // SpellableView
    [[nodiscard]] NSRange visibleRange() override;
    [[nodiscard]] NSRange selectedRange() const override;
    [[nodiscard]] bool isEditable() const override;
    void setSpellingMarks(std::vector<NSRange> marks, NSRange inRange) override;

    void followPreference();

    QBNoteTextView &m_view;
    SpellingController m_controller;
    ObservationToken m_preference;
};

} // namespace quib

#include "EditorPane.h"

#include "DesktopPasteboard.h"
#include "EmptyState.h"

#include <URL/QBURLPasteboard.h>

namespace quib {

EditorPane::EditorPane(QWidget *parent)
    : QStackedWidget(parent)
    , m_pasteboard(DesktopPasteboard::general())
    , m_editor(new QBNoteEditorViewController(this))
    , m_empty(new EmptyState(this))
{
    setObjectName(QStringLiteral("editorColumn"));
    addWidget(m_empty);
    addWidget(m_editor);
    m_editor->textView().setFrameShape(QFrame::NoFrame);
    m_editor->textView().setAccessibleName(tr("Note"));
    m_editor->setLinkTitle([pasteboard = m_pasteboard](const QString &url) {
        const auto title = pasteboard->stringForType(QBURLPasteboard::kURLNameType);
        const auto titled = pasteboard->stringForType(QBURLPasteboard::kURLAlreadyParsedType);
        return title && titled == url ? *title : QString();
    });
    connect(m_editor, &QBNoteEditorViewController::noteDidChange, this, &EditorPane::updateShown);
    connect(m_editor, &QBNoteEditorViewController::urlWasOpened, this, &EditorPane::urlWasOpened);
    connect(m_editor, &QBNoteEditorViewController::noteWasChosen, this, &EditorPane::noteWasChosen);
    connect(m_editor, &QBNoteEditorViewController::attachingFailed, this, &EditorPane::attachingFailed);
    connect(m_editor, &QBNoteEditorViewController::savingFailed, this, &EditorPane::savingFailed);
}

void EditorPane::setNote(const Ref<QBNote> &note)
{
    if (note) {
        setCurrentWidget(m_editor); // pictures are made for the width that the pane has
    }
    m_editor->setNote(note);
    updateShown();
}

void EditorPane::updateShown()
{
    const QWidget *focus = window()->focusWidget();
    const bool hadFocus = focus != nullptr && m_editor->isAncestorOf(focus);
    setCurrentWidget(note() ? static_cast<QWidget *>(m_editor) : m_empty);
    if (!note() && hadFocus) {
        m_empty->setFocus(); // and not what comes next, where keys do things
    }
}

void EditorPane::loadTheme(const std::shared_ptr<QBTheme> &theme)
{
    textView().textKitStack().themeManager()->loadTheme(theme);
}

void EditorPane::focusEditor()
{
    if (note()) {
        m_editor->focusEditor();
    } else {
        m_empty->setFocus();
    }
}

} // namespace quib

#include "EditorFixture.h"

#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QImage>
#include <QTest>

namespace quib::tests {

EditorFixture::EditorFixture(int syntax, const QString &text, QSize size)
{
    m_stack.themeManager()->loadDefaultTheme();
    m_stack.stylerManager()->setSyntax(syntax);
    m_view = std::make_unique<QBNoteTextView>(m_stack);
    m_view->setDelegate(this);
    m_view->resize(size);
    m_view->loadString(text);
    m_view->show();
    m_view->activateWindow();
    m_view->setFocus();
    (void)QTest::qWaitForWindowActive(m_view.get());
}

EditorFixture::~EditorFixture()
{
    m_view->setDelegate(nullptr);
}

void EditorFixture::press(int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(m_view.get(), static_cast<Qt::Key>(key), modifiers);
}

void EditorFixture::type(const QString &text)
{
    QTest::keyClicks(m_view.get(), text);
}

QImage EditorFixture::painted()
{
    return m_view->viewport()->grab().toImage();
}

void EditorFixture::qbNoteTextViewDidChangeText(QBNoteTextView &view)
{
    QBNotesTextStorage &storage = view.textStorage();
    const NSRange range = storage.rangeToStyle();
    if (view.undoManager().isUndoing() || view.undoManager().isRedoing()) {
        storage.applyStylingInRange(range);
        return;
    }
    NSRange selection = kNotFoundRange;
    if (const auto styled = storage.styleTextInRange(range, view.selectedRange(), &selection)) {
        view.replaceCharactersInrange(range, *styled, selection);
    }
}

void EditorFixture::qbNoteTextViewDidClickAttachment(QBNoteTextView &view,
                                                     const std::shared_ptr<NSTextAttachment> &attachment,
                                                     qint64 /*location*/)
{
    dynamic_cast<QBCheckBoxTextAttachment &>(*attachment).toggleCheck();
    view.setNeedsDisplay();
}

void EditorFixture::qbNoteTextViewDidOpenURL(QBNoteTextView & /*view*/, const QUrl &url)
{
    opened.append(url.toString());
}

} // namespace quib::tests

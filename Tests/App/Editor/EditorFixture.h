#pragma once

#include <Editor/QBNoteTextView.h>

#include <QString>

namespace quib::tests {

/// A text view in a window of its own, with a delegate that styles each change as the editor does.
class EditorFixture : public QBNoteTextViewDelegate
{
public:
    explicit EditorFixture(int syntax = 0, const QString &text = {}, QSize size = {640, 480});
    ~EditorFixture() override;

    [[nodiscard]] QBNoteTextKitStack &stack() { return m_stack; }
    [[nodiscard]] QBNoteTextView &view() { return *m_view; }
    /// The note's text.
    [[nodiscard]] QString text() const { return m_stack.noteTextStorage().stringWithExpandedTextAttachments(); }
    [[nodiscard]] QString buffer() const { return m_stack.noteTextStorage().string().toString(); }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString &text);
    /// The viewport as it is painted now.
    [[nodiscard]] QImage painted();

    void qbNoteTextViewDidChangeText(QBNoteTextView &view) override;
    void qbNoteTextViewDidClickAttachment(QBNoteTextView &view, const std::shared_ptr<NSTextAttachment> &attachment,
                                          qint64 location) override;
    void qbNoteTextViewDidOpenURL(QBNoteTextView &view, const QUrl &url) override;

    QStringList opened;

private:
    QBNoteTextKitStack m_stack;
    std::unique_ptr<QBNoteTextView> m_view;
};

} // namespace quib::tests

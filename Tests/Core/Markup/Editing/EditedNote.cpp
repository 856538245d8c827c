#include "EditedNote.h"

namespace quib::tests {

EditedNote::EditedNote(int syntax, QStringView marked)
    : FakeTextView(syntax, marked)
    , m_controller(stack())
{
}

void EditedNote::type(const QString &text)
{
    run([&] { insertText(text, selectedRange()); });
}

bool EditedNote::pressReturn()
{
    return run([&] {
        const bool isHandled = m_controller.matchRepeatableStyleOnNewLineInTextView(*this);
        if (!isHandled) {
            insertText(QStringLiteral("\n"), selectedRange());
        }
        return isHandled;
    });
}

bool EditedNote::pressTab(bool backwards)
{
    return run([&] {
        const bool isHandled = m_controller.indentTabbableStyle(backwards, *this);
        if (!isHandled && !backwards) {
            insertText(QStringLiteral("\t"), selectedRange());
        }
        return isHandled;
    });
}

void EditedNote::pressBackspace()
{
    const NSRange selection = selectedRange();
    if (selection.length == 0 && selection.location == 0) {
        return;
    }
    const NSRange removed = selection.length == 0 ? NSRange{selection.location - 1, 1} : selection;
    run([&] { insertText(QStringLiteral(""), removed); });
}

} // namespace quib::tests

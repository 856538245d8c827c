#include "FakeTextView.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace quib::tests {

namespace {

constexpr QStringView kMarks = u"|[]\\";

} // namespace

MarkedText MarkedText::parsed(QStringView marked)
{
    MarkedText result;
    qint64 start = -1;
    qint64 end = -1;
    for (qsizetype i = 0; i < marked.size(); ++i) {
        const QChar unit = marked[i];
        if (unit == u'\\' && i + 1 < marked.size() && kMarks.contains(marked[i + 1])) {
            result.text += marked[++i];
        } else if (unit == u'|' || unit == u'[') {
            EXPECT_EQ(start, -1) << "two selections in " << marked.toString().toStdString();
            start = result.text.size();
        } else if (unit == u']') {
            end = result.text.size();
        } else {
            result.text += unit;
        }
    }
    start = start < 0 ? result.text.size() : start;
    result.selection = {start, std::max(start, end) - start};
    return result;
}

QString MarkedText::printed() const
{
    QString result;
    for (qint64 i = 0; i <= text.size(); ++i) {
        if (i == selection.location) {
            result += selection.length == 0 ? u'|' : u'[';
        }
        if (selection.length > 0 && i == selection.limit()) {
            result += u']';
        }
        if (i < text.size()) {
            if (kMarks.contains(text[i])) {
                result += u'\\';
            }
            result += text[i];
        }
    }
    return result;
}

FakeTextView::FakeTextView(int syntax, QStringView marked)
{
    const MarkedText parsed = MarkedText::parsed(marked);
    m_stack.themeManager()->loadDefaultTheme();
    m_stack.stylerManager()->setSyntax(syntax);
    m_stack.noteTextStorage().loadString(parsed.text);
    select(marked);
}

QString FakeTextView::marked()
{
    const qint64 start = textPlace(m_selection.location);
    const NSRange selection = {start, textPlace(m_selection.limit()) - start};
    return MarkedText{textStorage().stringWithExpandedTextAttachments(), selection}.printed();
}

QString FakeTextView::markedBuffer()
{
    return MarkedText{textStorage().string().toString(), m_selection}.printed();
}

void FakeTextView::select(QStringView marked)
{
    const MarkedText parsed = MarkedText::parsed(marked);
    EXPECT_EQ(parsed.text.toStdString(), textStorage().stringWithExpandedTextAttachments().toStdString());
    const qint64 start = bufferPlace(parsed.selection.location);
    m_selection = {start, bufferPlace(parsed.selection.limit()) - start};
}

qint64 FakeTextView::bufferPlace(qint64 place)
{
    qint64 low = 0;
    qint64 high = textStorage().length();
    while (low < high) {
        const qint64 middle = (low + high) / 2;
        if (textPlace(middle) < place) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    // Attachments that stand for nothing take no room in the text: the caret is behind them.
    while (low < textStorage().length() && textPlace(low + 1) == place) {
        ++low;
    }
    return low;
}

qint64 FakeTextView::textPlace(qint64 place)
{
    return textStorage().stringWithExpandedTextAttachmentsWithRange({0, place}).size();
}

} // namespace quib::tests

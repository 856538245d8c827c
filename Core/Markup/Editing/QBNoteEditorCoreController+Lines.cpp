#include "QBNoteEditorCoreController.h"

#include <Markup/QBNotesTextStorage.h>
#include <Text/NSMutableAttributedString.h>
#include <Text/NSStringHelpers.h>

#include <algorithm>
#include <array>
#include <vector>

using namespace Qt::StringLiterals;
using quib::NoteTextView;

// Whole lines: their indentation and their order.

namespace {

constexpr QStringView kIndent = u"\t";
/// What a line loses when it goes out by a level: the first of these that it begins with.
constexpr std::array<QStringView, 5> kIndents{kIndent, u"    ", u"   ", u"  ", u" "};

/// The lines of a text with their terminators; none where it is empty.
std::vector<NSRange> linesOf(const NSAttributedString &text)
{
    std::vector<NSRange> lines;
    for (qint64 start = 0; start < text.length(); start = lines.back().limit()) {
        lines.push_back(text.paragraphRangeForRange({start, 0}));
    }
    return lines;
}

/// Units: how many characters a line loses.
qint64 lengthOfIndent(QStringView line)
{
    const auto indent = std::ranges::find_if(kIndents, [line](QStringView text) { return line.startsWith(text); });
    return indent == kIndents.end() ? 0 : indent->size();
}

/// A line in its two parts: what it says, and what ends it.
struct Line
{
    explicit Line(const NSAttributedString &text, NSRange range)
    {
        const QStringView units = text.stringInRange(range);
        qint64 length = units.size();
        if (units.endsWith(u"\r\n"_s)) {
            length -= 2;
        } else if (length > 0 && quib::isParagraphEnd(units.back().unicode())) {
            --length;
        }
        content = text.attributedSubstringFromRange({range.location, length});
        terminator = text.attributedSubstringFromRange({range.location + length, range.length - length});
    }

    NSAttributedString content;
    NSAttributedString terminator;
};

} // namespace

void QBNoteEditorCoreController::shiftSelectionRight(bool right, NoteTextView &inTextView)
{
    const NSAttributedString &text = inTextView.textStorage().attributedString();
    const NSRange selection = quib::rangeCutToLength(inTextView.selectedRange(), text.length());
    const NSRange range = text.paragraphRangeForRange(selection);
    NSMutableAttributedString shifted(text.attributedSubstringFromRange(range));
    if (shifted.isEmpty()) {
        if (right) {
            inTextView.insertText(kIndent.toString(), selection);
        }
        return;
    }
    const std::vector<NSRange> lines = linesOf(shifted);
    qint64 removedInFirst = 0;
    qint64 removed = 0;
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        if (right) {
            // A text of its own: it must not take over the attachment that it stands beside.
            shifted.insertAttributedString(NSAttributedString(kIndent.toString()), line->location);
            continue;
        }
        removedInFirst = lengthOfIndent(shifted.stringInRange(*line));
        removed += removedInFirst;
        shifted.deleteCharactersInRange({line->location, removedInFirst});
    }
    if (!right && removed == 0) {
        return;
    }
    const auto added = static_cast<qint64>(lines.size());
    const qint64 start = right ? selection.location + 1 : std::max(range.location, selection.location - removedInFirst);
    const qint64 end = std::max(start, right ? selection.limit() + added : selection.limit() - removed);
    inTextView.replaceCharactersInrange(range, shifted, {start, selection.length == 0 ? 0 : end - start});
}

void QBNoteEditorCoreController::moveParagraphUp(bool up, NoteTextView &inTextView)
{
    const NSAttributedString &text = inTextView.textStorage().attributedString();
    if (!inTextView.selectedRange().isFound()) {
        return;
    }
    const NSRange selection = quib::rangeCutToLength(inTextView.selectedRange(), text.length());
    const NSRange moved = text.paragraphRangeForRange(selection);
    const Line movedLines(text, moved);
    NSRange other;
    bool makesLine = false;
    if (up) {
        if (moved.location == 0) {
            return;
        }
        other = text.paragraphRangeForRange({moved.location - 1, 0});
    } else if (moved.limit() < text.length()) {
        other = text.paragraphRangeForRange({moved.limit(), 0});
    } else if (!movedLines.terminator.isEmpty()) {
        // Past the last line there is an empty one, and past that none: it gets a terminator to go above.
        other = {moved.limit(), 0};
        makesLine = true;
    } else {
        return;
    }
    const Line otherLine(text, other);

    // The contents change places and the terminators stay, so that the text ends as it did.
    NSMutableAttributedString exchanged;
    const Line &first = up ? movedLines : otherLine;
    const Line &second = up ? otherLine : movedLines;
    exchanged.appendAttributedString(first.content);
    exchanged.appendAttributedString(up ? second.terminator : movedLines.terminator);
    const qint64 startOfSecond = exchanged.length();
    exchanged.appendAttributedString(second.content);
    exchanged.appendAttributedString(up ? first.terminator : otherLine.terminator);
    if (makesLine) {
        exchanged.appendAttributedString(NSAttributedString(u"\n"_s));
    }
    const NSRange range = NSUnionRange(moved, other);
    const qint64 start = range.location + (up ? 0 : startOfSecond);
    const qint64 offset = std::min(selection.location - moved.location, movedLines.content.length());
    const qint64 length = std::min(selection.length, movedLines.content.length() - offset);
    inTextView.replaceCharactersInrange(range, exchanged, {start + offset, length});
}

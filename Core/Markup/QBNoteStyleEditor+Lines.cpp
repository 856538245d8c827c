#include "QBNoteStyleEditor.h"

#include "MarkerEdits.h"

#include <Markup/Syntax/SyntaxCharacters.h>
#include <Text/NSStringHelpers.h>
#include <Text/TextAroundRange.h>

#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using quib::MarkerEdits;

// Commands that write lines of their own: fences around code, and separators.

namespace {

/// A block as it is painted: its fences and what lies between carry one or the other of two attributes.
class PaintedBlocks
{
public:
    PaintedBlocks(const NSAttributedString &text, const NSAttributeName &body, const NSAttributeName &fence)
        : m_text(text)
        , m_body(body)
        , m_fence(fence)
    {
    }

    [[nodiscard]] bool holds(qint64 place) const
    {
        return m_text.attribute(m_body, place).boolValue() || isFence(place);
    }
    [[nodiscard]] bool isFence(qint64 place) const { return m_text.attribute(m_fence, place).boolValue(); }
    /// The lines of a range, together with those of the blocks at its ends.
    [[nodiscard]] NSRange linesWithBlocks(NSRange paragraphs) const
    {
        if (paragraphs.length == 0) {
            return paragraphs;
        }
        qint64 start = paragraphs.location;
        while (start > 0 && holds(start) && holds(start - 1)) {
            start = runAt(start - 1).location;
        }
        qint64 limit = paragraphs.limit();
        while (limit < m_text.length() && holds(limit - 1) && holds(limit)) {
            limit = runAt(limit).limit();
        }
        return m_text.paragraphRangeForRange({start, limit - start});
    }

private:
    /// Around a place in a block, a stretch that lies in it.
    [[nodiscard]] NSRange runAt(qint64 place) const
    {
        NSRange run;
        if (!m_text.attribute(m_body, place, &run, m_text.fullRange()).boolValue()) {
            // The value is only read for the range.
            run = {place, 1};
            (void)m_text.attribute(m_fence, place, &run, m_text.fullRange());
        }
        return run;
    }

    const NSAttributedString &m_text;
    const NSAttributeName &m_body;
    const NSAttributeName &m_fence;
};

/// The last fence of a text up to a limit where it opens nothing, since no other one follows that would close it;
/// nothing where all are halves of painted blocks.
std::optional<qint64> waitingFence(const NSAttributedString &text, const QString &marker, const PaintedBlocks &blocks,
                                   qint64 limit)
{
    const QStringView before = text.stringInRange({0, limit});
    qsizetype place = before.lastIndexOf(marker);
    while (place > 0 && !quib::syntax::isLineStart(before, place)) {
        place = before.lastIndexOf(marker, place - 1);
    }
    return place < 0 || blocks.isFence(place) ? std::nullopt : std::optional<qint64>(place);
}

/// What ends a paragraph, 0 to 2 units.
qint64 terminatorLength(const NSAttributedString &text, NSRange paragraph)
{
    if (paragraph.length == 0 || !quib::isParagraphEnd(text.characterAtIndex(paragraph.limit() - 1))) {
        return 0;
    }
    const bool isPair = paragraph.length > 1 && text.characterAtIndex(paragraph.limit() - 1) == u'\n' &&
                        text.characterAtIndex(paragraph.limit() - 2) == u'\r';
    return isPair ? 2 : 1;
}

} // namespace

QBNoteStyleEditor::Result QBNoteStyleEditor::toggleMultiLineStyle(const NSAttributeName &style,
                                                                  const QString &styleMarker,
                                                                  const NSAttributeName &styleMarkerName, NSRange range,
                                                                  const NSAttributedString &inAttributedString)
{
    const NSAttributedString &text = inAttributedString;
    const NSRange selection = quib::rangeCutToLength(range, text.length());
    const PaintedBlocks blocks(text, style, styleMarkerName);
    const NSRange lines = blocks.linesWithBlocks(text.paragraphRangeForRange(selection));

    // With a fence that waits for another, whatever comes behind it pairs: it is taken for a half of the block.
    const auto waiting = waitingFence(text, styleMarker, blocks, lines.limit());

    struct Line
    {
        NSRange range;
        bool isFence;
    };
    std::vector<Line> fences;
    bool isAllCode = lines.length > 0;
    bool beginsWithCode = waiting && *waiting <= lines.location;
    bool endsWithCode = false;
    Line last{lines, /*isFence=*/false};
    NSRange beforeLast = kNotFoundRange;
    for (qint64 start = lines.location; start < lines.limit();) {
        beforeLast = start == lines.location ? kNotFoundRange : last.range;
        last = {text.paragraphRangeForRange({start, 0}), blocks.isFence(start) || start == waiting};
        isAllCode = isAllCode && blocks.holds(start);
        beginsWithCode = beginsWithCode || (start == lines.location && blocks.holds(start));
        endsWithCode = blocks.holds(start) || (start == waiting && start > lines.location);
        if (last.isFence) {
            fences.push_back(last);
        }
        start = last.range.limit();
    }

    MarkerEdits edits(text);
    if (isAllCode) {
        for (const Line &fence : fences) {
            edits.remove(fence.range);
        }
        // The text's last line leaves no empty one behind.
        if (last.isFence && beforeLast.isFound() && terminatorLength(text, last.range) == 0) {
            const qint64 length = terminatorLength(text, beforeLast);
            edits.remove({beforeLast.limit() - length, length});
        }
    } else {
        // Outer fences that are there stay, and the inner ones go.
        for (const Line &fence : fences) {
            const bool isOuter = (beginsWithCode && fence.range.location == lines.location) ||
                                 (endsWithCode && fence.range.limit() == lines.limit());
            if (!isOuter) {
                edits.remove(fence.range);
            }
        }
        if (!beginsWithCode) {
            edits.insert(lines.location, QString(styleMarker % u'\n'));
        }
        if (!endsWithCode) {
            const bool isEnded = lines.length > 0 && terminatorLength(text, last.range) > 0;
            edits.insert(lines.limit(), isEnded ? QString(styleMarker % u'\n') : QString(u'\n' % styleMarker),
                         MarkerEdits::Caret::Before);
        }
    }
    if (edits.isEmpty()) {
        return std::nullopt;
    }
    const NSRange changed = edits.changedRange();
    return QBNoteStyleEditorResult{edits.editedText(changed), changed, edits.editedRange(selection)};
}

QBNoteStyleEditor::Result QBNoteStyleEditor::applyTypingStyle(const QString &styleMarker,
                                                              const QStringList &styleEnclosingStrings, NSRange range,
                                                              const NSAttributedString &inAttributedString)
{
    const NSAttributedString &text = inAttributedString;
    const NSRange selection = quib::rangeCutToLength(range, text.length());
    const QString enclosing = styleEnclosingStrings.value(0);
    bool isEnclosed = selection.location == 0;
    for (const QString &string : styleEnclosingStrings) {
        const qint64 length = std::min<qint64>(string.size(), selection.location);
        isEnclosed = isEnclosed || text.stringInRange({selection.location - length, length}) == string;
    }
    const QString fragment = (isEnclosed ? QString() : enclosing) % styleMarker % enclosing;
    return QBNoteStyleEditorResult{NSAttributedString(fragment), selection, {selection.location + fragment.size(), 0}};
}

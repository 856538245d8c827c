// Where what stands behind a note's text is drawn, told by the pixels of a page.

#include "StyledNote.h"

#include <Graphics/GraphicsContext.h>
#include <Graphics/NSImage.h>
#include <Markup/NotePainter.h>
#include <Markup/QBNotesLayoutManager.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

/// A page of a note, with the column in the middle of it; one pixel a point.
class PaintedPage
{
public:
    PaintedPage(const QString &text, double width)
        : m_note(0, text)
        , m_layout(m_note.storage(), m_note.stack().themeManager())
    {
        m_layout.setPageWidth(width);
        (void)m_layout.paragraphsInHeights(0, 1e6);
        GraphicsContext context(QSizeF(width, m_layout.height()), 1);
        context.fillRect(QRectF(0, 0, width, m_layout.height()), NSColor::whiteColor());
        const NotePainter painter(m_note.storage().attributedString(), *m_note.stack().themeManager(),
                                  m_layout.columnLeft(), m_layout.columnWidth());
        painter.drawBackground(context, m_layout.paragraphsInHeights(0, 1e6));
        m_image = context.image();
    }
    [[nodiscard]] StyledNote &note() { return m_note; }
    [[nodiscard]] QBNotesLayoutManager &layout() { return m_layout; }
    [[nodiscard]] bool isInked(QRectF area) const
    {
        const QRect pixels = area.toAlignedRect().intersected(QRect(QPoint(0, 0), m_image.pixelSize()));
        for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
            for (int x = pixels.left(); x <= pixels.right(); ++x) {
                if (m_image.colorAt(x, y) != NSColor::whiteColor()) {
                    return true;
                }
            }
        }
        return false;
    }

private:
    StyledNote m_note;
    QBNotesLayoutManager m_layout;
    NSImage m_image;
};

} // namespace

TEST(NotePainterTest, AQuoteHasItsBarWhereItsWritingBegins)
{
    PaintedPage page(u"> left\n> \u05D0\u05D1\u05D2\n> \u0645\u0631\u062D\u0628\u0627\n> left again"_s, 400);
    const double middle = 200;
    const auto paragraphs = page.layout().paragraphsInHeights(0, 1e6);
    ASSERT_EQ(paragraphs.size(), 4U);
    const bool isLeft[] = {true, false, false, true};
    for (size_t i = 0; i < paragraphs.size(); ++i) {
        // Inside of the lines: the bars of neighbours end at their edges.
        const double top = paragraphs[i].origin.y() + paragraphs[i].layout->lines().front().rect.top() + 3;
        const double height = paragraphs[i].layout->lines().front().rect.height() - 6;
        EXPECT_EQ(page.isInked({0, top, middle, height}), isLeft[i]) << i;
        EXPECT_EQ(page.isInked({middle, top, middle, height}), !isLeft[i]) << i;
    }
}

TEST(NotePainterTest, ATagHasNoPillWhereItHasNoText)
{
    int pillsWithoutText = 0;
    for (int width = 90; width < 420; ++width) {
        PaintedPage page(u"words #somewhere/far/away/from/here words #two words of it#"_s, width);
        const auto &text = page.note().storage().attributedString();
        for (const PlacedParagraph &paragraph : page.layout().paragraphsInHeights(0, 1e6)) {
            for (const auto &line : paragraph.layout->lines()) {
                const NSRange range = {line.range.location + paragraph.shift, line.range.length};
                text.enumerateAttribute(
                    QBNoteTagStylerAttributeName, range, NSAttributedStringEnumerationOptions::Forward,
                    [&](const AttributeValue &value, NSRange part, bool * /*stop*/) {
                        const QStringView written = text.stringInRange(part);
                        const bool hasText = std::any_of(written.begin(), written.end(), [](QChar unit) {
                            return !unit.isSpace() && unit != QChar::ObjectReplacementCharacter;
                        });
                        if (!value) {
                            return;
                        }
                        for (const QRectF &rect : paragraph.rectsForRange(part)) {
                            EXPECT_EQ(page.isInked(QRectF(rect.center(), QSizeF(1, 1))), hasText)
                                << "width " << width << ", " << written.toString().toStdString();
                        }
                        pillsWithoutText += hasText ? 0 : 1;
                    });
            }
        }
    }
    EXPECT_GT(pillsWithoutText, 0) << "no width wrapped a tag behind its spacer";
}

} // namespace quib::tests

// Printing a note: how it is cut into pages, and that nothing is lost or cut in two on the way.

#include <Editor/NotePrinter.h>
#include <Graphics/GraphicsContext.h>

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>

#include <vector>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

/// The pages of a note, one pixel a point.
std::vector<QImage> pagesOf(const QString &text, QSize size)
{
    std::vector<QImage> pages;
    NotePrinter(text, 0).enumeratePages(size, [&](const NotePrinter::DrawPage &drawPage) {
        QImage page(size, QImage::Format_RGB32);
        page.fill(Qt::white);
        {
            QPainter painter(&page);
            GraphicsContext context(painter);
            drawPage(context);
        }
        pages.push_back(page);
        return true;
    });
    return pages;
}

/// How many pages a file of them has.
qsizetype pagesInFile(const NotePrinter &printer, const QString &ranges)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setPageSize(QPageSize(QPageSize::A5));
        writer.setPageRanges(QPageRanges::fromString(ranges));
        EXPECT_TRUE(printer.print(writer));
    }
    EXPECT_TRUE(bytes.startsWith("%PDF"));
    return bytes.count("/Type /Page\n");
}

/// How many stretches of rows with anything on them follow one another, on all pages.
int countLines(const std::vector<QImage> &pages)
{
    int lines = 0;
    for (const QImage &page : pages) {
        bool wasInked = false;
        for (int y = 0; y < page.height(); ++y) {
            bool isInked = false;
            for (int x = 0; x < page.width() && !isInked; ++x) {
                isInked = qGray(page.pixel(x, y)) < 200;
            }
            lines += isInked && !wasInked ? 1 : 0;
            wasInked = isInked;
        }
    }
    return lines;
}

QString lines(int count)
{
    return u"Mxx\n"_s.repeated(count).chopped(1);
}

} // namespace

TEST(NotePrinter, PutsEveryLineOnOnePageWhole)
{
    for (const int height : {200, 313, 457}) {
        const auto pages = pagesOf(lines(100), {400, height});
        EXPECT_GT(pages.size(), 3U);
        EXPECT_EQ(int(pages.size()), NotePrinter(lines(100), 0).pageCount(QSizeF(400, height)));
        EXPECT_EQ(countLines(pages), 100) << "pages of " << height;
    }
}

TEST(NotePrinter, CutsLongParagraphsBetweenTheirLines)
{
    const QString paragraph = u"words to be set in lines "_s.repeated(600);
    const auto high = pagesOf(paragraph, {300, 20'000});
    ASSERT_EQ(high.size(), 1U);
    const auto low = pagesOf(paragraph, {300, 250});
    EXPECT_GT(low.size(), 10U);
    EXPECT_EQ(countLines(low), countLines(high));
}

TEST(NotePrinter, HasAPageForAnEmptyNoteAndPlaceForNarrowPaper)
{
    const auto pages = pagesOf({}, {400, 200});
    EXPECT_EQ(pages.size(), 1U);
    EXPECT_EQ(countLines(pages), 0);
    // No line fits: each has a page of its own.
    EXPECT_EQ(NotePrinter(u"a\nb\nc"_s, 0).pageCount({2, 1}), 3);
}

TEST(NotePrinter, PrintsAllPagesOrThoseThatAreAskedFor)
{
    const NotePrinter printer(u"# Title\n- one #tag\n+ two\n> quoted\n```\ncode\n```\n"_s + lines(150), 0);
    const qsizetype all = pagesInFile(printer, {});
    EXPECT_GE(all, 4);
    EXPECT_EQ(pagesInFile(printer, u"2-3"_s), 2);
    EXPECT_EQ(pagesInFile(printer, u"1,3-%1"_s.arg(all)), all - 1);
}

#include "ImageSamples.h"

#include <Graphics/GraphicsContext.h>

#include <Support/QtPrinters.h>

#include <gtest/gtest.h>

#include <QPainter>

#include <cmath>
#include <functional>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

const NSColor kRed = NSColor::colorWithRed(1, 0, 0);
const NSColor kBlue = NSColor::colorWithRed(0, 0, 1);

/// How many pixels the colour covers, partly covered ones by their part.
double areaOf(const NSImage &image)
{
    double area = 0;
    for (int y = 0; y < image.pixelSize().height(); ++y) {
        for (int x = 0; x < image.pixelSize().width(); ++x) {
            area += image.colorAt(x, y).alphaComponent();
        }
    }
    return area;
}

QRect inkOf(const GraphicsContext &context)
{
    return context.image().opaqueBounds();
}

} // namespace

TEST(GraphicsContextShapes, CoverTheirArea)
{
    struct Case
    {
        const char *name;
        std::function<void(GraphicsContext &)> draw;
        double area;
        QRect ink;
    };
    const QRectF box(10, 10, 40, 20);
    NSBezierPath triangle;
    triangle.moveToPoint({10, 10});
    triangle.lineToPoint({50, 10});
    triangle.lineToPoint({10, 50});
    triangle.closePath();
    NSBezierPath ring = NSBezierPath::bezierPathWithRect({10, 10, 40, 40});
    ring.appendBezierPath(NSBezierPath::bezierPathWithRect({20, 20, 20, 20}));
    const Case cases[] = {
        {"rect", [&](auto &c) { c.fillRect(box, kRed); }, 800, {10, 10, 40, 20}},
        {"stroked rect", [&](auto &c) { c.strokeRect(box, kRed, 2); }, 2 * 2 * 60, {9, 9, 42, 22}},
        {"rounded", [&](auto &c) { c.fillRoundedRect(box, 10, kRed); }, 800 - 400 + M_PI * 100, {10, 10, 40, 20}},
        {"over-rounded", [&](auto &c) { c.fillRoundedRect(box, 99, kRed); }, M_PI * 20 * 10, {10, 10, 40, 20}},
        {"oval",
         [&](auto &c) {
             c.fillOval({10, 10, 40, 40}, kRed);
         },
         M_PI * 400,
         {10, 10, 40, 40}},
        {"stroked oval",
         [&](auto &c) {
             c.strokeOval({10, 10, 40, 40}, kRed, 4);
         },
         M_PI * 40 * 4,
         {8, 8, 44, 44}},
        {"line",
         [&](auto &c) {
             c.strokeLine({10, 30}, {50, 30}, kRed, 4);
         },
         160,
         {10, 28, 40, 4}},
        {"round line",
         [&](auto &c) {
             c.strokeLine({10, 30}, {50, 30}, kRed, 4, LineCap::Round);
         },
         160 + M_PI * 4,
         {8, 28, 44, 4}},
        {"triangle", [&](auto &c) { c.fillPath(triangle, kRed); }, 800, {10, 10, 40, 40}},
        {"ring", [&](auto &c) { c.fillPath(ring, kRed); }, 1200, {10, 10, 40, 40}},
        {"half seen", [&](auto &c) { c.fillRect(box, kRed.colorWithAlphaComponent(0.5)); }, 400, {10, 10, 40, 20}},
    };
    for (const Case &c : cases) {
        GraphicsContext context({60, 60});
        c.draw(context);
        EXPECT_NEAR(areaOf(context.image()), c.area, c.area * 0.04) << c.name;
        EXPECT_EQ(inkOf(context), c.ink) << c.name;
    }
}

TEST(GraphicsContextState, MovesScalesTurnsAndClips)
{
    GraphicsContext context({40, 40});
    context.saveState();
    context.translateBy(10, 20);
    context.scaleBy(2, 1);
    context.fillRect({0, 0, 5, 5}, kRed);
    EXPECT_EQ(inkOf(context), QRect(10, 20, 10, 5));
    context.restoreState();
    context.saveState();
    context.clipToRect({0, 0, 4, 40});
    context.clipToRect({0, 0, 40, 4});
    context.fillRect({0, 0, 40, 40}, kBlue);
    context.restoreState();
    EXPECT_EQ(inkOf(context), QRect(0, 0, 20, 25));
    EXPECT_EQ(context.image().colorAt(3, 3), kBlue);
    EXPECT_EQ(context.image().colorAt(4, 3).alphaComponent(), 0);
    context.translateBy(40, 0);
    context.rotateBy(90);
    context.fillRect({30, 0, 10, 2}, kRed);
    EXPECT_EQ(context.image().colorAt(39, 35), kRed);
    context.restoreState(); // one too many
    context.fillRect({0, 38, 2, 2}, kBlue);
    EXPECT_EQ(context.image().colorAt(1, 1), kBlue) << "the transformation still holds";
}

TEST(GraphicsContextState, ClipsToAPath)
{
    GraphicsContext context({40, 40});
    context.clipToPath(NSBezierPath::bezierPathWithOvalInRect({0, 0, 40, 40}));
    context.fillRect({0, 0, 40, 40}, kRed);
    EXPECT_NEAR(areaOf(context.image()), M_PI * 400, 15);
}

TEST(GraphicsContext, HasAsManyPixelsAsItsScaleSays)
{
    GraphicsContext context({10.2, 5}, 2, NSColor::whiteColor());
    context.fillRect({0, 0, 5, 5}, kRed);
    const NSImage image = context.image();
    EXPECT_EQ(image.pixelSize(), QSize(21, 10));
    EXPECT_EQ(image.scale(), 2);
    EXPECT_EQ(image.colorAt(9, 9), kRed);
    EXPECT_EQ(image.colorAt(10, 9), NSColor::whiteColor());
}

TEST(GraphicsContext, SizesThatCannotBeAreHarmless)
{
    for (const QSizeF size : {QSizeF(0, 0), QSizeF(-5, 3), QSizeF(1e9, 1e9), QSizeF(std::nan(""), 1)}) {
        GraphicsContext context(size);
        context.fillRect({0, 0, 5, 5}, kRed);
        EXPECT_FALSE(context.image().isEmpty());
    }
}

TEST(GraphicsContext, DrawsWithAPainterAndGivesItsStateBack)
{
    QImage target(20, 20, QImage::Format_ARGB32_Premultiplied);
    target.fill(Qt::transparent);
    QPainter painter(&target);
    {
        GraphicsContext context(painter);
        context.saveState();
        context.translateBy(5, 5);
        context.clipToRect({0, 0, 2, 2});
        context.fillRect({0, 0, 10, 10}, kRed);
        EXPECT_TRUE(context.image().isEmpty());
    }
    EXPECT_TRUE(painter.transform().isIdentity());
    EXPECT_FALSE(painter.hasClipping());
    EXPECT_FALSE(painter.testRenderHint(QPainter::SmoothPixmapTransform));
    painter.end();
    EXPECT_EQ(NSImage(target).opaqueBounds(), QRect(5, 5, 2, 2));
}

TEST(GraphicsContextImages, FillTheirBox)
{
    const NSImage image(quarters(200, 100));
    for (const QRectF box : {QRectF(0, 0, 40, 40), QRectF(10, 20, 20, 10), QRectF(5, 5, 30, 30)}) {
        GraphicsContext context({40, 40});
        context.drawImage(image, box);
        EXPECT_EQ(inkOf(context), box.toRect());
        EXPECT_EQ(quartersOf(context.image().imageCroppedToPixelRect(box.toRect()).image()), "RGBW");
    }
    GraphicsContext context({4, 4});
    context.drawImage(image, {0, 0, 4, 4}, 0.5);
    context.drawImage(NSImage(), {0, 0, 4, 4});
    context.drawImage(image, {});
    EXPECT_NEAR(context.image().colorAt(0, 0).alphaComponent(), 0.5, 0.01);
}

TEST(GraphicsContextText, IsAsWideAsItsFontSays)
{
    // Bars without side bearing would be ideal; the block character comes close.
    const QString blocks(12, QChar(0x2588));
    for (const double size : {9.5, 12.0, 13.25, 16.0, 30.0}) {
        const auto font = NSFont::fontWithName(u"DejaVu Sans Mono", size);
        ASSERT_TRUE(font);
        GraphicsContext context({400, 60});
        context.drawText(blocks, {10, 40}, *font, kRed);
        EXPECT_NEAR(inkOf(context).width(), font->advanceOfText(blocks), 3) << size;
        EXPECT_NEAR(inkOf(context).left(), 10, 2) << size;
    }
}

TEST(GraphicsContextText, StandsOnItsBaseline)
{
    const auto font = NSFont::fontWithName(u"DejaVu Sans", 40);
    ASSERT_TRUE(font);
    GraphicsContext context({100, 100});
    context.drawText(u"H", {10, 60}, *font, kBlue);
    const QRect ink = inkOf(context);
    EXPECT_NEAR(ink.top() + ink.height(), 60, 1.01);
    EXPECT_NEAR(ink.height(), font->capHeight(), 1.5);
    EXPECT_EQ(context.image().colorAt(ink.left() + 3, 50), kBlue);
}

TEST(GraphicsContextText, LooksTheSameTwiceAsLarge)
{
    const auto font = NSFont::fontWithName(u"DejaVu Sans", 17.5);
    ASSERT_TRUE(font);
    GraphicsContext once({120, 40});
    once.drawText(u"Twice as large", {3, 25}, *font, kRed);
    GraphicsContext twice({120, 40}, 2);
    twice.drawText(u"Twice as large", {3, 25}, *font, kRed);
    EXPECT_NEAR(areaOf(twice.image()) / 4, areaOf(once.image()), areaOf(once.image()) * 0.08);
    EXPECT_NEAR(inkOf(twice).width() / 2.0, inkOf(once).width(), 2);
}

TEST(GraphicsContextText, AnyTextIsDrawn)
{
    GraphicsContext context({100, 20});
    const char16_t odd[] = u"\xD800 \x0000 \xFEFF \xFFFC \x0301 \n\t \xDC00";
    context.drawText(QStringView(odd, std::size(odd) - 1), {0, 15}, NSFont::systemFontOfSize(12), kRed);
    context.drawText(u"", {0, 15}, NSFont::systemFontOfSize(12), kRed);
    EXPECT_FALSE(context.image().isEmpty());
}

} // namespace quib::tests

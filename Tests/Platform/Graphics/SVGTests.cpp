#include "ImageSamples.h"

#include <Graphics/NSImage.h>

#include <Support/TemporaryFolder.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

QByteArray svg(const QByteArray &content, const QByteArray &attributes = "width='64' height='48'")
{
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' " + attributes + ">" +
           content + "</svg>";
}

const QByteArray kQuarters = "<rect width='32' height='24' fill='#ff0000'/>"
                             "<rect x='32' width='32' height='24' fill='#00c000'/>"
                             "<rect y='24' width='32' height='24' fill='#0000ff'/>"
                             "<rect x='32' y='24' width='32' height='24' fill='#fff'/>";

std::optional<NSImage> read(const QByteArray &data, std::optional<QSize> box = std::nullopt)
{
    return NSImage::imageWithData(data, u"drawing"_s, nullptr, box);
}

NSError errorOf(const QByteArray &data)
{
    NSError error;
    EXPECT_FALSE(NSImage::imageWithData(data, u"drawing"_s, &error));
    return error;
}

/// Whether anything at all is drawn.
bool isBlank(const QByteArray &data)
{
    const auto image = read(data);
    EXPECT_TRUE(image);
    return image && image->opaqueBounds().isEmpty();
}

} // namespace

TEST(SVG, IsDrawnAtItsSizeOrToFillABox)
{
    const auto natural = read(svg(kQuarters));
    ASSERT_TRUE(natural);
    EXPECT_EQ(natural->pixelSize(), QSize(64, 48));
    EXPECT_EQ(quartersOf(natural->image()), "RGBW");
    const auto large = read(svg(kQuarters, "width='64' height='48' viewBox='0 0 64 48'"), QSize(640, 640));
    ASSERT_TRUE(large);
    EXPECT_EQ(large->pixelSize(), QSize(640, 480));
    EXPECT_EQ(quartersOf(large->image()), "RGBW");
}

TEST(SVG, VeryLargeDrawingsAreDrawnSmaller)
{
    const auto image = read(svg("", "width='20000' height='10000'"));
    ASSERT_TRUE(image);
    EXPECT_NEAR(image->pixelSize().width(), 8192, 1);
    EXPECT_NEAR(image->pixelSize().height(), 4096, 1);
    const auto boxed = read(svg("", "width='2' height='1'"), QSize(100000, 100000));
    ASSERT_TRUE(boxed);
    EXPECT_NEAR(boxed->pixelSize().width(), 8192, 1);
}

TEST(SVG, IsToldByItsFirstElement)
{
    for (const QByteArray &before : {QByteArray("<?xml version='1.0' encoding='UTF-8'?>\n"), QByteArray("\xEF\xBB\xBF"),
                                     QByteArray("<!-- <html> -->\n\n"), QByteArray("  \n"),
                                     QByteArray("<!DOCTYPE svg PUBLIC '-//W3C//DTD SVG 1.1//EN' 'x.dtd'>")}) {
        EXPECT_TRUE(read(before + svg(kQuarters)) || before == "  \n") << before.toStdString();
    }
    EXPECT_FALSE(read("<html>" + svg(kQuarters) + "</html>"));
}

TEST(SVG, NamespacesMayBeCalledAnything)
{
    const auto image = read("<s:svg xmlns:s='http://www.w3.org/2000/svg' xmlns:l='http://www.w3.org/1999/xlink' "
                            "xmlns:other='urn:other' width='64' height='48'><other:rect width='64' height='48'/>"
                            "<s:defs><s:rect id='r' width='64' height='48' fill='#f00' other:fill='#fff'/></s:defs>"
                            "<s:use l:href='#r'/></s:svg>");
    ASSERT_TRUE(image);
    EXPECT_EQ(quartersOf(image->image()), "RRRR");
}

TEST(SVG, TextIsDrawn)
{
    EXPECT_FALSE(isBlank(svg("<text x='4' y='30' font-family='DejaVu Sans' font-size='20'>Word</text>")));
}

TEST(SVG, FilesAreNotRead)
{
    const TemporaryFolder folder;
    const QString path = folder.write(u"secret.png"_s, NSImage(quarters(16, 16)).pngData());
    for (const QByteArray &link : {path.toUtf8(), QByteArray("file://" + path.toUtf8()), QByteArray("secret.png")}) {
        const QByteArray drawing = svg("<image width='16' height='16' xlink:href='" + link + "'/>");
        EXPECT_TRUE(isBlank(drawing)) << link.toStdString();
        // Not from a file beside it either.
        const auto image = NSImage::imageWithContentsOfFile(folder.write(u"drawing.svg"_s, drawing), nullptr);
        ASSERT_TRUE(image);
        EXPECT_TRUE(image->opaqueBounds().isEmpty()) << link.toStdString();
    }
}

TEST(SVG, EmbeddedPicturesAreDrawnUnlessTheyAreBombs)
{
    const auto embedding = [](const QByteArray &picture) {
        return svg("<image width='64' height='48' xlink:href='data:image/png;base64," + picture.toBase64() + "'/>");
    };
    const auto image = read(embedding(NSImage(quarters(64, 48)).pngData()));
    ASSERT_TRUE(image);
    EXPECT_EQ(quartersOf(image->image()), "RGBW");
    EXPECT_TRUE(isBlank(embedding(pngHeader(20000, 20000))));
    EXPECT_TRUE(isBlank(embedding(svg(kQuarters))));
    EXPECT_TRUE(isBlank(embedding("no picture")));
}

TEST(SVG, ReferencesAreFollowedUpToABound)
{
    const QByteArray defined = "<defs><rect id='r' width='64' height='48' fill='#ff0000'/></defs>";
    const auto image = read(svg(defined + "<use xlink:href='#r' href='#r'/>"));
    ASSERT_TRUE(image);
    EXPECT_EQ(quartersOf(image->image()), "RRRR");

    // Each group draws the one before ten times: a billion rectangles in a kilobyte.
    QByteArray groups = "<rect id='g0' width='1' height='1'/>";
    for (int i = 1; i <= 9; ++i) {
        groups += "<g id='g" + QByteArray::number(i) + "'>";
        for (int use = 0; use < 10; ++use) {
            groups += "<use xlink:href='#g" + QByteArray::number(i - 1) + "'/>";
        }
        groups += "</g>";
    }
    EXPECT_TRUE(errorOf(svg(groups)).localizedDescription().contains(u"unfold"_s));
    // The same in an order that lets each refer forward.
    EXPECT_TRUE(errorOf(svg("<use xlink:href='#g9'/>" + groups)).isSet());
}

TEST(SVG, CirclesOfReferencesAreRefused)
{
    EXPECT_TRUE(errorOf(svg("<g id='a'><use xlink:href='#a'/></g>")).isSet());
    EXPECT_TRUE(errorOf(svg("<g id='a'><use xlink:href='#b'/></g><g id='b'><use xlink:href='#a'/></g>")).isSet());
}

TEST(SVG, NestingIsBounded)
{
    const auto nested = [](int depth) {
        return svg(QByteArray("<g>").repeated(depth) + QByteArray("</g>").repeated(depth));
    };
    EXPECT_TRUE(read(nested(100)));
    EXPECT_TRUE(errorOf(nested(100'000)).isSet());
}

TEST(SVG, DeclaredEntitiesDrawNothing)
{
    QByteArray lol = "<!DOCTYPE svg [<!ENTITY a0 'lol'>";
    for (int i = 1; i < 12; ++i) {
        const QByteArray before = "&a" + QByteArray::number(i - 1) + ";";
        lol += "<!ENTITY a" + QByteArray::number(i) + " '" + before.repeated(10) + "'>";
    }
    EXPECT_TRUE(errorOf(lol + "]>" + svg("<text>&a11;</text>")).isSet());
}

TEST(SVG, WhatIsNotWellFormedIsAnError)
{
    for (const QByteArray &broken : {QByteArray("<svg xmlns='http://www.w3.org/2000/svg'><g></svg>"),
                                     svg(kQuarters).chopped(1), svg("<g a='1' a='2'/>"), svg("&nobody;")}) {
        EXPECT_EQ(errorOf(broken).code(), qint64(NSCocoaErrorCode::FileReadCorruptFile)) << broken.toStdString();
    }
}

TEST(SVG, ScriptsAndMotionAreLeftOut)
{
    const auto image = read(svg(kQuarters + "<script>alert(1)</script><rect width='64' height='48' opacity='0'>"
                                            "<animate attributeName='opacity' from='1' to='1' dur='9s'/></rect>"));
    ASSERT_TRUE(image);
    EXPECT_EQ(quartersOf(image->image()), "RGBW");
}

TEST(SVG, CutOffOrChangedNeverCrashes)
{
    auto random = TestSeed().generator();
    const QByteArray whole =
        svg("<defs><linearGradient id='l'><stop offset='0.3' stop-color='red'/></linearGradient></defs>"
            "<g transform='rotate(30) scale(2)' id='a' style='fill:url(#l);stroke:#123;stroke-dasharray:3 1'>"
            "<path d='M0 0 L10 10 C 1 2 3 4 5 6 A 3 4 50 1 0 9 9 Z'/><text font-size='9'>x</text></g>"
            "<use xlink:href='#a' x='10'/>");
    for (qsizetype length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(read(whole.first(length))) << length;
    }
    for (int round = 0; round < 300; ++round) {
        QByteArray changed = whole;
        for (auto i = 1 + random() % 6; i > 0; --i) {
            const auto at = static_cast<qsizetype>(random() % static_cast<unsigned>(changed.size()));
            constexpr char kTelling[] = "0123456789-.,eE#'<>/ ();:&\"aMLCAz%";
            changed[at] = kTelling[random() % (sizeof(kTelling) - 1)];
        }
        (void)read(changed, QSize(32, 32));
    }
}

} // namespace quib::tests

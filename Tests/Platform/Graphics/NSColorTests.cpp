#include <Graphics/NSColor.h>

#include <Support/QtPrinters.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

NSColor bytes(int red, int green, int blue, double alpha = 1.0)
{
    return NSColor::colorWithRed(red / 255.0, green / 255.0, blue / 255.0, alpha);
}

struct TextCase
{
    QString text;
    NSColor color;
};

} // namespace

TEST(NSColorText, RgbaReadsDigitsUpToPunctuation)
{
    const TextCase cases[] = {
        {u"rgba(255, 255, 255, 1.00)"_s, bytes(255, 255, 255)},
        {u"rgba(10, 20, 30, 0.50)"_s, bytes(10, 20, 30, 0.5)},
        {u"10,20,30,0.25"_s, bytes(10, 20, 30, 0.25)},
        {u"rgba(1,2,3,.5)"_s, bytes(1, 2, 3, 0.5)},
        {u"  RGBA( 1 ; 2 ; 3 , 1 ) and more"_s, bytes(1, 2, 3)},
        // An alpha that is missing is 0, like every other piece.
        {u"rgb(1, 2, 3)"_s, bytes(1, 2, 3, 0)},
        {u"rgba(7"_s, bytes(7, 0, 0, 0)},
        {u"no colour"_s, bytes(0, 0, 0, 0)},
        {QString(), bytes(0, 0, 0, 0)},
        // A point is punctuation: what follows it is the next number.
        {u"rgba(12.5, 6, 0.5)"_s, bytes(12, 5, 6, 0.5)},
        // A sign is not a digit; units behind the digits are passed over.
        {u"rgba(-12, 34px, 56, 1)"_s, bytes(12, 34, 56)},
        {u"rgba(300, 99999999999999999999, 256, 7)"_s, bytes(255, 255, 255)},
        {u"rgba(1, 2, 3, -1)"_s, bytes(1, 2, 3, 0)},
        {u"rgba(1, 2, 3, nan)"_s, bytes(1, 2, 3, 0)},
        {u"rgba(1, 2, 3, 1e999)"_s, bytes(1, 2, 3, 0)},
        // Digits of every script count.
        {u"rgba(\u0661\u0662, 2, 3, 1)"_s, bytes(12, 2, 3)},
    };
    for (const auto &[text, color] : cases) {
        EXPECT_EQ(NSColor::colorFromRgbaString(text), color) << text.toStdString();
    }
}

TEST(NSColorText, RgbaIsWrittenTruncated)
{
    EXPECT_EQ(NSColor::colorWithRed(0.999, 0.5, 0.0039, 0.999).rgbaString(), u"rgba(254, 127, 0, 1.00)"_s);
    EXPECT_EQ(bytes(10, 20, 30, 0.5).rgbaString(), u"rgba(10, 20, 30, 0.50)"_s);
    EXPECT_EQ(NSColor::clearColor().rgbaString(), u"rgba(0, 0, 0, 0.00)"_s);
}

TEST(NSColorText, EveryByteSurvivesTheWayThroughText)
{
    for (int byte = 0; byte <= 255; ++byte) {
        const NSColor color = bytes(byte, 255 - byte, byte / 2);
        EXPECT_EQ(NSColor::colorFromRgbaString(color.rgbaString()), color) << byte;
        EXPECT_EQ(NSColor::colorWithHexColorString(color.hexString()), color) << byte;
        EXPECT_EQ(NSColor::colorFromHexString(QString(u'#' % color.hexString())), color) << byte;
    }
}

TEST(NSColorText, RgbaDoesNotFollowTheLocaleOfTheProcess)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char *name : {"de_DE.UTF-8", "it_IT.UTF-8", "C.UTF-8"}) {
        std::setlocale(LC_ALL, name); // where the machine lacks it, the case is the C locale again
        EXPECT_EQ(bytes(1, 2, 3, 0.25).rgbaString(), u"rgba(1, 2, 3, 0.25)"_s) << name;
        EXPECT_EQ(NSColor::colorFromRgbaString(u"rgba(1, 2, 3, 0.25)"), bytes(1, 2, 3, 0.25)) << name;
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(NSColorText, HexPassesOverTheNumberSign)
{
    const TextCase cases[] = {
        {u"#102030"_s, bytes(0x10, 0x20, 0x30)},
        {u"102030"_s, bytes(0x10, 0x20, 0x30)},
        {u"#AbCdEf"_s, bytes(0xAB, 0xCD, 0xEF)},
        {u"0x102030"_s, bytes(0x10, 0x20, 0x30)},
        {u"#fff"_s, bytes(0, 0x0F, 0xFF)},
        {u"#FF102030"_s, bytes(0x10, 0x20, 0x30)},
        {u"#12G456"_s, bytes(0, 0, 0x12)},
        {u"#FFFFFFFFFFFF"_s, bytes(255, 255, 255)},
        {u"#123456789ABC"_s, bytes(255, 255, 255)}, // too large for 32 bits
        {u"red"_s, bytes(0, 0, 0)},
        {u"#"_s, bytes(0, 0, 0)},
        {QString(), bytes(0, 0, 0)},
    };
    for (const auto &[text, color] : cases) {
        EXPECT_EQ(NSColor::colorFromHexString(text), color) << text.toStdString();
    }
}

TEST(NSColorText, HexColorStringsWithANumberSignAreBlack)
{
    EXPECT_EQ(NSColor::colorWithHexColorString(u"#102030"), NSColor::blackColor());
    EXPECT_EQ(NSColor::colorWithHexColorString(u"102030"), bytes(0x10, 0x20, 0x30));
    EXPECT_EQ(NSColor::colorWithHexColorString(u" 102030\n"), bytes(0x10, 0x20, 0x30));
    EXPECT_EQ(NSColor::colorWithHexColorString(QString()), NSColor::blackColor());
}

TEST(NSColor, ComponentsAreKeptInRange)
{
    EXPECT_EQ(NSColor::colorWithRed(2, -1, std::nan(""), 3), NSColor::colorWithRed(1, 0, 0, 1));
    EXPECT_EQ(NSColor::whiteColor().colorWithAlphaComponent(-0.1).alphaComponent(), 0);
    EXPECT_EQ(qHash(NSColor::colorWithWhite(2)), qHash(NSColor::whiteColor()));
}

TEST(NSColor, BlendsFromOneEndToTheOther)
{
    const NSColor a = NSColor::colorWithRed(0.2, 0.4, 0.6, 0.5);
    const NSColor b = NSColor::colorWithRed(1, 0, 0.5, 1);
    EXPECT_EQ(a.blendedColorWithFraction(0, b), a);
    EXPECT_EQ(a.blendedColorWithFraction(1, b), b);
    EXPECT_EQ(a.blendedColorWithFraction(7, b), b);
    const NSColor half = a.blendedColorWithFraction(0.5, b);
    EXPECT_NEAR(half.redComponent(), 0.6, 1e-12);
    EXPECT_NEAR(half.alphaComponent(), 0.75, 1e-12);
    EXPECT_EQ(NSColor::blackColor().colorWithAlphaComponent(0.5).colorOverBackground(NSColor::whiteColor()),
              NSColor::colorWithWhite(0.5));
}

TEST(NSColorContrast, AgreesWithPublishedRatios)
{
    struct Case
    {
        QStringView text;
        QStringView background;
        double ratio;
    };
    const Case cases[] = {
        {u"#000000", u"#FFFFFF", 21.0}, {u"#FFFFFF", u"#FFFFFF", 1.0},  {u"#777777", u"#FFFFFF", 4.48},
        {u"#767676", u"#FFFFFF", 4.54}, {u"#FF0000", u"#FFFFFF", 4.00}, {u"#0000FF", u"#FFFFFF", 8.59},
        {u"#00FF00", u"#FFFFFF", 1.37}, {u"#949494", u"#FFFFFF", 3.03},
    };
    for (const Case &c : cases) {
        const NSColor text = NSColor::colorFromHexString(c.text);
        const NSColor background = NSColor::colorFromHexString(c.background);
        EXPECT_NEAR(text.contrastRatioOnBackground(background), c.ratio, 0.005) << c.text.toString().toStdString();
        EXPECT_DOUBLE_EQ(text.contrastRatioOnBackground(background), background.contrastRatioOnBackground(text));
    }
}

TEST(NSColorContrast, FallsAsTextGrowsTransparent)
{
    double last = 22;
    for (int step = 10; step >= 0; --step) {
        const NSColor text = NSColor::blackColor().colorWithAlphaComponent(step / 10.0);
        const double ratio = text.contrastRatioOnBackground(NSColor::whiteColor());
        EXPECT_LT(ratio, last);
        last = ratio;
    }
    EXPECT_DOUBLE_EQ(last, 1);
}

} // namespace quib::tests

#include <Graphics/NSFont.h>

#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <cmath>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

NSFont named(QStringView name, double size = 16)
{
    const auto font = NSFont::fontWithName(name, size);
    EXPECT_TRUE(font) << name.toString().toStdString();
    return font ? *font : NSFont::systemFontOfSize(size);
}

} // namespace

TEST(NSFontByName, FamiliesThatTheMachineLacksHaveStandIns)
{
    struct Case
    {
        QStringView asked;
        QStringView given;
    };
    const Case cases[] = {
        {u"DejaVu Sans", u"DejaVu Sans"},
        {u"dejavusans", u"DejaVu Sans"},
        {u"Helvetica", u"Liberation Sans"},
        {u"Helvetica Neue", u"Liberation Sans"},
        {u"HelveticaNeue", u"Liberation Sans"},
        {u"Avenir Next", u"Lato"},
        {u"Menlo", u"DejaVu Sans Mono"},
        {u"Georgia", u"Charis SIL"},
        {u"Courier", u"TeX Gyre Cursor"},
        {u"Open Dyslexic", u"OpenDyslexic"},
        {u"System", u"Inter"},
        {u"Times New Roman", u"Liberation Serif"},
    };
    for (const auto &[asked, given] : cases) {
        EXPECT_EQ(named(asked).familyName(), given) << asked.toString().toStdString();
    }
}

TEST(NSFontByName, StyleWordsChooseTheFace)
{
    struct Case
    {
        QStringView name;
        QStringView fontName;
        NSFontTraits traits;
    };
    const Case cases[] = {
        {u"DejaVu Sans", u"DejaVuSans-Regular", {}},
        {u"DejaVuSans-Bold", u"DejaVuSans-Bold", {.isBold = true}},
        {u"DejaVu Sans Oblique", u"DejaVuSans-Italic", {.isItalic = true}},
        {u"DejaVuSans-BoldItalic", u"DejaVuSans-BoldItalic", {.isBold = true, .isItalic = true}},
        {u"Helvetica-BoldOblique", u"LiberationSans-BoldItalic", {.isBold = true, .isItalic = true}},
        {u"Georgia-Italic", u"CharisSIL-Italic", {.isItalic = true}},
        {u"AvenirNext-DemiBold", u"Lato-SemiBold", {.isBold = true}},
        {u"AvenirNext-MediumItalic", u"Lato-MediumItalic", {.isItalic = true}},
        {u"Menlo-Regular", u"DejaVuSansMono-Regular", {}},
    };
    for (const auto &[name, fontName, traits] : cases) {
        const NSFont font = named(name);
        EXPECT_EQ(font.fontName(), fontName) << name.toString().toStdString();
        EXPECT_EQ(font.traits(), traits) << name.toString().toStdString();
        EXPECT_EQ(named(font.fontName()), font) << name.toString().toStdString();
    }
}

TEST(NSFontByName, NothingIsGivenForNamesThatNobodyKnows)
{
    for (const QStringView name : {u"", u"No Such Family", u"Bold", u"-", u"Italic Bold Regular", u"\xD800\u0000x"}) {
        EXPECT_FALSE(NSFont::fontWithName(name, 12)) << name.toString().toStdString();
        EXPECT_FALSE(NSFont::fontWithFamily(name, {}, 12)) << name.toString().toStdString();
    }
}

TEST(NSFontByName, ManyUnknownNamesDoNotCloudTheKnown)
{
    for (int i = 0; i < 2000; ++i) {
        EXPECT_FALSE(NSFont::fontWithName(QString(u"Nobody " % QString::number(i)), 12));
    }
    EXPECT_EQ(named(u"Menlo").familyName(), u"DejaVu Sans Mono"_s);
}

TEST(NSFontTraits, AreAddedWithinTheFamily)
{
    const NSFont regular = named(u"DejaVu Sans");
    const auto bold = regular.fontWithAddedTraits({.isBold = true});
    ASSERT_TRUE(bold);
    EXPECT_EQ(bold->traits(), (NSFontTraits{.isBold = true}));
    EXPECT_EQ(bold->pointSize(), regular.pointSize());
    const auto both = bold->fontWithAddedTraits({.isItalic = true});
    ASSERT_TRUE(both);
    EXPECT_EQ(both->traits(), (NSFontTraits{.isBold = true, .isItalic = true}));
    EXPECT_EQ(both->fontWithAddedTraits({}), both);
}

TEST(NSFontTraits, AreRefusedWhereTheFamilyLacksTheFace)
{
    // A family of one upright face.
    const NSFont font = named(u"DejaVu Math TeX Gyre");
    EXPECT_FALSE(font.fontWithAddedTraits({.isBold = true}));
    EXPECT_FALSE(font.fontWithAddedTraits({.isItalic = true}));
    EXPECT_EQ(font.fontWithAddedTraits({}), font);
}

TEST(NSFontTraits, EveryStandInHasAllFourFaces)
{
    for (const QStringView family :
         {u"System", u"Avenir Next", u"Helvetica Neue", u"Menlo", u"Georgia", u"Courier", u"Open Dyslexic"}) {
        for (const bool isBold : {false, true}) {
            for (const bool isItalic : {false, true}) {
                const NSFontTraits traits{.isBold = isBold, .isItalic = isItalic};
                const auto font = NSFont::fontWithFamily(family, traits, 14);
                ASSERT_TRUE(font) << family.toString().toStdString() << isBold << isItalic;
                EXPECT_EQ(font->traits(), traits);
            }
        }
    }
}

TEST(NSFontMetrics, AgreeWithThoseOfDejaVu)
{
    // The figures of the font file, in units of 1/2048 em.
    const NSFont font = named(u"DejaVu Sans", 2048);
    EXPECT_NEAR(font.ascender(), 1901, 3);
    EXPECT_NEAR(font.descender(), -483, 3);
    EXPECT_NEAR(font.xHeight(), 1120, 3);
    EXPECT_NEAR(font.capHeight(), 1493, 3);
    EXPECT_NEAR(font.advanceOfText(u"n"), 1298, 2);
    EXPECT_FALSE(font.isFixedPitch());
    EXPECT_TRUE(named(u"DejaVu Sans Mono").isFixedPitch());
}

TEST(NSFontMetrics, HoldTogetherInEveryFamily)
{
    for (const QStringView family : {u"System", u"Avenir Next", u"Helvetica", u"Menlo", u"Georgia", u"Courier",
                                     u"Open Dyslexic", u"DejaVu Serif"}) {
        SCOPED_TRACE(family.toString().toStdString());
        const NSFont font = named(family, 17);
        EXPECT_GT(font.xHeight(), 0.3 * 17);
        EXPECT_GT(font.capHeight(), font.xHeight());
        EXPECT_GT(font.ascender(), font.capHeight());
        EXPECT_LT(font.descender(), 0);
        EXPECT_GE(font.leading(), 0);
        EXPECT_DOUBLE_EQ(font.lineHeight(), font.ascender() - font.descender() + font.leading());
        EXPECT_GT(font.lineHeight(), 17);
        EXPECT_LT(font.lineHeight(), 17 * 2.5);
    }
}

TEST(NSFontMetrics, GrowInStepWithTheSize)
{
    const QStringView text = u"Growing in step, word by word.";
    const NSFont unit = named(u"DejaVu Sans", 100);
    for (const double size : {9.5, 12.0, 13.25, 16.0, 40.0}) {
        const NSFont font = unit.fontWithSize(size);
        EXPECT_NEAR(font.ascender(), unit.ascender() * size / 100, 1e-9);
        EXPECT_NEAR(font.advanceOfText(text), unit.advanceOfText(text) * size / 100, 1e-6) << size;
    }
}

TEST(NSFontMetrics, AnyTextHasAFiniteWidth)
{
    const NSFont font = named(u"DejaVu Sans", 16);
    EXPECT_EQ(font.advanceOfText(u""), 0);
    EXPECT_GT(font.advanceOfText(u"W"), font.advanceOfText(u"i"));
    auto random = TestSeed().generator();
    for (int round = 0; round < 50; ++round) {
        QString text;
        for (int i = 0; i < 200; ++i) {
            constexpr char16_t kOdd[] = {0, 0xD800, 0xDC00, 0xFFFC, 0xFEFF, 0x0301, 0x200D, 0x2028, u'\n', u'\t', u'a'};
            text += random() % 3 != 0 ? QChar(kOdd[random() % std::size(kOdd)]) : QChar(char16_t(random() % 0x10000));
        }
        const double width = font.advanceOfText(text);
        EXPECT_TRUE(std::isfinite(width) && width >= 0) << width;
    }
}

TEST(NSFont, OddSizesAreTakenAsUsableOnes)
{
    EXPECT_EQ(named(u"Menlo", 0).pointSize(), 12);
    EXPECT_EQ(named(u"Menlo", -3).pointSize(), 12);
    EXPECT_EQ(named(u"Menlo", std::nan("")).pointSize(), 12);
    EXPECT_EQ(named(u"Menlo", 1e30).pointSize(), 4096);
    EXPECT_EQ(named(u"Menlo", 9.5).pointSize(), 9.5);
}

TEST(NSFont, IsEqualByFaceAndSize)
{
    EXPECT_EQ(named(u"Menlo", 12), named(u"DejaVu Sans Mono", 12));
    EXPECT_EQ(qHash(named(u"Menlo", 12)), qHash(named(u"DejaVu Sans Mono", 12)));
    EXPECT_FALSE(named(u"Menlo", 12) == named(u"Menlo", 13));
    EXPECT_FALSE(named(u"Menlo", 12) == named(u"Menlo Bold", 12));
}

TEST(NSFont, IsUsableOnManyThreadsAtOnce)
{
    const double width = named(u"Georgia", 15).advanceOfText(u"the same everywhere");
    std::vector<std::thread> threads;
    std::vector<double> widths(4);
    for (size_t i = 0; i < widths.size(); ++i) {
        threads.emplace_back([i, &widths] {
            for (int round = 0; round < 50; ++round) {
                const QString name = round % 2 == 0 ? u"Georgia"_s : QString(u"Missing " % QString::number(round));
                const auto font = NSFont::fontWithName(name, 15);
                if (font) {
                    widths[i] = font->advanceOfText(u"the same everywhere");
                }
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    for (const double each : widths) {
        EXPECT_EQ(each, width);
    }
}

} // namespace quib::tests

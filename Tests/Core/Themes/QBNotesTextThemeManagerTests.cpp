// The editor's theme: accessors, metrics, fonts, attributes; and what themes without reason give.

#include "ThemeKeys.h"

#include <Graphics/GraphicsAttributes.h>
#include <Support/QtPrinters.h>
#include <Themes/QBNotesTextThemeManager.h>
#include <Themes/QBNotesThemesManager.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;
using quib::AttributeSet;

namespace {

using Color = std::optional<NSColor> (QBNotesTextThemeManager::*)() const;

struct Accessor
{
    const char *key;
    Color color;
};

using M = QBNotesTextThemeManager;

constexpr Accessor kAccessors[] = {
    {"Base Text Color", &M::baseTextColor},
    {"Background Text Color", &M::backgroundTextColor},
    {"Insertion Point Color", &M::insertionPointColor},
    {"Selected Text Background Color", &M::seletedTextBackgroundColor},
    {"Selected Text Inactive Background Color", &M::seletedTextInactiveBackgroundColor},
    {"Light Text Color", &M::lightTextColor},
    {"Title Text Color", &M::titleTextColor},
    {"Link Text Color", &M::linkTextColor},
    {"Hashtag Text Color", &M::hashTextColor},
    {"Hashtag Marker Text Color", &M::hashMarkerTextColor},
    {"Hashtag Background Color", &M::hashBackgroundColor},
    {"Hashtag Selected Background Color", &M::hashSelectedBackgroundColor},
    {"Separator Text Color", &M::separatorTextColor},
    {"Accent Text Color", &M::accentTextColor},
    {"Style Marker Text Color", &M::styleMarkerTextColor},
    {"Map Text Color", &M::mapTextColor},
    {"Invalid Character Color", &M::invalidCharacterColor},
    {"Checkbox Fill Color", &M::checkboxFillColor},
    {"Checkbox Stroke Color", &M::checkboxStrokeColor},
    {"Checkbox Check Color", &M::checkboxCheckColor},
    {"Code Background Color", &M::codeBackgroundColor},
    {"Code Stroke Color", &M::codeStrokeColor},
    {"Code Font Color", &M::codeFontColor},
    {"Highlighter Background Color", &M::highlighterBackgroundColor},
    {"Highlighter Marker Color", &M::highlighterMarkerColor},
};

class TextThemeManager : public testing::Test
{
protected:
    TextThemeManager() { m_manager.loadTheme(m_theme); }

    void set(const QString &key, const quib::PropertyValue &value, const QString &kind = u"number"_s)
    {
        m_theme->addThemeItem(std::make_shared<QBThemeItem>(key, value, kind));
        m_manager.emptyCache();
    }
    /// A theme whose metrics are easy to work out.
    void setPlainNumbers()
    {
        set(u"Base Text Size"_s, 20);
        set(u"Line Width Multiplier"_s, 30.01);
        set(u"Line Height Multiplier"_s, 1.53);
        set(u"Paragraph Spacing Multiplier"_s, 0.51);
        set(u"H1 Font Size Multiplier"_s, 2);
        set(u"H2 Font Size Multiplier"_s, 1.5);
        set(u"H3 Font Size Multiplier"_s, 1.25);
        set(u"Monospace Font Adjust"_s, -3);
        set(u"Paragraph Font"_s, u"DejaVu Sans"_s, u"font"_s);
        set(u"Title Font"_s, u"DejaVu Serif"_s, u"font"_s);
        set(u"Monospace Font"_s, u"DejaVu Sans Mono"_s, u"font"_s);
        set(u"Base Text Color"_s, u"rgba(1, 1, 1, 1.00)"_s, u"color"_s);
        set(u"Title Text Color"_s, u"rgba(2, 2, 2, 1.00)"_s, u"color"_s);
    }

    std::shared_ptr<QBTheme> m_theme = std::make_shared<QBTheme>();
    QBNotesTextThemeManager m_manager;
};

TEST_F(TextThemeManager, ReadsEachColorByItsKey)
{
    int red = 0;
    for (const Accessor &accessor : kAccessors) {
        SCOPED_TRACE(accessor.key);
        EXPECT_EQ((m_manager.*accessor.color)(), std::nullopt);
        const QString color = u"rgba(%1, 0, 0, 1.00)"_s.arg(++red);
        set(QString::fromLatin1(accessor.key), color, u"color"_s);
        EXPECT_EQ((m_manager.*accessor.color)(), NSColor::colorFromRgbaString(color));
    }
}

TEST_F(TextThemeManager, WorksOutTheMetrics)
{
    setPlainNumbers();
    const NSFont font = *NSFont::fontWithName(u"DejaVu Sans", 20);
    EXPECT_EQ(m_manager.baseFontSize(), 20);
    EXPECT_EQ(m_manager.paragraphFontSize(), 20);
    EXPECT_EQ(m_manager.h1FontSize(), 40);
    EXPECT_EQ(m_manager.h2FontSize(), 30);
    EXPECT_EQ(m_manager.h3FontSize(), 25);
    EXPECT_EQ(m_manager.monospaceFontSize(), 17);
    EXPECT_EQ(m_manager.paragraphLineHeight(), 31);
    EXPECT_EQ(m_manager.paragraphLineSpacing(), std::round(31 - (font.ascender() - font.descender())));
    EXPECT_EQ(m_manager.paragraphSpacing(), 11);
    EXPECT_EQ(m_manager.paragraphHeadIndent(), 40);
    EXPECT_EQ(m_manager.paragraphTailIndent(), -40);
    EXPECT_EQ(m_manager.paragraphTabLenght(), 40);
    EXPECT_EQ(m_manager.textColumnTopBottomInset(), 50);
    EXPECT_EQ(m_manager.textColumnLeftRightInset(), 30);
    EXPECT_EQ(m_manager.textColumnMaxSize(), 601);
    EXPECT_DOUBLE_EQ(m_manager.fullLineAttachmentDefaultRightSpacing(), 6);
    EXPECT_EQ(m_manager.basePointSizeForCurrentBaseFontSize(), std::ceil(font.xHeight() * 0.1));
    EXPECT_EQ(m_manager.paragraphFontAscender(), font.ascender());
    EXPECT_EQ(m_manager.paragraphFontDescender(), font.descender());
    EXPECT_EQ(m_manager.paragraphFontXHeight(), font.xHeight());
    // Small text keeps a margin.
    m_manager.setBaseFontSize(10);
    EXPECT_EQ(m_manager.textColumnTopBottomInset(), 34);
    EXPECT_EQ(m_manager.textColumnLeftRightInset(), 24);
}

TEST_F(TextThemeManager, KeepsMetricsUnderTheirNames)
{
    setPlainNumbers();
    const double lineHeight = m_manager.paragraphLineHeight();
    const double lineSpacing = m_manager.paragraphLineSpacing();
    const double pointSize = m_manager.basePointSizeForCurrentBaseFontSize();
    EXPECT_EQ(*m_manager.themeCache().value<double>(u"paragraphLineHeight"_s), lineHeight);
    EXPECT_EQ(*m_manager.themeCache().value<double>(u"paragraphLineSpacing"_s), lineSpacing);
    EXPECT_EQ(*m_manager.themeCache().value<double>(u"basePointSizeForCurrentBaseFontSize"_s), pointSize);
}

TEST_F(TextThemeManager, ZoomsOverTheSizeOfTheTheme)
{
    class Counter final : public quib::StylableObject
    {
    public:
        void styleObjectWithThemeManager(QBThemeManager & /*manager*/) override { ++count; }
        int count = 0;
    } counter;
    setPlainNumbers();
    m_manager.registerStylableObject(counter);
    EXPECT_EQ(m_manager.zoomedBaseFontSize(), 0);
    m_manager.setZoomedBaseFontSize(40);
    EXPECT_EQ(counter.count, 1);
    EXPECT_EQ(m_manager.baseFontSize(), 40);
    EXPECT_EQ(m_manager.paragraphFont().pointSize(), 40);
    EXPECT_EQ(m_manager.numberForKey(u"Base Text Size"_s), 20);
    m_manager.setZoomedBaseFontSize(0);
    EXPECT_EQ(m_manager.baseFontSize(), 20);
    EXPECT_EQ(m_manager.paragraphFont().pointSize(), 20);
    m_manager.setZoomedBaseFontSize(40);
    m_manager.setBaseFontSize(15);
    EXPECT_EQ(m_manager.zoomedBaseFontSize(), 0);
    EXPECT_EQ(m_manager.baseFontSize(), 15);
    EXPECT_EQ(m_manager.paragraphFont().pointSize(), 15);
    EXPECT_EQ(m_manager.numberForKey(u"Base Text Size"_s), 15);
    EXPECT_EQ(counter.count, 3); // a set of the size leaves restyling to who sets it
    for (const double nonsense : {-3.0, std::numeric_limits<double>::quiet_NaN()}) {
        m_manager.setZoomedBaseFontSize(nonsense);
        EXPECT_EQ(m_manager.zoomedBaseFontSize(), 0);
    }
}

TEST_F(TextThemeManager, WritesMultipliersIntoTheTheme)
{
    setPlainNumbers();
    m_manager.setLineHeightMultiplier(2);
    m_manager.setLineWidthMultiplier(50);
    m_manager.setParagraphSpacingMultiplier(1);
    EXPECT_EQ(m_manager.paragraphLineHeight(), 40);
    EXPECT_EQ(m_manager.textColumnMaxSize(), 1000);
    EXPECT_EQ(m_manager.paragraphSpacing(), 20);
    EXPECT_EQ(m_theme->numberForKey(u"Line Height Multiplier"_s), 2);
    EXPECT_EQ(m_manager.lineHeightMultiplier(), 2);
    EXPECT_EQ(m_manager.lineWidthMultiplier(), 50);
    EXPECT_EQ(m_manager.paragraphSpacingMultiplier(), 1);
}

TEST_F(TextThemeManager, PicksFonts)
{
    setPlainNumbers();
    EXPECT_EQ(m_manager.paragraphFont(), *NSFont::fontWithName(u"DejaVu Sans", 20));
    EXPECT_EQ(m_manager.monospaceFont(), *NSFont::fontWithName(u"DejaVu Sans Mono", 17));
    EXPECT_EQ(m_manager.h1Font(), *NSFont::fontWithName(u"DejaVu Serif", 40));
    EXPECT_EQ(m_manager.h2Font(), *NSFont::fontWithName(u"DejaVu Serif", 30));
    EXPECT_EQ(m_manager.h3Font(), *NSFont::fontWithName(u"DejaVu Serif", 25));
    EXPECT_EQ(m_manager.h4OrMoreFont(), *NSFont::fontWithName(u"DejaVu Serif", 20));
    EXPECT_EQ(m_manager.paragraphBoldFont(), *NSFont::fontWithFamily(u"DejaVu Sans", {.isBold = true}, 20));
    const auto italic = NSFont::fontWithFamily(u"DejaVu Sans", {.isItalic = true}, 20);
    EXPECT_EQ(m_manager.paragraphItalicFont(), italic ? *italic : m_manager.paragraphFont());
    EXPECT_EQ(*quib::fontOfAttribute(m_manager.paragraphFontAttribute()), m_manager.paragraphFont());
    EXPECT_EQ(*quib::fontOfAttribute(m_manager.paragraphBoldFontAttribute()), m_manager.paragraphBoldFont());
    EXPECT_EQ(*quib::fontOfAttribute(m_manager.paragraphItalicFontAttribute()), m_manager.paragraphItalicFont());
    EXPECT_EQ(*quib::fontOfAttribute(m_manager.monospaceFontAttribute()), m_manager.monospaceFont());
}

TEST_F(TextThemeManager, FallsBackToTheFontsOfTheSystem)
{
    set(u"Title Font"_s, u"No Such Family"_s, u"font"_s);
    set(u"Paragraph Font"_s, 3, u"font"_s);
    EXPECT_EQ(m_manager.titleFontOfSize(30), NSFont::boldSystemFontOfSize(30));
    EXPECT_EQ(m_manager.paragraphFontOfSize(30), NSFont::systemFontOfSize(30));
    EXPECT_EQ(m_manager.monospaceFontOfSize(30), NSFont::systemFontOfSize(30));
    m_manager.loadTheme(nullptr);
    EXPECT_EQ(m_manager.titleFontOfSize(30), NSFont::boldSystemFontOfSize(30));
    EXPECT_EQ(m_manager.paragraphFontOfSize(30), NSFont::systemFontOfSize(30));
}

TEST_F(TextThemeManager, MakesTheDefaultParagraphStyle)
{
    setPlainNumbers();
    const auto style = m_manager.defaultParagraphStyle();
    EXPECT_EQ(style->minimumLineHeight(), m_manager.paragraphLineHeight());
    EXPECT_EQ(style->lineSpacing(), m_manager.paragraphLineSpacing());
    EXPECT_EQ(style->paragraphSpacing(), m_manager.paragraphSpacing());
    EXPECT_EQ(style->headIndent(), 40);
    EXPECT_EQ(style->firstLineHeadIndent(), 40);
    EXPECT_EQ(style->tailIndent(), -40);
    EXPECT_EQ(style->defaultTabInterval(), 40);
    EXPECT_EQ(style->tabStops(), m_manager.defaultParagraphTabStops());
    // A tab at the head of a line goes to where the column begins, and on from there in even steps.
    ASSERT_EQ(style->tabStops().size(), 12);
    for (qsizetype i = 0; i < style->tabStops().size(); ++i) {
        EXPECT_EQ(style->tabStops().at(i), (NSTextTab{.location = 40.0 * static_cast<double>(i + 1)}));
    }
}

TEST_F(TextThemeManager, MakesTheAttributesOfTextAndHeaders)
{
    setPlainNumbers();
    const NSColor base = *m_manager.baseTextColor();
    const NSColor title = *m_manager.titleTextColor();
    const struct
    {
        const char *label;
        AttributeSet attributes;
        NSFont font;
        NSColor color;
        double paragraphSpacing;
    } cases[] = {
        {"text", m_manager.defaultTextAttributes(), m_manager.paragraphFont(), base, 11},
        {"attachment", m_manager.defaultAttachmentAttributes(), m_manager.paragraphFont(), base, 11},
        {"h1", m_manager.h1TextAttributes(), m_manager.h1Font(), title, 31},
        {"h2", m_manager.h2TextAttributes(), m_manager.h2Font(), title, 24},
        {"h3", m_manager.h3TextAttributes(), m_manager.h3Font(), title, 16},
        {"h4", m_manager.h4OrMoreTextAttributes(), m_manager.h4OrMoreFont(), title, 11},
    };
    for (const auto &expected : cases) {
        SCOPED_TRACE(expected.label);
        EXPECT_EQ(expected.attributes.count(), 3);
        EXPECT_EQ(*quib::fontOfAttribute(expected.attributes.value(NSFontAttributeName)), expected.font);
        EXPECT_EQ(*quib::colorOfAttribute(expected.attributes.value(NSForegroundColorAttributeName)), expected.color);
        NSMutableParagraphStyle style = m_manager.defaultParagraphStyle()->mutableCopy();
        style.paragraphSpacing = expected.paragraphSpacing;
        const auto attribute = expected.attributes.value(NSParagraphStyleAttributeName).sharedAs<NSParagraphStyle>();
        ASSERT_NE(attribute, nullptr);
        EXPECT_EQ(attribute->mutableCopy(), style);
    }
}

TEST_F(TextThemeManager, LeavesALineBelowTheFirstLevelHoweverFarTextsAreApart)
{
    setPlainNumbers();
    const auto spacing = [](const AttributeSet &attributes) {
        return attributes.value(NSParagraphStyleAttributeName).as<NSParagraphStyle>()->paragraphSpacing();
    };
    for (const double multiplier : {0.0, 1.0, 2.0, 3.5}) {
        SCOPED_TRACE(multiplier);
        m_manager.setParagraphSpacingMultiplier(multiplier);
        m_manager.emptyCache();
        EXPECT_EQ(spacing(m_manager.h1TextAttributes()), m_manager.paragraphLineHeight());
        // The others are never nearer to their text than text is to text.
        EXPECT_EQ(spacing(m_manager.h2TextAttributes()), std::max(24.0, m_manager.paragraphSpacing()));
        EXPECT_EQ(spacing(m_manager.h3TextAttributes()), std::max(16.0, m_manager.paragraphSpacing()));
        EXPECT_EQ(spacing(m_manager.h4OrMoreTextAttributes()), std::max(8.0, m_manager.paragraphSpacing()));
    }
}

TEST_F(TextThemeManager, MakesAttributesAnewForAnotherTheme)
{
    setPlainNumbers();
    const AttributeSet before = m_manager.defaultTextAttributes();
    EXPECT_EQ(m_manager.defaultTextAttributes(), before);
    m_manager.setZoomedBaseFontSize(30);
    EXPECT_FALSE(m_manager.defaultTextAttributes() == before);
    m_manager.setZoomedBaseFontSize(0);
    EXPECT_EQ(m_manager.defaultTextAttributes(), before);
    m_manager.loadDefaultTheme();
    EXPECT_FALSE(m_manager.defaultTextAttributes() == before);
}

TEST_F(TextThemeManager, HasNoColorAmongTheAttributesWithoutOne)
{
    EXPECT_FALSE(m_manager.defaultTextAttributes().contains(NSForegroundColorAttributeName));
    EXPECT_TRUE(m_manager.defaultTextAttributes().contains(NSFontAttributeName));
}

TEST_F(TextThemeManager, StaysReadableWithoutReason)
{
    using Limits = std::numeric_limits<double>;
    const quib::PropertyValue values[] = {
        quib::PropertyValue(),
        quib::PropertyValue(u"wide"_s),
        quib::PropertyValue(0),
        quib::PropertyValue(-1),
        quib::PropertyValue(1e300),
        quib::PropertyValue(Limits::infinity()),
        quib::PropertyValue(Limits::quiet_NaN()),
        quib::PropertyValue(Limits::denorm_min()),
        quib::PropertyValue(true),
    };
    for (const quib::PropertyValue &value : values) {
        SCOPED_TRACE(value.toString().toStdString());
        for (const QString &key : quib::tests::numberKeys()) {
            set(key, value);
        }
        EXPECT_GE(m_manager.baseFontSize(), 1);
        EXPECT_LE(m_manager.baseFontSize(), 4096);
        EXPECT_GT(m_manager.h1Font().pointSize(), 0);
        EXPECT_GT(m_manager.monospaceFont().pointSize(), 0);
        EXPECT_GE(m_manager.paragraphLineHeight(), 0);
        EXPECT_GE(m_manager.paragraphSpacing(), 0);
        EXPECT_GE(m_manager.textColumnMaxSize(), m_manager.baseFontSize());
        EXPECT_TRUE(std::isfinite(m_manager.textColumnMaxSize()));
        EXPECT_TRUE(std::isfinite(m_manager.paragraphLineSpacing()));
        EXPECT_EQ(m_manager.h1TextAttributes().count(), 2);
    }
}

TEST(DefaultTextTheme, IsTheDefaultColorsInTheDefaultFonts)
{
    QBNotesTextThemeManager manager;
    manager.loadDefaultTheme();
    const auto text = QBNotesThemesManager::textThemeForThemeName(u"Red Graphite"_s, u"Avenir Next"_s);
    ASSERT_NE(manager.currentTheme(), nullptr);
    EXPECT_EQ(manager.currentTheme()->themeItems().size(), text->themeItems().size());
    EXPECT_EQ(manager.baseTextColor(), text->colorForKey(u"Base Text Color"_s));
    EXPECT_EQ(manager.baseFontSize(), text->numberForKey(u"Base Text Size"_s));
}

} // namespace

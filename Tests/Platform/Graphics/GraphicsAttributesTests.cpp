#include <Graphics/GraphicsAttributes.h>

#include <Text/NSAttributeName.h>
#include <Text/NSMutableAttributedString.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

TEST(GraphicsAttributes, ComeBackFromTheirValues)
{
    const NSColor color = NSColor::colorWithRed(0.1, 0.2, 0.3, 0.4);
    const AttributeValue colorValue = attributeValue(color);
    ASSERT_NE(colorOfAttribute(colorValue), nullptr);
    EXPECT_EQ(*colorOfAttribute(colorValue), color);
    EXPECT_EQ(fontOfAttribute(colorValue), nullptr);

    const AttributeValue fontValue = attributeValue(NSFont::systemFontOfSize(13));
    ASSERT_NE(fontOfAttribute(fontValue), nullptr);
    EXPECT_EQ(*fontOfAttribute(fontValue), NSFont::systemFontOfSize(13));
    EXPECT_EQ(colorOfAttribute(fontValue), nullptr);

    for (const AttributeValue &value : {AttributeValue(), AttributeValue(1), AttributeValue(u"red"_s)}) {
        EXPECT_EQ(colorOfAttribute(value), nullptr);
        EXPECT_EQ(fontOfAttribute(value), nullptr);
    }
}

TEST(GraphicsAttributes, EqualOnesMadeApartAreOneValue)
{
    EXPECT_EQ(attributeValue(NSColor::whiteColor()), attributeValue(NSColor::colorWithWhite(1)));
    EXPECT_FALSE(attributeValue(NSColor::whiteColor()) == attributeValue(NSColor::colorWithWhite(1, 0.5)));
    EXPECT_EQ(attributeValue(NSFont::systemFontOfSize(13)), attributeValue(NSFont::systemFontOfSize(13)));
    EXPECT_FALSE(attributeValue(NSFont::systemFontOfSize(13)) == attributeValue(NSFont::boldSystemFontOfSize(13)));
    EXPECT_FALSE(attributeValue(NSColor::whiteColor()) == attributeValue(NSFont::systemFontOfSize(13)));
}

TEST(GraphicsAttributes, EqualColoursOfNeighboursMakeOneRun)
{
    NSMutableAttributedString text(u"two words"_s);
    text.addAttribute(NSForegroundColorAttributeName, attributeValue(NSColor::whiteColor()), {0, 4});
    text.addAttribute(NSForegroundColorAttributeName, attributeValue(NSColor::whiteColor()), {4, 5});
    NSRange range;
    const AttributeValue value = text.attribute(NSForegroundColorAttributeName, 0, &range);
    ASSERT_NE(colorOfAttribute(value), nullptr);
    EXPECT_EQ(*colorOfAttribute(value), NSColor::whiteColor());
    EXPECT_EQ(range.length, 9);
}

} // namespace quib::tests

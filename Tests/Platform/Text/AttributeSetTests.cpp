#include <Text/AttributeSet.h>
#include <Text/AttributeTable.h>
#include <Text/NSParagraphStyle.h>
#include <Text/NSTextAttachment.h>

#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <thread>

using namespace Qt::StringLiterals;
using namespace quib;
using quib::tests::TestSeed;

namespace {

inline constinit const NSAttributeName kFloodName{u"TestFlood"};
inline constinit const NSAttributeName kOtherName{u"TestOther"};

} // namespace

TEST(NSAttributeName, IsTheSameHoweverItWasMade)
{
    const NSAttributeName literal{u"TestNameOfALiteral"};
    const NSAttributeName named(u"TestNameOfALiteral"_s);
    EXPECT_EQ(literal, named);
    EXPECT_EQ(NSAttributeName::nameOfIndex(literal.index()).string(), u"TestNameOfALiteral"_s);
    EXPECT_FALSE(literal == NSFontAttributeName);
}

TEST(AttributeValue, NumbersAreEqualWhateverTheirType)
{
    EXPECT_EQ(AttributeValue(true), AttributeValue(1));
    EXPECT_EQ(AttributeValue(1), AttributeValue(1.0));
    EXPECT_EQ(AttributeValue(-0.0), AttributeValue(false));
    EXPECT_EQ(qHash(AttributeValue(1), 7), qHash(AttributeValue(1.0), 7));
    EXPECT_FALSE(AttributeValue(1) == AttributeValue(1.5));
    EXPECT_FALSE(AttributeValue(1) == AttributeValue(u"1"_s));
    EXPECT_FALSE(AttributeValue(0) == AttributeValue());
    EXPECT_EQ(AttributeValue(std::nan("")), AttributeValue(std::nan("")));
    EXPECT_EQ(AttributeValue(std::numeric_limits<double>::infinity()).integerValue(), 0);
    EXPECT_TRUE(AttributeValue(0.5).boolValue());
    EXPECT_FALSE(AttributeValue(u"1"_s).boolValue());
    EXPECT_EQ(AttributeValue(2.75).integerValue(), 2);
}

TEST(AttributeValue, ObjectsAreEqualByContentOrByIdentity)
{
    NSMutableParagraphStyle style;
    style.tabStops = {{10, NSTextAlignment::Right}};
    const AttributeValue first = style.copy();
    EXPECT_EQ(first, AttributeValue(style.copy()));
    EXPECT_EQ(qHash(first, 7), qHash(AttributeValue(style.copy()), 7));
    style.tabStops.first().location = 11;
    EXPECT_FALSE(first == AttributeValue(style.copy()));

    const auto attachment = std::make_shared<NSTextAttachment>();
    EXPECT_EQ(AttributeValue(attachment), AttributeValue(attachment));
    EXPECT_FALSE(AttributeValue(attachment) == AttributeValue(std::make_shared<NSTextAttachment>()));
    EXPECT_FALSE(AttributeValue(attachment) == first);
    EXPECT_EQ(first.as<NSTextAttachment>(), nullptr);
    EXPECT_TRUE(AttributeValue(std::shared_ptr<NSTextAttachment>()).isNothing());
}

TEST(AttributeValue, TellsASubclassFromItsBase)
{
    class Drawing : public NSTextAttachment
    {
    };
    const AttributeValue plain = std::make_shared<NSTextAttachment>();
    const AttributeValue drawing = std::make_shared<Drawing>();
    EXPECT_EQ(plain.as<Drawing>(), nullptr);
    EXPECT_NE(plain.as<NSTextAttachment>(), nullptr);
    EXPECT_NE(drawing.as<Drawing>(), nullptr);
    EXPECT_EQ(drawing.sharedAs<NSTextAttachment>().get(), drawing.as<Drawing>());
}

TEST(AttributeSet, IsEqualByContentWhateverWayItCameAbout)
{
    const AttributeSet literal{{NSKernAttributeName, 1}, {NSLinkAttributeName, u"x"_s}, {kOtherName, 0.5}};
    AttributeSet grown;
    grown.insert(kOtherName, 3);
    grown.insert(NSLinkAttributeName, 4);
    grown.insert(AttributeSet{{NSLinkAttributeName, u"x"_s}, {NSKernAttributeName, true}});
    EXPECT_FALSE(grown == literal);
    grown.insert(kOtherName, 0.5);
    EXPECT_EQ(grown, literal);
    EXPECT_EQ(grown.count(), 3);
    grown.remove(NSLinkAttributeName);
    grown.remove(NSKernAttributeName);
    grown.insert(kOtherName, AttributeValue());
    EXPECT_EQ(grown, AttributeSet());
    EXPECT_TRUE(grown.isEmpty());
}

TEST(AttributeSet, CopiesDoNotSeeLaterChanges)
{
    AttributeSet set{{NSLinkAttributeName, u"x"_s}};
    const AttributeSet copy = set;
    set.insert(NSLinkAttributeName, u"y"_s);
    set.insert(set);
    EXPECT_EQ(copy.value(NSLinkAttributeName), AttributeValue(u"x"_s));
    EXPECT_EQ(set.value(NSLinkAttributeName), AttributeValue(u"y"_s));
}

TEST(AttributeSet, AnObjectAndATextTakeEachOthersPlace)
{
    const auto object = std::make_shared<NSTextAttachment>();
    const AttributeSet text{{kOtherName, u"x"_s}, {NSLinkAttributeName, u"y"_s}};
    const AttributeSet objects{{kOtherName, object}, {kFloodName, object}};
    AttributeSet both = text;
    both.insert(objects);
    both.checkInvariants();
    EXPECT_EQ(both, (AttributeSet{{kOtherName, object}, {NSLinkAttributeName, u"y"_s}, {kFloodName, object}}));
    AttributeSet back = objects;
    back.insert(text);
    back.checkInvariants();
    EXPECT_EQ(back, (AttributeSet{{kOtherName, u"x"_s}, {NSLinkAttributeName, u"y"_s}, {kFloodName, object}}));
    back.insert(kOtherName, 1);
    back.checkInvariants();
    back.insert(kFloodName, 2);
    EXPECT_EQ(back, (AttributeSet{{kOtherName, 1}, {NSLinkAttributeName, u"y"_s}, {kFloodName, 2}}));
    back.checkInvariants();
}

TEST(AttributeSet, TakesMoreValuesThanTheTable)
{
    NSMutableParagraphStyle style;
    std::vector<AttributeSet> sets;
    const int count = AttributeTable::kMaximumValuesOfName + 200;
    for (int number = 0; number < count; ++number) {
        style.headIndent = number;
        sets.push_back({{kFloodName, style.copy()}, {kOtherName, number % 3}});
    }
    for (int number = 0; number < count; ++number) {
        style.headIndent = number;
        AttributeSet again{{kOtherName, number % 3}, {kFloodName, style.copy()}};
        const auto index = static_cast<size_t>(number);
        ASSERT_EQ(sets[index], again);
        ASSERT_EQ(again.value(kFloodName).as<NSParagraphStyle>()->headIndent(), number);
        ASSERT_FALSE(sets[index] == sets[(index + 1) % sets.size()]);
        again.insert(kFloodName, 1);
        ASSERT_EQ(again, (AttributeSet{{kOtherName, number % 3}, {kFloodName, 1}}));
    }
}

TEST(AttributeSet, KeepsManyNamesApart)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    // More names than the mask has bits, so that some share theirs.
    std::vector<NSAttributeName> names;
    for (int number = 0; number < 300; ++number) {
        names.emplace_back(u"TestMany%1"_s.arg(number));
    }
    AttributeSet set;
    std::map<quint16, AttributeValue> model;
    for (int step = 0; step < 3000; ++step) {
        const NSAttributeName &name = names[random() % names.size()];
        if (random() % 3 == 0) {
            set.remove(name);
            model.erase(name.index());
        } else {
            const AttributeValue value =
                random() % 2 == 0 ? AttributeValue(1) : AttributeValue(QString::number(random() % 9));
            set.insert(name, value);
            model[name.index()] = value;
        }
        ASSERT_EQ(set.count(), static_cast<qint64>(model.size()));
        const NSAttributeName &other = names[random() % names.size()];
        ASSERT_EQ(set.value(other), model.contains(other.index()) ? model.at(other.index()) : AttributeValue());
    }
    // So many different sets fill the table; what comes after is still right.
    EXPECT_EQ(set.allNames().size(), model.size());
}

TEST(AttributeSet, IsTheSameOnEveryThread)
{
    std::array<AttributeSet, 4> sets;
    std::vector<std::thread> threads;
    for (AttributeSet &set : sets) {
        threads.emplace_back([&set] {
            for (int number = 0; number < 500; ++number) {
                NSMutableParagraphStyle style;
                style.tailIndent = number;
                set.insert(NSParagraphStyleAttributeName, style.copy());
                set.insert(NSKernAttributeName, number);
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    for (const AttributeSet &set : sets) {
        EXPECT_EQ(set, sets.front());
        EXPECT_EQ(set.value(NSKernAttributeName), AttributeValue(499));
    }
}

#include <Text/NSMutableAttributedString.h>
#include <Text/NSParagraphStyle.h>
#include <Text/NSTextAttachment.h>

#include <Platform/Text/AttributedStringModel.h>
#include <Platform/Text/RandomText.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace quib;
using quib::tests::AttributedStringModel;
using quib::tests::randomText;
using quib::tests::TestSeed;

namespace {

inline constinit const NSAttributeName kPlaceName{u"TestPlace"};
inline constinit const NSAttributeName kFloodedName{u"TestFlooded"};

const std::vector<NSAttributeName> &names()
{
    static const std::vector<NSAttributeName> s_names{NSFontAttributeName,
                                                      NSKernAttributeName,
                                                      NSParagraphStyleAttributeName,
                                                      NSAttachmentAttributeName,
                                                      NSLinkAttributeName,
                                                      kPlaceName,
                                                      kFloodedName};
    return s_names;
}

/// Values of every sort: shared ones, ones unique to a place, and more numbers than the table takes.
AttributeValue randomValue(std::mt19937 &random)
{
    NSMutableParagraphStyle style;
    switch (random() % 8) {
    case 0:
        return {};
    case 1:
        return 0.5;
    case 2:
        return static_cast<int>(random() % 5000);
    case 3:
        return QString::number(random() % 4);
    case 4:
        return QUrl(u"quib://%1"_s.arg(random() % 3));
    case 5:
        style.headIndent = static_cast<double>(random() % 3);
        return style.copy();
    case 6:
        return std::make_shared<NSTextAttachment>();
    default:
        return static_cast<int>(random() % 3);
    }
}

NSRange randomRange(std::mt19937 &random, qint64 length)
{
    const auto start = static_cast<qint64>(random() % static_cast<quint64>(length + 1));
    const qint64 longest = random() % 4 == 0 ? length - start : std::min<qint64>(length - start, 12);
    return {start, static_cast<qint64>(random() % static_cast<quint64>(longest + 1))};
}

AttributeSet randomSet(std::mt19937 &random)
{
    AttributeSet attributes;
    for (size_t left = random() % 4; left > 0; --left) {
        attributes.insert(names()[random() % names().size()], randomValue(random));
    }
    return attributes;
}

QString randomUnits(std::mt19937 &random, size_t longest)
{
    return randomText(random, u"ab\n\r\u2029\uFFFC\xD800 ", longest);
}

NSAttributedString randomPiece(std::mt19937 &random)
{
    NSMutableAttributedString piece(randomUnits(random, 10), randomSet(random));
    piece.setAttributes(randomSet(random), randomRange(random, piece.length()));
    return piece;
}

/// The text and its model, changed alike.
class Pair
{
public:
    NSMutableAttributedString text;
    AttributedStringModel model;
    /// A copy from some moment, which no later change reaches.
    NSAttributedString copy;
    AttributedStringModel copyModel;

    void setAttributes(const AttributeSet &attributes, NSRange range)
    {
        text.setAttributes(attributes, range);
        model.change(range,
                     [dictionary = AttributedStringModel::dictionary(attributes)](auto &all) { all = dictionary; });
    }
    void addAttribute(const NSAttributeName &name, const AttributeValue &value, NSRange range)
    {
        text.addAttribute(name, value, range);
        model.change(range, [&](auto &all) {
            all.erase(name.index());
            if (!value.isNothing()) {
                all.emplace(name.index(), value);
            }
        });
    }
    void addAttributes(const AttributeSet &attributes, NSRange range)
    {
        text.addAttributes(attributes, range);
        model.change(range, [dictionary = AttributedStringModel::dictionary(attributes)](auto &all) {
            for (const auto &[name, value] : dictionary) {
                all[name] = value;
            }
        });
    }
    void removeAttributes(std::span<const NSAttributeName> removed, NSRange range)
    {
        text.removeAttributes(removed, range);
        model.change(range, [&](auto &all) {
            for (const NSAttributeName &name : removed) {
                all.erase(name.index());
            }
        });
    }
    void removeAndAddAttributes(std::span<const NSAttributeName> removed, const AttributeSet &added, NSRange range)
    {
        text.removeAndAddAttributes(removed, added, range);
        removeAndAddInModel(removed, added, range);
    }
    /// What stands where it stood stays a run of its own until the runs are joined.
    void reset(std::span<const NSAttributeName> removed, const AttributeSet &added)
    {
        text.reset(removed, added);
        removeAndAddInModel(removed, added, text.fullRange());
    }
    void removeAndAddInModel(std::span<const NSAttributeName> removed, const AttributeSet &added, NSRange range)
    {
        model.change(range, [&, dictionary = AttributedStringModel::dictionary(added)](auto &all) {
            for (const NSAttributeName &name : removed) {
                all.erase(name.index());
            }
            for (const auto &[name, value] : dictionary) {
                all[name] = value;
            }
        });
    }
    void addMany(std::mt19937 &random)
    {
        std::vector<NSMutableAttributedString::Addition> additions;
        for (qint64 location = 0; location < text.length();) {
            const auto start = std::min(location + static_cast<qint64>(random() % 20), text.length());
            const auto length = std::min(static_cast<qint64>(random() % 8), text.length() - start);
            additions.push_back({{start, length}, randomSet(random)});
            location = start + length;
        }
        add(additions);
    }
    /// Mostly to whole runs.
    void addToRuns(std::mt19937 &random)
    {
        std::vector<NSMutableAttributedString::Addition> additions;
        const quib::AttributeRuns &runs = text.runs();
        const bool isExact = random() % 2 == 0;
        for (quib::AttributeRuns::Position position; !runs.isAtEnd(position); runs.advance(position)) {
            NSRange run = runs.range(position);
            const bool isNext = !additions.empty() && additions.back().range.limit() == run.location;
            if (isNext && random() % 4 == 0) {
                additions.back().range.length += run.length;
            } else if (random() % 3 > 0) {
                run.length -= isExact ? 0 : static_cast<qint64>(random() % 2);
                additions.push_back({run, randomSet(random)});
            }
        }
        add(additions);
    }
    void add(const std::vector<NSMutableAttributedString::Addition> &additions)
    {
        auto taken = additions;
        text.addAttributes(taken);
        for (const auto &[range, attributes] : additions) {
            model.change(range, [dictionary = AttributedStringModel::dictionary(attributes)](auto &all) {
                for (const auto &[name, value] : dictionary) {
                    all[name] = value;
                }
            });
        }
    }
    /// The copy that starts anew is the one that is changed to do so.
    void expectResetCopy(std::span<const NSAttributeName> removed, const AttributeSet &added, NSRange range) const
    {
        auto anew = NSMutableAttributedString::resetCopy(text, range, removed, added);
        NSMutableAttributedString changed(text.attributedSubstringFromRange(range));
        changed.removeAndAddAttributes(removed, added, changed.fullRange());
        anew.runs().checkInvariants();
        EXPECT_EQ(anew, changed);
        anew.joinEqualRuns();
        anew.runs().checkInvariants();
        EXPECT_EQ(anew, changed);
    }
    void replace(NSRange range, QStringView string)
    {
        text.replaceCharactersInRange(range, string);
        model.replace(range, string);
    }
    void replace(NSRange range, const NSAttributedString &string)
    {
        text.replaceCharactersInRange(range, string);
        model.replace(range, AttributedStringModel(string));
    }
    void replaceMany(std::mt19937 &random)
    {
        std::vector<NSMutableAttributedString::Replacement> replacements;
        qint64 location = 0;
        while (location < text.length()) {
            const auto start = location + static_cast<qint64>(random() % 20);
            if (start > text.length()) {
                break;
            }
            const auto length = std::min<qint64>(static_cast<qint64>(random() % 4), text.length() - start);
            replacements.push_back({{start, length}, randomUnits(random, 3), randomSet(random)});
            location = start + length + 1;
        }
        if (random() % 2 == 0) {
            text.replaceCharacters(replacements);
        } else {
            // One after the other, each lost before the next.
            qint64 change = 0;
            for (const auto &replacement : replacements) {
                change += replacement.string.size() - replacement.range.length;
            }
            NSMutableAttributedString::Replacement held;
            text.replaceCharacters(change, [&, next = replacements.begin()]() mutable {
                if (next == replacements.end()) {
                    return static_cast<NSMutableAttributedString::Replacement *>(nullptr);
                }
                held = *next++;
                return &held;
            });
        }
        std::ranges::reverse(replacements);
        for (const auto &[range, string, attributes] : replacements) {
            model.replace(range, AttributedStringModel(NSAttributedString(string, attributes)));
        }
    }

    void step(std::mt19937 &random)
    {
        const NSRange range = randomRange(random, text.length());
        switch (random() % 18) {
        case 0:
            setAttributes(randomSet(random), range);
            break;
        case 1:
        case 2:
        case 3:
            addAttribute(names()[random() % names().size()], randomValue(random), range);
            break;
        case 4:
        case 5:
            addAttributes(randomSet(random), range);
            break;
        case 6:
            removeAttributes(std::span(names()).first(random() % 3), range);
            break;
        case 7:
        case 8:
            replace({range.location, std::min<qint64>(range.length, 8)}, randomUnits(random, 10));
            break;
        case 9:
            replace({range.location, std::min<qint64>(range.length, 8)}, randomPiece(random));
            break;
        case 10: {
            // A part of the text goes to another place of it.
            const NSAttributedString part = text.attributedSubstringFromRange(range);
            EXPECT_EQ(AttributedStringModel(part), model.part(range));
            replace(randomRange(random, text.length()), text.attributedSubstringFromRange({range.location, 5}));
            break;
        }
        case 11:
            expectResetCopy(std::span(names()).first(random() % 5), randomSet(random), range);
            removeAndAddAttributes(std::span(names()).first(random() % 5), randomSet(random), range);
            break;
        case 12:
            if (random() % 4 == 0) {
                addMany(random);
            }
            break;
        case 13:
            if (random() % 4 == 0) {
                reset(std::span(names()).first(random() % 5), randomSet(random));
            }
            break;
        case 14:
            addToRuns(random);
            break;
        case 15:
            if (random() % 2 == 0) {
                text.joinEqualRuns();
            }
            break;
        case 16:
            copy = text;
            copyModel = model;
            break;
        default:
            if (random() % 20 == 0) {
                replaceMany(random);
            }
            break;
        }
    }

    void expectSame() const
    {
        copy.runs().checkInvariants();
        ASSERT_EQ(AttributedStringModel(copy), copyModel);
        text.runs().checkInvariants();
        ASSERT_EQ(text.runs().length(), text.length());
        ASSERT_EQ(AttributedStringModel(text), model);
    }
};

} // namespace

TEST(AttributedStringProperty, EditsDoWhatTheyDoToAListOfUnits)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    for (int round = 0; round < 12; ++round) {
        Pair pair;
        // Every other text begins with many short runs, so that leaves fill, split and join.
        if (round % 2 == 0) {
            for (int index = 0; index < 400; ++index) {
                pair.replace({pair.text.length(), 0}, randomPiece(random));
            }
        }
        for (int step = 0; step < 400; ++step) {
            pair.step(random);
            if (step % 20 == 0) {
                pair.expectSame();
                if (HasFatalFailure()) {
                    return;
                }
            }
        }
        pair.expectSame();
    }
}

TEST(AttributedStringProperty, ALongTextIsEditedAllOver)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    // More leaves than a group of them.
    const NSAttributedString start = [&random] {
        NSMutableAttributedString text;
        for (int index = 0; index < 6000; ++index) {
            text.appendAttributedString(randomPiece(random));
        }
        return NSAttributedString(text);
    }();
    ASSERT_GT(start.runs().runCount(), 64 * AttributeRuns::kLeafCapacity);
    Pair pair;
    pair.replace({0, 0}, start);
    for (int step = 1; step <= 600; ++step) {
        const NSRange range = randomRange(random, pair.text.length());
        switch (random() % 6) {
        case 0:
            pair.addAttribute(names()[random() % names().size()], randomValue(random), range);
            break;
        case 1: {
            // A part goes and the next loses its attributes, so that leaves go and join; another comes as it was first.
            const NSRange part{range.location, std::min<qint64>(2000, pair.text.length() - range.location)};
            pair.replace(part, QStringView());
            pair.setAttributes({}, {part.location, std::min<qint64>(2000, pair.text.length() - part.location)});
            const auto place = static_cast<qint64>(random() % static_cast<quint64>(start.length()));
            pair.replace({part.location, 0}, start.attributedSubstringFromRange({place, 2500}));
            break;
        }
        case 2:
            pair.replace({range.location, std::min<qint64>(range.length, 50)},
                         start.attributedSubstringFromRange(range));
            break;
        default:
            pair.addAttributes(randomSet(random), {range.location, std::min<qint64>(range.length, 12)});
            break;
        }
        pair.text.runs().checkInvariants();
        if (step % 100 == 0) {
            pair.expectResetCopy(std::span(names()).first(random() % 5), randomSet(random), range);
            pair.expectSame();
            if (HasFatalFailure()) {
                return;
            }
        }
    }
}

TEST(AttributedStringProperty, LookUpsFindTheLongestRangesOfAValue)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    Pair pair;
    for (int index = 0; index < 300; ++index) {
        pair.replace({pair.text.length(), 0}, randomPiece(random));
    }
    for (int step = 0; step < 2000; ++step) {
        pair.step(random);
        const NSRange inRange = randomRange(random, pair.text.length());
        if (inRange.length == 0) {
            continue;
        }
        const auto index = inRange.location + static_cast<qint64>(random() % static_cast<quint64>(inRange.length));
        const NSAttributeName &name = names()[random() % names().size()];
        NSRange longest;
        ASSERT_EQ(pair.text.attribute(name, index, &longest, inRange), pair.model.value(name.index(), index));
        ASSERT_EQ(longest, pair.model.longestRange(name.index(), index, inRange));
        NSRange effective;
        ASSERT_EQ(pair.text.attribute(name, index, &effective), pair.model.value(name.index(), index));
        ASSERT_TRUE(effective.contains(index));
        ASSERT_EQ(NSIntersectionRange(effective, pair.model.longestRange(name.index(), index, pair.text.fullRange())),
                  effective);
        bool contains = false;
        for (qint64 place = inRange.location; place < inRange.limit(); ++place) {
            contains = contains || !pair.model.value(name.index(), place).isNothing();
        }
        ASSERT_EQ(pair.text.containsAttribute(name, inRange), contains);
    }
}

TEST(AttributedStringProperty, EnumerationGoesOnBehindWhatTheBlockMade)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    for (int round = 0; round < 300; ++round) {
        Pair pair;
        for (int index = 0; index < 8; ++index) {
            pair.replace({pair.text.length(), 0}, randomPiece(random));
        }
        const NSRange range = randomRange(random, pair.text.length());
        const NSAttributeName &name = names()[random() % 5];
        const bool isReverse = random() % 2 == 0;
        // The model knows what is still to come: the rest of the range in the direction of the enumeration.
        NSRange left = range;
        pair.text.enumerateAttribute(name, range,
                                     isReverse ? NSAttributedStringEnumerationOptions::Reverse
                                               : NSAttributedStringEnumerationOptions::Forward,
                                     [&](const AttributeValue &value, NSRange found, bool *) {
                                         ASSERT_GT(left.length, 0);
                                         const qint64 index = isReverse ? left.limit() - 1 : left.location;
                                         ASSERT_EQ(found, pair.model.longestRange(name.index(), index, left));
                                         ASSERT_EQ(value, pair.model.value(name.index(), index));
                                         left = isReverse ? NSRange{left.location, left.length - found.length}
                                                          : NSRange{found.limit(), left.length - found.length};
                                         const qint64 lengthBefore = pair.text.length();
                                         switch (random() % 4) {
                                         case 0:
                                             pair.replace(found, randomUnits(random, 4));
                                             break;
                                         case 1:
                                             pair.addAttribute(name, randomValue(random), found);
                                             break;
                                         case 2:
                                             pair.replace({found.location, 1}, randomPiece(random));
                                             break;
                                         default:
                                             break;
                                         }
                                         if (!isReverse) {
                                             left.location += pair.text.length() - lengthBefore;
                                         }
                                     });
        ASSERT_EQ(left.length, 0);
        pair.expectSame();
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST(AttributedStringProperty, EqualityIsThatOfTheUnits)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    int equalCount = 0;
    for (int round = 0; round < 2000; ++round) {
        Pair first;
        Pair second;
        for (Pair *pair : {&first, &second}) {
            pair->replace({0, 0}, u"ab");
            for (size_t left = random() % 3; left > 0; --left) {
                pair->addAttribute(names()[random() % 2], static_cast<int>(random() % 2),
                                   randomRange(random, pair->text.length()));
            }
        }
        ASSERT_EQ(first.text == second.text, first.model == second.model);
        equalCount += first.model == second.model ? 1 : 0;
    }
    EXPECT_GT(equalCount, 100);
}

TEST(AttributedStringProperty, FixingIsParagraphByParagraph)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    const QStringList pieces{u"a"_s, u"bc"_s, u"\n"_s, u"\r"_s, u"\r\n"_s, u"\u2029"_s, u"\u0085"_s};
    int changed = 0;
    for (int round = 0; round < 3000; ++round) {
        QString units;
        for (size_t left = random() % 24; left > 0; --left) {
            units += pieces[static_cast<qsizetype>(random() % static_cast<size_t>(pieces.size()))];
        }
        NSMutableAttributedString text(units);
        for (size_t left = random() % 8; left > 0; --left) {
            text.addAttribute(NSParagraphStyleAttributeName, static_cast<int>(random() % 3),
                              randomRange(random, text.length()));
        }
        const NSRange range = randomRange(random, text.length());
        NSMutableAttributedString expected = text;
        for (qint64 place = range.location; place < range.limit();) {
            const NSRange paragraph = expected.paragraphRangeForRange({place, 0});
            const AttributeValue first = expected.attribute(NSParagraphStyleAttributeName, paragraph.location);
            expected.addAttribute(NSParagraphStyleAttributeName, first, paragraph);
            place = paragraph.limit();
        }
        changed += expected == text ? 0 : 1;
        text.fixAttributesInRange(range);
        text.runs().checkInvariants();
        ASSERT_TRUE(text == expected) << units.toStdString();
    }
    EXPECT_GT(changed, 500);
}

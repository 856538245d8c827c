// The corpus that figures are measured on: the same in every run, and shaped as its comment says.

#include <Support/CorpusGenerator.h>

#include <gtest/gtest.h>

#include <QSet>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;
using quib::benchmarks::CorpusGenerator;

namespace {

constexpr qsizetype kNotes = 4000;

class CorpusGeneratorShape : public testing::Test
{
protected:
    static const QList<QString> &texts()
    {
        static const QList<QString> texts = CorpusGenerator().texts(kNotes);
        return texts;
    }
    template <typename Predicate> static double shareOf(Predicate &&predicate)
    {
        return static_cast<double>(std::count_if(texts().begin(), texts().end(), predicate)) /
               static_cast<double>(kNotes);
    }
};

TEST(CorpusGenerator, MakesTheSameNotesAgainInAnyOrder)
{
    const CorpusGenerator once;
    const CorpusGenerator again;
    const QString last = again.text(99);
    for (qsizetype index = 0; index < 100; ++index) {
        EXPECT_EQ(once.text(index), again.text(index)) << index;
    }
    EXPECT_EQ(once.text(99), last);
    EXPECT_NE(once.text(0), once.text(1));
    EXPECT_NE(once.text(0), CorpusGenerator(/*seed=*/1).text(0));
}

TEST(CorpusGenerator, MakesNotesOfAGivenSize)
{
    const CorpusGenerator generator;
    for (const qsizetype bytes : {10'000, 1'000'000}) {
        const qsizetype made = generator.textWithBytes(3, bytes).toUtf8().size();
        EXPECT_GE(made, bytes);
        EXPECT_LT(made, bytes + 4096);
    }
}

TEST(CorpusGenerator, HasThreeHundredTagsParentsFirst)
{
    const CorpusGenerator generator;
    const QStringList &tags = generator.tags();
    ASSERT_EQ(tags.size(), CorpusGenerator::kTagCount);
    QSet<QString> known;
    for (const QString &tag : tags) {
        const qsizetype slash = tag.lastIndexOf(u'/');
        EXPECT_TRUE(slash < 0 || known.contains(tag.first(slash))) << tag.toStdString();
        EXPECT_FALSE(known.contains(tag)) << tag.toStdString();
        known.insert(tag);
    }
}

TEST_F(CorpusGeneratorShape, LengthsHaveTheMedianAndTheLongTail)
{
    std::vector<qsizetype> bytes;
    for (const QString &text : texts()) {
        bytes.push_back(text.toUtf8().size());
    }
    std::sort(bytes.begin(), bytes.end());
    const qsizetype median = bytes[bytes.size() / 2];
    EXPECT_GT(median, 1300);
    EXPECT_LT(median, 2000);
    EXPECT_GT(bytes[bytes.size() * 99 / 100], 8 * median);
}

TEST_F(CorpusGeneratorShape, PartsComeAtTheirRates)
{
    const auto hasMarker = [](const QString &text) {
        return text.contains(u"[image:"_s) || text.contains(u"[file:"_s);
    };
    EXPECT_NEAR(shareOf(hasMarker), 0.20, 0.03);
    EXPECT_NEAR(shareOf([](const QString &text) { return text.contains(u"```"_s); }), 0.10, 0.03);
    EXPECT_NEAR(shareOf([](const QString &text) { return text.contains(u"https://"_s); }), 0.25, 0.03);
    const auto hasTags = [](const QString &text) {
        const qsizetype second = text.indexOf(u'\n') + 1;
        return second < text.size() && text.at(second) == u'#' && text.at(second + 1).isLetter();
    };
    EXPECT_NEAR(shareOf(hasTags), 0.70, 0.03);
    EXPECT_DOUBLE_EQ(shareOf([](const QString &text) { return text.startsWith(u"# "_s); }), 1.0);
}

TEST_F(CorpusGeneratorShape, ScriptsAreMixed)
{
    const auto shareOfScript = [](QChar::Script script) {
        return shareOf([script](const QString &text) {
            return std::any_of(text.begin(), text.end(), [script](QChar unit) { return unit.script() == script; });
        });
    };
    EXPECT_NEAR(shareOfScript(QChar::Script_Cyrillic), 0.14, 0.03);
    EXPECT_NEAR(shareOfScript(QChar::Script_Greek), 0.06, 0.02);
    EXPECT_NEAR(shareOfScript(QChar::Script_Han), 0.12, 0.03);
    EXPECT_NEAR(shareOfScript(QChar::Script_Arabic), 0.08, 0.02);
}

} // namespace

#include <Tags/QBTagDataDetector.h>

#include "TagPieces.h"

#include <Support/TestSeed.h>
#include <Text/NSStringHelpers.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using quib::tests::randomTagText;
using quib::tests::TestSeed;

namespace {

const QBTagDataDetector &detector()
{
    return QBTagDataDetector::sharedDetector();
}

QList<NSTextCheckingResult> tagsIn(QStringView text)
{
    return detector().matchesInString(text, 0, {0, text.size()});
}

QString removed(QString text)
{
    detector().removeTagsInString(text, {0, text.size()});
    return text;
}

/// The rules as they read, each edit made in the text at once.
QString slowReplace(const QString &oldTag, QString newTag, QString text)
{
    if (oldTag.endsWith(u'#') && !newTag.isEmpty() && !newTag.endsWith(u'#')) {
        newTag += u'#';
    }
    const QStringList key = QBTagDataDetector::diacriticTagComponentsFromString(oldTag);
    const QList<NSTextCheckingResult> matches = tagsIn(text);
    for (qsizetype i = matches.size() - 1; i >= 0; --i) {
        NSRange range = matches[i].range();
        const QString tag = text.sliced(range.location, range.length);
        if (QBTagDataDetector::diacriticTagComponentsFromString(tag) != key) {
            continue;
        }
        if (newTag.isEmpty()) {
            range = quib::rangeForRemovingCharactersInRangeLeavingNoGaps(text, range);
        }
        const bool closes = tag.endsWith(u'#') && !newTag.isEmpty() && !newTag.endsWith(u'#');
        text.replace(range.location, range.length, closes ? QString(newTag + u'#') : newTag);
    }
    return text;
}

QString slowRemove(QString text, NSRange searched)
{
    const QList<NSTextCheckingResult> matches = detector().matchesInString(text, 0, searched);
    for (qsizetype i = matches.size() - 1; i >= 0; --i) {
        NSRange range = matches[i].range();
        const auto unitAt = [&text](qint64 at) { return at >= 0 && at < text.size() ? text[at].unicode() : u'?'; };
        const bool atLineStart = range.location == 0 || unitAt(range.location - 1) == u'\n';
        if (atLineStart && unitAt(range.limit()) == u' ') {
            ++range.length;
        } else if (unitAt(range.limit() + 1) != u'\0' && unitAt(range.location - 1) == u' ') {
            --range.location;
            ++range.length;
        }
        text.remove(range.location, range.length);
        const NSRange paragraph = quib::paragraphRangeForRange(text, {range.location, 0});
        QString rest = text.sliced(paragraph.location, paragraph.length);
        rest.remove(u'\n');
        if (paragraph.length > 0 && quib::trimmedWhitespace(rest).isEmpty()) {
            text.remove(paragraph.location, paragraph.length);
        }
        if (text.endsWith(u'\n')) {
            text.chop(1);
        }
    }
    return text;
}

TEST(RenamingTags, WritesTheNewTag)
{
    struct Case
    {
        QString text;
        QString oldTag;
        QString newTag;
        QString expected;
    };
    const Case cases[] = {
        {u"x #a y"_s, u"#a"_s, u"#b"_s, u"x #b y"_s},
        {u"#Caffè #caffe#, #caffè/x"_s, u"#caffe"_s, u"#tea"_s, u"#tea #tea#, #caffè/x"_s},
        {u"#a/b #a"_s, u"#a"_s, u"#z"_s, u"#a/b #z"_s},
        {u"#a b# x"_s, u"#a b#"_s, u"#c"_s, u"#c# x"_s},
        {u"#a b# x"_s, u"#a b#"_s, u"#c d#"_s, u"#c d# x"_s},
        {u"#a x"_s, u"#a"_s, u"#c d#"_s, u"#c d# x"_s},
        {u"#a/ x"_s, u"#a"_s, u"#b"_s, u"#b x"_s},
        {u"(#a)"_s, u"#A"_s, u"#b"_s, u"(#b)"_s},
        // An empty tag deletes, with the blank that would be left over.
        {u"x #a y"_s, u"#a"_s, u""_s, u"x y"_s},
        {u"#a y"_s, u"#a"_s, u""_s, u"y"_s},
        {u"x #a"_s, u"#a"_s, QString(), u"x"_s},
        {u"x\n#a\ny"_s, u"#a"_s, u""_s, u"x\n\ny"_s},
        {u"x\n#a"_s, u"#a"_s, u""_s, u"x"_s},
        {u"#a #a #a"_s, u"#a"_s, u""_s, u""_s},
        {u"x #a #b #a"_s, u"#a"_s, u""_s, u"x #b"_s},
        {u"(#a)"_s, u"#a"_s, u""_s, u"()"_s},
    };
    for (const Case &test : cases) {
        EXPECT_EQ(QBTagDataDetector::stringByReplacingHashtag(test.oldTag, test.newTag, test.text), test.expected)
            << test.text.toStdString() << ": " << test.oldTag.toStdString() << " to " << test.newTag.toStdString();
    }
}

TEST(RenamingTags, EqualsThePlainRules)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    const QStringList tags = {u"#a"_s, u"#a#"_s, u"#é"_s, u"#a b#"_s, u"#ABC D#"_s, u"#A/B"_s, u"#x y#"_s, u""_s};
    const auto anyTag = [&] { return tags[static_cast<qsizetype>(random() % static_cast<size_t>(tags.size()))]; };
    for (int round = 0; round < 30'000; ++round) {
        const QString text = randomTagText(random, 16);
        const QString oldTag = anyTag();
        const QString newTag = random() % 2 == 0 ? QString() : anyTag();
        ASSERT_EQ(QBTagDataDetector::stringByReplacingHashtag(oldTag, newTag, text), slowReplace(oldTag, newTag, text))
            << text.toStdString() << ": " << oldTag.toStdString() << " to " << newTag.toStdString();
    }
}

TEST(AddingTags, PutsThemWhereTagsStand)
{
    struct Case
    {
        QString text;
        QStringList hashtags;
        QString expected;
    };
    const QStringList a = {u"#a"_s};
    const Case cases[] = {
        {u"text"_s, {}, u"text"_s},
        {u""_s, {u"#a"_s, u""_s, u"#b c#"_s}, u"#a #b c#"_s},
        {u"text"_s, a, u"text\n\n#a"_s},
        {u"text\n"_s, a, u"text\n\n#a\n"_s},
        {u"text\n\n  \n"_s, a, u"text\n\n#a\n\n  \n"_s},
        {u"text\r\n"_s, a, u"text\r\n\n#a\n"_s},
        {u"x\nline #t"_s, a, u"x\nline #t #a"_s},
        {u"x\n#t  \n\n"_s, a, u"x\n#t #a  \n\n"_s},
        {u"t x#y z#"_s, a, u"t x#y z# #a"_s},
        {u"#t y"_s, a, u"#t y\n\n#a"_s},
        {u"#t."_s, a, u"#t.\n\n#a"_s},
        {u"(#t)"_s, a, u"(#t)\n\n#a"_s},
        {u"#t\nx"_s, a, u"#t\nx\n\n#a"_s},
        {u" \n"_s, a, u" \n\n\n#a"_s},
        {u"x\n"_s, a, u"x\n\n\n#a"_s},
        {u"😀\n"_s, a, u"😀\n\n\n#a"_s},
        {u" 😀"_s, a, u" 😀\n\n#a"_s},
        {u"xy"_s, {u""_s}, u"xy\n\n"_s},
    };
    for (const Case &test : cases) {
        EXPECT_EQ(QBTagDataDetector::stringByAddingHashtags(test.hashtags, test.text), test.expected)
            << test.text.toStdString();
    }
}

TEST(AddingTags, KeepsTheTextAndItsTags)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    for (int round = 0; round < 20'000; ++round) {
        const QString text = randomTagText(random, 16);
        const QString result = QBTagDataDetector::stringByAddingHashtags({u"#new"_s, u"#new tag#"_s}, text);
        QString without = result;
        const qsizetype at = result.lastIndexOf(u"#new #new tag#"_s);
        ASSERT_GE(at, 0) << text.toStdString();
        without.remove(at, 14);
        const qsizetype inserted = result.size() - text.size() - 14;
        ASSERT_EQ(without.remove(at - inserted, inserted), text);
        QStringList added;
        for (const NSTextCheckingResult &match : tagsIn(result)) {
            added.append(result.sliced(match.range().location, match.range().length));
        }
        ASSERT_TRUE(added.contains(u"#new tag#"_s)) << result.toStdString();
    }
}

TEST(RemovingTags, LeavesNoGaps)
{
    const std::pair<QString, QString> cases[] = {
        {u"x #a y"_s, u"x y"_s},
        {u"#a y"_s, u"y"_s},
        {u"x\n#a y"_s, u"x\ny"_s},
        {u"x #a"_s, u"x"_s},
        {u"x\n#a"_s, u"x"_s},
        {u"x\n#a\ny"_s, u"x\ny"_s},
        {u"x\n #a #b  \ny"_s, u"x\ny"_s},
        {u"x\r\n#a\r\ny"_s, u"x\r\n\r\ny"_s},
        {u"x (#a)\n"_s, u"x ()"_s},
        {u"#a #b x\n\n\n"_s, u"x\n"_s},
        {u"x #a"_s + QChar(u' ') + QChar(u'\0') + u'y', u"x  "_s + QChar(u'\0') + u'y'},
        {u"no tags\n\n"_s, u"no tags\n\n"_s},
        {u"#a"_s, u""_s},
    };
    for (const auto &[text, expected] : cases) {
        EXPECT_EQ(removed(text), expected) << text.toStdString();
    }
}

TEST(RemovingTags, EqualsThePlainRules)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    for (int round = 0; round < 30'000; ++round) {
        QString text = randomTagText(random, 16);
        const auto start = static_cast<qint64>(random() % (static_cast<size_t>(text.size()) + 1));
        const NSRange range = random() % 2 == 0 ? NSRange{0, text.size()} : NSRange{start, text.size() - start};
        const QString expected = slowRemove(text, range);
        const QString before = text;
        detector().removeTagsInString(text, range);
        ASSERT_EQ(text, expected) << before.toStdString() << " from " << range.location;
    }
}

TEST(RemovingTags, BelievesNoForeignRange)
{
    QString text = u"abc #a def"_s;
    const QList<NSTextCheckingResult> matches = {
        NSTextCheckingResult({NSRange{4, 2}}), NSTextCheckingResult({NSRange{5, 100}}),
        NSTextCheckingResult({NSRange{NSNotFound, 0}}), NSTextCheckingResult({NSRange{-3, 2}}), NSTextCheckingResult()};
    detector().removeTagsInString(text, matches, {0, text.size()});
    EXPECT_EQ(text, u"abc def"_s);
    detector().removeTagsInString(text, {NSTextCheckingResult({NSRange{0, 3}})}, {1, 6});
    EXPECT_EQ(text, u"abc def"_s) << "a match outside of the range stays";
}

TEST(EditingTags, IsLinearInTheText)
{
    // Hundreds of thousands of tags on one line and on lines of their own; quadratic edits would take minutes.
    for (const QString &unit : {u"#a "_s, u"#a b#  "_s, u"#a\n"_s, u" #a\n\n"_s}) {
        const QString text = unit.repeated(300'000);
        const QString renamed = QBTagDataDetector::stringByReplacingHashtag(u"#a"_s, u"#bb"_s, text);
        EXPECT_EQ(renamed.count(u"#bb"_s), unit.contains(u"#a b#"_s) ? 0 : 300'000);
        EXPECT_FALSE(QBTagDataDetector::stringByReplacingHashtag(u"#a"_s, QString(), text).contains(u"#a\n"_s));
        EXPECT_FALSE(removed(text).contains(u'#'));
        EXPECT_TRUE(QBTagDataDetector::stringByAddingHashtags({u"#new"_s}, text).contains(u"#new"_s));
    }
}

} // namespace

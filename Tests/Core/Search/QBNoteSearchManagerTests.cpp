#include <Search/QBNoteSearchManager.h>

#include <Platform/Text/RandomText.h>
#include <Store/KeyValueObject.h>
#include <Support/FakeClock.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QDateTime>
#include <QHash>

using namespace Qt::StringLiterals;

namespace {

NSDate local(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    const QDateTime date(QDate(year, month, day), QTime(hour, minute, second));
    return NSDate::dateWithTimeIntervalSince1970(static_cast<double>(date.toSecsSinceEpoch()));
}

/// A note without a store.
class PlainNote final : public quib::KeyValueObject
{
public:
    QHash<QString, quib::Value> attributes;
    qint64 tagCount = 0;

    [[nodiscard]] NSManagedObjectID objectID() const override { return {}; }
    [[nodiscard]] KeyKind kindOfKey(const QString &key) const override
    {
        return key == u"tags"_s ? KeyKind::ToMany : attributes.contains(key) ? KeyKind::Attribute : KeyKind::Unknown;
    }
    [[nodiscard]] quib::Value attributeForKey(const QString &key) const override { return attributes.value(key); }
    [[nodiscard]] const KeyValueObject *targetForKey(const QString &) const override { return nullptr; }
    [[nodiscard]] qint64 countForKey(const QString &) const override { return tagCount; }
    [[nodiscard]] bool relationContains(const QString &, const NSManagedObjectID &) const override { return false; }
    void forEachTarget(const QString &, const std::function<bool(const KeyValueObject &)> &) const override {}
};

/// The printed form of a format that the test spells out.
QString printed(const QString &format, const QList<NSPredicateArgument> &arguments = {})
{
    const NSPredicate::Ref predicate = NSPredicate::predicateWithFormat(format, arguments);
    return predicate == nullptr ? u"<none>"_s : predicate->predicateFormat();
}

QString searched(const QString &line)
{
    const NSPredicate::Ref predicate = QBNoteSearchManager::predicateForSearchString(line);
    return predicate == nullptr ? u"<none>"_s : predicate->predicateFormat();
}

TEST(SearchPredicate, FollowsTheLanguage)
{
    const std::pair<QString, QString> cases[] = {
        {u"foo"_s, u"text CONTAINS[cd] 'foo'"_s},
        {u"  Foo \n"_s, u"text CONTAINS[cd] 'Foo'"_s},
        {u"foo\nbar"_s, u"text CONTAINS[cd] 'foo' AND text CONTAINS[cd] 'bar'"_s},
        {u"foo\r\nbar"_s, u"text CONTAINS[cd] 'foo' AND text CONTAINS[cd] 'bar'"_s},
        {u"-foo"_s, u"NOT text CONTAINS[cd] 'foo'"_s},
        {u"--foo"_s, u"NOT text CONTAINS[cd] '-foo'"_s},
        {u"-"_s, u"text CONTAINS[cd] '-'"_s},
        {u"a - b"_s, u"text CONTAINS[cd] 'a' AND text CONTAINS[cd] '-' AND text CONTAINS[cd] 'b'"_s},
        {u"\"two words\" other"_s, u"text CONTAINS[cd] 'two words' AND text CONTAINS[cd] 'other'"_s},
        {u"other \"two words\""_s, u"text CONTAINS[cd] 'two words' AND text CONTAINS[cd] 'other'"_s},
        {u"-\"two words\" x"_s, u"NOT text CONTAINS[cd] 'two words' AND text CONTAINS[cd] 'x'"_s},
        {u"\"unclosed other"_s, u"text CONTAINS[cd] '\"unclosed' AND text CONTAINS[cd] 'other'"_s},
        {u"x\"a b\""_s, u"text CONTAINS[cd] 'x\"a' AND text CONTAINS[cd] 'b\"'"_s},
        {u"\"\""_s, u"text CONTAINS[cd] '\"\"'"_s},
        {u"\"a\"b\""_s, u"text CONTAINS[cd] 'a\"b'"_s},
        {u"\" \""_s, u"text CONTAINS[cd] ' '"_s},
        {u"#tag"_s, u"text CONTAINS[cd] '#tag'"_s},
        {u"it's 50%@"_s, u"text CONTAINS[cd] \"it's\" AND text CONTAINS[cd] \"50%@\""_s},
        {u"back\\slash"_s, u"text CONTAINS[cd] 'back\\\\slash'"_s},
        {u"@tagged"_s, u"tags.@count != 0"_s},
        {u"@untagged"_s, u"tags.@count == 0"_s},
        {u"@attachments x"_s, u"(hasImages == YES OR hasFiles == YES) AND text CONTAINS[cd] 'x'"_s},
        {u"-@attachments"_s, u"NOT (hasImages == YES OR hasFiles == YES)"_s},
        {u"@images"_s, u"hasImages == YES"_s},
        {u"@files"_s, u"hasFiles == YES"_s},
        {u"@code"_s, u"hasSourceCode == YES"_s},
        {u"@TODO"_s, u"todoIncompleted > 0"_s},
        {u"@task"_s, u"todoCompleted > 0 OR todoIncompleted > 0"_s},
        {u"@done"_s, u"todoCompleted > 0 AND todoIncompleted == 0"_s},
        {u"@nothing"_s, u"text CONTAINS[cd] '@nothing'"_s},
        {u"x@todo"_s, u"text CONTAINS[cd] 'x@todo'"_s},
        // The terms are joined as text: the parentheses of these are gone by then.
        {u"abc @task"_s, u"(text CONTAINS[cd] 'abc' AND todoCompleted > 0) OR todoIncompleted > 0"_s},
        {u"@task abc"_s, u"todoCompleted > 0 OR (todoIncompleted > 0 AND text CONTAINS[cd] 'abc')"_s},
        {u"-@task"_s, u"(NOT todoCompleted > 0) OR todoIncompleted > 0"_s},
        {u"-@done"_s, u"(NOT todoCompleted > 0) AND todoIncompleted == 0"_s},
    };
    for (const auto &[line, expected] : cases) {
        ASSERT_NE(printed(expected), u"<none>"_s) << expected.toStdString();
        EXPECT_EQ(searched(line).toStdString(), printed(expected).toStdString()) << line.toStdString();
    }
    for (const QString &blank : {u""_s, u"   "_s, u" \n\t\u2028"_s}) {
        EXPECT_EQ(QBNoteSearchManager::predicateForSearchString(blank), nullptr);
    }
}

TEST(SearchPredicate, HoldsDayRanges)
{
    quib::tests::FakeClock clock;
    clock.setNow(local(2017, 3, 2, 14, 5));
    const auto days = [](const QString &key, NSDate first, NSDate last) {
        return printed(QString(key % u" >= %@ AND " % key % u" <= %@"), {quib::Value(first), quib::Value(last)});
    };
    const QString modified = u"modificationDate"_s;
    const NSDate begin = local(2017, 3, 2);
    const NSDate end = local(2017, 3, 2, 23, 59, 59);
    EXPECT_EQ(searched(u"@today"_s), days(modified, begin, end));
    EXPECT_EQ(searched(u"@Yesterday"_s), days(modified, local(2017, 3, 1), local(2017, 3, 1, 23, 59, 59)));
    EXPECT_EQ(searched(u"@last7days"_s), days(modified, local(2017, 2, 23), end));
    EXPECT_EQ(searched(u"@last7xdays"_s), days(modified, local(2017, 2, 23), end));
    EXPECT_EQ(searched(u"@last-1days"_s), days(modified, local(2017, 3, 3), end));
    EXPECT_EQ(searched(u"@date(2017-03-02)"_s), days(modified, begin, end));
    EXPECT_EQ(searched(u"@date(3/2/17)"_s), days(modified, begin, end));
    EXPECT_EQ(searched(u"@cdate(2017-03-02)"_s), days(u"creationDate"_s, begin, end));
    EXPECT_EQ(searched(u"-@today"_s), printed(u"(NOT modificationDate >= %@) AND modificationDate <= %@"_s,
                                              {quib::Value(begin), quib::Value(end)}));
    EXPECT_NE(searched(u"@last99999999999999999999days"_s), u"<none>"_s);

    for (const QString &plain :
         {u"@last0days"_s, u"@lastdays"_s, u"@lastxdays"_s, u"@last7"_s, u"@date(nonsense)"_s, u"@date()"_s,
          u"@date(2017-03-02"_s, u"@date(2017-03-02))"_s, u"@date(2017-03-02)x"_s, u"@date("_s, u"@today2"_s}) {
        EXPECT_EQ(searched(plain), printed(u"text CONTAINS[cd] %@"_s, {predicateArgument(plain)}))
            << plain.toStdString();
    }
}

TEST(SearchPredicate, KeepsTheDayAcrossAClockChange)
{
    // The day on which the clocks go forward in Rome is an hour short.
    NSDate begin;
    NSDate end;
    QBNoteSearchManager::endAndBeginOfDayDatesFromDate(local(2017, 3, 26, 12), &begin, &end);
    EXPECT_EQ(begin, local(2017, 3, 26));
    EXPECT_EQ(end, local(2017, 3, 26, 23, 59, 59));
    QBNoteSearchManager::endAndBeginOfDayDatesFromDate(local(2017, 3, 26, 12), nullptr, nullptr);
    QBNoteSearchManager::endAndBeginOfDayDatesFromDate(NSDate::dateWithTimeIntervalSince1970(1e300), &begin, nullptr);
    EXPECT_GT(begin, local(9000, 1, 1));
}

TEST(SearchPredicate, FindsNotes)
{
    quib::tests::FakeClock clock;
    clock.setNow(local(2017, 3, 2, 14, 5));
    PlainNote note;
    note.attributes = {{u"text"_s, u"Caffè \"50%\" it's\\ #Work/Plan"_s},
                       {u"hasImages"_s, false},
                       {u"hasFiles"_s, true},
                       {u"hasSourceCode"_s, false},
                       {u"todoCompleted"_s, qint64{0}},
                       {u"todoIncompleted"_s, qint64{2}},
                       {u"modificationDate"_s, local(2017, 3, 1, 8)},
                       {u"creationDate"_s, local(2017, 2, 1)}};
    note.tagCount = 2;
    const QStringList finding = {u"CAFFE"_s,      u"#work"_s,
                                 u"\"50%\""_s,    u"it's\\"_s,
                                 u"@tagged"_s,    u"@attachments"_s,
                                 u"@files"_s,     u"@todo"_s,
                                 u"@task"_s,      u"-@today"_s,
                                 u"@yesterday"_s, u"@last1days"_s,
                                 u"-tea caff"_s,  u"@cdate(2017-02-01)"_s,
                                 u"tea @task"_s,  u"\"\\\"50%\\\"\""_s.remove(u'\\')};
    for (const QString &line : finding) {
        const NSPredicate::Ref predicate = QBNoteSearchManager::predicateForSearchString(line);
        ASSERT_NE(predicate, nullptr) << line.toStdString();
        EXPECT_TRUE(predicate->evaluateWithObject(note)) << line.toStdString();
    }
    for (const QString &line : {u"tea"_s, u"-caffe"_s, u"@untagged"_s, u"@images"_s, u"@done"_s, u"@code"_s,
                                u"@today"_s, u"-@attachments"_s, u"@date(2017-02-01)"_s, u"caffe tea"_s}) {
        const NSPredicate::Ref predicate = QBNoteSearchManager::predicateForSearchString(line);
        ASSERT_NE(predicate, nullptr) << line.toStdString();
        EXPECT_FALSE(predicate->evaluateWithObject(note)) << line.toStdString();
    }
}

TEST(SearchPredicate, TakesAnyWord)
{
    const quib::tests::TestSeed seed;
    std::mt19937 random = seed.generator();
    const QString alphabet =
        u"ab\"\"''\\\\%@$(){}#&|!=<>nTu0\u0001é\u0301\uFEFF\uFFFC😀"_s + QChar(u'\0') + QChar(0xD800);
    PlainNote note;
    for (int round = 0; round < 5'000; ++round) {
        const QString word = u'a' + quib::tests::randomText(random, alphabet, 8);
        note.attributes = {{u"text"_s, QString(u"before "_s % word % u" behind"_s)}};
        const NSPredicate::Ref found = QBNoteSearchManager::predicateForSearchString(word);
        const NSPredicate::Ref negated = QBNoteSearchManager::predicateForSearchString(u'-' + word);
        ASSERT_TRUE(found != nullptr && negated != nullptr) << word.toStdString();
        ASSERT_TRUE(found->evaluateWithObject(note)) << word.toStdString();
        ASSERT_FALSE(negated->evaluateWithObject(note)) << word.toStdString();
    }
}

TEST(SearchPredicate, TakesManyWords)
{
    PlainNote note;
    note.attributes = {{u"text"_s, u"one two"_s}};
    const NSPredicate::Ref predicate =
        QBNoteSearchManager::predicateForSearchString(u"one -three \"two\" "_s.repeated(20'000));
    ASSERT_NE(predicate, nullptr);
    EXPECT_TRUE(predicate->evaluateWithObject(note));
}

TEST(SpecialSearch, KnowsItsWords)
{
    EXPECT_EQ(QBNoteSearchManager::predicateStringForSpecialSearch(u"@tagged"_s), u"tags.@count != 0"_s);
    EXPECT_EQ(QBNoteSearchManager::predicateStringForSpecialSearch(u"@untagged"_s), u"tags.@count == 0"_s);
    EXPECT_EQ(QBNoteSearchManager::predicateStringForSpecialSearch(u"@attachments"_s),
              u"( hasImages == YES || hasFiles == YES )"_s);
    EXPECT_FALSE(QBNoteSearchManager::predicateStringForSpecialSearch(u"@task"_s).startsWith(u'('));
    for (const QString &word : {u""_s, u"tagged"_s, u"@"_s, u"@TODO"_s, u"@todo "_s}) {
        EXPECT_TRUE(QBNoteSearchManager::predicateStringForSpecialSearch(word).isNull()) << word.toStdString();
    }
}

TEST(SearchHighlight, MarksWhatIsNotNegated)
{
    const std::pair<QString, QString> cases[] = {
        {u""_s, u""_s},
        {u"foo"_s, u"(foo)"_s},
        {u"foo bar"_s, u"(foo)|(bar)"_s},
        {u"a.b"_s, u"(a\\.b)"_s},
        {u"\"a.b c\" d"_s, u"(a.b c)|(d)"_s},
        {u"-foo bar"_s, u"(bar)"_s},
        {u"-\"two words\" x"_s, u"(x)"_s},
        {u"-"_s, u""_s},
        {u"@todo"_s, u"(@todo)"_s},
        {u"\"unclosed other"_s, u"(\"unclosed)|(other)"_s},
    };
    for (const auto &[line, expected] : cases) {
        EXPECT_EQ(QBNoteSearchManager::likeOrPatternForSearchString(line), expected) << line.toStdString();
    }
    const auto expression = QBNoteSearchManager::defaultSearchRegexForSearchString(u"\"a.c\" FOO"_s);
    ASSERT_NE(expression, nullptr);
    EXPECT_EQ(expression->options(), 1U);
    EXPECT_EQ(expression->numberOfMatchesInString(u"abc foo Foo fóo", 0, {0, 15}), 3);
    EXPECT_EQ(QBNoteSearchManager::likeOrRegexForSearchString(u"\"a(\" b"_s), nullptr) << "a phrase is an expression";
    EXPECT_EQ(QBNoteSearchManager::likeOrRegexForSearchString(u"-foo"_s), nullptr);
}

} // namespace

#include <Code/QBCodeLanguageDetector.h>

#include "DefinedResults.h"

#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QHash>

#include <algorithm>

using namespace Qt::StringLiterals;
using quib::tests::definedResults;
using quib::tests::TestSeed;

namespace {

QString languageOf(const QString &code)
{
    return QBCodeLanguageDetector().detectLanguageWithString(code);
}

QList<QStringView> linesOf(const QString &text)
{
    return QStringView(text).split(u'\n');
}

/// The points of one language.
qint64 pointsOf(const QString &language, const QString &text)
{
    const auto results = QBCodeLanguageDetector::resultArrayForLines(linesOf(text));
    const auto record = std::ranges::find(results, language, &QBCodeLanguageResult::language);
    return record == results.end() ? -1000 : record->points;
}

TEST(CodeLanguageDetector, NamesTheLanguageOfASnippet)
{
    const std::pair<QString, QString> snippets[] = {
        {u"javascript"_s, uR"(const shelf = {};
function addBook(title, author) {
  if (shelf[title] === undefined) {
    shelf[title] = { author };
  }
  console.log("added " + title);
}
document.querySelectorAll("li").forEach((item) => item.remove());)"_s},
        {u"c"_s, uR"(#include <stdio.h>
#define LIMIT 10

int main(void)
{
    char *line = malloc(80);
    int count = 0;
    while (count < LIMIT) {
        printf("%d\n", count);
        count++;
    }
    return 0;
})"_s},
        {u"c++"_s, uR"(#include <iostream>
using namespace std;

template <typename T>
class Stack {
public:
    void push(const T &value) { items.push_back(value); }
private:
    std::vector<T> items;
};

int main() {
    cout << "done" << endl;
    return nullptr == 0;
})"_s},
        {u"python"_s, uR"(from collections import deque

class Queue(object):
    def __init__(self, limit):
        self.limit = limit

    def drain(self):
        while self.items:
            yield self.items.popleft()

for name, count in pairs.items():
    if count > 3:
        print(name)
    elif count == 0:
        pass
    else:
        print(count))"_s},
        {u"java"_s, uR"(public class Garden {
    private final String name;
    private List<Plant> plants = new ArrayList<Plant>();

    public Garden(String name) {
        this.name = name;
    }

    public static void main(String[] args) {
        System.out.println(new Garden("roses").getName());
    }
})"_s},
        {u"html"_s, uR"(<!DOCTYPE html>
<html lang="en">
  <head><title>Plants</title></head>
  <body class="wide">
    <p>Water them <a href="/often">often</a>.</p>
  </body>
</html>)"_s},
        {u"css"_s, uR"(body {
  margin: 0;
  color: #333;
  font-family: sans-serif;
}
a:hover {
  text-decoration: underline;
})"_s},
        {u"ruby"_s, uR"(class Cat < Animal::Base
  attr_accessor :name, :age

  def initialize(name)
    @name = name
    @lives = 9
  end

  def alive?
    @lives.zero? ? nil : @lives
  end
end

cats.each do |cat|
  puts "hello"
end)"_s},
        {u"php"_s, uR"(<?php
require_once('config.php');
$users = $db->query("select 1");
foreach ($users as $user) {
    echo 'hello';
    $user->greet();
})"_s},
        {u"objective-c"_s, uR"(#import "Note.h"

@implementation Note
@synthesize title;
- (IBAction)save:(id)sender {
    NSString *text = [NSString stringWithFormat:@"%@", self.title];
    if ([text length] == 0) {
        return NO;
    }
    [[NSNotificationCenter defaultCenter] addObserver:self selector:@selector(changed:)];
}
@end)"_s},
        {u"swift"_s, uR"(import UIKit

class NoteController: UIViewController {
    let label = UILabel()
    var isShown = false

    func show(note: NSString) {
        label.text = note as String
        UIView.animate(withDuration: 0.3) { self.label.alpha = 1 }
    }
})"_s},
        {u"Unknown"_s, u"Buy milk and bread\nThen call the plumber\n"_s},
    };
    for (const auto &[language, snippet] : snippets) {
        EXPECT_EQ(languageOf(snippet), language) << snippet.toStdString();
    }
}

TEST(CodeLanguageDetector, FindsNothingInNothing)
{
    EXPECT_EQ(languageOf(QString()), u"Unknown"_s);
    EXPECT_EQ(languageOf(u""_s), u"Unknown"_s);
    EXPECT_EQ(languageOf(u"\r\n\r\n"_s), u"Unknown"_s);
    EXPECT_EQ(languageOf(QString(1, QChar(u'\0'))), u"Unknown"_s);
    EXPECT_EQ(languageOf(QString(QChar(0xD800)) + QChar(0xFFFC) + QChar(0xFEFF)), u"Unknown"_s);
}

TEST(CodeLanguageDetector, FollowsItsTable)
{
    QStringList order;
    QList<qsizetype> counts;
    for (const QBCodeLanguage &language : QBCodeLanguageDetector::languages()) {
        order.append(language.language);
        counts.append(language.checkers.size());
    }
    EXPECT_EQ(order.join(u' '), u"javascript c c++ python java html css ruby php objective-c Unknown"_s);
    EXPECT_EQ(counts, QList<qsizetype>({14, 17, 19, 14, 18, 3, 8, 14, 13, 18, 0}));

    QStringList results;
    for (const QBCodeLanguageResult &result : QBCodeLanguageDetector::buildResultsArray()) {
        results.append(result.language);
        EXPECT_EQ(result.points, 0);
    }
    EXPECT_EQ(results.join(u' '), u"java javascript c c++ python html css ruby php go objective-c Unknown"_s);
}

TEST(CodeLanguageDetector, AddsPointsToTheRecordOfALanguage)
{
    auto results = QBCodeLanguageDetector::buildResultsArray();
    QBCodeLanguageDetector::updateResultArray(results, u"go"_s, 3);
    QBCodeLanguageDetector::updateResultArray(results, u"go"_s, -5);
    auto expected = QBCodeLanguageDetector::buildResultsArray();
    expected[9].points = -2;
    EXPECT_EQ(results, expected);
    QBCodeLanguageDetector::updateResultArray(results, u"swift"_s, 3);
    EXPECT_EQ(results, expected);
}

TEST(CodeLanguageDetector, CountsALineOnceForEachChecker)
{
    EXPECT_EQ(languageOf(u"console.log (1)"_s), u"javascript"_s);
    EXPECT_EQ(pointsOf(u"javascript"_s, u"console.log (1)"_s), 2);
    EXPECT_EQ(pointsOf(u"javascript"_s, u"console.log(1); console.log(2)"_s), 2);
    EXPECT_EQ(pointsOf(u"javascript"_s, u"console.log(1)\nconsole.log(2)"_s), 4);
}

TEST(CodeLanguageDetector, TakesTheFirstOfEquals)
{
    // Each of these gives one point to the language and one to "Unknown", which is the last of all.
    EXPECT_EQ(languageOf(u"void"_s), u"java"_s);
    EXPECT_EQ(languageOf(u"null"_s), u"java"_s);
    EXPECT_EQ(languageOf(u"a !== b"_s), u"javascript"_s);
    EXPECT_EQ(languageOf(u"puts (1)"_s), u"c"_s);
    EXPECT_EQ(languageOf(u"Map::Entry"_s), u"c++"_s);
    EXPECT_EQ(languageOf(u"YES"_s), u"objective-c"_s);
}

TEST(CodeLanguageDetector, NeverNamesGo)
{
    EXPECT_EQ(pointsOf(u"go"_s, u"package main\nfunc main() {\n\tfmt.Println(1)\n}"_s), 0);
    EXPECT_EQ(languageOf(u"package main"_s), u"Unknown"_s);
}

TEST(CodeLanguageDetector, LetsSomeEvidenceBeAVeto)
{
    EXPECT_EQ(pointsOf(u"javascript"_s, u"<script>"_s), -50);
    EXPECT_EQ(pointsOf(u"javascript"_s, u"<script type='text/javascript'>"_s), -50);
    EXPECT_EQ(pointsOf(u"javascript"_s, u"</script>"_s), -50);
    EXPECT_EQ(pointsOf(u"html"_s, u"<?php"_s), -50);
    EXPECT_EQ(pointsOf(u"php"_s, u"<?php"_s), 2);
    EXPECT_EQ(languageOf(u"<p>a</p>\n<p>b</p>\n<?php"_s), u"php"_s);
}

TEST(CodeLanguageDetector, LooksForSomeEvidenceNearTheTopOnly)
{
    const auto linesNearTop = [](qsizetype count) {
        const QString text = QString(count - 1, u'\n');
        const auto lines = linesOf(text);
        EXPECT_EQ(lines.size(), count);
        QList<qsizetype> near;
        for (qsizetype index = 0; index < count; ++index) {
            if (QBCodeLanguageDetector::isNearTop(index, lines)) {
                near.append(index);
            }
        }
        return near;
    };
    EXPECT_EQ(linesNearTop(1), QList<qsizetype>({0}));
    EXPECT_EQ(linesNearTop(10).size(), 10);
    EXPECT_EQ(linesNearTop(11), QList<qsizetype>({0}));
    EXPECT_EQ(linesNearTop(25), QList<qsizetype>({0, 1}));

    const QString rest = u"x"_s + QString(u"\nx"_s).repeated(18);
    EXPECT_EQ(pointsOf(u"css"_s, u"<style>\n"_s + rest), -50);
    EXPECT_EQ(pointsOf(u"css"_s, u"x\n<style>\n"_s + rest), -50);
    EXPECT_EQ(pointsOf(u"css"_s, u"x\nx\n<style>\n"_s + rest), 0);
}

TEST(CodeLanguageDetector, DoesNotCareHowLinesEnd)
{
    const QString plain = u"x\n<style>\n"_s + QString(u"x\n"_s).repeated(20);
    const QString language = languageOf(u"int a = 1;\nchar b = 2;"_s);
    EXPECT_EQ(language, u"c"_s);
    for (const QString &end : {u"\n"_s, u"\r\n"_s, u"\r"_s, u"\n\n\n"_s, u"\r\n\r\n"_s, u"\r\r\n\n"_s}) {
        EXPECT_EQ(languageOf(u"int a = 1;"_s + end + u"char b = 2;"_s), language) << end.toStdString();
    }
    // The top is counted in lines that are not empty: after the joining, the fifth is in the lower part of eleven.
    const QString spread = QString(u"x\n\n\n\n"_s).repeated(4) + u"a: b;\n<style>\n"_s + QString(u"x\n"_s).repeated(4);
    EXPECT_EQ(languageOf(spread + u"x\n"_s), u"css"_s);
    EXPECT_EQ(languageOf(QString(u"a: b;\n\n\n"_s).repeated(4) + u"<style>"_s), u"Unknown"_s);
}

TEST(CodeLanguageDetector, NeverFindsWhatAsksForALineBreakOrABackspace)
{
    // Of a method of Ruby and of the Objective-C words in a style sheet nothing is noticed.
    EXPECT_EQ(pointsOf(u"ruby"_s, u"def greet(name)\n"_s), 0);
    EXPECT_EQ(pointsOf(u"css"_s, u"YES"_s), 0);
    EXPECT_EQ(pointsOf(u"css"_s, u"\bYES\b"_s), -2);
}

TEST(CodeLanguageDetector, FindsLettersInEitherCase)
{
    EXPECT_EQ(pointsOf(u"c"_s, u"NULL"_s), 1);
    EXPECT_EQ(pointsOf(u"c"_s, u"null"_s), 1);
    EXPECT_EQ(pointsOf(u"css"_s, u"MARGIN: 0;"_s), 2);
    EXPECT_EQ(pointsOf(u"objective-c"_s, u"nsstring"_s), 2);
}

TEST(CodeLanguageDetector, CorrectsJavascriptToSwift)
{
    EXPECT_EQ(languageOf(u"let x = 1"_s), u"javascript"_s);
    // One class name is not enough, two are, and so are two words in one line.
    const QString code = u"let a = undefined\nlet b = undefined\nlet c = undefined\n"_s;
    EXPECT_EQ(languageOf(code + u"NSDate"_s), u"javascript"_s);
    EXPECT_EQ(languageOf(code + u"NSDate\nUIView"_s), u"swift"_s);
    EXPECT_EQ(languageOf(code + u"NSArray of AnyObject"_s), u"swift"_s);
    // Case counts here.
    EXPECT_EQ(languageOf(code + u"nsdate\nuiview\nanyobject"_s), u"javascript"_s);
}

TEST(CodeLanguageDetector, WeighsExactlyThesePatterns)
{
    QString rows;
    for (const QBCodeLanguage &language : QBCodeLanguageDetector::languages()) {
        for (const QBCodeLanguageChecker &checker : language.checkers) {
            rows += language.language % u'\t' % checker.pattern % u'\t' % QString::number(checker.points) % u'\t' %
                    QString::number(checker.neartop ? 1 : 0) % u'\n';
        }
    }
    ASSERT_EQ(rows.count(u'\n'), 138);
    EXPECT_EQ(QCryptographicHash::hash(rows.toUtf8(), QCryptographicHash::Sha1).toHex(),
              "aef69af621a729b7bfc6b4351dee39f208522eed")
        << "a language, a pattern, its points or its place is another one; if that is meant, so is the digest:\n"
        << rows.toStdString();
}

TEST(CodeLanguageDetector, CorrectsObjectiveCToSwift)
{
    const QString code = u"NSDate\nNSString\nUIView\n"_s;
    EXPECT_EQ(languageOf(code), u"objective-c"_s);
    EXPECT_EQ(languageOf(code + u"let x"_s), u"swift"_s);
    EXPECT_EQ(languageOf(code + u"func x()"_s), u"swift"_s);
    EXPECT_EQ(languageOf(code + u"LET x"_s), u"objective-c"_s);
}

/// Pieces of which every pattern of the table is made.
QString randomCode(std::mt19937 &random)
{
    static const QStringList kPieces =
        uR"(undefined console.log ( ) var const let x = ' " : { [ === !== function * $ null => else if while char float
            < / script type= text/javascript > malloc int ; ] #define void printf puts new X . NS UI CG using namespace
            template std:: cout endl public private protected , nullptr class List ArrayList def from import elif for in
            print && || System.out final .get a-z <?php YES Nil IBAction IBOutlet style @ .x? ’ attr_accessor :a do |
            each elsif nil A::B -> require_once .php echo \ @selector @try @synchronized @property @class NO _ 9 é ß ﬁ
            ſ K 漢)"_s.simplified()
            .split(u' ');
    QString code;
    for (auto lines = 1 + random() % 14; lines > 0; --lines) {
        for (auto pieces = random() % 9; pieces > 0; --pieces) {
            code += kPieces[static_cast<qsizetype>(random() % static_cast<unsigned>(kPieces.size()))];
            if (random() % 3 == 0) {
                code += u' ';
            }
        }
        code += u'\n';
    }
    return code;
}

TEST(CodeLanguageDetector, CountsWhatTheExpressionEngineCounts)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    QHash<QString, int> winners;
    for (int round = 0; round < 400; ++round) {
        const QString code = randomCode(random);
        ASSERT_EQ(QBCodeLanguageDetector::resultArrayForLines(linesOf(code)), definedResults(linesOf(code)))
            << code.toStdString();
        ++winners[languageOf(code)];
    }
    EXPECT_GE(winners.size(), 6) << "the random code is too uniform to tell anything";
}

TEST(CodeLanguageDetector, TakesAnyTextInLinearTime)
{
    // Each of these takes a backtracking matcher minutes: one line that is nearly matched from everywhere.
    constexpr qsizetype kLong = 100 * 1024;
    for (const QString &piece : {u"w"_s, u"("_s, u"()"_s, u"' "_s, u"<a "_s, u"\\w"_s, u"a:"_s, u"if "_s, u"[ "_s,
                                 u"<a>\" "_s, u"function(("_s, u" "_s, u"for a, b in "_s, u"漢"_s}) {
        const QString line = piece.repeated(kLong / piece.size());
        EXPECT_FALSE(languageOf(line).isEmpty());
    }
    EXPECT_EQ(languageOf(u"var a=undefined;console.log(a);"_s.repeated(kLong / 30)), u"javascript"_s);
}

} // namespace

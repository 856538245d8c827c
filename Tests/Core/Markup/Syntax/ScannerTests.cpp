// Every exact scanner gives the matches of its pattern, groups and all, on whole texts and on parts of them; and keeps
// doing so in linear time where the pattern alone would not.

#include <Markup/Syntax/StylerSyntax.h>
#include <Markup/Syntax/SyntaxScanner.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace quib::syntax;

namespace {

struct Subject
{
    std::string name;
    const NSRegularExpression *expression;
};

QList<Subject> scanners()
{
    QList<Subject> subjects;
    for (int syntax = 0; syntax < 2; ++syntax) {
        for (int i = 0; i < kConstructCount; ++i) {
            subjects.append({"construct " + std::to_string(i) + " syntax " + std::to_string(syntax),
                             &stylerRegularExpression(static_cast<Construct>(i), syntax)});
        }
        subjects.append({"unchecked " + std::to_string(syntax), &uncheckedRegularExpression(syntax)});
        subjects.append({"checked " + std::to_string(syntax), &checkedRegularExpression(syntax)});
    }
    subjects.append({"section", &sectionRegularExpression()});
    subjects.removeIf(
        [](const Subject &subject) { return dynamic_cast<const SyntaxScanner *>(subject.expression) == nullptr; });
    return subjects;
}

using Matches = QList<NSTextCheckingResult>;

qint64 s_matches = 0;

QString shown(QStringView text)
{
    QString line;
    for (const QChar unit : text) {
        line += unit.unicode() > 0x20 && unit.unicode() < 0x7F ? QString(unit) : u"<%1>"_s.arg(unit.unicode(), 0, 16);
    }
    return line;
}

void expectSame(const Subject &subject, const QString &text, NSRange range)
{
    const auto *scanner = static_cast<const SyntaxScanner *>(subject.expression);
    Matches expected;
    scanner->enumerateByDefinition(
        text, range, [&expected](const NSTextCheckingResult &result, bool *) { expected.append(result); });
    s_matches += expected.size();
    const Matches found = scanner->matchesInString(text, 0, range);
    ASSERT_EQ(found, expected) << subject.name << " in " << range.location << "+" << range.length << " of "
                               << shown(text).toStdString() << "\nfound " << found.size() << ", expected "
                               << expected.size();
    EXPECT_EQ(scanner->numberOfMatchesInString(text, 0, range), expected.size());
}

/// Pieces that make up constructs, halves of them, and what stands between.
const QStringList &pieces()
{
    static const QStringList all{
        u"*"_s,
        u"**"_s,
        u"_"_s,
        u"__"_s,
        u"-"_s,
        u"--"_s,
        u"---"_s,
        u"~"_s,
        u"~~"_s,
        u"::"_s,
        u":"_s,
        u"`"_s,
        u"``"_s,
        u"```"_s,
        u"\n```"_s,
        u"[["_s,
        u"]]"_s,
        u"["_s,
        u"]"_s,
        u"]("_s,
        u"("_s,
        u")"_s,
        u"!["_s,
        u"](quib"_s,
        u"quib"_s,
        u"[file:"_s,
        u"[image:"_s,
        u"/"_s,
        u"a"_s,
        u"ab"_s,
        u" "_s,
        u"  "_s,
        u"\t"_s,
        u"\n"_s,
        u"\n"_s,
        u"\r"_s,
        u"\r\n"_s,
        u"\u0085"_s,
        u"\u2028"_s,
        u"\v"_s,
        u"\f"_s,
        u"\u00A0"_s,
        u"\u3000"_s,
        u"\u200B"_s,
        u"\uFFFC"_s,
        u"😀"_s,
        QString(QChar(0xD83D)),
        QString(QChar(0xDE00)),
        u"#"_s,
        u"##"_s,
        u"# "_s,
        u"#aabbcc"_s,
        u"#12ab"_s,
        u"+ "_s,
        u"- "_s,
        u"- [ ] "_s,
        u"- [x] "_s,
        u"• "_s,
        u"* "_s,
        u"> "_s,
        u"1. "_s,
        u"٣."_s,
        u"𝟙."_s,
        u"\U00011F51."_s, // of a script that few libraries know
        u"->"_s,
        u"<-"_s,
        u"<"_s,
        u">"_s,
        u"\u180E"_s,
        u"\u2003"_s,
        u"\uFEFF"_s,
        u"."_s,
        u","_s,
        u"'"_s,
        u"\""_s,
        u"{"_s,
        u"}"_s,
        QString(QChar(0)),
        u"é"_s,
    };
    return all;
}

} // namespace

TEST(SyntaxScanners, GiveTheMatchesOfTheirPatterns)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    const auto random = [&generator](qsizetype bound) {
        return static_cast<qsizetype>(generator() % static_cast<unsigned>(bound));
    };
    const auto subjects = scanners();
    ASSERT_GT(subjects.size(), 20);
    s_matches = 0;
    for (int round = 0; round < 30000 && !testing::Test::HasFailure(); ++round) {
        // Few kinds of pieces in one text, so that they meet often.
        QStringList chosen;
        for (qsizetype i = 2 + random(6); i > 0; --i) {
            chosen.append(pieces()[random(pieces().size())]);
        }
        QString text;
        for (qsizetype i = random(24); i >= 0; --i) {
            text += chosen[random(chosen.size())];
        }
        const NSRange whole{0, text.size()};
        const qsizetype start = random(text.size() + 1);
        const NSRange part{start, random(text.size() - start + 1)};
        for (const Subject &subject : subjects) {
            expectSame(subject, text, whole);
            expectSame(subject, text, part);
            if (testing::Test::HasFailure()) {
                break;
            }
        }
    }
    // The texts must be worth the while.
    EXPECT_GT(s_matches, 20000);
}

TEST(SyntaxScanners, TakeLongLinesOfOpenersInStride)
{
    // Each of these would take a pattern minutes: an opener whose close is looked for to the end of the line or the
    // text, from every place where it stands.
    constexpr int kUnits = 1'000'000;
    const QStringList openers{
        u"*a "_s,       u"**a "_s,        u"__ a"_s,     u" _a"_s,        u" -a"_s,         u"~a "_s,    u"~~a "_s,
        u"::a "_s,      u"`\n"_s,         u"```\n"_s,    u"[[a "_s,       u"[a"_s,          u"[a]("_s,   u"![a]("_s,
        u"[a](quib "_s, u"[a](quibx)"_s,  u"[file:a "_s, u"[file:a/b "_s, u"[image:a/b]"_s, u"["_s,      u"("_s,
        u"*"_s,         u"_"_s,           u"-"_s,        u"~"_s,          u":"_s,           u"`"_s,      u"#"_s,
        u"# "_s,        u"- "_s,          u" "_s,        u"->"_s,         u"<-<"_s,         u"\u00A0"_s, u"\n"_s,
        u"[file:a\n"_s, u"[a](quiba\n"_s, u"*a\n"_s,     u"1"_s};
    const auto subjects = scanners();
    for (const QString &opener : openers) {
        const QString text = opener.repeated(kUnits / opener.size());
        for (const Subject &subject : subjects) {
            EXPECT_GE(subject.expression->numberOfMatchesInString(text, 0, {0, text.size()}), 0) << subject.name;
        }
    }
}

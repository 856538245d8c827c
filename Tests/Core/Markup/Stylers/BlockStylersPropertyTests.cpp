// Laws of the stylers of blocks, on texts made of the pieces that blocks are made of.

#include "StyledBlocks.h"

#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Support/TestSeed.h>
#include <Text/NSStringHelpers.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using quib::tests::StyledBlocks;
using quib::tests::TestSeed;

namespace {

/// Numbers are of one width: the first that a styler measures decides for all of its indentation. For the same reason
/// no line stands inside of a paragraph.
const QStringList &pieces()
{
    static const QStringList pieces{
        u"# "_s,     u"## "_s,    u"#"_s,          u"* "_s,          u"• "_s,  u"- "_s,   u"+ "_s,
        u"- [ ] "_s, u"- [x] "_s, u"[ ] "_s,       u"> "_s,          u"1. "_s, u"---"_s,  u"***"_s,
        u" "_s,      u"\t"_s,     u"\n"_s,         u"\n"_s,          u"\n"_s,  u"\r\n"_s, u"\u2028"_s,
        u"ab"_s,     u"x"_s,      u"[file:a/b]"_s, u"[image:c/d]"_s, u"-"_s,
    };
    return pieces;
}

const QStringList &oddPieces()
{
    static const QStringList pieces{
        u"```"_s,
        u"\n```"_s,
        u"```\n"_s,
        u"c"_s,
        QString(QChar(0xFFFC)),
        QString(QChar(0xD800)),
        QString(QChar(0)),
        QString(QChar(0xFEFF)),
        u"\v"_s,
    };
    return pieces;
}

class Pieces
{
public:
    explicit Pieces(const TestSeed &seed, QStringList pieces)
        : m_generator(seed.generator())
        , m_pieces(std::move(pieces))
    {
    }
    /// 0 to most - 1.
    qint64 number(qint64 most)
    {
        return std::uniform_int_distribution<qint64>(0, std::max<qint64>(most - 1, 0))(m_generator);
    }
    QString text(qint64 most)
    {
        QString text;
        for (qint64 count = number(most); count > 0; --count) {
            text.append(m_pieces.at(number(m_pieces.size())));
        }
        return text;
    }

private:
    std::mt19937 m_generator;
    QStringList m_pieces;
};

QString freshDescription(const QString &text, int syntax)
{
    StyledBlocks fresh(syntax);
    fresh.load(text);
    return fresh.description();
}

} // namespace

TEST(BlockStylersProperty, GiveBackTheTextTheyWereGiven)
{
    const TestSeed seed;
    Pieces pieces(seed, ::pieces() + oddPieces());
    for (int round = 0; round < 400; ++round) {
        const QString text = pieces.text(40);
        SCOPED_TRACE(qPrintable(text));
        for (const int syntax : {0, 1}) {
            for (const auto theme : {StyledBlocks::Theme::None, StyledBlocks::Theme::Plain}) {
                StyledBlocks blocks(syntax, theme);
                blocks.load(text);
                ASSERT_EQ(blocks.expanded(), text);
                blocks.restyle();
                ASSERT_EQ(blocks.expanded(), text);
            }
        }
    }
}

TEST(BlockStylersProperty, StyleAnEditedLineAsANewOne)
{
    const TestSeed seed;
    Pieces pieces(seed, ::pieces());
    for (int round = 0; round < 150; ++round) {
        const int syntax = round % 2;
        StyledBlocks blocks(syntax);
        blocks.load(pieces.text(20));
        for (int step = 0; step < 12; ++step) {
            const QString before = blocks.shown();
            const qint64 location = pieces.number(blocks.text().length() + 1);
            const NSRange range{location, pieces.number(std::min<qint64>(blocks.text().length() - location, 4) + 1)};
            const QString string = pieces.text(3);
            blocks.edit(range, string);
            if (blocks.expanded().contains(u"11"_s)) {
                break; // a wider number than the others
            }
            ASSERT_EQ(blocks.description(), freshDescription(blocks.expanded(), syntax))
                << qPrintable(before) << "\nat " << range.location << "+" << range.length << ": " << qPrintable(string);
        }
    }
}

TEST(BlockStylersProperty, StyleAnEditedTextOfCodeBlocksAsANewOne)
{
    const TestSeed seed;
    Pieces pieces(seed, ::pieces() + oddPieces().first(4) + oddPieces().first(4));
    for (int round = 0; round < 150; ++round) {
        const int syntax = round % 2;
        StyledBlocks blocks(syntax);
        blocks.load(pieces.text(30));
        for (int step = 0; step < 8; ++step) {
            const QString before = blocks.shown();
            const qint64 location = pieces.number(blocks.text().length() + 1);
            const NSRange range{location, pieces.number(std::min<qint64>(blocks.text().length() - location, 4) + 1)};
            const QString string = pieces.text(3);
            blocks.text().replaceCharactersInRange(range, NSAttributedString(string));
            blocks.restyle();
            if (blocks.expanded().contains(u"11"_s)) {
                break;
            }
            ASSERT_EQ(blocks.description(), freshDescription(blocks.expanded(), syntax))
                << qPrintable(before) << "\nat " << range.location << "+" << range.length << ": " << qPrintable(string);
        }
    }
}

TEST(BlockStylersProperty, LeaveTheOtherLinesAlone)
{
    const TestSeed seed;
    Pieces pieces(seed, ::pieces());
    for (int round = 0; round < 100; ++round) {
        StyledBlocks blocks(round % 2);
        blocks.load(pieces.text(30));
        const NSRange line = blocks.text().paragraphRangeForRange({pieces.number(blocks.text().length() + 1), 0});
        const NSAttributedString before = blocks.text().attributedSubstringFromRange({0, line.location});
        const qint64 behind = blocks.text().length() - line.limit();
        const NSAttributedString after = blocks.text().attributedSubstringFromRange({line.limit(), behind});
        blocks.restyle(line);
        ASSERT_EQ(blocks.text().attributedSubstringFromRange({0, line.location}), before);
        ASSERT_EQ(blocks.text().attributedSubstringFromRange({blocks.text().length() - behind, behind}), after);
    }
}

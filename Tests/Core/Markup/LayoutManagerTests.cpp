// Where a note's text lies on its page, laid out piece by piece and kept up while the text is edited.

#include "StyledNote.h"

#include <Markup/ParagraphIndex.h>
#include <Markup/QBNotesLayoutManager.h>
#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>
#include <Text/NSStringHelpers.h>

using namespace Qt::StringLiterals;
using quib::ParagraphIndex;
using quib::PlacedParagraph;
using quib::tests::randomMarkup;
using quib::tests::StyledNote;
using quib::tests::TestSeed;

namespace {

constexpr double kPageWidth = 640;

std::unique_ptr<QBNotesLayoutManager> newLayoutManager(StyledNote &note)
{
    auto manager = std::make_unique<QBNotesLayoutManager>(note.storage(), note.stack().themeManager());
    manager->setPageWidth(kPageWidth);
    return manager;
}

/// What lies where on the whole page, in words.
QStringList linesOfPage(QBNotesLayoutManager &manager, const QBNotesTextStorage &storage)
{
    QStringList lines;
    for (const PlacedParagraph &paragraph : manager.paragraphsInHeights(0, 1e9)) {
        for (const auto &line : paragraph.layout->lines()) {
            const NSRange range = {line.range.location + paragraph.shift, line.range.length};
            lines.append(u"%1 %2 %3"_s.arg(range.location)
                             .arg(qRound(paragraph.origin.y() + line.baseline))
                             .arg(storage.string().mid(range.location, range.length)));
        }
    }
    return lines;
}

} // namespace

TEST(ParagraphIndexTest, FindsWhatAPlainListFinds)
{
    auto random = TestSeed().generator();
    ParagraphIndex index;
    QList<std::pair<qint64, double>> model;
    for (int round = 0; round < 400; ++round) {
        const size_t first = random() % (size_t(model.size()) + 1);
        const size_t count = std::min<size_t>(random() % 30, size_t(model.size()) - first);
        const size_t added =
            std::max<size_t>(model.isEmpty() ? 1 : 0, round % 40 == 0 ? random() % 1500 : random() % 30);
        if (size_t(model.size()) - count + added == 0) {
            continue;
        }
        std::vector<ParagraphIndex::Piece> pieces;
        model.remove(qsizetype(first), qsizetype(count));
        for (size_t i = 0; i < added; ++i) {
            ParagraphIndex::Piece piece;
            piece.length = qint64(1 + random() % 50);
            piece.height = 1 + double(random() % 40);
            model.insert(qsizetype(first + i), {piece.length, piece.height});
            pieces.push_back(std::move(piece));
        }
        index.replace(first, count, std::move(pieces));
        ASSERT_EQ(index.count(), size_t(model.size()));

        const size_t asked = random() % index.count();
        qint64 location = 0;
        double top = 0;
        for (size_t i = 0; i < asked; ++i) {
            location += model[qsizetype(i)].first;
            top += model[qsizetype(i)].second;
        }
        for (const auto &place :
             {index.placeAtIndex(asked), index.placeOfLocation(location),
              index.placeOfLocation(location + model[qsizetype(asked)].first - 1), index.placeAtHeight(top + 0.5)}) {
            EXPECT_EQ(place.index, asked);
            EXPECT_EQ(place.location, location);
            EXPECT_NEAR(place.top, top, 1e-6);
            EXPECT_EQ(place.piece->length, model[qsizetype(asked)].first);
        }
    }
    EXPECT_EQ(index.placeAtHeight(-5).index, 0U);
    EXPECT_EQ(index.placeAtHeight(1e12).index, index.count() - 1);
    EXPECT_EQ(index.placeOfLocation(index.length()).index, index.count() - 1);
}

TEST(LayoutManager, AfterEditsEverythingLiesAsInAFreshLayout)
{
    auto random = TestSeed().generator();
    for (int round = 0; round < 12; ++round) {
        StyledNote note(round % 2, randomMarkup(random, 60));
        const auto manager = newLayoutManager(note);
        for (int edit = 0; edit < 12; ++edit) {
            (void)manager->paragraphsInHeights(double(random() % 500), double(random() % 1000));
            const qint64 length = note.storage().length();
            const qint64 location = qint64(random() % quint64(length + 1));
            const qint64 removed = std::min<qint64>(qint64(random() % 20), length - location);
            const QString inserted = random() % 3 == 0 ? u"\n"_s : random() % 4 == 0 ? randomMarkup(random, 4) : u"x"_s;
            (void)note.replace({location, removed}, inserted);
        }
        const auto fresh = newLayoutManager(note);
        EXPECT_EQ(linesOfPage(*manager, note.storage()), linesOfPage(*fresh, note.storage()))
            << note.buffer().toStdString();
        EXPECT_NEAR(manager->height(), fresh->height(), 0.01);
    }
}

TEST(LayoutManager, ALineEndMadeOfTwoUnitsIsOneWhenItComesTogether)
{
    StyledNote note(0, u"one\rtwo\n"_s);
    const auto manager = newLayoutManager(note);
    note.storage().replaceCharactersInRange({4, 0}, u"\n");
    const auto fresh = newLayoutManager(note);
    EXPECT_EQ(linesOfPage(*manager, note.storage()), linesOfPage(*fresh, note.storage()));
    EXPECT_EQ(manager->paragraphsInHeights(0, 1e9).size(), 3U);
}

TEST(LayoutManager, VeryLongParagraphsAreLaidOutInPieces)
{
    QString text;
    while (text.size() < 3 * QBNoteTypesetter::kLongestPiece) {
        text += u"word"_s % (text.size() % 7 == 0 ? u" "_s : u"\U0001F600"_s);
    }
    StyledNote note(0, text);
    const auto manager = newLayoutManager(note);
    const auto paragraphs = manager->paragraphsInHeights(0, 1e9);
    ASSERT_GT(paragraphs.size(), 3U);
    qint64 location = 0;
    for (size_t i = 0; i < paragraphs.size(); ++i) {
        EXPECT_EQ(paragraphs[i].range.location, location);
        EXPECT_LE(paragraphs[i].range.length, QBNoteTypesetter::kLongestPiece);
        location = paragraphs[i].range.limit();
        if (location < text.size()) {
            EXPECT_FALSE(text[location].isLowSurrogate());
            EXPECT_NEAR(paragraphs[i].bottom(), paragraphs[i + 1].origin.y(), 0.01);
        }
    }
    EXPECT_EQ(location, text.size());
    // The caret passes from piece to piece, never standing still and never within a character.
    qint64 place = QBNoteTypesetter::kLongestPiece - 700;
    for (int step = 0; step < 800; ++step) {
        const qint64 next = manager->locationAfter(place);
        ASSERT_GT(next, place);
        ASSERT_EQ(manager->locationBefore(next), place);
        place = next;
    }
}

TEST(LayoutManager, TheCaretGoesUpAndDownAndIsFoundWhereItStands)
{
    StyledNote note(0, u"# Head\nA long paragraph that must be wrapped into a number of lines to be of any use here, "
                       u"since nothing shorter would do it at this width.\n\n- item\nlast"_s);
    const auto manager = newLayoutManager(note);
    bool upstream = false;
    qint64 location = 0;
    const double x = manager->caretRect(0).left() + 60;
    QList<double> tops = {manager->caretRect(0).top()};
    for (int i = 0; i < 30; ++i) {
        const qint64 next = manager->locationBelow(location, &upstream, x);
        if (next == note.storage().length()) {
            break;
        }
        location = next;
        EXPECT_GT(manager->caretRect(location, upstream).top(), tops.back());
        tops.append(manager->caretRect(location, upstream).top());
    }
    EXPECT_GE(tops.size(), 5);
    for (qsizetype i = tops.size() - 2; i >= 0; --i) {
        location = manager->locationAbove(location, &upstream, x);
        EXPECT_NEAR(manager->caretRect(location, upstream).top(), tops[i], 0.01);
    }
    EXPECT_EQ(manager->locationAbove(location, &upstream, x), 0);
    for (location = 0; location <= note.storage().length(); location = manager->locationAfter(location)) {
        EXPECT_EQ(manager->locationAtPoint(manager->caretRect(location).center()), location);
        if (location == note.storage().length()) {
            break;
        }
    }
    EXPECT_EQ(manager->locationAtPoint({0, -50}), 0);
    EXPECT_EQ(manager->locationAtPoint({1e5, 1e6}), note.storage().length());
}

TEST(LayoutManager, LooksAtNoMoreThanItIsAskedFor)
{
    QString text;
    for (int i = 0; i < 20'000; ++i) {
        text += u"A paragraph of a rather long note, number %1.\n"_s.arg(i);
    }
    StyledNote note(0, text);
    const auto manager = newLayoutManager(note);
    const double height = manager->height();
    EXPECT_LT(manager->paragraphsInHeights(height - 800, height).size(), 60U);
    // What was estimated may be off by a little, so that the end is where the page ends.
    const auto last = manager->paragraphOfLocation(note.storage().length());
    EXPECT_EQ(last.range.limit(), note.storage().length());
    EXPECT_NEAR(last.bottom(), manager->height(), 200);
}

TEST(LayoutManager, TheEmptyLastLineIsWhereItsTextWillBe)
{
    StyledNote note(0, u"text\n"_s);
    const auto manager = newLayoutManager(note);
    const QRectF empty = manager->caretRect(5);
    note.replace({5, 0}, u"x"_s);
    const QRectF written = manager->caretRect(5);
    EXPECT_EQ(empty, written);
    StyledNote nothing(0, {});
    const auto alone = newLayoutManager(nothing);
    EXPECT_EQ(alone->caretRect(0).left(), manager->caretRect(0).left());
    EXPECT_EQ(alone->caretRect(0).height(), manager->caretRect(0).height());
}

TEST(LayoutManager, ParagraphsWithoutLettersGoAsThoseAroundThem)
{
    struct Case
    {
        const char *name;
        QString text;     // "<" marks paragraphs that go to the left, and is no part of it
        bool isByDefault; // from right to left
    };
    const Case cases[] = {
        {"an empty note", u""_s, false},
        {"an empty note of a keyboard to the left", u"<"_s, true},
        {"a heading's marker", u"<# "_s, true},
        {"behind text to the left", u"<\u05D0\u05D1\n<\n<12\n<- \nabc\n\n<\u05D2\n<"_s, false},
        {"behind text to the right", u"abc\n\n- \n<\u05D0"_s, true},
        {"in front of the only text", u"<\n<12\n<\u05D0\u05D1"_s, false},
        {"what is isolated does not count", u"<\u05D0\n<\u2066abc\u2069 1"_s, false},
        {"a letter of two units", u"<\U00010800\n<"_s, false},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        StyledNote note(0, QString(testCase.text).remove(u'<'));
        const auto manager = newLayoutManager(note);
        manager->setRightToLeftByDefault(testCase.isByDefault);
        QStringList shown;
        for (const PlacedParagraph &paragraph : manager->paragraphsInHeights(0, 1e9)) {
            QString line = note.storage().stringWithExpandedTextAttachmentsWithRange(paragraph.range);
            line.remove(u'\n');
            shown.append((paragraph.layout->isRightToLeft() ? u"<"_s : u""_s) % line);
            const double caret = paragraph.caretRect(paragraph.range.location, /*upstream=*/false).left();
            EXPECT_EQ(caret > kPageWidth / 2, paragraph.layout->isRightToLeft()) << line.toStdString();
        }
        EXPECT_EQ(shown.join(u'\n'), testCase.text);
    }
}

TEST(LayoutManager, DirectionsFollowEditsBesideThem)
{
    auto random = TestSeed().generator();
    const QStringList pieces = {u"\n"_s, u"\n"_s, u" "_s, u"1"_s, u"- "_s, u"a"_s, u"\u05D0"_s, u"\u0628"_s};
    for (const bool isByDefault : {false, true}) {
        StyledNote note(0, u""_s);
        const auto manager = newLayoutManager(note);
        manager->setRightToLeftByDefault(isByDefault);
        for (int round = 0; round < 500; ++round) {
            const qint64 length = note.storage().length();
            const auto start = qint64(random() % size_t(length + 1));
            const auto removed = qint64(random() % size_t(std::min<qint64>(4, length - start) + 1));
            note.storage().replaceCharactersInRange({start, removed},
                                                    pieces[qsizetype(random() % size_t(pieces.size()))]);
            const auto fresh = newLayoutManager(note);
            fresh->setRightToLeftByDefault(isByDefault);
            const auto kept = manager->paragraphsInHeights(0, 1e9);
            const auto anew = fresh->paragraphsInHeights(0, 1e9);
            ASSERT_EQ(kept.size(), anew.size());
            for (size_t i = 0; i < kept.size(); ++i) {
                ASSERT_EQ(kept[i].layout->isRightToLeft(), anew[i].layout->isRightToLeft())
                    << "round " << round << ", paragraph " << i << " of\n"
                    << note.storage().string().toString().toStdString();
            }
        }
    }
}

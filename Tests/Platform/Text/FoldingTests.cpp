#include <Text/Folding.h>

#include <Platform/Text/RandomText.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QStringList>

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

using namespace Qt::StringLiterals;
using namespace quib;
using quib::tests::randomText;
using quib::tests::TestSeed;

namespace {

QString fromCodePoint(char32_t codePoint)
{
    // Not QString::fromUcs4: it takes a first U+FEFF for a byte order mark and drops it.
    if (codePoint < 0x10000) {
        return QString(QChar(static_cast<char16_t>(codePoint)));
    }
    return QString(QChar(QChar::highSurrogate(codePoint))) + QChar(QChar::lowSurrogate(codePoint));
}

/// Code points, a lone surrogate as itself.
std::u32string codePoints(QStringView text)
{
    std::u32string result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            result.push_back(QChar::surrogateToUcs4(text[i], text[i + 1]));
            ++i;
        } else {
            result.push_back(text[i].unicode());
        }
    }
    return result;
}

/// The rule as it reads, with ICU called for each step of each code point.
QString slowFold(QStringView text, FoldOption option)
{
    const auto flags = static_cast<int>(option);
    const bool ignoresCase = (flags & static_cast<int>(FoldOption::Case)) != 0;
    const bool ignoresDiacritics = (flags & static_cast<int>(FoldOption::Diacritic)) != 0;
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2 *normalizer = unorm2_getNFDInstance(&status);
    QString out;
    char32_t base = 0xFFFFFFFF;
    for (const char32_t codePoint : codePoints(text)) {
        QString parts = fromCodePoint(codePoint);
        UChar buffer[64];
        if (ignoresDiacritics) {
            const int32_t length =
                unorm2_getDecomposition(normalizer, static_cast<UChar32>(codePoint), buffer, 64, &status);
            if (length >= 0) {
                parts = QStringView(buffer, length).toString();
            }
        }
        if (ignoresCase) {
            const QString unfolded = parts;
            const int32_t length = u_strFoldCase(buffer, 64, reinterpret_cast<const UChar *>(unfolded.utf16()),
                                                 static_cast<int32_t>(unfolded.size()), U_FOLD_CASE_DEFAULT, &status);
            parts = QStringView(buffer, length).toString();
        }
        for (const char32_t part : codePoints(parts)) {
            const int8_t category = u_charType(static_cast<UChar32>(part));
            const bool isMark =
                category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK || category == U_COMBINING_SPACING_MARK;
            if (ignoresDiacritics && isMark && base < 0x510) {
                continue;
            }
            out.append(fromCodePoint(part));
            base = isMark ? base : part;
        }
    }
    return out;
}

constexpr FoldOption kEveryOption[] = {FoldOption::Exact, FoldOption::Case, FoldOption::Diacritic,
                                       FoldOption::CaseAndDiacritic};

/// Units that meet each other in interesting ways: cases, marks, bases on both sides of the limit, halves of pairs.
const QString &foldingAlphabet()
{
    static const QString s_alphabet = u"aAzZ @[`{é\u0130ßſ\u01F0\u1E9E\u0300\u0301\u0323\u0344\u0345αΆς\u0390ἂᾳжЙё"_s
                                      u"\u0510א\u05B0क\u093E\u093Cガか\u3099한ㄱ\u1100漢\uF900\uFB01\uFFFC\uFEFF"_s +
                                      QChar(0) + QChar(0xD83D) + QChar(0xDE00) + QChar(0xD804) + QChar(0xDC99) +
                                      QChar(0xDCBA) + QChar(0xD801) + QChar(0xDC00);
    return s_alphabet;
}

TEST(Folding, FollowsTheExamples)
{
    struct Case
    {
        QString text;
        QString ignoringCase;
        QString ignoringDiacritics;
        QString ignoringBoth;
    };
    const Case cases[] = {
        {u"Caffè"_s, u"caffè"_s, u"Caffe"_s, u"caffe"_s},
        {u"Cafe\u0300"_s, u"cafe\u0300"_s, u"Cafe"_s, u"cafe"_s},
        {u"STRASSE straße"_s, u"strasse strasse"_s, u"STRASSE straße"_s, u"strasse strasse"_s},
        {u"\u0130I"_s, u"i\u0307i"_s, u"II"_s, u"ii"_s},
        {u"Ÿ Å Ø Đ"_s, u"ÿ å ø đ"_s, u"Y A Ø Đ"_s, u"y a ø đ"_s},
        {u"Σίσυφος"_s, u"σίσυφοσ"_s, u"Σισυφος"_s, u"σισυφοσ"_s},
        {u"Ёлка Й"_s, u"ёлка й"_s, u"Елка И"_s, u"елка и"_s},
        {u"ガ"_s, u"ガ"_s, u"カ\u3099"_s, u"カ\u3099"_s},
        {u"שׁ"_s, u"שׁ"_s, u"שׁ"_s, u"שׁ"_s},
        {u"한"_s, u"한"_s, u"\u1112\u1161\u11AB"_s, u"\u1112\u1161\u11AB"_s},
        {u"\u0301a\u0301"_s, u"\u0301a\u0301"_s, u"\u0301a"_s, u"\u0301a"_s},
        {u"ﬁ"_s, u"fi"_s, u"ﬁ"_s, u"fi"_s},
    };
    for (const Case &test : cases) {
        EXPECT_EQ(foldedString(test.text, FoldOption::Exact), test.text);
        EXPECT_EQ(foldedString(test.text, FoldOption::Case), test.ignoringCase) << test.text.toStdString();
        EXPECT_EQ(foldedString(test.text, FoldOption::Diacritic), test.ignoringDiacritics) << test.text.toStdString();
        EXPECT_EQ(foldedString(test.text, FoldOption::CaseAndDiacritic), test.ignoringBoth) << test.text.toStdString();
    }
}

TEST(Folding, EqualsTheRuleForEveryCodePoint)
{
    for (char32_t codePoint = 0; codePoint < 0x110000; ++codePoint) {
        const QString text = fromCodePoint(codePoint);
        for (const FoldOption option : kEveryOption) {
            const QString folded = foldedString(text, option);
            ASSERT_EQ(folded, slowFold(text, option)) << std::hex << static_cast<unsigned>(codePoint);
            ASSERT_EQ(foldedString(folded, option), folded) << std::hex << static_cast<unsigned>(codePoint);
        }
        // Behind a base that gives its marks up, and behind one that keeps them.
        for (const QString &before : {u"a"_s, u"あ"_s}) {
            const QString joined = before + text;
            ASSERT_EQ(foldedString(joined, FoldOption::CaseAndDiacritic),
                      slowFold(joined, FoldOption::CaseAndDiacritic))
                << std::hex << static_cast<unsigned>(codePoint);
        }
    }
}

TEST(Folding, EqualsTheRuleForRandomTexts)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    for (int round = 0; round < 20'000; ++round) {
        const QString text = randomText(random, foldingAlphabet(), 40);
        for (const FoldOption option : kEveryOption) {
            ASSERT_EQ(foldedString(text, option), slowFold(text, option)) << text.toStdString();
        }
        ASSERT_EQ(foldedUtf8(text), toUtf8Lossless(foldedString(text, FoldOption::CaseAndDiacritic)));
    }
}

TEST(Folding, OfJoinedTextsIsTheJoinedFolds)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    for (int round = 0; round < 20'000; ++round) {
        const QString first = randomText(random, foldingAlphabet(), 20);
        const QString second = randomText(random, foldingAlphabet(), 20);
        const std::u32string secondPoints = codePoints(second);
        const bool beginsWithMark =
            !secondPoints.empty() && (U_GET_GC_MASK(static_cast<UChar32>(secondPoints.front())) & U_GC_M_MASK) != 0;
        const bool joinsPair =
            first.endsWith(QChar(0xD83D)) || first.endsWith(QChar(0xD804)) || first.endsWith(QChar(0xD801));
        if (beginsWithMark || joinsPair) {
            continue;
        }
        const QString joined = first + second;
        for (const FoldOption option : kEveryOption) {
            const QString joinedFolds = foldedString(first, option) + foldedString(second, option);
            ASSERT_EQ(foldedString(joined, option), joinedFolds)
                << first.toStdString() << " then " << second.toStdString();
        }
    }
}

TEST(Folding, IsTheSameInLongTexts)
{
    // Longer than any buffer, with runs of all lengths between the switches from ASCII to other scripts.
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    QString text;
    while (text.size() < 100'000) {
        text += QString(static_cast<qsizetype>(random() % 70), u'Q') + randomText(random, foldingAlphabet(), 5);
        text += QString(static_cast<qsizetype>(random() % 3000 == 0 ? 9000 : 0), u'\uAC01');
    }
    const QString expected = slowFold(text, FoldOption::CaseAndDiacritic);
    EXPECT_TRUE(foldedString(text, FoldOption::CaseAndDiacritic) == expected);
    EXPECT_TRUE(foldedString(text, FoldOption::Case) == slowFold(text, FoldOption::Case));
    QByteArray out = "before";
    appendFoldedUtf8(out, text);
    EXPECT_TRUE(out == QByteArray("before").append(toUtf8Lossless(expected)));
}

TEST(Utf8Lossless, ReturnsEveryText)
{
    const QString kept = u"\uFEFFa"_s + QChar(0) + QChar(0xD800) + u'x' + QChar(0xDC00) + u'\uFFFC';
    EXPECT_EQ(toUtf8Lossless(kept), QByteArray("\xEF\xBB\xBF"
                                               "a\0\xED\xA0\x80x\xED\xB0\x80\xEF\xBF\xBC",
                                               15));
    EXPECT_EQ(toUtf8Lossless(u"é😀"), QByteArray("\xC3\xA9\xF0\x9F\x98\x80"));
    EXPECT_TRUE(toUtf8Lossless(u"").isEmpty());
    EXPECT_TRUE(fromUtf8Lossless(nullptr, 0).isEmpty());

    const TestSeed seed;
    std::mt19937 random = seed.generator();
    for (int round = 0; round < 20'000; ++round) {
        QString text = randomText(random, foldingAlphabet(), 60);
        for (size_t i = random() % 20; i > 0; --i) {
            text.append(QChar(static_cast<char16_t>(random())));
        }
        const QByteArray bytes = toUtf8Lossless(text);
        ASSERT_EQ(fromUtf8Lossless(bytes.constData(), bytes.size()), text);
        if (text.isValidUtf16()) {
            ASSERT_EQ(bytes, text.toUtf8());
        }
    }
}

TEST(Utf8Lossless, ReplacesEachBadByte)
{
    const std::pair<QByteArray, QString> cases[] = {
        {"a\x80z", u"a\uFFFDz"_s},
        {"\xC0\xAF", u"\uFFFD\uFFFD"_s},
        {"\xE0\x80\x80", u"\uFFFD\uFFFD\uFFFD"_s},
        {"\xC3", u"\uFFFD"_s},
        {"\xE2\x82", u"\uFFFD\uFFFD"_s},
        {"\xE2\x82x", u"\uFFFD\uFFFDx"_s},
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"_s},
        {"\xFF\xC3\xA9", u"\uFFFDé"_s},
    };
    for (const auto &[bytes, expected] : cases) {
        EXPECT_EQ(fromUtf8Lossless(bytes.constData(), bytes.size()), expected) << bytes.toHex().toStdString();
    }
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    for (int round = 0; round < 20'000; ++round) {
        QByteArray bytes;
        for (size_t i = random() % 30; i > 0; --i) {
            bytes.append(static_cast<char>(random() % 3 == 0 ? 'a' : random()));
        }
        const QString text = fromUtf8Lossless(bytes.constData(), bytes.size());
        ASSERT_LE(text.size(), bytes.size());
        if (!text.contains(u'\uFFFD') && text.isValidUtf16() && !bytes.contains("\xED")) {
            ASSERT_EQ(toUtf8Lossless(text), bytes) << bytes.toHex().toStdString();
        }
    }
}

TEST(Collation, OrdersAsAPersonWould)
{
    const QStringList ordered = {u""_s,      u"1"_s,     u"a1"_s,      u"a2"_s,      u"a10"_s,
                                 u"apple"_s, u"Apple"_s, u"ápple"_s,   u"Banana"_s,  u"cote"_s,
                                 u"côte"_s,  u"Zebra"_s, u"zebra 2"_s, u"zebra 10"_s};
    for (qsizetype i = 0; i < ordered.size(); ++i) {
        for (qsizetype j = 0; j < ordered.size(); ++j) {
            const int order = localizedStandardCompare(ordered[i], ordered[j]);
            EXPECT_EQ(order < 0, i < j) << ordered[i].toStdString() << " and " << ordered[j].toStdString();
            EXPECT_EQ(order == 0, i == j);
        }
    }
}

TEST(Collation, TellsDifferentStringsApart)
{
    EXPECT_NE(localizedStandardCompare(u"01", u"1"), 0);
    EXPECT_EQ(localizedStandardCompare(u"01", u"1"), -localizedStandardCompare(u"1", u"01"));
    EXPECT_NE(localizedStandardCompare(u"a", QString(u'a' + QString(QChar(0)))), 0);
}

TEST(Collation, SortKeysOrderAsTheComparison)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    const QString alphabet = foldingAlphabet() + u"0123456789012345678901-_.#/"_s;
    for (int round = 0; round < 30'000; ++round) {
        const QString a = randomText(random, alphabet, 8);
        const QString b = randomText(random, alphabet, 8);
        const QByteArray keyOfA = localizedStandardSortKey(a);
        const QByteArray keyOfB = localizedStandardSortKey(b);
        const int order = localizedStandardCompare(a, b);
        ASSERT_EQ(order < 0, keyOfA < keyOfB) << a.toStdString() << " and " << b.toStdString();
        ASSERT_EQ(order == 0, keyOfA == keyOfB) << a.toStdString() << " and " << b.toStdString();
        ASSERT_EQ(order == 0, a == b);
    }
}

} // namespace

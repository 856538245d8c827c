#include <Text/DecimalDigits.h>
#include <Text/NSRegularExpression.h>

#include <gtest/gtest.h>

#include <QString>

using namespace Qt::StringLiterals;

namespace quib::tests {

TEST(DecimalDigits, AreThoseOfThePatterns)
{
    QString all;
    for (char32_t character = 0; character <= QChar::LastValidCodePoint; ++character) {
        if (!QChar::isSurrogate(character)) {
            all += QString::fromUcs4(&character, 1);
        }
    }
    const NSRegularExpression digit(u"\\d"_s);
    QString matched;
    for (const NSTextCheckingResult &match : digit.matchesInString(all, {}, {0, all.size()})) {
        matched += all.sliced(match.range().location, match.range().length);
    }
    QString told;
    int sum = 0;
    for (const char32_t character : all.toUcs4()) {
        const int value = decimalDigitValue(character);
        if (value >= 0) {
            told += QString::fromUcs4(&character, 1);
            sum += value;
        }
    }
    EXPECT_EQ(told, matched);
    // Digits come in tens.
    EXPECT_GE(told.toUcs4().size(), 660);
    EXPECT_EQ(sum * 2, told.toUcs4().size() * 9);
    EXPECT_EQ(decimalDigitValue(U'\u0663'), 3);
    EXPECT_EQ(decimalDigitValue(U'\u4E09'), -1); // a number, and no digit
    EXPECT_EQ(decimalDigitValue(0xD800), -1);
}

} // namespace quib::tests

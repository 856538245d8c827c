#include <Text/AddressScanner.h>
#include <Text/NSDataDetector.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

using namespace Qt::StringLiterals;

namespace {

/// The text with each address between ⟦ and ⟧.
QString found(const QString &marked)
{
    QString text = marked;
    text.remove(u'⟦').remove(u'⟧');
    QString out;
    qint64 done = 0;
    for (const auto &match : NSDataDetector::sharedDetector(NSDataDetector::CheckingType::Address)
                                 .matchesInString(text, 0, {0, text.size()})) {
        out += text.mid(done, match.range().location - done) + u'⟦' +
               text.mid(match.range().location, match.range().length) + u'⟧';
        done = match.range().limit();
    }
    return out + text.mid(done);
}

void expectFound(std::initializer_list<const char16_t *> markedTexts)
{
    for (const char16_t *text : markedTexts) {
        const QString marked = QString::fromUtf16(text);
        EXPECT_EQ(found(marked).toStdString(), marked.toStdString());
    }
}

TEST(AddressDetector, TakesAmericanAddresses)
{
    expectFound({
        u"Meet at ⟦350 Fifth Avenue, New York, NY 10118⟧ at noon.",
        u"⟦1600 Pennsylvania Ave NW, Washington, DC 20500⟧",
        u"Joe Bloggs\n⟦12 N. Main St., Apt 4B\nSpringfield, IL 62701-1234⟧\njoe@example.com",
        u"⟦742 Evergreen Terrace\nSpringfield, OR 97477, USA⟧",
        u"⟦200 W 42nd Street, Suite 5, New York NY 10036⟧, then ⟦5 Oak Lane, Salem, MA 01970⟧",
    });
}

TEST(AddressDetector, TakesBritishAddresses)
{
    expectFound({
        u"⟦10 Downing Street, London SW1A 2AA⟧",
        u"⟦221B Baker Street\nLondon\nNW1 6XE⟧",
        u"⟦4 Privet Drive, Little Whinging, Surrey GU1 4AB, UK⟧.",
        u"Flat is at ⟦17 The High Street, Stratford-upon-Avon, CV37 6AB⟧",
    });
}

TEST(AddressDetector, TakesItalianAddresses)
{
    expectFound({
        u"Ci vediamo in ⟦Via Roma 12, 43121 Parma⟧ domani",
        u"⟦Piazza della Repubblica, 3 - 20124 Milano (MI)⟧",
        u"⟦Corso Vittorio Emanuele II n. 15/A\n10123 Torino TO⟧",
        u"⟦Via Giuseppe Garibaldi 7, 00153 Roma, Italia⟧",
        u"⟦Via Roma 12, 43121 Parma⟧. Domani",
        u"⟦Viale dell'Industria 4\n36100 Vicenza⟧",
    });
}

TEST(AddressDetector, TakesGermanFrenchAndSpanishAddresses)
{
    expectFound({
        u"⟦Friedrichstraße 43, 10117 Berlin⟧",
        u"Büro: ⟦Unter den Linden 77\n10117 Berlin⟧",
        u"⟦Königsallee 12a, D-40212 Düsseldorf⟧\n⟦Am Markt 5, 04109 Leipzig, Germany⟧",
        u"⟦Berliner Str. 3-5, 60311 Frankfurt am Main⟧",
        u"⟦12 rue de la Paix, 75002 Paris⟧",
        u"⟦5 bis, avenue des Champs-Élysées\n75008 Paris, France⟧",
        u"⟦1 place de la Gare, 67000 Strasbourg⟧ ⟦10 quai d'Orsay, 75007 PARIS CEDEX 07⟧",
        u"⟦Calle de Alcalá 45, 28014 Madrid⟧",
        u"⟦Avenida Diagonal, 211\n08018 Barcelona, España⟧ ⟦C/ Mayor, nº 7, 2º B, 28013 Madrid⟧",
    });
}

TEST(AddressDetector, LeavesWhatLacksAPart)
{
    expectFound({
        u"350 Fifth Avenue, New York",
        u"New York, NY 10118",
        u"Via Roma 12, Parma",
        u"43121 Parma",
        u"Friedrichstraße, 10117 Berlin",
        u"Friedrichstraße 43",
        u"10 Downing Street, London",
        u"London SW1A 2AA",
        u"I paid 12000 Euro via Bank 3, then 10000 Dollars",
        u"Way 12 of 20, see 12345 Items",
        u"Via email 3 times, 12345 Messages",
        u"In 2019 the Court of Justice heard 12345 Cases",
        u"$350 Fifth Avenue, New York, NY 10118",
        u"Version 3 Place, XX 12345",
        u"Via Roma 12\n\n\n\n43121 Parma",
        u"phone 555 12345 Main, order 12345 Pieces",
    });
}

TEST(AddressDetector, SeesNothingOutsideOfTheRange)
{
    const QString text = u"see Via Roma 12, 43121 Parma today"_s;
    const auto &detector = NSDataDetector::sharedDetector(NSDataDetector::CheckingType::Address);
    EXPECT_EQ(detector.rangeOfFirstMatchInString(text, 0, {0, text.size()}), (NSRange{4, 24}));
    EXPECT_EQ(detector.rangeOfFirstMatchInString(text, 0, {4, 22}), (NSRange{4, 22})) << "the end is a boundary";
    EXPECT_FALSE(detector.rangeOfFirstMatchInString(text, 0, {5, 20}).isFound());
    EXPECT_FALSE(detector.rangeOfFirstMatchInString(text, 0, {4, 18}).isFound());
    EXPECT_EQ(detector.firstMatchInString(text, 0, {0, text.size()})->URL(), QUrl());
}

TEST(AddressDetector, WorksInProportionToTheText)
{
    constexpr qsizetype kUnits = 20'000;
    constexpr qint64 kLooksPerUnit = 60;
    for (const char16_t *piece :
         {u"12345 A ", u"12345 A, ", u"Via Roma 1 ", u"Via Roma 1, 12345 A ", u"NY 12345 ", u"A1 1AA ", u"1 ",
          u"Street ", u"1 Main St, ", u"A", u"Aa ", u"\n", u"10 rue de ", u"9", u"12345 A-"}) {
        const QString unit = QString::fromUtf16(piece);
        const QString text = unit.repeated(kUnits / unit.size());
        quib::AddressScanner scanner(text);
        while (scanner.next()) {
        }
        EXPECT_LE(scanner.workDone(), kLooksPerUnit * text.size()) << unit.toStdString();
    }
}

} // namespace

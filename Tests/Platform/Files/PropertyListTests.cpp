// Property lists: what is written is read again, by us and by another library; hostile input ends in an error.

#include <Files/PropertyList.h>
#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <plist/plist.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;
using quib::PropertyListFormat;
using quib::PropertyValue;
using quib::readPropertyList;
using quib::writePropertyList;
using quib::tests::TestSeed;

namespace {

struct PlistDeleter
{
    void operator()(void *node) const { plist_free(node); }
};
using Plist = std::unique_ptr<void, PlistDeleter>;

QString randomText(std::mt19937 &random, bool anyUnit)
{
    static const QString plain = u"abc <&>\"'\t\näßλ語\U0001F600 ]]>"_s;
    QString text;
    for (auto left = random() % 30; left > 0; --left) {
        text.append(anyUnit ? QChar(static_cast<char16_t>(random() % 0x10000))
                            : plain.at(static_cast<qsizetype>(random() % static_cast<size_t>(plain.size() - 6))));
    }
    return text;
}

/// A random value; with anyUnit its strings hold any UTF-16 unit and its dates any microsecond.
PropertyValue randomValue(std::mt19937 &random, bool anyUnit, int depth)
{
    switch (random() % (depth > 0 ? 9U : 7U)) {
    case 0:
        return PropertyValue(random() % 2 == 0);
    case 1:
        return PropertyValue(static_cast<qint64>((quint64(random()) << 32 | random()) >> (random() % 64)));
    case 2:
        return PropertyValue(-static_cast<qint64>((quint64(random()) << 31 | random()) >> (random() % 63)));
    case 3:
        return PropertyValue(std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 100) - 50));
    case 4:
        return PropertyValue(randomText(random, anyUnit));
    case 5: {
        const double seconds = static_cast<double>(random()) * 2 - 3e9;
        return PropertyValue(NSDate::dateWithTimeIntervalSince1970(
            anyUnit ? seconds + static_cast<double>(random() % 1000000) / 1e6 : seconds));
    }
    case 6:
        return PropertyValue(randomText(random, true).toUtf8());
    case 7: {
        PropertyValue::Array items;
        for (auto left = random() % 5; left > 0; --left) {
            items.append(randomValue(random, anyUnit, depth - 1));
        }
        return PropertyValue(items);
    }
    default: {
        PropertyValue::Dictionary items;
        for (auto left = random() % 20; left > 0; --left) {
            items.insert(randomText(random, anyUnit), randomValue(random, anyUnit, depth - 1));
        }
        return PropertyValue(items);
    }
    }
}

/// Equal, but for dates, which may differ by less than a microsecond after the change of epoch.
bool sameValue(const PropertyValue &a, const PropertyValue &b)
{
    if (a.type() != b.type()) {
        return false;
    }
    if (const auto date = a.asDate()) {
        return std::abs(date->timeIntervalSinceDate(*b.asDate())) < 1e-6;
    }
    if (const auto *items = a.asArray()) {
        return items->size() == b.asArray()->size() &&
               std::equal(items->begin(), items->end(), b.asArray()->begin(), sameValue);
    }
    if (const auto *items = a.asDictionary()) {
        return items->keys() == b.asDictionary()->keys() &&
               std::equal(items->begin(), items->end(), b.asDictionary()->begin(), sameValue);
    }
    return a == b;
}

PropertyValue sample()
{
    return PropertyValue(PropertyValue::Dictionary{
        {u"counter"_s, PropertyValue(qint64(4'000'000'000))},
        {u"largest"_s, PropertyValue(std::numeric_limits<quint64>::max())},
        {u"list"_s, PropertyValue(PropertyValue::Array{PropertyValue(true), PropertyValue(1.5)})},
        {u"text"_s, PropertyValue(u"Grüße, 語"_s)},
        {u"bytes"_s, PropertyValue(QByteArray("\0\1\xFF", 3))},
        {u"when"_s, PropertyValue(NSDate::dateWithTimeIntervalSince1970(1488449472))}});
}

TEST(PropertyLists, ComeBackAsTheyWereWritten)
{
    const TestSeed seed;
    auto random = seed.generator();
    for (int round = 0; round < 300; ++round) {
        for (const auto format : {PropertyListFormat::Binary, PropertyListFormat::XML}) {
            const bool isBinary = format == PropertyListFormat::Binary;
            const PropertyValue value = randomValue(random, isBinary, 4);
            NSError error;
            const auto bytes = writePropertyList(value, format, &error);
            ASSERT_TRUE(bytes) << qPrintable(error.localizedDescription());
            const auto read = readPropertyList(*bytes, &error);
            ASSERT_TRUE(read) << qPrintable(error.localizedDescription()) << bytes->constData();
            ASSERT_TRUE(sameValue(value, *read)) << bytes->constData();
        }
    }
}

TEST(PropertyLists, KeepEdgeNumbersAndTexts)
{
    const PropertyValue rows[] = {PropertyValue(0),
                                  PropertyValue(255),
                                  PropertyValue(256),
                                  PropertyValue(65536),
                                  PropertyValue(-1),
                                  PropertyValue(std::numeric_limits<qint64>::min()),
                                  PropertyValue(std::numeric_limits<qint64>::max()),
                                  PropertyValue(std::numeric_limits<quint64>::max()),
                                  PropertyValue(-0.0),
                                  PropertyValue(std::numeric_limits<double>::infinity()),
                                  PropertyValue(u""_s),
                                  PropertyValue(QByteArray("")),
                                  PropertyValue(QString(QChar(u'\0'))),
                                  PropertyValue(QString(QChar(0xD800))),
                                  PropertyValue(QString(QChar(0xFEFF))),
                                  PropertyValue(QString(15, u'x')),
                                  PropertyValue(QString(70000, u'é')),
                                  PropertyValue(NSDate::dateWithTimeIntervalSince1970(1488449472.123456))};
    for (const PropertyValue &row : rows) {
        const auto bytes = writePropertyList(row, PropertyListFormat::Binary, nullptr);
        ASSERT_TRUE(bytes);
        const auto read = readPropertyList(*bytes, nullptr);
        ASSERT_TRUE(read);
        EXPECT_TRUE(*read == row) << qPrintable(row.toString());
    }
}

TEST(PropertyLists, AreReadByAnotherLibrary)
{
    const PropertyValue value = sample();
    for (const auto format : {PropertyListFormat::Binary, PropertyListFormat::XML}) {
        const auto bytes = writePropertyList(value, format, nullptr);
        ASSERT_TRUE(bytes);
        plist_t node = nullptr;
        plist_from_memory(bytes->constData(), static_cast<uint32_t>(bytes->size()), &node);
        const Plist owner(node);
        ASSERT_NE(node, nullptr);
        EXPECT_EQ(plist_dict_get_size(node), 6U);
        uint64_t number = 0;
        plist_get_uint_val(plist_dict_get_item(node, "largest"), &number);
        EXPECT_EQ(number, std::numeric_limits<quint64>::max());
        char *text = nullptr;
        plist_get_string_val(plist_dict_get_item(node, "text"), &text);
        EXPECT_STREQ(text, "Grüße, 語");
        std::free(text);
        int32_t seconds = 0;
        int32_t micros = 0;
        plist_get_date_val(plist_dict_get_item(node, "when"), &seconds, &micros);
        EXPECT_EQ(seconds, 1488449472 - 978307200);
    }
}

TEST(PropertyLists, OfAnotherLibraryAreRead)
{
    // Without the largest number: the other library writes it as -1.
    PropertyValue::Dictionary expected = *sample().asDictionary();
    expected.remove(u"largest"_s);
    const Plist node(plist_new_dict());
    plist_dict_set_item(node.get(), "counter", plist_new_uint(4'000'000'000));
    plist_dict_set_item(node.get(), "text", plist_new_string("Grüße, 語"));
    plist_dict_set_item(node.get(), "bytes", plist_new_data("\0\1\xFF", 3));
    plist_dict_set_item(node.get(), "when", plist_new_date(1488449472 - 978307200, 0));
    plist_t list = plist_new_array();
    plist_array_append_item(list, plist_new_bool(1));
    plist_array_append_item(list, plist_new_real(1.5));
    plist_dict_set_item(node.get(), "list", list);
    for (const bool binary : {true, false}) {
        char *written = nullptr;
        uint32_t length = 0;
        (binary ? plist_to_bin : plist_to_xml)(node.get(), &written, &length);
        const QByteArray bytes(written, static_cast<qsizetype>(length));
        std::free(written);
        NSError error;
        const auto read = readPropertyList(bytes, &error);
        ASSERT_TRUE(read) << qPrintable(error.localizedDescription());
        EXPECT_TRUE(*read == PropertyValue(expected)) << bytes.constData();
    }
}

TEST(PropertyLists, CutShortAnywhereAreRefusedOrStillWhole)
{
    for (const auto format : {PropertyListFormat::Binary, PropertyListFormat::XML}) {
        const QByteArray whole = *writePropertyList(sample(), format, nullptr);
        const qsizetype end = format == PropertyListFormat::XML ? whole.indexOf("</plist>") : whole.size();
        for (qsizetype length = 0; length < end; ++length) {
            NSError error;
            EXPECT_FALSE(readPropertyList(whole.first(length), &error)) << length;
            EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::PropertyListReadCorrupt));
        }
    }
}

TEST(PropertyLists, WithDamagedBytesNeverCrash)
{
    const TestSeed seed;
    auto random = seed.generator();
    const QByteArray whole = *writePropertyList(sample(), PropertyListFormat::Binary, nullptr);
    int refused = 0;
    for (int round = 0; round < 20000; ++round) {
        QByteArray damaged = whole;
        for (auto left = 1 + random() % 4; left > 0; --left) {
            damaged[static_cast<qsizetype>(random() % static_cast<size_t>(whole.size()))] = static_cast<char>(random());
        }
        const auto read = readPropertyList(damaged, nullptr);
        refused += read ? 0 : 1;
        if (read) {
            // Whatever was read can be written.
            EXPECT_TRUE(writePropertyList(*read, PropertyListFormat::Binary, nullptr));
        }
    }
    EXPECT_GT(refused, 1000);
}

QByteArray nested(int depth, PropertyListFormat format)
{
    if (format == PropertyListFormat::XML) {
        return "<plist>" + QByteArray("<array>").repeated(depth) + QByteArray("</array>").repeated(depth) + "</plist>";
    }
    // Arrays of one reference each, two bytes a reference, four bytes an offset.
    QByteArray bytes("bplist00");
    QByteArray table;
    const auto number = [](QByteArray &to, quint64 value, int width) {
        for (int shift = (width - 1) * 8; shift >= 0; shift -= 8) {
            to.append(static_cast<char>(value >> shift));
        }
    };
    for (int index = 0; index < depth; ++index) {
        number(table, static_cast<quint64>(bytes.size()), 4);
        bytes.append(index + 1 < depth ? '\xA1' : '\xA0');
        if (index + 1 < depth) {
            number(bytes, static_cast<quint64>(index + 1), 4);
        }
    }
    const auto start = static_cast<quint64>(bytes.size());
    bytes.append(table);
    bytes.append(6, '\0');
    bytes.append("\x04\x04", 2);
    number(bytes, static_cast<quint64>(depth), 8);
    number(bytes, 0, 8);
    number(bytes, start, 8);
    return bytes;
}

TEST(PropertyLists, NestedTooDeepAreRefused)
{
    for (const auto format : {PropertyListFormat::Binary, PropertyListFormat::XML}) {
        EXPECT_TRUE(readPropertyList(nested(quib::kPropertyListMaximumDepth, format), nullptr));
        for (const int depth : {quib::kPropertyListMaximumDepth + 1, 100000}) {
            NSError error;
            EXPECT_FALSE(readPropertyList(nested(depth, format), &error)) << depth;
            EXPECT_TRUE(error.localizedDescription().contains(u"nested"));
        }
    }
    PropertyValue deep{PropertyValue::Array{}};
    for (int level = 0; level < quib::kPropertyListMaximumDepth; ++level) {
        deep = PropertyValue(PropertyValue::Array{deep});
    }
    EXPECT_FALSE(writePropertyList(deep, PropertyListFormat::Binary, nullptr));
}

TEST(PropertyLists, ThatUnfoldWithoutEndAreRefused)
{
    // Forty arrays, each of them twice the next: 2^40 values in a few hundred bytes.
    QByteArray bytes("bplist00");
    QByteArray table;
    for (int index = 0; index < 40; ++index) {
        table.append(static_cast<char>(bytes.size()));
        bytes.append(index < 39 ? QByteArray("\xA2") + static_cast<char>(index + 1) + static_cast<char>(index + 1)
                                : QByteArray("\x09"));
    }
    const auto start = static_cast<char>(bytes.size());
    bytes += table + QByteArray(6, '\0') + QByteArray("\x01\x01", 2) + QByteArray(7, '\0') + char(40) +
             QByteArray(8, '\0') + QByteArray(7, '\0') + start;
    NSError error;
    EXPECT_FALSE(readPropertyList(bytes, &error));
    EXPECT_TRUE(error.localizedDescription().contains(u"too many values"));

    // The same with an object that holds itself.
    bytes[8 + 38 * 3 + 1] = '\0';
    EXPECT_FALSE(readPropertyList(bytes, &error));
    EXPECT_TRUE(error.localizedDescription().contains(u"contains itself"));
}

TEST(PropertyLists, InXMLAreJudgedByRows)
{
    const struct
    {
        const char *xml;
        std::optional<PropertyValue> value;
    } rows[] = {
        {"<plist><true/></plist>", PropertyValue(true)},
        {"<?xml version=\"1.0\"?><!DOCTYPE plist PUBLIC \"x\" \"y\"><plist version=\"1.0\"><false/></plist>",
         PropertyValue(false)},
        {"<plist><integer>-42</integer></plist>", PropertyValue(-42)},
        {"<plist><integer>0x1F</integer></plist>", PropertyValue(31)},
        {"<plist><integer>18446744073709551615</integer></plist>", PropertyValue(std::numeric_limits<quint64>::max())},
        {"<plist><integer>18446744073709551616</integer></plist>", std::nullopt},
        {"<plist><integer>twelve</integer></plist>", std::nullopt},
        {"<plist><real>+1e3</real></plist>", PropertyValue(1000.0)},
        {"<plist><string>a<!-- -->b<![CDATA[<c>]]></string></plist>", PropertyValue(u"ab<c>"_s)},
        {"<plist><string>a<b/></string></plist>", std::nullopt},
        {"<plist><data>\n\tAAEC\n\t/w==\n</data></plist>", PropertyValue(QByteArray("\0\1\2\xFF", 4))},
        {"<plist><data>!!</data></plist>", std::nullopt},
        {"<plist><date>2017-03-02T10:11:12Z</date></plist>",
         PropertyValue(NSDate::dateWithTimeIntervalSince1970(1488449472))},
        {"<plist><date>soon</date></plist>", std::nullopt},
        {"<plist><dict><key>a</key></dict></plist>", std::nullopt},
        {"<plist><dict><string>a</string></dict></plist>", std::nullopt},
        {"<plist><dict/><dict/></plist>", std::nullopt},
        {"<plist><color/></plist>", std::nullopt},
        {"<plist/>", std::nullopt},
        {"<html><true/></html>", std::nullopt},
        {"", std::nullopt},
        {"<!DOCTYPE p [<!ENTITY a \"xxxxxxxxxx\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c "
         "\"&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;\">]><plist><string>&d;</string></plist>",
         std::nullopt},
    };
    for (const auto &row : rows) {
        NSError error;
        const auto read = readPropertyList(row.xml, &error);
        ASSERT_EQ(read.has_value(), row.value.has_value()) << row.xml;
        EXPECT_TRUE(!read || *read == *row.value) << row.xml;
        EXPECT_EQ(error.isSet(), !read.has_value()) << row.xml;
    }
}

TEST(PropertyLists, RefuseToWriteWhatTheirFormatCannotHold)
{
    const PropertyValue control(QString(QChar(u'\1')));
    EXPECT_FALSE(writePropertyList(control, PropertyListFormat::XML, nullptr));
    EXPECT_TRUE(writePropertyList(control, PropertyListFormat::Binary, nullptr));
    NSError error;
    EXPECT_FALSE(
        writePropertyList(PropertyValue(PropertyValue::Array{PropertyValue()}), PropertyListFormat::Binary, &error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::PropertyListWriteInvalid));
}

TEST(PropertyValues, ReadLenientlyAcrossTypes)
{
    const struct
    {
        PropertyValue value;
        bool truth;
        qint64 integer;
        double real;
    } rows[] = {{PropertyValue(true), true, 1, 1},
                {PropertyValue(7), true, 7, 7},
                {PropertyValue(0.25), true, 0, 0.25},
                {PropertyValue(1e300), true, std::numeric_limits<qint64>::max(), 1e300},
                {PropertyValue(u" 12 "_s), true, 12, 12},
                {PropertyValue(u"yes"_s), true, -5, -5},
                {PropertyValue(u"no"_s), false, -5, -5},
                {PropertyValue(QByteArray("1")), false, -5, -5},
                {PropertyValue(), false, -5, -5}};
    for (const auto &row : rows) {
        EXPECT_EQ(row.value.toBool(), row.truth) << qPrintable(row.value.toString());
        EXPECT_EQ(row.value.toInteger(-5), row.integer) << qPrintable(row.value.toString());
        EXPECT_EQ(row.value.toDouble(-5), row.real) << qPrintable(row.value.toString());
    }
}

} // namespace

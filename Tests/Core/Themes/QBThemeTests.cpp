// Themes as lists of items: what wins, how values resolve, what is read from files of any content and written again.

#include <Files/PropertyList.h>
#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>
#include <Support/TestSeed.h>
#include <Themes/QBTheme.h>

#include <gtest/gtest.h>

#include <map>

using namespace Qt::StringLiterals;
using quib::PropertyValue;
using quib::tests::TemporaryFolder;
using quib::tests::TestSeed;

namespace {

using Item = std::shared_ptr<QBThemeItem>;

Item add(QBTheme &theme, const QString &key, const PropertyValue &value, const QString &kind = u"color"_s)
{
    auto item = std::make_shared<QBThemeItem>(key, value, kind);
    theme.addThemeItem(item);
    return item;
}

QString keysOf(const QBTheme &theme)
{
    QStringList keys;
    for (const Item &item : theme.themeItems()) {
        keys.append(item->key());
    }
    return keys.join(u' ');
}

QString proxyOf(const Item &item)
{
    return item->proxyValue().toString();
}

TEST(ThemeItems, AreMadeForTheEditorOfThemes)
{
    const struct
    {
        Item item;
        QString kind;
        QString key;
        PropertyValue value;
    } cases[] = {
        {QBThemeItem::fontThemeItem(), u"font"_s, u"New Font"_s, u"Helvetica"_s},
        {QBThemeItem::colorThemeItem(), u"color"_s, u"New Color"_s, u"rgba(255, 255, 255, 1.00)"_s},
        {QBThemeItem::numberThemeItem(), u"number"_s, u"New Number"_s, 0},
        {QBThemeItem::groupThemeItem(), u"group"_s, u""_s, u"New Group"_s},
    };
    for (const auto &expected : cases) {
        EXPECT_EQ(expected.item->kind(), expected.kind);
        EXPECT_EQ(expected.item->key(), expected.key);
        EXPECT_TRUE(expected.item->value() == expected.value);
        EXPECT_TRUE(expected.item->proxyValue().isNull());
    }
}

TEST(ThemeOrder, LaterItemsWinAndStandLast)
{
    QBTheme theme;
    add(theme, u"a"_s, u"rgba(1, 1, 1, 1.00)"_s);
    add(theme, u"b"_s, u"rgba(2, 2, 2, 1.00)"_s);
    const Item last = add(theme, u"a"_s, u"rgba(3, 3, 3, 1.00)"_s);
    EXPECT_EQ(keysOf(theme), u"b a"_s);
    EXPECT_EQ(theme.themeItemForKey(u"a"_s), last);
    EXPECT_EQ(theme.colorForKey(u"a"_s), NSColor::colorFromRgbaString(u"rgba(3, 3, 3, 1.00)"));
    theme.addThemeItem(last); // once more
    EXPECT_EQ(keysOf(theme), u"b a"_s);
    theme.removeThemeItem(last);
    EXPECT_EQ(keysOf(theme), u"b"_s);
    EXPECT_EQ(theme.themeItemForKey(u"a"_s), nullptr);
}

TEST(ThemeOrder, AnotherThemeIsLaidOverItemByItem)
{
    QBTheme text;
    add(text, u"Base Text Size"_s, 12, u"number"_s);
    add(text, u"ink"_s, u"rgba(1, 1, 1, 1.00)"_s);
    QBTheme fonts;
    add(fonts, u"Base Text Size"_s, 17, u"number"_s);
    add(fonts, u"Title Font"_s, u"Lato"_s, u"font"_s);
    text.addThemeItemsFromTheme(fonts);
    EXPECT_EQ(keysOf(text), u"ink Base Text Size Title Font"_s);
    EXPECT_EQ(text.numberForKey(u"Base Text Size"_s), 17);
    EXPECT_EQ(keysOf(fonts), u"Base Text Size Title Font"_s);
    text.addThemeItemsFromTheme(text);
    EXPECT_EQ(keysOf(text), u"ink Base Text Size Title Font"_s);
}

TEST(ThemeOrder, OneGroupIsKept)
{
    QBTheme theme;
    theme.addThemeItem(QBThemeItem::groupThemeItem());
    add(theme, u"a"_s, u"x"_s);
    EXPECT_EQ(keysOf(theme), u" a"_s);
    // All groups have the same key, "", so a later one wins like any other item.
    theme.addThemeItem(QBThemeItem::groupThemeItem());
    EXPECT_EQ(keysOf(theme), u"a "_s);
}

TEST(ThemeValues, Resolve)
{
    const struct
    {
        const char *label;
        PropertyValue value;
        QString kind;
        PropertyValue proxy;
    } cases[] = {
        {"plain", u"rgba(1, 2, 3, 1.00)"_s, u"color"_s, u"rgba(1, 2, 3, 1.00)"_s},
        {"variable", u"$accent"_s, u"color"_s, u"rgba(10, 20, 30, 1.00)"_s},
        {"variable of a number", u"$size"_s, u"number"_s, 12},
        {"variable of a variable", u"$second"_s, u"color"_s, u"$accent"_s},
        {"unknown variable", u"$none"_s, u"color"_s, PropertyValue()},
        {"alpha", u"@alpha($accent, 0.5)"_s, u"color"_s, u"rgba(10, 20, 30, 0.50)"_s},
        {"alpha in capitals, without space", u"@ALPHA($accent,0.5)"_s, u"color"_s, u"rgba(10, 20, 30, 0.50)"_s},
        {"alpha of a colour", u"@alpha(rgba(1, 2, 3, 1.00), 1.0)"_s, u"color"_s, u"rgba(1, 2, 3, 1.00)"_s},
        {"alpha 0", u"@alpha($accent, 0)"_s, u"color"_s, u"rgba(10, 20, 30, 0.00)"_s},
        {"text around alpha", u"see @alpha($accent, 0.25) there"_s, u"color"_s, u"rgba(10, 20, 30, 0.25)"_s},
        {"alpha above 1", u"@alpha($accent, 1.5)"_s, u"color"_s, u"@alpha($accent, 1.5)"_s},
        {"alpha without a number", u"@alpha($accent)"_s, u"color"_s, u"@alpha($accent)"_s},
        {"alpha of no colour", u"@alpha($none, 0.5)"_s, u"color"_s, PropertyValue()},
        {"alpha of a number", u"@alpha($size, 0.5)"_s, u"color"_s, 12},
        {"space before the comma is part of the name", u"@alpha($accent , 0.5)"_s, u"color"_s, PropertyValue()},
        {"alpha of a font", u"@alpha(Lato, 0.5)"_s, u"font"_s, u"Lato"_s},
        {"a number", 7, u"number"_s, 7},
    };
    for (const auto &expected : cases) {
        SCOPED_TRACE(expected.label);
        QBTheme theme;
        add(theme, u"$accent"_s, u"rgba(10, 20, 30, 1.00)"_s);
        add(theme, u"$second"_s, u"$accent"_s);
        add(theme, u"$size"_s, 12, u"number"_s);
        const Item item = add(theme, u"key"_s, expected.value, expected.kind);
        EXPECT_TRUE(item->proxyValue() == expected.proxy) << proxyOf(item).toStdString();
        EXPECT_EQ(theme.colorForKey(u"key"_s).has_value(), expected.proxy.asString().has_value());
    }
}

TEST(ThemeValues, LeaveCirclesAfterOneStep)
{
    QBTheme theme;
    const Item own = add(theme, u"$own"_s, u"$own"_s);
    const Item a = add(theme, u"$a"_s, u"$b"_s);
    const Item b = add(theme, u"$b"_s, u"@alpha($a, 0.5)"_s);
    EXPECT_EQ(proxyOf(own), u"$own"_s);
    EXPECT_TRUE(a->proxyValue().isNull());
    EXPECT_EQ(proxyOf(b), u"rgba(0, 0, 0, 0.50)"_s); // "$b" as a colour: it has no digits
    for (const Item &item : {own, a, b}) {
        theme.updateThemeItem(item);
    }
    EXPECT_EQ(proxyOf(a), u"rgba(0, 0, 0, 0.50)"_s); // handed on by "$b", the last to be resolved
    EXPECT_EQ(theme.themeItems().size(), 3);
}

TEST(ThemeValues, HandVariablesOnToWhatRefersToThem)
{
    QBTheme theme;
    const Item early = add(theme, u"early"_s, u"$x"_s);
    EXPECT_TRUE(early->proxyValue().isNull());
    // A new variable is handed on before it is resolved, so what stands before it gets nothing.
    const Item variable = add(theme, u"$x"_s, u"rgba(1, 2, 3, 1.00)"_s);
    EXPECT_TRUE(early->proxyValue().isNull());
    const Item late = add(theme, u"late"_s, u"$x"_s);
    const Item faint = add(theme, u"faint"_s, u"@alpha($x, 0.5)"_s);
    EXPECT_EQ(proxyOf(late), u"rgba(1, 2, 3, 1.00)"_s);

    variable->setValue(u"rgba(4, 5, 6, 1.00)"_s);
    theme.updateThemeItem(variable);
    EXPECT_EQ(proxyOf(early), u"rgba(4, 5, 6, 1.00)"_s);
    EXPECT_EQ(proxyOf(late), u"rgba(4, 5, 6, 1.00)"_s);
    // What wraps the variable stays until it is resolved again.
    EXPECT_EQ(proxyOf(faint), u"rgba(1, 2, 3, 0.50)"_s);
    theme.updateThemeItem(faint);
    EXPECT_EQ(proxyOf(faint), u"rgba(4, 5, 6, 0.50)"_s);

    // A variable of another theme comes with what it was resolved to there.
    QBTheme other;
    const Item first = add(other, u"first"_s, u"$x"_s);
    other.addThemeItem(variable);
    EXPECT_EQ(proxyOf(first), u"rgba(4, 5, 6, 1.00)"_s);
}

TEST(ThemeValues, FollowAChangeOfTheKey)
{
    QBTheme theme;
    const Item item = add(theme, u"old"_s, u"rgba(1, 2, 3, 1.00)"_s);
    const Item user = add(theme, u"user"_s, u"$new"_s);
    item->setKey(u"$new"_s);
    theme.updateThemeItem(item);
    EXPECT_EQ(theme.themeItemForKey(u"old"_s), nullptr);
    EXPECT_EQ(theme.themeItemForKey(u"$new"_s), item);
    EXPECT_EQ(proxyOf(user), u"rgba(1, 2, 3, 1.00)"_s);
    EXPECT_EQ(keysOf(theme), u"$new user"_s);
}

TEST(ThemeValues, AreReadByKeyOrFallBack)
{
    QBTheme theme;
    add(theme, u"font"_s, u"DejaVu Sans Mono"_s, u"font"_s);
    add(theme, u"no font"_s, u"No Such Family"_s, u"font"_s);
    add(theme, u"font of a number"_s, 12, u"font"_s);
    add(theme, u"number"_s, 1.5, u"number"_s);
    add(theme, u"text of a number"_s, u"2.5"_s, u"number"_s);
    add(theme, u"no number"_s, u"wide"_s, u"number"_s);
    add(theme, u"infinite"_s, u"inf"_s, u"number"_s);
    add(theme, u"no colour"_s, u"red"_s);
    EXPECT_EQ(theme.fontForKey(u"font"_s, 20).familyName(), u"DejaVu Sans Mono"_s);
    EXPECT_EQ(theme.fontForKey(u"font"_s, 20).pointSize(), 20);
    for (const QString &key : {u"no font"_s, u"font of a number"_s, u"absent"_s}) {
        EXPECT_EQ(theme.fontForKey(key, 20), NSFont::systemFontOfSize(20));
        EXPECT_FALSE(theme.fontForKeyIfAny(key, 20));
    }
    EXPECT_EQ(theme.numberForKey(u"number"_s), 1.5);
    EXPECT_EQ(theme.numberForKey(u"text of a number"_s), 2.5);
    for (const QString &key : {u"no number"_s, u"infinite"_s, u"absent"_s}) {
        EXPECT_EQ(theme.numberForKey(key), std::nullopt);
    }
    EXPECT_EQ(theme.colorForKey(u"no colour"_s), NSColor::clearColor());
    EXPECT_EQ(theme.colorForKey(u"number"_s), std::nullopt);
    EXPECT_EQ(theme.colorForKey(u"absent"_s), std::nullopt);
}

/// The theme as a list of keys and what they come to, written the slow way from the rules.
struct Model
{
    struct Entry
    {
        QString key;
        QString value;
        std::optional<QString> proxy;
    };
    std::vector<Entry> entries;

    Entry *find(const QString &key)
    {
        for (Entry &entry : entries) {
            if (entry.key == key) {
                return &entry;
            }
        }
        return nullptr;
    }
    std::optional<QString> resolved(const QString &value)
    {
        if (!value.startsWith(u'$')) {
            return value;
        }
        const Entry *variable = find(value);
        return variable == nullptr ? std::nullopt : std::optional(variable->value);
    }
    void add(const QString &key, const QString &value)
    {
        std::erase_if(entries, [&key](const Entry &entry) { return entry.key == key; });
        entries.push_back({key, value, std::nullopt});
        link(entries.back());
        entries.back().proxy = resolved(value);
    }
    void update(const QString &key, const QString &value)
    {
        Entry *entry = find(key);
        entry->value = value;
        // Its mapping is gone while it is resolved.
        entry->proxy = value == key ? std::nullopt : resolved(value);
        link(*entry);
    }
    void link(const Entry &variable)
    {
        const Entry copy = variable;
        for (Entry &entry : entries) {
            if (copy.key.startsWith(u'$') && entry.value == copy.key) {
                entry.proxy = copy.proxy;
            }
        }
    }
};

TEST(ThemeValues, AgreeWithAPlainListAfterAnyChanges)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    const auto pick = [&random](const QStringList &from) {
        return from.at(static_cast<qsizetype>(random() % static_cast<size_t>(from.size())));
    };
    const QStringList keys{u"$a"_s, u"$b"_s, u"$c"_s, u"x"_s, u"y"_s, u"z"_s};
    const QStringList values{u"$a"_s, u"$b"_s, u"$c"_s, u"red"_s, u"green"_s, u"blue"_s};
    for (int round = 0; round < 200; ++round) {
        QBTheme theme;
        Model model;
        for (int step = 0; step < 30; ++step) {
            const QString key = pick(keys);
            const QString value = pick(values);
            const Item item = theme.themeItemForKey(key);
            if (item != nullptr && random() % 2 == 0) {
                item->setValue(value);
                theme.updateThemeItem(item);
                model.update(key, value);
            } else {
                add(theme, key, value);
                model.add(key, value);
            }
            ASSERT_EQ(theme.themeItems().size(), static_cast<qsizetype>(model.entries.size()));
            for (qsizetype i = 0; i < theme.themeItems().size(); ++i) {
                const Model::Entry &expected = model.entries[static_cast<size_t>(i)];
                ASSERT_EQ(theme.themeItems().at(i)->key(), expected.key);
                ASSERT_EQ(theme.themeItems().at(i)->proxyValue().asString(), expected.proxy);
            }
        }
    }
}

class ThemeFiles : public testing::Test
{
protected:
    QUrl url(const QByteArray &bytes) { return QUrl::fromLocalFile(m_folder.write(u"a.theme"_s, bytes)); }
    std::shared_ptr<QBTheme> read(const QByteArray &bytes)
    {
        m_error = NSError();
        return QBTheme::initWithContentOfURL(url(bytes), &m_error);
    }
    static QByteArray entry(const QByteArray &key, const QByteArray &value, const QByteArray &kind)
    {
        return "<dict><key>key</key><string>" + key + "</string><key>value</key>" + value + "<key>kind</key><string>" +
               kind + "</string></dict>";
    }
    static QByteArray list(const QByteArray &content)
    {
        return "<?xml version=\"1.0\"?><plist version=\"1.0\"><array>" + content + "</array></plist>";
    }

    TemporaryFolder m_folder;
    NSError m_error;
};

TEST_F(ThemeFiles, ComeBackAsTheyWereWritten)
{
    QBTheme theme;
    add(theme, u"$ä <&> 語"_s, u"rgba(1, 2, 3, 0.25)"_s);
    add(theme, u"user"_s, u"@alpha($ä <&> 語, 0.5)"_s);
    add(theme, u"font"_s, u"Lato"_s, u"font"_s);
    add(theme, u"whole"_s, 42, u"number"_s);
    add(theme, u"fraction"_s, 1.55, u"number"_s);
    theme.addThemeItem(QBThemeItem::groupThemeItem());
    const QUrl file = QUrl::fromLocalFile(m_folder.path(u"copy.theme"_s));
    ASSERT_TRUE(theme.writeToURL(file, &m_error));
    EXPECT_TRUE(m_folder.read(u"copy.theme"_s).startsWith("<?xml"));
    const auto copy = QBTheme::initWithContentOfURL(file, &m_error);
    ASSERT_NE(copy, nullptr);
    ASSERT_EQ(copy->themeItems().size(), theme.themeItems().size());
    for (qsizetype i = 0; i < theme.themeItems().size(); ++i) {
        const Item &expected = theme.themeItems().at(i);
        const Item &item = copy->themeItems().at(i);
        EXPECT_EQ(item->key(), expected->key());
        EXPECT_EQ(item->kind(), expected->kind());
        EXPECT_TRUE(item->value() == expected->value());
        EXPECT_TRUE(item->proxyValue() == expected->proxyValue());
    }
}

TEST_F(ThemeFiles, ThatCannotBeWrittenLeaveTheOldOne)
{
    const QUrl file = url("old");
    QBTheme theme;
    add(theme, u"key"_s, PropertyValue());
    EXPECT_FALSE(theme.writeToURL(file, &m_error));
    EXPECT_TRUE(m_error.isSet());
    EXPECT_EQ(m_folder.read(u"a.theme"_s), "old");
}

TEST_F(ThemeFiles, LeaveOutWhatIsNoItem)
{
    const QByteArray good = entry("good", "<string>rgba(1, 2, 3, 1.00)</string>", "color");
    const QByteArray cases[] = {
        "<string>text</string>",
        "<array/>",
        "<dict/>",
        "<dict><key>key</key><string>k</string></dict>",
        "<dict><key>value</key><string>k</string></dict>",
        "<dict><key>key</key><integer>1</integer><key>value</key><string>v</string></dict>",
        entry("k", "<array/>", "color"),
        entry("k", "<dict/>", "color"),
        entry("k", "<data>AAAA</data>", "color"),
        entry("k", "<date>2020-01-01T00:00:00Z</date>", "color"),
        entry("k", "<string>" + QByteArray(QBTheme::kLongestText + 1, 'x') + "</string>", "color"),
        entry(QByteArray(QBTheme::kLongestText + 1, 'k'), "<string>v</string>", "color"),
    };
    for (const QByteArray &bad : cases) {
        SCOPED_TRACE(bad.left(80).toStdString());
        const auto theme = read(list(bad + good));
        ASSERT_NE(theme, nullptr) << m_error.localizedDescription().toStdString();
        EXPECT_EQ(keysOf(*theme), u"good"_s);
    }
    // A kind is not needed to read a value.
    const auto theme = read(list("<dict><key>key</key><string>k</string><key>value</key><integer>3</integer></dict>"));
    ASSERT_NE(theme, nullptr);
    EXPECT_EQ(theme->numberForKey(u"k"_s), 3);
}

TEST_F(ThemeFiles, ThatAreNoThemesAreRefused)
{
    const QByteArray whole = list(entry("k", "<string>v</string>", "color"));
    const QByteArray tooMany = list(entry("k", "<string>v</string>", "color").repeated(QBTheme::kMostItems + 1));
    const QByteArray cases[] = {
        "",
        "\0\0\0",
        "bplist00",
        "hello",
        whole.left(whole.size() / 2),
        "<plist version=\"1.0\"><dict/></plist>",
        "<plist version=\"1.0\"><string>v</string></plist>",
        QByteArray("<array>").repeated(5000),
        tooMany,
        QByteArray(QBTheme::kLargestFile + 1, ' '),
    };
    for (const QByteArray &bad : cases) {
        SCOPED_TRACE(bad.left(60).toStdString());
        EXPECT_EQ(read(bad), nullptr);
        EXPECT_TRUE(m_error.isSet());
        m_error = NSError();
        EXPECT_EQ(QBTheme::initWithData(bad, &m_error), nullptr);
        EXPECT_TRUE(m_error.isSet());
    }
    EXPECT_EQ(read("hello"), nullptr);
    EXPECT_TRUE(m_error.localizedDescription().contains(u"a.theme"_s));
    EXPECT_EQ(QBTheme::initWithContentOfURL(QUrl::fromLocalFile(m_folder.path(u"none.theme"_s)), &m_error), nullptr);
    EXPECT_EQ(m_error.code(), static_cast<qint64>(NSCocoaErrorCode::FileNoSuchFile));
    for (const QString &address : {u"qrc:/Themes/none.theme"_s, u"https://example.org/a.theme"_s, QString()}) {
        m_error = NSError();
        EXPECT_EQ(QBTheme::initWithContentOfURL(QUrl(address), &m_error), nullptr);
        EXPECT_TRUE(m_error.isSet());
    }
}

TEST_F(ThemeFiles, OfTheLargestSizeResolve)
{
    QByteArray content;
    for (int i = 0; i < QBTheme::kMostItems; ++i) {
        const QByteArray name = "$" + QByteArray::number(i);
        content += entry(name, "<string>$" + QByteArray::number(i + 1) + "</string>", "color");
    }
    const auto theme = read(list(content));
    ASSERT_NE(theme, nullptr) << m_error.localizedDescription().toStdString();
    EXPECT_EQ(theme->themeItems().size(), QBTheme::kMostItems);
}

TEST_F(ThemeFiles, WithAnyBytesChangedAreReadOrRefused)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    QByteArray whole = list(entry("$a", "<string>rgba(1, 2, 3, 1.00)</string>", "color") +
                            entry("b", "<string>@alpha($a, 0.5)</string>", "color") +
                            entry("c", "<real>1.5</real>", "number") + entry("d", "<string>Lato</string>", "font"));
    for (int round = 0; round < 200; ++round) {
        QByteArray bytes = whole;
        for (auto left = 1 + random() % 4; left > 0; --left) {
            const auto at = static_cast<qsizetype>(random() % static_cast<size_t>(whole.size() / 2));
            switch (random() % 3) {
            case 0:
                bytes[at] = static_cast<char>(random() % 256);
                break;
            case 1:
                bytes.remove(at, static_cast<qsizetype>(random() % 20));
                break;
            default:
                bytes.insert(at, bytes.mid(at / 2, static_cast<qsizetype>(random() % 40)));
            }
        }
        m_error = NSError();
        const auto theme = QBTheme::initWithData(bytes, &m_error);
        ASSERT_NE(theme != nullptr, m_error.isSet());
        for (const QString &key : {u"$a"_s, u"b"_s, u"c"_s, u"d"_s}) {
            if (theme != nullptr) {
                static_cast<void>(theme->colorForKey(key));
                static_cast<void>(theme->numberForKey(key));
            }
        }
    }
}

} // namespace

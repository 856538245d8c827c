// Managers of themes: the cache, and the passes in which those who draw are told of a change.

#include <Graphics/GraphicsAttributes.h>
#include <Graphics/GraphicsContext.h>
#include <Support/QtPrinters.h>
#include <Themes/QBNotesAppThemeManager.h>
#include <Themes/QBNotesThemesManager.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

std::shared_ptr<QBTheme> themeOf(const QString &key, const QString &color)
{
    auto theme = std::make_shared<QBTheme>();
    theme->addThemeItem(std::make_shared<QBThemeItem>(key, color, u"color"_s));
    return theme;
}

/// Writes down the calls it gets, and may do something at one of them.
class Drawer final : public quib::StylableObject
{
public:
    Drawer(QString name, QStringList &calls)
        : m_name(std::move(name))
        , m_calls(calls)
    {
    }
    void themeManagerWillChangeStyles(QBThemeManager & /*manager*/) override { note(u"will"_s); }
    void styleObjectWithThemeManager(QBThemeManager & /*manager*/) override
    {
        note(u"style"_s);
        if (atStyle) {
            atStyle();
        }
    }
    void themeManagerDidChangeStyles(QBThemeManager & /*manager*/) override { note(u"did"_s); }

    std::function<void()> atStyle;

private:
    void note(const QString &call) { m_calls.append(m_name % u':' % call); }

    QString m_name;
    QStringList &m_calls;
};

class ThemeManager : public testing::Test
{
protected:
    QString calls()
    {
        const QString all = m_calls.join(u' ');
        m_calls.clear();
        return all;
    }

    QStringList m_calls;
    QBThemeManager m_manager;
};

TEST_F(ThemeManager, TellsAllOfEachPassBeforeTheNext)
{
    Drawer a(u"a"_s, m_calls);
    Drawer b(u"b"_s, m_calls);
    m_manager.registerStylableObject(a);
    m_manager.registerStylableObject(b);
    m_manager.registerStylableObject(a);
    m_manager.styleRegisteredStylableObjects();
    EXPECT_EQ(calls(), u"a:will b:will a:style b:style a:did b:did"_s);
    m_manager.unregisterStylableObject(a);
    m_manager.unregisterStylableObject(a);
    m_manager.styleRegisteredStylableObjects();
    EXPECT_EQ(calls(), u"b:will b:style b:did"_s);
}

TEST_F(ThemeManager, BearsChangesOfThoseItTells)
{
    Drawer a(u"a"_s, m_calls);
    auto b = std::make_unique<Drawer>(u"b"_s, m_calls);
    auto c = std::make_unique<Drawer>(u"c"_s, m_calls);
    Drawer late(u"late"_s, m_calls);
    m_manager.registerStylableObject(a);
    m_manager.registerStylableObject(*b);
    m_manager.registerStylableObject(*c);
    a.atStyle = [this, &b, &c, &late] {
        m_manager.unregisterStylableObject(*b);
        c.reset();
        m_manager.registerStylableObject(late);
    };
    m_manager.styleRegisteredStylableObjects();
    EXPECT_EQ(calls(), u"a:will b:will c:will a:style a:did"_s);
    EXPECT_EQ(m_manager.registeredStylableObjects(), (QList<quib::StylableObject *>{&a, &late}));
}

TEST_F(ThemeManager, AndThoseItTellsMayDieInAnyOrder)
{
    auto other = std::make_unique<QBThemeManager>();
    {
        Drawer drawer(u"a"_s, m_calls);
        other->registerStylableObject(drawer);
        m_manager.registerStylableObject(drawer);
        other.reset();
        const Drawer copy = drawer; // is registered with no one
        m_manager.styleRegisteredStylableObjects();
        EXPECT_EQ(calls(), u"a:will a:style a:did"_s);
    }
    EXPECT_TRUE(m_manager.registeredStylableObjects().isEmpty());
    m_manager.styleRegisteredStylableObjects();
    EXPECT_EQ(calls(), QString());
}

TEST_F(ThemeManager, EmptiesTheCacheAtEachChange)
{
    const auto theme = themeOf(u"a"_s, u"rgba(1, 1, 1, 1.00)"_s);
    const auto other = themeOf(u"b"_s, u"rgba(2, 2, 2, 1.00)"_s);
    const struct
    {
        const char *label;
        std::function<void()> change;
        bool restyles;
    } cases[] = {
        {"load", [&] { m_manager.loadTheme(theme); }, true},
        {"load quietly", [&] { m_manager.loadTheme(theme, false); }, false},
        {"add", [&] { m_manager.addItemFromTheme(*other); }, true},
        {"add quietly", [&] { m_manager.addItemFromTheme(*other, false); }, false},
        {"empty", [&] { m_manager.emptyCache(); }, false},
    };
    Drawer drawer(u"a"_s, m_calls);
    m_manager.registerStylableObject(drawer);
    for (const auto &change : cases) {
        SCOPED_TRACE(change.label);
        m_manager.themeCache().insert(u"key"_s, 1.0);
        const quint64 generation = m_manager.cacheGeneration();
        change.change();
        EXPECT_TRUE(m_manager.themeCache().isEmpty());
        EXPECT_NE(m_manager.cacheGeneration(), generation);
        EXPECT_EQ(!calls().isEmpty(), change.restyles);
    }
    EXPECT_EQ(m_manager.currentTheme(), theme);
    EXPECT_TRUE(m_manager.colorForKey(u"a"_s).has_value());
    EXPECT_TRUE(m_manager.colorForKey(u"b"_s).has_value());
}

TEST_F(ThemeManager, HasNothingWithoutATheme)
{
    EXPECT_EQ(m_manager.colorForKey(u"a"_s), std::nullopt);
    EXPECT_TRUE(m_manager.colorAttributeForKey(u"a"_s).isNothing());
    EXPECT_EQ(m_manager.numberForKey(u"a"_s), std::nullopt);
    EXPECT_EQ(m_manager.fontForKey(u"a"_s, 14), NSFont::systemFontOfSize(14));
    m_manager.addItemFromTheme(*themeOf(u"a"_s, u"rgba(1, 1, 1, 1.00)"_s));
    EXPECT_TRUE(m_manager.colorForKey(u"a"_s).has_value());
    m_manager.loadTheme(nullptr);
    EXPECT_EQ(m_manager.colorForKey(u"a"_s), std::nullopt);
}

TEST_F(ThemeManager, GivesColorsAsAttributesOfTheThemeInForce)
{
    m_manager.loadTheme(themeOf(u"a"_s, u"rgba(1, 2, 3, 1.00)"_s));
    const quib::AttributeValue first = m_manager.colorAttributeForKey(u"a"_s);
    EXPECT_EQ(*quib::colorOfAttribute(first), NSColor::colorFromRgbaString(u"rgba(1, 2, 3, 1.00)"));
    m_manager.loadTheme(themeOf(u"a"_s, u"rgba(4, 5, 6, 1.00)"_s));
    EXPECT_EQ(*quib::colorOfAttribute(m_manager.colorAttributeForKey(u"a"_s)),
              NSColor::colorFromRgbaString(u"rgba(4, 5, 6, 1.00)"));
}

TEST(ThemeCache, KeepsValuesOfAnyTypeByName)
{
    quib::ThemeCache cache;
    int made = 0;
    const auto make = [&made] { return ++made; };
    EXPECT_EQ(cache.value(u"a"_s, make), 1);
    EXPECT_EQ(cache.value(u"a"_s, make), 1);
    EXPECT_EQ(cache.value(u"b"_s, make), 2);
    EXPECT_EQ(cache.value<double>(u"a"_s), nullptr);
    cache.insert(u"a"_s, u"text"_s);
    EXPECT_EQ(*cache.value<QString>(u"a"_s), u"text"_s);
    cache.clear();
    EXPECT_EQ(cache.value(u"b"_s, make), 3);
}

TEST(AppThemeManager, DrawsAPictureOnceAThemeAndAState)
{
    QBNotesAppThemeManager manager;
    manager.loadDefaultTheme();
    int drawn = 0;
    const auto icon = [&](bool isSelected) {
        return manager.cachedImageForKey(u"pinIcon%1"_s.arg(isSelected), [&drawn, isSelected] {
            ++drawn;
            return quib::GraphicsContext({4, 4}, 1, NSColor::colorWithRed(isSelected ? 1 : 0, 0, 0)).image();
        });
    };
    EXPECT_EQ(icon(true), icon(true));
    EXPECT_NE(icon(true), icon(false));
    EXPECT_EQ(drawn, 2);
    manager.loadTheme(themeOf(u"Panel Icon Color"_s, u"rgba(1, 2, 3, 1.00)"_s));
    EXPECT_EQ(icon(false).pixelSize(), QSize(4, 4));
    EXPECT_EQ(drawn, 3);
}

TEST(AppThemeManager, IsSharedWhileItsOwnerKeepsIt)
{
    EXPECT_EQ(QBNotesAppThemeManager::sharedThemeManager(), nullptr);
    {
        QBNotesAppThemeManager manager;
        QBNotesAppThemeManager::setSharedThemeManager(&manager);
        EXPECT_EQ(QBNotesAppThemeManager::sharedThemeManager(), &manager);
        manager.loadDefaultTheme();
        EXPECT_EQ(
            manager.colorForKey(u"Sidebar Background Color"_s),
            QBNotesThemesManager::appThemeForThemeName(u"Red Graphite"_s)->colorForKey(u"Sidebar Background Color"_s));
    }
    EXPECT_EQ(QBNotesAppThemeManager::sharedThemeManager(), nullptr);
}

} // namespace

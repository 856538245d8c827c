// The theme files that come with the program: complete, resolved, legible, with the names they are asked for by.

#include "ThemeKeys.h"

#include <Graphics/NSColor.h>
#include <Support/QtPrinters.h>
#include <Themes/QBNotesTextThemeManager.h>
#include <Themes/QBNotesThemesManager.h>

#include <gtest/gtest.h>

#include <QRegularExpression>

#include <set>
#include <span>

using namespace Qt::StringLiterals;
using quib::tests::appColorKeys;
using quib::tests::fontKeys;
using quib::tests::numberKeys;
using quib::tests::textColorKeys;

namespace {

constexpr double kText = 4.5;
constexpr double kMark = 3;

std::shared_ptr<QBTheme> fileNamed(const QString &name)
{
    NSError error;
    auto theme = QBTheme::initWithContentOfURL(QBNotesThemesManager::urlForThemeFileName(name), &error);
    EXPECT_NE(theme, nullptr) << error.localizedDescription().toStdString();
    return theme != nullptr ? theme : std::make_shared<QBTheme>();
}

struct ThemeFiles
{
    const char *name;
    const char *app; ///< null for none
    const char *text;
};

constexpr ThemeFiles kThemes[] = {
    {"Red Graphite", "Default App Theme", "Default Text Theme"},
    {"High Contrast", "Contrasted App Theme", "Contrasted Text Theme"},
    {"Dark Graphite", "Dark Graphite App Theme", "Dark Graphite Text Theme"},
    {"Charcoal", "Night App Theme", "Night Text Theme"},
    {"Solarized Light", "Solarized Light App Theme", "Solarized Light Text Theme"},
    {"Solarized Dark", "Solarized Dark App Theme", "Solarized Dark Text Theme"},
    {"Panic Mode", "Panic App Theme", "Panic Text Theme"},
    {"Gotham", "Gotham App Theme", "Gotham Text Theme"},
    {"Dracula", "Dracula App Theme", "Dracula Text Theme"},
    {"Toothpaste", "Toothpaste App Theme", "Toothpaste Text Theme"},
    {"Cobalt", "Cobalt App Theme", "Cobalt Text Theme"},
    {"Duotone Light", "Duotone Light App Theme", "Duotone Light Theme"},
    {"Duotone Snow", "Duotone Snow App Theme", "Duotone Snow Theme"},
    {"Duotone Heat", "Duotone Heat App Theme", "Duotone Heat Text Theme"},
    {"Dieci", "Dieci App Theme", "Dieci Theme"},
    {"Ayu", "Ayu App Theme", "Ayu Text Theme"},
    {"Print", nullptr, "Print Text Theme"},
};

constexpr const char *kFontThemes[][2] = {
    {"System", "System Font Theme"},
    {"Avenir Next", "Avenir Next Font Theme"},
    {"Helvetica Neue", "Helvetica Neue Font Theme"},
    {"Menlo", "Menlo"},
    {"Georgia", "Georgia"},
    {"Courier", "Courier"},
    {"Open Dyslexic", "Open Dyslexic"},
};

/// Every key once, each a colour with whole components, variables before their uses.
void expectColorFile(const QBTheme &theme, const QStringList &keys)
{
    static const QRegularExpression rgba(uR"(^rgba\((\d+), (\d+), (\d+), [01]\.\d\d\)$)"_s);
    std::set<QString> found;
    for (const auto &item : theme.themeItems()) {
        SCOPED_TRACE(item->key().toStdString());
        EXPECT_EQ(item->kind(), u"color"_s);
        EXPECT_TRUE(item->color().has_value());
        const QString proxy = item->proxyValue().toString();
        const QRegularExpressionMatch match = rgba.match(proxy);
        ASSERT_TRUE(match.hasMatch()) << proxy.toStdString();
        for (int component = 1; component <= 3; ++component) {
            EXPECT_LE(match.captured(component).toInt(), 255);
        }
        if (!item->isVariable()) {
            found.insert(item->key());
        }
    }
    EXPECT_EQ(found, std::set<QString>(keys.begin(), keys.end()));
    EXPECT_EQ(theme.themeItems().size(), theme.mappingDictionary().size());
}

/// The ratio of a colour over a background, which may itself be laid over another.
double contrast(const QBTheme &theme, const char *text, const char *background, const char *under)
{
    const NSColor below = theme.colorForKey(QString::fromLatin1(under)).value_or(NSColor());
    const NSColor behind = theme.colorForKey(QString::fromLatin1(background)).value_or(NSColor());
    return theme.colorForKey(QString::fromLatin1(text))
        .value_or(NSColor())
        .contrastRatioOnBackground(behind.colorOverBackground(below));
}

struct Pair
{
    const char *text;
    const char *background;
    double ratio;
};

void expectLegible(const QBTheme &theme, std::span<const Pair> pairs, const char *under)
{
    for (const Pair &pair : pairs) {
        EXPECT_GE(contrast(theme, pair.text, pair.background, under), pair.ratio)
            << pair.text << " on " << pair.background;
    }
}

constexpr const char *kPaper = "Background Text Color";

constexpr Pair kTextPairs[] = {
    {"Base Text Color", kPaper, kText},
    {"Light Text Color", kPaper, kText},
    {"Title Text Color", kPaper, kText},
    {"Link Text Color", kPaper, kText},
    {"Hashtag Text Color", kPaper, kText},
    {"Hashtag Text Color", "Hashtag Background Color", kText},
    {"Hashtag Text Color", "Hashtag Selected Background Color", kText},
    {"Accent Text Color", kPaper, kText},
    {"Map Text Color", kPaper, kText},
    {"Invalid Character Color", kPaper, kText},
    {"Base Text Color", "Selected Text Background Color", kText},
    {"Base Text Color", "Selected Text Inactive Background Color", kText},
    {"Base Text Color", "Highlighter Background Color", kText},
    {"Title Text Color", "Highlighter Background Color", kText},
    {"Code Font Color", "Code Background Color", kText},
    {"Base Text Color", "Code Background Color", kText},
    {"Syntax String", "Code Background Color", kText},
    {"Syntax Comment", "Code Background Color", kText},
    {"Syntax Number", "Code Background Color", kText},
    {"Syntax Keyword", "Code Background Color", kText},
    {"Syntax Character", "Code Background Color", kText},
    {"Syntax Preprocessor", "Code Background Color", kText},
    {"Checkbox Check Color", "Checkbox Fill Color", kText},
    {"Hashtag Marker Text Color", kPaper, kMark},
    {"Hashtag Marker Text Color", "Hashtag Background Color", kMark},
    {"Hashtag Marker Text Color", "Hashtag Selected Background Color", kMark},
    {"Separator Text Color", kPaper, kMark},
    {"Style Marker Text Color", kPaper, kMark},
    {"Style Marker Text Color", "Code Background Color", kMark},
    {"Highlighter Marker Color", "Highlighter Background Color", kMark},
    {"Checkbox Stroke Color", kPaper, kMark},
    {"Insertion Point Color", kPaper, kMark},
};

constexpr const char *kList = "Note Table View Background Color";
constexpr const char *kSelected = "Note Table Cell Selected Background Color";
constexpr const char *kSelectedInactive = "Note Table Cell Selected Background Inactive Color";
constexpr const char *kField = "Note Table Search Background Color";
constexpr const char *kSide = "Sidebar Background Color";
constexpr const char *kSideSelected = "Sidebar Cell Selected Background Color";
constexpr const char *kSideSelectedInactive = "Sidebar Cell Selected Background Inactive Color";
constexpr const char *kPanel = "Panel Background Color";
constexpr const char *kCell = "iOS Preferences Panel Table Default Cell Background Color";
constexpr const char *kPhoneField = "iOS Navigation Search Bar Search Field Background Color";
constexpr const char *kModal = "iOS Modal Panel Background Color";

constexpr Pair kAppPairs[] = {
    {"Note Table Cell Title Color", kList, kText},
    {"Note Table Cell Title Color", kSelected, kText},
    {"Note Table Cell Title Color", kSelectedInactive, kText},
    {"Note Table Cell Title Empty Color", kList, kText},
    {"Note Table Cell Title Empty Color", kSelected, kText},
    {"Note Table Cell Title Empty Color", kSelectedInactive, kText},
    {"Note Table Cell Subtitle Color", kList, kText},
    {"Note Table Cell Subtitle Color", kSelected, kText},
    {"Note Table Cell Subtitle Color", kSelectedInactive, kText},
    {"Note Table Cell Search Text Color", "Note Table Cell Search Background Color", kText},
    {"Note Table Search Text Color", kField, kText},
    {"Note Table Seach Selected Text Color", "Note Table Search Selected Text Background Color", kText},
    {"Note Table Search Placeholder Text Color", kField, kText},
    {"Sidebar Cell Text Color", kSide, kText},
    {"Sidebar Cell Selected Text Color", kSideSelected, kText},
    {"Sidebar Cell Selected Text Color", kSideSelectedInactive, kText},
    {"Panel Text Color", kPanel, kText},
    {"Panel Text Highlight Color", kPanel, kText},
    {"Panel Label Color", kPanel, kText},
    {"iOS Note Table Add Note Foreground Color", "iOS Note Table Add Note Background Color", kText},
    {"iOS Note Table Add Note Foreground Active Color", "iOS Note Table Add Note Background Active Color", kText},
    {"iOS Note Table Cell Normal Swipe Actions Foreground Color",
     "iOS Note Table Cell Normal Swipe Actions Background Color", kText},
    {"iOS Note Table Cell Alert Swipe Actions Foreground Color",
     "iOS Note Table Cell Alert Swipe Actions Background Color", kText},
    {"iOS Navigation Title Color", "iOS Navigation Background Color", kText},
    {"iOS Navigation Title Accent Color", "iOS Navigation Background Color", kText},
    {"iOS Navigation Sidebar Title Color", "iOS Navigation Sidebar Background Color", kText},
    {"iOS Navigation Search Bar Text Color", kPhoneField, kText},
    {"iOS Navigation Search Bar Placeholder Color", kPhoneField, kText},
    {"iOS Preferences Panel Table Default Cell Foreground Color", kCell, kText},
    {"iOS Preferences Panel Table Default Cell Status Color", kCell, kText},
    {"iOS Preferences Panel Table Default Cell Accent Color", kCell, kText},
    {"iOS Preferences Panel Table Header Cell Foreground Color",
     "iOS Preferences Panel Table Header Cell Background Color", kText},
    {"iOS Image Lightbox Button Foreground Color", "iOS Image Lightbox Button Background Color", kText},
    {"iOS Image Lightbox Button Foreground Active Color", "iOS Image Lightbox Button Background Active Color", kText},
    {"iOS Extension Export Button Foreground Color", kModal, kText},
    {"iOS Extension Export Button Foreground Active Color", kModal, kText},
    {"iOS Extension Bottom Button Foreground Color", kModal, kText},
    {"iOS Modal Panel Foreground Color", kModal, kText},
    {"iOS Modal Panel Navigation Title Color", "iOS Modal Panel Navigation Background Color", kText},
    {"iOS Modal Panel Navigation Button Color", "iOS Modal Panel Navigation Background Color", kText},
    {"iOS Modal Panel Navigation Button Active Color", "iOS Modal Panel Navigation Background Color", kText},
    {"iOS Modal Panel Default Button Foreground Color", "iOS Modal Panel Default Button Background Color", kText},
    {"iOS Modal Panel Default Button Foreground Active Color", "iOS Modal Panel Default Button Background Active Color",
     kText},
    {"iOS Modal Panel Common Button Foreground Color", "iOS Modal Panel Common Button Background Color", kText},
    {"iOS Modal Panel Common Button Foreground Active Color", "iOS Modal Panel Common Button Background Active Color",
     kText},
    {"Style Editor Selected Icon Color", "Style Editor Selected Background Color", kText},
    {"Note Table Separator Color", kList, kMark},
    {"Split View Note Table Separator Color", kList, kMark},
    {"Split View Sidebar Separator Color", kSide, kMark},
    {"Panel Separator Color", kPanel, kMark},
    {"iOS Preferences Panel Table Separator Color", kCell, kMark},
    {"Note Table Cell Selected Ribbon Color", kSelected, kMark},
    {"Note Table Cell Selected Ribbon Inactive Color", kSelectedInactive, kMark},
    {"Note Table Cell Todo Percentage Color", kList, kMark},
    {"Note Table Cell Todo Percentage Color", kSelected, kMark},
    {"Note Table Cell Todo Percentage Complete Color", kList, kMark},
    {"Note Table Cell Todo Percentage Complete Color", kSelected, kMark},
    {"Note Table Cell Pin Icon Color", kList, kMark},
    {"Note Table Cell Pin Icon Color", kSelected, kMark},
    {"Note Table Add Note Icon Color", kList, kMark},
    {"Note Table Add Note Icon Active Color", kList, kMark},
    {"Note Table Search Insertion Point Color", kField, kMark},
    {"Note Table Search Border Color", kList, kMark},
    {"Note Table Search Selected Border Color", kList, kMark},
    {"Note Table Search Search Icon Color", kField, kMark},
    {"Note Table Search Cancel Icon Background Color", kField, kMark},
    {"Sidebar Cell Icon Color", kSide, kMark},
    {"Sidebar Cell Icon Light Color", kSide, kMark},
    {"Sidebar Cell Icon Selected Color", kSideSelected, kMark},
    {"Sidebar Cell Icon Selected Color", kSideSelectedInactive, kMark},
    {"Panel Icon Color", kPanel, kMark},
    {"Panel Icon Light Color", kPanel, kMark},
    {"Panel Icon Active Color", kPanel, kMark},
    {"Style Editor Icon Color", kPanel, kMark},
    {"Style Editor Icon Accent Color", kPanel, kMark},
    {"Placeholder Quib Nose Color", "Placeholder Quib Fur Color", kMark},
};

class ThemeFile : public testing::TestWithParam<ThemeFiles>
{
};

TEST_P(ThemeFile, HasEveryTextColorResolved)
{
    expectColorFile(*fileNamed(QString::fromLatin1(GetParam().text)), textColorKeys());
}

TEST_P(ThemeFile, HasLegibleText)
{
    const auto theme = fileNamed(QString::fromLatin1(GetParam().text));
    EXPECT_TRUE(theme->colorForKey(QString::fromLatin1(kPaper)).value_or(NSColor::clearColor()).isOpaque());
    expectLegible(*theme, kTextPairs, kPaper);
}

TEST_P(ThemeFile, HasEveryAppColorResolved)
{
    if (GetParam().app != nullptr) {
        expectColorFile(*fileNamed(QString::fromLatin1(GetParam().app)), appColorKeys());
    }
}

TEST_P(ThemeFile, HasALegibleInterface)
{
    if (GetParam().app != nullptr) {
        expectLegible(*fileNamed(QString::fromLatin1(GetParam().app)), kAppPairs, kList);
    }
}

TEST_P(ThemeFile, IsWhatItsNameStandsFor)
{
    const QString name = QString::fromLatin1(GetParam().name);
    EXPECT_EQ(QBNotesThemesManager::textThemeFileNameForThemeName(name), QString::fromLatin1(GetParam().text));
    const auto text = QBNotesThemesManager::textThemeForThemeName(name, u"Georgia"_s);
    EXPECT_EQ(text->colorForKey(u"Base Text Color"_s),
              fileNamed(QString::fromLatin1(GetParam().text))->colorForKey(u"Base Text Color"_s));
    EXPECT_EQ(text->themeItemForKey(u"Paragraph Font"_s)->value().toString(), u"Georgia"_s);
    if (GetParam().app != nullptr) {
        EXPECT_EQ(QBNotesThemesManager::appThemeFileNameForThemeName(name), QString::fromLatin1(GetParam().app));
        EXPECT_EQ(QBNotesThemesManager::appThemeForThemeName(name)->colorForKey(QString::fromLatin1(kSide)),
                  fileNamed(QString::fromLatin1(GetParam().app))->colorForKey(QString::fromLatin1(kSide)));
    }
}

INSTANTIATE_TEST_SUITE_P(All, ThemeFile, testing::ValuesIn(kThemes),
                         [](const testing::TestParamInfo<ThemeFiles> &theme) {
                             return QString::fromLatin1(theme.param.name).remove(u' ').toStdString();
                         });

TEST(ThemeNames, AreOfferedInOrder)
{
    QStringList names;
    for (const ThemeFiles &theme : kThemes) {
        if (theme.app != nullptr) {
            names.append(QString::fromLatin1(theme.name));
        }
    }
    EXPECT_EQ(QBNotesThemesManager::availableThemesNames(), names);
    QStringList fontNames;
    for (const auto &theme : kFontThemes) {
        fontNames.append(QString::fromLatin1(theme[0]));
    }
    EXPECT_EQ(QBNotesThemesManager::availableFontThemesNames(), fontNames);
}

TEST(ThemeNames, FallBackToTheDefault)
{
    EXPECT_EQ(QBNotesThemesManager::defaultThemeName(), u"Red Graphite"_s);
    EXPECT_EQ(QBNotesThemesManager::defaultTextThemeName(), u"Red Graphite"_s);
    EXPECT_EQ(QBNotesThemesManager::defaultFontThemeName(), u"Avenir Next"_s);
    for (const QString &name : {QString(), u"Nosuch"_s, u"red graphite"_s, u"../Default App Theme"_s}) {
        EXPECT_EQ(QBNotesThemesManager::appThemeFileNameForThemeName(name), u"Default App Theme"_s);
        EXPECT_EQ(QBNotesThemesManager::textThemeFileNameForThemeName(name), u"Default Text Theme"_s);
        EXPECT_EQ(QBNotesThemesManager::fontThemeFileNameForThemeName(name), u"Avenir Next Font Theme"_s);
    }
    // There is no print theme of the application.
    EXPECT_EQ(QBNotesThemesManager::appThemeFileNameForThemeName(u"Print"_s), u"Default App Theme"_s);
}

TEST(ThemeNames, NameTheIcon)
{
    EXPECT_EQ(QBNotesThemesManager::appIconNameForThemeName(QString()), u"AppIcon"_s);
    EXPECT_EQ(QBNotesThemesManager::appIconNameForThemeName(u"Red Graphite"_s), u"AppIcon"_s);
    EXPECT_EQ(QBNotesThemesManager::appIconNameForThemeName(u"Ayu"_s), u"AppIcon Ayu"_s);
}

TEST(FontThemes, HaveEveryFontAndNumber)
{
    for (const auto &[name, file] : kFontThemes) {
        SCOPED_TRACE(name);
        EXPECT_EQ(QBNotesThemesManager::fontThemeFileNameForThemeName(QString::fromLatin1(name)),
                  QString::fromLatin1(file));
        const auto theme = fileNamed(QString::fromLatin1(file));
        EXPECT_EQ(theme->themeItems().size(), fontKeys().size() + numberKeys().size());
        for (const QString &key : fontKeys()) {
            EXPECT_TRUE(theme->fontForKeyIfAny(key, 12).has_value()) << key.toStdString();
        }
        for (const QString &key : numberKeys()) {
            EXPECT_TRUE(theme->numberForKey(key).has_value()) << key.toStdString();
        }
    }
}

TEST(FontThemes, GiveReadableText)
{
    for (const QString &name : QBNotesThemesManager::availableFontThemesNames()) {
        SCOPED_TRACE(name.toStdString());
        QBNotesTextThemeManager manager;
        manager.loadTheme(QBNotesThemesManager::textThemeForThemeName(u"Red Graphite"_s, name));
        // Lines have room for the letters, headers go down in size, and code stands in columns.
        EXPECT_GE(manager.paragraphLineSpacing(), 0);
        EXPECT_GT(manager.h1FontSize(), manager.h2FontSize());
        EXPECT_GT(manager.h2FontSize(), manager.h3FontSize());
        EXPECT_GT(manager.h3FontSize(), manager.paragraphFontSize());
        EXPECT_NEAR(manager.monospaceFont().advanceOfText(u"iiii"), manager.monospaceFont().advanceOfText(u"MMMM"),
                    0.1);
        EXPECT_TRUE(manager.h1Font().traits().isBold);
        EXPECT_TRUE(manager.paragraphBoldFont().traits().isBold);
        EXPECT_TRUE(manager.paragraphItalicFont().traits().isItalic);
        // A column of 45 to 90 letters is what the eye follows.
        const QString sample = u"the quick brown fox jumps over the lazy dog "_s;
        const double letters = manager.textColumnMaxSize() / manager.paragraphFont().advanceOfText(sample) * 44;
        EXPECT_GE(letters, 45);
        EXPECT_LE(letters, 100);
    }
}

} // namespace

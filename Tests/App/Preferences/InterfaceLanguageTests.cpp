// Which language the interface speaks, and what it says.

#include <Preferences/InterfaceLanguage.h>
#include <Support/QtPrinters.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QSet>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

QString countOfNotes(int count)
{
    return QCoreApplication::translate("quib::NoteListView", "%n notes", nullptr, count);
}

TEST(InterfaceLanguage, IsTheFirstOfTheDesktopsThatThereIs)
{
    EXPECT_EQ(InterfaceLanguage::availableNames(),
              (QStringList{u"ar"_s, u"de"_s, u"en"_s, u"es"_s, u"fr"_s, u"it"_s, u"ja"_s}));
    const std::pair<QStringList, QString> cases[] = {
        {{u"de-AT"_s, u"de"_s}, u"de"_s},
        {{u"de_CH"_s}, u"de"_s},
        {{u"nl-NL"_s, u"nl"_s, u"fr-BE"_s}, u"fr"_s},
        {{u"en-GB"_s, u"en"_s, u"de"_s}, u"en"_s}, // who reads English first does not want the second one
        {{u"C"_s}, u"en"_s},
        {{u"tlh"_s}, u"en"_s},
        {{u""_s}, u"en"_s},
        {{}, u"en"_s},
        {{u"ar-EG"_s}, u"ar"_s},
        {{u"ja-Jpan-JP"_s}, u"ja"_s},
        {{u"../../de"_s}, u"en"_s},
    };
    for (const auto &[languages, name] : cases) {
        EXPECT_EQ(InterfaceLanguage(languages).name(), name) << languages.join(u' ').toStdString();
    }
}

TEST(InterfaceLanguage, HoldsWhileItLives)
{
    const auto quit = [] { return QCoreApplication::translate("QBMainWindowController", "Quit"); };
    {
        const InterfaceLanguage language({u"it"_s});
        EXPECT_EQ(quit(), u"Esci"_s);
        EXPECT_EQ(QCoreApplication::translate("Sidebar", "Trash"), u"Cestino"_s);
    }
    EXPECT_EQ(quit(), u"Quit"_s);
}

TEST(InterfaceLanguage, RunsFromRightToLeftInArabic)
{
    ASSERT_FALSE(QGuiApplication::isRightToLeft());
    {
        const InterfaceLanguage language({u"ar"_s});
        EXPECT_TRUE(QGuiApplication::isRightToLeft());
    }
    EXPECT_FALSE(QGuiApplication::isRightToLeft());
}

TEST(InterfaceLanguage, CountsAsItsLanguageDoes)
{
    struct Case
    {
        QString language;
        int count;
        QString text;
    };
    const Case cases[] = {
        {u"en"_s, 1, u"1 note"_s},       {u"en"_s, 0, u"0 notes"_s},      {u"en"_s, 2, u"2 notes"_s},
        {u"fr"_s, 0, u"0 note"_s},       {u"fr"_s, 2, u"2 notes"_s},      {u"de"_s, 0, u"0 Notizen"_s},
        {u"ja"_s, 1, u"ノート 1 件"_s},  {u"it"_s, 21, u"21 note"_s},     {u"ar"_s, 0, u"بلا ملاحظات"_s},
        {u"ar"_s, 1, u"ملاحظة واحدة"_s}, {u"ar"_s, 2, u"ملاحظتان"_s},     {u"ar"_s, 3, u"3 ملاحظات"_s},
        {u"ar"_s, 11, u"11 ملاحظة"_s},   {u"ar"_s, 100, u"100 ملاحظة"_s}, {u"ar"_s, 103, u"103 ملاحظات"_s},
    };
    for (const Case &each : cases) {
        const InterfaceLanguage language({each.language});
        EXPECT_EQ(countOfNotes(each.count), each.text);
    }
}

TEST(InterfaceLanguage, HasTheToolkitSpeakItToo)
{
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (!QFileInfo::exists(QString(folder % u"/qtbase_de.qm"_s))) {
        GTEST_SKIP() << "the toolkit's translations are not installed";
    }
    const InterfaceLanguage language({u"de"_s});
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), u"Abbrechen"_s);
}

} // namespace

} // namespace quib::tests

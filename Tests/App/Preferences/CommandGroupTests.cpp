// How the overview of shortcuts reads a menu bar.

#include <Preferences/CommandGroup.h>
#include <Support/QtPrinters.h>

#include <gtest/gtest.h>

#include <QAction>
#include <QMenu>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

TEST(CommandGroups, LeaveOutTheMarksOfAccessKeys)
{
    const std::pair<QString, QString> cases[] = {
        {u"&File"_s, u"File"_s},
        {u"F&ormat"_s, u"Format"_s},
        {u"ファイル(&F)"_s, u"ファイル"_s},
        {u"Search && Find"_s, u"Search & Find"_s},
        {u"(a)"_s, u"(a)"_s},
        {u"End &"_s, u"End "_s},
        {u"(&"_s, u"("_s},
    };
    for (const auto &[text, plain] : cases) {
        EXPECT_EQ(textWithoutMnemonic(text), plain);
    }
}

TEST(CommandGroups, HaveEachCommandOnceAndThoseOfInnerMenus)
{
    QMenuBar bar;
    QMenu *file = bar.addMenu(u"&File"_s);
    QAction *open = file->addAction(u"Open"_s);
    file->addSeparator();
    QMenu *recent = file->addMenu(u"Recent"_s);
    QAction *first = recent->addAction(u"First"_s);
    bar.addMenu(u"Empty"_s)->addSeparator();
    QMenu *note = bar.addMenu(u"&Note"_s);
    note->addAction(open);
    QAction *pin = note->addAction(u"Pin"_s);
    const QList<CommandGroup> groups = commandGroupsOfMenuBar(bar);
    ASSERT_EQ(groups.size(), 2);
    EXPECT_EQ(groups[0].title, u"File"_s);
    EXPECT_EQ(groups[0].commands, (QList<QAction *>{open, first}));
    EXPECT_EQ(groups[1].title, u"Note"_s);
    EXPECT_EQ(groups[1].commands, (QList<QAction *>{pin}));
}

} // namespace

} // namespace quib::tests

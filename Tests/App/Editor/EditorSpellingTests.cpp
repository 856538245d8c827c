// Misspelt words in the editor's pane: their marks, and what the context menu offers for them.

#include "EditorPaneFixture.h"

#include <Platform/Spelling/SpellingFixture.h>
#include <Spelling/SpellingService.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Support/HandQueue.h>

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace quib::tests {

class EditorSpelling : public EditorPaneFixture
{
protected:
    EditorSpelling()
        : service(words.options(), workQueue, answerQueue)
    {
        SpellingService::setSharedService(&service);
    }
    void settle()
    {
        for (int turn = 0; turn < 6; ++turn) {
            clock.advance(0.25);
            processEvents();
            workQueue->run();
            answerQueue->run();
        }
    }
    [[nodiscard]] QString misspelt()
    {
        QStringList found;
        for (const NSRange mark : view().spellingMarks()) {
            found.append(view().textStorage().string().sliced(mark.location, mark.length).toString());
        }
        return found.join(u' ');
    }
    /// Opens the menu at a place; gives the entries before words are found and after, and runs the one of that text.
    std::pair<QStringList, QStringList> menuAt(qint64 location, const QString &entry = {})
    {
        view().setSelectedRange({location, 0});
        std::pair<QStringList, QStringList> entries;
        QTimer::singleShot(0, [&] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            const auto texts = [menu] {
                QStringList all;
                for (const QAction *action : menu->actions()) {
                    all.append(action->text());
                }
                return all;
            };
            entries.first = texts();
            workQueue->run();
            answerQueue->run();
            entries.second = texts();
            const auto actions = menu->actions();
            menu->close();
            for (QAction *action : actions) {
                if (action->text() == entry) {
                    action->trigger();
                }
            }
        });
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QApplication::sendEvent(view().viewport(), &event);
        return entries;
    }

    SpellingFolder words;
    std::shared_ptr<HandQueue> workQueue = std::make_shared<HandQueue>();
    std::shared_ptr<HandQueue> answerQueue = std::make_shared<HandQueue>();
    SpellingService service;
};

TEST_F(EditorSpelling, MarksWhatIsMisspeltInTheNoteThatIsShown)
{
    show(u"the quick brwon fox"_s);
    settle();
    EXPECT_EQ(misspelt(), u"brwon"_s);
    type(u" jmup"_s);
    settle();
    EXPECT_EQ(misspelt(), u"brwon"_s) << "it is being typed";
    type(u" "_s);
    settle();
    EXPECT_EQ(misspelt(), u"brwon jmup"_s);
    show(u"over the lzay dog"_s);
    settle();
    EXPECT_EQ(misspelt(), u"lzay"_s);
    QBNotesPreferenceManager::sharedPreferenceManager()->setSpellCheckingEnabled(false);
    EXPECT_EQ(misspelt(), u""_s);
    QBNotesPreferenceManager::sharedPreferenceManager()->setSpellCheckingEnabled(true);
    settle();
    EXPECT_EQ(misspelt(), u"lzay"_s);
}

TEST_F(EditorSpelling, OffersOtherWordsAndPutsThemIn)
{
    show(u"the quick brwon fox"_s);
    settle();
    const auto [before, after] = menuAt(12, u"brown"_s);
    EXPECT_TRUE(before.contains(u"Looking for Words…"_s)) << before.join(u'|').toStdString();
    EXPECT_EQ(after.first(), u"brown"_s) << after.join(u'|').toStdString();
    EXPECT_FALSE(after.contains(u"Looking for Words…"_s));
    EXPECT_EQ(shown(), u"the quick brown fox"_s);
    settle();
    EXPECT_EQ(misspelt(), u""_s);
    view().undo();
    EXPECT_EQ(shown(), u"the quick brwon fox"_s);
    view().setSelectedRange({0, 0});
    settle();
    EXPECT_EQ(misspelt(), u"brwon"_s);
    EXPECT_FALSE(menuAt(1).first.contains(u"Looking for Words…"_s)) << "that word is right";
}

TEST_F(EditorSpelling, TakesAWordForRightWhenItIsTold)
{
    show(u"the brwon fox jmup over"_s);
    settle();
    menuAt(5, u"Add “brwon” to the Dictionary"_s);
    settle();
    EXPECT_EQ(misspelt(), u"jmup"_s);
    EXPECT_EQ(words.folder.read(u"own/words.txt"_s), "brwon\n");
    menuAt(16, u"Ignore “jmup”"_s);
    settle();
    EXPECT_EQ(misspelt(), u""_s);
    EXPECT_EQ(words.folder.read(u"own/words.txt"_s), "brwon\n");
}

} // namespace quib::tests

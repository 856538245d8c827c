#include <Text/NSUndoManager.h>

#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QStringList>

using namespace Qt::StringLiterals;
using quib::tests::TestSeed;

namespace {

/// A list of numbers whose changes can be undone.
class UndoableList
{
public:
    NSUndoManager undoManager;
    std::vector<int> values;

    void push(int value)
    {
        values.push_back(value);
        undoManager.registerUndo([this] { pop(); });
    }
    void pop()
    {
        const int value = values.back();
        values.pop_back();
        undoManager.registerUndo([this, value] { push(value); });
    }
};

using Values = std::vector<int>;

} // namespace

TEST(NSUndoManager, UndoesAndRedoesOneActionAfterTheOther)
{
    UndoableList list;
    list.push(1);
    list.push(2);
    list.undoManager.undo();
    EXPECT_EQ(list.values, (Values{1}));
    list.undoManager.undo();
    list.undoManager.undo();
    EXPECT_EQ(list.values, Values{});
    EXPECT_FALSE(list.undoManager.canUndo());
    list.undoManager.redo();
    list.undoManager.redo();
    list.undoManager.redo();
    EXPECT_EQ(list.values, (Values{1, 2}));
    EXPECT_FALSE(list.undoManager.canRedo());
}

TEST(NSUndoManager, GroupsAreUndoneAsOneInReverseOrder)
{
    UndoableList list;
    list.push(1);
    list.undoManager.beginUndoGrouping();
    list.pop();
    list.push(2);
    list.undoManager.beginUndoGrouping();
    list.push(3);
    list.undoManager.endUndoGrouping();
    list.undoManager.endUndoGrouping();
    EXPECT_EQ(list.values, (Values{2, 3}));
    list.undoManager.undo();
    EXPECT_EQ(list.values, (Values{1}));
    list.undoManager.redo();
    EXPECT_EQ(list.values, (Values{2, 3}));
}

TEST(NSUndoManager, AnEmptyGroupLeavesNothing)
{
    NSUndoManager manager;
    manager.beginUndoGrouping();
    manager.endUndoGrouping();
    EXPECT_FALSE(manager.canUndo());
}

TEST(NSUndoManager, UndoingClosesAnOpenGroupButNotAnInnerOne)
{
    UndoableList list;
    list.undoManager.beginUndoGrouping();
    list.push(1);
    list.undoManager.beginUndoGrouping();
    list.undoManager.undo();
    EXPECT_EQ(list.values, (Values{1}));
    list.undoManager.endUndoGrouping();
    list.undoManager.undo();
    EXPECT_EQ(list.values, Values{});
    EXPECT_EQ(list.undoManager.groupingLevel(), 0);
}

TEST(NSUndoManager, ANewActionEndsRedoing)
{
    UndoableList list;
    list.push(1);
    list.undoManager.undo();
    list.push(2);
    EXPECT_FALSE(list.undoManager.canRedo());
    list.undoManager.undo();
    EXPECT_EQ(list.values, Values{});
}

TEST(NSUndoManager, TellsWhatItIsDoing)
{
    NSUndoManager manager;
    QStringList seen;
    std::function<void()> action = [&] {
        seen.append(manager.isUndoing() ? u"undoing"_s : manager.isRedoing() ? u"redoing"_s : u"neither"_s);
        manager.registerUndo(action);
        // Neither goes on within itself.
        manager.undo();
        manager.redo();
    };
    manager.registerUndo(action);
    manager.undo();
    manager.redo();
    manager.undo();
    EXPECT_EQ(seen, (QStringList{u"undoing"_s, u"redoing"_s, u"undoing"_s}));
    EXPECT_FALSE(manager.isUndoing() || manager.isRedoing());
}

TEST(NSUndoManager, NamesFollowTheirGroupFromOneStackToTheOther)
{
    UndoableList list;
    list.push(1);
    list.undoManager.setActionName(u"Push"_s);
    list.undoManager.beginUndoGrouping();
    list.undoManager.setActionName(u"Group"_s);
    list.push(2);
    list.undoManager.endUndoGrouping();
    EXPECT_EQ(list.undoManager.undoActionName(), u"Group"_s);
    list.undoManager.undo();
    EXPECT_EQ(list.undoManager.undoActionName(), u"Push"_s);
    EXPECT_EQ(list.undoManager.redoActionName(), u"Group"_s);
    list.undoManager.redo();
    EXPECT_EQ(list.undoManager.undoActionName(), u"Group"_s);
}

TEST(NSUndoManager, KeepsSoManyLevels)
{
    UndoableList list;
    list.undoManager.setLevelsOfUndo(2);
    for (int value = 1; value <= 4; ++value) {
        list.push(value);
    }
    for (int count = 0; count < 4; ++count) {
        list.undoManager.undo();
    }
    EXPECT_EQ(list.values, (Values{1, 2}));
    list.undoManager.setLevelsOfUndo(1);
    list.undoManager.redo();
    list.undoManager.redo();
    EXPECT_EQ(list.values, (Values{1, 2, 3}));
}

TEST(NSUndoManager, RegistersNothingWhileDisabled)
{
    UndoableList list;
    list.undoManager.disableUndoRegistration();
    list.push(1);
    list.undoManager.enableUndoRegistration();
    EXPECT_FALSE(list.undoManager.canUndo());
}

TEST(NSUndoManager, ATargetTakesItsActionsBack)
{
    NSUndoManager manager;
    QStringList done;
    const int target = 0;
    manager.beginUndoGrouping();
    manager.registerUndoWithTarget(&target, [&] { done.append(u"gone"_s); });
    manager.registerUndo([&] { done.append(u"kept"_s); });
    manager.endUndoGrouping();
    manager.registerUndoWithTarget(&target, [&] { done.append(u"gone too"_s); });
    manager.removeAllActionsWithTarget(&target);
    manager.undo();
    EXPECT_EQ(done, (QStringList{u"kept"_s}));
    manager.registerUndo([] {});
    manager.removeAllActions();
    EXPECT_FALSE(manager.canUndo() || manager.canRedo());
}

TEST(NSUndoManager, TellsItsObserversInOrder)
{
    using Event = NSUndoManager::Event;
    NSUndoManager manager;
    std::vector<Event> events;
    const auto token = manager.observe([&](Event event) {
        if (event != Event::Checkpoint) {
            events.push_back(event);
        }
    });
    manager.registerUndo([] {});
    manager.undo();
    EXPECT_EQ(events, (std::vector{Event::DidOpenUndoGroup, Event::WillCloseUndoGroup, Event::DidCloseUndoGroup,
                                   Event::WillUndoChange, Event::DidOpenUndoGroup, Event::WillCloseUndoGroup,
                                   Event::DidCloseUndoGroup, Event::DidUndoChange}));
}

TEST(NSUndoManager, WalksThroughAHistoryOfStates)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    UndoableList list;
    // The states in order, and where the list stands among them.
    std::vector<Values> history{{}};
    size_t now = 0;
    for (int step = 0; step < 3000; ++step) {
        const auto choice = random() % 4;
        if (choice == 0) {
            list.undoManager.undo();
            now -= now > 0 ? 1U : 0U;
        } else if (choice == 1) {
            list.undoManager.redo();
            now += now + 1 < history.size() ? 1U : 0U;
        } else {
            list.undoManager.beginUndoGrouping();
            for (size_t left = 1 + random() % 3; left > 0; --left) {
                if (list.values.empty() || random() % 2 == 0) {
                    list.push(static_cast<int>(random() % 100));
                } else {
                    list.pop();
                }
            }
            list.undoManager.endUndoGrouping();
            history.resize(++now);
            history.push_back(list.values);
        }
        ASSERT_EQ(list.values, history[now]);
        ASSERT_EQ(list.undoManager.canUndo(), now > 0);
        ASSERT_EQ(list.undoManager.canRedo(), now + 1 < history.size());
    }
}

#include <Markup/Editing/QBEditorStateController.h>

#include <Support/FakeClock.h>
#include <Text/NSUndoManager.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

TEST(EditorStateTest, HoldsForFifteenMinutes)
{
    QBEditorState state;
    state.date = NSDate::dateWithTimeIntervalSince1970(1'500'000'000);
    const struct
    {
        double seconds;
        bool isValid;
    } cases[] = {{0, true},         {15 * 60, true},      {15 * 60 + 59, true}, {15 * 60 + 59.999, true},
                 {16 * 60, false},  {16 * 60 + 1, false}, {1e9, false},         {-60, true},
                 {-16 * 60, false}, {-1e9, false}};
    for (const auto &[seconds, isValid] : cases) {
        EXPECT_EQ(state.isValidForDate(state.date.dateByAddingTimeInterval(seconds)), isValid) << seconds;
    }
}

TEST(EditorStateTest, HoldsForTheTextThatItWasTakenFromOnly)
{
    MRVectorClock clock;
    clock.updateClockValueForID(u"here"_s);
    QBEditorState state;
    EXPECT_FALSE(state.isValidForVectorClock(clock));
    EXPECT_FALSE(state.isValidForVectorClock(MRVectorClock()));
    state.vectorClock = clock;
    EXPECT_TRUE(state.isValidForVectorClock(clock));
    MRVectorClock newer = clock;
    newer.updateClockValueForID(u"here"_s);
    MRVectorClock concurrent;
    concurrent.updateClockValueForID(u"there"_s);
    for (const MRVectorClock &other : {newer, concurrent, MRVectorClock()}) {
        EXPECT_FALSE(state.isValidForVectorClock(other)) << other.description().toStdString();
    }
}

TEST(EditorStateTest, ComesBackFromTheArchiveOfItsWindow)
{
    FakeClock clock;
    QBEditorStateController controller;
    QBEditorState *state = controller.registerStateForUUID(u"one"_s);
    ASSERT_NE(state, nullptr);
    MRVectorClock vectorClock;
    vectorClock.updateClockValueForID(u"here"_s, 7);
    state->vectorClock = vectorClock;
    state->undoManager = std::make_shared<NSUndoManager>();
    state->editRange = {3, 4};
    state->scrollPosition = 12.5;
    state->scrollWidth = 640;
    state->firstParagraphRange = {100, 20};
    state->isFirstResponder = true;
    clock.advance(60);
    ASSERT_NE(controller.registerStateForUUID(u"a second"_s), nullptr);

    NSError error;
    const auto bytes = writePropertyList(controller.archived(), PropertyListFormat::Binary, &error);
    ASSERT_TRUE(bytes) << error.localizedDescription().toStdString();
    const auto archive = readPropertyList(*bytes, &error);
    ASSERT_TRUE(archive);
    const auto restored = QBEditorStateController::unarchived(*archive);
    ASSERT_TRUE(restored);
    EXPECT_EQ(restored->registeredUUIDs(), (QStringList{u"a second"_s, u"one"_s}));
    const QBEditorState *back = restored->stateForUUID(u"one"_s);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->UUID, u"one"_s);
    EXPECT_EQ(back->date, clock.now().dateByAddingTimeInterval(-60));
    EXPECT_TRUE(back->isValidForVectorClock(vectorClock));
    EXPECT_EQ(back->undoManager, nullptr);
    EXPECT_EQ(back->editRange, (NSRange{3, 4}));
    EXPECT_EQ(back->scrollPosition, 12.5);
    EXPECT_EQ(back->scrollWidth, 640);
    EXPECT_EQ(back->firstParagraphRange, (NSRange{100, 20}));
    EXPECT_TRUE(back->isFirstResponder);
    const QBEditorState *second = restored->stateForUUID(u"a second"_s);
    ASSERT_NE(second, nullptr);
    EXPECT_FALSE(second->vectorClock);
    EXPECT_EQ(second->editRange, kNotFoundRange);
    EXPECT_FALSE(second->isFirstResponder);
}

TEST(EditorStateTest, OneOfANoteTakesTheOthersPlace)
{
    FakeClock clock;
    QBEditorStateController controller;
    EXPECT_EQ(controller.registerStateForUUID(QString()), nullptr);
    controller.registerStateForUUID(u"one"_s)->editRange = {5, 0};
    clock.advance(1);
    const QBEditorState *state = controller.registerStateForUUID(u"one"_s);
    EXPECT_EQ(state->date, clock.now());
    EXPECT_EQ(state->editRange, kNotFoundRange);
    EXPECT_EQ(controller.registeredUUIDs(), QStringList{u"one"_s});
    controller.invalidateStateForUUID(u"one"_s);
    controller.invalidateStateForUUID(u"never"_s);
    EXPECT_EQ(controller.stateForUUID(u"one"_s), nullptr);
}

TEST(EditorStateTest, DamagedArchivesGiveWhatIsLeftOfThem)
{
    using Value = PropertyValue;
    const NSDate date = NSDate::dateWithTimeIntervalSince1970(0);
    for (const Value &archive : {Value(), Value(u"x"_s), Value(Value::Array{}), Value(Value::Dictionary{})}) {
        EXPECT_FALSE(QBEditorStateController::unarchived(archive));
    }
    const Value archive = Value::Dictionary{
        {u"states"_s, Value::Array{Value(1), Value::Dictionary{}, Value::Dictionary{{u"UUID"_s, u"no date"_s}},
                                   Value::Dictionary{{u"UUID"_s, u"kept"_s},
                                                     {u"date"_s, date},
                                                     {u"editRange"_s, Value::Array{-1, 5}},
                                                     {u"firstParagraphRange"_s, Value::Array{1, NSNotFound}},
                                                     {u"vectorClock"_s, QByteArray("no clock")},
                                                     {u"scrollWidth"_s, qQNaN()}}}}};
    const auto restored = QBEditorStateController::unarchived(archive);
    ASSERT_TRUE(restored);
    EXPECT_EQ(restored->registeredUUIDs(), QStringList{u"kept"_s});
    const QBEditorState *state = restored->stateForUUID(u"kept"_s);
    EXPECT_EQ(state->editRange, kNotFoundRange);
    EXPECT_EQ(state->firstParagraphRange, kNotFoundRange);
    EXPECT_FALSE(state->vectorClock);
    EXPECT_EQ(state->scrollWidth, 0);
}

} // namespace quib::tests

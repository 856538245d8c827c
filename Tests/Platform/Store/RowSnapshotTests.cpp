#include <Store/NSManagedObjectModel.h>
#include <Store/RowSnapshot.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <map>
#include <random>

using namespace Qt::StringLiterals;
using quib::RowSnapshot;
using quib::RowSnapshotRef;
using quib::Value;

namespace {

class RowSnapshots : public testing::Test
{
protected:
    using Model = std::map<int, Value>; // what the present slots hold

    [[nodiscard]] bool flip() { return generator() % 2 == 0; }
    [[nodiscard]] Value randomValue(int slot)
    {
        switch (note->slotLayout(slot).type) {
        case NSAttributeType::Boolean:
            return flip();
        case NSAttributeType::Int16:
            return qint64(generator() % 1000) - 500;
        case NSAttributeType::Int64:
            return qint64(generator() % 1'000'000);
        case NSAttributeType::Double:
            return double(generator() % 1000) / 8;
        case NSAttributeType::Date:
            return flip() ? Value(NSDate::dateWithTimeIntervalSince1970(double(generator() % 1000))) : Value();
        case NSAttributeType::String:
            return flip() ? Value(QString::number(generator())) : Value();
        case NSAttributeType::Binary:
            return flip() ? Value(QByteArray::number(qulonglong(generator()))) : Value();
        }
        return {};
    }
    [[nodiscard]] int attributeCount() const { return static_cast<int>(note->attributes().size()); }
    RowSnapshotRef randomNarrowRow(Model *model)
    {
        quint64 mask = 0;
        for (int slot = 0; slot < attributeCount(); ++slot) {
            mask |= quint64(flip()) << slot;
        }
        RowSnapshotRef row = RowSnapshot::makeNarrow(note->rowLayoutOfSlots(mask));
        row.fill()->setVersion(7);
        for (int slot = 0; slot < attributeCount(); ++slot) {
            // A slot may have room and still not be read.
            if ((mask >> slot & 1) != 0 && generator() % 8 != 0) {
                (*model)[slot] = randomValue(slot);
                row.fill()->setValueAt(slot, model->at(slot));
            }
        }
        return row;
    }
    void expectEqual(const RowSnapshotRef &row, const Model &model) const
    {
        EXPECT_EQ(row->version(), 7);
        EXPECT_EQ(row->entity(), note);
        for (int slot = 0; slot < note->slotCount(); ++slot) {
            const auto expected = model.find(slot);
            ASSERT_EQ(row->isPresent(slot), expected != model.end()) << slot;
            if (expected != model.end()) {
                EXPECT_EQ(row->valueAt(slot), expected->second) << slot;
            }
        }
    }

    quib::tests::TestSeed seed;
    std::mt19937 generator = seed.generator();
    std::shared_ptr<const NSManagedObjectModel> models = NSManagedObjectModel::modelWithContentsOfFile(
        QStringLiteral(QUIB_SOURCE_DIR "/Resources/Model/Model.momd/Model 3.mom"));
    const NSEntityDescription *note = models->entityNamed(u"QBNote"_s);
};

TEST_F(RowSnapshots, NarrowOnesHoldWhatWholeOnesWould)
{
    for (int round = 0; round < 300; ++round) {
        Model model;
        const RowSnapshotRef narrow = randomNarrowRow(&model);
        expectEqual(narrow, model);
        // 1. A change makes room for everything, and leaves other holders what they had.
        RowSnapshotRef changed = narrow;
        const int slot = static_cast<int>(generator() % static_cast<quint64>(attributeCount()));
        Model changedModel = model;
        changedModel[slot] = randomValue(slot);
        changed.edit()->setValueAt(slot, changedModel[slot]);
        expectEqual(changed, changedModel);
        expectEqual(narrow, model);
        // 2. What one lacks comes from another; what it has stays.
        Model joinedModel = changedModel;
        Model otherModel;
        const RowSnapshotRef other = randomNarrowRow(&otherModel);
        joinedModel.insert(otherModel.begin(), otherModel.end());
        RowSnapshotRef joined = changed;
        joined.takeMissingSlots(other);
        expectEqual(joined, joinedModel);
        expectEqual(changed, changedModel);
        expectEqual(other, otherModel);
    }
}

TEST_F(RowSnapshots, TakesAWiderRowAsItIs)
{
    const auto slotOf = [this](const QString &key) { return note->attributeNamed(key)->slot; };
    RowSnapshotRef narrow = RowSnapshot::makeNarrow(note->rowLayoutOfSlots(quint64{1} << slotOf(u"pinned"_s)));
    narrow.fill()->setValueAt(slotOf(u"pinned"_s), true);
    RowSnapshotRef whole = RowSnapshot::make(note);
    whole.edit()->setValueAt(slotOf(u"title"_s), u"a"_s);
    RowSnapshotRef row = narrow;
    row.takeMissingSlots(whole);
    EXPECT_EQ(row, whole);
    row.takeMissingSlots(narrow);
    EXPECT_EQ(row, whole);
}

TEST_F(RowSnapshots, ReadsWhatThereIsNoRoomForAsNothing)
{
    const RowSnapshotRef empty = RowSnapshot::makeNarrow(note->rowLayoutOfSlots(0));
    for (int slot = 0; slot < note->slotCount(); ++slot) {
        EXPECT_FALSE(empty->isPresent(slot));
    }
    EXPECT_EQ(empty->stringAt(note->attributeNamed(u"title"_s)->slot), QString());
    EXPECT_EQ(empty->bytesAt(note->attributeNamed(u"vectorClock"_s)->slot), QByteArray());
    EXPECT_FALSE(empty->boolAt(note->attributeNamed(u"pinned"_s)->slot));
    EXPECT_EQ(empty->integerAt(note->attributeNamed(u"todoCompleted"_s)->slot), 0);
    EXPECT_EQ(empty->integerAt(note->attributeNamed(u"order"_s)->slot), 0);
    EXPECT_LT(note->rowLayoutOfSlots(0)->packedSize(), note->wholeRowLayout()->packedSize());
}

} // namespace

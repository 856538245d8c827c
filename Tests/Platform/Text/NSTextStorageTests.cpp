#include <Text/NSTextAttachment.h>
#include <Text/NSTextStorage.h>

#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>

#include <Platform/Text/RandomText.h>

#include <gtest/gtest.h>

#include <QStringList>

using namespace Qt::StringLiterals;
using namespace quib;
using quib::tests::randomText;
using quib::tests::TestSeed;

namespace {

/// Writes down each edit as "mask location-limit change".
class Recorder : public NSTextStorage
{
public:
    QStringList edits;

protected:
    void processEditing() override
    {
        NSTextStorage::processEditing();
        edits.append(u"%1 %2-%3 %4"_s.arg(editedMask())
                         .arg(editedRange().location)
                         .arg(editedRange().limit())
                         .arg(changeInLength()));
    }
};

} // namespace

TEST(NSTextStorage, ReportsEachChangeInTheRangeThatItLeaves)
{
    Recorder storage;
    storage.replaceCharactersInRange({0, 0}, u"hello");
    storage.replaceCharactersInRange({1, 3}, u"ipp");
    storage.deleteCharactersInRange({0, 2});
    storage.addAttribute(NSKernAttributeName, 1, {1, 99});
    storage.replaceCharactersInRange({3, 0}, NSAttributedString(u"xy"_s));
    storage.replaceCharactersInRange({1, 2}, NSAttributedString());
    storage.setAttributedString(NSAttributedString(u"new"_s));
    EXPECT_EQ(storage.edits, (QStringList{u"3 0-5 5"_s, u"3 1-4 0"_s, u"3 0-0 -2"_s, u"1 1-3 0"_s, u"3 3-5 2"_s,
                                          u"3 1-1 -2"_s, u"3 0-3 0"_s}));
    EXPECT_EQ(storage.string(), u"new");
}

TEST(NSTextStorage, HasNoEditOutsideOfProcessing)
{
    Recorder storage;
    storage.replaceCharactersInRange({0, 0}, u"x");
    EXPECT_EQ(storage.editedMask(), 0U);
    EXPECT_EQ(storage.editedRange(), kNotFoundRange);
    EXPECT_EQ(storage.changeInLength(), 0);
}

TEST(NSTextStorage, GroupsEditsIntoOne)
{
    Recorder storage;
    storage.replaceCharactersInRange({0, 0}, u"0123456789");
    storage.edits.clear();
    storage.beginEditing();
    storage.replaceCharactersInRange({2, 1}, u"xyz");
    storage.beginEditing();
    storage.addAttribute(NSKernAttributeName, 1, {8, 2});
    storage.endEditing();
    storage.deleteCharactersInRange({0, 1});
    EXPECT_TRUE(storage.edits.isEmpty());
    storage.endEditing();
    EXPECT_EQ(storage.edits, (QStringList{u"3 0-9 1"_s}));
}

TEST(NSTextStorage, GroupedRangeCoversAllThatDiffers)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    for (int round = 0; round < 500; ++round) {
        NSTextStorage storage;
        storage.replaceCharactersInRange({0, 0}, randomText(random, u"ab", 20));
        const QString before = storage.string().toString();
        NSRange edited = kNotFoundRange;
        qint64 change = 0;
        const ObservationToken token = storage.observeEdits([&](quint32, NSRange range, qint64 changeInLength) {
            edited = range;
            change = changeInLength;
        });
        storage.beginEditing();
        for (int step = 0; step < 3; ++step) {
            const auto place = static_cast<qint64>(random() % static_cast<size_t>(storage.length() + 1));
            const auto length = std::min<qint64>(storage.length() - place, static_cast<qint64>(random() % 4));
            storage.replaceCharactersInRange({place, length}, randomText(random, u"xy", 4));
        }
        storage.endEditing();
        const QString after = storage.string().toString();
        ASSERT_EQ(change, after.size() - before.size());
        ASSERT_LE(edited.limit(), after.size());
        // What lies before and behind the range is what lay there.
        ASSERT_EQ(after.first(edited.location), before.first(edited.location));
        ASSERT_EQ(after.sliced(edited.limit()), before.last(after.size() - edited.limit()));
    }
}

TEST(NSTextStorage, FixesAttributesBeforeObserversAreTold)
{
    NSTextStorage storage;
    NSMutableAttributedString text(u"\uFFFC"_s);
    text.addAttribute(NSAttachmentAttributeName, std::make_shared<NSTextAttachment>(), {0, 1});
    storage.setAttributedString(text);
    bool sawAttachment = true;
    const ObservationToken token = storage.observeEdits([&](quint32, NSRange range, qint64) {
        sawAttachment = storage.attributedString().containsAttribute(NSAttachmentAttributeName, range);
    });
    storage.replaceCharactersInRange({1, 0}, u"typed");
    EXPECT_FALSE(sawAttachment);
    EXPECT_TRUE(storage.attributesAtIndex(0).contains(NSAttachmentAttributeName));
}

TEST(NSTextStorage, WhatAnObserverEditsIsProcessedAfterwards)
{
    Recorder storage;
    const ObservationToken token = storage.observeEdits([&](quint32 editedMask, NSRange editedRange, qint64) {
        if (editedMask != NSTextStorage::kEditedAttributes) {
            storage.addAttribute(NSKernAttributeName, 1, editedRange);
            EXPECT_EQ(storage.editedRange(), editedRange);
        }
    });
    storage.replaceCharactersInRange({0, 0}, u"abc");
    EXPECT_EQ(storage.edits, (QStringList{u"3 0-3 3"_s, u"1 0-3 0"_s}));
}

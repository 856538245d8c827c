// Attachments that are kept and come back, and what their classes say without an attachment at hand.

#include "AttachmentFamily.h"

#include <Markup/Attachments/AttachmentArchive.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

TEST(AttachmentArchive, GivesTheClassAndTheTextBack)
{
    const auto theme = std::make_shared<QBNotesTextThemeManager>();
    QString odd = u"a b\ufffc"_s;
    odd += QChar(0xD800);
    odd += QChar(0);
    for (const FamilyMember &member : attachmentFamily()) {
        for (const QString &text : {member.text, odd}) {
            const PropertyValue archive = archivedTextAttachment(*member.make(text, nullptr));
            EXPECT_EQ(archive.asDictionary()->value(u"representedText"_s).asString(), text);
            NSError error;
            const auto written = writePropertyList(archive, PropertyListFormat::Binary, &error);
            ASSERT_TRUE(written) << error.localizedDescription().toStdString();
            const auto read = readPropertyList(*written, &error);
            ASSERT_TRUE(read);
            const auto attachment = unarchivedTextAttachment(*read, theme);
            ASSERT_TRUE(attachment) << member.className.toStdString();
            EXPECT_EQ(attachment->className(), member.className);
            EXPECT_EQ(attachment->representedText(), text);
            EXPECT_EQ(attachment->themeManager(), theme);
        }
    }
}

TEST(AttachmentArchive, RefusesWhatIsNone)
{
    const PropertyValue::Dictionary good{{u"class"_s, u"QBArrowTextAttachment"_s}, {u"representedText"_s, u"->"_s}};
    ASSERT_TRUE(unarchivedTextAttachment(good, nullptr));
    auto unknown = good;
    unknown.insert(u"class"_s, u"NSTextAttachment"_s);
    auto wrong = good;
    wrong.insert(u"representedText"_s, 7);
    auto without = good;
    without.remove(u"representedText"_s);
    for (const PropertyValue &archive :
         {PropertyValue(), PropertyValue(u"->"_s), PropertyValue(PropertyValue::Dictionary()), PropertyValue(unknown),
          PropertyValue(wrong), PropertyValue(without)}) {
        EXPECT_FALSE(unarchivedTextAttachment(archive, nullptr));
    }
}

/// What a class says of itself is what each attachment of it says.
template <typename T> void expectAsItsClass()
{
    const T attachment(QString(), nullptr);
    const QBNotesTextAttachment &base = attachment;
    EXPECT_EQ(T::kIsFullLine, base.isFullLine()) << base.className().toStdString();
    EXPECT_EQ(T::kIsInline, base.isInline()) << base.className().toStdString();
    EXPECT_NE(T::kIsFullLine, T::kIsInline) << base.className().toStdString();
}

TEST(AttachmentClasses, SayWhetherTheyAreFullLinesOrStandInOne)
{
    expectAsItsClass<QBHeaderTextAttachment>();
    expectAsItsClass<QBUnorderedListTextAttachment>();
    expectAsItsClass<QBCheckBoxTextAttachment>();
    expectAsItsClass<QBLineSeparatorTextAttachment>();
    expectAsItsClass<QBImageTextAttachment>();
    expectAsItsClass<QBGenericFileTextAttachment>();
    expectAsItsClass<QBArrowTextAttachment>();
    expectAsItsClass<QBSpacerTextAttachment>();
    expectAsItsClass<QBColorTextAttachment>();
    expectAsItsClass<QBAddressTextAttachment>();
    expectAsItsClass<QBTitledURLTextAttachment>();
    expectAsItsClass<QBLinkedNoteTextAttachment>();
    expectAsItsClass<QBFoldTextAttachment>();
    EXPECT_FALSE(QBNotesTextAttachment::kIsFullLine);
    EXPECT_FALSE(QBNotesTextAttachment::kIsInline);
}

} // namespace

} // namespace quib::tests

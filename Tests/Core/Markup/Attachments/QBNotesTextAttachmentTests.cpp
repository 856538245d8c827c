#include "AttachmentFamily.h"

#include <Text/NSMutableAttributedString.h>

#include <Support/QtPrinters.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace quib::tests {

class Attachments : public testing::Test
{
protected:
    Attachments() { themeManager->loadDefaultTheme(); }

    template <typename T> [[nodiscard]] std::shared_ptr<T> made(const QString &text) const
    {
        return std::make_shared<T>(text, themeManager);
    }
    /// A text with "@" where an attachment stands; the attachment is put on the first.
    [[nodiscard]] static NSMutableAttributedString textWith(QString text, const AttachmentRef &attachment)
    {
        text.replace(u'@', NSTextAttachment::placeholderString());
        NSMutableAttributedString string(text);
        string.addAttribute(NSAttachmentAttributeName, attachment,
                            {text.indexOf(NSTextAttachment::placeholderString()), 1});
        return string;
    }
    /// What goes with the attachment, between "<" and ">".
    [[nodiscard]] static QString extra(const QString &text, const AttachmentRef &attachment)
    {
        const auto string = textWith(text, attachment);
        const NSRange range = attachment->extraAttachmentRangeForAttachmentRange({text.indexOf(u'@'), 1}, string);
        return QString(text).insert(range.limit(), u'>').insert(range.location, u'<');
    }

    std::shared_ptr<QBNotesTextThemeManager> themeManager = std::make_shared<QBNotesTextThemeManager>();
};

TEST_F(Attachments, EachClassIsWhatItIsToLayoutAndSelection)
{
    for (const auto &member : attachmentFamily()) {
        SCOPED_TRACE(member.className.toStdString());
        const auto attachment = member.make(member.text, themeManager);
        EXPECT_EQ(attachment->className(), member.className);
        EXPECT_EQ(attachment->representedText(), member.text);
        EXPECT_EQ(attachment->isFullLine(), member.isFullLine);
        EXPECT_EQ(attachment->isInline(), member.isInline);
        EXPECT_EQ(attachment->needWrappingCharaters(), member.needsWrapping);
        EXPECT_EQ(attachment->canBeDraggedAlone(), member.isDraggable);
    }
}

TEST_F(Attachments, ACopyIsOfTheSameClassAndHasTheTextAndTheThemeAndNothingElse)
{
    for (const auto &member : attachmentFamily()) {
        SCOPED_TRACE(member.className.toStdString());
        const auto attachment = member.make(member.text, themeManager);
        int updates = 0;
        attachment->setUpdateHandler([&updates](QBNotesTextAttachment &) { ++updates; });
        const auto copy = attachment->copy();
        EXPECT_NE(copy, attachment);
        EXPECT_EQ(copy->className(), member.className);
        EXPECT_EQ(copy->representedText(), member.text);
        EXPECT_EQ(copy->themeManager(), themeManager);
        copy->updateTextAttachment();
        EXPECT_EQ(updates, 0);
        attachment->updateTextAttachment();
        EXPECT_EQ(updates, 1);
    }
    const auto color = made<QBColorTextAttachment>({});
    color->setFullRepresentedText(u"#102030"_s);
    EXPECT_EQ(std::dynamic_pointer_cast<QBColorTextAttachment>(color->copy())->fullRepresentedText(), QString());
    const auto header = made<QBHeaderTextAttachment>(u"####"_s);
    EXPECT_EQ(std::dynamic_pointer_cast<QBHeaderTextAttachment>(header->copy())->headerLevel(), 4);
}

TEST_F(Attachments, ATextOfEachClassGivesBackItsMarkup)
{
    NSMutableAttributedString text;
    QString markup;
    for (const auto &member : attachmentFamily()) {
        text.appendAttributedString(
            NSAttributedString(NSTextAttachment::placeholderString(),
                               {{NSAttachmentAttributeName, AttributeValue(member.make(member.text, themeManager))}}));
        markup += member.text;
    }
    QString expanded;
    text.enumerateAttribute(NSAttachmentAttributeName, text.fullRange(), NSAttributedStringEnumerationOptions::Forward,
                            [&](const AttributeValue &value, NSRange range, bool *) {
                                EXPECT_EQ(range.length, 1);
                                expanded += value.as<QBNotesTextAttachment>()->representedText();
                            });
    EXPECT_EQ(expanded, markup);
}

TEST_F(Attachments, AHeaderTellsItsLevelByItsTextAlone)
{
    const std::pair<QString, int> cases[] = {
        {u"#"_s, 1},      {u"##"_s, 2},      {u"###"_s, 3}, {u"####"_s, 4}, {u"#####"_s, 5},
        {u"######"_s, 6}, {u"#######"_s, 0}, {u""_s, 0},    {u"# "_s, 0},   {u"x"_s, 0},
    };
    for (const auto &[text, level] : cases) {
        const auto header = made<QBHeaderTextAttachment>(text);
        EXPECT_EQ(header->headerLevel(), level) << text.toStdString();
        EXPECT_EQ(header->headerStringName(), level == 0 ? QString() : u"H"_s + QString::number(level));
        EXPECT_EQ(header->baseCacheKey(), u"QBHeaderTextAttachment"_s + text);
    }
    EXPECT_EQ(made<QBHeaderTextAttachment>(u"#"_s)->headerFont(), themeManager->h1Font());
    EXPECT_EQ(made<QBHeaderTextAttachment>(u"##"_s)->headerFont(), themeManager->h2Font());
    for (const auto &text : {u"###"_s, u"####"_s, u"#####"_s, u"######"_s}) {
        EXPECT_EQ(made<QBHeaderTextAttachment>(text)->headerFont(), themeManager->h3Font()) << text.toStdString();
    }
}

TEST_F(Attachments, ABoxStaysInItsSyntaxWhenItIsToggled)
{
    struct Case
    {
        QString text;
        bool isChecked;
        bool isMarkdown;
        QString checked;
        QString unchecked;
    };
    const Case cases[] = {
        {u"-"_s, false, false, u"+"_s, u"-"_s},
        {u"+"_s, true, false, u"+"_s, u"-"_s},
        {u"- [ ]"_s, false, true, u"- [x]"_s, u"- [ ]"_s},
        {u"- [x]"_s, true, true, u"- [x]"_s, u"- [ ]"_s},
        {u"- [X]"_s, false, false, u"+"_s, u"-"_s}, // the form is exact
    };
    for (const auto &given : cases) {
        SCOPED_TRACE(given.text.toStdString());
        const auto box = made<QBCheckBoxTextAttachment>(given.text);
        int updates = 0;
        box->setUpdateHandler([&updates](QBNotesTextAttachment &) { ++updates; });
        EXPECT_EQ(box->isChecked(), given.isChecked);
        EXPECT_EQ(box->isMarkdown(), given.isMarkdown);
        box->toggleCheck();
        EXPECT_EQ(box->representedText(), given.isChecked ? given.unchecked : given.checked);
        box->check();
        EXPECT_EQ(box->representedText(), given.checked);
        box->uncheck();
        EXPECT_EQ(box->representedText(), given.unchecked);
        EXPECT_EQ(updates, 3);
    }
}

TEST_F(Attachments, OtherStateFollowsTheText)
{
    EXPECT_TRUE(made<QBArrowTextAttachment>(u"<-"_s)->isFlipped());
    EXPECT_FALSE(made<QBArrowTextAttachment>(u"->"_s)->isFlipped());

    const auto color = made<QBColorTextAttachment>({});
    color->setFullRepresentedText(u"#0a14fF"_s);
    EXPECT_EQ(color->representedColor(), NSColor::colorWithRed(10 / 255.0, 20 / 255.0, 1));
    EXPECT_EQ(color->representedText(), QString());
    EXPECT_EQ(QBColorTextAttachment::colorFromHEX(u"zebra"_s), NSColor::blackColor());
}

TEST_F(Attachments, EachBringsAlongTheTextThatBelongsToIt)
{
    const auto color = made<QBColorTextAttachment>({});
    color->setFullRepresentedText(u"#102030"_s);
    const auto address = made<QBAddressTextAttachment>({});
    address->setFullRepresentedText(u"1 Main St"_s);
    const auto header = made<QBHeaderTextAttachment>(u"#"_s);
    const auto list = made<QBUnorderedListTextAttachment>(u"*"_s);
    const auto box = made<QBCheckBoxTextAttachment>(u"-"_s);
    const auto url = made<QBTitledURLTextAttachment>(u"http://a.b"_s);
    const auto note = made<QBLinkedNoteTextAttachment>(u"quib://x"_s);
    const auto image = made<QBImageTextAttachment>(u"[image:1/a.png]"_s);
    const auto file = made<QBGenericFileTextAttachment>(u"[file:1/a.txt]"_s);
    const auto arrow = made<QBArrowTextAttachment>(u"->"_s);
    const std::pair<AttachmentRef, QString> cases[] = {
        {header, u"a\n<@ b\n>c"_s},
        {header, u"<@ b>"_s},
        {list, u"a\n<  @ b\r\n>c"_s},
        {box, u"<@ b\n>"_s},
        {url, u"a <[b c](@)> d"_s},
        {url, u"[x] <[b](@)>"_s},
        {url, u"<[b](@>"_s},       // nothing behind it
        {url, u"[x\nb](<@>) d"_s}, // the bracket is of another paragraph
        {url, u"b](<@>)"_s},       // no bracket at all
        {note, u"a <[b](@)>"_s},
        {color, u"a <@#102030> b"_s},
        {color, u"a <@#10>"_s}, // the code runs past the text
        {address, u"<@1 Main St>, Rome"_s},
        {image, u"a\n<@\n>b"_s},
        {image, u"a\n<@>"_s},
        {image, u"<@\r\n>b"_s},
        {image, u"<@\u2029>b"_s},
        {image, u"<@> b\n"_s},
        {image, u"a <@>\nb"_s},
        {image, u"<@>x"_s},
        {file, u"<@>\n"_s},
        {arrow, u"a <@> b\n"_s},
    };
    for (const auto &[attachment, expected] : cases) {
        QString text = expected;
        EXPECT_EQ(extra(text.remove(u'<').remove(u'>'), attachment), expected) << expected.toStdString();
    }
}

TEST_F(Attachments, SizesGrowWithTheBaseSizeAndAreWholePoints)
{
    for (const double base : {9.0, 15.0, 16.0, 33.0}) {
        SCOPED_TRACE(base);
        themeManager->setZoomedBaseFontSize(base);
        EXPECT_EQ(made<QBGenericFileTextAttachment>(u"x"_s)->attachmentSize(),
                  QSizeF(std::floor(base * 19), std::floor(base * 4.5)));
        EXPECT_EQ(made<QBTitledURLTextAttachment>(u"x"_s)->attachmentSize().height(), std::floor(base * 0.875));
        EXPECT_EQ(made<QBLinkedNoteTextAttachment>(u"x"_s)->attachmentSize().height(), std::floor(base * 0.86));
        EXPECT_GT(made<QBTitledURLTextAttachment>(u"x"_s)->attachmentSize().width(), std::floor(base * 0.875));
        EXPECT_EQ(made<QBLineSeparatorTextAttachment>(u"---"_s)->attachmentSize(),
                  QSizeF(themeManager->textColumnMaxSize(),
                         themeManager->paragraphLineHeight() + themeManager->paragraphLineSpacing()));
        EXPECT_DOUBLE_EQ(made<QBSpacerTextAttachment>(QString())->attachmentSize().width(),
                         themeManager->paragraphFontXHeight() / 2);
        for (const auto &member : attachmentFamily()) {
            const QSizeF size = member.make(member.text, themeManager)->cachedAttachmentSize();
            EXPECT_GT(size.width(), 0) << member.className.toStdString();
            EXPECT_GT(size.height(), 0) << member.className.toStdString();
        }
    }
}

TEST_F(Attachments, SymbolsStandInTheMiddleOfTheLettersOfTheirLine)
{
    const double middle = (themeManager->paragraphFontAscender() + themeManager->paragraphFontDescender()) / 2;
    for (const auto &member : attachmentFamily()) {
        const auto attachment = member.make(member.text, themeManager);
        const double centre = attachment->attachmentBaselineOffset() + attachment->attachmentSize().height() / 2;
        const bool isFile = std::dynamic_pointer_cast<QBGenericFileTextAttachment>(attachment) != nullptr;
        const bool isSpacer = std::dynamic_pointer_cast<QBSpacerTextAttachment>(attachment) != nullptr;
        if (const auto header = std::dynamic_pointer_cast<QBHeaderTextAttachment>(attachment)) {
            const NSFont font = header->headerFont();
            EXPECT_NEAR(centre, (font.ascender() + font.descender()) / 2, 1e-9);
        } else if (!isFile && !isSpacer) {
            EXPECT_NEAR(centre, middle, 1e-9) << member.className.toStdString();
        }
    }
}

TEST_F(Attachments, SizesAreKeptWithTheThemeAndGoWithIt)
{
    const auto box = made<QBCheckBoxTextAttachment>(u"-"_s);
    const QSizeF size = box->cachedAttachmentSize();
    themeManager->themeCache().insert(u"QBCheckBoxTextAttachmentAttachmentSize"_s, QSizeF(1, 2));
    themeManager->themeCache().insert(u"QBCheckBoxTextAttachmentAttachmentBaselineOffset"_s, 3.0);
    themeManager->themeCache().insert(u"QBHeaderTextAttachment#AttachmentSize"_s, QSizeF(4, 5));
    EXPECT_EQ(made<QBCheckBoxTextAttachment>(u"+"_s)->cachedAttachmentSize(), QSizeF(1, 2));
    EXPECT_EQ(box->cachedAttachmentBaselineOffset(), 3.0);
    EXPECT_EQ(made<QBHeaderTextAttachment>(u"#"_s)->cachedAttachmentSize(), QSizeF(4, 5));
    EXPECT_NE(made<QBHeaderTextAttachment>(u"##"_s)->cachedAttachmentSize(), QSizeF(4, 5)) << "each level has its own";
    themeManager->emptyCache();
    EXPECT_EQ(box->cachedAttachmentSize(), size);
}

TEST_F(Attachments, EveryPictureHasASizeOfItsOwn)
{
    const auto first = made<QBImageTextAttachment>(u"[image:1/a.png]"_s);
    const auto second = made<QBImageTextAttachment>(u"[image:1/a.png]"_s);
    const QSizeF empty = made<QBGenericFileTextAttachment>(u"x"_s)->attachmentSize();
    EXPECT_EQ(first->cachedAttachmentSize(), empty) << "without a size it is an empty file";
    first->setAttachmentImageSize({30, 20});
    second->setAttachmentImageSize({300, 200});
    EXPECT_EQ(first->cachedAttachmentSize(), QSizeF(30, 20));
    EXPECT_EQ(second->cachedAttachmentSize(), QSizeF(300, 200));
}

TEST_F(Attachments, WithoutAThemeTheyHaveNoSizeAndStillStandForTheirText)
{
    for (const auto &member : attachmentFamily()) {
        const auto attachment = member.make(member.text, nullptr);
        EXPECT_TRUE(attachment->cachedAttachmentSize().isNull()) << member.className.toStdString();
        EXPECT_EQ(attachment->copy()->representedText(), member.text);
    }
}

} // namespace quib::tests

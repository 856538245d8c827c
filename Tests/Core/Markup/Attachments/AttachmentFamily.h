#pragma once

#include <Markup/Attachments/QBAddressTextAttachment.h>
#include <Markup/Attachments/QBArrowTextAttachment.h>
#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Markup/Attachments/QBColorTextAttachment.h>
#include <Markup/Attachments/QBFoldTextAttachment.h>
#include <Markup/Attachments/QBGenericFileTextAttachment.h>
#include <Markup/Attachments/QBHeaderTextAttachment.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Markup/Attachments/QBLineSeparatorTextAttachment.h>
#include <Markup/Attachments/QBLinkedNoteTextAttachment.h>
#include <Markup/Attachments/QBSpacerTextAttachment.h>
#include <Markup/Attachments/QBTitledURLTextAttachment.h>
#include <Markup/Attachments/QBUnorderedListTextAttachment.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <memory>
#include <vector>

namespace quib::tests {

using AttachmentRef = std::shared_ptr<QBNotesTextAttachment>;

template <typename T>
[[nodiscard]] AttachmentRef madeAttachment(const QString &text, std::shared_ptr<QBNotesTextThemeManager> themeManager)
{
    return std::make_shared<T>(text, std::move(themeManager));
}

/// One of each class with a text that is its own, and what it is to layout and selection.
struct FamilyMember
{
    AttachmentRef (*make)(const QString &text, std::shared_ptr<QBNotesTextThemeManager> themeManager);
    QString text;
    QString className;
    bool isFullLine = false;
    bool isInline = false;
    bool needsWrapping = false;
    bool isDraggable = false;
};

[[nodiscard]] inline const std::vector<FamilyMember> &attachmentFamily()
{
    const auto text = [](const char16_t *units) { return QString::fromUtf16(units); };
    static const std::vector<FamilyMember> family{
        {madeAttachment<QBHeaderTextAttachment>, text(u"##"), text(u"QBHeaderTextAttachment"), true, false, false,
         false},
        {madeAttachment<QBUnorderedListTextAttachment>, text(u"•"), text(u"QBUnorderedListTextAttachment"), true, false,
         false, false},
        {madeAttachment<QBCheckBoxTextAttachment>, text(u"- [ ]"), text(u"QBCheckBoxTextAttachment"), true, false,
         false, false},
        {madeAttachment<QBLineSeparatorTextAttachment>, text(u"---"), text(u"QBLineSeparatorTextAttachment"), true,
         false, false, true},
        {madeAttachment<QBImageTextAttachment>, text(u"[image:1/a.png]"), text(u"QBImageTextAttachment"), true, false,
         false, true},
        {madeAttachment<QBGenericFileTextAttachment>, text(u"[file:1/a.txt]"), text(u"QBGenericFileTextAttachment"),
         false, true, false, true},
        {madeAttachment<QBArrowTextAttachment>, text(u"->"), text(u"QBArrowTextAttachment"), false, true, true, true},
        {madeAttachment<QBSpacerTextAttachment>, QString(), text(u"QBSpacerTextAttachment"), false, true, true, false},
        {madeAttachment<QBColorTextAttachment>, QString(), text(u"QBColorTextAttachment"), false, true, true, false},
        {madeAttachment<QBAddressTextAttachment>, QString(), text(u"QBAddressTextAttachment"), false, true, false,
         false},
        {madeAttachment<QBTitledURLTextAttachment>, text(u"http://a.b/"), text(u"QBTitledURLTextAttachment"), false,
         true, false, false},
        {madeAttachment<QBLinkedNoteTextAttachment>, text(u"quib://x"), text(u"QBLinkedNoteTextAttachment"), false,
         true, false, false},
        {madeAttachment<QBFoldTextAttachment>, text(u"a\nb"), text(u"QBFoldTextAttachment"), false, true, false, true},
    };
    return family;
}

} // namespace quib::tests

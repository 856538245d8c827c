#include "AttachmentArchive.h"

#include "QBAddressTextAttachment.h"
#include "QBArrowTextAttachment.h"
#include "QBCheckBoxTextAttachment.h"
#include "QBColorTextAttachment.h"
#include "QBFoldTextAttachment.h"
#include "QBGenericFileTextAttachment.h"
#include "QBHeaderTextAttachment.h"
#include "QBImageTextAttachment.h"
#include "QBLineSeparatorTextAttachment.h"
#include "QBLinkedNoteTextAttachment.h"
#include "QBSpacerTextAttachment.h"
#include "QBTitledURLTextAttachment.h"
#include "QBUnorderedListTextAttachment.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <QHash>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

using Theme = std::shared_ptr<QBNotesTextThemeManager>;
using Make = std::shared_ptr<QBNotesTextAttachment> (*)(const QString &text, Theme theme);

template <typename... Attachments> QHash<QString, Make> makersOf()
{
    QHash<QString, Make> makers;
    const auto add = [&makers](Make make) { makers.insert(make({}, nullptr)->className(), make); };
    (add([](const QString &text, Theme theme) -> std::shared_ptr<QBNotesTextAttachment> {
         return std::make_shared<Attachments>(text, std::move(theme));
     }),
     ...);
    return makers;
}

const QHash<QString, Make> &makersByClassName()
{
    static const auto makers =
        makersOf<QBAddressTextAttachment, QBArrowTextAttachment, QBCheckBoxTextAttachment, QBColorTextAttachment,
                 QBFoldTextAttachment, QBGenericFileTextAttachment, QBHeaderTextAttachment, QBImageTextAttachment,
                 QBLineSeparatorTextAttachment, QBLinkedNoteTextAttachment, QBSpacerTextAttachment,
                 QBTitledURLTextAttachment, QBUnorderedListTextAttachment>();
    return makers;
}

constexpr auto kClassKey = "class"_L1;
constexpr auto kRepresentedTextKey = "representedText"_L1;

} // namespace

PropertyValue archivedTextAttachment(const QBNotesTextAttachment &attachment)
{
    return PropertyValue::Dictionary{{kClassKey, attachment.className()},
                                     {kRepresentedTextKey, attachment.representedText()}};
}

std::shared_ptr<QBNotesTextAttachment> unarchivedTextAttachment(const PropertyValue &archive, Theme themeManager)
{
    const auto *values = archive.asDictionary();
    const auto className = values != nullptr ? values->value(kClassKey).asString() : std::nullopt;
    const auto text = values != nullptr ? values->value(kRepresentedTextKey).asString() : std::nullopt;
    const Make make = className && text ? makersByClassName().value(*className) : nullptr;
    return make != nullptr ? make(*text, std::move(themeManager)) : nullptr;
}

} // namespace quib

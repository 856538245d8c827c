#include "QBNoteAddressesStyler.h"

#include "PercentEncoding.h"
#include "QBNoteTextStylerAttributes.h"
#include "ThemeValues.h"

#include <Markup/Attachments/QBAddressTextAttachment.h>
#include <Text/NSDataDetector.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QUrl>

using namespace Qt::StringLiterals;
using quib::AttributeSet;

namespace {

/// A single line in a pattern of dots.
constexpr int kDottedUnderline = 0x101;

/// Shows an address on a map.
std::optional<QUrl> mapURL(const QString &address)
{
    const auto query = quib::percentEncoded(address, quib::PlainCharacters::QueryValue);
    return query ? std::optional(QUrl(u"https://nominatim.openstreetmap.org/ui/search.html?q="_s + *query))
                 : std::nullopt;
}

} // namespace

const NSRegularExpression &QBNoteAddressesStyler::stylerRegularExpression()
{
    return NSDataDetector::sharedDetector(NSDataDetector::CheckingType::Address);
}

const NSAttributeName &QBNoteAddressesStyler::stylerAttributeName()
{
    return QBNoteAddressesStylerAttributeName;
}

const NSRegularExpression *QBNoteAddressesStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

std::shared_ptr<QBNotesTextAttachment> QBNoteAddressesStyler::makeTextAttachment(const QString &representedText) const
{
    auto attachment = std::make_shared<QBAddressTextAttachment>(QString(), themeManager());
    attachment->setFullRepresentedText(representedText);
    return attachment;
}

bool QBNoteAddressesStyler::isOwnTextAttachment(const QBNotesTextAttachment &attachment) const
{
    return dynamic_cast<const QBAddressTextAttachment *>(&attachment) != nullptr;
}

quib::AttributeNameMask QBNoteAddressesStyler::ownTextAttachmentClasses() const
{
    return quib::AttributeNameMask::ofClass(typeid(QBAddressTextAttachment));
}

NSRange QBNoteAddressesStyler::offsetMatchedRange(NSRange range, const QString & /*forMatchedString*/) const
{
    return {range.location, 0};
}

void QBNoteAddressesStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                                NSTextStorage * /*textStorage*/)
{
    attributedString.removeAttribute(QBNoteAddressesStylerAttributeName, range);
}

void QBNoteAddressesStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                         NSTextStorage * /*textStorage*/)
{
    enumerateOwnAttachments(attributedString, range, [&](const auto &attachment, NSRange place) {
        const QString &text = static_cast<const QBAddressTextAttachment &>(*attachment).fullRepresentedText();
        const NSRange address{place.limit(), text.size()};
        if (address.limit() > attributedString.length()) {
            return;
        }
        AttributeSet attributes{{NSUnderlineStyleAttributeName, kDottedUnderline},
                                {QBNoteAddressesStylerAttributeName, 1}};
        if (const auto url = mapURL(text)) {
            attributes.insert(NSLinkAttributeName, *url);
        }
        if (const auto &theme = themeManager()) {
            attributes.insert(NSUnderlineColorAttributeName, quib::colorValue(theme->mapTextColor()));
            attributes.insert(NSForegroundColorAttributeName, quib::colorValue(theme->baseTextColor()));
        }
        attributedString.addAttributes(attributes, address);
    });
}

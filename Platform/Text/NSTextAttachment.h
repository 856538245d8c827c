#pragma once

#include "AttributeValue.h"

#include <QString>

/// An inline object of a text: it stands under NSAttachmentAttributeName on one U+FFFC. Has identity and may change;
/// confined to the queue of the text that holds it. Subclasses tell what it shows.
class NSTextAttachment : public quib::AttributeObject
{
public:
    using KindBase = NSTextAttachment;
    static constexpr Kind kKind = Kind::Attachment;

    NSTextAttachment() = default;
    ~NSTextAttachment() override;

    /// The one unit that an attachment stands on, as a text.
    [[nodiscard]] static const QString &placeholderString();

    [[nodiscard]] Kind kind() const final { return kKind; }

protected:
    NSTextAttachment(const NSTextAttachment &other) = default;
};

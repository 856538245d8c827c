#pragma once

#include "QBNotesTextAttachment.h"

/// An empty room before or behind a construct, for the margin of its background. Stands for no text.
class QBSpacerTextAttachment : public QBNotesTextAttachment
{
public:
    using QBNotesTextAttachment::QBNotesTextAttachment;

    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copy() const override;
    [[nodiscard]] QString className() const override;

    static constexpr bool kIsInline = true;
    [[nodiscard]] bool isInline() const override { return kIsInline; }
    [[nodiscard]] bool needWrappingCharaters() const override { return true; }
    [[nodiscard]] QSizeF attachmentSize() const override;
};

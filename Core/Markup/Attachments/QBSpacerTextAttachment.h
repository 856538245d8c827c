#pragma once

#include "QBNotesTextAttachment.h"

/// An empty room before or behind a construct, for the margin of its background. Stands for no text.
class QBSpacerTextAttachment : public QBNotesTextAttachment
{
public:
    using QBNotesTextAttachment::QBNotesTextAttachment;

    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copy() const override;
    [[nodiscard]] QString className() const override;

    [[nodiscard]] bool isInline() const override { return true; }
    [[nodiscard]] bool needWrappingCharaters() const override { return true; }
    [[nodiscard]] QSizeF attachmentSize() const override;
};

#pragma once

#include "QBTitledURLTextAttachment.h"

/// The note symbol that stands for the link of a "[title](quib...)".
class QBLinkedNoteTextAttachment : public QBTitledURLTextAttachment
{
public:
    using QBTitledURLTextAttachment::QBTitledURLTextAttachment;

    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copy() const override;
    [[nodiscard]] QString className() const override;

protected:
    [[nodiscard]] double symbolSize() const override;
    void drawSymbol(quib::GraphicsContext &context, const QRectF &rect) const override;
};

#include "NSTextAttachment.h"

NSTextAttachment::~NSTextAttachment() = default;

const QString &NSTextAttachment::placeholderString()
{
    static const QString s_placeholder = QStringLiteral(u"\uFFFC");
    return s_placeholder;
}

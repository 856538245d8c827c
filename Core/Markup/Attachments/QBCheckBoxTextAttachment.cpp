#include "QBCheckBoxTextAttachment.h"

#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBCheckBoxTextAttachment::copy() const
{
    return std::make_shared<QBCheckBoxTextAttachment>(representedText(), themeManager());
}

QString QBCheckBoxTextAttachment::className() const
{
    return u"QBCheckBoxTextAttachment"_s;
}

NSRange
QBCheckBoxTextAttachment::extraAttachmentRangeForAttachmentRange(NSRange range,
                                                                 const NSAttributedString &inAttributedString) const
{
    return inAttributedString.paragraphRangeForRange(range);
}

bool QBCheckBoxTextAttachment::isChecked() const
{
    const QString text = representedText();
    return text == u"+"_s || text == u"- [x]"_s;
}

bool QBCheckBoxTextAttachment::isMarkdown() const
{
    const QString text = representedText();
    return text == u"- [x]"_s || text == u"- [ ]"_s;
}

void QBCheckBoxTextAttachment::check()
{
    setRepresentedText(isMarkdown() ? u"- [x]"_s : u"+"_s);
    updateTextAttachment();
}

void QBCheckBoxTextAttachment::uncheck()
{
    setRepresentedText(isMarkdown() ? u"- [ ]"_s : u"-"_s);
    updateTextAttachment();
}

void QBCheckBoxTextAttachment::toggleCheck()
{
    if (isChecked()) {
        uncheck();
    } else {
        check();
    }
}

QSizeF QBCheckBoxTextAttachment::attachmentSize() const
{
    const double side = wholePointsOfBaseSize(quib::kCheckBoxSide);
    return {side + attachmentRightSpacing(), side};
}

double QBCheckBoxTextAttachment::attachmentBaselineOffset() const
{
    return attachmentBaselineOffsetForCenteredAttachmentHeight(attachmentSize().height());
}

double QBCheckBoxTextAttachment::attachmentRightSpacing() const
{
    return themeManager() ? themeManager()->fullLineAttachmentDefaultRightSpacing() : 0;
}

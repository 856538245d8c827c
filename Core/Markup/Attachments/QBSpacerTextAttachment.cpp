#include "QBSpacerTextAttachment.h"

#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBSpacerTextAttachment::copy() const
{
    return std::make_shared<QBSpacerTextAttachment>(representedText(), themeManager());
}

std::pair<std::shared_ptr<QBNotesTextAttachment>, std::shared_ptr<QBNotesTextAttachment>>
QBSpacerTextAttachment::copyTwice() const
{
    struct Two
    {
        Two(const QString &text, const std::shared_ptr<QBNotesTextThemeManager> &theme)
            : first(text, theme)
            , second(text, theme)
        {
        }
        QBSpacerTextAttachment first;
        QBSpacerTextAttachment second;
    };
    const auto two = std::make_shared<Two>(representedText(), themeManager());
    return {{two, &two->first}, {two, &two->second}};
}

QString QBSpacerTextAttachment::className() const
{
    return u"QBSpacerTextAttachment"_s;
}

QSizeF QBSpacerTextAttachment::attachmentSize() const
{
    if (!themeManager()) {
        return {0, 0};
    }
    const double height = themeManager()->paragraphFontXHeight();
    return {height * quib::kSpacerWidth, height};
}

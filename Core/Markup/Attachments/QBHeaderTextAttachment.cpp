#include "QBHeaderTextAttachment.h"

#include "AttachmentDrawing.h"
#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <cmath>

using namespace Qt::StringLiterals;

std::shared_ptr<QBNotesTextAttachment> QBHeaderTextAttachment::copy() const
{
    return std::make_shared<QBHeaderTextAttachment>(representedText(), themeManager());
}

QString QBHeaderTextAttachment::className() const
{
    return u"QBHeaderTextAttachment"_s;
}

NSRange
QBHeaderTextAttachment::extraAttachmentRangeForAttachmentRange(NSRange range,
                                                               const NSAttributedString &inAttributedString) const
{
    return inAttributedString.paragraphRangeForRange(range);
}

int QBHeaderTextAttachment::headerLevel() const
{
    constexpr qsizetype kLevels = 6;
    const QString text = representedText();
    const bool isMarker = !text.isEmpty() && text.size() <= kLevels && text.count(u'#') == text.size();
    return isMarker ? static_cast<int>(text.size()) : 0;
}

QString QBHeaderTextAttachment::headerStringName() const
{
    const int level = headerLevel();
    return level == 0 ? QString() : u"H%1"_s.arg(level);
}

NSFont QBHeaderTextAttachment::headerFont() const
{
    if (!themeManager()) {
        return NSFont::boldSystemFontOfSize(0);
    }
    switch (headerLevel()) {
    case 1:
        return themeManager()->h1Font();
    case 2:
        return themeManager()->h2Font();
    default:
        return themeManager()->h3Font();
    }
}

QString QBHeaderTextAttachment::baseCacheKey() const
{
    return className() + representedText();
}

NSFont QBHeaderTextAttachment::badgeFont() const
{
    return headerFont().fontWithSize(themeManager()->paragraphFontAscender() * quib::kBadgeFontSize);
}

// The badge is as high as the body's letters on every level and stands in the middle of the header's.

QSizeF QBHeaderTextAttachment::attachmentSize() const
{
    if (!themeManager()) {
        return {0, 0};
    }
    const double height = std::ceil(themeManager()->paragraphFontAscender());
    const double letters = badgeFont().advanceOfText(headerStringName());
    return {std::ceil(letters + 2 * quib::kBadgeMargin * height) + attachmentRightSpacing(), height};
}

double QBHeaderTextAttachment::attachmentBaselineOffset() const
{
    const NSFont font = headerFont();
    return (font.ascender() + font.descender() - attachmentSize().height()) / 2;
}

double QBHeaderTextAttachment::attachmentRightSpacing() const
{
    return themeManager() ? themeManager()->fullLineAttachmentDefaultRightSpacing() : 0;
}

void QBHeaderTextAttachment::drawAttachmentForAttachmentRect(quib::GraphicsContext &context, const QRectF &rect) const
{
    constexpr double kCorner = 0.25;
    constexpr double kBackground = 0.14;
    const QRectF badge = drawRectForAttachmentRect(rect);
    const NSColor color = quib::colorOrGray(themeManager()->styleMarkerTextColor());
    context.fillRoundedRect(badge, badge.height() * kCorner, color.colorWithAlphaComponent(kBackground));
    quib::drawCenteredText(context, headerStringName(), badge, badgeFont(), color);
}

#include "QBNotesTextAttachment.h"

#include "AttachmentMetrics.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <cmath>

using namespace Qt::StringLiterals;

QBNotesTextAttachment::QBNotesTextAttachment(QString representedText,
                                             std::shared_ptr<QBNotesTextThemeManager> themeManager)
    : m_representedText(std::move(representedText))
    , m_themeManager(std::move(themeManager))
{
}

QBNotesTextAttachment::~QBNotesTextAttachment() = default;

NSRange
QBNotesTextAttachment::extraAttachmentRangeForAttachmentRange(NSRange range,
                                                              const NSAttributedString & /*inAttributedString*/) const
{
    return range;
}

QSizeF QBNotesTextAttachment::cachedAttachmentSize() const
{
    const QString key = baseCacheKey();
    if (!m_themeManager || key.isEmpty()) {
        return attachmentSize();
    }
    return m_themeManager->themeCache().value(key + u"AttachmentSize"_s, [this] { return attachmentSize(); });
}

double QBNotesTextAttachment::cachedAttachmentBaselineOffset() const
{
    const QString key = baseCacheKey();
    if (!m_themeManager || key.isEmpty()) {
        return attachmentBaselineOffset();
    }
    return m_themeManager->themeCache().value(key + u"AttachmentBaselineOffset"_s,
                                              [this] { return attachmentBaselineOffset(); });
}

void QBNotesTextAttachment::drawAttachmentForAttachmentRect(quib::Canvas & /*canvas*/, const QRectF & /*rect*/) const {}

void QBNotesTextAttachment::updateTextAttachment()
{
    if (m_updateHandler) {
        m_updateHandler(*this);
    }
}

double QBNotesTextAttachment::attachmentBaselineOffsetForCenteredAttachmentHeight(double height) const
{
    if (!m_themeManager) {
        return 0;
    }
    return (m_themeManager->paragraphFontAscender() + m_themeManager->paragraphFontDescender() - height) / 2;
}

double QBNotesTextAttachment::wholePointsOfBaseSize(double parts) const
{
    return m_themeManager ? std::floor(m_themeManager->baseFontSize() * parts) : 0;
}

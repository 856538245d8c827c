#include "QBNotesTextAttachment.h"

#include "AttachmentMetrics.h"

#include <Foundation/Identifiers.h>
#include <Graphics/GraphicsContext.h>
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

void QBNotesTextAttachment::drawAttachmentForAttachmentRect(quib::GraphicsContext & /*context*/,
                                                            const QRectF & /*rect*/) const
{
}

std::pair<QString, QByteArray> QBNotesTextAttachment::createFileWrapper() const
{
    const QSizeF largest(quib::kLargestFileWrapperSide, quib::kLargestFileWrapperSide);
    const QSizeF size = cachedAttachmentSize().boundedTo(largest);
    quib::GraphicsContext context(size, quib::kFileWrapperScale);
    if (m_themeManager) {
        drawAttachmentForAttachmentRect(context, {{0, 0}, size});
    }
    return {QString(quib::uuidString() % u".png"), context.image().pngData()};
}

void QBNotesTextAttachment::updateTextAttachment()
{
    if (m_updateHandler) {
        (*m_updateHandler)(*this);
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

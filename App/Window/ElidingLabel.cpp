#include "ElidingLabel.h"

#include <QPainter>
#include <QStyle>

namespace quib {

QSize ElidingLabel::minimumSizeHint() const
{
    return {fontMetrics().horizontalAdvance(QChar(0x2026)), QLabel::minimumSizeHint().height()};
}

void ElidingLabel::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    const QRect area = contentsRect();
    const Qt::Alignment side = QStyle::visualAlignment(layoutDirection(), alignment());
    style()->drawItemText(&painter, area, int(side) | Qt::TextSingleLine, palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideRight, area.width()), foregroundRole());
}

} // namespace quib

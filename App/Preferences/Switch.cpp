#include "Switch.h"

#include <QKeyEvent>
#include <QPainter>

namespace quib {

namespace {

// Units: points.
constexpr QSizeF kTrack{38, 22};
constexpr double kKnobInset = 3;
/// Room for the ring of the keyboard.
constexpr double kRing = 3;

} // namespace

Switch::Switch(QWidget *parent)
    : QAbstractButton(parent)
{
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Switch::sizeHint() const
{
    return QSizeF(kTrack.width() + 2 * kRing, kTrack.height() + 2 * kRing).toSize();
}

void Switch::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    const QColor accent = palette().color(group, QPalette::Highlight);
    QColor off = palette().color(group, QPalette::WindowText);
    off.setAlphaF(underMouse() ? 0.38F : 0.3F);
    const QRectF track((width() - kTrack.width()) / 2, (height() - kTrack.height()) / 2, kTrack.width(),
                       kTrack.height());
    const double radius = track.height() / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? (underMouse() ? accent.lighter(108) : accent) : off);
    painter.drawRoundedRect(track, radius, radius);
    // On is at the end of the line, whichever side that is.
    const bool isAtRight = isChecked() != isRightToLeft();
    const double side = track.height() - 2 * kKnobInset;
    const double left = isAtRight ? track.right() - kKnobInset - side : track.left() + kKnobInset;
    painter.setBrush(isChecked() ? palette().color(group, QPalette::HighlightedText)
                                 : palette().color(group, QPalette::Window));
    painter.drawEllipse(QRectF(left, track.top() + kKnobInset, side, side));
    if (hasFocus()) {
        painter.setPen(QPen(accent, 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(track.adjusted(-2, -2, 2, 2), radius + 2, radius + 2);
    }
}

void Switch::enterEvent(QEnterEvent *event)
{
    QAbstractButton::enterEvent(event);
    update();
}

void Switch::leaveEvent(QEvent *event)
{
    QAbstractButton::leaveEvent(event);
    update();
}

void Switch::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

} // namespace quib

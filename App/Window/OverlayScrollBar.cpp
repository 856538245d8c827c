#include "OverlayScrollBar.h"

#include <QAbstractScrollArea>
#include <QEvent>

namespace quib {

namespace {

/// Units: points.
constexpr int kWidth = 10;

} // namespace

OverlayScrollBar::OverlayScrollBar(QAbstractScrollArea *view)
    : QScrollBar(Qt::Vertical, view)
    , m_view(*view)
{
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(tr("Scroll bar"));
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QScrollBar *of = view->verticalScrollBar();
    const auto follow = [this, of] {
        setPageStep(of->pageStep());
        setSingleStep(of->singleStep());
        setRange(of->minimum(), of->maximum());
        setValue(of->value());
        setVisible(of->maximum() > of->minimum());
    };
    connect(of, &QScrollBar::rangeChanged, this, follow);
    connect(of, &QScrollBar::valueChanged, this, &QScrollBar::setValue);
    connect(this, &QScrollBar::valueChanged, of, &QScrollBar::setValue);
    view->installEventFilter(this);
    follow();
    place();
}

void OverlayScrollBar::place()
{
    const bool isRightToLeft = m_view.layoutDirection() == Qt::RightToLeft;
    setGeometry(isRightToLeft ? 0 : m_view.width() - kWidth, 0, kWidth, m_view.height());
    raise();
}

bool OverlayScrollBar::eventFilter(QObject * /*watched*/, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutDirectionChange) {
        place();
    }
    return false;
}

} // namespace quib

#pragma once

#include <QScrollBar>

QT_BEGIN_NAMESPACE
class QAbstractScrollArea;
QT_END_NAMESPACE

namespace quib {

/// A scroll bar that lies on its view instead of beside it, so that rows have the whole width whether there is
/// something to scroll or not. It is not seen where there is nothing to scroll. Owned by the view; main queue.
class OverlayScrollBar final : public QScrollBar
{
    Q_OBJECT

public:
    /// Takes the place of the view's own bar, which goes on being the one that scrolls.
    explicit OverlayScrollBar(QAbstractScrollArea *view);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();

    QAbstractScrollArea &m_view;
};

} // namespace quib

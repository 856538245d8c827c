#pragma once

#include <QLabel>

namespace quib {

/// A line of text that takes the room there is: what has none is cut off behind an ellipsis. Owned as any widget; main
/// queue.
class ElidingLabel final : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace quib

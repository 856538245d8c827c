#pragma once

#include <QAbstractButton>

namespace quib {

/// A switch that is on or off, drawn in the colours of the palette. To assistive technology it is a check box.
class Switch final : public QAbstractButton
{
    Q_OBJECT

public:
    explicit Switch(QWidget *parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};

} // namespace quib

#pragma once

#include <QPixmap>
#include <QWidget>

namespace quib {

/// The soft shadow of a panel that lies over its window, drawn by a widget below it: a key in the panel paints the
/// panel alone, where a graphics effect would blur all of it again, and paint what lies under it. Owned by the panel's
/// window; main queue.
class PanelShadow final : public QWidget
{
    Q_OBJECT

public:
    /// panel: a child of the same window, painted no longer than this.
    explicit PanelShadow(QWidget &panel);

    /// Shows it right below its panel, over everything else.
    void showBelow();
    /// The panel was moved or has another size.
    void follow();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget &m_panel;
    /// Of a panel that is as small as can be: four corners, and one unit between them that is stretched.
    QPixmap m_picture;
};

} // namespace quib

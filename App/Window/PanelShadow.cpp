#include "PanelShadow.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace quib {

namespace {

// Units: points.
constexpr int kBlur = 36;
constexpr int kDown = 8;
constexpr int kRadius = 10;
/// Of each corner's side in the picture, half outside of the panel.
constexpr int kCorner = 2 * kBlur;
/// Of the panel's edge, of 255.
constexpr int kOpacity = 90;

/// One row or column becomes the average of what lies around each of its places.
void blurLine(uchar *line, qsizetype stride, int count, int radius)
{
    std::vector<int> sums(static_cast<size_t>(count) + 1, 0);
    for (int i = 0; i < count; ++i) {
        sums[static_cast<size_t>(i) + 1] = sums[static_cast<size_t>(i)] + line[i * stride];
    }
    for (int i = 0; i < count; ++i) {
        const int begin = std::max(0, i - radius);
        const int end = std::min(count, i + radius + 1);
        line[i * stride] =
            static_cast<uchar>((sums[static_cast<size_t>(end)] - sums[static_cast<size_t>(begin)]) / (2 * radius + 1));
    }
}

QPixmap shadowPicture(double scale)
{
    const int side = static_cast<int>(std::lround((2 * kCorner + 1) * scale));
    QImage mask(side, side, QImage::Format_Alpha8);
    mask.fill(Qt::transparent);
    {
        QPainter painter(&mask);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(scale, scale);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::black);
        painter.drawRoundedRect(QRectF(kBlur, kBlur, kCorner + 1, kCorner + 1), kRadius, kRadius);
    }
    // Three averages are as good as the bell curve.
    const int radius = static_cast<int>(std::lround(kBlur * scale / 3));
    for (int pass = 0; pass < 3; ++pass) {
        for (int i = 0; i < side; ++i) {
            blurLine(mask.scanLine(i), 1, side, radius);
        }
        for (int i = 0; i < side; ++i) {
            blurLine(mask.bits() + i, mask.bytesPerLine(), side, radius);
        }
    }
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < side; ++y) {
        const uchar *from = mask.constScanLine(y);
        auto *to = reinterpret_cast<QRgb *>(picture.scanLine(y));
        for (int x = 0; x < side; ++x) {
            to[x] = qRgba(0, 0, 0, from[x] * kOpacity / 255);
        }
    }
    QPixmap made = QPixmap::fromImage(std::move(picture));
    made.setDevicePixelRatio(scale);
    return made;
}

} // namespace

PanelShadow::PanelShadow(QWidget &panel)
    : QWidget(panel.parentWidget())
    , m_panel(panel)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void PanelShadow::showBelow()
{
    follow();
    show();
    stackUnder(&m_panel);
}

void PanelShadow::follow()
{
    setGeometry(m_panel.geometry().adjusted(-kBlur, -kBlur, kBlur, kBlur).translated(0, kDown));
}

void PanelShadow::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    const double scale = devicePixelRatioF();
    if (m_picture.isNull() || m_picture.devicePixelRatio() != scale) {
        m_picture = shadowPicture(scale);
    }
    // The corners as they are, the edges between them stretched; what is inside of those lies under the panel. One that
    // is smaller than two corners takes a part of each.
    const int cornerWidth = std::min(kCorner, width() / 2);
    const int cornerHeight = std::min(kCorner, height() / 2);
    const int from[] = {0, kCorner, 2 * kCorner + 1};
    const int xs[] = {0, cornerWidth, width() - cornerWidth, width()};
    const int ys[] = {0, cornerHeight, height() - cornerHeight, height()};
    const auto source = [&](int part, int corner) {
        const int begin = part == 2 ? from[2] - corner : from[part];
        return std::pair(begin, part == 1 ? 1 : corner);
    };
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QRect to(QPoint(xs[column], ys[row]), QPoint(xs[column + 1] - 1, ys[row + 1] - 1));
            const auto [x, partWidth] = source(column, cornerWidth);
            const auto [y, partHeight] = source(row, cornerHeight);
            if (const bool isBelowPanel = row == 1 && column == 1; !to.isEmpty() && !isBelowPanel) {
                painter.drawPixmap(QRectF(to), m_picture,
                                   QRectF(x * scale, y * scale, partWidth * scale, partHeight * scale));
            }
        }
    }
}

} // namespace quib

#include "EditorSymbol.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Draws in the colours of the moment, so that it follows the theme.
class EditorSymbolEngine final : public QIconEngine
{
public:
    explicit EditorSymbolEngine(QByteArray drawing)
        : m_drawing(std::move(drawing))
    {
    }
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const QPalette palette = QApplication::palette();
        const QPalette::ColorGroup group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor color = palette.color(group, state == QIcon::On ? QPalette::Highlight : QPalette::ButtonText);
        QByteArray drawing = m_drawing;
        drawing.replace("currentColor", color.name(QColor::HexRgb).toLatin1());
        QSvgRenderer renderer(drawing);
        const int side = std::min(rect.width(), rect.height());
        renderer.render(painter, QRectF(rect.left() + (rect.width() - side) / 2.0,
                                        rect.top() + (rect.height() - side) / 2.0, side, side));
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }
    [[nodiscard]] QIconEngine *clone() const override { return new EditorSymbolEngine(m_drawing); }

private:
    QByteArray m_drawing;
};

} // namespace

QIcon editorSymbol(const QString &name)
{
    QFile file(u":/Editor/"_s % name % u".svg"_s);
    return file.open(QIODevice::ReadOnly) ? QIcon(new EditorSymbolEngine(file.readAll())) : QIcon();
}

} // namespace quib

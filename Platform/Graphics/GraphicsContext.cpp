#include "GraphicsContext.h"

#include <Foundation/Assert.h>

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace quib {

namespace {

QColor colorOf(const NSColor &color)
{
    return QColor::fromRgbF(static_cast<float>(color.redComponent()), static_cast<float>(color.greenComponent()),
                            static_cast<float>(color.blueComponent()), static_cast<float>(color.alphaComponent()));
}

QPen penOf(const NSColor &color, double lineWidth, LineCap cap)
{
    const bool isRound = cap == LineCap::Round;
    return {colorOf(color), std::max(0.0, lineWidth), Qt::SolidLine, isRound ? Qt::RoundCap : Qt::FlatCap,
            isRound ? Qt::RoundJoin : Qt::MiterJoin};
}

QPainterPath painterPathOf(const NSBezierPath &path)
{
    QPainterPath result;
    for (const NSBezierPath::Element &element : path.elements()) {
        switch (element.kind) {
        case NSBezierPath::Element::Kind::Move:
            result.moveTo(element.point);
            break;
        case NSBezierPath::Element::Kind::Line:
            result.lineTo(element.point);
            break;
        case NSBezierPath::Element::Kind::Curve:
            result.cubicTo(element.controlPoint1, element.controlPoint2, element.point);
            break;
        case NSBezierPath::Element::Kind::Close:
            result.closeSubpath();
            break;
        }
    }
    return result;
}

QImage madeImage(QSizeF size, double scale, const NSColor &background)
{
    const auto side = [scale](double length) { return std::max(1.0, std::ceil(length * scale - 1e-6)); };
    const double width = side(size.width());
    const double height = side(size.height());
    QImage image;
    if (width * height <= static_cast<double>(NSImage::kLargestPixelCount)) {
        image = QImage(static_cast<int>(width), static_cast<int>(height), QImage::Format_ARGB32_Premultiplied);
        image.fill(colorOf(background));
    }
    return image;
}

} // namespace

struct GraphicsContext::Surface
{
    QImage image;
    double scale;
    QPainter painter;
};

GraphicsContext::GraphicsContext(QSizeF size, double scale, const NSColor &background)
    : m_surface(std::make_unique<Surface>())
    , m_painter(&m_surface->painter)
{
    m_surface->scale = scale > 0 ? scale : 1;
    m_surface->image = madeImage(size, m_surface->scale, background);
    if (m_surface->image.isNull()) {
        m_surface->image = QImage(1, 1, QImage::Format_ARGB32_Premultiplied);
        m_surface->image.fill(Qt::transparent);
    }
    m_painter->begin(&m_surface->image);
    m_painter->setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    m_painter->scale(m_surface->scale, m_surface->scale);
}

GraphicsContext::GraphicsContext(QPainter &painter)
    : m_painter(&painter)
{
    QUIB_ASSERT(painter.isActive());
    m_painter->save();
    m_painter->setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
}

GraphicsContext::~GraphicsContext()
{
    if (m_surface == nullptr) {
        while (m_savedStates > 0) {
            restoreState();
        }
        m_painter->restore();
    }
}

NSImage GraphicsContext::image() const
{
    return m_surface == nullptr ? NSImage() : NSImage(m_surface->image.copy(), m_surface->scale);
}

void GraphicsContext::saveState()
{
    m_painter->save();
    ++m_savedStates;
}

void GraphicsContext::restoreState()
{
    if (m_savedStates > 0) {
        --m_savedStates;
        m_painter->restore();
    }
}

void GraphicsContext::translateBy(double x, double y)
{
    m_painter->translate(x, y);
}

void GraphicsContext::scaleBy(double x, double y)
{
    m_painter->scale(x, y);
}

void GraphicsContext::rotateBy(double degrees)
{
    m_painter->rotate(degrees);
}

void GraphicsContext::clipToRect(const QRectF &rect)
{
    m_painter->setClipRect(rect, Qt::IntersectClip);
}

void GraphicsContext::clipToPath(const NSBezierPath &path)
{
    m_painter->setClipPath(painterPathOf(path), Qt::IntersectClip);
}

void GraphicsContext::fillRect(const QRectF &rect, const NSColor &color)
{
    m_painter->fillRect(rect, colorOf(color));
}

void GraphicsContext::strokeRect(const QRectF &rect, const NSColor &color, double lineWidth)
{
    strokePath(NSBezierPath::bezierPathWithRect(rect), color, lineWidth);
}

void GraphicsContext::fillRoundedRect(const QRectF &rect, double radius, const NSColor &color)
{
    fillPath(NSBezierPath::bezierPathWithRoundedRect(rect, radius, radius), color);
}

void GraphicsContext::strokeRoundedRect(const QRectF &rect, double radius, const NSColor &color, double lineWidth)
{
    strokePath(NSBezierPath::bezierPathWithRoundedRect(rect, radius, radius), color, lineWidth);
}

void GraphicsContext::fillOval(const QRectF &rect, const NSColor &color)
{
    fillPath(NSBezierPath::bezierPathWithOvalInRect(rect), color);
}

void GraphicsContext::strokeOval(const QRectF &rect, const NSColor &color, double lineWidth)
{
    strokePath(NSBezierPath::bezierPathWithOvalInRect(rect), color, lineWidth);
}

void GraphicsContext::strokeLine(QPointF from, QPointF to, const NSColor &color, double lineWidth, LineCap cap)
{
    m_painter->setPen(penOf(color, lineWidth, cap));
    m_painter->drawLine(from, to);
}

void GraphicsContext::fillPath(const NSBezierPath &path, const NSColor &color)
{
    m_painter->fillPath(painterPathOf(path), colorOf(color));
}

void GraphicsContext::strokePath(const NSBezierPath &path, const NSColor &color, double lineWidth, LineCap cap)
{
    m_painter->strokePath(painterPathOf(path), penOf(color, lineWidth, cap));
}

void GraphicsContext::drawImage(const NSImage &image, const QRectF &inRect, double alpha)
{
    if (image.isEmpty() || inRect.isEmpty()) {
        return;
    }
    // The painter's own scaling looks at two pixels each way, which is not enough where a picture shrinks by more.
    const QTransform &transform = m_painter->combinedTransform();
    const double onDevice = std::hypot(transform.m11(), transform.m12());
    const QSize wanted = (inRect.size() * onDevice).toSize().expandedTo(QSize(1, 1));
    const QSize has = image.pixelSize();
    const bool shrinks = wanted.width() < has.width() && wanted.height() < has.height();
    const QImage pixels = shrinks ? image.imageScaledToPixelSize(wanted).image() : image.image();
    const double before = m_painter->opacity();
    m_painter->setOpacity(before * std::clamp(alpha, 0.0, 1.0));
    m_painter->drawImage(inRect, pixels);
    m_painter->setOpacity(before);
}

void GraphicsContext::drawText(QStringView text, QPointF baseline, const NSFont &font, const NSColor &color)
{
    if (text.isEmpty()) {
        return;
    }
    // Fonts come in whole pixels only: what is left of the size is done by the transformation.
    const QFont whole = font.font();
    const double rest = font.pointSize() / whole.pixelSize();
    m_painter->save();
    m_painter->translate(baseline);
    m_painter->scale(rest, rest);
    m_painter->setFont(whole);
    m_painter->setPen(colorOf(color));
    m_painter->drawText(QPointF(0, 0), text.toString());
    m_painter->restore();
}

} // namespace quib

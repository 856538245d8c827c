#include "NSBezierPath.h"

#include <algorithm>

namespace {

/// How far the handles of a quarter of a circle lie from its ends, as a part of the radius.
constexpr double kCircleHandle = 0.5522847498;

} // namespace

NSBezierPath NSBezierPath::bezierPathWithRect(const QRectF &rect)
{
    NSBezierPath path;
    path.moveToPoint(rect.topLeft());
    path.lineToPoint(rect.topRight());
    path.lineToPoint(rect.bottomRight());
    path.lineToPoint(rect.bottomLeft());
    path.closePath();
    return path;
}

NSBezierPath NSBezierPath::bezierPathWithRoundedRect(const QRectF &rect, double xRadius, double yRadius)
{
    const double rx = std::clamp(xRadius, 0.0, std::max(0.0, rect.width() / 2));
    const double ry = std::clamp(yRadius, 0.0, std::max(0.0, rect.height() / 2));
    if (rx <= 0 || ry <= 0) {
        return bezierPathWithRect(rect);
    }
    const double hx = rx * (1 - kCircleHandle);
    const double hy = ry * (1 - kCircleHandle);
    const double left = rect.left();
    const double right = rect.right();
    const double top = rect.top();
    const double bottom = rect.bottom();
    NSBezierPath path;
    path.moveToPoint({left + rx, top});
    path.lineToPoint({right - rx, top});
    path.curveToPoint({right, top + ry}, {right - hx, top}, {right, top + hy});
    path.lineToPoint({right, bottom - ry});
    path.curveToPoint({right - rx, bottom}, {right, bottom - hy}, {right - hx, bottom});
    path.lineToPoint({left + rx, bottom});
    path.curveToPoint({left, bottom - ry}, {left + hx, bottom}, {left, bottom - hy});
    path.lineToPoint({left, top + ry});
    path.curveToPoint({left + rx, top}, {left, top + hy}, {left + hx, top});
    path.closePath();
    return path;
}

NSBezierPath NSBezierPath::bezierPathWithOvalInRect(const QRectF &rect)
{
    return bezierPathWithRoundedRect(rect, rect.width() / 2, rect.height() / 2);
}

void NSBezierPath::moveToPoint(QPointF point)
{
    m_elements.push_back({.kind = Element::Kind::Move, .point = point, .controlPoint1 = {}, .controlPoint2 = {}});
}

void NSBezierPath::lineToPoint(QPointF point)
{
    m_elements.push_back({.kind = Element::Kind::Line, .point = point, .controlPoint1 = {}, .controlPoint2 = {}});
}

void NSBezierPath::curveToPoint(QPointF point, QPointF controlPoint1, QPointF controlPoint2)
{
    m_elements.push_back(
        {.kind = Element::Kind::Curve, .point = point, .controlPoint1 = controlPoint1, .controlPoint2 = controlPoint2});
}

void NSBezierPath::closePath()
{
    m_elements.push_back({.kind = Element::Kind::Close, .point = {}, .controlPoint1 = {}, .controlPoint2 = {}});
}

void NSBezierPath::appendBezierPath(const NSBezierPath &path)
{
    m_elements.insert(m_elements.end(), path.m_elements.begin(), path.m_elements.end());
}

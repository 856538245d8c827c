#pragma once

#include <QPointF>
#include <QRectF>

#include <vector>

/// An outline of straight lines and curves. A value; any queue. Units: points, y grows downwards.
class NSBezierPath
{
public:
    NSBezierPath() = default;
    [[nodiscard]] static NSBezierPath bezierPathWithRect(const QRectF &rect);
    /// Radii above half a side are cut to it.
    [[nodiscard]] static NSBezierPath bezierPathWithRoundedRect(const QRectF &rect, double xRadius, double yRadius);
    [[nodiscard]] static NSBezierPath bezierPathWithOvalInRect(const QRectF &rect);

    void moveToPoint(QPointF point);
    /// Starts at the origin where nothing was begun.
    void lineToPoint(QPointF point);
    void curveToPoint(QPointF point, QPointF controlPoint1, QPointF controlPoint2);
    /// Joins the end with the point that was last moved to.
    void closePath();
    void appendBezierPath(const NSBezierPath &path);

    [[nodiscard]] bool isEmpty() const { return m_elements.empty(); }

    /// One step of an outline.
    struct Element
    {
        enum class Kind
        {
            Move,
            Line,
            Curve,
            Close,
        };
        Kind kind = Kind::Move;
        QPointF point;
        QPointF controlPoint1;
        QPointF controlPoint2;
    };
    [[nodiscard]] const std::vector<Element> &elements() const { return m_elements; }

private:
    std::vector<Element> m_elements;
};

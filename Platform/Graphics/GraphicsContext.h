#pragma once

#include "NSBezierPath.h"
#include "NSColor.h"
#include "NSFont.h"
#include "NSImage.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QStringView>

#include <memory>

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

namespace quib {

/// How the open ends of a line look.
enum class LineCap
{
    Flat,
    Round,
};

/// A surface to draw on: a picture of its own, or whatever a painter paints on, so that attachments look alike in a
/// window and in an exported picture. A resource, confined to one thread at a time. Text needs what GraphicsEnvironment
/// makes; all else does not.
/// Units: points from the top left, y grows downwards; edges are smoothed.
class GraphicsContext
{
public:
    /// A picture of that many points, at so many pixels to a point, filled with the background. Sides are rounded up to
    /// whole pixels, and at least one; no picture is made above NSImage::kLargestPixelCount, what is drawn is then
    /// lost.
    explicit GraphicsContext(QSizeF size, double scale = 1, const NSColor &background = NSColor::clearColor());
    /// Draws with a painter, which must be painting and outlive the context; its state is given back at the end.
    explicit GraphicsContext(QPainter &painter);
    GraphicsContext(const GraphicsContext &) = delete;
    GraphicsContext &operator=(const GraphicsContext &) = delete;
    ~GraphicsContext();

    /// What draws, for those that lay out text; it comes back in the state in which it was taken.
    [[nodiscard]] QPainter &painter() { return *m_painter; }
    /// What was drawn so far; empty where a painter is drawn with.
    [[nodiscard]] NSImage image() const;

    // State: clip and transformation, which hold for what is drawn later

    void saveState();
    /// Takes back to the state that was saved last; nothing happens when none is left.
    void restoreState();
    void translateBy(double x, double y);
    void scaleBy(double x, double y);
    /// Degrees, clockwise.
    void rotateBy(double degrees);
    void clipToRect(const QRectF &rect);
    void clipToPath(const NSBezierPath &path);

    // Shapes; the stroke of a line lies on both sides of it in equal parts

    void fillRect(const QRectF &rect, const NSColor &color);
    void strokeRect(const QRectF &rect, const NSColor &color, double lineWidth = 1);
    void fillRoundedRect(const QRectF &rect, double radius, const NSColor &color);
    void strokeRoundedRect(const QRectF &rect, double radius, const NSColor &color, double lineWidth = 1);
    void fillOval(const QRectF &rect, const NSColor &color);
    void strokeOval(const QRectF &rect, const NSColor &color, double lineWidth = 1);
    void strokeLine(QPointF from, QPointF to, const NSColor &color, double lineWidth = 1, LineCap cap = LineCap::Flat);
    /// What lies an odd number of outlines deep is inside.
    void fillPath(const NSBezierPath &path, const NSColor &color);
    void strokePath(const NSBezierPath &path, const NSColor &color, double lineWidth = 1, LineCap cap = LineCap::Flat);

    // Pictures and text

    /// Draws a picture into a box, whatever its ratio.
    void drawImage(const NSImage &image, const QRectF &inRect, double alpha = 1);
    /// Draws a text in one line, its left end on the baseline at the point. It is as wide as NSFont::advanceOfText
    /// says.
    void drawText(QStringView text, QPointF baseline, const NSFont &font, const NSColor &color);

private:
    struct Surface;

    std::unique_ptr<Surface> m_surface;
    QPainter *m_painter;
    int m_savedStates = 0;
};

} // namespace quib

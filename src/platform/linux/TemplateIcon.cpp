#include "platform/linux/TemplateIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPainterPathStroker>

namespace nettlecap {

namespace {

constexpr double outlineWidth = 0.9;  // in points

struct Shapes {
    QPainterPath lines;
    QPainterPath ground;  ///< under them
};

QPainterPath stroked(const QPainterPath& line, double width) {
    QPainterPathStroker pen;
    pen.setWidth(width);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    return pen.createStroke(line);
}

QPainterPath shapeOf(const TemplateDrawing::RoundedRectangle& rectangle) {
    const auto& [origin, size] = rectangle.frame;
    QPainterPath path;
    path.addRoundedRect({origin.x, origin.y, size.width, size.height}, rectangle.radius, rectangle.radius);
    return rectangle.lineWidth > 0 ? stroked(path, rectangle.lineWidth) : path;
}

QPainterPath shapeOf(const TemplateDrawing::Stroke& stroke) {
    QPainterPath path;
    for (const Point& point : stroke.points) {
        const QPointF place(point.x, point.y);
        path.elementCount() == 0 ? path.moveTo(place) : path.lineTo(place);
    }
    return stroked(path, stroke.lineWidth);
}

QPainterPath shapeOf(const TemplateDrawing& drawing) {
    QPainterPath path;
    for (const auto& rectangle : drawing.rectangles) path |= shapeOf(rectangle);
    for (const auto& stroke : drawing.strokes) path |= shapeOf(stroke);
    return path;
}

/// The shape's outline, with what lies within: between thin lines there would be no more
/// than crumbs of the panel.
QPainterPath groundOf(const QPainterPath& shape) {
    QPainterPath ground;
    for (const QPolygonF& contour : (stroked(shape, 2 * outlineWidth) | shape).toSubpathPolygons()) {
        QPainterPath filled;
        filled.addPolygon(contour);
        ground |= filled;
    }
    return ground;
}

QPixmap drawn(const Shapes& shapes, Size size, int side) {
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(0, side);
    painter.scale(side / size.width, -side / size.height);
    painter.fillPath(shapes.ground, QColor(0x1d, 0x1d, 0x1f));
    painter.fillPath(shapes.lines, Qt::white);
    return pixmap;
}

}  // namespace

QIcon templateIcon(const TemplateDrawing& drawing) {
    QIcon icon;
    const QPainterPath lines = shapeOf(drawing);
    const Shapes shapes{.lines = lines, .ground = groundOf(lines)};
    for (const int side : {16, 18, 20, 22, 24, 28, 32, 36, 40, 44, 48})
        icon.addPixmap(drawn(shapes, drawing.size, side));
    return icon;
}

}  // namespace nettlecap

#include "editor/CropOverlay.h"

#include <QPainter>

namespace velmor {

namespace {

/// Radii of corners in points: of a finished box, of the one in hand, of an unfinished box, and of
/// the ring around the one that the keyboard acts on.
constexpr qreal cornerRadius = 5;
constexpr qreal heldRadius = 7;
constexpr qreal pendingRadius = 4;
constexpr qreal focusRadius = 10;

QPen linePen(const QColor &color, qreal width)
{
    return {color, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin};
}

/// A dashed line; lengths in points.
QPen dashedPen(const QColor &color, qreal width, qreal on, qreal off)
{
    QPen pen = linePen(color, width);
    pen.setDashPattern({on / width, off / width});
    return pen;
}

QPolygonF outline(const Quad &quad, const QRectF &rect)
{
    QPolygonF points;
    for (const QPointF &corner : quad.corners)
        points.append(denorm(corner, rect));
    return points;
}

} // namespace

CropOverlay::CropOverlay(QQuickItem *parent) : PictureItem(parent)
{
    connect(this, &CropOverlay::changed, this, &CropOverlay::repaint);
}

void CropOverlay::setEditor(PageEditor *editor)
{
    if (editor == m_editor)
        return;
    if (m_editor)
        m_editor->disconnect(this);
    m_editor = editor;
    if (m_editor) {
        connect(m_editor, &PageEditor::boxesChanged, this, &CropOverlay::repaint);
        connect(m_editor, &PageEditor::placementChanged, this, &CropOverlay::repaint);
    }
    repaint();
    Q_EMIT editorChanged();
}

void CropOverlay::paint(QPainter &painter, QSizeF) const
{
    if (!m_editor)
        return;
    const QRectF rect = m_editor->imageRect();
    paintProposal(painter, rect);
    for (int box = 0; box < m_editor->boxes().size(); ++box)
        paintBox(painter, rect, box);
    paintPending(painter, rect);
}

QColor CropOverlay::faded(double opacity) const
{
    QColor color = m_color;
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

/// Fainter than anything that was clicked, and without corners to take hold of.
void CropOverlay::paintProposal(QPainter &painter, const QRectF &rect) const
{
    if (!m_editor->proposal())
        return;
    painter.setPen(dashedPen(faded(0.8), 1.5, 3, 4));
    painter.setBrush(faded(0.04));
    painter.drawPolygon(outline(*m_editor->proposal(), rect));
}

void CropOverlay::paintBox(QPainter &painter, const QRectF &rect, int box) const
{
    const QPolygonF points = outline(m_editor->boxes().at(box), rect);
    painter.setPen(linePen(m_color, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolygon(points);
    painter.setPen(Qt::NoPen);
    painter.setBrush(faded(0.08));
    painter.drawPolygon(points);

    const CropBoxes &crop = m_editor->crop();
    for (int corner = 0; corner < points.size(); ++corner) {
        const BoxCorner place{box, corner};
        const qreal radius = crop.dragTarget() == place ? heldRadius : cornerRadius;
        painter.setPen(linePen(m_color, 2));
        painter.setBrush(Qt::white);
        painter.drawEllipse(points[corner], radius, radius);
        if (m_showsFocus && crop.currentCorner() == place) {
            painter.setPen(linePen(faded(0.65), 2));
            painter.setBrush(Qt::NoBrush);
            painter.drawEllipse(points[corner], focusRadius, focusRadius);
        }
    }
}

void CropOverlay::paintPending(QPainter &painter, const QRectF &rect) const
{
    QPolygonF points;
    for (const QPointF &corner : m_editor->pending())
        points.append(denorm(corner, rect));
    painter.setPen(dashedPen(faded(0.7), 1.5, 4, 3));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(points);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_color);
    for (const QPointF &point : points)
        painter.drawEllipse(point, pendingRadius, pendingRadius);
}

} // namespace velmor

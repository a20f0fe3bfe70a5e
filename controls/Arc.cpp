#include "controls/Arc.h"

#include <QConicalGradient>
#include <QPainter>

#include <algorithm>

namespace velmor {

Arc::Arc(QQuickItem *parent) : PictureItem(parent)
{
    connect(this, &Arc::changed, this, &Arc::repaint);
}

void Arc::paint(QPainter &painter, QSizeF size) const
{
    const qreal part = std::clamp(m_part, 0.0, 1.0);
    if (part == 0)
        return;
    QBrush brush(m_color);
    if (m_tail) {
        // The gradient runs anticlockwise from the top, so the bright end of the arc comes first.
        QConicalGradient fade(QRectF(QPointF(), size).center(), 90);
        QColor faint = m_color;
        faint.setAlpha(0);
        fade.setColorAt(0, faint);
        fade.setColorAt(1 - part, m_color);
        fade.setColorAt(1, faint);
        brush = fade;
    }
    painter.setPen(QPen(brush, m_thickness, Qt::SolidLine, Qt::RoundCap));
    const qreal inset = m_thickness / 2;
    const QRectF ring = QRectF(QPointF(), size).adjusted(inset, inset, -inset, -inset);
    // In sixteenths of a degree, anticlockwise from three o'clock.
    constexpr int turn = 360 * 16;
    painter.drawArc(ring, turn / 4, -qRound(part * turn));
}

} // namespace velmor

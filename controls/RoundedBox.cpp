#include "controls/RoundedBox.h"

#include <QPainter>

#include <algorithm>

namespace velmor {

RoundedBox::RoundedBox(QQuickItem *parent) : PictureItem(parent)
{
    connect(this, &RoundedBox::changed, this, &RoundedBox::repaint);
}

void RoundedBox::paint(QPainter &painter, QSizeF size) const
{
    const QRectF box(QPointF(), size);
    const qreal radius = std::min({m_radius, size.width() / 2, size.height() / 2});
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_color);
    painter.drawRoundedRect(box, radius, radius);
    if (m_lineWidth <= 0)
        return;
    const qreal inset = m_lineWidth / 2;
    const qreal lineRadius = std::max(0.0, radius - inset);
    painter.setPen(QPen(m_lineColor, m_lineWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(box.adjusted(inset, inset, -inset, -inset), lineRadius, lineRadius);
}

} // namespace velmor

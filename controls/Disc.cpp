#include "controls/Disc.h"

#include <QPainter>

#include <algorithm>

namespace velmor {

Disc::Disc(QQuickItem *parent) : PictureItem(parent)
{
    connect(this, &Disc::changed, this, &Disc::repaint);
}

void Disc::paint(QPainter &painter, QSizeF size) const
{
    const qreal radius = std::min(size.width(), size.height()) / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_color);
    painter.drawEllipse(QPointF(size.width() / 2, size.height() / 2), radius, radius);
}

} // namespace velmor

#include "controls/ArrowHead.h"

#include <QPainter>
#include <QPolygonF>

namespace velmor {

ArrowHead::ArrowHead(QQuickItem *parent) : PictureItem(parent)
{
    connect(this, &ArrowHead::changed, this, &ArrowHead::repaint);
}

void ArrowHead::paint(QPainter &painter, QSizeF size) const
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_color);
    painter.drawPolygon(QPolygonF({
        {size.width() / 2, 0            },
        {size.width(),     size.height()},
        {0,                size.height()}
    }));
}

} // namespace velmor

#include "controls/DiagonalGradient.h"

#include <QLinearGradient>
#include <QPainter>

namespace velmor {

DiagonalGradient::DiagonalGradient(QQuickItem *parent) : PictureItem(parent)
{
    connect(this, &DiagonalGradient::changed, this, &DiagonalGradient::repaint);
}

void DiagonalGradient::paint(QPainter &painter, QSizeF size) const
{
    QLinearGradient gradient(0, 0, size.width(), size.height());
    gradient.setColorAt(0, m_from);
    gradient.setColorAt(0.5, m_middle);
    gradient.setColorAt(1, m_to);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawRoundedRect(QRectF(QPointF(), size), m_radius, m_radius);
}

} // namespace velmor

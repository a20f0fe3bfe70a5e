#include "controls/BrandPicture.h"

#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>

namespace velmor {

void BrandPicture::paint(QPainter &painter, QSizeF size) const
{
    const qreal side = std::min(size.width(), size.height());
    const QRectF square((size.width() - side) / 2, (size.height() - side) / 2, side, side);
    QSvgRenderer(QStringLiteral(":/velmor/brand/velmor.svg")).render(&painter, square);
}

} // namespace velmor

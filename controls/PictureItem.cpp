#include "controls/PictureItem.h"

#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

namespace velmor {

PictureItem::PictureItem(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void PictureItem::repaint()
{
    m_stale = true;
    update();
}

QSGNode *PictureItem::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    auto *node = static_cast<QSGImageNode *>(old);
    const qreal ratio = window()->effectiveDevicePixelRatio() * detail();
    const QSize pixels = (size() * ratio).toSize();
    if (pixels.isEmpty()) {
        delete node;
        m_stale = true;
        return nullptr;
    }
    if (!node) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Linear);
        m_stale = true;
    }
    if (!m_stale)
        return node;
    m_stale = false;

    // A clear edge of one pixel, so that the picture's own edges stay soft when it's scaled or
    // turned.
    QImage picture(pixels + QSize(2, 2), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.translate(1 / ratio, 1 / ratio);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter, size());
    painter.end();
    node->setTexture(window()->createTextureFromImage(picture));
    // One pixel of the picture is one of the window, even where the item's own size is between two.
    node->setRect(QRectF(QPointF(-1, -1) / ratio, QSizeF(picture.size()) / ratio));
    return node;
}

void PictureItem::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size())
        repaint();
}

void PictureItem::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged)
        repaint();
}

} // namespace velmor

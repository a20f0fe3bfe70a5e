#include "controls/SoftShadow.h"

#include "controls/ShadowMask.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGTexture>

#include <algorithm>
#include <array>
#include <memory>

namespace velmor {

namespace {

/// One picture in nine parts, of which the middle row and column are stretched. Qt's own node for
/// this mixes units at fractional scales on the software renderer.
class NineParts : public QSGNode {
public:
    explicit NineParts(QQuickWindow &window)
    {
        for (auto *&part : m_parts) {
            part = window.createImageNode();
            part->setFiltering(QSGTexture::Linear);
            appendChildNode(part);
        }
    }

    /// Shows `texture` in the rectangle `place` of device pixels, `ratio` of which are one unit.
    void show(std::unique_ptr<QSGTexture> texture, const QRectF &place, qreal ratio)
    {
        const QSizeF size = texture->textureSize();
        const auto from = cuts(0, size.width(), size.width());
        const auto fromRows = cuts(0, size.height(), size.height());
        const auto to = cuts(place.left(), place.width(), size.width());
        const auto toRows = cuts(place.top(), place.height(), size.height());
        for (size_t i = 0; i < m_parts.size(); ++i) {
            const size_t x = i % 3;
            const size_t y = i / 3;
            m_parts[i]->setTexture(texture.get());
            m_parts[i]->setSourceRect(
                {QPointF(from[x], fromRows[y]), QPointF(from[x + 1], fromRows[y + 1])});
            m_parts[i]->setRect(
                {QPointF(to[x], toRows[y]) / ratio, QPointF(to[x + 1], toRows[y + 1]) / ratio});
        }
        m_texture = std::move(texture);
    }

private:
    /// Where a length, which shows a picture of the length `full`, is cut: one or two pixels in the
    /// middle of the picture take all of the stretch.
    static std::array<qreal, 4> cuts(qreal start, qreal length, qreal full)
    {
        const qreal edge = (int(full) - 1) / 2;
        return {start, start + edge, start + length - edge, start + length};
    }

    std::array<QSGImageNode *, 9> m_parts{};
    std::unique_ptr<QSGTexture> m_texture;
};

} // namespace

SoftShadow::SoftShadow(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(this, &SoftShadow::changed, this, &SoftShadow::redraw);
}

void SoftShadow::redraw()
{
    m_stale = true;
    update();
}

QSGNode *SoftShadow::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    auto *node = static_cast<NineParts *>(old);
    if (width() <= 0 || height() <= 0 || m_color.alpha() == 0) {
        delete node;
        m_stale = true;
        return nullptr;
    }
    if (!node) {
        node = new NineParts(*window());
        m_stale = true;
    }
    if (!m_stale)
        return node;
    m_stale = false;

    const qreal ratio = window()->effectiveDevicePixelRatio();
    const QSizeF full = size() * ratio;
    const QPointF offset = QPointF(m_offsetX, m_offsetY) * ratio;
    const qreal sigma = m_blur * ratio;
    const qreal radius = m_radius * ratio;
    // From this size on the middle is flat, and only the nine parts' middle grows.
    const qreal flat = 2 * std::ceil(radius + shadowReach(sigma) +
                                     std::max(std::abs(offset.x()), std::abs(offset.y())));
    const ShadowBox box{full.boundedTo({flat, flat}), radius};
    QImage image = shadowMask(box, sigma, m_color);
    if (m_hollow)
        cutOut(image, box, -offset);

    const QSizeF shown = full - box.size + image.size();
    const QPointF corner =
        QPointF(full.width() - shown.width(), full.height() - shown.height()) / 2 + offset;
    std::unique_ptr<QSGTexture> texture(
        window()->createTextureFromImage(image, QQuickWindow::TextureHasAlphaChannel));
    node->show(std::move(texture), QRectF(corner, shown), ratio);
    return node;
}

void SoftShadow::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size())
        redraw();
}

void SoftShadow::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged)
        redraw();
}

} // namespace velmor

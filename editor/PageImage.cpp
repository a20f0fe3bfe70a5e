#include "editor/PageImage.h"

#include "editor/PixelGrid.h"

#include <QQuickWindow>
#include <QSGImageNode>

namespace velmor {

PageImage::PageImage(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void PageImage::setEditor(PageEditor *editor)
{
    if (editor == m_editor)
        return;
    if (m_editor)
        m_editor->disconnect(this);
    m_editor = editor;
    if (m_editor) {
        connect(m_editor, &PageEditor::displayImageChanged, this, &PageImage::polish);
        connect(m_editor, &PageEditor::placementChanged, this, &PageImage::update);
    }
    polish();
    Q_EMIT editorChanged();
}

void PageImage::updatePolish()
{
    m_image = m_editor ? m_editor->displayImage() : QImage();
    update();
}

void PageImage::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged)
        update();
}

QSGNode *PageImage::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    auto *node = static_cast<QSGImageNode *>(old);
    const QRectF rect = m_editor ? onPixelGrid(*this, m_editor->imageRect()) : QRectF();
    const QSize shown = (rect.size() * window()->effectiveDevicePixelRatio()).toSize();
    if (m_image.isNull() || shown.isEmpty()) {
        delete node;
        return nullptr;
    }
    const bool isReduced = shown.width() < m_image.width();
    const QSize texture = isReduced ? shown : m_image.size();
    if (!node) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        m_textureOf = 0;
    }
    if (m_textureOf != m_image.cacheKey() || m_textureSize != texture) {
        m_textureOf = m_image.cacheKey();
        m_textureSize = texture;
        const QImage picture =
            isReduced ? m_image.scaled(shown, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                      : m_image;
        node->setTexture(window()->createTextureFromImage(picture));
    }
    node->setFiltering(isReduced ? QSGTexture::Nearest : QSGTexture::Linear);
    node->setRect(rect);
    return node;
}

} // namespace velmor

#include "editor/PageImage.h"

#include "editor/PixelGrid.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

namespace velmor {

/// One texture for the whole page, shown in two parts where a round corner is left out, and a small
/// picture for that corner: no renderer cuts out anything round with soft edges.
class PageImage::PageNode : public QSGTransformNode {
public:
    explicit PageNode(QQuickWindow &window)
    {
        for (QSGImageNode *&part : m_parts) {
            part = window.createImageNode();
            part->setRect(QRectF());
        }
        m_parts[corner]->setOwnsTexture(true);
    }
    ~PageNode() override
    {
        for (QSGImageNode *const part : m_parts)
            delete part;
    }
    Q_DISABLE_COPY_MOVE(PageNode)

    /// `rect` is the page's, `round` the square of the round corner or empty; both on the window's
    /// pixels.
    void show(QQuickWindow &window, const QImage &image, const QRectF &rect, const QRectF &round)
    {
        const qreal ratio = window.effectiveDevicePixelRatio();
        const QSize shown = (rect.size() * ratio).toSize();
        const bool isReduced = shown.width() < image.width();
        const QSize size = isReduced ? shown : image.size();
        const bool isNew = m_key != image.cacheKey() || m_picture.size() != size;
        if (isNew) {
            m_key = image.cacheKey();
            m_picture = isReduced
                            ? image.scaled(shown, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                            : image;
        }
        if (isNew) {
            // A node looks at the texture that it had when it gets another one.
            const auto former = std::move(m_texture);
            m_texture.reset(window.createTextureFromImage(m_picture));
            m_parts[upper]->setTexture(m_texture.get());
            m_parts[lower]->setTexture(m_texture.get());
        }
        const QSGTexture::Filtering filtering =
            isReduced ? QSGTexture::Nearest : QSGTexture::Linear;
        const bool isCut = round.intersects(rect);
        QRectF above = rect;
        if (isCut)
            above.setBottom(round.top());
        showPart(upper, above, rect, filtering);
        showPart(lower,
                 isCut ? QRectF(above.bottomLeft(), QPointF(round.left(), rect.bottom()))
                       : QRectF(),
                 rect, filtering);
        showCorner(window, isCut ? round : QRectF(), rect);
    }

private:
    enum Part { upper, lower, corner };

    /// Renderers look at a node's texture at once: without anything to show it is no child.
    void setShown(QSGImageNode *node, bool isShown)
    {
        if (isShown == (node->parent() != nullptr))
            return;
        if (isShown)
            appendChildNode(node);
        else
            removeChildNode(node);
    }

    void showPart(Part which, const QRectF &part, const QRectF &rect,
                  QSGTexture::Filtering filtering)
    {
        QSGImageNode *const node = m_parts.at(which);
        if (!part.isEmpty()) {
            node->setFiltering(filtering);
            node->setRect(part);
            node->setSourceRect(source(part, rect));
        }
        setShown(node, !part.isEmpty());
    }

    void showCorner(QQuickWindow &window, const QRectF &square, const QRectF &rect)
    {
        if (!square.isEmpty()) {
            const QSize size = (square.size() * window.effectiveDevicePixelRatio()).toSize();
            QImage piece(size, QImage::Format_ARGB32_Premultiplied);
            piece.fill(Qt::transparent);
            QPainter drawing(&piece);
            drawing.setRenderHint(QPainter::SmoothPixmapTransform);
            drawing.drawImage(QRectF(piece.rect()), m_picture, source(square, rect));
            drawing.end();
            QImage rounded(size, QImage::Format_ARGB32_Premultiplied);
            rounded.fill(Qt::transparent);
            QPainter painter(&rounded);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(piece);
            const int radius = size.width();
            painter.drawEllipse(QPointF(), radius, radius);
            painter.end();
            m_parts[corner]->setTexture(window.createTextureFromImage(rounded));
            m_parts[corner]->setFiltering(QSGTexture::Nearest);
            m_parts[corner]->setRect(square);
        }
        setShown(m_parts[corner], !square.isEmpty());
    }

    /// The pixels of the picture that a part of the page's rectangle shows.
    [[nodiscard]] QRectF source(const QRectF &part, const QRectF &rect) const
    {
        const qreal x = m_picture.width() / rect.width();
        const qreal y = m_picture.height() / rect.height();
        return {(part.left() - rect.left()) * x, (part.top() - rect.top()) * y, part.width() * x,
                part.height() * y};
    }

    std::array<QSGImageNode *, 3> m_parts{}; ///< Children of this node where they show something.
    std::unique_ptr<QSGTexture> m_texture;
    QImage m_picture; ///< That the texture was made of.
    qint64 m_key = 0; ///< Of the image that the picture was made of.
};

namespace {

/// A rectangle on the window's pixels, at least one of them wide and high, however thin a page is.
QRectF onPixels(const QQuickItem &item, const QRectF &rect)
{
    QRectF shown = onPixelGrid(item, rect);
    const qreal pixel = 1 / item.window()->effectiveDevicePixelRatio();
    shown.setWidth(std::max(shown.width(), pixel));
    shown.setHeight(std::max(shown.height(), pixel));
    return shown;
}

} // namespace

PageImage::PageImage(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(this, &PageImage::cornerRadiusChanged, this, &PageImage::update);
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
    auto *node = static_cast<PageNode *>(old);
    const QRectF place = m_editor ? m_editor->imageRect() : QRectF();
    if (m_image.isNull() || place.isEmpty()) {
        delete node;
        return nullptr;
    }
    const QRectF rect = onPixels(*this, place);
    if (!node)
        node = new PageNode(*window());
    const QPointF end(width(), height());
    const QRectF round(end - QPointF(m_cornerRadius, m_cornerRadius), end);
    node->show(*window(), m_image, rect, onPixelGrid(*this, round));
    return node;
}

} // namespace velmor

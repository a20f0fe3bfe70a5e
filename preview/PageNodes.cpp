#include "preview/PageNodes.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRectangleNode>

namespace velmor {

namespace {

/// The outline that sets a page off from what is as light as paper.
constexpr QColor edgeColor(0, 0, 0, 26);
constexpr double edgeWidth = 1;

/// A node for a picture, if there is one, and which picture it shows.
struct Picture {
    QSGImageNode *node = nullptr;
    qint64 key = 0;

    void show(QSGNode &parent, QSGNode *before, QQuickWindow &window, const QImage &image,
              const QRectF &rect)
    {
        if (image.isNull()) {
            if (node)
                parent.removeChildNode(node);
            delete node;
            node = nullptr;
            return;
        }
        const bool isNew = !node;
        if (isNew) {
            node = window.createImageNode();
            node->setOwnsTexture(true);
        }
        if (isNew || key != image.cacheKey()) {
            key = image.cacheKey();
            node->setTexture(window.createTextureFromImage(image, QQuickWindow::TextureIsOpaque));
        }
        // To the pixel where the picture was made for this size.
        const QSizeF pixels = rect.size() * window.effectiveDevicePixelRatio();
        const bool exact = pixels.toSize() == image.size();
        node->setFiltering(exact ? QSGTexture::Nearest : QSGTexture::Linear);
        node->setRect(rect);
        // Renderers look at the texture at once.
        if (isNew)
            parent.insertChildNodeBefore(node, before);
    }
};

} // namespace

/// The nodes of a page. All groups are transforms, though they move nothing: the software renderer
/// loses the place of what is added to a plain node later.
struct PageNodes::PageNode : QSGTransformNode {
    explicit PageNode(QQuickWindow &window)
        : m_edge(window.createRectangleNode()), m_paper(window.createRectangleNode()),
          m_marks(new QSGTransformNode)
    {
        m_edge->setColor(edgeColor);
        m_paper->setColor(Qt::white);
        appendChildNode(m_edge);
        appendChildNode(m_paper);
        appendChildNode(m_marks);
    }

    void show(QQuickWindow &window, const ShownPage &page)
    {
        m_edge->setRect(page.rect.adjusted(-edgeWidth, -edgeWidth, edgeWidth, edgeWidth));
        m_paper->setRect(page.rect);
        m_part.show(*this, m_marks, window, page.part, page.partRect);
        QSGNode *const above = m_part.node ? static_cast<QSGNode *>(m_part.node) : m_marks;
        m_whole.show(*this, above, window, page.whole, page.rect);
        showMarks(window, page.marks);
    }

private:
    void showMarks(QQuickWindow &window, const QList<PageMarks> &marks)
    {
        while (QSGNode *const old = m_marks->firstChild()) {
            m_marks->removeChildNode(old);
            delete old;
        }
        for (const PageMarks &kind : marks) {
            for (const QRectF &box : kind.boxes) {
                QSGRectangleNode *const mark = window.createRectangleNode();
                mark->setColor(kind.color);
                mark->setRect(box);
                m_marks->appendChildNode(mark);
            }
        }
    }

    QSGRectangleNode *m_edge, *m_paper;
    QSGTransformNode *m_marks;
    Picture m_whole, m_part;
};

void PageNodes::show(QQuickWindow &window, const QList<ShownPage> &pages)
{
    QHash<int, PageNode *> left;
    left.swap(m_pages);
    for (const ShownPage &page : pages) {
        PageNode *node = left.take(page.page);
        if (!node) {
            node = new PageNode(window);
            appendChildNode(node);
        }
        node->show(window, page);
        m_pages.insert(page.page, node);
    }
    for (PageNode *const node : left) {
        removeChildNode(node);
        delete node;
    }
}

} // namespace velmor

#pragma once

#include <QColor>
#include <QHash>
#include <QImage>
#include <QList>
#include <QRectF>
#include <QSGNode>

class QQuickWindow;

namespace velmor {

/// Places on a page that are marked in one colour, over the page's picture.
struct PageMarks {
    QColor color;
    QList<QRectF> boxes; ///< In view space.
};

/// A page in view. Rectangles are in view space; an image is null while there is none.
struct ShownPage {
    int page = 0;
    QRectF rect;
    QImage whole;
    QImage part;
    QRectF partRect;
    QList<PageMarks> marks;
};

/// The pages in view as a scene graph: paper, pictures, marks. For `updatePaintNode`.
///
/// A picture's texture is made when it comes into view and dropped when it leaves.
class PageNodes : public QSGTransformNode {
public:
    /// Shows these pages and no others.
    void show(QQuickWindow &window, const QList<ShownPage> &pages);

private:
    struct PageNode;

    QHash<int, PageNode *> m_pages; ///< Children of this node.
};

} // namespace velmor

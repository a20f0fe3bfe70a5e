#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

class QPainter;

namespace velmor {

/// Base of items that show one picture, painted at the resolution of their window.
///
/// The picture is made once and kept until its size, the window's scale or, after `repaint`, its
/// content changes. It looks the same on every renderer.
class PictureItem : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit PictureItem(QQuickItem *parent = nullptr);

protected:
    /// Paints the picture into a transparent area of `size`, in logical pixels from the top left.
    /// May run on the render thread while the main thread is held.
    virtual void paint(QPainter &painter, QSizeF size) const = 0;

    /// Pixels of the picture for each device pixel of the window: above 1 for an item that is
    /// shown enlarged.
    [[nodiscard]] virtual qreal detail() const { return 1; }

    /// Has the picture made anew for the next frame.
    void repaint();

    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    bool m_stale = true;
};

} // namespace velmor

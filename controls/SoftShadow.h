#pragma once

#include <QColor>
#include <QPointF>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// The shadow of a rounded box that has this item's place and size.
///
/// It is drawn beyond the item's bounds and takes no part in layout: put it behind what casts it.
/// All renderers show it alike. `blur` is the standard deviation of the Gaussian, the number that
/// is called a shadow's radius where shadows are described as (radius, offset); the shadow reaches
/// three times as far. With `hollow` nothing is drawn below the box itself, for boxes that light
/// falls through.
class SoftShadow : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY changed) ///< Of the corners.
    Q_PROPERTY(qreal blur MEMBER m_blur NOTIFY changed)
    Q_PROPERTY(qreal offsetX MEMBER m_offsetX NOTIFY changed) ///< To the right.
    Q_PROPERTY(qreal offsetY MEMBER m_offsetY NOTIFY changed) ///< Downwards.
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(bool hollow MEMBER m_hollow NOTIFY changed)

public:
    explicit SoftShadow(QQuickItem *parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    void redraw();

    qreal m_radius = 0;
    qreal m_blur = 10;
    qreal m_offsetX = 0;
    qreal m_offsetY = 0;
    QColor m_color = Qt::black;
    bool m_hollow = false;
    bool m_stale = true;
};

} // namespace velmor

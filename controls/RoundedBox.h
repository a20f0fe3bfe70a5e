#pragma once

#include "controls/PictureItem.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// A rectangle with rounded corners, filled with `color` and outlined inside its edge.
///
/// Like `Rectangle`, but exact on every renderer at fractional scales, and with outlines thinner
/// than a pixel. A radius of more than half the shorter side makes a capsule.
class RoundedBox : public velmor::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY changed)
    Q_PROPERTY(QColor lineColor MEMBER m_lineColor NOTIFY changed)
    Q_PROPERTY(qreal lineWidth MEMBER m_lineWidth NOTIFY changed)

public:
    explicit RoundedBox(QQuickItem *parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    void paint(QPainter &painter, QSizeF size) const override;

private:
    QColor m_color = Qt::white;
    qreal m_radius = 0;
    QColor m_lineColor = Qt::transparent;
    qreal m_lineWidth = 0; ///< 0 for no outline.
};

} // namespace velmor

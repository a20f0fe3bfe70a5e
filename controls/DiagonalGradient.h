#pragma once

#include "controls/PictureItem.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// A rectangle that fades from `from` in its top left corner over `middle`, half way, to `to` in
/// its bottom right corner.
///
/// With a `radius` its corners are round. Colours change along the diagonal and are equal across
/// it, whatever the shape.
class DiagonalGradient : public velmor::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor from MEMBER m_from NOTIFY changed)
    Q_PROPERTY(QColor middle MEMBER m_middle NOTIFY changed)
    Q_PROPERTY(QColor to MEMBER m_to NOTIFY changed)
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY changed) ///< Of the corners.

public:
    explicit DiagonalGradient(QQuickItem *parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    void paint(QPainter &painter, QSizeF size) const override;

private:
    QColor m_from = Qt::white;
    QColor m_middle = Qt::white;
    QColor m_to = Qt::white;
    qreal m_radius = 0;
};

} // namespace velmor

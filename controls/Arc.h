#pragma once

#include "controls/PictureItem.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// A part of a ring that touches the item's edges from inside.
///
/// It begins at the top and runs clockwise over `part` of the turn, 0 to 1, with round ends. With
/// `tail` it fades out towards its beginning.
class Arc : public velmor::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal part MEMBER m_part NOTIFY changed)
    Q_PROPERTY(qreal thickness MEMBER m_thickness NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(bool tail MEMBER m_tail NOTIFY changed)

public:
    explicit Arc(QQuickItem *parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    void paint(QPainter &painter, QSizeF size) const override;

private:
    qreal m_part = 1;
    qreal m_thickness = 2;
    QColor m_color = Qt::black;
    bool m_tail = false;
};

} // namespace velmor

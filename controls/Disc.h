#pragma once

#include "controls/PictureItem.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// A filled circle that touches the item's edges from inside, and stays round while an ancestor
/// scales it. `restScale` is the scale at which it's shown at rest.
class Disc : public velmor::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(qreal restScale MEMBER m_restScale NOTIFY changed)

public:
    explicit Disc(QQuickItem *parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    void paint(QPainter &painter, QSizeF size) const override;
    [[nodiscard]] qreal detail() const override { return m_restScale; }

private:
    QColor m_color = Qt::black;
    qreal m_restScale = 1;
};

} // namespace velmor

#pragma once

#include "controls/PictureItem.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// A triangle that fills its rectangle: tip in the middle of the top edge, base at the bottom.
class ArrowHead : public velmor::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)

public:
    explicit ArrowHead(QQuickItem *parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    void paint(QPainter &painter, QSizeF size) const override;

private:
    QColor m_color = Qt::white;
};

} // namespace velmor

#pragma once

#include "controls/PictureItem.h"

#include <QColor>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// One picture of the application's own set, in one colour.
///
/// `name` is that of a file in assets/icons, without its ending; an empty name shows nothing. A
/// name that isn't in the set is reported as a warning and shows nothing.
///
/// `size` is that of the text the icon goes with, in logical pixels: the picture looks as tall as
/// a capital letter of that text would among symbols, and lies in a square of 1.2 times the size,
/// rounded to whole pixels, which is the item's implicit size. The picture fills the item.
///
/// `weight` follows the weight of the text (Font.Normal to Font.Black) and decides how wide the
/// strokes are. `restScale` is the scale at which an ancestor shows the icon at rest: drawn for
/// that scale, it's sharp there.
class Icon : public velmor::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name MEMBER m_name NOTIFY changed)
    Q_PROPERTY(qreal size READ size WRITE setSize NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(int weight MEMBER m_weight NOTIFY changed)
    Q_PROPERTY(qreal restScale MEMBER m_restScale NOTIFY changed)

public:
    explicit Icon(QQuickItem *parent = nullptr);

    [[nodiscard]] qreal size() const { return m_size; }
    void setSize(qreal size);

    /// The names of the whole set.
    Q_INVOKABLE [[nodiscard]] static QStringList names();

Q_SIGNALS:
    void changed();

protected:
    void paint(QPainter &painter, QSizeF size) const override;
    [[nodiscard]] qreal detail() const override { return m_restScale; }

private:
    QString m_name;
    qreal m_size = 0;
    QColor m_color = Qt::black;
    int m_weight = 400;
    qreal m_restScale = 1;
};

} // namespace velmor

#pragma once

#include "controls/PictureItem.h"
#include "editor/LevelsTrack.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace velmor {

/// The range slider for the levels without its knobs: the histogram, the track, and the range
/// between the two points. It takes the drags: a press anywhere takes the nearer knob along.
///
/// It doesn't change the points itself but asks its owner for it.
class LevelsTrackItem : public velmor::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double low MEMBER m_low NOTIFY changed)   ///< The black point, 0 to 1.
    Q_PROPERTY(double high MEMBER m_high NOTIFY changed) ///< The white point.
    /// Heights of the bars, 0 to 1; empty for none.
    Q_PROPERTY(QList<double> histogram MEMBER m_histogram NOTIFY changed)
    Q_PROPERTY(QColor rangeColor MEMBER m_rangeColor NOTIFY changed)
    Q_PROPERTY(QColor barColor MEMBER m_barColor NOTIFY changed)
    /// The middles of the knobs, and the line that they stand on, in points of this item.
    Q_PROPERTY(double lowPos READ lowPos NOTIFY changed)
    Q_PROPERTY(double highPos READ highPos NOTIFY changed)
    Q_PROPERTY(double trackY READ trackY NOTIFY changed)
    Q_PROPERTY(double knobRadius READ knobRadius CONSTANT)

public:
    explicit LevelsTrackItem(QQuickItem *parent = nullptr);

    [[nodiscard]] double lowPos() const { return track().lowPos(); }
    [[nodiscard]] double highPos() const { return track().highPos(); }
    [[nodiscard]] double trackY() const { return track().trackY(); }
    [[nodiscard]] static double knobRadius() { return LevelsTrack::nubR; }

    /// A key for a knob: arrows move it by a step, with Shift by a larger one, Home and End to the
    /// end that it can reach. False for other keys.
    Q_INVOKABLE bool moveLow(int key, int modifiers);
    Q_INVOKABLE bool moveHigh(int key, int modifiers);

Q_SIGNALS:
    void changed();
    void lowMoved(double value);
    void highMoved(double value);

protected:
    void paint(QPainter &painter, QSizeF size) const override;
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *) override { m_dragging.reset(); }
    void mouseUngrabEvent() override { m_dragging.reset(); }

private:
    using Target = LevelsTrack::Target;

    [[nodiscard]] LevelsTrack track() const { return {size(), m_low, m_high}; }
    [[nodiscard]] bool move(Target target, int key, int modifiers);
    void askFor(Target target, const LevelsTrack &moved);

    double m_low = 0;
    double m_high = 1;
    QList<double> m_histogram;
    QColor m_rangeColor = Qt::black;
    QColor m_barColor = Qt::black;
    std::optional<Target> m_dragging; ///< The knob in hand.
};

} // namespace velmor

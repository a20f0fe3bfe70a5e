#pragma once

#include "editor/MagicLevels.h"

#include <QList>
#include <QRectF>
#include <QSizeF>

namespace velmor {

/// Where the parts of the range slider for the levels lie, and what a press on it means.
///
/// A plain value, in points of the control, origin at its top left, y downwards.
struct LevelsTrack {
    /// A knob of the slider.
    enum class Target { low, high };

    static constexpr double nubR = 9; ///< Radius of a knob.
    /// Steps of the arrow keys, and with Shift.
    static constexpr double keyStep = 0.01;
    static constexpr double largeKeyStep = 0.05;

    QSizeF size;     ///< Of the control.
    double low = 0;  ///< The black point.
    double high = 1; ///< The white point.

    /// The track's length between the middles of the knobs at 0 and at 1.
    [[nodiscard]] double trackW() const;
    /// The line of the track and the knobs.
    [[nodiscard]] double trackY() const;
    /// Where a value stands on the track.
    [[nodiscard]] double placeOf(double value) const;
    /// The value of a place, held to 0 to 1.
    [[nodiscard]] double valueAt(double x) const;

    /// The middles of the knobs. They part where they would overlap, and then stand a little beside
    /// their values.
    [[nodiscard]] double lowPos() const;
    [[nodiscard]] double highPos() const;

    /// The line behind the knobs, and that part of it which lies between the two values.
    [[nodiscard]] QRectF trackRect() const;
    [[nodiscard]] QRectF rangeRect() const;

    /// The bar of each value of a histogram, 0 to 1; an empty one for 0.
    [[nodiscard]] QList<QRectF> bars(const QList<double> &histogram) const;

    /// The knob that a press at `x` takes: the nearer one, the black one of two as near.
    [[nodiscard]] Target nearestKnob(double x) const;

    /// The knob in hand is moved to `x`.
    void drag(Target target, double x);
    /// The knob is moved by a difference of value.
    void nudge(Target target, double delta);

private:
    void setValue(Target target, double value);
    [[nodiscard]] bool isParted() const;
};

} // namespace velmor

#include "editor/LevelsTrack.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

constexpr double lineHeight = 4;
/// The least length of the range, so that two values that meet can still be seen.
constexpr double shortestRange = 2;
/// Between the knobs and the bars.
constexpr double barGap = 3;

QRectF line(double middle, double y, double length)
{
    return {middle - length / 2, y - lineHeight / 2, length, lineHeight};
}

} // namespace

double LevelsTrack::trackW() const
{
    return std::max(size.width() - 2 * nubR, 1.0);
}

double LevelsTrack::trackY() const
{
    return size.height() - nubR - 1;
}

double LevelsTrack::placeOf(double value) const
{
    return nubR + value * trackW();
}

double LevelsTrack::valueAt(double x) const
{
    return std::min(std::max((x - nubR) / trackW(), 0.0), 1.0);
}

bool LevelsTrack::isParted() const
{
    return placeOf(high) - placeOf(low) < 2 * nubR;
}

double LevelsTrack::lowPos() const
{
    return isParted() ? (placeOf(low) + placeOf(high)) / 2 - nubR : placeOf(low);
}

double LevelsTrack::highPos() const
{
    return isParted() ? (placeOf(low) + placeOf(high)) / 2 + nubR : placeOf(high);
}

QRectF LevelsTrack::trackRect() const
{
    return line(size.width() / 2, trackY(), trackW() + nubR);
}

QRectF LevelsTrack::rangeRect() const
{
    return line((placeOf(low) + placeOf(high)) / 2, trackY(),
                std::max(placeOf(high) - placeOf(low), shortestRange));
}

QList<QRectF> LevelsTrack::bars(const QList<double> &histogram) const
{
    QList<QRectF> bars;
    bars.reserve(histogram.size());
    const double chartH = trackY() - nubR - barGap;
    const double barW = trackW() / static_cast<double>(histogram.size());
    for (qsizetype i = 0; i < histogram.size(); ++i) {
        const double bh = std::max(histogram[i] * chartH, 1.0);
        bars.append(histogram[i] > 0 ? QRectF(nubR + static_cast<double>(i) * barW, chartH - bh,
                                              std::max(barW - 0.5, 0.5), bh)
                                     : QRectF());
    }
    return bars;
}

LevelsTrack::Target LevelsTrack::nearestKnob(double x) const
{
    return std::abs(x - lowPos()) > std::abs(x - highPos()) ? Target::high : Target::low;
}

void LevelsTrack::drag(Target target, double x)
{
    setValue(target, valueAt(x));
}

void LevelsTrack::nudge(Target target, double delta)
{
    setValue(target, (target == Target::low ? low : high) + delta);
}

void LevelsTrack::setValue(Target target, double value)
{
    if (target == Target::low)
        low = lowWithin(value, high);
    else
        high = highWithin(value, low);
}

} // namespace velmor

#include "cli/QuadText.h"

#include <QStringList>

namespace velmor {

namespace {

std::optional<QPointF> pointFromText(const QString &text)
{
    const QStringList parts = text.split(u',');
    if (parts.size() != 2)
        return std::nullopt;
    bool isX = false;
    bool isY = false;
    const QPointF point(parts[0].toDouble(&isX), parts[1].toDouble(&isY));
    return isX && isY ? std::optional(point) : std::nullopt;
}

} // namespace

std::optional<Quad> quadFromText(const QString &text)
{
    const QStringList words = text.simplified().split(u' ');
    std::array<QPointF, 4> points;
    if (words.size() != static_cast<qsizetype>(points.size()))
        return std::nullopt;
    for (size_t i = 0; i < points.size(); ++i) {
        const std::optional<QPointF> point = pointFromText(words[static_cast<qsizetype>(i)]);
        if (!point)
            return std::nullopt;
        points[i] = *point;
    }
    const Quad quad = orderQuad(points);
    return isUsable(quad) ? std::optional(quad) : std::nullopt;
}

} // namespace velmor

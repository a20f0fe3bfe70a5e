#include "editor/Loupe.h"

#include "editor/CropBoxes.h"
#include "editor/LevelsAnalysis.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

/// Between the pointer and the lens.
constexpr double gap = 28;
/// Room that the lens needs above it.
constexpr double topRoom = 14;

/// The cell of the lens that a place lies in, `at` being the place in pixels of an axis `length`
/// long. The lens is centred on the place and stops at the ends of the axis.
int cellOf(double at, int length)
{
    const double half = Loupe::cells / 2.0;
    const double start = std::min(std::max(at - half, 0.0), double(length - Loupe::cells));
    return std::clamp(static_cast<int>(std::floor(at - start)), 0, Loupe::cells - 1);
}

} // namespace

QPointF loupePosition(QPointF p, QSizeF size, double diameter)
{
    const double r = diameter / 2;
    double x = p.x() + r + gap;
    if (size.width() < x + r)
        x = p.x() - r - gap;
    double y = p.y() - r - gap;
    if (y - r - topRoom < 0)
        y = p.y() + r + gap;
    return {x, y};
}

std::optional<Loupe> loupeAt(QPointF p, const QRectF &rect, QSize image, QSizeF size)
{
    if (image.isEmpty() || rect.isEmpty())
        return std::nullopt;
    const QPointF n = norm(p, rect);
    if (!isOnImage(n))
        return std::nullopt;
    const QPoint pixel = samplePixel(n, image.width(), image.height());
    const QPoint cell(cellOf(n.x() * image.width(), image.width()),
                      cellOf(n.y() * image.height(), image.height()));
    return Loupe{.source = QRect(pixel - cell, QSize(Loupe::cells, Loupe::cells)),
                 .pixel = pixel,
                 .marked = QRectF(cell.x() * Loupe::cellSize, cell.y() * Loupe::cellSize,
                                  Loupe::cellSize, Loupe::cellSize),
                 .center = loupePosition(p, size, Loupe::diameter)};
}

QString loupeLabel(double luminance)
{
    return QStringLiteral("%1%").arg(std::lround(luminance * 100));
}

} // namespace velmor

#include "controls/ShadowMask.h"

#include <QPointF>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

// The Gaussian of a rounded box is the sum, over the rows of the box, of a segment's blur. Along x
// a segment's blur is a difference of two error functions and exact; along y rows are weighted and
// summed. The shadow is symmetric, so one quarter is computed.

namespace velmor {

namespace {

/// A shadow of less blur is drawn with this one, in pixels: its edges stay soft.
constexpr double leastSigma = 0.3;

/// Where the Gaussian has fallen to a hundredth of its height, and the eye sees nothing more.
constexpr double reachInSigmas = 3;

double cornerRadius(const ShadowBox &box)
{
    return std::clamp(box.radius, 0.0, std::min(box.size.width(), box.size.height()) / 2);
}

/// The part of a Gaussian that lies below `x`.
double below(double x, double sigma)
{
    return 0.5 * (1 + std::erf(x / (sigma * std::numbers::sqrt2)));
}

std::vector<float> gaussianWeights(int reach, double sigma)
{
    std::vector<float> weights;
    double sum = 0;
    for (int i = -reach; i <= reach; ++i)
        sum += std::exp(-(i * i) / (2 * sigma * sigma));
    for (int i = -reach; i <= reach; ++i)
        weights.push_back(float(std::exp(-(i * i) / (2 * sigma * sigma)) / sum));
    return weights;
}

/// Row `y` of the box (measured from the middle of the box), blurred along x into the left half of
/// an image of the width `width`.
void blurRow(const ShadowBox &box, double y, double sigma, int width, float *left)
{
    const double halfWidth = box.size.width() / 2;
    const double halfHeight = box.size.height() / 2;
    const double radius = cornerRadius(box);
    const double covered = std::clamp(halfHeight + 0.5 - std::abs(y), 0.0, 1.0);
    if (covered == 0)
        return;
    const double intoCorner = std::max(0.0, std::abs(y) - (halfHeight - radius));
    const double half =
        halfWidth - radius + std::sqrt(std::max(0.0, radius * radius - intoCorner * intoCorner));
    for (int i = 0; i < (width + 1) / 2; ++i) {
        const double x = i + 0.5 - width / 2.0;
        left[i] = float(covered * (below(x + half, sigma) - below(x - half, sigma)));
    }
}

/// `color` at the strength `cover`, premultiplied. The noise of an ordered 4 by 4 pattern makes up
/// for what rounding to whole numbers takes.
QRgb shade(const QColor &color, float cover, int x, int y)
{
    static constexpr float pattern[4][4] = {
        {0,  8,  2,  10},
        {12, 4,  14, 6 },
        {3,  11, 1,  9 },
        {15, 7,  13, 5 }
    };
    const float alpha = cover * float(color.alphaF()) * 255;
    const float noise = (pattern[y & 3][x & 3] + 0.5F) / 16;
    const auto part = [&](float channel) {
        return int(alpha * channel + noise);
    };
    return qRgba(part(color.redF()), part(color.greenF()), part(color.blueF()), part(1));
}

} // namespace

int shadowReach(double sigma)
{
    return int(std::ceil(reachInSigmas * std::max(sigma, leastSigma)));
}

QImage shadowMask(const ShadowBox &box, double sigma, const QColor &color)
{
    sigma = std::max(sigma, leastSigma);
    const int reach = shadowReach(sigma);
    const int width = qRound(box.size.width()) + 2 * reach;
    const int height = qRound(box.size.height()) + 2 * reach;
    const auto columns = size_t(width + 1) / 2;
    // Rows that the blur of the first and last rows of the image needs lie outside of it, empty.
    std::vector<float> rows(columns * size_t(height + 2 * reach));
    for (int y = 0; y < height; ++y)
        blurRow(box, y + 0.5 - height / 2.0, sigma, width, &rows[size_t(y + reach) * columns]);

    const auto weights = gaussianWeights(reach, sigma);
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    std::vector<float> sums(columns);
    for (int y = 0; y < (height + 1) / 2; ++y) {
        std::fill(sums.begin(), sums.end(), 0.0F);
        for (size_t i = 0; i < weights.size(); ++i) {
            const float *row = &rows[(size_t(y) + i) * columns];
            for (size_t x = 0; x < columns; ++x)
                sums[x] += weights[i] * row[x];
        }
        auto *upper = reinterpret_cast<QRgb *>(image.scanLine(y));
        auto *lower = reinterpret_cast<QRgb *>(image.scanLine(height - 1 - y));
        for (int x = 0; x < int(columns); ++x) {
            const QRgb pixel = shade(color, sums[size_t(x)], x, y);
            upper[x] = upper[width - 1 - x] = lower[x] = lower[width - 1 - x] = pixel;
        }
    }
    return image;
}

void cutOut(QImage &image, const ShadowBox &box, QPointF offset)
{
    const double radius = cornerRadius(box);
    const double halfWidth = box.size.width() / 2 - radius;
    const double halfHeight = box.size.height() / 2 - radius;
    for (int y = 0; y < image.height(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(image.scanLine(y));
        const double dy = std::abs(y + 0.5 - image.height() / 2.0 - offset.y()) - halfHeight;
        for (int x = 0; x < image.width(); ++x) {
            const double dx = std::abs(x + 0.5 - image.width() / 2.0 - offset.x()) - halfWidth;
            // How far outside of the box's edge the pixel's middle lies.
            const double outside = std::hypot(std::max(dx, 0.0), std::max(dy, 0.0)) +
                                   std::min(std::max(dx, dy), 0.0) - radius;
            const int kept = int(255 * std::clamp(outside + 0.5, 0.0, 1.0));
            const QRgb c = row[x];
            row[x] = qRgba(qRed(c) * kept / 255, qGreen(c) * kept / 255, qBlue(c) * kept / 255,
                           qAlpha(c) * kept / 255);
        }
    }
}

} // namespace velmor

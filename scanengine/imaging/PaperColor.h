#pragma once

#include <QImage>
#include <QPointF>
#include <QPolygonF>
#include <opencv2/core.hpp>

namespace scanengine {

/// The colour of an image's paper everywhere, carried on beyond its sides.
///
/// Ink doesn't count, nor what lies outside of the convex polygon `shown`, if that isn't empty. A
/// copy of what it needs: `image` may go.
class PaperColor {
public:
    PaperColor(const QImage &image, const QPolygonF &shown);

    /// Writes the pixel for a place, which may lie outside, in the format of the image.
    void put(QPointF at, uchar *pixel) const;

private:
    cv::Mat m_colors; ///< CV_8UC4, or CV_8UC1 for grey.
    double m_factor = 1;
    int m_margin = 0;
};

} // namespace scanengine

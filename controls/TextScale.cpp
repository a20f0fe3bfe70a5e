#include "controls/TextScale.h"

#include <QFont>
#include <QFontInfo>

namespace velmor {

qreal TextScale::points(qreal pixels)
{
    // Text is scaled by the resolution that the desktop claims; only a font knows which.
    static const qreal pointsPerPixel = [] {
        QFont font;
        font.setPixelSize(100);
        return QFontInfo(font).pointSizeF() / 100;
    }();
    return pixels * pointsPerPixel;
}

} // namespace velmor

#include "preview/PageSheet.h"

#include "pipeline/PageTurn.h"

namespace velmor {

QTransform PageSheet::toPageSpace() const
{
    const QTransform upsideDown(1, 0, 0, -1, cropBox.left(), cropBox.bottom());
    return pageTurn(-rotation, size()) * upsideDown;
}

} // namespace velmor

#pragma once

#include "controls/PictureItem.h"

#include <QtQml/qqmlregistration.h>

namespace velmor {

/// The application's own picture, as large as fits while it stays square, in the item's middle.
class BrandPicture : public velmor::PictureItem {
    Q_OBJECT
    QML_ELEMENT

public:
    using PictureItem::PictureItem;

protected:
    void paint(QPainter &painter, QSizeF size) const override;
};

} // namespace velmor

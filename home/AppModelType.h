#pragma once

#include "model/AppModel.h"

#include <QtQml/qqml.h>

namespace velmor {

/// Makes `AppModel` a type that the screens can be handed.
struct AppModelType {
    Q_GADGET
    QML_FOREIGN(velmor::AppModel)
    QML_NAMED_ELEMENT(AppModel)
    QML_UNCREATABLE("There is one, made by the program.")
};

} // namespace velmor

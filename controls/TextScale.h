#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// Converts sizes of text. One for each QML engine.
class TextScale : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// The value for `font.pointSize` that makes text of `pixels` logical pixels. For sizes between
    /// two whole pixels, which `font.pixelSize` doesn't take.
    Q_INVOKABLE [[nodiscard]] static qreal points(qreal pixels);
};

} // namespace velmor

#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// Carries the enumeration `ToggleState` into QML.
class ToggleStateType {
    Q_GADGET
    QML_NAMED_ELEMENT(ToggleState)
    QML_UNCREATABLE("An enumeration")

public:
    /// How many of the things that a switch stands for are on: none, some, all. Spelled as QML
    /// wants enumerators.
    enum class ToggleState { Off, Partial, On };
    Q_ENUM(ToggleState)
};

using ToggleState = ToggleStateType::ToggleState;

} // namespace velmor

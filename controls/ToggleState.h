#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// Holds nothing but the enumeration, for QML to know it as `ToggleState.On`.
namespace velmor::togglestate {
Q_NAMESPACE
QML_NAMED_ELEMENT(ToggleState)

/// How many of the things that a switch stands for are on: none, some, all. Spelled as QML wants
/// enumerators.
enum class ToggleState { Off, Partial, On };
Q_ENUM_NS(ToggleState)

} // namespace velmor::togglestate

namespace velmor {

using togglestate::ToggleState;

} // namespace velmor

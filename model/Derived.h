#pragma once

#include <utility>

namespace velmor {

/// Sets `field`, a property that `object` derives from the model, and tells of it only if it
/// differs: the model tells of every assignment, and a list shown anew would lose its focus.
template <typename Object, typename Field, typename Value>
void derive(Object *object, Field &field, Value &&value, void (Object::*changed)())
{
    if (field == value)
        return;
    field = std::forward<Value>(value);
    Q_EMIT(object->*changed)();
}

} // namespace velmor

#pragma once

#include <QString>

namespace velmor {

/// The path of the worker program `name`: what the environment variable `variable` names, else the
/// program beside this one, else the one in ../libexec/velmor from there. It need not exist.
[[nodiscard]] QString workerProgram(const QString &name, const char *variable);

} // namespace velmor

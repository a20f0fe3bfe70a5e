#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace velmor {

/// Has this program use the workers of the build, which don't lie beside it, unless the environment
/// names others.
inline void useBuiltWorkers()
{
    const struct {
        const char *variable;
        const char *program;
    } workers[] = {
        {"VELMOR_RECOGNIZER", VELMOR_PROGRAMS "/velmor-recognizer"},
        {"VELMOR_RENDERER",   VELMOR_PROGRAMS "/velmor-renderer"  },
    };
    for (const auto &worker : workers) {
        if (qEnvironmentVariableIsEmpty(worker.variable))
            qputenv(worker.variable, QByteArray(worker.program));
    }
}

} // namespace velmor

#include "pipeline/workers/WorkerProgram.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace velmor {

QString workerProgram(const QString &name, const char *variable)
{
    const QString chosen = qEnvironmentVariable(variable);
    if (!chosen.isEmpty())
        return chosen;
    const QString folder = QCoreApplication::applicationDirPath() + QLatin1Char('/');
    const QString beside = folder + name;
    if (QFileInfo(beside).isExecutable())
        return beside;
    return folder + QStringLiteral("../libexec/velmor/") + name;
}

} // namespace velmor

#pragma once

#include <QLoggingCategory>
#include <QString>

namespace scanengine {

/// What the engine and its workers do, step by step: for diagnosis, never for the application.
/// Goes to standard error; silent but for warnings until `logTo` was called.
Q_DECLARE_LOGGING_CATEGORY(logging)

/// Appends the steps from now on, and all that this process and its workers write to standard
/// error, to the file `path`. False if it can't be opened. Call before any thread is started.
[[nodiscard]] bool logTo(const QString &path);

/// Whether steps are logged.
[[nodiscard]] bool isLogging();

} // namespace scanengine

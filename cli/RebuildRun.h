#pragma once

#include "cli/CommandLine.h"
#include "cli/ExitCode.h"
#include "cli/StatusDisplay.h"
#include "model/AppModel.h"

#include <QCoroTask>
#include <QObject>

#include <functional>
#include <optional>

namespace velmor {

/// Rebuilds saved PDFs one after the other, and prints the path of each that was saved to standard
/// output. A file that fails stays as it was, and the next is taken up. Needs an event loop.
class RebuildRun : public QObject {
    Q_OBJECT

public:
    explicit RebuildRun(const MagicRequest &request, QObject *parent = nullptr);
    explicit RebuildRun(const OcrRequest &request, QObject *parent = nullptr);

    void start();

Q_SIGNALS:
    /// Once, at the end. Success is that of all files.
    void finished(velmor::ExitCode code);

private:
    QCoro::Task<> rebuildAll();
    [[nodiscard]] QCoro::Task<bool> rebuilt(QUrl file);

    QList<QUrl> m_files;
    std::optional<MagicSettings> m_levels; ///< Absent: the text alone.
    bool m_ocr = true;
    StatusDisplay m_display;
    AppModel m_model;
};

} // namespace velmor

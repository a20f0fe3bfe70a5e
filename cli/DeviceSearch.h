#pragma once

#include "cli/CommandLine.h"
#include "cli/ExitCode.h"
#include "model/AppModel.h"

#include <QObject>
#include <QTimer>

namespace velmor {

/// The way from nothing to a list of scanners: launches the engine and waits for its answer, within
/// a limit. Needs an event loop.
class DeviceSearch : public QObject {
    Q_OBJECT

public:
    /// `model` outlives the search.
    DeviceSearch(AppModel &model, SearchLimit limit, QObject *parent = nullptr);

    void start();
    /// Ends without an answer.
    void giveUp();

Q_SIGNALS:
    /// There is a scanner at least. Either this comes or `failed`, once.
    void found();
    void failed(velmor::ExitCode code, const QString &message);

private:
    void noteDevices();
    void fail(ExitCode code, const QString &message);

    AppModel &m_model;
    QTimer m_limit;
    bool m_isOver = false;
};

} // namespace velmor

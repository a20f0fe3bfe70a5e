#include "home/ScanArea.h"

#include "model/Derived.h"

#include <algorithm>

namespace velmor {

void ScanArea::setModel(AppModel *model)
{
    if (m_model == model)
        return;
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    if (model) {
        connect(model, &AppModel::isScanningChanged, this, &ScanArea::refresh);
        connect(model, &AppModel::successCountChanged, this, &ScanArea::refresh);
        connect(model, &AppModel::devicesChanged, this, &ScanArea::refresh);
        connect(model, &AppModel::searchingChanged, this, &ScanArea::refresh);
        connect(model, &AppModel::statusTextChanged, this, &ScanArea::refresh);
        // Whether there is an engine to scan with is no state that tells of its changes.
        connect(model, &AppModel::engineLost, this, &ScanArea::refresh);
        connect(model, &AppModel::assemblyProgressChanged, this, &ScanArea::refreshAssembly);
        refresh();
        refreshAssembly();
    }
    Q_EMIT modelChanged();
}

void ScanArea::refresh()
{
    const std::optional<int> pages = m_model->successCount();
    if (pages)
        derive(this, m_successText, *pages == 1 ? tr("1 page") : tr("%n pages", nullptr, *pages),
               &ScanArea::successTextChanged);
    derive(this, m_searching, m_model->searching(), &ScanArea::searchingChanged);
    derive(this, m_hint, m_searching ? tr("Looking for scanners…") : tr("Tap to find scanner"),
           &ScanArea::hintChanged);
    derive(this, m_statusText, m_model->statusText(), &ScanArea::statusTextChanged);
    derive(this, m_ready, m_model->canScan(), &ScanArea::readyChanged);
    derive(this, m_state,
           m_model->isScanning() ? State::Scanning
           : pages               ? State::Success
                                 : State::Button,
           &ScanArea::stateChanged);
}

void ScanArea::refreshAssembly()
{
    const std::optional<AssemblyProgress> progress = m_model->assemblyProgress();
    if (progress && progress->total > 0) {
        derive(this, m_assemblyFraction, double(progress->done) / progress->total,
               &ScanArea::assemblyFractionChanged);
        const int page = std::min(progress->done + 1, progress->total);
        derive(this, m_assemblyText, tr("page %1 of %2").arg(page).arg(progress->total),
               &ScanArea::assemblyTextChanged);
    }
    derive(this, m_assembling, progress && progress->total > 0, &ScanArea::assemblingChanged);
}

void ScanArea::press()
{
    if (m_model)
        m_model->primaryScan();
}

void ScanArea::stop()
{
    if (m_model)
        m_model->cancel();
}

} // namespace velmor

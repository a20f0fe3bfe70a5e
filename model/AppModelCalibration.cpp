#include "model/AppModel.h"
#include "pipeline/RawStore.h"
#include "pipeline/WithoutExceptions.h"

#include <QCoroFuture>
#include <QDir>
#include <QFileInfo>
#include <QPointer>

#include <utility>

namespace velmor {

namespace {

const QString hasCalibratedKey = QStringLiteral("hasCalibrated");

// Both are hidden, so that no list of scans shows them.
const QString sampleName = QStringLiteral(".velmor_raw.png");
const QString previewName = QStringLiteral(".velmor_preview.png");

QString pathIn(const QUrl &folder, const QString &name)
{
    return QDir(folder.toLocalFile()).absoluteFilePath(name);
}

} // namespace

void AppModel::loadHasCalibrated()
{
    m_hasCalibrated = m_store.value(hasCalibratedKey).toBool();
}

QUrl AppModel::rawCalibrationPath() const
{
    return QUrl::fromLocalFile(pathIn(m_settings.outputFolder, sampleName));
}

bool AppModel::hasCalibrationSample() const
{
    return QFileInfo::exists(rawCalibrationPath().toLocalFile());
}

void AppModel::startCalibration()
{
    if (m_devices.isEmpty()) {
        refreshDevices();
        return;
    }
    ensureOutputFolder();
    setIsScanning(true);
    setStatusText(tr("Calibration scan…"));
    EngineCommand command = captureCommand(QStringLiteral("calibrate"));
    command.output = EngineCommand::Output{nextOutputPath(), QStringLiteral("png")};
    m_engine.send(command);
}

void AppModel::adjustPreview()
{
    if (!m_engineRunning || !hasCalibrationSample())
        return;
    m_adjustCommand = {
        .cmd = QStringLiteral("adjust"),
        .input = rawCalibrationPath().toLocalFile(),
        .colorMode = engineValue(m_settings.colorMode),
        .autoSettings =
            EngineCommand::Auto{
                                .cleanBackground = m_settings.cleanEnabled,
                                .ocrLanguage = QStringLiteral("eng"),
                                .brightness = m_settings.brightness,
                                .contrast = m_settings.contrast,
                                },
        .output = EngineCommand::Output{pathIn(m_settings.outputFolder,                                          previewName),
                                QStringLiteral("png")                                    },
    };
    m_adjustWork.start();
}

void AppModel::finishCalibration()
{
    if (!m_hasCalibrated) {
        assign(m_hasCalibrated, true, &AppModel::hasCalibratedChanged);
        m_store.setValue(hasCalibratedKey, true);
    }
    setShowCalibration(false);
}

void AppModel::handleSample()
{
    setIsScanning(false);
    setSearching(false);
    setStatusText(tr("Calibration ready"));
    m_previewToShow.reset();
    assign(m_calibrationImage, std::nullopt, &AppModel::calibrationImageChanged);
    assign(m_calibrationSampleVersion, m_calibrationSampleVersion + 1,
           &AppModel::calibrationSampleVersionChanged);
    setShowCalibration(true);
    adjustPreview();
}

void AppModel::handleAdjusted(const EngineEvent &event)
{
    if (!event.file)
        return;
    m_previewToShow = QUrl::fromLocalFile(*event.file);
    if (!m_isShowingPreviews)
        showPreviews();
}

/// Decodes one preview at a time, always the newest by then, and none of a former sample.
QCoro::Task<> AppModel::showPreviews()
{
    const QPointer<AppModel> self(this);
    m_isShowingPreviews = true;
    while (m_previewToShow) {
        const QUrl file = *std::exchange(m_previewToShow, std::nullopt);
        const int sample = m_calibrationSampleVersion;
        QFuture<std::optional<QImage>> decoding =
            inBackground([file] { return RawStore::image(file); });
        const std::optional<QImage> image = co_await decoding;
        if (!self)
            co_return;
        if (image && sample == m_calibrationSampleVersion)
            assign(m_calibrationImage, image, &AppModel::calibrationImageChanged);
    }
    m_isShowingPreviews = false;
}

} // namespace velmor

#include "calibration/Calibration.h"

#include "calibration/AutoTune.h"
#include "model/Derived.h"
#include "model/Labels.h"
#include "pipeline/RawStore.h"
#include "pipeline/WithoutExceptions.h"

#include <QCoroFuture>
#include <QPointer>
#include <QScopeGuard>

#include <algorithm>
#include <utility>

namespace velmor {

Calibration::Calibration(AppModel &model, QObject *parent)
    : QObject(parent), m_model(model), m_seen(model.settings()), m_reactedTo(m_seen)
{
    connectModel();
    lookForSample();
    listPresets();
}

void Calibration::connectModel()
{
    const AppModel *model = &m_model;
    connect(model, &AppModel::settingsChanged, this, &Calibration::followSettings);
    connect(model, &AppModel::calibrationSampleVersionChanged, this, &Calibration::followSample);
    connect(model, &AppModel::calibrationImageChanged, this, &Calibration::followResult);
    connect(model, &AppModel::lastErrorChanged, this, &Calibration::followFailure);
    connect(model, &AppModel::presetsChanged, this, &Calibration::listPresets);
    connect(model, &AppModel::statusTextChanged, this, [this] { tell(m_model.statusText()); });
    connect(model, &AppModel::toastChanged, this, [this] {
        if (m_model.toast())
            tell(*m_model.toast());
        Q_EMIT noteChanged();
    });
    connect(model, &AppModel::searchingChanged, this, &Calibration::noteChanged);
    connect(model, &AppModel::isScanningChanged, this, [this] {
        if (m_model.isScanning())
            setFailure({});
        Q_EMIT noteChanged();
    });
    // Not within the event that frees the scanner: the rest of what it says comes first.
    connect(model, &AppModel::isScanningChanged, this, &Calibration::captureWantedSample,
            Qt::QueuedConnection);
    connect(model, &AppModel::devicesChanged, this, &Calibration::captureWantedSample,
            Qt::QueuedConnection);
}

void Calibration::open()
{
    loadOriginal();
    m_model.adjustPreview();
    if (!m_hasSample)
        scanSample();
}

void Calibration::finish()
{
    // Its sample would open the screen again.
    if (m_model.isCalibrating())
        m_model.cancel();
    m_model.finishCalibration();
}

// --- Sample --------------------------------------------------------------------------------------

void Calibration::lookForSample()
{
    derive(this, m_hasSample, m_model.hasCalibrationSample(), &Calibration::hasSampleChanged);
}

void Calibration::loadOriginal()
{
    lookForSample();
    if (!m_hasSample)
        return;
    m_originalToLoad = m_model.rawCalibrationPath();
    if (!m_isLoading)
        loadNewestOriginal();
}

QCoro::Task<> Calibration::loadNewestOriginal()
{
    const QPointer<Calibration> self(this);
    m_isLoading = true;
    const auto rest = qScopeGuard([self] {
        if (self)
            self->m_isLoading = false;
    });
    while (m_originalToLoad) {
        const QUrl file = *std::exchange(m_originalToLoad, std::nullopt);
        QFuture<std::optional<QImage>> decoding =
            inBackground([file] { return RawStore::image(file); });
        const std::optional<QImage> image = co_await decoding;
        if (!self)
            co_return;
        if (m_originalToLoad)
            continue;
        m_original = image;
        Q_EMIT originalChanged();
    }
}

void Calibration::scanSample()
{
    const bool isSearching = m_model.devices().isEmpty() && m_model.searching();
    if (m_model.isScanning() || isSearching) {
        m_wantsSample = true;
        Q_EMIT noteChanged();
        return;
    }
    captureSample();
}

/// Has the sample captured now or, without a scanner, one searched for.
void Calibration::captureSample()
{
    m_wantsSample = m_model.devices().isEmpty();
    setFailure({});
    m_model.startCalibration();
    Q_EMIT noteChanged();
}

void Calibration::captureWantedSample()
{
    if (m_wantsSample && !m_model.devices().isEmpty() && !m_model.isScanning())
        captureSample();
    Q_EMIT noteChanged();
}

void Calibration::followSample()
{
    loadOriginal();
    m_model.adjustPreview();
}

void Calibration::followResult()
{
    if (hasResult())
        setFailure({});
    Q_EMIT resultChanged();
}

void Calibration::followFailure()
{
    if (!m_model.lastError())
        return;
    setFailure(*m_model.lastError());
    lookForSample();
}

void Calibration::autoTune()
{
    if (m_hasSample && !m_isTuning)
        tune(m_model.rawCalibrationPath());
}

QCoro::Task<> Calibration::tune(QUrl sample)
{
    const QPointer<Calibration> self(this);
    m_isTuning = true;
    const auto rest = qScopeGuard([self] {
        if (self)
            self->m_isTuning = false;
    });
    QFuture<std::optional<Tones>> measuring = inBackground(
        [sample] { return velmor::autoTune(RawStore::image(sample).value_or(QImage())); });
    const std::optional<Tones> tones = co_await measuring;
    if (!self || !tones)
        co_return;
    ScanSettings settings = m_model.settings();
    settings.contrast = tones->contrast;
    m_model.setSettings(settings);
    settings.brightness = tones->brightness;
    m_model.setSettings(settings);
}

// --- Settings ------------------------------------------------------------------------------------

void Calibration::followSettings()
{
    m_seen = m_model.settings();
    lookForSample();
    Q_EMIT settingsChanged();
    // Once for all that changes together: a preset sets its tones and then its folder.
    if (!std::exchange(m_reactionDue, true))
        QMetaObject::invokeMethod(this, &Calibration::react, Qt::QueuedConnection);
}

/// The model tells of every assignment, and of no field: only what differs counts.
void Calibration::react()
{
    m_reactionDue = false;
    const ScanSettings before = std::exchange(m_reactedTo, m_seen);
    const bool isElsewhere = m_seen.outputFolder != before.outputFolder;
    if (isElsewhere)
        loadOriginal();
    if (m_seen.brightness != before.brightness || m_seen.contrast != before.contrast || isElsewhere)
        m_model.adjustPreview();
    if (m_seen.colorMode != before.colorMode)
        captureSample();
}

QStringList Calibration::colorModeTitles()
{
    QStringList titles;
    for (const ColorMode mode : allColorModes)
        titles.append(label(mode));
    return titles;
}

int Calibration::colorMode() const
{
    return static_cast<int>(std::ranges::find(allColorModes, m_seen.colorMode) -
                            allColorModes.begin());
}

void Calibration::setColorMode(int index)
{
    if (index < 0 || index >= static_cast<int>(allColorModes.size()))
        return;
    ScanSettings settings = m_model.settings();
    settings.colorMode = allColorModes[static_cast<size_t>(index)];
    m_model.setSettings(settings);
}

void Calibration::setBrightness(double position)
{
    ScanSettings settings = m_model.settings();
    settings.brightness = SliderScale::setting(position);
    m_model.setSettings(settings);
}

void Calibration::setContrast(double position)
{
    ScanSettings settings = m_model.settings();
    settings.contrast = SliderScale::setting(position);
    m_model.setSettings(settings);
}

// --- Presets -------------------------------------------------------------------------------------

void Calibration::setPresetName(const QString &name)
{
    derive(this, m_presetName, name, &Calibration::presetNameChanged);
}

void Calibration::savePreset()
{
    if (!canSavePreset())
        return;
    m_model.saveCurrentAsPreset(m_presetName, AppModel::PresetFolder::leaveOut);
    setPresetName({});
}

void Calibration::listPresets()
{
    QStringList names;
    for (const ScanPreset &preset : m_model.presets())
        names.append(preset.name);
    derive(this, m_presetNames, names, &Calibration::presetNamesChanged);
}

void Calibration::applyPreset(int place)
{
    if (place >= 0 && place < m_model.presets().size())
        m_model.applyPreset(m_model.presets()[place]);
}

// --- What goes on --------------------------------------------------------------------------------

bool Calibration::isBusy() const
{
    return m_model.isScanning() || (m_wantsSample && m_model.searching());
}

QString Calibration::note() const
{
    if (isBusy())
        return m_model.statusText();
    if (!m_failure.isEmpty())
        return m_failure;
    if (m_model.toast())
        return *m_model.toast();
    if (!m_model.engineRunning())
        return m_model.statusText();
    return m_wantsSample ? tr("No scanner found — switch it on or connect it, then scan")
                         : QString();
}

void Calibration::tell(const QString &news)
{
    derive(this, m_news, news, &Calibration::newsChanged);
    Q_EMIT noteChanged();
}

void Calibration::setFailure(const QString &failure)
{
    derive(this, m_failure, failure, &Calibration::noteChanged);
}

} // namespace velmor

#pragma once

#include "calibration/Calibration.h"
#include "tests/model/AppModelFixture.h"

#include <QColor>

namespace velmor {

/// A model with the real engine, one feeder and an output folder of its own.
class CalibrationFixture : public AppModelFixture {
protected:
    CalibrationFixture()
    {
        makeModel({.adjust = std::chrono::milliseconds(1)});
        ScanSettings settings = model->settings();
        settings.cleanEnabled = false;
        model->setSettings(settings);
        QDir().mkpath(feeder());
        qputenv("SANE_CONFIG_DIR", "/none");
        qputenv("VELMOR_ENGINE", SCANENGINE_PROGRAM);
        qputenv("SCANENGINE_FEEDER", QFile::encodeName(feeder()));
    }

    ~CalibrationFixture() override
    {
        calibration.reset();
        for (const char *name : {"SANE_CONFIG_DIR", "VELMOR_ENGINE", "SCANENGINE_FEEDER"})
            qunsetenv(name);
    }

    [[nodiscard]] QString feeder() const { return folder.filePath(QStringLiteral("feeder")); }

    void putPage(const QString &name, int level)
    {
        QImage page(80, 110, QImage::Format_Grayscale8);
        page.fill(level);
        page.setDotsPerMeterX(11811);
        page.setDotsPerMeterY(11811);
        const QString hidden = folder.filePath(name);
        ASSERT_TRUE(page.save(hidden));
        ASSERT_TRUE(QFile::rename(hidden, feeder() + u'/' + name));
    }

    void findScanner()
    {
        model->startEngine();
        ASSERT_TRUE(waitUntil([this] { return !model->devices().isEmpty(); }, 60'000));
    }

    void open()
    {
        calibration = std::make_unique<Calibration>(*model);
        calibration->open();
    }

    static int level(const std::optional<QImage> &image)
    {
        return image ? image->pixelColor(image->rect().center()).red() : -1;
    }

    bool resultBecomes(int wanted)
    {
        return waitUntil([&] { return level(model->calibrationImage()) == wanted; });
    }

    bool originalBecomes(int wanted)
    {
        return waitUntil([&] { return level(calibration->original()) == wanted; });
    }

    std::unique_ptr<Calibration> calibration;
};

} // namespace velmor

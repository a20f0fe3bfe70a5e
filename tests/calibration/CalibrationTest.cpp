// The rules of the calibration screen, without a window, on the engine that users have.

#include "tests/calibration/CalibrationFixture.h"

#include <QSignalSpy>

namespace velmor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

using CalibrationTest = CalibrationFixture;

TEST_F(CalibrationTest, OpenedWithoutASampleItScansOne)
{
    putPage(QStringLiteral("1.png"), 100);
    ASSERT_NO_FATAL_FAILURE(findScanner());
    open();
    EXPECT_FALSE(calibration->hasSample());
    EXPECT_TRUE(calibration->isBusy());
    EXPECT_EQ(calibration->note(), u"Calibration scan…");
    ASSERT_TRUE(originalBecomes(100));
    ASSERT_TRUE(resultBecomes(100));
    EXPECT_TRUE(calibration->hasSample());
    EXPECT_EQ(calibration->note(), QString());
    EXPECT_EQ(calibration->news(), u"Calibration ready");
    EXPECT_TRUE(model->results().isEmpty());

    calibration.reset();
    open();
    EXPECT_FALSE(model->isScanning()) << "the sample of before serves";
    ASSERT_TRUE(originalBecomes(100));
}

TEST_F(CalibrationTest, ABurstOfMovesGivesOnePreviewOfTheLast)
{
    putPage(QStringLiteral("1.png"), 100);
    ASSERT_NO_FATAL_FAILURE(findScanner());
    open();
    ASSERT_TRUE(resultBecomes(100));
    QSignalSpy results(model.get(), &AppModel::calibrationImageChanged);
    for (const double position : {5.0, 80.0, -3.0, 12.0})
        calibration->setBrightness(position);
    EXPECT_EQ(calibration->brightness(), 12.0);
    // 120 of 1000 are 40 of the 255 levels.
    ASSERT_TRUE(resultBecomes(140));
    calibration->setContrast(10.0);
    // The levels go away from 128 by a ninth.
    ASSERT_TRUE(resultBecomes(141));
    EXPECT_EQ(results.size(), 2);
    EXPECT_EQ(level(calibration->original()), 100);
}

TEST_F(CalibrationTest, AnotherColourModeTakesAnotherSheet)
{
    putPage(QStringLiteral("1.png"), 100);
    ASSERT_NO_FATAL_FAILURE(findScanner());
    open();
    ASSERT_TRUE(resultBecomes(100));
    calibration->setColorMode(calibration->colorMode());
    calibration->setBrightness(calibration->brightness());
    ASSERT_TRUE(QFile::remove(feeder() + QStringLiteral("/1.png")));
    putPage(QStringLiteral("2.png"), 60);
    calibration->setColorMode(1);
    EXPECT_EQ(model->settings().colorMode, ColorMode::color);
    ASSERT_TRUE(originalBecomes(60));
    ASSERT_TRUE(resultBecomes(60));
    EXPECT_EQ(model->calibrationSampleVersion(), 2) << "setting the same again is no change";
}

TEST_F(CalibrationTest, AnotherFolderHasASampleOfItsOwn)
{
    putPage(QStringLiteral("1.png"), 100);
    ASSERT_NO_FATAL_FAILURE(findScanner());
    open();
    ASSERT_TRUE(resultBecomes(100));
    const QUrl first = model->settings().outputFolder;
    model->setOutputFolder(QUrl::fromLocalFile(folder.filePath(QStringLiteral("other"))));
    EXPECT_FALSE(calibration->hasSample());
    calibration->autoTune();

    ASSERT_TRUE(QFile::remove(feeder() + QStringLiteral("/1.png")));
    putPage(QStringLiteral("2.png"), 60);
    calibration->scanSample();
    ASSERT_TRUE(originalBecomes(60));
    model->setOutputFolder(first);
    EXPECT_TRUE(calibration->hasSample());
    EXPECT_FALSE(calibration->hasResult()) << "none of another sample is shown for this one";
    ASSERT_TRUE(originalBecomes(100));
    ASSERT_TRUE(resultBecomes(100));
    EXPECT_EQ(model->settings().contrast, 0);
}

TEST_F(CalibrationTest, AutoTunesByTheSample)
{
    putPage(QStringLiteral("1.png"), 100);
    ASSERT_NO_FATAL_FAILURE(findScanner());
    open();
    ASSERT_TRUE(resultBecomes(100));
    calibration->autoTune();
    ASSERT_TRUE(waitUntil([&] { return model->settings().brightness != 0; }));
    EXPECT_EQ(model->settings().brightness, (128 - 100) * 3);
    EXPECT_EQ(model->settings().contrast, 850);
    EXPECT_EQ(calibration->brightness(), 8.4);
    ASSERT_TRUE(resultBecomes(128));
}

TEST_F(CalibrationTest, KeepsTheResultAsAPreset)
{
    open();
    calibration->setBrightness(12.0);
    calibration->setPresetName(QStringLiteral("  "));
    EXPECT_FALSE(calibration->canSavePreset());
    calibration->savePreset();
    calibration->setPresetName(QStringLiteral(" Receipts "));
    calibration->savePreset();
    EXPECT_EQ(calibration->presetName(), QString());
    EXPECT_THAT(calibration->presetNames(), ElementsAre(u"Receipts"));
    EXPECT_EQ(calibration->news(), u"Saved preset “Receipts”");
    EXPECT_FALSE(model->presets().first().folderBookmark);

    calibration->setBrightness(0);
    calibration->applyPreset(1);
    EXPECT_EQ(calibration->brightness(), 0);
    calibration->applyPreset(0);
    EXPECT_EQ(calibration->brightness(), 12);
    EXPECT_EQ(model->activeCustomPreset()->name, u"Receipts");
}

TEST_F(CalibrationTest, WhatGoesWrongIsToldUntilTheNextScan)
{
    ASSERT_NO_FATAL_FAILURE(findScanner());
    open();
    ASSERT_TRUE(waitUntil([&] { return calibration->hasFailed(); }));
    EXPECT_THAT(calibration->note().toStdString(), HasSubstr("no paper"));
    EXPECT_EQ(calibration->news(), calibration->note());
    calibration->scanSample();
    EXPECT_FALSE(calibration->hasFailed());
    EXPECT_EQ(calibration->news(), u"Calibration scan…");
    ASSERT_TRUE(waitUntil([&] { return calibration->hasFailed(); })) << "the same once more";
    EXPECT_EQ(calibration->news(), calibration->note());
    putPage(QStringLiteral("1.png"), 100);
    calibration->scanSample();
    EXPECT_FALSE(calibration->hasFailed());
    ASSERT_TRUE(resultBecomes(100));

    // A sample that no longer is one.
    QFile sample(model->rawCalibrationPath().toLocalFile());
    ASSERT_TRUE(sample.resize(sample.size() / 2));
    calibration->setBrightness(5);
    ASSERT_TRUE(waitUntil([&] { return calibration->hasFailed(); }));
    EXPECT_THAT(calibration->note().toStdString(), HasSubstr("sample can't be used"));
    calibration->autoTune();
    ASSERT_TRUE(sample.remove());
    calibration->setBrightness(6);
    EXPECT_FALSE(calibration->hasSample());
    EXPECT_EQ(model->settings().contrast, 0);
}

TEST_F(CalibrationTest, WithoutAScannerItSaysSoAndScansOnceThereIsOne)
{
    engine.emplace("listDevices#1: print {\"event\":\"devices\"}\n"
                   "listDevices#2: print {\"event\":\"devices\"}\n"
                   "listDevices#3: print {\"event\":\"devices\",\"devices\":["
                   "{\"id\":\"a\",\"name\":\"Alpha\",\"driver\":\"x\"}]}\n");
    model->startEngine();
    ASSERT_TRUE(waitUntil([&] { return !model->searching(); }));
    open();
    EXPECT_TRUE(calibration->isBusy());
    EXPECT_EQ(calibration->note(), u"Looking for scanners…");
    ASSERT_TRUE(waitUntil([&] { return !calibration->isBusy(); }));
    EXPECT_THAT(calibration->note().toStdString(), HasSubstr("No scanner found"));
    model->refreshDevices();
    ASSERT_TRUE(waitUntil([&] { return engine->receivedWords().contains("calibrate"); }));
    EXPECT_EQ(calibration->note(), u"Calibration scan…");
}

TEST_F(CalibrationTest, ClosedInMidScanItStopsTheScan)
{
    startEngine("cancel: print {\"event\":\"error\",\"message\":\"Stopped\"}\n");
    open();
    EXPECT_TRUE(model->isScanning());
    calibration->finish();
    ASSERT_TRUE(waitUntil([&] { return !model->isScanning(); }));
    EXPECT_FALSE(model->showCalibration());
    EXPECT_TRUE(model->hasCalibrated());
    calibration->finish();
    model->refreshDevices();
    ASSERT_TRUE(waitUntil([&] { return engine->receivedWords().count("listDevices") == 2; }));
    EXPECT_EQ(engine->receivedWords().count("cancel"), 1);
}

TEST_F(CalibrationTest, ClosedInMidScanAfterAPreviewFailedItStopsTheScan)
{
    // The error answers the preview that was asked for before.
    startEngine("calibrate: print {\"event\":\"error\",\"message\":\"No preview\"}\n"
                "cancel: print {\"event\":\"done\"}\n");
    ASSERT_TRUE(noise({10, 10}).save(model->rawCalibrationPath().toLocalFile()));
    open();
    ASSERT_TRUE(waitUntil([&] { return engine->receivedWords().contains("adjust"); }));
    calibration->scanSample();
    ASSERT_TRUE(waitUntil([&] { return calibration->hasFailed(); }));
    EXPECT_TRUE(model->isCalibrating());
    calibration->finish();
    ASSERT_TRUE(waitUntil([&] { return !model->isCalibrating(); }));
}

TEST_F(CalibrationTest, OpenedDuringAScanItWaitsForItsEnd)
{
    startEngine("scan: print {\"event\":\"scanStarted\"}\n"
                "cancel: print {\"event\":\"done\"}\n");
    model->scan();
    open();
    EXPECT_TRUE(calibration->isBusy());
    model->cancel();
    ASSERT_TRUE(waitUntil([&] { return engine->receivedWords().contains("calibrate"); }));
    EXPECT_EQ(engine->receivedWords().last(), "calibrate");
    EXPECT_EQ(calibration->note(), u"Calibration scan…");
}

} // namespace
} // namespace velmor

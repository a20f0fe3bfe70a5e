#include "tests/model/AppModelFixture.h"

#include <QSignalSpy>

namespace velmor {
namespace {

/// A model that asks for a preview a millisecond after the last change, with a sample in its
/// folder.
class AppModelCalibrationTest : public AppModelFixture {
protected:
    AppModelCalibrationTest() { makeModel({.adjust = std::chrono::milliseconds(1)}); }

    void putSample(const QString &place)
    {
        QDir().mkpath(place);
        ASSERT_TRUE(QImage(4, 4, QImage::Format_RGB32).save(place + sampleName));
    }

    void set(int ScanSettings::*tone, int value)
    {
        ScanSettings settings = model->settings();
        settings.*tone = value;
        model->setSettings(settings);
    }

    void setFolder(const QString &path)
    {
        ScanSettings settings = model->settings();
        settings.outputFolder = QUrl::fromLocalFile(path);
        model->setSettings(settings);
    }

    QList<QJsonObject> received(const QString &word) const
    {
        QList<QJsonObject> commands = engine->received();
        commands.removeIf([&](const QJsonObject &command) { return command[u"cmd"] != word; });
        return commands;
    }

    /// Waits for what was sent, and for what would follow it.
    void waitForCommand(const QString &word)
    {
        ASSERT_TRUE(waitUntil([&] { return !received(word).isEmpty(); }));
        const qsizetype searches = received(QStringLiteral("listDevices")).size();
        model->refreshDevices();
        ASSERT_TRUE(
            waitUntil([&] { return received(QStringLiteral("listDevices")).size() > searches; }));
    }

    static QJsonObject json(const QByteArray &text)
    {
        return QJsonDocument::fromJson(text).object();
    }

    const QString sampleName = QStringLiteral("/.velmor_raw.png");
};

TEST_F(AppModelCalibrationTest, ACalibrationTakesASheetAsAScanDoes)
{
    startEngine("");
    ScanSettings settings = model->settings();
    settings.quality = ScanQuality::high;
    settings.colorMode = ColorMode::grayscale;
    settings.source = QStringLiteral("flatbed");
    model->setSettings(settings);
    ASSERT_TRUE(QDir(scansPath()).removeRecursively());
    model->startCalibration();
    EXPECT_TRUE(model->isScanning());
    EXPECT_EQ(model->statusText(), u"Calibration scan…");
    EXPECT_TRUE(QFileInfo(scansPath()).isDir());
    waitForCommand(QStringLiteral("calibrate"));
    QJsonObject command = received(QStringLiteral("calibrate")).constFirst();
    const QFileInfo output(command[u"output"][u"path"].toString());
    EXPECT_EQ(output.path(), scansPath());
    EXPECT_TRUE(output.fileName().startsWith(u"Document_"));
    command.remove(u"output");
    EXPECT_EQ(command, json(R"({"cmd":"calibrate","deviceId":"a","driver":"x",
                               "source":"flatbed","dpi":600,"colorMode":"gray"})"));
}

TEST_F(AppModelCalibrationTest, WithoutAScannerItSearchesForOne)
{
    engine.emplace("");
    model->startEngine();
    model->startCalibration();
    ASSERT_TRUE(waitUntil([&] { return received(QStringLiteral("listDevices")).size() == 2; }));
    EXPECT_FALSE(model->isScanning());
    EXPECT_EQ(engine->receivedWords().count("calibrate"), 0);
}

TEST_F(AppModelCalibrationTest, ABurstOfChangesAsksForOnePreviewOfTheLast)
{
    startEngine("");
    putSample(scansPath());
    for (const int value : {10, -20, 123}) {
        set(&ScanSettings::brightness, value);
        model->adjustPreview();
    }
    waitForCommand(QStringLiteral("adjust"));
    const QList<QJsonObject> commands = received(QStringLiteral("adjust"));
    ASSERT_EQ(commands.size(), 1);
    QJsonObject wanted = json(R"({"cmd":"adjust","colorMode":"gray","auto":{"crop":false,
        "deskew":false,"cleanBackground":true,"blankRemoval":false,"autoLevels":false,"ocr":false,
        "ocrLanguage":"eng","brightness":123,"contrast":0}})");
    wanted[u"input"] = scansPath() + sampleName;
    wanted[u"output"] = QJsonObject{
        {QStringLiteral("path"),   scansPath() + QStringLiteral("/.velmor_preview.png")},
        {QStringLiteral("format"), QStringLiteral("png")                               }
    };
    EXPECT_EQ(commands.first(), wanted);
}

TEST_F(AppModelCalibrationTest, AFolderWithoutASampleLeavesWhatIsDueAsItIs)
{
    startEngine("");
    putSample(scansPath());
    ASSERT_TRUE(model->hasCalibrationSample());
    set(&ScanSettings::contrast, 70);
    model->adjustPreview();
    const QString elsewhere = folder.filePath(QStringLiteral("elsewhere"));
    setFolder(elsewhere);
    EXPECT_FALSE(model->hasCalibrationSample());
    set(&ScanSettings::contrast, 80);
    model->adjustPreview();
    waitForCommand(QStringLiteral("adjust"));
    ASSERT_EQ(received(QStringLiteral("adjust")).size(), 1);
    EXPECT_EQ(received(QStringLiteral("adjust"))[0][u"auto"][u"contrast"], 70);
    putSample(elsewhere);
    EXPECT_TRUE(model->hasCalibrationSample());
}

TEST_F(AppModelCalibrationTest, ASampleIsShownAndItsPreviewAskedFor)
{
    const QString preview = folder.filePath(QStringLiteral("preview.png"));
    ASSERT_TRUE(noise({30, 20}).save(preview));
    startEngine("calibrate: print {\"event\":\"adjusted\",\"file\":\"" + preview.toUtf8() +
                "\"}\n"
                "calibrate: print {\"event\":\"adjusted\",\"file\":\"/nowhere.png\"}\n"
                "calibrate: print {\"event\":\"adjusted\"}\n"
                "calibrate#2: print {\"event\":\"sample\"}\n");
    putSample(scansPath());
    model->startCalibration();
    ASSERT_TRUE(waitUntil([&] { return model->calibrationImage().has_value(); }));
    EXPECT_EQ(model->calibrationImage()->size(), QSize(30, 20));
    EXPECT_FALSE(model->showCalibration());

    model->startCalibration();
    ASSERT_TRUE(waitUntil([&] { return model->calibrationSampleVersion() == 1; }));
    EXPECT_FALSE(model->calibrationImage()) << "what is decoded still is of the old sample";
    EXPECT_TRUE(model->showCalibration());
    EXPECT_FALSE(model->isScanning());
    EXPECT_EQ(model->statusText(), u"Calibration ready");
    waitForCommand(QStringLiteral("adjust"));
    EXPECT_FALSE(model->calibrationImage());
}

TEST_F(AppModelCalibrationTest, OnceFinishedItStaysCalibrated)
{
    EXPECT_FALSE(model->hasCalibrated());
    model->setShowCalibration(true);
    QSignalSpy changed(model.get(), &AppModel::hasCalibratedChanged);
    model->finishCalibration();
    model->finishCalibration();
    EXPECT_FALSE(model->showCalibration());
    EXPECT_EQ(changed.size(), 1);
    makeModel();
    EXPECT_TRUE(model->hasCalibrated());
}

} // namespace
} // namespace velmor

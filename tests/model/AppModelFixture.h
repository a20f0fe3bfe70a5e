#pragma once

#include "model/AppModel.h"
#include "tests/Printers.h"
#include "tests/Waiting.h"
#include "tests/fakeengine/FakeEngine.h"
#include "tests/pipeline/TestPages.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace velmor {

inline const QByteArray devicesLine = "listDevices: print {\"event\":\"devices\",\"devices\":["
                                      "{\"id\":\"a\",\"name\":\"Alpha\",\"driver\":\"x\"},"
                                      "{\"id\":\"b\",\"name\":\"Beta\",\"driver\":\"y\"}]}\n";

/// A model with an output folder and a settings file of its own.
class AppModelFixture : public testing::Test {
protected:
    AppModelFixture()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                           folder.filePath(QStringLiteral("config")));
        makeModel();
    }

    ~AppModelFixture() override { model.reset(); }

    void makeModel(AppModel::Delays delays = {})
    {
        model = std::make_unique<AppModel>(delays);
        ScanSettings settings = model->settings();
        settings.outputFolder = QUrl::fromLocalFile(scansPath());
        settings.ocr = false;
        model->setSettings(settings);
        QObject::connect(model.get(), &AppModel::scanEnded,
                         [this](const ScanOutcome &outcome) { outcomes.append(outcome); });
        QObject::connect(model.get(), &AppModel::statusTextChanged,
                         [this] { statusTexts.append(model->statusText()); });
    }

    QString scansPath() const { return folder.filePath(QStringLiteral("scans")); }

    /// Starts an engine with the script and waits for its scanners.
    void startEngine(const QByteArray &script)
    {
        engine.emplace(devicesLine + script);
        model->startEngine();
        ASSERT_TRUE(waitUntil([this] { return !model->searching(); }));
    }

    /// What the engine says in answer to a "listDevices", line by line, has arrived.
    void receive(const QByteArrayList &lines)
    {
        QByteArray script = "listDevices#1: print {\"event\":\"devices\"}\n";
        for (const QByteArray &line : lines)
            script += "listDevices#2: print " + line + "\n";
        engine.emplace(script +
                       "listDevices#2: print {\"event\":\"status\",\"message\":\"END\"}\n");
        model->startEngine();
        ASSERT_TRUE(waitUntil([this] { return !model->searching(); }));
        statusTexts.clear();
        model->refreshDevices();
        ASSERT_TRUE(waitUntil([this] { return statusTexts.contains(QStringLiteral("END")); }));
        statusTexts.removeAll(QStringLiteral("END"));
        statusTexts.removeAll(QStringLiteral("Looking for scanners…"));
    }

    /// What an engine says that leaves `count` pages; "scan: " or another trigger goes before it.
    QByteArray doneWith(int count)
    {
        return "print {\"event\":\"done\",\"pages\":" + QByteArray::number(count) +
               ",\"files\":" + pageFiles(count) + ",\"file\":\"$OUTPUT\"}\n";
    }

    void waitForEnd()
    {
        ASSERT_TRUE(waitUntil([this] { return !outcomes.isEmpty(); }));
    }

    /// Page image files as an engine would leave them, as the text of a JSON array.
    QByteArray pageFiles(int count)
    {
        QJsonArray paths;
        for (int page = 1; page <= count; ++page) {
            pages.append(folder.filePath(QStringLiteral("page %1.png").arg(page)));
            EXPECT_TRUE(noise({300, 600}).save(pages.last()));
            paths.append(pages.last());
        }
        return QJsonDocument(paths).toJson(QJsonDocument::Compact);
    }

    QStringList scans() const
    {
        return QDir(scansPath()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir folder;
    std::optional<FakeEngine> engine;
    std::unique_ptr<AppModel> model;
    QList<ScanOutcome> outcomes;
    QStringList statusTexts;
    QStringList pages;
};

} // namespace velmor

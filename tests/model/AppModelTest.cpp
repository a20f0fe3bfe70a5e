#include "model/AppModel.h"

#include "pipeline/PdfDocument.h"
#include "pipeline/RawStore.h"
#include "tests/Printers.h"
#include "tests/Waiting.h"
#include "tests/fakeengine/FakeEngine.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThreadPool>
#include <gmock/gmock.h>

#include <csignal>
#include <sys/resource.h>

namespace velmor {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

const QByteArray devicesLine = "listDevices: print {\"event\":\"devices\",\"devices\":["
                               "{\"id\":\"a\",\"name\":\"Alpha\",\"driver\":\"x\"},"
                               "{\"id\":\"b\",\"name\":\"Beta\",\"driver\":\"y\"}]}\n";

/// A model with an output folder and a settings file of its own.
class AppModelTest : public testing::Test {
protected:
    AppModelTest()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                           folder.filePath(QStringLiteral("config")));
        makeModel();
    }

    ~AppModelTest() override { model.reset(); }

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

    void waitForEnd()
    {
        ASSERT_TRUE(waitUntil([this] { return !outcomes.isEmpty(); }));
    }

    /// Page image files as an engine would leave them, as the text of a JSON array.
    QByteArray pageFiles(int count)
    {
        QJsonArray paths;
        for (int page = 1; page <= count; ++page) {
            QImage image(300, 600, QImage::Format_Grayscale8);
            image.fill(200);
            pages.append(folder.filePath(QStringLiteral("page %1.png").arg(page)));
            EXPECT_TRUE(image.save(pages.last()));
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

TEST_F(AppModelTest, StartsWithTheDocumentDefaultsAndNoEngine)
{
    EXPECT_EQ(model->statusText(), QStringLiteral("Ready to scan"));
    EXPECT_FALSE(model->settings().blankRemovalEnabled);
    EXPECT_EQ(model->settings().colorMode, ColorMode::grayscale);
    EXPECT_FALSE(model->canScan());
    EXPECT_EQ(model->connectionLine(), QString());
    EXPECT_FALSE(QFileInfo::exists(scansPath()));
    model->selectPreset(DocumentType::photo);
    EXPECT_EQ(model->settings().source, QStringLiteral("flatbed"));
    EXPECT_EQ(model->settings().outputFolder, QUrl::fromLocalFile(scansPath()));
}

TEST_F(AppModelTest, AnEngineThatCannotStartSaysWhyAndMayBeTriedAgain)
{
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", QFile::encodeName(folder.path()));
    QSignalSpy lost(model.get(), &AppModel::engineLost);
    model->primaryScan();
    qputenv("HOME", home);
    EXPECT_EQ(model->statusText(),
              QStringLiteral("Engine: scanengine executable not found in bundle"));
    EXPECT_FALSE(model->searching());
    EXPECT_FALSE(model->engineRunning());
    EXPECT_EQ(lost.size(), 1);
    EXPECT_TRUE(QFileInfo(scansPath()).isDir());

    startEngine("");
    EXPECT_TRUE(model->canScan());
}

TEST_F(AppModelTest, DevicesSelectTheFirstOnceAndKeepTheSelection)
{
    receive({R"({"event":"devices","devices":[{"id":"a","name":"Alpha","driver":"x"}]})",
             R"({"event":"devices","devices":[{"id":"b","name":"Beta","driver":"y"}]})"});
    EXPECT_EQ(model->selectedDeviceId(), QStringLiteral("a"));
    EXPECT_EQ(model->devices().size(), 1);
    EXPECT_EQ(statusTexts, QStringList());
    EXPECT_EQ(model->connectionLine(), QStringLiteral("Beta connected"));
}

TEST_F(AppModelTest, AnEmptySearchKeepsTheSelection)
{
    model->setSelectedDeviceId(QStringLiteral("old"));
    receive({R"({"event":"devices","devices":[]})"});
    EXPECT_EQ(statusTexts, QStringList(QStringLiteral("No scanner found")));
    EXPECT_EQ(model->selectedDeviceId(), QStringLiteral("old"));
    EXPECT_FALSE(model->searching());
}

TEST_F(AppModelTest, EventsSetTheStatusLine)
{
    const QString outOfDate =
        QStringLiteral("Engine is out of date — rebuild it (build-engine.command)");
    const struct {
        QByteArray event;
        QStringList texts;
        std::optional<QString> toast, lastError;
    } cases[] = {
        {R"({"event":"ready","version":"9"})",                               {QStringLiteral("Ready to scan")},     {}, {}       },
        {R"({"event":"scanStarted"})",                                       {QStringLiteral("Scanning…")},         {}, {}       },
        {R"({"event":"status","message":"Warming up"})",                     {QStringLiteral("Warming up")},        {}, {}       },
        {R"({"event":"status"})",                                            {},                                    {}, {}       },
        {R"({"event":"page","index":7})",                                    {QStringLiteral("Captured page 7…")},  {}, {}       },
        {R"({"event":"page"})",                                              {QStringLiteral("Captured page 0…")},  {}, {}       },
        {R"({"event":"news"})",                                              {},                                    {}, {}       },
        {R"({"event":"done"})",
         {QStringLiteral("Nothing scanned")},
         QStringLiteral("Nothing scanned"),
         {}                                                                                                                      },
        {R"({"event":"done","pages":0,"files":["/x.png"],"file":"/x.pdf"})",
         {QStringLiteral("Nothing scanned")},
         QStringLiteral("Nothing scanned"),
         {}                                                                                                                      },
        {R"({"event":"done","pages":3,"files":[],"file":"/x.pdf"})",
         {QStringLiteral("Saved 3 pages")},
         {},
         {}                                                                                                                      },
        {R"({"event":"done","pages":1})",                                    {QStringLiteral("Saved 1 page")},      {}, {}       },
        {R"({"event":"done","pages":2,"files":["/x.png","/y.png"]})",
         {QStringLiteral("Saved 2 pages")},
         {},
         {}                                                                                                                      },
        {R"({"event":"error"})",
         {QStringLiteral("Couldn't scan — try again")},
         QStringLiteral("Couldn't scan — try again"),
         QStringLiteral("Couldn't scan — try again")                                                                             },
        {R"({"event":"error","message":"Jam"})",
         {QStringLiteral("Jam")},
         QStringLiteral("Jam"),
         QStringLiteral("Jam")                                                                                                   },
        {R"({"event":"error","message":"? Unknown command: adjust"})",
         {outOfDate},
         outOfDate,                                                                                                     outOfDate},
        {R"({"event":"error","message":"unknown command"})",
         {QStringLiteral("unknown command")},
         QStringLiteral("unknown command"),
         QStringLiteral("unknown command")                                                                                       },
        {R"({"event":"sample"})",                                            {QStringLiteral("Calibration ready")}, {}, {}       },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.event.toStdString());
        makeModel();
        receive({c.event});
        EXPECT_EQ(statusTexts, c.texts);
        EXPECT_EQ(model->toast(), c.toast);
        EXPECT_EQ(model->lastError(), c.lastError);
    }
}

TEST_F(AppModelTest, AnErrorStaysUntilTheNextScanOrPages)
{
    const QByteArray error = R"({"event":"error","message":"Jam"})";
    const struct {
        QByteArray next;
        bool clears;
    } cases[] = {
        {R"({"event":"scanStarted"})",    true },
        {R"({"event":"done","pages":1})", true },
        {R"({"event":"done","pages":0})", false},
        {R"({"event":"ready"})",          false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.next.toStdString());
        makeModel();
        receive({error, c.next});
        EXPECT_EQ(model->lastError().has_value(), !c.clears);
    }
}

TEST_F(AppModelTest, ANewerToastGetsItsOwnFullTime)
{
    makeModel({.toast = std::chrono::milliseconds(300)});
    QElapsedTimer sinceSecond;
    QTimer::singleShot(200, model.get(), [&] {
        model->flash(QStringLiteral("second"));
        sinceSecond.start();
    });
    model->flash(QStringLiteral("first"));
    QStringList toasts;
    QObject::connect(model.get(), &AppModel::toastChanged,
                     [&] { toasts.append(model->toast().value_or(QStringLiteral("-"))); });
    ASSERT_TRUE(waitUntil([&] { return !model->toast(); }));
    EXPECT_EQ(toasts, QStringList({QStringLiteral("second"), QStringLiteral("-")}));
    EXPECT_GE(sinceSecond.elapsed(), 200);
}

TEST_F(AppModelTest, TheScanCommandSaysWhatTheSettingsSay)
{
    startEngine("scan: print {\"event\":\"done\"}\n");
    ScanSettings settings = model->settings();
    settings.quality = ScanQuality::high;
    settings.ocr = true;
    settings.brightness = -20;
    model->setSettings(settings);
    model->setSelectedDeviceId(QStringLiteral("b"));
    const QDateTime before = QDateTime::currentDateTime();
    model->primaryScan();
    EXPECT_TRUE(model->isScanning());
    EXPECT_FALSE(model->canScan());
    EXPECT_EQ(model->statusText(), QStringLiteral("Waiting for paper…"));
    waitForEnd();

    const QJsonObject command = engine->received().last();
    EXPECT_EQ(command[u"cmd"], QStringLiteral("scan"));
    EXPECT_EQ(command[u"deviceId"], QStringLiteral("b"));
    EXPECT_EQ(command[u"driver"], QStringLiteral("y"));
    EXPECT_EQ(command[u"dpi"], 600);
    EXPECT_EQ(command[u"colorMode"], QStringLiteral("gray"));
    EXPECT_EQ(command[u"batchWaitForPaper"], true);
    EXPECT_EQ(command[u"auto"][u"ocr"], false);
    EXPECT_EQ(command[u"auto"][u"cropWidthMode"], QStringLiteral("auto"));
    EXPECT_EQ(command[u"auto"][u"brightness"], -20);
    EXPECT_EQ(command[u"output"][u"format"], QStringLiteral("images"));
    const QFileInfo output(command[u"output"][u"path"].toString());
    EXPECT_EQ(output.path(), scansPath());
    const QDateTime named = QDateTime::fromString(
        output.fileName(), QStringLiteral("'Document_'yyyy-MM-dd_HHmmss'.pdf'"));
    EXPECT_TRUE(named.isValid()) << qPrintable(output.fileName());
    EXPECT_LE(qAbs(before.secsTo(named)), 5);
}

TEST_F(AppModelTest, AScannerThatIsNotListedIsNamedWithoutADriver)
{
    startEngine("scan: print {\"event\":\"done\"}\n");
    model->setSelectedDeviceId(QStringLiteral("gone"));
    model->scan();
    waitForEnd();
    EXPECT_EQ(engine->received().last()[u"deviceId"], QStringLiteral("gone"));
    EXPECT_FALSE(engine->received().last().contains(u"driver"));

    outcomes.clear();
    model->setSelectedDeviceId({});
    model->scan();
    waitForEnd();
    EXPECT_EQ(engine->received().last()[u"deviceId"], QStringLiteral("a"));
    EXPECT_FALSE(engine->received().last().contains(u"driver"));
}

TEST_F(AppModelTest, TheButtonSearchesScansAndCancels)
{
    startEngine("cancel: print {\"event\":\"done\",\"pages\":0}\n");
    model->primaryScan();
    ASSERT_TRUE(model->isScanning());
    model->scan();
    model->primaryScan();
    EXPECT_TRUE(model->isScanning());
    waitForEnd();
    EXPECT_FALSE(model->isScanning());
    EXPECT_THAT(engine->receivedWords(), ElementsAre("listDevices", "scan", "cancel"));
}

TEST_F(AppModelTest, PagesBecomeAPdfWithItsRawPages)
{
    const QByteArray files = pageFiles(2);
    startEngine("scan: print {\"event\":\"done\",\"pages\":2,\"files\":" + files +
                ",\"file\":\"$OUTPUT\"}\n");
    QList<std::optional<AssemblyProgress>> progress;
    QObject::connect(model.get(), &AppModel::assemblyProgressChanged,
                     [&] { progress.append(model->assemblyProgress()); });
    model->scan();
    waitForEnd();

    ASSERT_EQ(outcomes.first().kind, ScanOutcome::Kind::saved);
    const QUrl pdf = outcomes.first().file;
    EXPECT_EQ(scans(), QStringList(pdf.fileName()));
    const auto document = PdfDocument::open(pdf);
    ASSERT_TRUE(document);
    EXPECT_EQ(document->pageCount(), 2);
    EXPECT_EQ(document->page(0)->mediaBox().size(), QSizeF(72, 144));
    EXPECT_EQ(RawStore::pageCount(pdf), 2);
    EXPECT_FALSE(QFileInfo::exists(pages.first()));
    EXPECT_EQ(model->statusText(), QStringLiteral("Saved 2 pages"));
    EXPECT_TRUE(statusTexts.contains(QStringLiteral("Saving PDF…")));
    EXPECT_EQ(model->successCount(), 2);
    EXPECT_TRUE(model->showScans());
    ASSERT_EQ(model->results().size(), 1);
    EXPECT_EQ(model->results().first().url, pdf);
    EXPECT_THAT(progress, ElementsAre(AssemblyProgress{0, 2}, AssemblyProgress{1, 2},
                                      AssemblyProgress{2, 2}, std::nullopt));
}

TEST_F(AppModelTest, TheResolutionIsThatOfTheStart)
{
    const QByteArray files = pageFiles(1);
    startEngine("cancel: print {\"event\":\"done\",\"pages\":1,\"files\":" + files +
                ",\"file\":\"$OUTPUT\"}\n");
    model->scan();
    ScanSettings settings = model->settings();
    settings.quality = ScanQuality::low;
    model->setSettings(settings);
    model->cancel();
    waitForEnd();
    EXPECT_EQ(PdfDocument::open(outcomes.first().file)->page(0)->mediaBox().width(), 72);
}

TEST_F(AppModelTest, WhatCannotBeSavedKeepsItsPageImages)
{
    const QString text = folder.filePath(QStringLiteral("text.png"));
    QFile file(text);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("no picture") > 0);
    file.close();
    const QByteArray files = pageFiles(1);
    const QByteArray unreadable = "[\"" + QFile::encodeName(text) + "\"," + files.mid(1);
    const struct {
        const char *what;
        QByteArray files;
        QByteArray target;
    } cases[] = {
        {"unreadable page",    unreadable, "$OUTPUT"        },
        {"folder is missing",  files,      "$DIR/none/x.pdf"},
        {"target is a folder", files,      "$DIR/folder.pdf"},
        {"no PDF by its name", files,      "$DIR/.bashrc"   },
        {"no absolute path",   files,      "x.pdf"          },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        makeModel();
        outcomes.clear();
        QDir(scansPath()).mkpath(QStringLiteral("folder.pdf"));
        startEngine("scan: print {\"event\":\"done\",\"pages\":1,\"files\":" + c.files +
                    ",\"file\":\"" + c.target + "\"}\n");
        model->scan();
        waitForEnd();
        EXPECT_EQ(outcomes.first().kind, ScanOutcome::Kind::notSaved);
        EXPECT_TRUE(outcomes.first().pageImages.contains(pages.first()));
        EXPECT_TRUE(QFileInfo::exists(pages.first()));
        EXPECT_EQ(model->statusText(), QStringLiteral("Couldn't save the PDF"));
        EXPECT_EQ(model->toast(),
                  QStringLiteral("Couldn't save the PDF — page images kept in the scans folder"));
        EXPECT_EQ(scans(), QStringList());
    }
}

TEST_F(AppModelTest, AFullDiskLeavesTheFormerFileAndThePageImages)
{
    QImage image(900, 900, QImage::Format_Grayscale8);
    image.fill(10);
    PdfDocument document;
    const QString old = folder.filePath(QStringLiteral("old.pdf"));
    ASSERT_TRUE(model->write(document, QUrl::fromLocalFile(old)));
    QFile file(old);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    for (int page = 0; page < 400; ++page)
        ASSERT_TRUE(document.insertPage(
            PdfDocument::fromBytes(
                "%PDF-1.5\n1 0 obj <</Type /Catalog /Pages 2 0 R>> endobj\n2 0 obj <</Type /Pages "
                "/Kids [3 0 R] /Count 1>> endobj\n3 0 obj <</Type /Page /Parent 2 0 R>> endobj\n"
                "trailer <</Root 1 0 R>>\n")
                ->page(0)
                .value(),
            page));

    // A limit on the size of files acts like a disk that fills up in the middle of a write.
    rlimit former{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &former), 0);
    const auto formerHandler = std::signal(SIGXFSZ, SIG_IGN);
    for (const rlim_t room : {rlim_t(0), rlim_t(4096), rlim_t(20'000)}) {
        const rlimit small{.rlim_cur = room, .rlim_max = former.rlim_max};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
        const bool written = model->write(document, QUrl::fromLocalFile(old));
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &former), 0);
        EXPECT_FALSE(written) << room;
        file.seek(0);
        QFile now(old);
        ASSERT_TRUE(now.open(QIODevice::ReadOnly));
        EXPECT_EQ(now.readAll(), before);
        EXPECT_EQ(QDir(folder.path()).entryList({QStringLiteral("old.pdf*")}).size(), 1);
    }
    std::signal(SIGXFSZ, formerHandler);
    EXPECT_TRUE(model->write(document, QUrl::fromLocalFile(old)));
}

TEST_F(AppModelTest, OnlyVisiblePdfsAreListedNewestFirst)
{
    ASSERT_TRUE(QDir().mkpath(scansPath() + QStringLiteral("/folder.pdf")));
    for (const char *name : {"b.pdf", "a.PDF", "c.pdf.txt", "d.png", ".hidden.pdf", "pdf"}) {
        QFile file(scansPath() + u'/' + QString::fromUtf8(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    model->loadResults();
    QStringList names;
    for (const ScanResult &result : model->results())
        names.append(result.url.fileName());
    EXPECT_THAT(names, UnorderedElementsAre(QStringLiteral("b.pdf"), QStringLiteral("a.PDF"),
                                            QStringLiteral("folder.pdf")));
    EXPECT_TRUE(
        std::ranges::is_sorted(model->results(), std::ranges::greater(), &ScanResult::date));

    const ScanResult former = model->results().first();
    model->loadResults();
    EXPECT_NE(model->results().first(), former);

    QDir(scansPath()).removeRecursively();
    model->loadResults();
    EXPECT_TRUE(model->results().isEmpty());
    EXPECT_FALSE(model->toast());
}

TEST_F(AppModelTest, TheChosenFolderComesBackUnlessItIsGone)
{
    const QUrl chosen = QUrl::fromLocalFile(folder.filePath(QStringLiteral("ü folder")));
    ASSERT_TRUE(QDir().mkpath(chosen.toLocalFile()));
    model->setOutputFolder(chosen);
    EXPECT_EQ(AppModel().settings().outputFolder, chosen);
    // One that can't be remembered leaves the memory of the former.
    model->setOutputFolder(QUrl::fromLocalFile(folder.filePath(QStringLiteral("new"))));
    EXPECT_TRUE(QFileInfo(folder.filePath(QStringLiteral("new"))).isDir());
    EXPECT_EQ(AppModel().settings().outputFolder, chosen);
    QDir(chosen.toLocalFile()).removeRecursively();
    EXPECT_EQ(AppModel().settings().outputFolder, defaultOutputFolder());
}

TEST_F(AppModelTest, AnEngineThatDiesIsToldAndLeavesTheStateAlone)
{
    startEngine("scan: crash\n");
    QSignalSpy lost(model.get(), &AppModel::engineLost);
    model->scan();
    ASSERT_TRUE(waitUntil([&] { return !lost.isEmpty(); }));
    EXPECT_TRUE(model->isScanning());
    EXPECT_TRUE(model->engineRunning());
    model->cancel();
    model->stopEngine();
}

TEST_F(AppModelTest, AModelThatGoesEndsItsWorkWithoutASound)
{
    const QByteArray files = pageFiles(3);
    startEngine("scan: print {\"event\":\"done\",\"pages\":3,\"files\":" + files +
                ",\"file\":\"$OUTPUT\"}\n");
    model->scan();
    ASSERT_TRUE(waitUntil([this] { return model->assemblyProgress().has_value(); }));
    model.reset();
    // The page in work is finished and thrown away.
    ASSERT_TRUE(waitUntil([] { return QThreadPool::globalInstance()->activeThreadCount() == 0; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(scans(), QStringList());
    EXPECT_TRUE(QFileInfo::exists(pages.first()));
}

} // namespace
} // namespace velmor

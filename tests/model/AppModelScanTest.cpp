#include "pipeline/RawStore.h"
#include "tests/model/AppModelFixture.h"

#include <QThreadPool>

namespace velmor {
namespace {

using testing::ElementsAre;
using AppModelScanTest = AppModelFixture;

TEST_F(AppModelScanTest, TheScanCommandSaysWhatTheSettingsSay)
{
    startEngine("scan: print {\"event\":\"done\"}\n");
    ScanSettings settings = model->settings();
    settings.quality = ScanQuality::high;
    settings.brightness = -20;
    model->setSettings(settings);
    model->setSelectedDeviceId(QStringLiteral("b"));
    const QDateTime before = QDateTime::currentDateTime();
    model->primaryScan();
    EXPECT_FALSE(model->canScan());
    EXPECT_EQ(model->statusText(), QStringLiteral("Waiting for paper…"));
    waitForEnd();

    const QJsonObject command = engine->received().last();
    EXPECT_EQ(command[u"deviceId"], QStringLiteral("b"));
    EXPECT_EQ(command[u"driver"], QStringLiteral("y"));
    EXPECT_EQ(command[u"dpi"], 600);
    EXPECT_EQ(command[u"batchWaitForPaper"], true);
    EXPECT_EQ(command[u"auto"][u"brightness"], -20);
    const QFileInfo output(command[u"output"][u"path"].toString());
    EXPECT_EQ(output.path(), scansPath());
    const QDateTime named = QDateTime::fromString(
        output.fileName(), QStringLiteral("'Document_'yyyy-MM-dd_HHmmss'.pdf'"));
    EXPECT_TRUE(named.isValid()) << qPrintable(output.fileName());
    EXPECT_LE(qAbs(before.secsTo(named)), 5);
}

TEST_F(AppModelScanTest, TheButtonSearchesScansAndCancels)
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

TEST_F(AppModelScanTest, PagesBecomeAPdfWithItsRawPages)
{
    startEngine("scan: " + doneWith(2));
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
    EXPECT_TRUE(model->showScans());
    ASSERT_EQ(model->results().size(), 1);
    EXPECT_EQ(model->results().first().url, pdf);
    EXPECT_THAT(progress, ElementsAre(AssemblyProgress{0, 2}, AssemblyProgress{1, 2},
                                      AssemblyProgress{2, 2}, std::nullopt));
}

TEST_F(AppModelScanTest, TheResolutionIsThatOfTheStart)
{
    startEngine("cancel: " + doneWith(1));
    model->scan();
    ScanSettings settings = model->settings();
    settings.quality = ScanQuality::low;
    model->setSettings(settings);
    model->cancel();
    waitForEnd();
    EXPECT_EQ(PdfDocument::open(outcomes.first().file)->page(0)->mediaBox().width(), 72);
}

TEST_F(AppModelScanTest, WhatCannotBeSavedKeepsItsPageImages)
{
    const QString text = folder.filePath(QStringLiteral("text.png"));
    writeFile(text, "no picture");
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

TEST_F(AppModelScanTest, AModelThatGoesEndsItsWorkWithoutASound)
{
    startEngine("scan: " + doneWith(3));
    model->scan();
    ASSERT_TRUE(waitUntil([this] { return model->assemblyProgress().has_value(); }));
    model.reset();
    // The page in work is finished and thrown away.
    ASSERT_TRUE(waitUntil([] { return QThreadPool::globalInstance()->activeThreadCount() == 0; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(scans(), QStringList());
    EXPECT_TRUE(QFileInfo::exists(pages.first()));
}

/// Turns recognition on, with no program to do it.
class AppModelWithoutRecognition : public AppModelFixture {
protected:
    AppModelWithoutRecognition()
    {
        qputenv("VELMOR_RECOGNIZER", "/none");
        ScanSettings settings = model->settings();
        settings.ocr = true;
        model->setSettings(settings);
    }
};

TEST_F(AppModelWithoutRecognition, WhyThereIsNoTextIsToldOnce)
{
    startEngine("scan: " + doneWith(1));
    model->scan();
    waitForEnd();
    EXPECT_TRUE(statusTexts.contains(QStringLiteral("Making text searchable…")));
    ASSERT_TRUE(model->toast());
    EXPECT_EQ(outcomes.last().message, *model->toast());
    EXPECT_EQ(scans().size(), 1);

    pageFiles(1);
    outcomes.clear();
    model->scan();
    waitForEnd();
    EXPECT_EQ(outcomes.last().kind, ScanOutcome::Kind::saved);
    EXPECT_EQ(outcomes.last().message, QString());
}

TEST_F(AppModelWithoutRecognition, ThePdfThatTheEngineMadeStaysAsItIs)
{
    const QString made = folder.filePath(QStringLiteral("made.pdf"));
    ASSERT_TRUE(model->write(PdfDocument(), QUrl::fromLocalFile(made)));
    const QByteArray before = readFile(made);
    startEngine("scan: print {\"event\":\"done\",\"pages\":1,\"file\":\"" +
                QFile::encodeName(made) + "\"}\n");
    model->scan();
    waitForEnd();
    EXPECT_EQ(model->statusText(), QStringLiteral("Saved 1 page"));
    EXPECT_EQ(model->toast(), QStringLiteral("Text recognition failed — scan saved without it"));
    EXPECT_EQ(model->successCount(), 1);
    EXPECT_EQ(readFile(made), before);
}

} // namespace
} // namespace velmor

#include "tests/model/AppModelFixture.h"

#include <QElapsedTimer>
#include <QSignalSpy>

namespace velmor {
namespace {

using AppModelTest = AppModelFixture;

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

} // namespace
} // namespace velmor

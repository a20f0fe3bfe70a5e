#include "tests/model/AppModelFixture.h"

#include <QElapsedTimer>
#include <QSignalSpy>

namespace velmor {
namespace {

using AppModelTest = AppModelFixture;

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

TEST_F(AppModelTest, EventsSetTheStatusLine)
{
    const struct {
        const char *event, *text;
        bool isToast, isError;
    } cases[] = {
        {R"({"event":"ready","version":"9"})",                               "Ready to scan",             false, false},
        {R"({"event":"scanStarted"})",                                       "Scanning…",                 false, false},
        {R"({"event":"status","message":"Warming up"})",                     "Warming up",                false, false},
        {R"({"event":"status"})",                                            "",                          false, false},
        {R"({"event":"page"})",                                              "Captured page 0…",          false, false},
        {R"({"event":"news"})",                                              "",                          false, false},
        {R"({"event":"devices","devices":[]})",                              "No scanner found",          false, false},
        {R"({"event":"done","pages":0,"files":["/x.png"],"file":"/x.pdf"})", "Nothing scanned",
         true,                                                                                                   false},
        {R"({"event":"done","pages":3,"files":[],"file":"/x.pdf"})",         "Saved 3 pages",             false, false},
        {R"({"event":"done","pages":1})",                                    "Saved 1 page",              false, false},
        {R"({"event":"error"})",                                             "Couldn't scan — try again", true,  true },
        {R"({"event":"error","message":"Jam"})",                             "Jam",                       true,  true },
        {R"({"event":"error","message":"? Unknown command: adjust"})",
         "Engine is out of date — rebuild it (build-engine.command)",                                     true,  true },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.event);
        makeModel();
        model->setSelectedDeviceId(QStringLiteral("old"));
        receive({c.event});
        const QString text = QString::fromUtf8(c.text);
        EXPECT_EQ(statusTexts.join(u'|'), text);
        EXPECT_EQ(model->toast(), c.isToast ? std::optional(text) : std::nullopt);
        EXPECT_EQ(model->lastError(), c.isError ? std::optional(text) : std::nullopt);
        EXPECT_EQ(model->selectedDeviceId(), QStringLiteral("old"));
    }
    makeModel();
    receive({R"({"event":"error","message":"Jam"})", R"({"event":"scanStarted"})"});
    EXPECT_FALSE(model->lastError()) << "stays no longer than until the next scan";
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
    ASSERT_TRUE(waitUntil([&] { return !model->toast(); }));
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

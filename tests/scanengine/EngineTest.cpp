#include "EngineProcess.h"
#include "TestImages.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace scanengine {
namespace {

const QString waiting = QStringLiteral("status Waiting for paper…");

QJsonObject json(const char *text)
{
    return QJsonDocument::fromJson(text).object();
}

/// The program with one feeder and an output folder.
class EngineTest : public testing::Test {
protected:
    void putPaper(const QString &name, const QByteArray &content)
    {
        putFile(m_feeder.filePath(name), content);
    }

    void putPage(const QString &name, int level)
    {
        putPaper(name, encoded(greyPage({30, 40}, level, 300), "png"));
    }

    void putSheet(const QString &name, bool isWrittenOn)
    {
        QImage sheet = greyPage({620, 874}, 240, 150);
        for (int x = 100; isWrittenOn && x < 180; x += 8) {
            for (int y = 300; y < 320; ++y)
                sheet.setPixelColor(x, y, Qt::black);
        }
        putPaper(name, encoded(sheet, "png"));
    }

    [[nodiscard]] QString outputPath() const { return m_output.filePath(QStringLiteral("a.pdf")); }

    [[nodiscard]] QString deviceId() const { return QStringLiteral("feeder:") + m_feeder.path(); }

    [[nodiscard]] QJsonObject command(const QString &word) const
    {
        QJsonObject command =
            json(R"({"driver":"feeder","source":"auto","dpi":150,"colorMode":"gray"})");
        command[u"cmd"] = word;
        command[u"deviceId"] = deviceId();
        command[u"output"] = QJsonObject{
            {QStringLiteral("path"), outputPath()}
        };
        return command;
    }

    [[nodiscard]] QJsonObject batchScan() const
    {
        QJsonObject scan = command(QStringLiteral("scan"));
        scan[u"batchWaitForPaper"] = true;
        return scan;
    }

    QTemporaryDir m_feeder;
    QTemporaryDir m_output;
    EngineProcess m_engine{
        QStringList{m_feeder.path(), m_feeder.filePath(QStringLiteral("no"))}
    };
};

const QJsonObject cancel = json(R"({"cmd":"cancel"})");
const QJsonObject listDevices = json(R"({"cmd":"listDevices"})");

/// Events in short, divided by "|".
QStringList events(const char *text)
{
    return QString::fromUtf8(text).split(u'|');
}

TEST_F(EngineTest, ListsTheFoldersThatAreThere)
{
    m_engine.send(listDevices);
    const QJsonArray devices = m_engine.next().value(u"devices").toArray();
    ASSERT_EQ(devices.size(), 1);
    EXPECT_EQ(devices[0].toObject(), (QJsonObject{
                                         {QStringLiteral("id"),     deviceId()                     },
                                         {QStringLiteral("name"),   QDir(m_feeder.path()).dirName()},
                                         {QStringLiteral("driver"), QStringLiteral("feeder")       }
    }));
}

TEST_F(EngineTest, ScansTheSheetsInNaturalOrderAtTheResolutionAskedFor)
{
    putPage(QStringLiteral("page10.png"), 30);
    putPage(QStringLiteral("page2.png"), 10);
    putPaper(QStringLiteral("page9.TIF"), greyTiff({20, 21}));
    putPaper(QStringLiteral("notes.txt"), "not paper");
    m_engine.send(command(QStringLiteral("scan")));

    EXPECT_EQ(m_engine.nextInShort(), QStringLiteral("scanStarted"));
    for (int page = 1; page <= 4; ++page)
        EXPECT_EQ(m_engine.nextInShort(), QStringLiteral("page %1").arg(page));
    const QJsonObject done = m_engine.next();
    EXPECT_EQ(done.value(u"event"), QStringLiteral("done"));
    EXPECT_EQ(done.value(u"pages"), 4);
    EXPECT_EQ(done.value(u"file"), outputPath());
    QList<int> levels;
    for (const QJsonValue file : done.value(u"files").toArray()) {
        const QImage page(file.toString());
        levels.append(greyLevel(page));
        EXPECT_EQ(page.dotsPerMeterX(), qRound(150 / 0.0254));
    }
    EXPECT_EQ(levels, (QList<int>{10, 20, 21, 30}));
    EXPECT_EQ(QImage(done.value(u"files")[0].toString()).size(), QSize(15, 20));
    EXPECT_EQ(QImage(done.value(u"files")[1].toString()).size(), QSize(6, 12)) << "204x98 dpi";
    EXPECT_FALSE(QFile::exists(outputPath()));
}

TEST_F(EngineTest, AnEmptyFeederIsDoneWithNoPages)
{
    m_engine.send(command(QStringLiteral("scan")));
    EXPECT_EQ(m_engine.until(QStringLiteral("done")),
              events("status There is no paper in the feeder.|done 0"));
}

TEST_F(EngineTest, LeavesOutBlankSheetsAndCountsThePagesThatAreKept)
{
    const struct {
        const char *sheets; ///< 'w' written on, 'b' blank.
        const char *events;
    } cases[] = {
        {"bwbw", "scanStarted|page 1|page 2|status 2 blank pages were left out.|done 2"},
        {"wb",   "scanStarted|page 1|status 1 blank page was left out.|done 1"         },
        {"bb",   "scanStarted|status 2 blank pages were left out.|done 0"              },
    };
    QJsonObject scan = command(QStringLiteral("scan"));
    scan[u"auto"] = QJsonObject{
        {QStringLiteral("blankRemoval"), true}
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.sheets);
        for (const QString &sheet : QDir(m_feeder.path()).entryList(QDir::Files))
            QFile::remove(m_feeder.filePath(sheet));
        for (qsizetype i = 0; i < QByteArrayView(c.sheets).size(); ++i)
            putSheet(QStringLiteral("%1.png").arg(i), c.sheets[i] == 'w');
        m_engine.send(scan);
        EXPECT_EQ(m_engine.until(QStringLiteral("done")), events(c.events));
    }
}

TEST_F(EngineTest, ABatchTakesNewPaperUntilItIsCancelled)
{
    putPage(QStringLiteral("b.png"), 1);
    m_engine.send(batchScan());
    EXPECT_EQ(m_engine.until(waiting), events("scanStarted|page 1|status Waiting for paper…"));
    putPage(QStringLiteral("a.png"), 2);
    EXPECT_EQ(m_engine.until(waiting), events("page 2|status Waiting for paper…"));
    ASSERT_TRUE(QFile::remove(m_feeder.filePath(QStringLiteral("b.png"))));
    putPaper(QStringLiteral("b.png"), encoded(greyPage({50, 40}, 3, 300), "png"));
    EXPECT_EQ(m_engine.until(waiting), events("page 3|status Waiting for paper…"));
    m_engine.send(cancel);
    EXPECT_EQ(m_engine.nextInShort(), QStringLiteral("done 3"));
}

TEST_F(EngineTest, CommandsAreAnsweredWhileAJobRunsAndCancelEndsTheJobsThatWait)
{
    m_engine.send(batchScan());
    EXPECT_EQ(m_engine.nextInShort(), waiting);
    m_engine.send(listDevices);
    EXPECT_EQ(m_engine.nextInShort(), QStringLiteral("devices"));
    m_engine.send(command(QStringLiteral("calibrate")));
    m_engine.send(command(QStringLiteral("adjust")));
    m_engine.send(cancel);
    EXPECT_EQ(m_engine.nextInShort(), QStringLiteral("done 0"));
    EXPECT_EQ(m_engine.nextInShort(), QStringLiteral("done 0")) << "the calibration";
    EXPECT_TRUE(m_engine.nextInShort().startsWith(u"error")) << "changing a sample is no scan";
    m_engine.send(batchScan());
    EXPECT_EQ(m_engine.nextInShort(), waiting);
}

TEST_F(EngineTest, RefusesJobsWithoutEnd)
{
    for (int job = 0; job < 257; ++job)
        m_engine.send(batchScan());
    EXPECT_THAT(m_engine.until(QStringLiteral("error")).last().toStdString(),
                testing::HasSubstr("too much to do"));
}

TEST_F(EngineTest, LinesThatAreNoCommandCostOnlyThemselves)
{
    m_engine.sendLine("\xFF\xFE garbage");
    EXPECT_TRUE(m_engine.nextInShort().startsWith(QStringLiteral("error A line was not")));
    m_engine.sendLine(QByteArray(3'000'000, '{'));
    EXPECT_TRUE(m_engine.nextInShort().startsWith(QStringLiteral("error A line was not")));
    m_engine.sendLine(R"({"cmd":"polish"})");
    EXPECT_EQ(m_engine.nextInShort(), QStringLiteral("error Unknown command: \"polish\""));
    m_engine.send(listDevices);
    EXPECT_EQ(m_engine.nextInShort(), QStringLiteral("devices"));
}

TEST_F(EngineTest, AScanThatCantBeginSaysWhy)
{
    const QString below = m_output.filePath(QStringLiteral("no/a.pdf"));
    const QString inFeeder = m_feeder.filePath(QStringLiteral("a.pdf"));
    const struct {
        const char *key;
        QJsonValue value;
        const char *reason;
    } cases[] = {
        {"deviceId",  QStringLiteral("feeder:/no"),                    "no longer there"    },
        {"dpi",       1'000'000,                                       "not possible"       },
        {"colorMode", QStringLiteral("sepia"),                         "colour mode"        },
        {"output",    QJsonObject(),                                   "no place"           },
        {"output",    QJsonObject{{QStringLiteral("path"), below}},    "can't be saved"     },
        {"output",    QJsonObject{{QStringLiteral("path"), inFeeder}}, "feeder's own folder"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.reason);
        QJsonObject scan = command(QStringLiteral("scan"));
        scan.insert(QLatin1StringView(c.key), c.value);
        m_engine.send(scan);
        const QString answer = m_engine.nextInShort();
        EXPECT_TRUE(answer.startsWith(QStringLiteral("error "))) << answer.toStdString();
        EXPECT_TRUE(answer.contains(QLatin1StringView(c.reason))) << answer.toStdString();
    }
}

TEST_F(EngineTest, AFileThatCantBeReadEndsTheScanButNotTheEngine)
{
    for (const QByteArray &content : {hugePng(), QByteArray("Dear Sir"), QByteArray()}) {
        putPaper(QStringLiteral("a.png"), content);
        m_engine.send(command(QStringLiteral("scan")));
        EXPECT_TRUE(m_engine.until(QStringLiteral("error")).last().contains(u"\"a.png\""));
        ASSERT_TRUE(QFile::remove(m_feeder.filePath(QStringLiteral("a.png"))));
    }
}

TEST_F(EngineTest, PagesBeforeAFaultAreKept)
{
    putPage(QStringLiteral("1.png"), 1);
    const QByteArray whole = encoded(greyPage({300, 300}, 2, 300), "png");
    putPaper(QStringLiteral("2.png"), whole.left(whole.size() / 2));
    putPage(QStringLiteral("3.png"), 3);
    m_engine.send(command(QStringLiteral("scan")));
    const QStringList all = m_engine.until(QStringLiteral("done"));
    ASSERT_EQ(all.size(), 4);
    EXPECT_EQ(all[1], QStringLiteral("page 1"));
    EXPECT_TRUE(all[2].startsWith(QStringLiteral("status The file \"2.png\" is damaged")));
    EXPECT_EQ(all[3], QStringLiteral("done 1"));
}

TEST_F(EngineTest, CalibrationKeepsTheSampleAsItIsAndAdjustsACopy)
{
    m_engine.send(command(QStringLiteral("calibrate")));
    EXPECT_TRUE(m_engine.nextInShort().startsWith(QStringLiteral("error There is no paper")));
    putPage(QStringLiteral("1.png"), 100);
    putPage(QStringLiteral("2.png"), 200);
    m_engine.send(command(QStringLiteral("calibrate")));
    EXPECT_EQ(m_engine.nextInShort(), QStringLiteral("sample"));
    const QString sample = m_output.filePath(QStringLiteral(".velmor_raw.png"));
    EXPECT_EQ(greyLevel(QImage(sample)), 100);

    const QString preview = m_output.filePath(QStringLiteral(".velmor_preview.png"));
    QJsonObject adjust = json(R"({"cmd":"adjust","colorMode":"gray","auto":{"brightness":30}})");
    adjust[u"input"] = sample;
    adjust[u"output"] = QJsonObject{
        {QStringLiteral("path"), preview}
    };
    m_engine.send(adjust);
    const QJsonObject adjusted = m_engine.next();
    EXPECT_EQ(adjusted.value(u"event"), QStringLiteral("adjusted"));
    EXPECT_EQ(adjusted.value(u"file"), preview);
    EXPECT_EQ(greyLevel(QImage(preview)), 110);
    EXPECT_EQ(greyLevel(QImage(sample)), 100);

    // Those that queue up are answered in their order.
    for (const int brightness : {60, 0, 90}) {
        adjust[u"auto"] = QJsonObject{
            {QStringLiteral("brightness"), brightness}
        };
        m_engine.send(adjust);
    }
    EXPECT_EQ(m_engine.until(QStringLiteral("adjusted")).size(), 1);
    EXPECT_EQ(m_engine.until(QStringLiteral("adjusted")).size(), 1);
    EXPECT_EQ(m_engine.until(QStringLiteral("adjusted")).size(), 1);
    EXPECT_EQ(greyLevel(QImage(preview)), 130);

    // The one in memory isn't the one on disk any more.
    ASSERT_TRUE(QFile::remove(sample));
    putFile(sample, encoded(greyPage({30, 41}, 50, 300), "png"));
    m_engine.send(adjust);
    EXPECT_EQ(m_engine.nextInShort(), QStringLiteral("adjusted"));
    EXPECT_EQ(greyLevel(QImage(preview)), 80);
    ASSERT_TRUE(QFile::remove(sample));
    putFile(sample, encoded(greyPage({30, 42}, 50, 300), "png").left(60));
    m_engine.send(adjust);
    EXPECT_TRUE(m_engine.nextInShort().startsWith(
        QStringLiteral("error The calibration sample can't be used.")));
    ASSERT_TRUE(QFile::remove(sample));
    m_engine.send(adjust);
    EXPECT_TRUE(m_engine.nextInShort().startsWith(
        QStringLiteral("error The calibration sample is no longer in")));
    EXPECT_EQ(greyLevel(QImage(preview)), 80) << "the last preview stays";
}

TEST_F(EngineTest, APreviewFromMemoryIsTheOneFromTheFile)
{
    const QString sample = m_output.filePath(QStringLiteral("sample.png"));
    QImage page = greyPage({600, 800}, 225, 300);
    for (int i = 0; i < 400; ++i)
        page.setPixelColor(100 + i, 100 + i % 7, QColor(30, 30, 30));
    putFile(sample, encoded(page, "png"));
    for (const char *mode : {"auto", "gray", "bw", "color"}) {
        SCOPED_TRACE(mode);
        const auto adjust = [&](int brightness, const QString &name) {
            QJsonObject command = json(R"({"cmd":"adjust","auto":{"cleanBackground":true}})");
            QJsonObject processing = command[u"auto"].toObject();
            processing[u"brightness"] = brightness;
            command[u"auto"] = processing;
            command[u"colorMode"] = QString::fromUtf8(mode);
            command[u"input"] = sample;
            command[u"output"] = QJsonObject{
                {QStringLiteral("path"), m_output.filePath(name)}
            };
            m_engine.send(command);
            EXPECT_EQ(m_engine.nextInShort(), QStringLiteral("adjusted"));
            return QImage(m_output.filePath(name));
        };
        const QImage first = adjust(-300, QStringLiteral("a.png"));
        const QImage other = adjust(200, QStringLiteral("b.png"));
        EXPECT_FALSE(first.isNull());
        EXPECT_EQ(first != other, first.depth() > 1) << "strokes in black and white stay";
        EXPECT_EQ(adjust(-300, QStringLiteral("c.png")), first);
    }
}

TEST_F(EngineTest, TheEndOfItsInputEndsTheEngineWithItsAnswersGiven)
{
    putPage(QStringLiteral("a.png"), 1);
    m_engine.send(batchScan());
    EXPECT_EQ(m_engine.until(waiting).size(), 3);
    m_engine.sendLine(R"({"cmd":"listDevices"})");
    m_engine.endInput();
    const QStringList rest{m_engine.nextInShort(), m_engine.nextInShort()};
    EXPECT_THAT(rest,
                testing::UnorderedElementsAre(QStringLiteral("devices"), QStringLiteral("done 1")));
    EXPECT_EQ(m_engine.exitCode(), 0);
}

TEST_F(EngineTest, QuitEndsTheEngineInTheMiddleOfAJob)
{
    m_engine.send(batchScan());
    EXPECT_EQ(m_engine.nextInShort(), waiting);
    m_engine.sendLine(R"({"cmd":"quit"})");
    EXPECT_EQ(m_engine.exitCode(), 0);
}

} // namespace
} // namespace scanengine

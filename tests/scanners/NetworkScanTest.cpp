#include "tests/Printers.h"
#include "tests/escl/EsclScanner.h"
#include "tests/scanengine/EngineProcess.h"
#include "tests/scanners/SaneFolder.h"
#include "tests/scanners/ScanServer.h"

#include <QImage>
#include <QJsonArray>
#include <gmock/gmock.h>

#include <optional>

namespace scanengine {
namespace {

using testing::ElementsAre;

QStringList events(const char *text)
{
    return QString::fromUtf8(text).split(u'|');
}

/// The engine with one scanner on the network, and an output folder.
class NetworkScanTest : public testing::Test {
protected:
    void startEngine(const QByteArray &backend, const QByteArray &settings)
    {
        m_folder.emplace(backend, settings);
        m_engine.emplace(QStringList(), m_folder->environment());
    }

    /// The engine with our scanner as `setup` has it.
    void startWithEscl(const EsclSetup &setup)
    {
        m_scanner.emplace(setup);
        startEngine("airscan", airscanSettings(m_scanner->url()));
    }

    [[nodiscard]] QJsonObject scan(const char *source = "auto", bool isBatch = false) const
    {
        return {
            {QStringLiteral("cmd"),               QStringLiteral("scan")                      },
            {QStringLiteral("source"),            QString::fromUtf8(source)                   },
            {QStringLiteral("dpi"),               75                                          },
            {QStringLiteral("colorMode"),         QStringLiteral("gray")                      },
            {QStringLiteral("batchWaitForPaper"), isBatch                                     },
            {QStringLiteral("output"),
             QJsonObject{{QStringLiteral("path"), m_output.filePath(QStringLiteral("a.pdf"))}}}
        };
    }

    /// The devices as lines "id = name".
    QStringList devices()
    {
        m_engine->send({
            {QStringLiteral("cmd"), QStringLiteral("listDevices")}
        });
        QStringList lines;
        const QJsonObject event = m_engine->next();
        for (const auto &device : event.value(u"devices").toArray())
            lines.append(device[u"id"].toString() + QStringLiteral(" = ") +
                         device[u"name"].toString());
        return lines;
    }

    /// The events of a scan up to its end, in short.
    QStringList eventsOf(const QJsonObject &command)
    {
        m_engine->send(command);
        QStringList all;
        for (;;) {
            const QJsonObject event = m_engine->next();
            const QString word = event.value(u"event").toString();
            all.append(inShort(event));
            if (word == u"done")
                m_files = event.value(u"files").toArray();
            if (word == u"done" || word == u"error" || word.isEmpty())
                return all;
        }
    }

    /// The grey in the middle of each page file of the last scan.
    [[nodiscard]] QList<int> levels() const
    {
        QList<int> all;
        for (const auto &file : m_files) {
            const QImage page(file.toString());
            all.append(qGray(page.pixel(page.width() / 2, page.height() / 2)));
        }
        return all;
    }

    [[nodiscard]] QImage firstPage() const { return QImage(m_files.at(0).toString()); }

    QTemporaryDir m_output;
    std::optional<EsclScanner> m_scanner;
    std::optional<SaneFolder> m_folder;
    std::optional<EngineProcess> m_engine;
    QJsonArray m_files;
};

TEST_F(NetworkScanTest, ANetworkScannerIsListedByItsName)
{
    startWithEscl({});
    EXPECT_EQ(devices(), QStringList{QStringLiteral("network:Acme Page = Acme Page")});
}

TEST_F(NetworkScanTest, TheFlatbedGivesOneWholePage)
{
    startWithEscl({.sheets = 2});
    EXPECT_EQ(eventsOf(scan("flatbed")), events("scanStarted|page 1|done 1"));
    // A4 at 75 dpi.
    EXPECT_NEAR(firstPage().width(), 620, 2);
    EXPECT_NEAR(firstPage().height(), 877, 2);
    EXPECT_EQ(firstPage().dotsPerMeterX(), 2953);
    EXPECT_THAT(levels(), ElementsAre(EsclScanner::level(1)));
    EXPECT_EQ(m_scanner->openJobs(), 0);
}

TEST_F(NetworkScanTest, TheFeederGivesBothSidesOfAllSheetsInOrder)
{
    startWithEscl({.sheets = 2});
    EXPECT_EQ(eventsOf(scan()), events("scanStarted|page 1|page 2|page 3|page 4|done 4"));
    EXPECT_THAT(levels(), ElementsAre(EsclScanner::level(1), EsclScanner::level(2),
                                      EsclScanner::level(3), EsclScanner::level(4)));
}

TEST_F(NetworkScanTest, AFeederForOneSideGivesEachSheetOnce)
{
    startWithEscl({.sheets = 2, .hasDuplex = false});
    EXPECT_EQ(eventsOf(scan()), events("scanStarted|page 1|page 2|done 2"));
}

TEST_F(NetworkScanTest, WithoutPaperInTheFeederTheFlatbedIsScanned)
{
    startWithEscl({});
    EXPECT_EQ(eventsOf(scan()), events("scanStarted|page 1|done 1"));
    m_scanner->putSheets(1);
    EXPECT_EQ(eventsOf(scan()), events("scanStarted|page 1|page 2|done 2"));
}

TEST_F(NetworkScanTest, ABatchTakesThePaperThatIsPutInLater)
{
    startWithEscl({.sheets = 1, .hasDuplex = false});
    m_engine->send(scan("auto", true));
    EXPECT_EQ(m_engine->until(QStringLiteral("status")),
              events("scanStarted|page 1|status Waiting for paper…"));
    m_scanner->putSheets(2);
    EXPECT_EQ(m_engine->until(QStringLiteral("status")),
              events("page 2|page 3|status Waiting for paper…"));
    m_engine->send({
        {QStringLiteral("cmd"), QStringLiteral("cancel")}
    });
    EXPECT_EQ(m_engine->until(QStringLiteral("done")), events("done 3"));
}

TEST_F(NetworkScanTest, APageThatNeverComesIsCancelledAndLeavesThoseBeforeIt)
{
    startWithEscl({.sheets = 2, .hasDuplex = false, .fault = EsclFault::hang, .faultPage = 2});
    m_engine->send(scan());
    EXPECT_EQ(m_engine->until(QStringLiteral("page")), events("scanStarted|page 1"));
    m_engine->send({
        {QStringLiteral("cmd"), QStringLiteral("cancel")}
    });
    EXPECT_EQ(m_engine->until(QStringLiteral("done")), events("done 1"));
}

TEST_F(NetworkScanTest, AFaultBeforeTheFirstPageIsAnError)
{
    startWithEscl({.sheets = 1, .fault = EsclFault::jam});
    // Whether the paper counts as started is a matter of milliseconds in sane-airscan.
    EXPECT_EQ(eventsOf(scan()).last(),
              QStringLiteral("error The feeder is jammed. Clear it and scan again."));
}

/// The engine with SANE's test scanner behind a scanner server.
class ServerScanTest : public NetworkScanTest {
protected:
    void startWithServer(const QByteArray &settings)
    {
        m_server.emplace("number_of_devices 1\ntest-picture \"Grid\"\n" + settings);
        startEngine("net", "connect_timeout = 5\n" + m_server->host().toUtf8() + '\n');
    }

    std::optional<ScanServer> m_server;
};

TEST_F(ServerScanTest, AServersScannerIsListedAndScans)
{
    startWithServer("");
    EXPECT_EQ(
        devices(),
        QStringList{QStringLiteral("server:%1:test:0 = frontend-tester").arg(m_server->host())});
    EXPECT_EQ(eventsOf(scan("flatbed")), events("scanStarted|page 1|done 1"));
    // The whole bed of 200 mm at 75 dpi.
    EXPECT_NEAR(firstPage().width(), 591, 2);
    EXPECT_NEAR(firstPage().height(), 591, 2);
    // This feeder holds ten sheets.
    EXPECT_EQ(eventsOf(scan()).last(), QStringLiteral("done 10"));
}

TEST_F(ServerScanTest, AServerThatDiesLeavesThePagesBeforeIt)
{
    startWithServer("read-delay true\nread-delay-duration 50000\n");
    m_engine->send(scan());
    EXPECT_EQ(m_engine->until(QStringLiteral("page")), events("scanStarted|page 1"));
    m_server->kill();
    const QStringList end = m_engine->until(QStringLiteral("done"));
    ASSERT_GE(end.size(), 2);
    // Whatever the net backend makes of it at that moment.
    const QString lost = QStringLiteral("The connection to the computer that shares the scanner "
                                        "was lost. Check the network and that computer, and scan "
                                        "again");
    EXPECT_EQ(end[end.size() - 2].left(7 + lost.size()), QStringLiteral("status ") + lost);
}

/// A scanner that fails at a page, and what the job says then.
struct FaultCase {
    const char *name;
    EsclFault fault;
    int page;
    const char *expected;
};

void PrintTo(const FaultCase &testCase, std::ostream *stream)
{
    *stream << testCase.name;
}

class NetworkFaultTest : public NetworkScanTest, public testing::WithParamInterface<FaultCase> {};

TEST_P(NetworkFaultTest, ThePagesBeforeItAreKept)
{
    startWithEscl(
        {.sheets = 3, .hasDuplex = false, .fault = GetParam().fault, .faultPage = GetParam().page});
    EXPECT_EQ(eventsOf(scan()), events(GetParam().expected));
    // The engine is there for the next command.
    EXPECT_EQ(devices().size(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Escl, NetworkFaultTest,
    testing::Values(
        FaultCase{"Jam", EsclFault::jam, 3,
                  "scanStarted|page 1|page 2|status The feeder is jammed. Clear it and scan again; "
                  "the 2 pages before it are saved.|done 2"},
        FaultCase{"CoverOpen", EsclFault::coverOpen, 2,
                  "scanStarted|page 1|status The scanner's cover is open. Close it and scan again; "
                  "the page before it is saved.|done 1"},
        FaultCase{"Busy", EsclFault::busy, 1, "scanStarted|page 1|page 2|page 3|done 3"},
        FaultCase{"Drop", EsclFault::drop, 2,
                  "scanStarted|page 1|status The connection to the scanner failed. Check its cable "
                  "or network, switch it off and on, and scan again; the page before it is "
                  "saved.|done 1"},
        // Cut off by the scanner itself: the page is kept as far as it came.
        FaultCase{"Truncated", EsclFault::truncate, 2, "scanStarted|page 1|page 2|page 3|done 3"}),
    [](const auto &test) { return std::string(test.param.name); });

} // namespace
} // namespace scanengine

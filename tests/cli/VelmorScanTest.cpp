#include "pipeline/PdfDocument.h"
#include "tests/Printers.h"
#include "tests/Waiting.h"
#include "tests/escl/EsclScanner.h"
#include "tests/scanners/SaneFolder.h"
#include "tests/scanners/ScanServer.h"

#include <QFile>
#include <QProcess>
#include <QUrl>
#include <gmock/gmock.h>

namespace velmor {
namespace {

using scanengine::EsclScanner;
using scanengine::SaneFolder;
using scanengine::ScanServer;

/// The command as a user runs it, with a scanner that `scanners` configures.
class VelmorScanTest : public testing::Test {
protected:
    /// Scans into a PDF; its pages, or -1 if there is none.
    int scan(const SaneFolder &scanners, const QStringList &options)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(scanners.environment());
        for (const char *name : {"HOME", "XDG_CONFIG_HOME"})
            environment.insert(QString::fromUtf8(name), m_folder.path());
        QProcess command;
        command.setProcessEnvironment(environment);
        command.start(QStringLiteral(VELMOR_PROGRAM),
                      QStringList{QStringLiteral("scan"), QStringLiteral("--no-ocr"),
                                  QStringLiteral("--folder"), m_folder.path()} +
                          options);
        const bool hasEnded =
            waitUntil([&command] { return command.state() == QProcess::NotRunning; }, 120'000);
        EXPECT_TRUE(hasEnded && command.exitCode() == 0)
            << command.readAllStandardError().constData();
        const QString path = QFile::decodeName(command.readAllStandardOutput()).trimmed();
        const auto document = PdfDocument::open(QUrl::fromLocalFile(path));
        return document ? document->pageCount() : -1;
    }

    QTemporaryDir m_folder;
};

TEST_F(VelmorScanTest, APdfComesFromEveryKindOfScanner)
{
    const EsclScanner network({.sheets = 2});
    const ScanServer server("number_of_devices 1\ntest-picture \"Grid\"\n");
    const SaneFolder escl("airscan", scanengine::airscanSettings(network.url()));
    const SaneFolder served("net", "connect_timeout = 5\n" + server.host().toUtf8() + '\n');
    const SaneFolder local("test", "number_of_devices 1\ntest-picture \"Grid\"\n");
    const QString flatbed = QStringLiteral("flatbed");
    const struct {
        const char *what;
        const SaneFolder &scanners;
        QStringList options;
        int pages;
    } cases[] = {
        {"eSCL, flatbed", escl,   {QStringLiteral("--source"), flatbed}, 1 },
        {"eSCL, feeder",  escl,   {},                                    4 },
        {"saned",         served, {QStringLiteral("--source"), flatbed}, 1 },
        {"its feeder",    served, {},                                    10},
        {"SANE's own",    local,  {QStringLiteral("--source"), flatbed}, 1 },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(
            scan(c.scanners, QStringList{QStringLiteral("--quality"), QStringLiteral("150"),
                                         QStringLiteral("--color"), QStringLiteral("grayscale")} +
                                 c.options),
            c.pages);
    }
}

} // namespace
} // namespace velmor

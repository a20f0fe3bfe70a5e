#include "pipeline/PdfDocument.h"
#include "tests/Printers.h"
#include "tests/Waiting.h"
#include "tests/fakeengine/FakeEngine.h"
#include "tests/pipeline/TestPages.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <gmock/gmock.h>

#include <csignal>

namespace velmor {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

const QByteArray oneDevice =
    "listDevices: print {\"event\":\"devices\",\"devices\":["
    "{\"id\":\"a\\tb\",\"name\":\"A \\u001b[31mscanner\",\"driver\":\"x\"}]}\n";

/// The command as a user runs it, with settings and an output folder of its own.
class VelmorCommandTest : public testing::Test {
protected:
    VelmorCommandTest()
    {
        command.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
        setInEnvironment("XDG_CONFIG_HOME", folder.path());
        setInEnvironment("HOME", folder.path());
        command.setWorkingDirectory(folder.path());
    }

    void setInEnvironment(const char *name, const QString &value)
    {
        QProcessEnvironment environment = command.processEnvironment();
        environment.insert(QString::fromUtf8(name), value);
        command.setProcessEnvironment(environment);
    }

    void start(const QByteArray &script, const QStringList &arguments)
    {
        engine.emplace(script);
        for (const char *name : {"VELMOR_ENGINE", "FAKEENGINE_SCRIPT", "FAKEENGINE_LOG"})
            setInEnvironment(name, qEnvironmentVariable(name));
        command.start(QStringLiteral(VELMOR_PROGRAM), arguments);
        ASSERT_TRUE(command.waitForStarted());
    }

    /// Scans into the test's folder, without recognition.
    void startScan(const QByteArray &script, const QStringList &options = {})
    {
        start(oneDevice + script, QStringList({QStringLiteral("scan"), QStringLiteral("--no-ocr"),
                                               QStringLiteral("--folder"), scansPath()}) +
                                      options);
    }

    int exitCode()
    {
        const bool ended =
            waitUntil([this] { return command.state() == QProcess::NotRunning; }, 60'000);
        EXPECT_TRUE(ended);
        output = command.readAllStandardOutput();
        errors += command.readAllStandardError();
        return ended && command.exitStatus() == QProcess::NormalExit ? command.exitCode() : -1;
    }

    /// Until the command has said so at standard error.
    void waitForError(const QByteArray &text)
    {
        ASSERT_TRUE(waitUntil([&] {
            errors += command.readAllStandardError();
            return errors.contains(text);
        })) << errors.constData();
    }

    void interrupt() { kill(static_cast<pid_t>(command.processId()), SIGINT); }

    /// The answer of an engine that leaves `count` pages; names them in `pages`.
    QByteArray doneWith(int count)
    {
        QByteArray files;
        for (int page = 1; page <= count; ++page) {
            pages.append(folder.filePath(QStringLiteral("p%1.png").arg(page)));
            EXPECT_TRUE(noise({300, 300}).save(pages.last()));
            files += (page > 1 ? ",\"" : "\"") + QFile::encodeName(pages.last()) + '"';
        }
        return "print {\"event\":\"done\",\"pages\":" + QByteArray::number(count) + ",\"files\":[" +
               files + "],\"file\":\"$OUTPUT\"}\n";
    }

    QString scansPath() const { return folder.filePath(QStringLiteral("scans")); }
    QStringList scans() const
    {
        return QDir(scansPath()).entryList({QStringLiteral("*.pdf")}, QDir::Files);
    }

    QTemporaryDir folder;
    std::optional<FakeEngine> engine;
    QProcess command;
    QByteArray output, errors;
    QStringList pages;
};

TEST_F(VelmorCommandTest, AScanPrintsThePathOfItsPdfAlone)
{
    startScan("scan: print {\"event\":\"scanStarted\"}\nscan: " + doneWith(2));
    EXPECT_EQ(exitCode(), 0) << errors.constData();
    ASSERT_EQ(scans().size(), 1);
    EXPECT_EQ(output, QFile::encodeName(scansPath() + u'/' + scans().first()) + '\n');
    EXPECT_THAT(errors.toStdString(), AllOf(HasSubstr("Scanning…\n"), HasSubstr("Page 2/2\n"),
                                            HasSubstr("Saved 2 pages\n"), Not(HasSubstr("\033"))));
    EXPECT_FALSE(QFileInfo::exists(pages.first()));
    const QJsonObject scan = engine->received().at(1);
    EXPECT_EQ(scan[u"batchWaitForPaper"], false);
    EXPECT_FALSE(QFileInfo::exists(folder.filePath(QStringLiteral("Velmor/Velmor.ini"))));
}

TEST_F(VelmorCommandTest, EachFailureHasItsCodeAndItsWords)
{
    const QString file = folder.filePath(QStringLiteral("file"));
    writeFile(file, {});
    const QByteArray none = "listDevices: print {\"event\":\"devices\"}\n";
    const struct {
        const char *what;
        QByteArray script;
        const char *arguments; ///< Separated by spaces.
        int code;
        const char *message;
    } cases[] = {
        {"wrong use",               "",                                                                  "scan --quality 1",                    2, "“1”"                   },
        {"no page",                 oneDevice + "scan: print {\"event\":\"done\"}\n",                    "scan",                                3, "Nothing scanned"       },
        {"no scanner",              none,                                                                "scan --search-timeout 1",             4, "No scanner found"      },
        {"another scanner",         oneDevice,                                                           "scan --search-timeout 1 --device zz", 4, "“zz”"                  },
        {"engine is silent",        "",                                                                  "scan --search-timeout 1",             5, "gave no answer for 1 s"},
        {"engine exits",            "start: exit 0\n",                                                   "scan",                                5, "ended unexpectedly"    },
        {"engine exits in the job", oneDevice + "scan: crash\n",                                         "scan",                                5, "Pages it captured"     },
        {"engine's error",
         oneDevice + "scan: print {\"event\":\"error\",\"message\":\"Jam \\u001b[2J\"}\n",               "scan",
         5,                                                                                                                                        "Jam  [2J\n"            },
        {"error to the search",     "listDevices: print {\"event\":\"error\",\"message\":\"No bus\"}\n",
         "scan",                                                                                                                                5, "No bus"                },
        {"folder is a file",        oneDevice,                                                           "scan --folder file",                  6, "Nothing was scanned"   },
        {"folder below a file",     oneDevice,                                                           "scan --folder file/x",                6, "Nothing was scanned"   },
        {"no file",
         oneDevice + "scan: print {\"event\":\"done\",\"pages\":2,\"file\":\"/none/x.pdf\"}\n",
         "scan --no-ocr",                                                                                                                       6, "left no PDF"           },
        {"dead engine, no list",    "start: crash\n",                                                    "devices",                             5, "ended unexpectedly"    },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        errors.clear();
        start(c.script, QString::fromUtf8(c.arguments).split(u' '));
        EXPECT_EQ(exitCode(), c.code);
        EXPECT_THAT(errors.toStdString(), HasSubstr(c.message));
        EXPECT_TRUE(output.isEmpty()) << output.constData();
    }
}

TEST_F(VelmorCommandTest, AnEngineThatCannotBeLaunchedIsAFailure)
{
    // A folder is no program, so the search goes on and ends without one or beside the command.
    setInEnvironment("VELMOR_ENGINE", folder.path());
    const QString program = folder.filePath(QStringLiteral("velmor"));
    ASSERT_TRUE(QFile::copy(QStringLiteral(VELMOR_PROGRAM), program));
    command.start(program, {QStringLiteral("devices")});
    EXPECT_EQ(exitCode(), 5);
    EXPECT_THAT(errors.toStdString(), HasSubstr("scanengine executable not found in bundle"));

    writeFile(folder.filePath(QStringLiteral("scanengine")), "not a program");
    command.start(program, {QStringLiteral("devices")});
    EXPECT_EQ(exitCode(), 5);
}

TEST_F(VelmorCommandTest, PagesOfAPdfThatCannotBeSavedAreNamed)
{
    const QByteArray done = doneWith(1);
    startScan("scan: " + QByteArray(done).replace("$OUTPUT", "$DIR/none/x.pdf"));
    EXPECT_EQ(exitCode(), 6);
    EXPECT_THAT(errors.toStdString(), HasSubstr(pages.first().toStdString()));
    EXPECT_TRUE(QFileInfo::exists(pages.first()));
}

TEST_F(VelmorCommandTest, WhatTheEngineSaysAfterItsPagesDoesNotStopTheSaving)
{
    for (const QByteArray late : {"scan: print {\"event\":\"error\",\"message\":\"Late\"}\n",
                                  "scan: print {\"event\":\"done\"}\n", "scan: crash\n"}) {
        SCOPED_TRACE(late.toStdString());
        startScan("scan: " + doneWith(1) + late);
        EXPECT_EQ(exitCode(), 0);
        EXPECT_FALSE(output.isEmpty());
    }
}

TEST_F(VelmorCommandTest, InterruptingSavesWhatWasCaptured)
{
    startScan("scan: print {\"event\":\"page\",\"index\":1}\ncancel: " + doneWith(1),
              {QStringLiteral("--batch")});
    waitForError("Captured page 1");
    interrupt();
    EXPECT_EQ(exitCode(), 0);
    EXPECT_EQ(scans().size(), 1);
    EXPECT_EQ(engine->receivedWords().at(2), "cancel");
}

TEST_F(VelmorCommandTest, InterruptingTwiceEndsAtOnce)
{
    startScan("scan: print {\"event\":\"page\",\"index\":1}\n");
    waitForError("Captured page 1");
    interrupt();
    waitForError("Ending the scan");
    interrupt();
    EXPECT_EQ(exitCode(), 130);
}

TEST_F(VelmorCommandTest, DevicesAreListedOnePerLine)
{
    start(oneDevice, {QStringLiteral("devices")});
    EXPECT_EQ(exitCode(), 0);
    EXPECT_EQ(output, "a b\tA  [31mscanner\tx\n");
}

TEST_F(VelmorCommandTest, PresetsAreListedAndApplied)
{
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("Velmor")));
    QSettings store(folder.filePath(QStringLiteral("Velmor/Velmor.ini")), QSettings::IniFormat);
    store.setValue(QStringLiteral("customPresets"),
                   QByteArray(R"([{"id":"6F9619FF-8B86-D011-B42D-00CF4FC964FF","name":"Bills ü",)"
                              R"("brightness":9,"contrast":0,"colorMode":"bw","quality":600,)"
                              R"("batch":true}])"));
    store.sync();
    start({}, {QStringLiteral("presets")});
    EXPECT_EQ(exitCode(), 0);
    EXPECT_EQ(output, "Bills ü\n");

    startScan("scan: print {\"event\":\"done\"}\n",
              {QStringLiteral("--preset"), QStringLiteral("Bills ü"), QStringLiteral("--color"),
               QStringLiteral("auto")});
    EXPECT_EQ(exitCode(), 3);
    const QJsonObject scan = engine->received().last();
    EXPECT_EQ(scan[u"dpi"], 600);
    EXPECT_EQ(scan[u"auto"][u"brightness"], 9);
    EXPECT_EQ(scan[u"colorMode"], QStringLiteral("auto"));
    EXPECT_EQ(scan[u"batchWaitForPaper"], false);

    startScan({}, {QStringLiteral("--preset"), QStringLiteral("bills ü")});
    EXPECT_EQ(exitCode(), 2);
}

TEST_F(VelmorCommandTest, LevelsGoToEachFileThatCanBeChanged)
{
    startScan("scan: " + doneWith(2));
    ASSERT_EQ(exitCode(), 0);
    const QString pdf = QFile::decodeName(output.trimmed());
    const QByteArray before = readFile(pdf);
    const QString none = folder.filePath(QStringLiteral("none.pdf"));
    errors.clear();
    start({}, {QStringLiteral("magic"), QStringLiteral("--no-ocr"), QStringLiteral("--black=0.2"),
               none, pdf});
    EXPECT_EQ(exitCode(), 6);
    EXPECT_EQ(output, QFile::encodeName(pdf) + '\n');
    EXPECT_NE(readFile(pdf), before);
    EXPECT_THAT(errors.toStdString(), AllOf(HasSubstr(none.toStdString()), HasSubstr("Page 2/2")));

    // Without recognition a file would lose the text it has.
    setInEnvironment("VELMOR_RECOGNIZER", QStringLiteral("/none"));
    const QByteArray kept = readFile(pdf);
    start({}, {QStringLiteral("ocr"), pdf});
    EXPECT_EQ(exitCode(), 6);
    EXPECT_EQ(readFile(pdf), kept);
}

TEST_F(VelmorCommandTest, RegionsTakeThePlaceOfTheirPage)
{
    startScan("scan: " + doneWith(2));
    ASSERT_EQ(exitCode(), 0);
    const QString pdf = QFile::decodeName(output.trimmed());
    const auto crop = [&](const QStringList &arguments, int code, const char *message) {
        errors.clear();
        start({}, QStringList({QStringLiteral("crop"), QStringLiteral("--quad"),
                               QStringLiteral("0,0 1,0 1,.25 0,.25"), QStringLiteral("--quad"),
                               QStringLiteral("0,.5 1,.5 1,1 0,1")}) +
                      arguments);
        EXPECT_EQ(exitCode(), code);
        EXPECT_THAT(errors.toStdString(), HasSubstr(message));
    };
    const QString noText = QStringLiteral("--no-ocr");
    crop({noText, QStringLiteral("--page=3"), pdf}, 2, "There is no page 3; the last one is 2");
    crop({noText, folder.filePath(QStringLiteral("none.pdf"))}, 6, "couldn't be opened");
    EXPECT_EQ(PdfDocument::open(QUrl::fromLocalFile(pdf))->pageCount(), 2);

    crop({noText, QStringLiteral("--page=2"), pdf}, 0, "Cropped into 2 pages");
    EXPECT_EQ(output, QFile::encodeName(pdf) + '\n');
    const QList<int> heights = heightsOf(PdfDocument::open(QUrl::fromLocalFile(pdf)).value());
    EXPECT_THAT(heights, testing::ElementsAre(72, 18, 36));
}

TEST_F(VelmorCommandTest, FilesAreSplitTurnedAndMergedAgain)
{
    startScan("scan: " + doneWith(3));
    ASSERT_EQ(exitCode(), 0);
    const QString pdf = QFile::decodeName(output.trimmed());
    const auto run = [&](QStringList arguments, const QStringList &files, int code,
                         const char *message) {
        if (arguments.first() != u"rotate")
            arguments += {QStringLiteral("--folder"), scansPath()};
        errors.clear();
        start({}, arguments + files);
        EXPECT_EQ(exitCode(), code);
        EXPECT_THAT(errors.toStdString(), HasSubstr(message));
        return QFile::decodeName(output).split(u'\n', Qt::SkipEmptyParts);
    };
    const QStringList single = run({QStringLiteral("split")}, {pdf}, 0, "Split into pages");
    EXPECT_EQ(single.size(), 3);
    EXPECT_EQ(run({QStringLiteral("rotate")}, single.mid(1, 1), 0, "Rotated"), single.mid(1, 1));
    const QString none = folder.filePath(QStringLiteral("none.pdf"));
    EXPECT_EQ(run({QStringLiteral("rotate")}, {none}, 6, "none.pdf couldn't be opened"),
              QStringList());
    run({QStringLiteral("split")}, single.mid(0, 1), 6, "Select a multi-page PDF to split");
    run({QStringLiteral("merge")}, single.mid(0, 1), 6, "Select 2+ scans to merge");

    const QStringList merged = run({QStringLiteral("merge")}, single, 0, "Merged 3 scans");
    ASSERT_EQ(merged.size(), 1);
    const auto document = PdfDocument::open(QUrl::fromLocalFile(merged.first()));
    ASSERT_TRUE(document);
    ASSERT_EQ(document->pageCount(), 3);
    for (int page = 0; page < 3; ++page)
        EXPECT_EQ(document->page(page)->rotation(), page == 1 ? 90 : 0);
}

} // namespace
} // namespace velmor

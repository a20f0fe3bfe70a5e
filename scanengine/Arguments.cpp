#include "scanengine/Arguments.h"

namespace scanengine {
namespace {

constexpr char usage[] = R"(Usage: scanengine [--log FILE]

Drives scanners for Velmor. Reads commands from standard input, one JSON object
a line, and writes events to standard output in the same way. Ends at "quit", at
the end of its input, and when it is told to terminate.

Options:
  --log FILE   append what the engine and the scanner's backend do to FILE, to
               find out why a scanner fails
  --help       show this help
  --version    show the version

Commands:
  {"cmd":"listDevices"}   answered by "devices", within ten seconds
  {"cmd":"scan", ...}     answered by "scanStarted", "page" for each page, any
                          number of "status", and then "done" or "error"
  {"cmd":"cancel"}        ends the scan, which keeps its pages
  {"cmd":"calibrate", ...} and {"cmd":"adjust", ...}
                          take a sample, and process it
  {"cmd":"quit"}          ends the program

A scan takes these keys, all but "output" with a sensible value when left out:
  deviceId           the "id" of one of the "devices"; else the first one
  source             "auto", the feeder if it holds paper and else the flatbed;
                     or "flatbed"
  dpi                50 to 1200
  colorMode          "auto", "color", "gray" or "bw"
  batchWaitForPaper  true to wait for more paper until "cancel"
  auto               the image processing, an object: crop, deskew,
                     cleanBackground, blankRemoval and autoLevels are true or
                     false, brightness and contrast -1000 to 1000
  output             an object: "path", an absolute path, whose folder and name
                     the page images get

Environment:
  SCANENGINE_FEEDER  folders that serve as feeders, parted by colons
  SCANENGINE_LOG     the same as --log
  SCANENGINE_WORKER  the program that talks to scanners, velmor-scanworker
                     beside this one unless set
  SANE_CONFIG_DIR    where SANE's configuration is, see sane(7)
  SANE_DEBUG_NAME    how much the backend NAME tells, 0 to 255, see sane-NAME(5)

Example, with an image file in /tmp/paper and the scan beside it:
  mkdir -p /tmp/paper /tmp/scans && cp letter.png /tmp/paper
  (echo '{"cmd":"scan","dpi":300,"output":{"path":"/tmp/scans/letter.pdf"}}'
   sleep 5) | SCANENGINE_FEEDER=/tmp/paper scanengine
)";

} // namespace

Result<Arguments> parseArguments(const QStringList &words, const QString &logFile)
{
    const QString log = QStringLiteral("--log");
    Arguments arguments;
    arguments.logFile = logFile;
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QString &word = words[i];
        if (word == u"--help" || word == u"-h")
            arguments.wantsHelp = true;
        else if (word == u"--version")
            arguments.wantsVersion = true;
        else if (word == log && i + 1 < words.size())
            arguments.logFile = words[++i];
        else if (word.startsWith(log + u'='))
            arguments.logFile = word.mid(log.size() + 1);
        else
            return Fault{QStringLiteral("\"%1\" is not understood. See --help.").arg(word)};
    }
    return arguments;
}

QString usageText()
{
    return QString::fromLatin1(usage);
}

} // namespace scanengine

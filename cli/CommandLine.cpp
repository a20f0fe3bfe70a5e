#include "cli/CommandLine.h"

#include "cli/QuadText.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

#include <limits>

namespace velmor {

namespace {

const QString overview = QStringLiteral(
    "Usage: velmor [COMMAND] [options]\n"
    "Turns paper into searchable PDF files. Without a command it opens its window.\n\n"
    "Commands:\n"
    "  scan     Scan into a PDF and print its path.\n"
    "  devices  List the scanners: id, name and driver, separated by tabs.\n"
    "  presets  List the presets by name.\n"
    "  magic    Give saved scans other levels.\n"
    "  crop     Cut documents out of a page, each as a page of its own.\n"
    "  ocr      Make the text of saved PDFs searchable.\n"
    "  rotate   Turn the pages of saved scans clockwise.\n"
    "  merge    Put saved scans together into one.\n"
    "  split    Save the pages of a scan one by one.\n\n"
    "Options:\n"
    "  -h, --help     Show this help, or that of a command.\n"
    "  -v, --version  Show the version.\n"
    "  -uiDrawer      Open the window with all settings in sight.\n"
    "  --gallery      Open a window with all controls, for developers.\n\n"
    "Exit code 7 means that there is no display to open the window on.\n"
    "The environment variable VELMOR_ENGINE names another scanner engine.\n");

const QString uiDrawer = QStringLiteral("-uiDrawer");

const QString exitCodes =
    QStringLiteral("\nExit codes: 0 done, 2 wrong use, 3 nothing scanned, 4 no scanner found, "
                   "5 the scanner\nengine failed, 6 the PDF couldn't be saved.\n"
                   "Ctrl-C ends the scan and saves the pages so far; a second one ends at once.\n");

QString quoted(const QString &text)
{
    return QStringLiteral("“") + text + QStringLiteral("”");
}

/// Reads the options of one command. The first thing that is wrong is kept, and what is read after
/// it doesn't count.
class OptionReader {
public:
    OptionReader(const QString &command, const QString &description)
    {
        m_parser.setApplicationDescription(description);
        m_parser.addOption({
            {QStringLiteral("h"), QStringLiteral("help")},
            QStringLiteral("Show this help.")
        });
        m_program = QStringLiteral("velmor ") + command;
    }

    /// Lets files follow the options.
    void addFiles()
    {
        m_mostFiles = std::numeric_limits<qsizetype>::max();
        m_fileWord = QStringLiteral("FILE…");
        m_parser.addPositionalArgument(m_fileWord, QStringLiteral("PDF files."));
    }

    /// Lets one file follow the options.
    void addFile()
    {
        m_mostFiles = 1;
        m_fileWord = QStringLiteral("FILE");
        m_parser.addPositionalArgument(m_fileWord, QStringLiteral("A PDF file."));
    }

    void add(const QString &name, const QString &description, const QString &value = {})
    {
        m_parser.addOption({name, description, value});
    }

    void parse(const QStringList &arguments)
    {
        if (!m_parser.parse(QStringList(m_program) + arguments))
            fail(m_parser.errorText());
        const QStringList files = m_parser.positionalArguments();
        if (files.size() > m_mostFiles)
            fail(QStringLiteral("Unexpected argument %1.").arg(quoted(files[m_mostFiles])));
        else if (files.isEmpty() && m_mostFiles > 0)
            fail(QStringLiteral("A file is missing."));
    }

    [[nodiscard]] QList<QUrl> files() const
    {
        QList<QUrl> files;
        for (const QString &path : m_parser.positionalArguments())
            files.append(QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()));
        return files;
    }

    /// A number within limits.
    [[nodiscard]] std::optional<double> number(const QString &name, double least, double most)
    {
        const std::optional<QString> given = text(name);
        if (!given)
            return {};
        bool valid = false;
        const double value = given->toDouble(&valid);
        if (!valid || !(value >= least && value <= most))
            fail(QStringLiteral("--%1 takes a number from %2 to %3, not %4.")
                     .arg(name, QString::number(least), QString::number(most), quoted(*given)));
        return value;
    }

    /// A whole number of at least 1.
    [[nodiscard]] std::optional<int> ordinal(const QString &name)
    {
        const std::optional<QString> given = text(name);
        bool valid = false;
        const int value = given ? given->toInt(&valid) : 0;
        if (given && (!valid || value < 1))
            fail(QStringLiteral("--%1 takes a whole number from 1, not %2.")
                     .arg(name, quoted(*given)));
        return given ? std::optional(value) : std::nullopt;
    }

    /// A region for each time that the option is given, which must be at least once.
    [[nodiscard]] QList<Quad> quads(const QString &name)
    {
        QList<Quad> quads;
        for (const QString &given : m_parser.values(name)) {
            if (const std::optional<Quad> quad = quadFromText(given))
                quads.append(*quad);
            else
                fail(QStringLiteral(
                         "--%1 takes the four corners of a region, “x,y x,y x,y x,y” from 0 to "
                         "1, none of them dented, not %2.")
                         .arg(name, quoted(given)));
        }
        if (quads.isEmpty())
            fail(QStringLiteral("--%1 is missing.").arg(name));
        return quads;
    }

    [[nodiscard]] bool wantsHelp() const { return m_parser.isSet(QStringLiteral("help")); }
    /// With the command in the first line, which Qt would fill with the program's path.
    [[nodiscard]] QString helpText() const
    {
        const QString text = m_parser.helpText();
        const QString usage = QStringLiteral("Usage: %1 [options] %2").arg(m_program, m_fileWord);
        return usage.trimmed() + text.mid(text.indexOf(u'\n'));
    }
    [[nodiscard]] const std::optional<QString> &problem() const { return m_problem; }

    [[nodiscard]] std::optional<QString> text(const QString &name)
    {
        if (!m_parser.isSet(name))
            return {};
        const QString value = m_parser.value(name);
        if (value.isEmpty())
            fail(QStringLiteral("--%1 needs a value.").arg(name));
        return value;
    }

    /// The member of `all` whose word the option gives.
    template <typename Values, typename Word>
    [[nodiscard]] auto oneOf(const QString &name, const Values &all, Word word)
        -> std::optional<typename Values::value_type>
    {
        const std::optional<QString> given = text(name);
        if (!given)
            return {};
        QStringList words;
        for (const auto value : all) {
            if (word(value) == *given)
                return value;
            words.append(word(value));
        }
        fail(QStringLiteral("--%1 takes one of %2, not %3.")
                 .arg(name, words.join(QLatin1String(", ")), quoted(*given)));
        return {};
    }

    /// Which of "--name" and "--no-name" comes last.
    [[nodiscard]] std::optional<bool> flag(const QString &name) const
    {
        const QString opposite = QStringLiteral("no-") + name;
        const QStringList given = m_parser.optionNames();
        if (!given.contains(name) && !given.contains(opposite))
            return {};
        return given.lastIndexOf(name) > given.lastIndexOf(opposite);
    }

    [[nodiscard]] SearchLimit searchLimit()
    {
        SearchLimit limit;
        if (const std::optional<QString> given = text(searchTimeout)) {
            bool valid = false;
            const int seconds = given->toInt(&valid);
            if (!valid || seconds < 1 || seconds > longestSearch)
                fail(QStringLiteral("--%1 takes a number of seconds from 1 to %2, not %3.")
                         .arg(searchTimeout, QString::number(longestSearch), quoted(*given)));
            limit.value = std::chrono::seconds(seconds);
        }
        return limit;
    }

    void addSearchTimeout()
    {
        add(searchTimeout,
            QStringLiteral("How long to look for scanners, 1 to %1 seconds [%2].")
                .arg(longestSearch)
                .arg(SearchLimit().value.count()),
            QStringLiteral("SECONDS"));
    }

private:
    static constexpr int longestSearch = 3600;
    const QString searchTimeout = QStringLiteral("search-timeout");

    void fail(const QString &problem)
    {
        if (!m_problem)
            m_problem = problem;
    }

    QCommandLineParser m_parser;
    QString m_program;
    qsizetype m_mostFiles = 0;
    QString m_fileWord; ///< For the files in the help; empty where none is taken.
    std::optional<QString> m_problem;
};

/// Help where it is asked for, else what is wrong, else the `request` that was read.
Request answer(const OptionReader &options, const Request &request, const QString &helpEnd = {})
{
    if (options.wantsHelp())
        return PrintRequest{options.helpText() + helpEnd};
    if (options.problem())
        return WrongUse{*options.problem()};
    return request;
}

void addFolder(OptionReader &options)
{
    options.add(QStringLiteral("folder"),
                QStringLiteral("Save here, instead of in the folder chosen in the application."),
                QStringLiteral("DIR"));
}

std::optional<QUrl> folderOf(OptionReader &options)
{
    const std::optional<QString> folder = options.text(QStringLiteral("folder"));
    if (!folder)
        return {};
    return QUrl::fromLocalFile(QDir(*folder).absolutePath());
}

void addScanOptions(OptionReader &options)
{
    addFolder(options);
    options.add(QStringLiteral("tab"),
                QStringLiteral("document or photo: the defaults for all else [document]."),
                QStringLiteral("TAB"));
    options.add(QStringLiteral("preset"),
                QStringLiteral("One of your presets, on top of the tab; but see --batch."),
                QStringLiteral("NAME"));
    options.add(QStringLiteral("quality"), QStringLiteral("150, 300 or 600 dots per inch [300]."),
                QStringLiteral("DPI"));
    options.add(QStringLiteral("color"), QStringLiteral("auto, color, grayscale or bw."),
                QStringLiteral("MODE"));
    options.add(QStringLiteral("source"), QStringLiteral("Where the paper is: auto or flatbed."),
                QStringLiteral("WORD"));
    options.add(QStringLiteral("device"),
                QStringLiteral("The scanner, by its id [the first that is found]."),
                QStringLiteral("ID"));
    options.add(QStringLiteral("batch"), QStringLiteral("Keep waiting for paper, until Ctrl-C."));
    options.add(QStringLiteral("no-batch"), QStringLiteral("End when the paper ends [default]."));
    options.add(QStringLiteral("ocr"), QStringLiteral("Make the text searchable."));
    options.add(QStringLiteral("no-ocr"), QStringLiteral("Save without text."));
    options.addSearchTimeout();
}

Request parseScan(const QStringList &arguments)
{
    OptionReader options(QStringLiteral("scan"),
                         QStringLiteral("Scans into a PDF and prints its path."));
    addScanOptions(options);
    options.parse(arguments);
    ScanRequest request;
    request.tab = options
                      .oneOf(QStringLiteral("tab"), allDocumentTypes,
                             [](DocumentType type) { return rawValue(type); })
                      .value_or(request.tab);
    request.preset = options.text(QStringLiteral("preset"));
    request.quality = options.oneOf(QStringLiteral("quality"), allScanQualities, [](auto quality) {
        return QString::number(rawValue(quality));
    });
    request.colorMode = options.oneOf(QStringLiteral("color"), allColorModes,
                                      [](ColorMode mode) { return rawValue(mode); });
    request.folder = folderOf(options);
    request.source = options.text(QStringLiteral("source"));
    request.deviceId = options.text(QStringLiteral("device"));
    request.batch = options.flag(QStringLiteral("batch")).value_or(false);
    request.ocr = options.flag(QStringLiteral("ocr"));
    request.searchLimit = options.searchLimit();
    return answer(options, request, exitCodes);
}

Request parseDevices(const QStringList &arguments)
{
    OptionReader options(QStringLiteral("devices"),
                         QStringLiteral("Lists the scanners: id, name and driver."));
    options.addSearchTimeout();
    options.parse(arguments);
    return answer(options, DevicesRequest{options.searchLimit()});
}

Request parsePresets(const QStringList &arguments)
{
    OptionReader options(QStringLiteral("presets"), QStringLiteral("Lists the presets by name."));
    options.parse(arguments);
    return answer(options, PresetsRequest());
}

Request parseMagic(const QStringList &arguments)
{
    OptionReader options(
        QStringLiteral("magic"),
        QStringLiteral("Gives saved scans other levels, from their raw pages where "
                       "there are such, and prints\nthe files that were changed."));
    const QString black = QStringLiteral("black");
    const QString white = QStringLiteral("white");
    const QString gamma = QStringLiteral("gamma");
    options.add(black, QStringLiteral("What becomes black, 0 to 1 [0]."), QStringLiteral("LEVEL"));
    options.add(white, QStringLiteral("What becomes white, 0 to 1 [1]."), QStringLiteral("LEVEL"));
    options.add(gamma, QStringLiteral("Exponent, 0.1 to 10; above 1 darkens [1]."),
                QStringLiteral("NUMBER"));
    options.add(QStringLiteral("ocr"), QStringLiteral("Make the text searchable [default]."));
    options.add(QStringLiteral("no-ocr"), QStringLiteral("Leave the pages without text."));
    options.addFiles();
    options.parse(arguments);
    MagicRequest request;
    request.levels.black = options.number(black, 0, 1).value_or(request.levels.black);
    request.levels.white = options.number(white, 0, 1).value_or(request.levels.white);
    request.levels.gamma = options.number(gamma, 0.1, 10).value_or(request.levels.gamma);
    request.ocr = options.flag(QStringLiteral("ocr")).value_or(request.ocr);
    request.files = options.files();
    return answer(options, request);
}

Request parseCrop(const QStringList &arguments)
{
    OptionReader options(
        QStringLiteral("crop"),
        QStringLiteral("Cuts regions out of a page of a saved scan and puts them in its place, "
                       "each straightened\nand as a page of its own, and prints the file. Its "
                       "raw pages are removed."));
    const QString page = QStringLiteral("page");
    const QString quad = QStringLiteral("quad");
    options.add(page, QStringLiteral("The page, counted from 1 [1]."), QStringLiteral("N"));
    options.add(quad,
                QStringLiteral("A region by its four corners, in any order: “x,y x,y x,y x,y”, "
                               "fractions of the page from its top left. Can be given again, for "
                               "further regions."),
                QStringLiteral("CORNERS"));
    options.add(QStringLiteral("ocr"), QStringLiteral("Make the text searchable [default]."));
    options.add(QStringLiteral("no-ocr"), QStringLiteral("Leave the pages without text."));
    options.addFile();
    options.parse(arguments);
    CropRequest request;
    request.page = options.ordinal(page).value_or(1) - 1;
    request.boxes = options.quads(quad);
    request.ocr = options.flag(QStringLiteral("ocr")).value_or(request.ocr);
    request.file = options.files().value(0);
    return answer(options, request);
}

Request parseOcr(const QStringList &arguments)
{
    OptionReader options(QStringLiteral("ocr"),
                         QStringLiteral("Makes the text of saved PDFs searchable, and prints the "
                                        "files that were changed."));
    options.addFiles();
    options.parse(arguments);
    return answer(options, OcrRequest{options.files()});
}

Request parseFiles(FilesRequest::Operation operation, const QString &command,
                   const QStringList &arguments)
{
    using Operation = FilesRequest::Operation;
    static const QHash<Operation, QString> descriptions = {
        {Operation::rotate,
         QStringLiteral("Turns every page of saved scans clockwise by 90 degrees, and prints the "
                        "files that were\nchanged. Their raw pages are removed.")     },
        {Operation::merge,
         QStringLiteral("Puts the pages of saved scans into one new file, in the order of the "
                        "files' names, and\nprints its path.")                        },
        {Operation::split,
         QStringLiteral("Saves each page of scans with several as a file of its own, and prints "
                        "the paths. A file\nthat has the name of a page is replaced.")},
    };
    OptionReader options(command, descriptions.value(operation));
    if (operation != Operation::rotate)
        addFolder(options);
    options.addFiles();
    options.parse(arguments);
    FilesRequest request;
    request.operation = operation;
    if (operation != Operation::rotate)
        request.folder = folderOf(options);
    request.files = options.files();
    return answer(options, request);
}

} // namespace

ScanSettings ScanRequest::appliedTo(ScanSettings settings) const
{
    settings.outputFolder = folder.value_or(settings.outputFolder);
    settings.quality = quality.value_or(settings.quality);
    settings.colorMode = colorMode.value_or(settings.colorMode);
    settings.source = source.value_or(settings.source);
    settings.batch = batch;
    settings.ocr = ocr.value_or(settings.ocr);
    return settings;
}

Request parseCommandLine(const QStringList &arguments, const QString &version)
{
    const QString command = arguments.value(1);
    const QStringList rest = arguments.mid(2);
    if (rest.contains(uiDrawer) || command == uiDrawer)
        return WindowRequest{WindowRequest::Page::homeWithAdvancedPanel};
    if (command == u"-v" || arguments.contains(QLatin1String("--version")))
        return PrintRequest{QStringLiteral("velmor %1\n").arg(version)};
    if (command == u"scan")
        return parseScan(rest);
    if (command == u"devices")
        return parseDevices(rest);
    if (command == u"presets")
        return parsePresets(rest);
    if (command == u"magic")
        return parseMagic(rest);
    if (command == u"crop")
        return parseCrop(rest);
    if (command == u"ocr")
        return parseOcr(rest);
    if (command == u"rotate")
        return parseFiles(FilesRequest::Operation::rotate, command, rest);
    if (command == u"merge")
        return parseFiles(FilesRequest::Operation::merge, command, rest);
    if (command == u"split")
        return parseFiles(FilesRequest::Operation::split, command, rest);
    if (command == u"-h" || command == u"--help" || command == u"help")
        return PrintRequest{overview};
    if (command == u"--gallery")
        return WindowRequest{WindowRequest::Page::gallery};
    if (arguments.size() < 2)
        return WindowRequest{};
    return WrongUse{QStringLiteral("There is no command %1.").arg(quoted(command))};
}

} // namespace velmor

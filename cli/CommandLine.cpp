#include "cli/CommandLine.h"

#include "cli/OptionReader.h"

#include <QDir>

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
    return WrongUse{QStringLiteral("There is no command “%1”.").arg(command)};
}

} // namespace velmor

// A SANE backend of one scanner whose pages are 64 x 64 white pixels. The file that the environment
// variable BAD_BACKEND names says what it is and how it fails, a line each, and is read anew every
// time:
//
//     name feeder       its name, "bad:feeder" to SANE
//     fault hang page   it crashes, hangs, leaks or is busy at that place
//     sheets 3          so many were put into its feeder so far; endless without this line
//     flatbed           it has no feeder
//     sensor            its feeder senses paper
//     presses 1         it has a button, which was pressed so often so far
//
// It writes "closed" into "<that file>.closed" when its device is let go.

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sane/sane.h>
#include <sane/saneopts.h>
#include <sstream>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

constexpr SANE_Int side = 64;
constexpr int endless = 1'000'000;

enum Option { optionCount, optionSource, optionSensor, optionButton, options };

std::string chosenSource = "Flatbed";
SANE_Int bytesLeft = 0;
int pages = 0;
int sheetsTaken = 0;
int pressesTold = 0;

/// What the file says.
struct Setup {
    std::string name;
    std::string fault;
    std::string place;
    int sheets = endless;
    int presses = -1; ///< Without a button.
    bool hasFeeder = true;
    bool hasSensor = false;
};

std::string controlFile()
{
    const char *path = std::getenv("BAD_BACKEND");
    return path ? path : "";
}

Setup setup()
{
    Setup setup;
    std::ifstream file(controlFile());
    std::string line;
    while (std::getline(file, line)) {
        std::istringstream words(line);
        std::string key;
        words >> key;
        if (key == "name")
            words >> setup.name;
        else if (key == "fault")
            words >> setup.fault >> setup.place;
        else if (key == "sheets")
            words >> setup.sheets;
        else if (key == "presses")
            words >> setup.presses;
        setup.hasFeeder = setup.hasFeeder && key != "flatbed";
        setup.hasSensor = setup.hasSensor || key == "sensor";
    }
    return setup;
}

/// Fails now if that is wanted at `place`.
SANE_Status mayFail(const std::string &place)
{
    const Setup wanted = setup();
    if (wanted.place != place)
        return SANE_STATUS_GOOD;
    if (wanted.fault == "crash")
        std::raise(SIGSEGV);
    while (wanted.fault == "hang")
        ::pause();
    std::vector<std::vector<char>> leaked;
    while (wanted.fault == "leak")
        leaked.emplace_back(1 << 20, 'x');
    return wanted.fault == "busy" ? SANE_STATUS_DEVICE_BUSY : SANE_STATUS_GOOD;
}

SANE_Option_Descriptor described(const char *name, SANE_Value_Type type, SANE_Int size,
                                 SANE_Int capabilities)
{
    SANE_Option_Descriptor option{};
    option.name = name;
    option.title = name;
    option.type = type;
    option.size = size;
    option.cap = capabilities;
    return option;
}

const SANE_String_Const flatbedAlone[] = {"Flatbed", nullptr};
const SANE_String_Const allSources[] = {"Flatbed", "ADF", nullptr};

} // namespace

extern "C" {

SANE_Status sane_bad_init(SANE_Int *version, SANE_Auth_Callback)
{
    std::cout << "A backend that prints" << std::endl;
    if (version)
        *version = SANE_VERSION_CODE(SANE_CURRENT_MAJOR, 0, 0);
    return SANE_STATUS_GOOD;
}

void sane_bad_exit() {}

SANE_Status sane_bad_get_devices(const SANE_Device ***devices, SANE_Bool)
{
    static std::string name;
    static SANE_Device device{};
    static const SANE_Device *list[] = {&device, nullptr};
    name = setup().name;
    device = {name.c_str(), "Bad", "Feeder", "sheetfed scanner"};
    *devices = list;
    return mayFail("search");
}

SANE_Status sane_bad_open(SANE_String_Const name, SANE_Handle *handle)
{
    if (name != setup().name)
        return SANE_STATUS_INVAL;
    *handle = &bytesLeft;
    return mayFail("open");
}

void sane_bad_close(SANE_Handle)
{
    mayFail("close");
    std::ofstream(controlFile() + ".closed") << "closed";
}

const SANE_Option_Descriptor *sane_bad_get_option_descriptor(SANE_Handle, SANE_Int number)
{
    static SANE_Option_Descriptor described[options];
    const Setup now = setup();
    constexpr SANE_Int sensor = SANE_CAP_SOFT_DETECT | SANE_CAP_HARD_SELECT;
    const auto word = static_cast<SANE_Int>(sizeof(SANE_Word));
    described[optionCount] =
        ::described(SANE_NAME_NUM_OPTIONS, SANE_TYPE_INT, word, SANE_CAP_SOFT_DETECT);
    SANE_Option_Descriptor &source = described[optionSource];
    source = ::described(SANE_NAME_SCAN_SOURCE, SANE_TYPE_STRING, 8,
                         SANE_CAP_SOFT_DETECT | SANE_CAP_SOFT_SELECT);
    source.constraint_type = SANE_CONSTRAINT_STRING_LIST;
    source.constraint.string_list = now.hasFeeder ? allSources : flatbedAlone;
    described[optionSensor] = ::described(SANE_NAME_PAGE_LOADED, SANE_TYPE_BOOL, word,
                                          now.hasSensor ? sensor : sensor | SANE_CAP_INACTIVE);
    described[optionButton] = ::described(SANE_NAME_SCAN, SANE_TYPE_BOOL, word,
                                          now.presses >= 0 ? sensor : sensor | SANE_CAP_INACTIVE);
    return number >= 0 && number < options ? &described[number] : nullptr;
}

SANE_Status sane_bad_control_option(SANE_Handle, SANE_Int option, SANE_Action action, void *value,
                                    SANE_Int *info)
{
    if (info)
        *info = 0;
    if (action == SANE_ACTION_SET_VALUE) {
        chosenSource = static_cast<const char *>(value);
        return mayFail("option");
    }
    const Setup now = setup();
    auto *number = static_cast<SANE_Word *>(value);
    if (option == optionSource)
        std::strcpy(static_cast<char *>(value), chosenSource.c_str());
    else if (option == optionSensor)
        *number = now.sheets > sheetsTaken;
    else if (option == optionButton)
        *number = now.presses > std::exchange(pressesTold, now.presses);
    else
        *number = options;
    return SANE_STATUS_GOOD;
}

SANE_Status sane_bad_get_parameters(SANE_Handle, SANE_Parameters *parameters)
{
    *parameters = {SANE_FRAME_GRAY, SANE_TRUE, side, side, side, 8};
    return SANE_STATUS_GOOD;
}

/// The first page always begins, so that faults at the start meet the second one.
SANE_Status sane_bad_start(SANE_Handle)
{
    const SANE_Status status = pages > 0 ? mayFail("start") : SANE_STATUS_GOOD;
    if (status != SANE_STATUS_GOOD)
        return status;
    if (chosenSource == "ADF") {
        if (setup().sheets <= sheetsTaken)
            return SANE_STATUS_NO_DOCS;
        ++sheetsTaken;
    }
    ++pages;
    bytesLeft = side * side;
    return SANE_STATUS_GOOD;
}

SANE_Status sane_bad_read(SANE_Handle, SANE_Byte *data, SANE_Int most, SANE_Int *count)
{
    if (pages > 1 && bytesLeft < side * side)
        mayFail("page");
    *count = std::min({most, bytesLeft, side});
    std::memset(data, 0xFF, static_cast<size_t>(*count));
    bytesLeft -= *count;
    return *count > 0 ? SANE_STATUS_GOOD : SANE_STATUS_EOF;
}

void sane_bad_cancel(SANE_Handle)
{
    mayFail("cancel");
}

SANE_Status sane_bad_set_io_mode(SANE_Handle, SANE_Bool)
{
    return SANE_STATUS_UNSUPPORTED;
}

SANE_Status sane_bad_get_select_fd(SANE_Handle, SANE_Int *)
{
    return SANE_STATUS_UNSUPPORTED;
}

SANE_String_Const sane_bad_strstatus(SANE_Status)
{
    return "";
}

} // extern "C"

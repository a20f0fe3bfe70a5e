// A SANE backend of one scanner, "bad:feeder", whose feeder is never empty and whose pages are 64 x
// 64 white pixels, and which fails where the file named by the environment variable BAD_BACKEND
// says: "crash search", "hang page". It writes "closed" into "<that file>.closed" when its device
// is let go.

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sane/sane.h>
#include <sane/saneopts.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr SANE_Int side = 64;

std::string chosenSource = "Flatbed";
SANE_Int bytesLeft = 0;
int pages = 0;

std::string controlFile()
{
    const char *path = std::getenv("BAD_BACKEND");
    return path ? path : "";
}

/// Fails now if that is wanted at `place`.
void mayFail(const std::string &place)
{
    std::ifstream file(controlFile());
    std::string fault;
    std::string where;
    file >> fault >> where;
    if (where != place)
        return;
    if (fault == "crash")
        std::raise(SIGSEGV);
    while (fault == "hang")
        ::pause();
    std::vector<std::vector<char>> leaked;
    while (fault == "leak")
        leaked.emplace_back(1 << 20, 'x');
}

const SANE_Device device{"feeder", "Bad", "Feeder", "sheetfed scanner"};
const SANE_String_Const sources[] = {"Flatbed", "ADF", nullptr};

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
    static const SANE_Device *list[] = {&device, nullptr};
    mayFail("search");
    *devices = list;
    return SANE_STATUS_GOOD;
}

SANE_Status sane_bad_open(SANE_String_Const, SANE_Handle *handle)
{
    mayFail("open");
    *handle = &bytesLeft;
    return SANE_STATUS_GOOD;
}

void sane_bad_close(SANE_Handle)
{
    mayFail("close");
    std::ofstream(controlFile() + ".closed") << "closed";
}

const SANE_Option_Descriptor *sane_bad_get_option_descriptor(SANE_Handle, SANE_Int option)
{
    static SANE_Option_Descriptor count{};
    count.name = SANE_NAME_NUM_OPTIONS;
    count.type = SANE_TYPE_INT;
    count.size = sizeof(SANE_Word);
    count.cap = SANE_CAP_SOFT_DETECT;
    static SANE_Option_Descriptor source{};
    source.name = SANE_NAME_SCAN_SOURCE;
    source.type = SANE_TYPE_STRING;
    source.size = 8;
    source.cap = SANE_CAP_SOFT_DETECT | SANE_CAP_SOFT_SELECT;
    source.constraint_type = SANE_CONSTRAINT_STRING_LIST;
    source.constraint.string_list = sources;
    return option == 0 ? &count : option == 1 ? &source : nullptr;
}

SANE_Status sane_bad_control_option(SANE_Handle, SANE_Int option, SANE_Action action, void *value,
                                    SANE_Int *info)
{
    if (info)
        *info = 0;
    if (option == 0) {
        *static_cast<SANE_Word *>(value) = 2;
    } else if (action == SANE_ACTION_SET_VALUE) {
        mayFail("option");
        chosenSource = static_cast<const char *>(value);
    } else {
        std::strcpy(static_cast<char *>(value), chosenSource.c_str());
    }
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
    if (pages > 0)
        mayFail("start");
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

// A SANE backend of one feeder that feeds the same page again and again at a chosen pace, and notes
// when. Set up by environment variables:
//
//     FASTFEEDER_PAGE     the page, a PGM or PPM file of 8 bits without comments
//     FASTFEEDER_PAGES    how often it is fed
//     FASTFEEDER_SECONDS  that a page takes to pass; 0 for as fast as its data are taken
//     FASTFEEDER_TIMES    the file for the notes, in seconds of the monotonic clock: a line for
//     each
//                         page, with the times of its start and of its last data

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <iterator>
#include <sane/sane.h>
#include <sane/saneopts.h>
#include <string>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// Less than this isn't handed over before the page has passed.
constexpr double leastPiece = 32 * 1024;

enum Option { optionCount, optionSource, options };

std::string page;
size_t position = 0;
SANE_Parameters parameters{};
int pagesLeft = 0;
Clock::time_point started;
SANE_Char source[] = "ADF";
const SANE_String_Const sources[] = {source, nullptr};

std::string setting(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

bool loadPage()
{
    std::ifstream file(setting("FASTFEEDER_PAGE"), std::ios::binary);
    std::string kind;
    int width = 0;
    int height = 0;
    int white = 0;
    file >> kind >> width >> height >> white;
    file.get();
    page.assign(std::istreambuf_iterator<char>(file), {});
    const int channels = kind == "P6" ? 3 : 1;
    parameters = {kind == "P6" ? SANE_FRAME_RGB : SANE_FRAME_GRAY,
                  SANE_TRUE,
                  width * channels,
                  width,
                  height,
                  8};
    return width > 0 && page.size() == size_t(width) * size_t(height) * size_t(channels);
}

double secondsOf(Clock::time_point time)
{
    return Seconds(time.time_since_epoch()).count();
}

/// How much of the page has passed by now, in bytes; waits until that is worth handing over.
size_t passed()
{
    const double pageSeconds = std::atof(setting("FASTFEEDER_SECONDS").c_str());
    if (pageSeconds <= 0)
        return page.size();
    const auto size = double(page.size());
    const double wanted = std::min(size, double(position) + leastPiece);
    std::this_thread::sleep_until(started + std::chrono::duration_cast<Clock::duration>(
                                                Seconds(wanted / size * pageSeconds)));
    const double share = Seconds(Clock::now() - started).count() / pageSeconds;
    return std::max(size_t(wanted), size_t(std::min(1.0, share) * size));
}

} // namespace

extern "C" {

SANE_Status sane_fastfeeder_init(SANE_Int *version, SANE_Auth_Callback)
{
    if (version)
        *version = SANE_VERSION_CODE(SANE_CURRENT_MAJOR, 0, 0);
    return SANE_STATUS_GOOD;
}

void sane_fastfeeder_exit() {}

SANE_Status sane_fastfeeder_get_devices(const SANE_Device ***devices, SANE_Bool)
{
    static const SANE_Device device{"feeder", "Fast", "Feeder", "sheetfed scanner"};
    static const SANE_Device *list[] = {&device, nullptr};
    *devices = list;
    return SANE_STATUS_GOOD;
}

SANE_Status sane_fastfeeder_open(SANE_String_Const, SANE_Handle *handle)
{
    pagesLeft = std::atoi(setting("FASTFEEDER_PAGES").c_str());
    *handle = &page;
    return loadPage() ? SANE_STATUS_GOOD : SANE_STATUS_IO_ERROR;
}

void sane_fastfeeder_close(SANE_Handle) {}

const SANE_Option_Descriptor *sane_fastfeeder_get_option_descriptor(SANE_Handle, SANE_Int number)
{
    static SANE_Option_Descriptor described[options];
    described[optionCount].name = SANE_NAME_NUM_OPTIONS;
    described[optionCount].type = SANE_TYPE_INT;
    described[optionCount].size = sizeof(SANE_Word);
    described[optionCount].cap = SANE_CAP_SOFT_DETECT;
    described[optionSource].name = SANE_NAME_SCAN_SOURCE;
    described[optionSource].type = SANE_TYPE_STRING;
    described[optionSource].size = sizeof source;
    described[optionSource].cap = SANE_CAP_SOFT_DETECT | SANE_CAP_SOFT_SELECT;
    described[optionSource].constraint_type = SANE_CONSTRAINT_STRING_LIST;
    described[optionSource].constraint.string_list = sources;
    return number >= 0 && number < options ? &described[number] : nullptr;
}

SANE_Status sane_fastfeeder_control_option(SANE_Handle, SANE_Int option, SANE_Action action,
                                           void *value, SANE_Int *info)
{
    if (info)
        *info = 0;
    if (action != SANE_ACTION_GET_VALUE)
        return SANE_STATUS_GOOD;
    if (option == optionCount)
        *static_cast<SANE_Word *>(value) = options;
    else
        std::memcpy(value, source, sizeof source);
    return SANE_STATUS_GOOD;
}

SANE_Status sane_fastfeeder_get_parameters(SANE_Handle, SANE_Parameters *wanted)
{
    *wanted = parameters;
    return SANE_STATUS_GOOD;
}

SANE_Status sane_fastfeeder_start(SANE_Handle)
{
    if (pagesLeft-- <= 0)
        return SANE_STATUS_NO_DOCS;
    started = Clock::now();
    position = 0;
    return SANE_STATUS_GOOD;
}

SANE_Status sane_fastfeeder_read(SANE_Handle, SANE_Byte *data, SANE_Int most, SANE_Int *count)
{
    *count = 0;
    if (position == page.size())
        return SANE_STATUS_EOF;
    const size_t size = std::min(passed() - position, size_t(most));
    std::memcpy(data, page.data() + position, size);
    position += size;
    *count = SANE_Int(size);
    if (position == page.size())
        std::ofstream(setting("FASTFEEDER_TIMES"), std::ios::app)
            << std::fixed << std::setprecision(6) << secondsOf(started) << ' '
            << secondsOf(Clock::now()) << '\n';
    return SANE_STATUS_GOOD;
}

void sane_fastfeeder_cancel(SANE_Handle) {}

SANE_Status sane_fastfeeder_set_io_mode(SANE_Handle, SANE_Bool)
{
    return SANE_STATUS_UNSUPPORTED;
}

SANE_Status sane_fastfeeder_get_select_fd(SANE_Handle, SANE_Int *)
{
    return SANE_STATUS_UNSUPPORTED;
}

SANE_String_Const sane_fastfeeder_strstatus(SANE_Status)
{
    return "";
}

} // extern "C"

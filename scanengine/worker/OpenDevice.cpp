#include "scanengine/worker/OpenDevice.h"

#include "scanengine/worker/OptionReader.h"

namespace scanengine {
namespace {

SaneStatus converted(SANE_Status status)
{
    return static_cast<SaneStatus>(status);
}

SaneDevice converted(const SANE_Device &device)
{
    return {QString::fromUtf8(device.name), QString::fromUtf8(device.vendor),
            QString::fromUtf8(device.model), QString::fromUtf8(device.type)};
}

} // namespace

OpenDevice::~OpenDevice()
{
    if (!m_handle)
        return;
    sane_cancel(m_handle);
    SANE_Handle handle = m_handle;
    {
        const std::lock_guard lock(m_interrupting);
        m_handle = nullptr;
    }
    sane_close(handle);
    sane_exit();
}

DevicesAnswer OpenDevice::search()
{
    DevicesAnswer answer;
    answer.status = converted(sane_init(nullptr, nullptr));
    if (answer.status != SaneStatus::good)
        return answer;
    const SANE_Device **devices = nullptr;
    answer.status = converted(sane_get_devices(&devices, SANE_FALSE));
    for (; answer.status == SaneStatus::good && devices && *devices; ++devices)
        answer.devices.append(converted(**devices));
    sane_exit();
    return answer;
}

OptionsAnswer OpenDevice::open(const QString &name)
{
    if (m_handle)
        return {SaneStatus::deviceBusy, {}};
    SANE_Status status = sane_init(nullptr, nullptr);
    if (status != SANE_STATUS_GOOD)
        return {converted(status), {}};
    SANE_Handle handle = nullptr;
    status = sane_open(name.toUtf8().constData(), &handle);
    if (status != SANE_STATUS_GOOD || !handle) {
        sane_exit();
        return {status == SANE_STATUS_GOOD ? SaneStatus::ioError : converted(status), {}};
    }
    {
        const std::lock_guard lock(m_interrupting);
        m_handle = handle;
    }
    return options();
}

OptionsAnswer OpenDevice::options()
{
    if (!m_handle)
        return {SaneStatus::invalid, {}};
    m_options = readOptions(m_handle);
    return {SaneStatus::good, m_options};
}

OptionsAnswer OpenDevice::set(const SaneSetting &setting)
{
    if (!m_handle)
        return {SaneStatus::invalid, {}};
    const SetResult result = writeValue(m_handle, setting);
    if (result.changesOthers) {
        m_options = readOptions(m_handle);
    } else {
        for (SaneOption &option : m_options) {
            if (option.index == setting.index)
                option.value = readValue(m_handle, option);
        }
    }
    return {converted(result.status), m_options};
}

StartedAnswer OpenDevice::start()
{
    if (!m_handle)
        return {SaneStatus::invalid, {}};
    SANE_Status status = sane_start(m_handle);
    SANE_Parameters parameters{};
    if (status == SANE_STATUS_GOOD)
        status = sane_get_parameters(m_handle, &parameters);
    if (status == SANE_STATUS_GOOD &&
        (parameters.format < SANE_FRAME_GRAY || parameters.format > SANE_FRAME_BLUE))
        status = SANE_STATUS_UNSUPPORTED;
    FrameParameters frame;
    if (status == SANE_STATUS_GOOD)
        frame = {static_cast<FrameFormat>(parameters.format),
                 parameters.last_frame != SANE_FALSE,
                 parameters.bytes_per_line,
                 parameters.pixels_per_line,
                 parameters.lines,
                 parameters.depth};
    return {converted(status), frame};
}

SaneStatus OpenDevice::read(QByteArray &bytes)
{
    const qsizetype before = bytes.size();
    bytes.resize(maxDataBytes);
    SANE_Int count = 0;
    const SANE_Status status =
        sane_read(m_handle, reinterpret_cast<SANE_Byte *>(bytes.data()) + before,
                  SANE_Int(maxDataBytes - before), &count);
    const bool hasData = status == SANE_STATUS_GOOD && count > 0 && count <= maxDataBytes - before;
    bytes.resize(before + (hasData ? count : 0));
    return converted(status);
}

void OpenDevice::cancel()
{
    if (m_handle)
        sane_cancel(m_handle);
}

void OpenDevice::interrupt()
{
    const std::lock_guard lock(m_interrupting);
    if (m_handle)
        sane_cancel(m_handle);
}

} // namespace scanengine

#pragma once

#include "scanengine/drivers/sane/FrameParameters.h"
#include "scanengine/drivers/sane/SaneOptions.h"
#include "scanengine/drivers/sane/StatusText.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>
#include <variant>

/// What the engine and the worker process that calls SANE say to each other.
///
/// Each message is one frame (see FrameSocket.h). Every request gets one answer, in the order of
/// the requests; a page's data follow the answer to its start by themselves, closed by a
/// `FrameEndAnswer`. A `CancelRequest` is noticed at once: what is under way is broken off and
/// answered first. The end of the worker's input is its order to let the device go and to end.
///
/// Both programs come from one build, so there is no version; still the engine doesn't trust the
/// worker's bytes: decoding gives a whole message or nothing.
namespace scanengine {

/// Asks for the devices of all backends that the worker's configuration names.
struct SearchRequest {
    bool operator==(const SearchRequest &) const = default;
};

/// Opens a device, the only one of this worker. Answered by its options.
struct OpenRequest {
    QString name; ///< As the search told it.

    bool operator==(const OpenRequest &) const = default;
};

/// Asks for the options of the open device with their values as they are now.
struct OptionsRequest {
    bool operator==(const OptionsRequest &) const = default;
};

/// Sets an option of the open device. Answered by all options.
struct SetRequest {
    SaneSetting setting;

    bool operator==(const SetRequest &) const = default;
};

/// Starts the next frame of the open device.
struct StartRequest {
    bool operator==(const StartRequest &) const = default;
};

/// Breaks off whatever the worker is doing; the device stays open.
struct CancelRequest {
    bool operator==(const CancelRequest &) const = default;
};

using WorkerRequest = std::variant<SearchRequest, OpenRequest, OptionsRequest, SetRequest,
                                   StartRequest, CancelRequest>;

struct DevicesAnswer {
    SaneStatus status = SaneStatus::good;
    QList<SaneDevice> devices;

    bool operator==(const DevicesAnswer &) const = default;
};

struct OptionsAnswer {
    SaneStatus status = SaneStatus::good;
    SaneOptions options;

    bool operator==(const OptionsAnswer &) const = default;
};

/// Unless the status is good no data follow.
struct StartedAnswer {
    SaneStatus status = SaneStatus::good;
    FrameParameters parameters;

    bool operator==(const StartedAnswer &) const = default;
};

struct DataAnswer {
    QByteArray bytes; ///< Some of the frame's, in order.

    bool operator==(const DataAnswer &) const = default;
};

/// The status is `endOfData` for a whole frame.
struct FrameEndAnswer {
    SaneStatus status = SaneStatus::endOfData;

    bool operator==(const FrameEndAnswer &) const = default;
};

struct CancelledAnswer {
    bool operator==(const CancelledAnswer &) const = default;
};

using WorkerAnswer = std::variant<DevicesAnswer, OptionsAnswer, StartedAnswer, DataAnswer,
                                  FrameEndAnswer, CancelledAnswer>;

[[nodiscard]] QByteArray encode(const WorkerRequest &request);
[[nodiscard]] QByteArray encode(const WorkerAnswer &answer);
[[nodiscard]] std::optional<WorkerRequest> decodeRequest(QByteArrayView frame);
[[nodiscard]] std::optional<WorkerAnswer> decodeAnswer(QByteArrayView frame);

/// The longest frames in bytes that either side takes, and the most data in one answer.
inline constexpr qsizetype maxRequestFrame = 64 * 1024;
inline constexpr qsizetype maxAnswerFrame = 4 * 1024 * 1024;
inline constexpr qsizetype maxDataBytes = 128 * 1024;

} // namespace scanengine

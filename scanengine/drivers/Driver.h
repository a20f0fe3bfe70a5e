#pragma once

#include "scanengine/Protocol.h"
#include "scanengine/Result.h"
#include "scanengine/drivers/PaperSource.h"
#include "scanengine/imaging/ColorMode.h"

#include <QImage>
#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <stop_token>
#include <variant>

namespace scanengine {

/// What to do when no sheet is left.
enum class WhenEmpty { finish, waitForPaper };

/// How sheets are to be captured.
struct CaptureSettings {
    int dpi = 300; ///< The resolution pages are to have in the end.
    PaperSource source = PaperSource::automatic;
    /// What will be kept of the colours in the end. A device may leave out what won't be: it may
    /// capture grey for grey and for black and white.
    ColorMode colorMode = ColorMode::automatic;
    /// The folder that pages are saved in, absolute.
    QString outputFolder;
};

/// Tells the user in a sentence what a call is waiting for. Called only while a member of the
/// driver or the session is, on its thread.
using TellStatus = std::function<void(const QString &message)>;

/// A sheet has been taken in and is moving; read it next.
struct SheetMoving {};
/// There is no sheet now.
struct NoPaper {};
/// The job was told to stop.
struct Cancelled {};

using FeedResult = std::variant<SheetMoving, NoPaper, Cancelled, Fault>;
using SheetResult = std::variant<QImage, Cancelled, Fault>;

/// One device at work on one stack of paper. A side of paper that gives a page image counts as a
/// sheet, so a two-sided feeder gives two for each leaf.
///
/// Used on one thread, which the calls block until they are done or stopped. Destroying the session
/// leaves the device ready for the next one.
class ScanSession {
public:
    ScanSession() = default;
    virtual ~ScanSession() = default;
    ScanSession(const ScanSession &) = delete;
    ScanSession &operator=(const ScanSession &) = delete;

    /// Takes in the next sheet. After a fault the session is over; after `NoPaper` it may be asked
    /// again. A device that can't tell when there is more paper answers `NoPaper` also when it is
    /// to wait.
    [[nodiscard]] virtual FeedResult feedSheet(WhenEmpty whenEmpty,
                                               const std::stop_token &stop) = 0;

    /// The image of the sheet that is moving, once, at the resolution that it was captured in and
    /// that it states. Its format is 8-bit grey or RGB32. After a fault the session is over.
    [[nodiscard]] virtual SheetResult readSheet(const std::stop_token &stop) = 0;
};

using OpenResult = std::variant<std::unique_ptr<ScanSession>, Cancelled, Fault>;

/// A kind of scanner. Every member may be called on several threads at once.
class Driver {
public:
    Driver() = default;
    virtual ~Driver() = default;
    Driver(const Driver &) = delete;
    Driver &operator=(const Driver &) = delete;

    /// Whether a device with this `id` can only be one of this driver's, there or not.
    [[nodiscard]] virtual bool owns(const QString &id) const = 0;

    /// Looks for the devices that are there now, for ten seconds at most; `stop` ends that early.
    [[nodiscard]] virtual QList<Device> devices(const std::stop_token &stop) = 0;

    /// The devices that are known without looking, at once.
    [[nodiscard]] virtual QList<Device> knownDevices() const = 0;

    /// A session on the device with this `id`, or why there is none. The session keeps `tell`.
    [[nodiscard]] virtual OpenResult open(const QString &id, const CaptureSettings &settings,
                                          const TellStatus &tell, const std::stop_token &stop) = 0;
};

} // namespace scanengine

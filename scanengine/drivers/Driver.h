#pragma once

#include "scanengine/Protocol.h"
#include "scanengine/Result.h"
#include "scanengine/imaging/ColorMode.h"

#include <QImage>
#include <QList>
#include <QString>

#include <memory>
#include <stop_token>
#include <variant>

namespace scanengine {

/// What to do when no sheet is left.
enum class WhenEmpty { finish, waitForPaper };

/// How sheets are to be captured.
struct CaptureSettings {
    int dpi = 300;
    /// What will be kept of the colours in the end. A device may leave out what won't be: it may
    /// capture grey for grey and for black and white.
    ColorMode colorMode = ColorMode::automatic;
    /// The folder that pages are saved in, absolute.
    QString outputFolder;
};

/// A sheet has been taken in and is moving; read it next.
struct SheetMoving {};
/// There is no sheet now.
struct NoPaper {};
/// The job was told to stop.
struct Cancelled {};

using FeedResult = std::variant<SheetMoving, NoPaper, Cancelled, Fault>;

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
    /// again.
    [[nodiscard]] virtual FeedResult feedSheet(WhenEmpty whenEmpty,
                                               const std::stop_token &stop) = 0;

    /// The image of the sheet that is moving, once, at the resolution of the settings, which the
    /// image also states. Its format is 8-bit grey or RGB32. After a fault the session is over.
    [[nodiscard]] virtual Result<QImage> readSheet() = 0;
};

/// A kind of scanner. Every member may be called on several threads at once.
class Driver {
public:
    Driver() = default;
    virtual ~Driver() = default;
    Driver(const Driver &) = delete;
    Driver &operator=(const Driver &) = delete;

    /// The devices that are there now. May take long.
    [[nodiscard]] virtual QList<Device> devices() = 0;

    /// A session on the device with this `id`, or why there is none.
    [[nodiscard]] virtual Result<std::unique_ptr<ScanSession>>
    open(const QString &id, const CaptureSettings &settings) = 0;
};

} // namespace scanengine

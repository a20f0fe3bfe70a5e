#pragma once

#include "scanengine/Protocol.h"
#include "scanengine/Result.h"
#include "scanengine/imaging/PageProcessing.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace scanengine {

/// Makes previews of a calibration sample, one after the other while a slider moves.
///
/// The sample is kept in memory, decoded and with the steps behind it that no slider changes, as
/// long as its file and those steps stay the same. One thread uses an object at a time.
class SamplePreviews {
public:
    /// Makes a finished page of the command's input and saves it at the command's output path, in
    /// place of an older one. The page keeps the size of the input. Blocks until the file is there
    /// and answers its absolute path, or why there is none.
    [[nodiscard]] Result<QString> make(const Command &command);

    /// Gives the memory back.
    void forget() { m_kept.reset(); }

private:
    /// What a prepared page depends on.
    struct Origin {
        QString path;
        qint64 size = 0; ///< Bytes.
        QDateTime changed;
        AutoSwitches steps; ///< Without brightness and contrast.
        ColorMode mode = ColorMode::automatic;

        bool operator==(const Origin &) const = default;
    };
    struct Kept {
        Origin origin;
        PreparedPage page;
    };

    [[nodiscard]] Result<PreparedPage> prepared(const Origin &origin);

    std::optional<Kept> m_kept;
};

} // namespace scanengine

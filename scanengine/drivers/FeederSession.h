#pragma once

#include "scanengine/drivers/Driver.h"
#include "scanengine/drivers/FeederTray.h"

#include <optional>

namespace scanengine {

/// One pass over the files of a feeder's folder.
///
/// A file that is still being written is waited for. One that can't be read stops the session, as
/// a jam would. New files are looked for several times a second: network folders report nothing.
class FeederSession : public ScanSession {
public:
    FeederSession(const QString &folder, const CaptureSettings &settings);

    [[nodiscard]] FeedResult feedSheet(WhenEmpty whenEmpty, const std::stop_token &stop) override;
    [[nodiscard]] SheetResult readSheet(const std::stop_token &stop) override;

private:
    /// A file of which some pages may be left to feed.
    struct OpenFile {
        QString path;
        int pageCount; ///< At least 1.
        int page;      ///< The page that is moving, from 0.
    };

    [[nodiscard]] FeedResult feedFile(const PaperFile &file);

    FeederTray m_tray;
    CaptureSettings m_settings;
    bool m_isFolderReadable;
    std::optional<OpenFile> m_file;
};

} // namespace scanengine

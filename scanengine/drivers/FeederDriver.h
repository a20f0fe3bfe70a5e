#pragma once

#include "scanengine/drivers/Driver.h"

#include <QStringList>

namespace scanengine {

/// Feeders made of folders: the PNG, JPEG and TIFF files of a folder are the sheets in the tray,
/// taken in natural order of their names, a TIFF with several pages page by page.
///
/// Serves scanners that drop their files into a folder, pages that were scanned elsewhere, and
/// trials without a scanner. The files are only ever read. Hidden files and other kinds of files
/// are not paper. Every session starts with the whole stack.
class FeederDriver : public Driver {
public:
    /// The word of this driver, "feeder".
    static const QString driverName;

    /// `folders` are the trays; an empty entry or one given twice adds nothing.
    explicit FeederDriver(const QStringList &folders);

    [[nodiscard]] bool owns(const QString &id) const override;

    /// A tray is listed only while its folder exists.
    [[nodiscard]] QList<Device> devices(const std::stop_token &stop) override;
    [[nodiscard]] QList<Device> knownDevices() const override;

    /// Refuses a tray that is the output folder of the settings: it would feed on its own pages.
    [[nodiscard]] OpenResult open(const QString &id, const CaptureSettings &settings,
                                  const TellStatus &tell, const std::stop_token &stop) override;

private:
    [[nodiscard]] QStringList presentFolders() const;

    QStringList m_folders;
};

} // namespace scanengine

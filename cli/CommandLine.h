#pragma once

#include "model/Models.h"
#include "pipeline/Quad.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <chrono>
#include <optional>
#include <variant>

/// What the user asks for on the command line, as plain values.
namespace velmor {

/// How long to wait for the engine's list of scanners.
struct SearchLimit {
    std::chrono::seconds value{60};
};

/// "velmor" without a command: the window, which isn't one of the commands.
struct WindowRequest {
    enum class Page {
        home,
        homeWithAdvancedPanel, ///< "-uiDrawer", which may stand anywhere among the arguments.
        gallery                ///< "--gallery": all controls, for those who work on them.
    };

    Page page = Page::home;
};

/// "velmor scan". What is absent stays as the tab sets it.
struct ScanRequest {
    DocumentType tab = DocumentType::document;
    std::optional<QString> preset = {};
    std::optional<QUrl> folder = {}; ///< Absolute.
    std::optional<ScanQuality> quality = {};
    std::optional<ColorMode> colorMode = {};
    std::optional<QString> source = {};
    std::optional<QString> deviceId = {};
    bool batch = false;
    std::optional<bool> ocr = {};
    SearchLimit searchLimit = {};

    /// `settings` with what the request says in place of it.
    [[nodiscard]] ScanSettings appliedTo(ScanSettings settings) const;
};

/// "velmor devices".
struct DevicesRequest {
    SearchLimit searchLimit = {};
};

/// "velmor presets".
struct PresetsRequest {};

/// "velmor magic": new levels for saved scans.
struct MagicRequest {
    MagicSettings levels{0, 1, 1};
    bool ocr = true;
    QList<QUrl> files = {}; ///< Absolute; at least one.
};

/// "velmor crop": regions of one page as pages of their own.
struct CropRequest {
    QUrl file = {};         ///< Absolute.
    int page = 0;           ///< From 0; the user counts from 1.
    QList<Quad> boxes = {}; ///< At least one; all usable.
    bool ocr = true;
};

/// "velmor ocr": a new text layer for saved scans.
struct OcrRequest {
    QList<QUrl> files = {}; ///< Absolute; at least one.
};

/// "velmor rotate", "merge" and "split": saved scans as whole files.
struct FilesRequest {
    enum class Operation { rotate, merge, split };

    Operation operation = Operation::rotate;
    std::optional<QUrl> folder = {}; ///< For new files; absolute.
    QList<QUrl> files = {};          ///< Absolute; at least one, two to merge.
};

/// Something to print, and no more: help or the version.
struct PrintRequest {
    QString text;
};

/// A command line that can't be understood, and why.
struct WrongUse {
    QString message;
};

using Request =
    std::variant<WindowRequest, ScanRequest, DevicesRequest, PresetsRequest, MagicRequest,
                 CropRequest, OcrRequest, FilesRequest, PrintRequest, WrongUse>;

/// The request of a command line, the program's name being its first argument.
[[nodiscard]] Request parseCommandLine(const QStringList &arguments, const QString &version);

} // namespace velmor

#pragma once

#include "scanengine/Result.h"

#include <QByteArrayView>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

/// The messages between the engine and the application that started it.
///
/// The application writes commands to the engine's standard input, the engine writes events to its
/// standard output. One message is one JSON object in UTF-8 on one line, closed by a line feed.
/// There are no identifiers: events tell by their word and their order what they answer.
///
///     command        answered by
///     listDevices    devices
///     scan           scanStarted, any number of status and page, then one done or one error
///     calibrate      sample, or error, or when cancelled a done without pages
///     adjust         adjusted, or error
///     cancel         nothing of its own: it ends every scan and calibration that was asked for
///     quit           nothing: the process ends
///
/// Scan, calibrate and adjust are jobs. They run one at a time in the order they came. A line that
/// is no command, and an unknown command word, are answered by an error.
namespace scanengine {

enum class Verb { listDevices, scan, cancel, calibrate, adjust, quit };

/// The image processing that a command asks for.
///
/// crop goes by the paper on each axis. A fixed length, in millimetres, takes its place on an axis
/// whose mode is absent or another word than "auto"; "auto" overrules the length.
struct AutoSwitches {
    bool crop = false;
    std::optional<QString> cropWidthMode;
    std::optional<QString> cropHeightMode;
    std::optional<double> cropFixedWidthMm;
    std::optional<double> cropFixedHeightMm;
    bool deskew = false;
    bool cleanBackground = false;
    bool blankRemoval = false;
    bool autoLevels = false;
    bool ocr = false;
    QString ocrLanguage;
    /// -1000 to 1000, 0 for untouched; values outside are as sent.
    int brightness = 0;
    int contrast = 0;

    bool operator==(const AutoSwitches &) const = default;
};

/// One command as it was sent. Only the types of the values are checked, not their meaning.
struct Command {
    Verb verb = Verb::quit;
    std::optional<QString> deviceId;
    std::optional<QString> input;
    std::optional<QString> driver;
    std::optional<QString> source;
    std::optional<int> dpi;
    std::optional<QString> colorMode;
    bool batchWaitForPaper = false;
    AutoSwitches processing;
    std::optional<QString> outputPath;
    std::optional<QString> outputFormat;
};

/// The command on `line`, without its line feed, or what is wrong with it.
///
/// A key that is null counts as absent, an unknown key is ignored, a whole number may be written
/// as 3.0. A known key of the wrong type spoils a job command; of the other commands nothing but
/// the word is looked at, so that "cancel" and "quit" always get through.
[[nodiscard]] Result<Command> parseCommand(QByteArrayView line);

/// A scanner that can be chosen.
struct Device {
    QString id;     ///< The same in every run of the engine.
    QString name;   ///< Shown to the user.
    QString driver; ///< Word of the driver that the device belongs to.

    bool operator==(const Device &) const = default;
};

/// The events, each as the JSON object of one line. Paths are absolute, page numbers count from 1.
namespace event {

[[nodiscard]] QJsonObject ready(const QString &version);
[[nodiscard]] QJsonObject devices(const QList<Device> &devices);
[[nodiscard]] QJsonObject scanStarted();
[[nodiscard]] QJsonObject status(const QString &message);
[[nodiscard]] QJsonObject page(qsizetype number);
/// `files` are the page images in page order, `file` is where the PDF of them is to be made. With
/// no files the event carries `pages` 0 alone.
[[nodiscard]] QJsonObject done(const QStringList &files, const QString &file);
[[nodiscard]] QJsonObject sample(const QString &file);
[[nodiscard]] QJsonObject adjusted(const QString &file);
[[nodiscard]] QJsonObject error(const QString &message);

} // namespace event

} // namespace scanengine

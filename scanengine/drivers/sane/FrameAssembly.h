#pragma once

#include "scanengine/Result.h"
#include "scanengine/drivers/sane/FrameParameters.h"

#include <QByteArrayView>
#include <QImage>

#include <optional>

namespace scanengine {

/// Makes one page image of the frames that a device sends: one of grey or colours, or three of one
/// colour each. In use: for each frame `begin`, `append` until its data end, `end`; then `take`.
///
/// Takes what really comes before what was announced: a frame that ends short gives a shorter page,
/// data past the announced end are dropped. Holds the image and one line, and for a moment a copy
/// of the image when its height wasn't known; the image is within `maxPixels`. After a fault the
/// page is spoilt.
class FrameAssembly {
public:
    /// The resolution that the image is to state, in dots per inch.
    FrameAssembly(double xDpi, double yDpi);

    /// Another frame begins. A fault if it can't be, or doesn't go with those before it.
    [[nodiscard]] std::optional<Fault> begin(const FrameParameters &parameters);

    /// Data of the frame, in pieces of any size. A fault if the page grows beyond the limits.
    [[nodiscard]] std::optional<Fault> append(QByteArrayView data);

    /// The frame's data have ended. A fault if there is not one whole line.
    [[nodiscard]] std::optional<Fault> end();

    /// Whether every frame of the page has ended.
    [[nodiscard]] bool isComplete() const { return m_isComplete; }

    /// Lines of the current frame that are there. For progress.
    [[nodiscard]] int linesRead() const { return m_line; }

    /// The page, once, when it is complete: 8-bit grey, or RGB32.
    [[nodiscard]] QImage take();

private:
    [[nodiscard]] std::optional<Fault> makeRoom();
    void writeLine(const uchar *line);

    double m_xDpi;
    double m_yDpi;
    FrameParameters m_frame;
    QByteArray m_partial; ///< The beginning of a line.
    QImage m_image;       ///< May have more lines than are in use.
    int m_line = 0;
    int m_height = -1; ///< Lines that all frames have that ended; -1 before the first ended.
    int m_colorsRead = 0;
    bool m_isComplete = false;
};

} // namespace scanengine

#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace scanengine {

/// A grey page of one level, at `dpi`.
[[nodiscard]] QImage greyPage(QSize size, int level, int dpi);

/// `image` as the content of a file of `format`, "png" or "jpeg".
[[nodiscard]] QByteArray encoded(const QImage &image, const char *format);

/// A TIFF file with one grey page of 8x8 pixels for each of `levels`, at 204x98 dpi.
[[nodiscard]] QByteArray greyTiff(const QList<int> &levels);

/// The beginning of a PNG file that claims 60000x60000 pixels.
[[nodiscard]] QByteArray hugePng();

/// Writes a file that has not been changed for a minute.
void putFile(const QString &path, const QByteArray &content);

/// The level in the middle of an image, or -1 if that pixel is coloured.
[[nodiscard]] int greyLevel(const QImage &image);

} // namespace scanengine

#pragma once

#include "pipeline/PageRaster.h"

#include <QByteArray>
#include <QImage>
#include <QString>

namespace velmor {

/// A grey image of noise that is the same each time, so that it compresses like a scan.
[[nodiscard]] QImage noise(QSize size, quint32 seed = 1);

/// A page of `size` points that shows one grey level all over.
[[nodiscard]] PdfPage plainPage(QSizeF size = {200, 300}, int grey = 128);

/// A document of pages whose heights are `heights` points, by which a test tells them apart.
[[nodiscard]] PdfDocument documentOf(const QList<int> &heights);
[[nodiscard]] QList<int> heightsOf(const PdfDocument &document);

/// Writes a whole file, and answers its path; reads one, which must be there.
QString writeFile(const QString &path, const QByteArray &bytes);

[[nodiscard]] QByteArray readFile(const QString &path);

/// The header of a PNG file that claims to be of 60000x60000 pixels, with no pixels behind it.
[[nodiscard]] QByteArray hugePng();

/// Runs a program to its end and answers what it printed; fails the test if it fails.
QByteArray outputOf(const QString &program, const QStringList &arguments);

} // namespace velmor

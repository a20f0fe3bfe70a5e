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

/// Writes the file, and answers its path.
QString writeFile(const QString &path, const QByteArray &bytes);

/// The header of a PNG file that claims to be of `size` pixels, with no pixels behind it.
[[nodiscard]] QByteArray emptyPng(QSize size);

/// Runs a program to its end and answers what it printed; fails the test if it fails.
QByteArray outputOf(const QString &program, const QStringList &arguments);

} // namespace velmor

#pragma once

#include <QList>
#include <QString>

namespace bench {

/// Prints how well pages are found and straightened on `count` scenes of each of the series that
/// `seeds` begin: by kind of scene, by lid, by seed, and for all. With a folder, scenes that went
/// wrong are saved there with what was found drawn in.
void printGeometryQuality(const QList<quint32> &seeds, int count, const QString &pictures);

} // namespace bench

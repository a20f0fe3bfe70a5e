#pragma once

#include <QList>
#include <QString>

namespace bench {

/// Prints what becomes of the tones of at least `count` pages of each series that `seeds` begin:
/// blank pages found and contents taken for blank, ink lost, paper, photographs and colours after
/// cleaning, colour decisions, and black and white; by content, by seed, and for all. With a
/// folder, pages that went wrong are saved there as scanned and as finished.
void printToneQuality(const QList<quint32> &seeds, int count, const QString &pictures);

} // namespace bench

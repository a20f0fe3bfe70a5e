#pragma once

#include <QString>

#include <cstdint>

namespace bench {

/// Prints how well pages are found and straightened on `count` scenes of the series that `seed`
/// begins. With a folder, scenes that went wrong are saved there with what was found drawn in.
void printGeometryQuality(std::uint64_t seed, int count, const QString &pictures);

} // namespace bench

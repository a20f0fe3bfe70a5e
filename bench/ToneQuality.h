#pragma once

#include <QString>

#include <cstdint>

namespace bench {

/// Prints what becomes of the tones of at least `count` pages that `seed` begins: blank pages
/// found and contents taken for blank, ink lost, paper, photographs and colours after cleaning,
/// colour decisions, black and white, and times. With a folder, pages that went wrong are saved
/// there as scanned and as finished.
void printToneQuality(std::uint32_t seed, int count, const QString &pictures);

} // namespace bench

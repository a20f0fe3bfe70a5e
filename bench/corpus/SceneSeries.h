#pragma once

#include "bench/corpus/BedScene.h"

#include <QString>

#include <optional>

namespace corpus {

enum class Lid { black, grey, white };

/// What makes the scenes of a group alike.
enum class SceneKind {
    page,    ///< A sheet of A4, letter or A5 within the bed.
    small,   ///< A receipt, card or narrow strip.
    edge,    ///< A sheet that touches one or two sides of the bed, or reaches past them.
    photo,   ///< A photograph without a margin.
    hard,    ///< Torn, dog-eared or rounded sheets, strong noise, grain, uneven light.
    several, ///< Two or three sheets.
    full,    ///< A sheet as large as the bed or larger: there is no lid to see.
    noLines  ///< Sheets without a sign of where up is, but for their edges.
};

struct SceneCase {
    QString name; ///< Tells what the scene shows.
    SceneKind kind = SceneKind::page;
    Lid lid = Lid::black;
    SheetContent content = SheetContent::text;
    bool hasLines = false;
    BedScene scene;
};

/// Scene `index`, counted from 0, of the endless series that `seed` begins; kinds and lids take
/// turns.
[[nodiscard]] SceneCase sceneCase(std::uint64_t seed, int index, int dpi);

} // namespace corpus

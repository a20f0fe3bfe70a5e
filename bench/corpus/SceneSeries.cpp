#include "bench/corpus/SceneSeries.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <utility>

namespace corpus {
namespace {

constexpr QSizeF a4(210, 297);
constexpr QSizeF letter(215.9, 279.4);
constexpr QSizeF a5(148, 210);
constexpr QSizeF card(85.6, 54);
constexpr QSizeF print(152, 102);

QRgb greyOf(int level)
{
    return qRgb(level, level, level);
}

QRgb lidColor(Lid lid, Random &random)
{
    switch (lid) {
    case Lid::black:
        return greyOf(random.whole(6, 45));
    case Lid::grey:
        return greyOf(random.whole(90, 180));
    case Lid::white:
        break;
    }
    return greyOf(random.whole(234, 250));
}

QRgb paperColor(SceneKind kind, Random &random)
{
    const int level = random.whole(238, 252);
    if (random.chance(kind == SceneKind::small ? 0.3 : 0.12))
        return qRgb(level, level - random.whole(2, 12), level - random.whole(15, 70));
    return greyOf(level);
}

Bed makeBed(SceneKind kind, Lid lid, int dpi, Random &random)
{
    Bed bed;
    // Feeders and large flatbeds see more than A4.
    bed.size =
        kind == SceneKind::full || kind == SceneKind::edge ? QSizeF(216, 297) : QSizeF(230, 330);
    bed.dpi = dpi;
    bed.lid = lidColor(lid, random);
    bed.noise = random.between(0.5, 4);
    bed.dust = random.whole(0, 12);
    bed.falloff = random.chance(0.4) ? random.between(0, 0.08) : 0;
    // A white page on a white lid has no other edge than this.
    bed.shadow = lid == Lid::white ? random.between(10, 45) : random.between(0, 30);
    bed.shadowWidth = random.between(0.5, 2);
    bed.shadowSide = {random.between(-0.25, 0.25), random.between(-0.25, 0.25)};
    if (kind == SceneKind::hard) {
        bed.noise = random.between(4, 9);
        bed.lidGrain = random.between(0, 4);
        bed.falloff = random.between(0.05, 0.2);
        bed.dust = random.whole(20, 60);
    }
    return bed;
}

SheetContent contentFor(SceneKind kind, int turn, Random &random)
{
    static constexpr std::array lines{SheetContent::text,  SheetContent::text,
                                      SheetContent::table, SheetContent::fewLines,
                                      SheetContent::text,  SheetContent::verticalText};
    static constexpr std::array others{SheetContent::blank, SheetContent::drawing,
                                       SheetContent::slopes};
    switch (kind) {
    case SceneKind::small:
        return turn % 3 == 2 ? SheetContent::fewLines : SheetContent::receipt;
    case SceneKind::photo:
        return random.chance(0.5) ? SheetContent::darkPhoto : SheetContent::photo;
    case SceneKind::noLines:
        return others[size_t(turn) % others.size()];
    case SceneKind::full:
        if (turn % 3 == 2)
            return random.chance(0.5) ? SheetContent::photo : SheetContent::slopes;
        break;
    default:
        break;
    }
    return lines[size_t(turn) % lines.size()];
}

QSizeF sizeFor(SceneKind kind, SheetContent content, Random &random)
{
    static constexpr std::array pages{a4, a4, letter, a5};
    switch (kind) {
    case SceneKind::small:
        if (content == SheetContent::receipt)
            return {random.between(48, 80), random.between(80, 260)};
        return random.chance(0.5) ? card : QSizeF(random.between(60, 180), random.between(22, 40));
    case SceneKind::photo:
        return random.chance(0.5) ? print : print.transposed();
    case SceneKind::several:
        return random.chance(0.5) ? QSizeF(105, 148) : card;
    default:
        return pages[size_t(random.whole(0, int(pages.size()) - 1))];
    }
}

/// How much room a sheet of `size` needs when it is turned.
QSizeF turnedSize(QSizeF size, double degrees)
{
    const double radians = std::abs(degrees) * 3.14159265358979 / 180;
    return {size.width() * std::cos(radians) + size.height() * std::sin(radians),
            size.width() * std::sin(radians) + size.height() * std::cos(radians)};
}

/// Anywhere within the bed, at least two millimetres from its sides; in the middle if too large.
QPointF within(QSizeF bed, QSizeF room, Random &random)
{
    const auto along = [&](double length, double needed) {
        const double free = (length - needed) / 2 - 2;
        return length / 2 + (free > 0 ? random.between(-free, free) : 0);
    };
    return {along(bed.width(), room.width()), along(bed.height(), room.height())};
}

/// Up to 10 degrees, but so that the sheet still fits.
double angleFor(SceneKind kind, QSizeF bed, QSizeF size, Random &random)
{
    if (random.chance(0.1))
        return 0;
    double angle = random.between(-10, 10);
    if (kind == SceneKind::edge || kind == SceneKind::full)
        return random.chance(0.5) ? angle / 10 : angle / 4;
    for (int i = 0; i < 20; ++i, angle *= 0.8) {
        const QSizeF room = turnedSize(size, angle) + QSizeF(4, 4);
        if (room.width() < bed.width() && room.height() < bed.height())
            return angle;
    }
    return 0;
}

Outline outlineFor(SceneKind kind, SheetContent content, QSizeF size, Random &random)
{
    if (size == card)
        return Outline::rounded;
    if (kind == SceneKind::hard)
        return std::array{Outline::straight, Outline::dogEared,
                          Outline::torn}[size_t(random.whole(0, 2))];
    return content == SheetContent::receipt && random.chance(0.5) ? Outline::torn
                                                                  : Outline::straight;
}

/// On the bed's left or top side, or past it by a few millimetres.
void pushToEdge(PlacedSheet &placed, QSizeF bed, Random &random)
{
    const QSizeF room = turnedSize(placed.size, placed.angle);
    const double past = random.chance(0.4) ? random.between(0, 3) : 0;
    placed.center.setX(room.width() / 2 - past);
    if (random.chance(0.6))
        placed.center.setY(room.height() / 2 - past);
    else if (room.height() < bed.height())
        placed.center.setY(bed.height() - room.height() / 2 + past);
}

std::vector<PlacedSheet> placeSheets(SceneKind kind, int turn, const Bed &bed, SheetContent content,
                                     Random &random)
{
    std::vector<PlacedSheet> sheets;
    const int count = kind == SceneKind::several ? random.whole(2, 3) : 1;
    for (int i = 0; i < count; ++i) {
        PlacedSheet placed;
        placed.size = sizeFor(kind, content, random);
        if (kind == SceneKind::full)
            placed.size = bed.size + QSizeF(8, 10);
        if (kind == SceneKind::edge)
            placed.size = std::array{a5, letter, QSizeF(210, 148)}[size_t(turn) % 3];
        placed.angle = angleFor(kind, bed.size, placed.size, random);
        placed.center = within(bed.size, turnedSize(placed.size, placed.angle), random);
        if (kind == SceneKind::several) {
            placed.center = {bed.size.width() / 2 + random.between(-25, 25),
                             bed.size.height() * (0.2 + 0.3 * i)};
            placed.size = placed.size.width() > 100 ? QSizeF(140, 80) : placed.size;
        }
        placed.outline = outlineFor(kind, content, placed.size, random);
        placed.sheet = makeSheet(content, placed.size, bed.dpi, paperColor(kind, random), random);
        if (kind == SceneKind::edge)
            pushToEdge(placed, bed.size, random);
        sheets.push_back(std::move(placed));
    }
    return sheets;
}

} // namespace

SceneCase sceneCase(std::uint64_t seed, int index, int dpi)
{
    static constexpr std::array kinds{
        SceneKind::page, SceneKind::small, SceneKind::page,    SceneKind::edge, SceneKind::photo,
        SceneKind::hard, SceneKind::page,  SceneKind::several, SceneKind::full, SceneKind::noLines};
    static constexpr std::array kindNames{"page", "small",   "edge", "photo",
                                          "hard", "several", "full", "noLines"};
    static constexpr std::array lidNames{"black", "grey", "white"};
    Random random(seed * 1'000'003 + std::uint64_t(index));
    SceneCase made;
    const int turn = index / int(kinds.size());
    made.kind = kinds[size_t(index) % kinds.size()];
    made.lid = Lid((index + turn) % 3);
    made.content = contentFor(made.kind, turn + index % 10, random);
    const Bed bed = makeBed(made.kind, made.lid, dpi, random);
    const auto sheets = placeSheets(made.kind, turn, bed, made.content, random);
    made.hasLines = sheets.front().sheet.hasLines && made.kind != SceneKind::several;
    made.scene = renderBed(bed, sheets, random.bits());
    made.name = QStringLiteral("%1 %2 on %3, %4 degrees")
                    .arg(index)
                    .arg(QLatin1StringView(kindNames[size_t(made.kind)]),
                         QLatin1StringView(lidNames[size_t(made.lid)]))
                    .arg(made.scene.angle, 0, 'f', 2);
    return made;
}

} // namespace corpus

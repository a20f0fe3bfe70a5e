#include "pipeline/VisualOrder.h"

#include <unicode/ubidi.h>

#include <algorithm>
#include <memory>
#include <numeric>

namespace velmor {

namespace {

/// The place on paper of each UTF-16 unit; empty if the line can't be ordered.
QList<int32_t> placesOfUnits(const QString &text)
{
    const auto length = static_cast<int32_t>(text.size());
    const std::unique_ptr<UBiDi, decltype(&ubidi_close)> bidi(ubidi_open(), &ubidi_close);
    QList<int32_t> places(length);
    UErrorCode status = U_ZERO_ERROR;
    ubidi_setPara(bidi.get(), reinterpret_cast<const UChar *>(text.utf16()), length,
                  UBIDI_DEFAULT_LTR, nullptr, &status);
    ubidi_getLogicalMap(bidi.get(), places.data(), &status);
    return U_SUCCESS(status) ? places : QList<int32_t>();
}

} // namespace

bool hasRightToLeftText(const QString &text)
{
    return std::ranges::any_of(text, [](QChar character) {
        const QChar::Direction direction = character.direction();
        return direction == QChar::DirR || direction == QChar::DirAL;
    });
}

QList<qsizetype> visualOrder(const QString &text)
{
    const QList<int32_t> places = placesOfUnits(text);
    QList<int32_t> placeOfCharacter;
    for (qsizetype unit = 0; unit < places.size(); ++unit) {
        const bool isSecondHalf =
            unit > 0 && text[unit].isLowSurrogate() && text[unit - 1].isHighSurrogate();
        if (!isSecondHalf)
            placeOfCharacter.append(places[unit]);
    }
    QList<qsizetype> order(text.toUcs4().size());
    std::iota(order.begin(), order.end(), 0);
    if (placeOfCharacter.size() == order.size()) {
        std::ranges::sort(order, {}, [&](qsizetype index) { return placeOfCharacter[index]; });
    }
    return order;
}

} // namespace velmor

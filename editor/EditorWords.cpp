#include "editor/EditorWords.h"

#include <QCoreApplication>

#include <array>
#include <cmath>

namespace velmor::EditorWords {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(velmor::EditorWords)
};

int truncatedPercent(double share)
{
    return static_cast<int>(share * 100);
}

} // namespace

QString instruction(const CropBoxes &boxes)
{
    if (!boxes.pending().isEmpty())
        return Texts::tr("Corner %1/4 — keep clicking").arg(boxes.pending().size());
    const int count = static_cast<int>(boxes.boxes().size());
    if (count == 0)
        return Texts::tr("Click the 4 corners of a document");
    return count == 1 ? Texts::tr("1 box — drag corners to adjust, add more, then Apply")
                      : Texts::tr("%n boxes — drag corners to adjust, add more, then Apply",
                                  nullptr, count);
}

QString instruction(const MagicLevels &levels)
{
    switch (levels.clicksSoFar) {
    case 0:
        return Texts::tr("Click the darkest ink to set the black point — or drag the sliders");
    case 1:
        return Texts::tr("Now click the white paper — or drag the sliders");
    default:
        return Texts::tr("Fine-tune with the sliders, then Apply");
    }
}

QString zoomReadout(double zoom)
{
    return QStringLiteral("%1%").arg(truncatedPercent(zoom));
}

QString pageReadout(int pageIndex, int pageCount)
{
    return QStringLiteral("%1/%2").arg(pageIndex + 1).arg(pageCount);
}

QString levelsReadout(const MagicLevels &levels)
{
    return QStringLiteral("%1–%2")
        .arg(truncatedPercent(levels.blackLum))
        .arg(truncatedPercent(levels.whiteLum));
}

QString gammaReadout(const MagicLevels &levels)
{
    return QStringLiteral("γ %1").arg(levels.gamma, 0, 'f', 2);
}

QString cornerName(BoxCorner corner)
{
    const std::array names{
        Texts::tr("Box %1, top left corner"), Texts::tr("Box %1, top right corner"),
        Texts::tr("Box %1, bottom right corner"), Texts::tr("Box %1, bottom left corner")};
    return names.at(static_cast<size_t>(corner.corner)).arg(corner.box + 1);
}

QString cornerPlace(QPointF place)
{
    return Texts::tr("%1% from the left, %2% from the top")
        .arg(std::lround(place.x() * 100))
        .arg(std::lround(place.y() * 100));
}

QString levelValue(double level)
{
    return QStringLiteral("%1%").arg(std::lround(level * 100));
}

} // namespace velmor::EditorWords

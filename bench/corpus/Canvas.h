#pragma once

#include "bench/corpus/PageArt.h"

#include <QPainter>
#include <QRandomGenerator>

#include <functional>

namespace corpus {

/// Draws content on a sheet and notes in the masks what it was. Lengths in millimetres from the
/// top left.
class Canvas {
public:
    /// Draws with the pen and brush it is given, and with no colours of its own: the same strokes
    /// are drawn on the sheet and on the masks.
    using Strokes = std::function<void(QPainter &)>;
    enum class Mark { ink, coloredInk, wash };

    explicit Canvas(const PageRecipe &recipe);

    [[nodiscard]] double width() const { return m_recipe.sizeMm.width(); }
    [[nodiscard]] double height() const { return m_recipe.sizeMm.height(); }
    [[nodiscard]] QRandomGenerator &random() { return m_random; }
    [[nodiscard]] double uniform(double from, double to);

    /// Strokes whose pen is `widthMm` wide; 0 fills shapes and letters without an outline. Ink
    /// takes from the light that the paper returns; `wash` is ink that only colours.
    void draw(Mark mark, QColor color, double widthMm, const Strokes &strokes);
    /// Light strokes on something dark drawn before.
    void scratch(QColor color, const Strokes &strokes);
    void drawPhotograph(QRectF place, bool isColored);
    /// Takes light away without being content, softened by `blurMm`; `color` is a grey.
    void stain(QColor color, double widthMm, double blurMm, const Strokes &strokes);
    /// Roughens all ink so far as pencil on paper: grains of it are missing.
    void roughen(double missing);

    [[nodiscard]] PageArt finished();

private:
    void paint(QImage &image, QColor color, double widthMm, const Strokes &strokes) const;

    PageRecipe m_recipe;
    QRandomGenerator m_random;
    double m_pixelsPerMm;
    PageArt m_art;
    QImage m_coverage; ///< All 0 between two drawings.
    QImage m_touched;  ///< Everything drawn, flaws and soft edges included.
};

} // namespace corpus

#include "bench/corpus/PageFlaws.h"

#include "bench/corpus/Writing.h"

#include <array>
#include <utility>

namespace corpus {
namespace {

void punch(Canvas &canvas)
{
    const int count = canvas.random().bounded(2) == 0 ? 2 : 4;
    const int level = int(canvas.random().bounded(200));
    for (int i = 0; i < count; ++i) {
        const QPointF at(12, canvas.height() / 2 + (i - (count - 1) / 2.0) * 80);
        canvas.stain(QColor(level, level, level), 0, 0.05,
                     [=](QPainter &painter) { painter.drawEllipse(at, 2.9, 2.9); });
    }
}

void soil(Canvas &canvas)
{
    const int count = 5 + int(canvas.random().bounded(40));
    for (int i = 0; i < count; ++i) {
        const QPointF at(canvas.uniform(0, canvas.width()), canvas.uniform(0, canvas.height()));
        const double radius = canvas.uniform(0.04, 0.25);
        const int level = int(canvas.random().bounded(200));
        canvas.stain(QColor(level, level, level), 0, 0,
                     [=](QPainter &painter) { painter.drawEllipse(at, radius, radius * 0.7); });
    }
}

void fold(Canvas &canvas)
{
    for (int part = 1; part < 3; ++part) {
        const double y = canvas.height() * part / 3 + canvas.uniform(-4, 4);
        const int level = 255 - int(canvas.uniform(8, 26));
        const double slope = canvas.uniform(-1, 1);
        canvas.stain(QColor(level, level, level), 0.8, 0.5, [&](QPainter &painter) {
            painter.drawLine(QPointF(-2, y), QPointF(canvas.width() + 2, y + slope));
        });
    }
}

void staple(Canvas &canvas)
{
    const QPointF at(canvas.uniform(5, 9), canvas.uniform(5, 9));
    canvas.stain(QColor(90, 90, 95), 0.5, 0.05, [=](QPainter &painter) {
        painter.drawLine(at + QPointF(0, 8), at + QPointF(8, 0));
    });
}

void edgeShadow(Canvas &canvas)
{
    const double depth = canvas.uniform(2, 5);
    const int level = 120 + int(canvas.random().bounded(80));
    const bool isLeft = canvas.random().bounded(2) == 0;
    canvas.stain(QColor(level, level, level), depth, depth / 2, [&](QPainter &painter) {
        painter.setPen(QPen(painter.pen().color(), depth, Qt::SolidLine, Qt::FlatCap));
        const double x = isLeft ? -depth / 4 : canvas.width() + depth / 4;
        painter.drawLine(QPointF(x, -20), QPointF(x, canvas.height() + 20));
    });
}

void lidSliver(Canvas &canvas)
{
    const int level = int(canvas.random().bounded(190));
    const double from = canvas.uniform(0, 0.6);
    const double to = canvas.uniform(1, 3);
    canvas.stain(QColor(level, level, level), 0, 0.08, [&](QPainter &painter) {
        painter.drawPolygon(QPolygonF({
            {-2,                 -2  },
            {canvas.width() + 2, -2  },
            {canvas.width() + 2, to  },
            {-2,                 from}
        }));
    });
}

} // namespace

void drawBleedThrough(Canvas &canvas)
{
    const int level = 255 - int(canvas.uniform(8, 26));
    const auto text = paragraphs(canvas, block(canvas), canvas.uniform(9, 12));
    canvas.stain(QColor(level, level, level), 0, canvas.uniform(0.22, 0.35),
                 [&](QPainter &painter) {
                     painter.translate(canvas.width(), 0);
                     painter.scale(-1, 1);
                     text(painter);
                 });
}

void drawFlaws(Canvas &canvas, Flaws wanted)
{
    const std::array<std::pair<Flaw, void (*)(Canvas &)>, 6> flaws{
        {{Flaw::folds, fold},
         {Flaw::holes, punch},
         {Flaw::dust, soil},
         {Flaw::staple, staple},
         {Flaw::edge, edgeShadow},
         {Flaw::sliver, lidSliver}}
    };
    for (const auto &[flaw, add] : flaws) {
        if (wanted & flaw)
            add(canvas);
    }
}

} // namespace corpus

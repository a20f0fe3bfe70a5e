#include "pipeline/PageRenderer.h"

#include "pipeline/RendererThread.h"

#include <QPainter>
#include <QPdfDocument>

namespace velmor {

std::optional<QImage> renderFirstPage(const QByteArray &pdf, QSize size)
{
    QImage paper;
    onRendererThread(pdf, RendererTurn::pictures, [&](QPdfDocument &document) {
        const QImage drawn = document.render(0, size);
        QImage white(size, QImage::Format_RGB32);
        if (drawn.isNull() || white.isNull())
            return;
        white.fill(Qt::white);
        QPainter(&white).drawImage(0, 0, drawn);
        paper = white;
    });
    if (paper.isNull())
        return std::nullopt;
    return paper;
}

} // namespace velmor

#pragma once

#include <QByteArray>

#include <functional>

class QPdfDocument;

namespace velmor {

/// What the renderer's thread does first when it has a choice.
enum class RendererTurn { pictures, questions };

/// Opens the PDF file `pdf` in the renderer and gives it to `work`, unless it can't be opened or
/// has no page.
///
/// The renderer, PDFium, keeps state for the whole process, so all of its work is done on one
/// thread of its own: this waits for the turn and for the end of `work`. Never call it on the main
/// thread, nor from `work`. Want of memory ends `work` early and is not told. For the files of
/// this folder that use the renderer.
void onRendererThread(const QByteArray &pdf, RendererTurn turn,
                      const std::function<void(QPdfDocument &)> &work);

} // namespace velmor

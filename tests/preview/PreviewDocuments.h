#pragma once

#include "preview/PreviewDocument.h"

#include <QStringList>

namespace velmor {

/// A document of pages of 200x300 points. Each page's text has one line for each of its lines here,
/// 30 points apart; without any it's a grey page.
[[nodiscard]] PdfDocument documentWith(const QList<QStringList> &pages);

/// The same, opened for a preview.
[[nodiscard]] std::shared_ptr<PreviewDocument> previewOf(const QList<QStringList> &pages);

} // namespace velmor

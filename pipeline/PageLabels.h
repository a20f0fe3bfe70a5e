#pragma once

#include <QList>

class QPDF;

namespace velmor {

/// Labels the pages of `file` behind the first `before` like the pages of `source` with the indexes
/// `copied`, as which they were appended. Where neither file states labels, readers count the
/// pages, and no entry is made. May throw what QPDF throws.
void appendLabels(QPDF &file, int before, QPDF &source, const QList<int> &copied);

/// Makes room for the labels of a page that was inserted at the zero-based `index` into `file`: it
/// counts on from the page before, and what begins behind it still begins with the same page.
/// Damaged labels stay as they are.
void makeRoomForLabel(QPDF &file, int index);

} // namespace velmor

#pragma once

#include "pipeline/PdfDocument.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

namespace velmor {

/// What a page handle stands for. For the files of this folder that use QPDF themselves.
struct PdfPage::Data {
    std::shared_ptr<QPDF> file; ///< Owns `object`; declared first, so it is destroyed last.
    QPDFObjectHandle object;    ///< An indirect page dictionary.
};

/// A new document without pages, which reports its warnings by their number alone. Throws only for
/// want of memory.
[[nodiscard]] std::shared_ptr<QPDF> emptyFile();

} // namespace velmor

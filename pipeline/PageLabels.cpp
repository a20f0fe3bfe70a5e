#include "pipeline/PageLabels.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageLabelDocumentHelper.hh>

#include <vector>

namespace velmor {

void appendLabels(QPDF &file, int before, QPDF &source, const QList<int> &copied)
{
    QPDFPageLabelDocumentHelper labels(file);
    QPDFPageLabelDocumentHelper sourceLabels(source);
    if (!labels.hasPageLabels() && !sourceLabels.hasPageLabels())
        return;
    std::vector<QPDFObjectHandle> entries;
    const auto add = [&entries](QPDFPageLabelDocumentHelper &from, int index, int place) {
        QPDFObjectHandle label = from.getLabelForPage(index);
        if (!label.isDictionary()) {
            label = QPDFObjectHandle::newDictionary();
            label.replaceKey("/S", QPDFObjectHandle::newName("/D"));
            label.replaceKey("/St", QPDFObjectHandle::newInteger(index + 1));
        }
        entries.push_back(QPDFObjectHandle::newInteger(place));
        entries.push_back(label);
    };
    int place = 0;
    for (; place < before; ++place)
        add(labels, place, place);
    for (const int index : copied)
        add(sourceLabels, index, place++);
    QPDFObjectHandle tree = QPDFObjectHandle::newDictionary();
    tree.replaceKey("/Nums", QPDFObjectHandle::newArray(entries));
    file.getRoot().replaceKey("/PageLabels", tree);
}

} // namespace velmor

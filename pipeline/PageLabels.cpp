#include "pipeline/PageLabels.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFNumberTreeObjectHelper.hh>
#include <qpdf/QPDFPageLabelDocumentHelper.hh>

#include <exception>
#include <vector>

namespace velmor {

namespace {

/// `entries` are a page's index and the label that begins there, in turn.
void setLabels(QPDF &file, const std::vector<QPDFObjectHandle> &entries)
{
    QPDFObjectHandle tree = QPDFObjectHandle::newDictionary();
    tree.replaceKey("/Nums", QPDFObjectHandle::newArray(entries));
    file.getRoot().replaceKey("/PageLabels", tree);
}

} // namespace

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
    setLabels(file, entries);
}

void makeRoomForLabel(QPDF &file, int index)
{
    try {
        if (!QPDFPageLabelDocumentHelper(file).hasPageLabels())
            return;
        const QPDFNumberTreeObjectHelper tree(file.getRoot().getKey("/PageLabels"), file);
        std::vector<QPDFObjectHandle> entries;
        for (const auto &[first, label] : tree.getAsMap()) {
            entries.push_back(QPDFObjectHandle::newInteger(first < index ? first : first + 1));
            entries.push_back(label);
        }
        setLabels(file, entries);
    } catch (const std::exception &) {
        // The page stands where it should; at worst it is called by another number.
    }
}

} // namespace velmor

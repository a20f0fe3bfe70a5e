#include "model/PageEdits.h"

#include "model/ScanFiles.h"
#include "pipeline/RawStore.h"

#include <QCoreApplication>

namespace velmor::PageEdits {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(velmor::PageEdits)
};

bool put(PdfDocument &document, int index, const QList<PdfPage> &pages)
{
    if (!document.replacePage(index, pages.first()))
        return false;
    for (int further = 1; further < pages.size(); ++further) {
        if (!document.insertPage(pages[further], index + further))
            return false;
    }
    return true;
}

QString notPut()
{
    return Texts::tr("Not applied — the document can't take the new pages");
}

} // namespace

Outcome putCroppedPages(AppModel &model, PdfDocument &document, int index,
                        const QList<PdfPage> &pages, const QUrl &file)
{
    if (pages.isEmpty())
        return {};
    if (!put(document, index, pages))
        return {.isWritten = false, .message = notPut()};
    if (!model.writeWithBackup(document, file))
        return {.isWritten = false, .message = ScanFiles::notWritable()};
    RawStore::remove(file);
    const int count = static_cast<int>(pages.size());
    const QString message =
        count > 1 ? Texts::tr("Cropped into %n pages", nullptr, count) : Texts::tr("Cropped");
    return {.isWritten = true, .message = message};
}

Outcome putLevelledPage(AppModel &model, PdfDocument &document, int index, const PdfPage &page,
                        const QUrl &file)
{
    if (!document.replacePage(index, page))
        return {.isWritten = false, .message = notPut()};
    if (!model.writeWithBackup(document, file))
        return {.isWritten = false, .message = ScanFiles::notWritable()};
    const QString message =
        Texts::tr("Magic applied to page %1 — paintbrush copies it to other scans, Ctrl+Z undoes")
            .arg(index + 1);
    return {.isWritten = true, .message = message};
}

} // namespace velmor::PageEdits

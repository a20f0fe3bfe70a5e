// velmor_assemble FOLDER PDF
//
// Makes a PDF without text of the folder's PNG files, as a scan does once the engine has delivered
// its pages. Prints the seconds from the first page's file to the written PDF.

#include "bench/PageFolder.h"
#include "pipeline/VisionOCR.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QElapsedTimer>
#include <QSaveFile>

using namespace velmor;

namespace {

constexpr double pageDpi = 300;

bool save(const PdfDocument &document, const QString &path)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && document.write(file) && file.commit();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList pages = bench::pageFiles(application.arguments().value(1));
    const QString pdf = application.arguments().value(2);

    QElapsedTimer clock;
    clock.start();
    const bool written = QCoro::waitFor(VisionOCR::assemblePdf(
        pages, pageDpi, false, [pdf](const PdfDocument &document) { return save(document, pdf); },
        [](int, int) {}));
    if (!written)
        return bench::fail("the PDF couldn't be made");
    return bench::report(clock, pages);
}

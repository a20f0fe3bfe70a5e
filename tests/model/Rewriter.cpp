// Writes one PDF over and over, to be killed in the middle of it.

#include "model/AppModel.h"
#include "tests/pipeline/TestPages.h"

#include <QCoreApplication>

#include <cstdio>

using namespace velmor;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QUrl target = QUrl::fromLocalFile(QCoreApplication::arguments().value(1));
    AppModel model;
    const auto page =
        PageRaster::makePage(losslessImage(noise({400, 400})).value(), {100, 300}, {});
    PdfDocument document;
    for (int index = 0; index < 20; ++index) {
        if (!document.insertPage(*page, index))
            return 1;
    }
    std::puts("writing");
    std::fflush(stdout);
    while (model.writeWithBackup(document, target)) {
    }
    return 1;
}

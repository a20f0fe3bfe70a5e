// Writes one PDF over and over, to be killed in the middle of it.

#include "model/AppModel.h"
#include "pipeline/PageRaster.h"

#include <QCoreApplication>

#include <cstdio>

using namespace velmor;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QUrl target = QUrl::fromLocalFile(QCoreApplication::arguments().value(1));
    AppModel model;
    QImage image(400, 400, QImage::Format_Grayscale8);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.scanLine(y)[x] = static_cast<uchar>((x * 31 + y * 17) ^ (x * y));
    }
    const auto page = PageRaster::makePage(losslessImage(image).value(), {100, 300}, {});
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

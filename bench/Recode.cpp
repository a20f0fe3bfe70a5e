// velmor_recode FOLDER
//
// Decodes each PNG of the folder and encodes it as a JPEG in memory, one after the other: the least
// work that any program has with the pages. Prints the seconds.

#include "bench/PageFolder.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QImage>

namespace {

constexpr int jpegQuality = 85;

bool recode(const QString &path)
{
    QBuffer jpeg;
    return QImage(path).save(&jpeg, "JPEG", jpegQuality);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList pages = bench::pageFiles(application.arguments().value(1));

    QElapsedTimer clock;
    clock.start();
    for (const QString &page : pages) {
        if (!recode(page))
            return bench::fail("a page couldn't be decoded or encoded");
    }
    return bench::report(clock, pages);
}

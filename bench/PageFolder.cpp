#include "bench/PageFolder.h"

#include <QDir>

#include <cstdio>
#include <cstdlib>

namespace bench {

QStringList pageFiles(const QString &folder)
{
    QStringList paths;
    const QDir directory(folder);
    for (const QString &name :
         directory.entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name))
        paths.append(directory.filePath(name));
    return paths;
}

int fail(const char *what)
{
    std::fprintf(stderr, "%s\n", what);
    return EXIT_FAILURE;
}

int report(const QElapsedTimer &clock, const QStringList &pages)
{
    if (pages.isEmpty())
        return fail("there are no pages in the folder");
    std::printf("%.4f\n", static_cast<double>(clock.nsecsElapsed()) / 1e9);
    return EXIT_SUCCESS;
}

} // namespace bench

#include "shell/Installation.h"

#include "shell/AppInfo.h"

#include <QCoreApplication>

namespace velmor {

namespace {

struct Advice {
    Q_DECLARE_TR_FUNCTIONS(Advice)
};

} // namespace

QString updateAdvice(const Installation &installation)
{
    switch (installation.kind) {
    case Installation::Kind::flatpak:
        return Advice::tr("This copy was installed as a Flatpak. To update it, run:\n\n%1")
            .arg(QStringLiteral("flatpak update ") + AppInfo::applicationId);
    case Installation::Kind::appImage:
        return Advice::
            tr("This copy is an AppImage:\n\n%1\n\nTo update it, put a newer file in its place.")
                .arg(installation.name);
    case Installation::Kind::debianPackage:
        return Advice::tr("This copy was installed as the package %1. If that came from a package "
                          "source, this updates it:\n\n%2\n\nIf it came as a file, install a newer "
                          "one in the same way.")
            .arg(installation.name,
                 QStringLiteral("sudo apt update\nsudo apt install --only-upgrade ") +
                     installation.name);
    case Installation::Kind::files:
        break;
    }
    return Advice::
        tr("This copy belongs to no package:\n\n%1\n\nTo update it, build or copy the new version "
           "in the same way as this one.")
            .arg(installation.name);
}

Installation installationFromSearch(const QString &answer, const QString &path)
{
    // "velmor: /usr/bin/velmor", or "velmor:amd64: /usr/bin/velmor"; also, on a line of its own,
    // "diversion by …", which names no package of the file.
    for (const QString &line : answer.split(u'\n', Qt::SkipEmptyParts)) {
        if (line.endsWith(QStringLiteral(": ") + path) && !line.startsWith(u"diversion by "))
            return {Installation::Kind::debianPackage, line.section(u':', 0, 0)};
    }
    return {Installation::Kind::files, path};
}

} // namespace velmor

#include "controls/InterfaceFont.h"

namespace velmor {

namespace {

/// Qt's answer on a desktop that it doesn't know, and the names that stand for any such font.
bool isStandIn(const QString &family)
{
    for (const auto *name : {"Helvetica", "Sans Serif", "Sans", "sans-serif", "system-ui"}) {
        if (family.compare(QLatin1String(name), Qt::CaseInsensitive) == 0)
            return true;
    }
    return family.isEmpty();
}

bool namedByDesktop(const QString &family)
{
    return qEnvironmentVariableIsSet("XDG_CURRENT_DESKTOP") && !isStandIn(family) &&
           QFontDatabase::hasFamily(family);
}

} // namespace

QFont interfaceFont(const QFont &system)
{
    QFont font = system;
    const auto inter = QStringLiteral("Inter");
    if (!namedByDesktop(font.family()) && QFontDatabase::hasFamily(inter))
        font.setFamily(inter);
    return font;
}

} // namespace velmor

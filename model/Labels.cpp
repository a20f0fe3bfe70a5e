#include "model/Labels.h"

#include <QCoreApplication>

namespace velmor {

namespace {

QString translated(const QString &title)
{
    return QCoreApplication::translate("Models", title.toUtf8().constData());
}

} // namespace

QString label(DocumentType type)
{
    return translated(title(type));
}

QString label(ColorMode mode)
{
    return translated(title(mode));
}

QString label(ScanQuality quality)
{
    return translated(title(quality));
}

} // namespace velmor

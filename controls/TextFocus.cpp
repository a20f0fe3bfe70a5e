#include "controls/TextFocus.h"

#include <QGuiApplication>
#include <QInputMethodQueryEvent>

namespace velmor {

bool textHasFocus()
{
    QObject *focus = QGuiApplication::focusObject();
    if (!focus)
        return false;
    QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImReadOnly);
    QCoreApplication::sendEvent(focus, &query);
    return query.value(Qt::ImEnabled).toBool() && !query.value(Qt::ImReadOnly).toBool();
}

} // namespace velmor

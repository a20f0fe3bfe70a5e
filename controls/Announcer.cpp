#include "controls/Announcer.h"

#include <QAccessible>

namespace velmor {

void Announcer::setItem(QQuickItem *item)
{
    if (m_item == item)
        return;
    m_item = item;
    Q_EMIT itemChanged();
}

void Announcer::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    Q_EMIT textChanged();
    if (!m_item || m_text.isEmpty() || !QAccessible::isActive())
        return;
    for (const QAccessible::Event what :
         {QAccessible::NameChanged, QAccessible::ObjectShow, QAccessible::Alert}) {
        QAccessibleEvent event(m_item, what);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace velmor

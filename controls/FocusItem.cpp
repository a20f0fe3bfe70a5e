#include "controls/FocusItem.h"

namespace velmor {

FocusItem::FocusItem(QQuickItem *parent) : QQuickItem(parent)
{
    setActiveFocusOnTab(true);
}

void FocusItem::focusInEvent(QFocusEvent *event)
{
    QQuickItem::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    setVisualFocus(reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                   reason == Qt::ShortcutFocusReason);
}

void FocusItem::focusOutEvent(QFocusEvent *event)
{
    QQuickItem::focusOutEvent(event);
    setVisualFocus(false);
}

void FocusItem::setVisualFocus(bool visualFocus)
{
    if (visualFocus == m_visualFocus)
        return;
    m_visualFocus = visualFocus;
    Q_EMIT visualFocusChanged();
}

} // namespace velmor

#include "browser/KeyCommands.h"

#include "controls/TextFocus.h"

#include <QGuiApplication>
#include <QQuickWindow>

namespace velmor {

namespace {

constexpr QChar deleteCharacter(0x7F);

/// The key to the left of the line's end, or whatever else types its character. The forward delete
/// key types it too here, but is another key.
bool isDelete(const QKeyEvent &press)
{
    return press.key() == Qt::Key_Backspace ||
           (press.key() != Qt::Key_Delete && press.text() == deleteCharacter);
}

} // namespace

std::optional<QString> keyCommand(const QKeyEvent &press)
{
    const Qt::KeyboardModifiers modifiers = press.modifiers();
    if (modifiers.testFlag(Qt::ControlModifier) && press.key() == Qt::Key_Z)
        return QStringLiteral("undo");
    if (modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return {};
    if (isDelete(press))
        return QStringLiteral("delete");
    switch (press.key()) {
    case Qt::Key_R:
        return QStringLiteral("r");
    case Qt::Key_M:
        return QStringLiteral("m");
    case Qt::Key_S:
        return QStringLiteral("s");
    case Qt::Key_C:
        return QStringLiteral("c");
    case Qt::Key_W:
        return QStringLiteral("w");
    default:
        return {};
    }
}

KeyCommands::KeyCommands(QQuickItem *parent) : QQuickItem(parent)
{
    qGuiApp->installEventFilter(this);
}

bool KeyCommands::eventFilter(QObject *receiver, QEvent *event)
{
    // The items of the window get the same event after it.
    if (event->type() != QEvent::KeyPress || !window() || receiver != window())
        return false;
    if (!m_isEnabled || textHasFocus())
        return false;
    const auto &press = *static_cast<QKeyEvent *>(event);
    const std::optional<QString> command = keyCommand(press);
    if (!command)
        return false;
    if (!press.isAutoRepeat())
        Q_EMIT key(*command);
    return true;
}

} // namespace velmor

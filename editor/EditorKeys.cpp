#include "editor/EditorKeys.h"

#include "controls/TextFocus.h"

#include <QGuiApplication>
#include <QQuickWindow>

namespace velmor {

namespace {

const QString deleteName = QStringLiteral("delete");

} // namespace

std::optional<QString> editorKey(const QKeyEvent &press)
{
    const Qt::KeyboardModifiers modifiers = press.modifiers();
    if (modifiers.testFlag(Qt::ControlModifier) && press.key() == Qt::Key_Z)
        return QStringLiteral("undo");
    if (modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return {};
    switch (press.key()) {
    case Qt::Key_Escape:
        return QStringLiteral("escape");
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return QStringLiteral("return");
    case Qt::Key_Backspace:
        return deleteName;
    default:
        return {};
    }
}

EditorKeys::EditorKeys(QQuickItem *parent) : QQuickItem(parent)
{
    qGuiApp->installEventFilter(this);
}

void EditorKeys::setEditor(PageEditor *editor)
{
    m_editor = editor;
    Q_EMIT editorChanged();
}

bool EditorKeys::eventFilter(QObject *receiver, QEvent *event)
{
    // The items of the window get the same event after it.
    if (event->type() != QEvent::KeyPress || !window() || receiver != window())
        return false;
    if (!m_editor || textHasFocus())
        return false;
    const auto &press = *static_cast<QKeyEvent *>(event);
    const std::optional<QString> name = editorKey(press);
    if (!name)
        return false;
    if (press.isAutoRepeat() && name != deleteName)
        return true;
    return m_editor->handleKey(*name);
}

} // namespace velmor

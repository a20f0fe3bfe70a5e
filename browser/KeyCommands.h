#pragma once

#include <QKeyEvent>
#include <QQuickItem>

#include <optional>

namespace velmor {

/// The command that a key press stands for: "undo", "delete", "r", "m", "s", "c" or "w"; nothing
/// for a key that isn't for the browser. Ctrl is the command key.
[[nodiscard]] std::optional<QString> keyCommand(const QKeyEvent &press);

/// Turns key presses into commands, for the screen that it lies behind.
///
/// It has no content. It hears every key press of the application, and takes those that its own
/// window receives: not while `isEnabled` is false, and not while a text field has the focus.
/// What it takes goes nowhere else. A key that is held down is one command. Main thread.
class KeyCommands : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isEnabled MEMBER m_isEnabled NOTIFY isEnabledChanged)

public:
    explicit KeyCommands(QQuickItem *parent = nullptr);

    bool eventFilter(QObject *receiver, QEvent *event) override;

Q_SIGNALS:
    void isEnabledChanged();
    /// A command, by its name.
    void key(const QString &name);

private:
    bool m_isEnabled = true;
};

} // namespace velmor

#pragma once

#include "editor/PageEditor.h"

#include <QKeyEvent>
#include <QPointer>
#include <QQuickItem>

#include <optional>

namespace velmor {

/// What a key press is called by `PageEditor::handleKey`: "escape", "undo", "return" or "delete";
/// nothing for a key that isn't for the editor. Ctrl is the command key.
[[nodiscard]] std::optional<QString> editorKey(const QKeyEvent &press);

/// Gives an editor the keys that are for it, whatever has the focus in its window.
///
/// It has no content. It hears every key press of the application, and takes those that its own
/// window receives and the editor consumes, but none while a text field has the focus. A key that
/// is held counts as one press, but for "delete". Main thread.
class EditorKeys : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::PageEditor *editor READ editor WRITE setEditor NOTIFY editorChanged REQUIRED)

public:
    explicit EditorKeys(QQuickItem *parent = nullptr);

    [[nodiscard]] PageEditor *editor() const { return m_editor; }
    void setEditor(PageEditor *editor);

    bool eventFilter(QObject *receiver, QEvent *event) override;

Q_SIGNALS:
    void editorChanged();

private:
    QPointer<PageEditor> m_editor;
};

} // namespace velmor

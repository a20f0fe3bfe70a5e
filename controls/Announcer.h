#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// Has screen readers speak a text that changes without the user's doing.
///
/// `item` is what shows the text: an accessible item that has the role of an alert or a
/// notification and the text for its name already. Every new text that isn't empty is announced, in
/// the three ways that readers listen for: as a new name, as an alert, and as something that
/// appeared.
class Announcer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *item READ item WRITE setItem NOTIFY itemChanged)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem *item() const { return m_item; }
    void setItem(QQuickItem *item);
    [[nodiscard]] const QString &text() const { return m_text; }
    void setText(const QString &text);

Q_SIGNALS:
    void itemChanged();
    void textChanged();

private:
    QPointer<QQuickItem> m_item;
    QString m_text;
};

} // namespace velmor

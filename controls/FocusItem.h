#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// An item for the keyboard whose accessible role is its owner's to choose, which that of a control
/// isn't.
///
/// `visualFocus` tells, as that of a control does, that it has the focus and got it by the
/// keyboard: only then a ring around it is of use. Tab comes to it.
class FocusItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool visualFocus READ visualFocus NOTIFY visualFocusChanged)

public:
    explicit FocusItem(QQuickItem *parent = nullptr);

    [[nodiscard]] bool visualFocus() const { return m_visualFocus; }

Q_SIGNALS:
    void visualFocusChanged();

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void setVisualFocus(bool visualFocus);

    bool m_visualFocus = false;
};

} // namespace velmor

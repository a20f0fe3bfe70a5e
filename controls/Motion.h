#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

class QQmlEngine;

namespace velmor {

/// Whether things may move: one for each QML engine, on the main thread.
///
/// `reduced` follows the desktop's wish for less motion, first from its settings files and, as
/// soon as it answers, from its settings service; nothing waits for the answer. Springs and slides
/// then jump; fades stay. A value that was set holds against the desktop.
class Motion : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool reduced READ isReduced WRITE setReduced NOTIFY reducedChanged)

public:
    explicit Motion(QObject *parent = nullptr);

    /// The one of `engine`, which owns it; null if the engine doesn't know the module.
    [[nodiscard]] static Motion *of(QQmlEngine &engine);

    [[nodiscard]] bool isReduced() const { return m_reduced; }
    void setReduced(bool reduced);

Q_SIGNALS:
    void reducedChanged();

private:
    void take(bool reduced);

    bool m_reduced = false;
    bool m_set = false; ///< By our program, not by the desktop.
};

} // namespace velmor

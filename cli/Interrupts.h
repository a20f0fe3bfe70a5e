#pragma once

#include <QObject>

namespace velmor {

/// Turns the interrupt and termination signals of the process into a signal of its event loop.
/// The second one ends the process at once, with the code that shells give to an interrupt.
///
/// One at a time in a process; on the main thread.
class Interrupts : public QObject {
    Q_OBJECT

public:
    explicit Interrupts(QObject *parent = nullptr);
    ~Interrupts() override;
    Q_DISABLE_COPY_MOVE(Interrupts)

Q_SIGNALS:
    void interrupted();
};

} // namespace velmor

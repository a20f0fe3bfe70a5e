#pragma once

#include "model/AppModel.h"
#include "windows/CardWindow.h"

#include <QObject>
#include <QPointer>
#include <QQmlEngine>

namespace velmor {

/// Where a card of size `sheet` opens over the card `parent`: in the middle of its width, a little
/// below its top, and as far within `screen`, if that isn't empty, as it goes.
[[nodiscard]] QPoint sheetPosition(const QSize &sheet, const QRect &parent, const QRect &screen);

/// Shows the calibration screen over the main window, in a window of its own, for as long as the
/// model says so.
///
/// The window is made for each showing. The keyboard goes to it, and back to the main window when
/// it closes. Main thread.
class CalibrationSheet : public QObject {
    Q_OBJECT

public:
    /// All three outlive this.
    CalibrationSheet(AppModel &model, QQmlEngine &engine, CardWindow &parent);
    ~CalibrationSheet() override;

    /// Null while it is closed.
    [[nodiscard]] CardWindow *window() const { return m_window; }

private:
    void follow();
    void open();
    void close();

    AppModel &m_model;
    QQmlEngine &m_engine;
    CardWindow &m_parent;
    QPointer<CardWindow> m_window;
};

} // namespace velmor

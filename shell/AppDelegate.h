#pragma once

#include "browser/GalleryPanel.h"
#include "model/AppModel.h"
#include "shell/CalibrationSheet.h"
#include "shell/GlobalMenu.h"
#include "shell/KeyableMainWindow.h"
#include "shell/UpdateChecker.h"

#include <QHash>
#include <QPointer>
#include <QQmlEngine>

#include <memory>

namespace velmor {

/// The application in its window: owns the one model, the main window and the engine of its
/// screens, and does what the application's menu offers.
///
/// Made after the QGuiApplication and gone before it; the model is made first of all. Main thread.
class AppDelegate : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("There is one, made by the program.")

public:
    /// Whether the panel of all settings is open at the start.
    enum class AdvancedPanel { closed, open };

    explicit AppDelegate(QObject *parent = nullptr);
    ~AppDelegate() override;

    /// Opens the window, and starts the engine behind it. An engine that doesn't start keeps no
    /// window closed. False if the window's description can't be loaded.
    [[nodiscard]] bool applicationDidFinishLaunching(AdvancedPanel panel);

    [[nodiscard]] AppModel &model() { return m_model; }
    /// Null before the launch.
    [[nodiscard]] KeyableMainWindow *window() const { return m_window.get(); }

    /// "About VELMOR".
    Q_INVOKABLE void showAbout();
    /// "Check for Updates…".
    Q_INVOKABLE void checkForUpdates();
    /// Ends the application, and with it the engine.
    Q_INVOKABLE void quit();

private:
    [[nodiscard]] std::unique_ptr<KeyableMainWindow> makeWindow();
    void attachDrawer();
    void applicationWillTerminate();
    void showDialog(const QString &file, const QVariantMap &properties);
    void showAdvice(const QString &advice);

    AppModel m_model;
    QQmlEngine m_engine;
    UpdateChecker m_updateChecker;
    std::unique_ptr<KeyableMainWindow> m_window;
    std::unique_ptr<GlobalMenu> m_menu;
    std::unique_ptr<CalibrationSheet> m_calibrationSheet;
    QHash<QString, QPointer<QQuickWindow>> m_dialogs; ///< Those open, by their files.
};

} // namespace velmor

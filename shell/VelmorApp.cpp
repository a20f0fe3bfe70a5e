#include "shell/VelmorApp.h"

#include "cli/ExitCode.h"
#include "cli/Interrupts.h"
#include "cli/TerminalText.h"
#include "controls/InterfaceFont.h"
#include "i18n/Translations.h"
#include "shell/AppDelegate.h"
#include "shell/AppInfo.h"
#include "shell/FolderPortal.h"
#include "shell/WaylandSeat.h"

#include <QGuiApplication>
#include <QIcon>
#include <QOpenGLContext>
#include <QQmlApplicationEngine>
#include <QSessionManager>

#include <unistd.h>

namespace velmor {

namespace {

constexpr int windowFailed = 1;

/// Qt ends the process with a crash if it finds no display, and has said much by then. This makes
/// one sentence and an exit code of it.
void reportNoDisplay(QtMsgType type, const QMessageLogContext &, const QString &)
{
    if (type != QtFatalMsg)
        return;
    printErrorLine("velmor: There is no display to open the window on. Without one, use the "
                   "commands; try “velmor --help”.");
    _exit(static_cast<int>(ExitCode::noDisplay));
}

/// Qt looks for X11 first, also where there is Wayland alone.
void chooseWindowSystem()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
        !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "wayland");
}

/// Qt 6.4's own input method for Wayland crashes where there is no seat, as soon as a text asks for
/// the way it is written. Which one it takes is decided when the application object is made.
void avoidInputMethodWithoutSeat()
{
    constexpr auto inputMethod = "QT_IM_MODULE";
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (!qEnvironmentVariableIsSet(inputMethod) &&
        (platform.isEmpty() || platform.startsWith("wayland")) && isWaylandWithoutSeat())
        qputenv(inputMethod, "compose");
}

/// A display without OpenGL has pictures drawn by the processor.
void chooseRenderer()
{
    if (qEnvironmentVariableIsSet("QT_QUICK_BACKEND"))
        return;
    QOpenGLContext context;
    if (!context.create())
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

std::unique_ptr<QGuiApplication> makeApplication(int &argc, char **argv)
{
    chooseWindowSystem();
    avoidInputMethodWithoutSeat();
    // The other way, scalable pictures of the letters, makes them softer and medium ones too light.
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    // A translucent window can't become one later.
    QQuickWindow::setDefaultAlphaBuffer(true);
    QGuiApplication::setDesktopFileName(AppInfo::applicationId);
    const QtMessageHandler handler = qInstallMessageHandler(reportNoDisplay);
    std::unique_ptr<QGuiApplication> application;
    {
        const FolderPortalChoice dialogs;
        application = std::make_unique<QGuiApplication>(argc, argv);
    }
    qInstallMessageHandler(handler);

    QCoreApplication::setApplicationName(QStringLiteral("Velmor"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELMOR_VERSION));
    installTranslations(*application);
    QGuiApplication::setFont(interfaceFont());
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/velmor/brand/velmor.svg")));
    // The window's state isn't restored: the desktop's next session starts without it.
    QObject::connect(
        application.get(), &QGuiApplication::saveStateRequest, application.get(),
        [](QSessionManager &session) { session.setRestartHint(QSessionManager::RestartNever); },
        Qt::DirectConnection);
    return application;
}

int runHome(AppDelegate::AdvancedPanel panel)
{
    AppDelegate delegate;
    const Interrupts interrupts;
    QObject::connect(&interrupts, &Interrupts::interrupted, &delegate, &AppDelegate::quit);
    if (!delegate.applicationDidFinishLaunching(panel))
        return windowFailed;
    return QGuiApplication::exec();
}

int runGallery()
{
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(":/qt/qml"));
    engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Velmor/Controls/Gallery.qml")));
    if (engine.rootObjects().isEmpty())
        return windowFailed;
    const Interrupts interrupts;
    QObject::connect(&interrupts, &Interrupts::interrupted, qGuiApp, &QCoreApplication::quit);
    return QGuiApplication::exec();
}

} // namespace

int runVelmorApp(int &argc, char **argv, const WindowRequest &request)
{
    const std::unique_ptr<QGuiApplication> application = makeApplication(argc, argv);
    chooseRenderer();
    switch (request.page) {
    case WindowRequest::Page::gallery:
        return runGallery();
    case WindowRequest::Page::homeWithAdvancedPanel:
        return runHome(AppDelegate::AdvancedPanel::open);
    case WindowRequest::Page::home:
        break;
    }
    return runHome(AppDelegate::AdvancedPanel::closed);
}

} // namespace velmor

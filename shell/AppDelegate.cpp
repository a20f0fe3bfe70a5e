#include "shell/AppDelegate.h"

#include "pipeline/Renderer.h"
#include "shell/AppInfo.h"

#include <QGuiApplication>
#include <QQmlComponent>

namespace velmor {

namespace {

QUrl moduleFile(const QString &name)
{
    return QUrl(QStringLiteral("qrc:/qt/qml/Velmor/Shell/") + name);
}

/// The window that the file describes; null, with a word on standard error, if it can't be made.
template <typename Window>
std::unique_ptr<Window> loadWindow(QQmlEngine &engine, const QString &file,
                                   const QVariantMap &properties)
{
    QQmlComponent component(&engine, moduleFile(file));
    std::unique_ptr<QObject> made(
        component.isReady() ? component.createWithInitialProperties(properties) : nullptr);
    auto *window = qobject_cast<Window *>(made.get());
    if (!window) {
        qWarning("%ls", qUtf16Printable(component.errorString()));
        return nullptr;
    }
    std::ignore = made.release();
    QQmlEngine::setObjectOwnership(window, QQmlEngine::CppOwnership);
    return std::unique_ptr<Window>(window);
}

QVariantList asList(const QList<AppInfo::Line> &lines)
{
    QVariantList list;
    for (const AppInfo::Line &line : lines) {
        list.append(QVariantMap{
            {QStringLiteral("text"),   line.text  },
            {QStringLiteral("size"),   line.size  },
            {QStringLiteral("weight"), line.weight},
            {QStringLiteral("gray"),   line.gray  }
        });
    }
    return list;
}

} // namespace

AppDelegate::AppDelegate(QObject *parent) : QObject(parent)
{
    m_engine.addImportPath(QStringLiteral(":/qt/qml"));
    connect(&m_updateChecker, &UpdateChecker::advised, this, &AppDelegate::showAdvice);
    connect(qGuiApp, &QGuiApplication::aboutToQuit, this, &AppDelegate::applicationWillTerminate);
}

AppDelegate::~AppDelegate()
{
    for (const QPointer<QQuickWindow> &dialog : std::as_const(m_dialogs))
        delete dialog;
}

bool AppDelegate::applicationDidFinishLaunching(AdvancedPanel panel)
{
    m_window = makeWindow();
    if (!m_window)
        return false;
    m_window->placeAtStart();
    attachDrawer();
    m_menu = GlobalMenu::make(*this, *m_window);
    m_calibrationSheet = std::make_unique<CalibrationSheet>(m_model, m_engine, *m_window);
    m_window->show();
    m_window->requestActivate();
    m_model.startEngine();
    if (panel == AdvancedPanel::open)
        m_model.setShowAdvanced(true);
    return true;
}

std::unique_ptr<KeyableMainWindow> AppDelegate::makeWindow()
{
    auto window = loadWindow<KeyableMainWindow>(
        m_engine, QStringLiteral("MainWindow.qml"),
        {
            {QStringLiteral("model"),       QVariant::fromValue(&m_model)},
            {QStringLiteral("application"), QVariant::fromValue(this)    }
    });
    if (window)
        connect(window.get(), &CardWindow::closeAsked, this, &AppDelegate::quit,
                Qt::QueuedConnection);
    return window;
}

void AppDelegate::attachDrawer()
{
    auto *drawer = m_window->findChild<GalleryPanel *>();
    const auto present = [this, drawer] {
        drawer->setPresented(m_model.showScans());
    };
    connect(&m_model, &AppModel::showScansChanged, drawer, present);
    connect(drawer, &GalleryPanel::isPresentedChanged, &m_model, [this, drawer] {
        if (drawer->isPresented() != m_model.showScans())
            m_model.setShowScans(drawer->isPresented());
    });
    present();
}

void AppDelegate::applicationWillTerminate()
{
    m_model.stopEngine();
    // The windows wait for the page that is being drawn, however long that takes.
    Renderer::shared().close();
}

void AppDelegate::showAbout()
{
    const AppInfo::EngineKind engine = AppInfo::engineKind(findEngine(enginePlaces()));
    showDialog(QStringLiteral("AboutWindow.qml"),
               {
                   {QStringLiteral("lines"), asList(AppInfo::aboutLines(engine))}
    });
}

void AppDelegate::checkForUpdates()
{
    m_updateChecker.check();
}

void AppDelegate::showAdvice(const QString &advice)
{
    showDialog(QStringLiteral("UpdateWindow.qml"), {
                                                       {QStringLiteral("advice"), advice}
    });
}

void AppDelegate::quit()
{
    QCoreApplication::quit();
}

/// Brings the dialog to the front, and makes it first if it isn't open.
void AppDelegate::showDialog(const QString &file, const QVariantMap &properties)
{
    QPointer<QQuickWindow> &dialog = m_dialogs[file];
    if (!dialog) {
        dialog = loadWindow<QQuickWindow>(m_engine, file, properties).release();
        if (!dialog)
            return;
        connect(dialog, &QWindow::visibleChanged, dialog, [closed = dialog.data()](bool visible) {
            if (!visible)
                closed->deleteLater();
        });
        dialog->setTransientParent(m_window.get());
    }
    dialog->show();
    dialog->raise();
    dialog->requestActivate();
}

} // namespace velmor

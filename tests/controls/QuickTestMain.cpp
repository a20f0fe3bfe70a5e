#include "controls/InterfaceFont.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QtQuickTest>

/// Gives the tests in QML the application's modules and font.
class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable() { QGuiApplication::setFont(velmor::interfaceFont()); }

    void qmlEngineAvailable(QQmlEngine *engine)
    {
        engine->addImportPath(QStringLiteral(":/qt/qml"));
    }
};

QUICK_TEST_MAIN_WITH_SETUP(controls, Setup)

#include "QuickTestMain.moc"

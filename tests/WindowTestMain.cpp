#include "tests/BuiltWorkers.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <gmock/gmock.h>

// The start of test programs that make windows: in memory, unless the caller wants to see them.
int main(int argc, char **argv)
{
    velmor::useBuiltWorkers();
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setDefaultAlphaBuffer(true);
    const QGuiApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("VelmorTests"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}

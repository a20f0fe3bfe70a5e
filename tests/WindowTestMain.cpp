#include <QGuiApplication>
#include <QQuickWindow>
#include <gmock/gmock.h>

// For tests that open windows, on no screen in particular.
int main(int argc, char **argv)
{
    QQuickWindow::setDefaultAlphaBuffer(true);
    const QGuiApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("VelmorTests"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}

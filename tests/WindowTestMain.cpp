#include <QGuiApplication>
#include <gmock/gmock.h>

// The start of test programs that make windows.
int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("VelmorTests"));
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}

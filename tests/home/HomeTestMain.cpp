#include <QGuiApplication>
#include <gmock/gmock.h>

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("VelmorTests"));
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}

#include <QCoreApplication>
#include <gmock/gmock.h>

// Every test program runs with an event loop to hand, as signals and timers need one.
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("VelmorTests"));
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}

#include "tests/BuiltWorkers.h"

#include <QCoreApplication>
#include <gmock/gmock.h>

// Every test program runs with an event loop to hand, as signals and timers need one, and without
// the scanners that this computer may have.
int main(int argc, char **argv)
{
    velmor::useBuiltWorkers();
    qputenv("SANE_CONFIG_DIR", "/none");
    const QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("VelmorTests"));
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}

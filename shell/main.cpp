#include "cli/Commands.h"
#include "shell/VelmorApp.h"

#include <QCoreApplication>

namespace {

using namespace velmor;

QStringList argumentsOf(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    return arguments;
}

/// One program: the window, or one of the commands, which do without a display and its libraries.
struct Start {
    int &argc;
    char **argv;

    int operator()(const WindowRequest &request) const { return runVelmorApp(argc, argv, request); }

    template <typename Command> int operator()(const Command &command) const
    {
        const QCoreApplication application(argc, argv);
        return carryOut(command);
    }
};

} // namespace

int main(int argc, char **argv)
{
    return std::visit(Start{argc, argv},
                      parseCommandLine(argumentsOf(argc, argv), QStringLiteral(VELMOR_VERSION)));
}

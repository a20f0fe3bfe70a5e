#include "cli/Commands.h"
#include "cli/WindowProgram.h"

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

/// The window, which is another program in the place of this one, so that the commands start
/// without its libraries; or a command.
struct Start {
    int &argc;
    char **argv;

    int operator()(const WindowRequest &) const { return becomeWindowProgram(argv); }

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

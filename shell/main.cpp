#include "cli/TerminalText.h"
#include "shell/VelmorApp.h"

// The program behind "velmor" without a command; see cli/main.cpp.
int main(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const velmor::Request request =
        velmor::parseCommandLine(arguments, QStringLiteral(VELMOR_VERSION));
    if (const auto *window = std::get_if<velmor::WindowRequest>(&request))
        return velmor::runVelmorApp(argc, argv, *window);
    velmor::printErrorLine("velmor-window: Commands are for velmor.");
    return 2;
}

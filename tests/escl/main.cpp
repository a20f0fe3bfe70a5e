#include "tests/escl/EsclScanner.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

/// The tests' network scanner by hand: prints its address and serves until it is ended.
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption sheets(QStringLiteral("sheets"), QStringLiteral("In the feeder."),
                                    QStringLiteral("count"), QStringLiteral("3"));
    parser.addOption(sheets);
    parser.process(application);
    scanengine::EsclSetup setup;
    setup.sheets = parser.value(sheets).toInt();
    const scanengine::EsclScanner scanner(setup);
    QTextStream(stdout) << scanner.url() << Qt::endl;
    return QCoreApplication::exec();
}

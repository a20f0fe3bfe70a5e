#include "cli/CommandLine.h"
#include "tests/Printers.h"

#include <QFile>
#include <QRegularExpression>
#include <gmock/gmock.h>

namespace velmor {
namespace {

/// The options that are named in `text`, but for those of the help, which all commands have.
QStringList optionsIn(const QString &text)
{
    static const QRegularExpression option(QStringLiteral("(?:^|[\\s\"])(--?[A-Za-z][A-Za-z-]*)"));
    QStringList options;
    for (const QRegularExpressionMatch &match : option.globalMatch(text)) {
        const QString name = match.captured(1);
        if (name != u"-h" && !name.startsWith(u"--help"))
            options.append(name);
    }
    options.removeDuplicates();
    options.sort();
    return options;
}

/// The manual page, with its hyphens plain.
QString manualPage()
{
    QFile file(QStringLiteral(MANUAL_PAGE));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll()).remove(u'\\');
}

/// What the manual says after the heading and before the next one.
QString manualSection(const QString &heading)
{
    const QString rest = manualPage().section(heading + u'\n', 1);
    return rest.section(QRegularExpression(QStringLiteral("\n\\.S[HS] ")), 0, 0);
}

QString helpOf(const QStringList &arguments)
{
    const Request request =
        parseCommandLine(QStringList(QStringLiteral("velmor")) + arguments, QStringLiteral("1.2"));
    const auto *help = std::get_if<PrintRequest>(&request);
    EXPECT_TRUE(help);
    return help ? help->text : QString();
}

TEST(Manual, NamesTheOptionsThatTheHelpNames)
{
    EXPECT_EQ(optionsIn(manualSection(QStringLiteral(".SH OPTIONS"))),
              optionsIn(helpOf({QStringLiteral("--help")})));
    for (const char *name :
         {"scan", "devices", "presets", "magic", "crop", "ocr", "rotate", "merge", "split"}) {
        SCOPED_TRACE(name);
        const QString command = QString::fromUtf8(name);
        const QString section = manualSection(QStringLiteral(".SS \"velmor %1\"").arg(command));
        EXPECT_NE(section, QString());
        EXPECT_EQ(optionsIn(section), optionsIn(helpOf({command, QStringLiteral("--help")})));
    }
}

} // namespace
} // namespace velmor

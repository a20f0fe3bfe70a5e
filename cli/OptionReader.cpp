#include "cli/OptionReader.h"

#include "cli/QuadText.h"

#include <QFileInfo>

#include <limits>

namespace velmor {

namespace {

constexpr int longestSearch = 3600; // seconds
const QString searchTimeout = QStringLiteral("search-timeout");

QString quoted(const QString &text)
{
    return QStringLiteral("“") + text + QStringLiteral("”");
}

} // namespace

OptionReader::OptionReader(const QString &command, const QString &description)
{
    m_parser.setApplicationDescription(description);
    m_parser.addOption({
        {QStringLiteral("h"), QStringLiteral("help")},
        QStringLiteral("Show this help.")
    });
    m_program = QStringLiteral("velmor ") + command;
}

void OptionReader::addFiles()
{
    m_mostFiles = std::numeric_limits<qsizetype>::max();
    m_fileWord = QStringLiteral("FILE…");
    m_parser.addPositionalArgument(m_fileWord, QStringLiteral("PDF files."));
}

void OptionReader::addFile()
{
    m_mostFiles = 1;
    m_fileWord = QStringLiteral("FILE");
    m_parser.addPositionalArgument(m_fileWord, QStringLiteral("A PDF file."));
}

void OptionReader::add(const QString &name, const QString &description, const QString &value)
{
    m_parser.addOption({name, description, value});
}

void OptionReader::parse(const QStringList &arguments)
{
    if (!m_parser.parse(QStringList(m_program) + arguments))
        fail(m_parser.errorText());
    const QStringList files = m_parser.positionalArguments();
    if (files.size() > m_mostFiles)
        fail(QStringLiteral("Unexpected argument %1.").arg(quoted(files[m_mostFiles])));
    else if (files.isEmpty() && m_mostFiles > 0)
        fail(QStringLiteral("A file is missing."));
}

QList<QUrl> OptionReader::files() const
{
    QList<QUrl> files;
    for (const QString &path : m_parser.positionalArguments())
        files.append(QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()));
    return files;
}

std::optional<double> OptionReader::number(const QString &name, double least, double most)
{
    const std::optional<QString> given = text(name);
    if (!given)
        return {};
    bool valid = false;
    const double value = given->toDouble(&valid);
    if (!valid || !(value >= least && value <= most))
        fail(QStringLiteral("--%1 takes a number from %2 to %3, not %4.")
                 .arg(name, QString::number(least), QString::number(most), quoted(*given)));
    return value;
}

std::optional<int> OptionReader::ordinal(const QString &name)
{
    const std::optional<QString> given = text(name);
    bool valid = false;
    const int value = given ? given->toInt(&valid) : 0;
    if (given && (!valid || value < 1))
        fail(QStringLiteral("--%1 takes a whole number from 1, not %2.").arg(name, quoted(*given)));
    return given ? std::optional(value) : std::nullopt;
}

QList<Quad> OptionReader::quads(const QString &name)
{
    QList<Quad> quads;
    for (const QString &given : m_parser.values(name)) {
        if (const std::optional<Quad> quad = quadFromText(given))
            quads.append(*quad);
        else
            fail(QStringLiteral(
                     "--%1 takes the four corners of a region, “x,y x,y x,y x,y” from 0 to "
                     "1, none of them dented, not %2.")
                     .arg(name, quoted(given)));
    }
    if (quads.isEmpty())
        fail(QStringLiteral("--%1 is missing.").arg(name));
    return quads;
}

QString OptionReader::helpText() const
{
    const QString text = m_parser.helpText();
    const QString usage = QStringLiteral("Usage: %1 [options] %2").arg(m_program, m_fileWord);
    return usage.trimmed() + text.mid(text.indexOf(u'\n'));
}

std::optional<QString> OptionReader::text(const QString &name)
{
    if (!m_parser.isSet(name))
        return {};
    const QString value = m_parser.value(name);
    if (value.isEmpty())
        fail(QStringLiteral("--%1 needs a value.").arg(name));
    return value;
}

std::optional<bool> OptionReader::flag(const QString &name) const
{
    const QString opposite = QStringLiteral("no-") + name;
    const QStringList given = m_parser.optionNames();
    if (!given.contains(name) && !given.contains(opposite))
        return {};
    return given.lastIndexOf(name) > given.lastIndexOf(opposite);
}

SearchLimit OptionReader::searchLimit()
{
    SearchLimit limit;
    if (const std::optional<QString> given = text(searchTimeout)) {
        bool valid = false;
        const int seconds = given->toInt(&valid);
        if (!valid || seconds < 1 || seconds > longestSearch)
            fail(QStringLiteral("--%1 takes a number of seconds from 1 to %2, not %3.")
                     .arg(searchTimeout, QString::number(longestSearch), quoted(*given)));
        limit.value = std::chrono::seconds(seconds);
    }
    return limit;
}

void OptionReader::addSearchTimeout()
{
    add(searchTimeout,
        QStringLiteral("How long to look for scanners, 1 to %1 seconds [%2].")
            .arg(longestSearch)
            .arg(SearchLimit().value.count()),
        QStringLiteral("SECONDS"));
}

void OptionReader::fail(const QString &problem)
{
    if (!m_problem)
        m_problem = problem;
}

} // namespace velmor

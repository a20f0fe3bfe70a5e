#include "cli/TerminalText.h"

#include <cstdio>

namespace velmor {

namespace {

void print(std::FILE *stream, const QByteArray &line)
{
    const QByteArray whole = line + '\n';
    std::fwrite(whole.constData(), 1, static_cast<size_t>(whole.size()), stream);
    std::fflush(stream);
}

} // namespace

QByteArray terminalText(const QString &text)
{
    QString result = text;
    for (QChar &character : result) {
        const QChar::Category category = character.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph)
            character = u' ';
    }
    return result.toLocal8Bit();
}

void printLine(const QByteArray &line)
{
    print(stdout, line);
}

void printErrorLine(const QByteArray &line)
{
    print(stderr, line);
}

} // namespace velmor

#include "cli/TerminalText.h"

#include <algorithm>
#include <cstdio>

namespace velmor {

namespace {

bool print(std::FILE *stream, const QByteArray &line)
{
    const QByteArray whole = line + '\n';
    const auto size = static_cast<size_t>(whole.size());
    return std::fwrite(whole.constData(), 1, size, stream) == size && std::fflush(stream) == 0;
}

bool turnsDirection(QChar character)
{
    const char16_t code = character.unicode();
    return code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

bool isHarmful(QChar character)
{
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph || turnsDirection(character);
}

} // namespace

QByteArray terminalText(const QString &text)
{
    QString result = text;
    std::ranges::replace_if(result, isHarmful, QChar(u' '));
    return result.toLocal8Bit();
}

bool printLine(const QByteArray &line)
{
    return print(stdout, line);
}

void printErrorLine(const QByteArray &line)
{
    print(stderr, line);
}

} // namespace velmor

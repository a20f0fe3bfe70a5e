#include "cli/StatusDisplay.h"

#include "cli/TerminalText.h"

#include <cstdio>
#include <unistd.h>

namespace velmor {

namespace {

constexpr int barLength = 20;

QByteArray bar(int done, int total)
{
    const int filled = total > 0 ? barLength * done / total : 0;
    return '[' + QByteArray(filled, '#') + QByteArray(barLength - filled, '.') + ']';
}

} // namespace

StatusDisplay::StatusDisplay() : m_isTerminal(isatty(STDERR_FILENO) == 1) {}

StatusDisplay::~StatusDisplay()
{
    clearLine();
}

void StatusDisplay::showStatus(const QString &text)
{
    m_status = terminalText(text);
    draw(m_status);
}

void StatusDisplay::showProgress(int done, int total)
{
    const QByteArray count = QByteArray::number(done) + '/' + QByteArray::number(total);
    if (m_isTerminal)
        draw(bar(done, total) + ' ' + count + ' ' + m_status);
    else if (done > 0)
        draw("Page " + count);
}

void StatusDisplay::printMessage(const QString &text)
{
    const bool stands = text == m_lastMessage || (!m_isTerminal && terminalText(text) == m_last);
    if (stands)
        return;
    m_lastMessage = text;
    clearLine();
    printErrorLine("velmor: " + terminalText(text));
}

void StatusDisplay::closeLine()
{
    if (m_isLineOpen)
        std::fputs("\n", stderr);
    m_isLineOpen = false;
    m_last.clear();
}

void StatusDisplay::draw(const QByteArray &line)
{
    if (line == m_last)
        return;
    m_last = line;
    if (!m_isTerminal) {
        printErrorLine(line);
        return;
    }
    // From the start of the line, over what stood there, and cut off where the terminal ends.
    const QByteArray drawn = "\r\033[K\033[?7l" + line + "\033[?7h";
    std::fwrite(drawn.constData(), 1, static_cast<size_t>(drawn.size()), stderr);
    std::fflush(stderr);
    m_isLineOpen = true;
}

void StatusDisplay::clearLine()
{
    if (m_isLineOpen)
        std::fputs("\r\033[K", stderr);
    m_isLineOpen = false;
    m_last.clear();
}

} // namespace velmor

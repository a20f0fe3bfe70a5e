#pragma once

#include <QByteArray>
#include <QString>

namespace velmor {

/// Shows on standard error what is going on: on a terminal in one line that changes, with a bar
/// for pages, otherwise in a line for each change.
class StatusDisplay {
public:
    StatusDisplay();
    /// Takes the changing line away.
    ~StatusDisplay();
    StatusDisplay(const StatusDisplay &) = delete;
    StatusDisplay &operator=(const StatusDisplay &) = delete;

    void showStatus(const QString &text);
    /// `done` of `total` pages, beside the status.
    void showProgress(int done, int total);
    /// A message that stays, on a line of its own, unless it stands there already.
    void printMessage(const QString &text);
    /// Lets the changing line stand as it is; what follows starts on a new one.
    void closeLine();

private:
    void draw(const QByteArray &line);
    void clearLine();

    bool m_isTerminal;
    bool m_isLineOpen = false;
    QByteArray m_status;
    QByteArray m_last;
    QString m_lastMessage;
};

} // namespace velmor

#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace velmor {

/// An X11 screen in memory with a real pointer and keyboard: no window manager, no compositor, and
/// black where nothing is. It ends with the object.
class VirtualScreen {
public:
    explicit VirtualScreen(const QSize &size);
    ~VirtualScreen();
    Q_DISABLE_COPY_MOVE(VirtualScreen)

    /// For the environment variable DISPLAY; empty if the screen couldn't be started.
    [[nodiscard]] const QString &name() const { return m_name; }

    /// What it shows now.
    [[nodiscard]] QImage picture() const;
    [[nodiscard]] QColor pixel(const QPoint &point) const;

    void click(const QPoint &point) const;
    void drag(const QPoint &from, const QPoint &to) const;
    /// Presses a key, named as xdotool does.
    void press(const QString &key) const;

private:
    void inject(const QStringList &actions) const;

    QTemporaryDir m_folder; ///< Holds the picture, as a file that the server keeps up to date.
    QProcess m_server;
    QString m_name;
};

} // namespace velmor

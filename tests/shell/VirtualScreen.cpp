#include "tests/shell/VirtualScreen.h"

#include "tests/Waiting.h"

#include <QFile>
#include <QtEndian>

#include <array>

namespace velmor {

VirtualScreen::VirtualScreen(const QSize &size)
{
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                    QStringLiteral("0"),
                    QStringLiteral("%1x%2x24").arg(size.width()).arg(size.height()),
                    QStringLiteral("-fbdir"), m_folder.path(), QStringLiteral("-nolisten"),
                    QStringLiteral("tcp")});
    QByteArray number;
    const bool told = waitUntil([&] {
        number += m_server.readAllStandardOutput();
        return number.endsWith('\n') || m_server.state() == QProcess::NotRunning;
    });
    if (told && number.endsWith('\n'))
        m_name = u':' + QString::fromLatin1(number.trimmed());
}

VirtualScreen::~VirtualScreen()
{
    m_server.terminate();
    m_server.waitForFinished();
}

QImage VirtualScreen::picture() const
{
    // The header of the format: words of 32 bits, most significant byte first.
    enum Word { headerSize = 0, width = 4, height = 5, bytesPerLine = 12, colors = 19 };
    constexpr qsizetype colorSize = 12;
    QFile file(m_folder.filePath(QStringLiteral("Xvfb_screen0")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray data = file.readAll();
    const auto word = [&](Word which) -> qsizetype {
        return qFromBigEndian<quint32>(data.constData() + 4 * which);
    };
    if (data.size() < 100)
        return {};
    const qsizetype start = word(headerSize) + colorSize * word(colors);
    if (data.size() < start + word(bytesPerLine) * word(height))
        return {};
    const QImage shared(reinterpret_cast<const uchar *>(data.constData()) + start,
                        static_cast<int>(word(width)), static_cast<int>(word(height)),
                        word(bytesPerLine), QImage::Format_RGB32);
    return shared.copy();
}

QColor VirtualScreen::pixel(const QPoint &point) const
{
    const QImage shown = picture();
    return shown.rect().contains(point) ? shown.pixelColor(point) : QColor();
}

void VirtualScreen::click(const QPoint &point) const
{
    inject({QStringLiteral("mousemove"), QString::number(point.x()), QString::number(point.y()),
            QStringLiteral("click"), QStringLiteral("1")});
}

void VirtualScreen::drag(const QPoint &from, const QPoint &to) const
{
    inject({QStringLiteral("mousemove"), QString::number(from.x()), QString::number(from.y()),
            QStringLiteral("mousedown"), QStringLiteral("1"), QStringLiteral("mousemove"),
            QString::number(to.x()), QString::number(to.y()), QStringLiteral("mouseup"),
            QStringLiteral("1")});
}

void VirtualScreen::press(const QString &key) const
{
    inject({QStringLiteral("key"), key});
}

void VirtualScreen::inject(const QStringList &actions) const
{
    QProcess xdotool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_name);
    xdotool.setProcessEnvironment(environment);
    xdotool.start(QStringLiteral("xdotool"), actions);
    xdotool.waitForFinished();
}

} // namespace velmor

#include "scanengine/imaging/JpegEnd.h"

#include <QByteArray>
#include <QFile>

namespace scanengine {
namespace {

constexpr uchar startOfScan = 0xDA;
constexpr qint64 chunkBytes = 256 * 1024;

/// Moves `file` behind the header of the first scan; false if there is none. Going from segment to
/// segment steps over a preview inside the header, which has an end mark of its own.
bool seekFirstScan(QFile &file)
{
    qint64 position = 2;
    for (;;) {
        const QByteArray head = file.seek(position) ? file.read(4) : QByteArray();
        if (head.size() < 4 || uchar(head[0]) != 0xFF)
            return false;
        if (uchar(head[1]) == 0xFF) { // A filling byte.
            ++position;
            continue;
        }
        position += 2 + uchar(head[2]) * 256 + uchar(head[3]);
        if (uchar(head[1]) == startOfScan)
            return file.seek(position);
    }
}

} // namespace

bool endsLikeJpeg(QFile &file)
{
    if (!seekFirstScan(file))
        return false;
    // Inside a scan 0xFF is always followed by zero or a restart mark, so this can be nothing else.
    const QByteArray endMark("\xFF\xD9");
    QByteArray chunk;
    for (;;) {
        const QByteArray more = file.read(chunkBytes);
        if (more.isEmpty())
            return false;
        chunk = chunk.right(1) + more;
        if (chunk.contains(endMark))
            return true;
    }
}

} // namespace scanengine

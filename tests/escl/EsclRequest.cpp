#include "tests/escl/EsclRequest.h"

#include <QRegularExpression>

namespace scanengine {

std::optional<EsclRequest> parseRequest(const QByteArray &received)
{
    static const QRegularExpression lengthLine(QStringLiteral("content-length:\\s*(\\d+)"),
                                               QRegularExpression::CaseInsensitiveOption);
    static const QByteArray headEnd = QByteArrayLiteral("\r\n\r\n");
    const qsizetype end = received.indexOf(headEnd);
    if (end < 0)
        return std::nullopt;
    const QByteArray head = received.first(end);
    const qsizetype length = lengthLine.match(QString::fromLatin1(head)).captured(1).toInt();
    const QByteArray body = received.mid(end + headEnd.size());
    const QList<QByteArray> firstLine = head.first(head.indexOf('\r')).split(' ');
    if (body.size() < length || firstLine.size() < 2)
        return std::nullopt;
    return EsclRequest{firstLine[0], QString::fromLatin1(firstLine[1]), body.first(length)};
}

QByteArray encoded(const EsclResponse &response)
{
    const bool isHalf = response.delivery != Delivery::whole;
    const QByteArray sent = isHalf ? response.body.first(response.body.size() / 2) : response.body;
    const qsizetype claimed =
        response.delivery == Delivery::cutOff ? response.body.size() : sent.size();
    QByteArray bytes = "HTTP/1.1 " + QByteArray::number(response.status) + " Scanner\r\n";
    bytes += "Content-Type: " + response.type + "\r\n";
    bytes += "Content-Length: " + QByteArray::number(claimed) + "\r\n";
    if (!response.location.isEmpty())
        bytes += "Location: " + response.location + "\r\n";
    return bytes + "Connection: close\r\n\r\n" + sent;
}

QString elementText(const QByteArray &xml, const char *name)
{
    const QRegularExpression element(
        QStringLiteral("<(?:\\w+:)?%1>([^<]*)<").arg(QString::fromLatin1(name)));
    return element.match(QString::fromUtf8(xml)).captured(1).trimmed();
}

} // namespace scanengine

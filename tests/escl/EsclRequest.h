#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace scanengine {

/// A request of HTTP, as far as a scanner looks at it.
struct EsclRequest {
    QByteArray method;
    QString path;
    QByteArray body;
};

/// The request at the beginning of `received`, when all of it is there.
[[nodiscard]] std::optional<EsclRequest> parseRequest(const QByteArray &received);

/// How an answer goes out.
enum class Delivery { whole, cutOff, truncated, never };

struct EsclResponse {
    int status = 200;
    QByteArray type = QByteArrayLiteral("text/xml");
    QByteArray body;
    QByteArray location;
    /// Half of the body goes out for `cutOff`, whose length claims the whole, and for `truncated`.
    Delivery delivery = Delivery::whole;
};

/// The bytes of `response`; the connection is to be closed after them.
[[nodiscard]] QByteArray encoded(const EsclResponse &response);

/// The text of the first XML element of this name in `xml`, whatever its namespace; else empty.
[[nodiscard]] QString elementText(const QByteArray &xml, const char *name);

} // namespace scanengine

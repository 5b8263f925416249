// What the chart service answers: a picture, or the page of a portal.
#pragma once

#include <QByteArray>
#include <QString>

namespace guanchao {

inline bool isPicture(const QByteArray& body) {
    return body.startsWith("GIF8") || body.startsWith("\x89PNG");
}

inline const QString notAPicture = QStringLiteral("应答不是图片");

}  // namespace guanchao

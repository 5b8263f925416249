// Replies of the quote service as tests script them.
#pragma once

#include <QHash>
#include <QString>

#include "formats/gbk.h"

namespace guanchao {

// The reply to a path "/list=...": each code at its price, with a former close of 10; a code
// without a price is unknown to the service.
inline QByteArray quoteReply(const QString& path, const QHash<QString, double>& prices) {
    QString text;
    for (const QString& code : path.section(u'=', 1).split(u',', Qt::SkipEmptyParts)) {
        const auto price = prices.constFind(code);
        const QString values = price == prices.constEnd()
                                   ? QString()
                                   : QStringLiteral("x,10,10,") + QString::number(*price, 'f', 3) +
                                         QStringLiteral(",1").repeated(26) +
                                         QStringLiteral(",2026-11-24,10:00:00");
        text += QStringLiteral("var hq_str_%1=\"%2\";\n").arg(code, values);
    }
    return gbkFromText(text);
}

}  // namespace guanchao

// The charset that a page of the web declares for itself.
#pragma once

#include <QByteArray>
#include <QString>

namespace guanchao {

// In lower case; empty for a page that declares none. Only the beginning of a page counts.
QString declaredCharset(const QByteArray& page);

}  // namespace guanchao

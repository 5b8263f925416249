// The source of a web page as Unicode: in UTF-8 or GBK as the page declares; without a declaration
// in UTF-8 if all of it has that form, else in GBK.
#pragma once

#include <QByteArray>
#include <QString>

namespace guanchao {

QString pageText(const QByteArray& page);

}  // namespace guanchao

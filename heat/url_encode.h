// 搜索词编码: a text as search engines of the Chinese code page (GBK) expect it in an address.
#pragma once

#include <QString>

namespace guanchao {

// Every character of two bytes in GBK becomes "%" and hexadecimal digits for each of them, a blank
// "%20". All other characters stay as they are, "&", "%" and "+" too, and those that GBK lacks.
QString URLEncode(const QString& text);

}  // namespace guanchao

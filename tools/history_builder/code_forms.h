// Codes of stocks and indexes as files write them.
#pragma once

#include <QString>

namespace guanchao {

// "SH600000" of SH600000, sh.600000, 600000.SH, 600000.XSHG, and of 600000 alone, which is never
// taken for an index. Empty if the text is no code.
QString stockCode(const QString& text);

// The same of a file's name, in which other words may stand beside the code.
QString stockCodeOfFile(const QString& path);

bool isOfBeijing(const QString& dm);

}  // namespace guanchao

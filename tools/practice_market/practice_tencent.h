// The quotes of the practice market in Tencent's shape: /q=sh600519,sz000001.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace guanchao {

class PracticeQuotes;

// The same figures as the usual lines, volume in lots and turnover in 10,000 yuan.
QString practiceTencentReply(const PracticeQuotes& quotes, const QStringList& lowerCaseCodes,
                             const QDateTime& now);

}  // namespace guanchao

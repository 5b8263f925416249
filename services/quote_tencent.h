// Quotes of Tencent, /q=sh600519,sz000001. GBK, a line a code, fields cut by '~':
//   v_sh600519="1~贵州茅台~600519~1304.00~1310.00~1308.00~52477~…";
// By position: 1 name, 3 latest, 4 former close, 5 open, 6 volume in lots of 100, 30 time
// (yyyyMMddHHmmss), 33 high, 34 low, 37 turnover in 10,000 yuan; without bids and asks here. An
// unknown code has no line; where all of them are unknown: v_pv_none_match="1";
#pragma once

#include "services/quote_kind.h"

namespace guanchao {

class TencentQuotes : public QuoteKind {
public:
    // Codes of Shanghai and Shenzhen, indexes among them.
    bool knows(const QString& codes) const override;
    QString path(const QString& codes) const override;
    // A line without a time is left out: it is no whole quote.
    QString lines(const QByteArray& body, const QString& codes) const override;
};

}  // namespace guanchao

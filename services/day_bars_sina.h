// Day bars of Sina: CN_MarketData.getKLineData, the newest `datalen` days up to today, no range.
//   [{"day":"2019-12-26","open":"37.780","high":"38.100","low":"37.690","close":"38.100",
//     "volume":"19223976"},…]
// Oldest first, volume in shares, no turnover, no code; `null` or `[]` for an unknown one.
#pragma once

#include "services/bar_kind.h"

namespace guanchao {

class SinaDayBars : public BarKind {
public:
    QStringList paths(const BarRange& range) const override;
    ReadBars read(const QByteArray& body, const QString& dm) const override;
};

}  // namespace guanchao

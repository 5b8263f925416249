// Day bars of Eastmoney: kline/get with the range, fqt=0 for unadjusted prices; secid is 1. and the
// number for Shanghai, 0. for Shenzhen.
//   {"rc":0,"data":{"code":"600000","market":1,"klines":["2026-06-18,1790.00,1810.50,1820.00,
//    1775.00,123456,223456789.00,2.50,1.10,19.70,0.98",…]}}
// A line is day, open, close, high, low, volume in lots of 100, turnover in yuan, and ratios.
// `"data":null` for an unknown code.
#pragma once

#include "services/bar_kind.h"

namespace guanchao {

class EastmoneyDayBars : public BarKind {
public:
    QStringList paths(const BarRange& range) const override;
    ReadBars read(const QByteArray& body, const QString& dm) const override;
};

}  // namespace guanchao

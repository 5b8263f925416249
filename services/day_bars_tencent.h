// Day bars of Tencent: fqkline with the range and at most 640 days a request, so a long range takes
// several.
//   {"code":0,"msg":"","data":{"sh600519":{"day":[["2026-06-03","1304.000","1281.910","1304.000",
//    "1276.000","52477.000"],…],"qt":{…},"version":"18"}}}
// A row is day, open, close, high, low, volume in lots of 100; a seventh member tells of a
// dividend, and a row in which a number is an object is skipped. Without the code in `data` it is
// no answer.
#pragma once

#include "services/bar_kind.h"

namespace guanchao {

class TencentDayBars : public BarKind {
public:
    QStringList paths(const BarRange& range) const override;
    ReadBars read(const QByteArray& body, const QString& dm) const override;
};

}  // namespace guanchao

// The day history of the practice market, in the shape of each kind of public service: the CSV
// service, Sina with its 复权因子, Tencent and Eastmoney. All of them tell the same days, each in
// its own order and units.
#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

namespace guanchao {

class PracticeQuotes;

// The reply to a path with its query; nothing where the service says that there is none.
std::optional<QString> practiceBars(const PracticeQuotes& quotes, const QString& target,
                                    const QDateTime& now);

}  // namespace guanchao

// How far a stock may move on a day from its former close (涨停 and 跌停), in percent of it: by the
// rules of the exchanges for the board that its code tells, and for its short name where that
// tells of special treatment (特别处理).
#pragma once

#include <QDate>
#include <QStringView>

namespace guanchao {

// Today: 30 in Beijing, 20 on STAR (科创板) and ChiNext (创业板), 5 under special treatment, 10
// elsewhere.
int limitPercent(QStringView dm, QStringView jc);

// On a day of the past, of whose short names the histories know nothing; ChiNext had 10 before
// 2020-08-24.
int limitPercentOn(QStringView dm, const QDate& day);

// As 分时行情 shows the limit prices, to which STAR and ChiNext are boards as any other.
int shownLimitPercent(QStringView dm, QStringView jc);

}  // namespace guanchao

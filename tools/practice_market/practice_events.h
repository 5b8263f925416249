// What happens to stocks of the practice market beside their walk: one of them has paid a dividend,
// another has not been traded for a week. No input besides the arguments, no errors.
#pragma once

#include <QDate>
#include <QString>

namespace guanchao {

// Codes in lower case.
inline const QString dividendCode = QStringLiteral("sh600036");
inline const QString haltedCode = QStringLiteral("sh600016");

// 除权日: from here on the price is lower by the ratio of the dividend.
inline const QDate exDividendDay(2026, 7, 16);
inline constexpr double dividendRatio = 1.0472;

// By how much an unadjusted price of that day lies above the walk, which has no dividends.
double aboveWalk(const QString& code, const QDate& day);

bool isHalted(const QString& code, const QDate& day);

}  // namespace guanchao

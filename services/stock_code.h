// The rules of a code: its exchange, SH for Shanghai, SZ for Shenzhen and BJ for Beijing, and six
// digits (SH600000); in lower case towards the services. Its short name stands in the code table
// dmb. Failed statements raise StoreError.
#pragma once

#include <QHash>
#include <QString>
#include <optional>

#include "store/connection.h"

namespace guanchao {

inline constexpr qsizetype codeLength = 8;
inline constexpr qsizetype codeDigits = 6;
inline constexpr int sharesPerLot = 100;

// The exchange of two letters and six digits, whichever exchange that is.
bool isWholeCode(QStringView dm);

// Begins with SH or SZ, in either case or a mixed one.
bool hasExchange(QStringView code);

// The same for Shanghai alone, but in one case: "Sh" doesn't count.
bool isOfShanghai(QStringView dm);

// A stock of the exchange of Beijing (北交所), which only those have who want it: BJ920799.
bool isOfBeijing(QStringView dm);

// The exchange of a stock's bare number, which tells it by its first digit.
QString exchangeOf(QStringView number);

// A stock of Shanghai or Shenzhen whose quote can be shown: no index, no B share, no fund.
bool isStockCode(QStringView dm);

// What an imported library may bring into the code table: any code of the two exchanges, indexes
// too, and also one with fewer digits.
bool isCodeTableCode(QStringView dm);

// 上证指数: its days are the trading days, and the market is what it has gained.
inline const QString leadingIndex = QStringLiteral("SH000001");

// The indexes stand in the code table for their quotes only.
bool isIndexCode(QStringView dm);

// Nothing if the code is not in the code table.
std::optional<QString> shortName(Connection& mainStore, const QString& dm);
// Of all codes.
QHash<QString, QString> shortNames(Connection& mainStore);

}  // namespace guanchao

// The practice market with a few stocks and boards, at the service from now on.
#pragma once

#include "platform/service.h"
#include "tools/practice_market/practice_market.h"

namespace guanchao {

struct SmallMarket : PracticeMarket {
    // The boards as rows of name and code.
    explicit SmallMarket(
        const std::vector<PracticeStock>& stocks, const QList<QStringList>& boards = {},
        const std::function<QDateTime()>& now = [] { return QDateTime::currentDateTime(); })
        : PracticeMarket(PracticeQuotes(stocks), now, PracticeBoards(stocks, boards)),
          port(start()) {}

    Service service(const QString& kind = QStringLiteral("sina")) const {
        return {host(), {}, 10, 1, 0, kind};
    }

    const int port;
};

}  // namespace guanchao

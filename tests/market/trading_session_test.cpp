#include "market/trading_session.h"

#include <gtest/gtest.h>

namespace guanchao {

TEST(TradingSession, EachBoundaryToTheSecond) {
    const std::pair<QTime, bool> cases[] = {
        {{0, 0, 0}, false},   {{9, 20, 0}, false},  {{9, 20, 59}, false}, {{9, 21, 0}, true},
        {{11, 34, 59}, true}, {{11, 35, 0}, false}, {{12, 55, 0}, false}, {{12, 55, 59}, false},
        {{12, 56, 0}, true},  {{15, 4, 59}, true},  {{15, 5, 0}, false},  {{23, 59, 59}, false},
    };
    const QDate monday(2026, 11, 23);
    for (const auto& [time, open] : cases) {
        for (int day = 0; day < 7; ++day) {
            EXPECT_EQ(inTradingSession(QDateTime(monday.addDays(day), time)), open && day < 5)
                << day << ' ' << time.toString().toStdString();
        }
    }
}

}  // namespace guanchao

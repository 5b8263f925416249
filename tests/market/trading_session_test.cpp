#include "market/trading_session.h"

#include <gtest/gtest.h>

namespace guanchao {

TEST(TradingSession, EachBoundaryToTheSecond) {
    const struct {
        QTime time;
        bool open;
    } cases[] = {
        {{0, 0, 0}, false},   {{9, 20, 0}, false},  {{9, 20, 59}, false}, {{9, 21, 0}, true},
        {{11, 34, 59}, true}, {{11, 35, 0}, false}, {{12, 55, 0}, false}, {{12, 55, 59}, false},
        {{12, 56, 0}, true},  {{15, 4, 59}, true},  {{15, 5, 0}, false},  {{23, 59, 59}, false},
    };
    const QDate monday(2026, 11, 23);
    for (const auto& it : cases) {
        for (int day = 0; day < 7; ++day) {
            EXPECT_EQ(inTradingSession(QDateTime(monday.addDays(day), it.time)), it.open && day < 5)
                << day << ' ' << it.time.toString().toStdString();
        }
    }
}

}  // namespace guanchao

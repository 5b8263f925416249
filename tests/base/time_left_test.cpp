#include "base/time_left.h"

#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace std::chrono_literals;

TEST(TimeLeftTest, IsToldOnceThereIsEnoughToJudgeBy) {
    const std::tuple<std::chrono::nanoseconds, qint64, qint64, QString> cases[] = {
        {1999ms, 50, 100, {}},
        {2s, 0, 100, {}},
        {20s, 0, 0, {}},
        {20s, 99, 10000, {}},
        {20s, 100, 100, {}},
        {2s, 50, 100, u"剩余约 2 秒"_s},
        {3s, 99, 100, u"剩余约 1 秒"_s},
        {60s, 50, 100, u"剩余约 60 秒"_s},
        {61s, 50, 100, u"剩余约 2 分钟"_s},
        {60s, 1, 100, u"剩余约 99 分钟"_s}};
    for (const auto& [elapsed, done, total, words] : cases) {
        EXPECT_EQ(timeLeftWords(elapsed, done, total), words) << done << total;
    }
}

}  // namespace guanchao

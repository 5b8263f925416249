#include "exchange/board_import.h"

#include "platform/qt_http_client.h"
#include "services/polite_http.h"
#include "tests/support/small_market.h"
#include "tests/support/store_test.h"

namespace guanchao {

class BoardImportTest : public StoreTest {
protected:
    BoardImportTest() { http_.client = std::make_unique<QtHttpClient>(); }

    BoardTally import() {
        const Boards boards(http_, {market_.service()});
        const BoardList list = endOf(boards.list(BoardSort::concepts, {}));
        http_.paths.clear();
        RunControl control;
        const BoardImport::Watch watch = {[](const Board&) { return true; },
                                          [](const RunProgress&) {}, [](const BoardOutcome&) {}};
        BoardImport import(store_.stores, clock_, polite_, control, watch, wait_);
        return endOf(import.run(list.service, list.boards, {}));
    }
    QStringList themes() {
        return store_.rows(u"select zhutiname,count(*) from dzhzhuti group by 1 order by 1"_s);
    }

    const QString first_ = u"SZ300001"_s, second_ = u"SZ300002"_s;
    SmallMarket market_{{{first_, u"某一"_s}, {second_, u"某二"_s}},
                        {{u"大"_s, first_},
                         {u"大"_s, second_},
                         {u"2026"_s, first_},
                         {u"甲"_s, first_},
                         {u"甲"_s, second_},
                         {u"乙'股"_s, second_}}};
    PoliteHttp polite_{http_, clock_};
    int waits_ = 0;
    Wait wait_ = [this](std::chrono::milliseconds time, std::stop_token) -> QCoro::Task<> {
        ++waits_;
        clock_.moment = clock_.moment.addDuration(time);
        co_return;
    };
};

TEST_F(BoardImportTest, OnlyWhatIsMissingIsAdded) {
    store_.addCode(u"SZ300001"_s, u"特锐德"_s, 1, 1);
    store_.run(
        {u"insert into dzhzhuti(zhutiname,dm,jc,guanzhudu) values('甲','SZ300002','旧',9)"_s});
    const QString stamp = u"select xiugaizhutitime from tempcanshu"_s;
    BoardTally tally = import();
    EXPECT_EQ(themes(), QStringList({u"乙'股|1"_s, u"大|2"_s, u"甲|2"_s}));
    EXPECT_EQ(tally.words(),
              u"导入完成。导入了 3 个板块：新主题 2 个，新成份股 4 条。\n"
              u"新成份股的关注度是 0：在主窗口的“关注度大于”里写 -1，按 F5 就显示。\n"
              u"1 个板块的名称不能作主题名（只有数字，或超过 20 个字），没有导入：2026。"_s);
    EXPECT_EQ(store_.rows(u"select dm,jc,guanzhudu,ztktime from dzhzhuti where zhutiname='甲'"
                          u" order by dm"_s),
              QStringList({u"SZ300001|特锐德|0|2026-11-24 10:00:00"_s, u"SZ300002|旧|9|null"_s}))
        << "the code table's name, and what was there stays";
    EXPECT_EQ(store_.rows(u"select jc from dzhzhuti where zhutiname='大'"_s).last(), u"某二"_s);
    EXPECT_EQ(store_.rows(stamp), QStringList{u"2026-11-24 10:00:00"_s});

    clock_.moment = clock_.moment.addDays(1);
    store_.run({u"delete from dzhzhuti where zhutiname like '乙%'"_s});
    tally = import();
    EXPECT_EQ(tally.themes, 1);
    EXPECT_EQ(tally.members, 1);
    EXPECT_EQ(store_.rows(stamp), QStringList{u"2026-11-25 10:00:00"_s});
    clock_.moment = clock_.moment.addDays(1);
    EXPECT_EQ(import().members, 0);
    EXPECT_EQ(store_.rows(stamp), QStringList{u"2026-11-25 10:00:00"_s}) << "nothing was imported";
}

TEST_F(BoardImportTest, AServiceThatHasHadEnoughIsLeftAloneForAWhile) {
    int limits = 2;
    http_.instead = [&](const QString& path) -> std::optional<HttpReply> {
        const bool isLimited = path.contains(u"getHQNodeData"_s) && limits-- > 0;
        return isLimited ? std::optional(HttpReply{HttpReply::Outcome::refused, 456, {}})
                         : std::nullopt;
    };
    EXPECT_EQ(import().boards, 3);
    EXPECT_EQ(waits_, 2);
    limits = 1000;
    waits_ = 0;
    const BoardTally tally = import();
    EXPECT_EQ(tally.ending, u"网站一再不答，最后一次：要得太勤，被拒绝（456）"_s);
    EXPECT_EQ(waits_, 3);
    EXPECT_EQ(http_.paths.size(), 4) << "the others aren't asked for";
}

TEST_F(BoardImportTest, AHeldStoreIsTriedAgain) {
    const Impatience impatience;
    auto other = std::make_unique<Connection>(held(store_.stores.main));
    wait_ = [&](std::chrono::milliseconds, std::stop_token) -> QCoro::Task<> {
        other.reset();
        co_return;
    };
    EXPECT_EQ(import().boards, 3);
    EXPECT_FALSE(other);
}

}  // namespace guanchao

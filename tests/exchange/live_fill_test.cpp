#include "exchange/live_fill.h"

#include "platform/qt_http_client.h"
#include "tests/support/small_market.h"
#include "tests/support/store_test.h"

namespace guanchao {

// A folder of two codes and the theme 银行, and a market of four stocks in three boards.
class LiveFillTest : public StoreTest {
protected:
    LiveFillTest() {
        http_.client = std::make_unique<QtHttpClient>();
        services_.stockList = services_.boards = {market_.service()};
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 1, 1);
        store_.addCode(u"SZ000001"_s, u"平安银行"_s, 1, 1);
        store_.addMember(u"银行"_s, u"SH600000"_s, 7);
    }

    LiveFillResult fill(const LiveFillWish& wish = {}) {
        http_.paths.clear();
        control_ = std::make_unique<RunControl>();
        LiveFill run(store_.stores, clock_, http_, services_,
                     QStringLiteral(GUANCHAO_SOURCE_DIR "/data/initials.csv"), *control_,
                     {[](const RunProgress&) {}, [this] { ++stored_; }});
        return endOf(run.run(wish, {}));
    }
    qsizetype askedFor(const QString& what) const { return http_.paths.filter(what).size(); }
    QStringList themes() {
        return store_.rows(
            u"select zhutiname,dm,jc,guanzhudu from dzhzhuti order by zhutiname,dm"_s);
    }

    SmallMarket market_{{{u"SH600000"_s, u"浦发银行"_s},
                         {u"SH600519"_s, u"贵州茅台"_s},
                         {u"SZ000001"_s, u"平安银行"_s},
                         {u"SZ000002"_s, u"万科A"_s}},
                        {{u"白酒"_s, u"SH600519"_s},
                         {u"银行"_s, u"SH600000"_s},
                         {u"银行"_s, u"SZ000001"_s},
                         {u"酒店"_s, u"SZ000002"_s}}};
    Services services_;
    std::unique_ptr<RunControl> control_;
    int stored_ = 0;
    const QStringList filled_ = {u"白酒|SH600519|贵州茅台|1"_s, u"酒店|SZ000002|万科A|1"_s,
                                 u"银行|SH600000||7"_s, u"银行|SZ000001|平安银行|7"_s};
};

TEST_F(LiveFillTest, TheCodesComeFirstAndEachThemeIsSeenAtOnce) {
    LiveFillResult result = fill();
    EXPECT_EQ(themes(), filled_) << "new members have the attention of their theme, and never 0";
    EXPECT_TRUE(result.hasCodes() && result.hasThemes());
    EXPECT_EQ(stored_, 4);

    result = fill({.codes = false, .withBeijing = false, .themes = true});
    EXPECT_EQ(askedFor(u"getHQNodeData"_s), 0) << "all themes are whole";
    EXPECT_EQ(result.words(),
              u"主题：3 个板块的主题已经齐了，没有再读。\n"_s
              u"接下来关闭这个窗口，按 F9 更新行情。"_s);
}

TEST_F(LiveFillTest, WhatHasComeStaysWhereItIsStoppedAndIsNotAskedForAgain) {
    const struct {
        const char* name;
        QString stopAt;  // the path of the request that is under way
        int codes, themes;
    } cases[] = {
        {"the list of stocks", u"node=hs_a"_s, 2, 1},
        {"the list of boards", u"newFLJK"_s, 4, 1},
        {"the second board", u"gn_30001"_s, 4, 2},
    };
    for (const auto& it : cases) {
        SCOPED_TRACE(it.name);
        http_.onGet = [&] {
            if (http_.paths.last().contains(it.stopAt)) {
                control_->stop();
            }
        };
        const LiveFillResult result = fill();
        EXPECT_TRUE(result.stopped && !result.hasThemes());
        EXPECT_EQ(result.words().count(u"保留"_s), it.codes == 2 ? 0 : 1) << "told once";
        EXPECT_TRUE(result.words().endsWith(it.codes == 2 ? u"再点“开始”从头来。"_s
                                                          : u"再点“开始”只补没有读到的。"_s));
        EXPECT_EQ(store_.rows(u"select dm from dmb"_s).size(), it.codes);
        EXPECT_EQ(store_.rows(u"select distinct zhutiname from dzhzhuti"_s).size(), it.themes);
    }
    http_.onGet = nullptr;
    EXPECT_TRUE(fill().hasThemes());
    EXPECT_EQ(askedFor(u"node=gn_"_s), 2) << "of three boards the first is there";
    EXPECT_EQ(themes(), filled_);
}

TEST_F(LiveFillTest, EachPartThatFailsIsToldAndTheOtherComes) {
    const QString none = u"http://127.0.0.1:1"_s;
    const QString host = services_.boards[0].host;
    const struct {
        QString list, boards, board;  // the host of each, and the board that isn't answered
        bool codes, themes;
        QString words, logged;
    } cases[] = {
        {none, host, u"-"_s, false, true, u"代码表：没有读到"_s, u"更新代码表|连接不上"_s},
        {host, none, u"-"_s, true, false, u"主题：没有读到"_s, u"读板块列表|连接不上"_s},
        {host, host, u"gn_30001"_s, true, false, u"没有读到：酒店（"_s,
         u"导入概念板块|没有设置服务的网址"_s},
    };
    for (const auto& it : cases) {
        services_.stockList[0].host = it.list;
        services_.boards[0].host = it.boards;
        http_.instead = [&it](const QString& path) {
            return path.contains(it.board) ? std::optional(HttpReply{}) : std::nullopt;
        };
        store_.run({u"delete from dzhzhuti where dm!='SH600000'"_s});
        const KeptLog log(LogKind::failure);
        const LiveFillResult result = fill();
        EXPECT_EQ(log.lines, QStringList{it.logged});
        EXPECT_EQ(result.hasCodes(), it.codes);
        EXPECT_EQ(result.hasThemes(), it.themes);
        EXPECT_TRUE(holds(result.words(), it.words));
        EXPECT_EQ(result.words().contains(u"F9"_s), it.codes);
        EXPECT_EQ(result.words().contains(u"过一会儿再点“开始”，只补没有读到的。"_s), !it.themes);
    }
}

}  // namespace guanchao

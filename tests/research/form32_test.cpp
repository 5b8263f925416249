#include "research/form32.h"

#include <QSpinBox>

#include "app/form2.h"
#include "services/stock_code.h"
#include "tests/support/scripted_history.h"
#include "tests/support/window_test.h"

namespace guanchao {

class Form32Test : public WindowTest {
protected:
    Form32Test() {
        services_ = ScriptedHistory::services();
        clock_.moment = QDateTime(today_, QTime(16, 0));
        auto market = std::make_unique<ScriptedHistory>();
        market_ = market.get();
        http_.client = std::move(market);
        for (const QString& dm : {leadingIndex, u"SH600000"_s, u"SH600001"_s}) {
            for (const QDate& day : ScriptedHistory::weekdays({2026, 11, 2}, today_)) {
                market_->closes[dm][day] = 10;
            }
            market_->quotes[dm] = {10, 10};
        }
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 0, 0);
        store_.addCode(u"SH600001"_s, u"乙"_s, 0, 0);
    }

    void untilItsEnd() {
        until([this] { return !historyDesk_.shown().running; });
    }

    const QDate today_{2026, 11, 24};
    ScriptedHistory* market_ = nullptr;
    Runs runs_{failures_};
};

TEST_F(Form32Test, AFillGoesOnBehindTheClosedWindow) {
    open<Form32>();
    find<QSpinBox>(u"years"_s)->setValue(3);
    const auto gate = std::make_shared<Later<bool>>();
    market_->gate = gate;
    press(form_, u"fill"_s);
    until([this] { return !market_->asked.isEmpty(); });
    EXPECT_FALSE(button(u"fill"_s)->isEnabled() || find<QSpinBox>(u"years"_s)->isEnabled());
    leaveWindows();
    const Form2 main(environment_, windows_, desktop_);
    const auto* line = child<QLabel>(&main, u"fillLine"_s);
    EXPECT_TRUE(begins(line->text(), u"补全历史行情 "_s));
    open<Form32>();
    EXPECT_EQ(find<QSpinBox>(u"years"_s)->value(), 3);
    EXPECT_TRUE(find<QProgressBar>(u"progress"_s)->isVisible());
    press(form_, u"pause"_s);
    EXPECT_EQ(button(u"pause"_s)->text(), u"继续(&P)"_s);
    market_->gate = nullptr;
    gate->deliver(true);
    until([this] { return label(u"step"_s).startsWith(u"已暂停"_s); });
    press(form_, u"pause"_s);
    untilItsEnd();
    EXPECT_EQ(line->text(), QString());
    EXPECT_TRUE(begins(label(u"words"_s), u"补全完成。补了 2 只"_s));
    until([this] {
        return grid().rows() == 4 &&
               rowText(grid(), 2) == u"2|SH600000|浦发银行|2026-11-03|2026-11-24|16|0"_s;
    });
    EXPECT_TRUE(holds(label(u"services"_s), u"新浪（http://factors）：正常，应答 2 次"_s));
}

TEST_F(Form32Test, AStopAndTheEndOfTheProgramLoseNothing) {
    open<Form32>();
    for (const bool byEnd : {false, true}) {
        market_->closes.remove(u"SH600001"_s);
        market_->onGet = [&](const QString& dm) {
            if (dm == u"SH600001"_s) {
                byEnd ? runs_.start([this](std::stop_token stop) { return historyDesk_.end(stop); })
                      : press(form_, u"stop"_s);
            }
        };
        press(form_, u"fill"_s);
        untilItsEnd();
        EXPECT_TRUE(label(u"words"_s).startsWith(u"已停止"_s)) << byEnd;
        EXPECT_EQ(TestStores::rows(stores_.firstHistory, u"select distinct dm from geguhq"_s),
                  QStringList{u"SH600000"_s});
        EXPECT_FALSE(runs_.running());
    }
}

// Once a day, and again after an hour where the day isn't there yet.
TEST_F(Form32Test, TheUpdateOfTheDayBeginsByItself) {
    open<Form32>();
    const auto look = [this](const QTime& time) {
        clock_.moment = QDateTime(today_, time);
        market_->asked.clear();
        timeIsUp(historyDesk_.findChild<QTimer*>(u"historyLooks"_s));
        untilItsEnd();
        return market_->asked.contains(u"history SH000001"_s);
    };
    market_->today = QDate(2026, 11, 23);
    clock_.moment = QDateTime(market_->today, QTime(16, 0));
    press(form_, u"fill"_s);
    untilItsEnd();
    historyDesk_.start();
    market_->today = today_;
    EXPECT_FALSE(look(QTime(16, 0))) << "off at first";
    find<QCheckBox>(u"daily"_s)->click();
    EXPECT_FALSE(look(QTime(15, 29)));
    market_->closes[leadingIndex].remove(today_);
    EXPECT_TRUE(look(QTime(15, 30)));
    EXPECT_FALSE(look(QTime(16, 29)));
    market_->closes[leadingIndex][today_] = 10;
    EXPECT_TRUE(look(QTime(16, 30)));
    EXPECT_FALSE(look(QTime(20, 0)));
    EXPECT_EQ(TestStores::rows(stores_.secondHistory,
                               u"select count(*) from SH600001 where shijian='2026-11-24'"_s),
              QStringList{u"1"_s});
}

}  // namespace guanchao

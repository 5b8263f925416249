// A store with monitors, an engine over it and short ways to set both up. Windows and sound are
// counted only.
#pragma once

#include <QHash>

#include "base/values.h"
#include "monitor/alarm_engine.h"
#include "tests/support/fake_alarm_screen.h"
#include "tests/support/store_test.h"

namespace guanchao {

class MonitorFixture : public StoreTest {
protected:
    MonitorFixture() {
        globals_.jiankongkaiqi = 1;
        http_.answer = [this](const QString& path) {
            return replies_ ? std::optional(quoteReply(path, feedPrices_)) : std::nullopt;
        };
    }

    void replyWith(const QHash<QString, double>& prices) {
        replies_ = true;
        feedPrices_ = prices;
    }
    void setFrequency(int seconds) {
        store_.run({u"update tempcanshu set jiankongpinlu=%1"_s.arg(seconds)});
    }
    void watch(const QStringList& codes) {
        for (const QString& dm : codes) {
            store_.run({u"insert into jiankonghq(dm,jc) values('%1','%1')"_s.arg(dm)});
        }
    }
    void setQuote(const QString& dm, double sp, double zhangfu) {
        store_.run({u"update jiankonghq set sp=%1,zhangfu=%2 where dm='%3'"_s.arg(
            QString::number(sp, 'g', 15), QString::number(zhangfu, 'g', 15), dm)});
    }
    void addThemeMonitor(const QString& zhutiname, const QString& bijiaofu, double baojinzhi,
                         const QString& yinyue = u"/t.mp3"_s, int tanchuform = 1) {
        store_.run(
            {u"insert into zhutijiankong(zhutiname,bijiaofu,baojinzhi,tanchuform,"
             u"yinyue) values(%1,'%2',%3,%4,%5)"_s.arg(
                 quoted(zhutiname), bijiaofu, QString::number(baojinzhi),
                 QString::number(tanchuform), quoted(yinyue))});
    }
    void addStockMonitor(const QString& dm, const QString& leixin, const QString& bijiaofu,
                         double baojinzhi, const QString& yinyue = u"/s.mp3"_s,
                         int tanchuform = 1) {
        store_.run(
            {u"insert into gegujiankong(dm,leixin,bijiaofu,baojinzhi,tanchuform,"
             u"yinyue) values('%1','%2','%3',%4,%5,'%6')"_s.arg(
                 dm, leixin, bijiaofu, QString::number(baojinzhi), QString::number(tanchuform),
                 yinyue)});
    }

    QStringList pollList() { return store_.rows(u"select dm from jiankonghq order by dm"_s); }

    bool replies_ = false;               // whether the quote service answers
    QHash<QString, double> feedPrices_;  // by lower-case code; the former close is 10
    FakeAlarmScreen screen_;
    QStringList& rung_ = screen_.rung;
    int& shown_ = screen_.shown;
    QuoteFeed feed_{store_.stores, globals_, clock_, QuoteSource(http_, clock_, {Service()})};
    AlarmEngine engine_{store_.stores, globals_, clock_, feed_, failures_, screen_};
};

}  // namespace guanchao

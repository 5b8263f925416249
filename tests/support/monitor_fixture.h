// A store with monitors, an engine over it and short ways to set both up. Windows and sound are
// counted only.
#pragma once

#include <QHash>

#include "monitor/alarm_engine.h"
#include "tests/support/fake_alarm_screen.h"
#include "tests/support/fakes.h"
#include "tests/support/quote_reply.h"
#include "tests/support/test_stores.h"

namespace guanchao {

struct MonitorFixture {
    MonitorFixture() {
        globals_.jiankongkaiqi = 1;
        http_.answer = [this](const QString& path) {
            return replies_ ? std::optional(quoteReply(path, feedPrices_)) : std::nullopt;
        };
    }

    void setFrequency(int seconds) {
        store_.run({QStringLiteral("update tempcanshu set jiankongpinlu=%1").arg(seconds)});
    }
    void watch(const QStringList& codes) {
        for (const QString& dm : codes) {
            store_.run({QStringLiteral("insert into jiankonghq(dm,jc) values('%1','%1')").arg(dm)});
        }
    }
    void setQuote(const QString& dm, double sp, double zhangfu) {
        store_.run({QStringLiteral("update jiankonghq set sp=%1,zhangfu=%2 where dm='%3'")
                        .arg(QString::number(sp, 'g', 15), QString::number(zhangfu, 'g', 15), dm)});
    }
    void addThemeMonitor(const QString& zhutiname, const QString& bijiaofu, double baojinzhi,
                         const QString& yinyue = QStringLiteral("/t.mp3"), int tanchuform = 1) {
        store_.run({QStringLiteral("insert into zhutijiankong(zhutiname,bijiaofu,baojinzhi,"
                                   "tanchuform,yinyue) values('%1','%2',%3,%4,'%5')")
                        .arg(zhutiname, bijiaofu, QString::number(baojinzhi),
                             QString::number(tanchuform), yinyue)});
    }
    void addStockMonitor(const QString& dm, const QString& leixin, const QString& bijiaofu,
                         double baojinzhi, const QString& yinyue = QStringLiteral("/s.mp3"),
                         int tanchuform = 1) {
        store_.run({QStringLiteral("insert into gegujiankong(dm,leixin,bijiaofu,baojinzhi,"
                                   "tanchuform,yinyue) values('%1','%2','%3',%4,%5,'%6')")
                        .arg(dm, leixin, bijiaofu, QString::number(baojinzhi),
                             QString::number(tanchuform), yinyue)});
    }

    TestStores store_;
    Globals globals_;
    FakeClock clock_;
    FakeHttp http_;
    bool replies_ = false;               // whether the quote service answers
    QHash<QString, double> feedPrices_;  // by lower-case code; the former close is 10
    FakeAlarmScreen screen_;
    QStringList& rung_ = screen_.rung;
    int& shown_ = screen_.shown;
    FakeFailures failures_;
    QuoteFeed feed_{store_.stores, globals_, clock_, http_, Service()};
    AlarmEngine engine_{store_.stores, globals_, clock_, feed_, failures_, screen_};
};

}  // namespace guanchao

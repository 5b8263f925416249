#include "research/forward_returns.h"

#include <utility>

#include "base/values.h"
#include "store/recordset.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// An open above this part of the former close is at the upper limit: nobody sells.
constexpr double limitUp = 1.099;

double gain(double price, double base) {
    return roundTo((price / base - 1) * 100, 2);
}

// Buys as soon as the stock can be bought, and notes the closes of the days that count.
class Purchase {
public:
    explicit Purchase(const AdjustedDay& first) : firstClose_(first.fqsp) {}

    // The days behind the first, counted from 1.
    void take(int c, const AdjustedDay& day) {
        if (c == 1) {
            buy = day.fqkp > limitUp * firstClose_ ? 0 : day.fqkp;
            close1 = day.fqsp;
        } else if (c == 2) {
            close2 = day.fqsp;
            if (buy == 0 && day.fqkp > limitUp * close1) {
                close2 = 0;
            } else if (buy == 0) {
                buy = day.fqkp;
            }
        } else if (c == 3 && buy == 0) {
            buy = day.fqkp;
        } else if (c == 5) {
            close5 = day.fqsp;
        }
    }

    double buy = 0;
    double close1 = 0;
    double close2 = 0;
    double close5 = 0;

private:
    double firstClose_;
};

Purchase purchaseOver(const QList<AdjustedDay>& history) {
    Purchase purchase(history.first());
    int c = 0;
    for (qsizetype at = 0; at < history.size(); ++at, ++c) {
        purchase.take(c, history[at]);
        const QString& day = history[at].shijian;
        if (at + 1 < history.size() && history[at + 1].shijian == day) {
            ++at;
        }
    }
    return purchase;
}

QList<AdjustedDay> readHistory(Connection& dayHistory, const QString& dm, const QString& shijian,
                               const QString& yuyuedate) {
    QList<AdjustedDay> history;
    Recordset day(dayHistory,
                  u"select   dm,date(shijian) as shijian,,cast(kp as Double)/100*fuquanyz as "
                  u" fqkp,cast(kp as Double)/100 as kp, cast(zg as Double)/100 as zg, cast(zd as"
                  u" Double)/100 as zd, cast(sp as Double)/100 as sp,cast(sp as"
                  u" Double)/100*fuquanyz as fqsp, chengjiaoe, chengjiaol,cast(qiansp as"
                  u" Double)/100 as qiansp from "_s +
                      quotedName(dm) + u" where  date(shijian)>="_s + quoted(shijian) +
                      u" and date(shijian)<"_s + quoted(yuyuedate) +
                      u"  order by date(shijian)  asc"_s);
    for (; !day.atEnd(); day.moveNext()) {
        history << AdjustedDay{day.value(u"shijian").toText(), day.value(u"fqkp").toNumber(),
                               day.value(u"fqsp").toNumber()};
    }
    return history;
}

QString updateStatement(const ForwardGains& gains, const QString& rowid) {
    return u"update yejiyuyuejinqi set yirizhang="_s + numberText(gains.yirizhang) +
           u",errizhang="_s + numberText(gains.errizhang) + u",wurizhang="_s +
           numberText(gains.wurizhang) + u",daoqizhang="_s + numberText(gains.daoqizhang) +
           u",kaipanzhang="_s + numberText(gains.kaipanzhang) + u" where rowid="_s + rowid;
}

// One run over its two stores.
class AllReturns {
public:
    AllReturns(const Stores& stores, ResearchWork& work, Activity& activity)
        : main_(stores.main.open()),
          dayHistory_(stores.firstHistory.open()),
          work_(work),
          activity_(activity) {}

    // True if every code was taken.
    bool take(bool stopTicked) {
        main_.execute(u"update dmb set temp=0"_s);
        activity_.wrote(u"代码表重新开始的完成标记"_s);
        Recordset codes(main_,
                        u"select rowid,dm,jc from yejiyuyuejinqi where "
                        u" date(todayriqi)>='2016-04-01' group by dm "_s);
        work_.showSubject(u"代码总数:"_s + QString::number(codes.count()));
        work_.begin(codes.count());
        for (; !codes.atEnd(); codes.moveNext()) {
            const QString dm = codes.value(u"dm").toText();
            takeCode(dm);
            main_.execute(u"update  dmb set temp=1 where dm="_s + quoted(dm));
            work_.showStep(u"当前代码:"_s + dm);
            work_.oneDone();
            if (stopTicked || work_.stopped()) {
                work_.showStep(u"提前停止:"_s + dm);
                return false;
            }
            work_.endIfAbandoned();
        }
        return true;
    }

private:
    void takeCode(const QString& dm) {
        Recordset row(main_,
                      u"select rowid,dm,date(todayriqi) as shijian,date(yuyuedate) as yuyuedate"
                      u" from yejiyuyuejinqi where  dm="_s +
                          quoted(dm) +
                          u"  and date(todayriqi)>='2016-04-01' order by date(todayriqi) asc"_s);
        if (row.atEnd()) {
            return;
        }
        CodeReturns returns;
        Transaction transaction(main_);
        for (; !row.atEnd(); row.moveNext()) {
            const QString shijian = row.value(u"shijian").toText();
            const ForwardGains& gains = returns.next(shijian, [&] {
                return readHistory(dayHistory_, dm, shijian, row.value(u"yuyuedate").toText());
            });
            main_.execute(updateStatement(gains, row.value(u"rowid").toText()));
            work_.endIfAbandoned();
        }
        transaction.commit();
        if (!std::exchange(wroteCode_, true)) {
            activity_.wrote(u"此前各代码的结果"_s);
        }
    }

    Connection main_;
    Connection dayHistory_;
    ResearchWork& work_;
    Activity& activity_;
    bool wroteCode_ = false;
};

// The adjusted prices before a day, newest first.
QList<AdjustedDay> readPriorHistory(Connection& dayHistory, const QString& dm, const QString& day) {
    QList<AdjustedDay> history;
    Recordset row(dayHistory,
                  u"select  dm,date(shijian) as shijian,cast(sp as Double)/100*fuquanyz as fqsp,"
                  u"cast(kp as Double)/100*fuquanyz as fqkp,cast(sp as Double)/100 as sp,chengjiaoe"
                  u" from "_s +
                      quotedName(dm) + u" where date(shijian)<"_s + quoted(day) +
                      u"  order by date(shijian)  desc limit 130"_s);
    for (; !row.atEnd(); row.moveNext()) {
        history << AdjustedDay{row.value(u"shijian").toText(), row.value(u"fqkp").toNumber(),
                               row.value(u"fqsp").toNumber()};
    }
    return history;
}

}  // namespace

ForwardGains forwardGains(const QList<AdjustedDay>& history, const ForwardGains& former) {
    ForwardGains gains;
    gains.errizhang = former.errizhang;
    if (history.isEmpty()) {
        return gains;
    }
    const Purchase purchase = purchaseOver(history);
    const AdjustedDay& first = history.first();
    const double last = history.last().fqsp;
    const auto orLast = [&](double close) { return close == 0 ? last : close; };
    if (first.fqsp > 0) {
        gains.kaipanzhang = gain(first.fqkp == 0 ? first.fqsp : first.fqkp, first.fqsp);
    }
    if (purchase.buy > 0) {
        gains.yirizhang = gain(orLast(purchase.close1), purchase.buy);
        gains.errizhang = gain(orLast(purchase.close2), purchase.buy);
        gains.wurizhang = gain(orLast(purchase.close5), purchase.buy);
        gains.daoqizhang = gain(last, purchase.buy);
    }
    return gains;
}

PriorGains priorGains(const QList<AdjustedDay>& history) {
    PriorGains gains;
    if (history.size() <= 4) {
        return gains;
    }
    const AdjustedDay& newest = history.first();
    const double price = newest.fqsp == 0 ? newest.fqkp : newest.fqsp;
    const auto since = [&](const AdjustedDay& day) {
        return day.fqsp > 0 ? gain(price, day.fqsp) : 0;
    };
    gains.one = since(history[1]);
    gains.three = since(history[3]);
    gains.ten = history.size() > 10 ? since(history[10]) : 0;
    gains.all = since(history.last());
    return gains;
}

const ForwardGains& CodeReturns::next(const QString& shijian, const ReadHistory& readHistory) {
    if (shijian != shijian_) {
        shijian_ = shijian;
        gains_ = forwardGains(readHistory(), gains_);
    }
    return gains_;
}

ForwardReturns::ForwardReturns(const Stores& stores, const Globals& globals, Dialogs& dialogs,
                               ResearchRun& run)
    : stores_(stores), globals_(globals), dialogs_(dialogs), run_(run) {}

QCoro::Task<> ForwardReturns::takeForwardReturns(bool stopTicked, std::stop_token stop) {
    const QString name = u"取后期涨幅"_s;
    if (refusesWhileWriting(globals_, dialogs_, name)) {
        co_return;
    }
    const auto job = [stores = stores_, stopTicked](ResearchWork& work, Activity& activity) {
        return AllReturns(stores, work, activity).take(stopTicked);
    };
    const bool complete = co_await run_.run(name, job, stop);
    if (complete) {
        dialogs_.tell(u"取后期涨幅完成!"_s, u"听涛阁"_s);
    }
}

PriorGains ForwardReturns::priorGains(const QString& dm, const QString& day,
                                      const std::function<void(const QString&)>& showCaption) {
    showCaption(dm + u"正在计算前面涨幅"_s);
    Connection dayHistory = stores_.firstHistory.open();
    try {
        return guanchao::priorGains(readPriorHistory(dayHistory, dm, day));
    } catch (const StoreError&) {
        return {};
    }
}

}  // namespace guanchao

#include "research/selection_scan.h"

#include <QScopeGuard>
#include <functional>
#include <utility>

#include "base/activity.h"
#include "base/values.h"
#include "research/stock_row.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString firstDay = u"2000-01-01"_s;

// A stock that ends its second day at this part of the theme-day's close or below has fallen.
constexpr double fallenTo = 0.93;

// The day as the research tables keep it.
QString riqiOf(const QString& day) {
    return day + u" 00:00:00"_s;
}

QString themesOfDay(const QString& day) {
    return u"select  zhutiname,round(avg(round((cast(sp as Double)/cast(qiansp as"
           u" Double)-1)*100,2)),2) as 涨幅,max(round((cast(sp as Double)/cast(qiansp as"
           u" Double)-1)*100,2)) as touguzhangfu,count(*) as 只数,SUM(iif((cast(sp as"
           u" Double)/cast(qiansp as Double)-1)*100>9.5 and zg=sp,1,0)) as"
           u" zhangtinshu,SUM(iif((cast(sp as Double)/cast(qiansp as Double)-1)*100>9.5 and"
           u" zg=zd,1,0)) as yizishu from dzhzhuti AS dzhzhuti1 INNER JOIN geguhq AS geguhq1 on"
           u" dzhzhuti1.dm=geguhq1.dm  where date(shijian)="_s +
           quoted(day) + u"    group by zhutiname order by (zhangtinshu-只数/4-2) desc,zhutiname"_s;
}

// The statement divides whole numbers for its order, this doesn't: a theme in front may fail where
// one behind would pass.
bool isBelowTheBar(const Recordset& theme) {
    return theme.value(u"zhangtinshu").toNumber() < theme.value(u"只数").toNumber() / 4 + 2;
}

// The anchor day of a stock of a theme-day; empty if the stock is passed over.
using Anchor = std::function<QString(const QString& dm, const QString& day)>;

QString themeDayItself(const QString&, const QString& day) {
    return day;
}

// One scan over its three stores.
class Scan {
public:
    Scan(const Stores& stores, ResearchWork& work, Activity& activity, bool writesHigh)
        : dayHistory_(stores.firstHistory.open()),
          stockHistory_(stores.secondHistory),
          main_(stores.main.open()),
          work_(work),
          activity_(activity),
          writesHigh_(writesHigh) {
        prepare([this] { copies_.coverMemberships(); });
    }

    // True, as below, if no day was left out.
    bool chooseThemes() {
        prepare([this] {
            copies_.coverByDay(u"geguhq"_s, u"dm,shijian,sp,qiansp,zg,zd"_s,
                               u"date(shijian)>'2017-04-06'"_s);
        });
        Recordset index(
            dayHistory_,
            u"select  date(shijian) as shijian,round((cast(sp as Double)/cast(qiansp as"
            u" Double)-1)*100,2) as zhangfu from SH000001   where date(shijian)>'2017-04-06'"
            u" order by date(shijian) asc"_s);
        work_.begin(index.count());
        for (; !index.atEnd() && !work_.stopped(); index.moveNext()) {
            chooseThemesOfDay(index);
            work_.oneDone();
        }
        return index.atEnd();
    }

    bool addStocks(const Anchor& anchor) {
        Recordset chosen(main_,
                         u"select  date(riqi) as shijian,ticai from xuanticai   where"
                         u" date(riqi)>'2006-04-06' order by date(riqi) asc,ticai"_s);
        work_.begin(chosen.count());
        for (; !chosen.atEnd() && !work_.stopped(); chosen.moveNext()) {
            const QString day = chosen.value(u"shijian").toText();
            if (day >= firstDay) {
                work_.showCaption(u"计算到时间:"_s + day);
                takeMembers(chosen.value(u"ticai").toText(), day, anchor);
            }
            storeDay();
            work_.oneDone();
        }
        return chosen.atEnd();
    }

    QString dayAfterFall(const QString& dm, const QString& day) {
        Recordset days = stockHistory_.daysFrom(dm, day);
        if (days.count() < 3) {
            return {};
        }
        const double close = days.value(u"fuquansp").toNumber();
        days.moveNext();
        days.moveNext();
        const double ratio = days.value(u"fuquansp").toNumber() / close;
        return ratio <= fallenTo ? days.value(u"shijian").toText() : QString();
    }

private:
    void prepare(const std::function<void()>& copy) {
        const auto end = qScopeGuard([this] { work_.showLabel3({}); });
        copy();
    }

    void tellOfCopy() {
        work_.showLabel3(u"正在整理历史行情…"_s);
        work_.endIfStopped();
    }

    void chooseThemesOfDay(const Recordset& index) {
        const QString day = index.value(u"shijian").toText();
        if (day >= firstDay) {
            work_.showCaption(u"计算到时间:"_s + day);
            work_.showLabel6(day);
            work_.endIfAbandoned();
            chooseBestThemes(day, index.value(u"zhangfu"));
        }
        storeDay();
    }

    void chooseBestThemes(const QString& day, const Value& indexGain) {
        for (Recordset theme(dayHistory_, themesOfDay(day)); !theme.atEnd(); theme.moveNext()) {
            const QString zhutiname = theme.value(u"zhutiname").toText();
            work_.showLabel2(zhutiname);
            work_.endIfAbandoned();
            if (isBelowTheBar(theme)) {
                return;
            }
            addTheme(day, theme, indexGain);
            takeMembers(zhutiname, day, themeDayItself);
        }
    }

    void addTheme(const QString& day, const Recordset& theme, const Value& indexGain) {
        QStringList numbers;
        for (const QStringView name : {u"涨幅", u"zhangtinshu", u"yizishu", u"只数"}) {
            numbers << numberText(theme.value(name).toNumber());
        }
        numbers << numberText(indexGain.toNumber())
                << numberText(theme.value(u"touguzhangfu").toNumber());
        statements_ << u"insert into xuanticai(riqi,ticai,ticaizhang,zhangtinshu,yizishu,zonggeshu,"
                       u"dapanzhang,touguzhangfu) values("_s +
                           quoted(riqiOf(day)) + u',' + quoted(theme.value(u"zhutiname").toText()) +
                           u',' + numbers.join(u',') + u")"_s;
    }

    void takeMembers(const QString& zhutiname, const QString& day, const Anchor& anchor) {
        work_.showLabel3(u"选中题材:"_s + zhutiname);
        work_.endIfAbandoned();
        Recordset member(dayHistory_, u"select  zhutiname,dm from dzhzhuti   where zhutiname="_s +
                                          quoted(zhutiname) + u" order by rowid"_s);
        for (; !member.atEnd(); member.moveNext()) {
            const QString dm = member.value(u"dm").toText();
            const QString D = anchor(dm, day);
            if (!D.isEmpty()) {
                takeStock(dm, D, riqiOf(day), zhutiname);
            }
        }
    }

    void takeStock(const QString& dm, const QString& D, const QString& riqi,
                   const QString& zhutiname) {
        if (const std::optional<StockRow> row = builder_.build(dm, D)) {
            statements_ << insertStatement(*row, riqi, zhutiname, writesHigh_);
        }
    }

    // The rows of a day wait until it is complete: alarms and other windows write all the while.
    void storeDay() {
        Transaction transaction(main_);
        const QStringList statements = std::exchange(statements_, {});
        for (const QString& statement : statements) {
            main_.execute(statement);
        }
        transaction.commit();
        if (!statements.isEmpty() && !std::exchange(wroteDay_, true)) {
            activity_.wrote(u"此前各日的结果"_s);
        }
    }

    Connection dayHistory_;
    StockHistory stockHistory_;
    Connection main_;
    ResearchWork& work_;
    Activity& activity_;
    bool wroteDay_ = false;
    bool writesHigh_;
    IndexedCopies copies_{dayHistory_, [this] { tellOfCopy(); }};
    StockRowBuilder builder_{stockHistory_, main_, work_};
    QStringList statements_;
};

ResearchRun::Job chooseThemesOf(const Stores& stores) {
    return [stores](ResearchWork& work, Activity& activity) {
        return Scan(stores, work, activity, false).chooseThemes();
    };
}

ResearchRun::Job addStocksOf(const Stores& stores) {
    return [stores](ResearchWork& work, Activity& activity) {
        return Scan(stores, work, activity, true).addStocks(themeDayItself);
    };
}

ResearchRun::Job addFallenStocksOf(const Stores& stores) {
    return [stores](ResearchWork& work, Activity& activity) {
        Scan scan(stores, work, activity, true);
        return scan.addStocks(
            [&scan](const QString& dm, const QString& day) { return scan.dayAfterFall(dm, day); });
    };
}

}  // namespace

SelectionScan::SelectionScan(const Stores& stores, const Globals& globals, Dialogs& dialogs,
                             ResearchRun& run)
    : stores_(stores), globals_(globals), dialogs_(dialogs), run_(run) {}

QCoro::Task<> SelectionScan::chooseThemes(std::stop_token stop) {
    const ResearchRun::Job job = chooseThemesOf(stores_);
    co_await scan(u"选历年主题"_s, job, stop);
}

QCoro::Task<> SelectionScan::addStocks(std::stop_token stop) {
    const ResearchRun::Job job = addStocksOf(stores_);
    co_await scan(u"根据选中的主题补充股票"_s, job, stop);
}

QCoro::Task<> SelectionScan::addFallenStocks(std::stop_token stop) {
    const ResearchRun::Job job = addFallenStocksOf(stores_);
    const bool complete = co_await scan(u"选后2天跌7%的"_s, job, stop);
    if (complete) {
        dialogs_.tell(u"完成!"_s, u"听涛阁"_s);
    }
}

QCoro::Task<bool> SelectionScan::scan(QString name, ResearchRun::Job job, std::stop_token stop) {
    if (refusesWhileWriting(globals_, dialogs_, u"选股"_s)) {
        co_return false;
    }
    const bool complete = co_await run_.run(name, job, stop);
    co_return complete;
}

}  // namespace guanchao

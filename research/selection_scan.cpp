#include "research/selection_scan.h"

#include <QScopeGuard>
#include <functional>
#include <utility>

#include "base/activity.h"
#include "research/scan_tally.h"
#include "research/selection_writer.h"
#include "research/theme_ranking.h"
#include "services/stock_code.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString firstDay = u"2000-01-01"_s;

// A stock that ends its second day at this part of the theme-day's close or below has fallen.
constexpr double fallenTo = 0.93;

// The ranking divides whole numbers, this doesn't: a theme in front may fail where one behind would
// pass.
bool isBelowTheBar(const ThemeOfDay& theme) {
    return theme.zhangtinshu < theme.zhishu / 4.0 + 2;
}

// The anchor day of a stock of a theme-day; nothing if the stock is passed over.
using Anchor = std::function<std::optional<DayNumber>(const QString& dm, DayNumber day)>;

std::optional<DayNumber> themeDayItself(const QString&, DayNumber day) {
    return day;
}

// One scan over its three stores.
class Scan {
public:
    Scan(const Stores& stores, std::shared_ptr<HistoryShelf> shelf, ResearchWork& work,
         Activity& activity, bool writesHigh, bool replaces)
        : stores_(stores),
          loan_(std::move(shelf)),
          dayHistory_(stores.firstHistory.open()),
          stockHistory_(stores.secondHistory, columns().stocks()),
          main_(stores.main.open()),
          work_(work),
          writer_(main_, activity, writesHigh, replaces) {
        columns().take(stores.firstHistory, stores.secondHistory);
    }

    // True, as below, if no day was left out.
    bool chooseThemes() {
        reading([this](const auto& tell) {
            columns().readAll(stores_.firstHistory, stores_.secondHistory, tell);
        });
        const MarketColumns& market = columns().market();
        tally_.leaveOut(stores_.firstHistory.path, market.unusable());
        ThemeRanking ranking(market);
        Recordset index(
            dayHistory_,
            u"select  date(shijian) as shijian,round((cast(sp as Double)/cast(qiansp as"
            u" Double)-1)*100,2) as zhangfu from SH000001   where date(shijian)>'2017-04-06'"
            u" order by date(shijian) asc"_s);
        work_.begin(index.count());
        for (; !index.atEnd() && !work_.stopped(); index.moveNext()) {
            chooseThemesOfDay(index, market, ranking);
            work_.oneDone();
        }
        return end(index.atEnd());
    }

    bool addStocks(const Anchor& anchor) {
        const Memberships memberships(dayHistory_);
        reading([&](const auto& tell) {
            columns().readStocks(stores_.secondHistory, memberships, tell);
        });
        Recordset chosen(main_,
                         u"select  date(riqi) as shijian,ticai from xuanticai   where"
                         u" date(riqi)>'2006-04-06' order by date(riqi) asc,ticai"_s);
        work_.begin(chosen.count());
        for (; !chosen.atEnd() && !work_.stopped(); chosen.moveNext()) {
            const QString day = chosen.value(u"shijian").toText();
            if (day >= firstDay) {
                beginDay(day);
                takeMembers(memberships, chosen.value(u"ticai").toText(), anchor);
            }
            writer_.storeDay();
            work_.oneDone();
        }
        return end(chosen.atEnd());
    }

    std::optional<DayNumber> dayAfterFall(const QString& dm, DayNumber day) {
        const StockColumns& stock = stockHistory_.of(dm);
        const size_t first = stock.firstFrom(day);
        const size_t third = first + 2;
        if (third >= stock.size()) {
            return std::nullopt;
        }
        const double close = required(stock.fuquansp(first), stock.day(first));
        const double ratio = required(stock.fuquansp(third), stock.day(third)) / close;
        return ratio <= fallenTo ? std::optional(stock.day(third)) : std::nullopt;
    }

private:
    HistoryColumns& columns() { return loan_.columns(); }

    template <typename Read>
    void reading(const Read& read) {
        const auto end = qScopeGuard([this] { work_.showStep({}); });
        work_.showStep(u"正在读入历史行情…"_s);
        read([this](int done, int total) { work_.reading(done, total); });
    }

    void beginDay(const QString& day) {
        tally_.days += day == day_ ? 0 : 1;
        day_ = day;
        work_.showCaption(u"计算到时间:"_s + day);
    }

    void chooseThemesOfDay(const Recordset& index, const MarketColumns& market,
                           ThemeRanking& ranking) {
        const QString day = index.value(u"shijian").toText();
        if (day >= firstDay) {
            beginDay(day);
            writer_.beginDay(day);
            work_.showDay(day);
            work_.endIfAbandoned();
            chooseBestThemes(market, ranking, index.value(u"zhangfu"));
        }
        writer_.storeDay();
    }

    void chooseBestThemes(const MarketColumns& market, ThemeRanking& ranking,
                          const Value& indexGain) {
        const Memberships& memberships = market.memberships();
        const MarketDay& rows = market.day(dayNumber(day_));
        for (const ThemeOfDay& theme : ranking.of(rows)) {
            const QString zhutiname = memberships.zhutiname(theme.theme);
            work_.showSubject(zhutiname);
            work_.endIfAbandoned();
            if (isBelowTheBar(theme)) {
                return;
            }
            if (indexGain.isNull()) {
                tally_.passOver(stores_.firstHistory.path, leadingIndex, day_);
                return;
            }
            const GainsOfDay gains = ranking.gains(theme.theme, rows);
            writer_.addTheme(
                day_, {zhutiname, gains.mean, double(theme.zhangtinshu), double(theme.yizishu),
                       double(theme.zhishu), indexGain.toNumber(), gains.best});
            takeMembers(memberships, zhutiname, themeDayItself);
        }
    }

    void takeMembers(const Memberships& memberships, const QString& zhutiname,
                     const Anchor& anchor) {
        ++tally_.themes;
        work_.showStep(u"选中题材:"_s + zhutiname);
        work_.endIfAbandoned();
        writer_.beginStocks(day_, zhutiname);
        for (const std::int32_t stock : memberships.stocksOf(zhutiname)) {
            const QString dm = memberships.dm(stock);
            try {
                takeStock(dm, zhutiname, anchor);
            } catch (const MissingNumber& missing) {
                tally_.passOver(stores_.secondHistory.path, dm, dayText(missing.day()));
            }
            work_.endIfAbandoned();
        }
    }

    void takeStock(const QString& dm, const QString& zhutiname, const Anchor& anchor) {
        const std::optional<DayNumber> D = anchor(dm, dayNumber(day_));
        const std::optional<StockRow> row = D ? builder_.build(dm, *D) : std::nullopt;
        if (row) {
            writer_.addStock(day_, zhutiname, *row);
            ++tally_.stocks;
        }
    }

    bool end(bool complete) {
        if (complete) {
            writer_.removeOthers();
        }
        work_.showStep((complete ? u"完成："_s : u"已停止："_s) + tally_.words());
        return complete;
    }

    const Stores& stores_;
    HistoryLoan loan_;
    Connection dayHistory_;
    StockHistory stockHistory_;
    Connection main_;
    ResearchWork& work_;
    SelectionWriter writer_;
    StockRowBuilder builder_{stockHistory_, main_};
    QString day_;  // yyyy-MM-dd
    ScanTally tally_;
};

bool holdsRows(const Stores& stores, const QString& table) {
    const Activity activity(u"查看已有的选股结果"_s);
    Connection main = stores.main.open();
    return !Recordset(main, u"select 1 from "_s + table + u" limit 1"_s).atEnd();
}

const QString whatBecomesOfRows =
    u"这里已经有以前选出的股票，是哪个按钮选出的都一样。\n\n“添加”：以前的都留着，这一次的记在后面"
    u"，同一天的就有两份。\n"
    u"“替换”：以前的由这一次的代替；中途停止，还没有算到的日子留着以前的。"_s;

}  // namespace

SelectionScan::SelectionScan(const Stores& stores, const Globals& globals, Dialogs& dialogs,
                             ResearchRun& run, std::shared_ptr<HistoryShelf> shelf)
    : stores_(stores), globals_(globals), dialogs_(dialogs), run_(run), shelf_(std::move(shelf)) {}

QCoro::Task<> SelectionScan::chooseThemes(std::stop_token stop) {
    const MakeJob make = [stores = stores_, shelf = shelf_](bool replaces) {
        return [=](ResearchWork& work, Activity& activity) {
            return Scan(stores, shelf, work, activity, false, replaces).chooseThemes();
        };
    };
    const bool holds = holdsRows(stores_, u"xuanticai"_s) || holdsRows(stores_, u"xuanticaigu"_s);
    co_await scan(u"选历年主题"_s, holds, make, stop);
}

QCoro::Task<> SelectionScan::addStocks(std::stop_token stop) {
    const MakeJob make = [stores = stores_, shelf = shelf_](bool replaces) {
        return [=](ResearchWork& work, Activity& activity) {
            return Scan(stores, shelf, work, activity, true, replaces).addStocks(themeDayItself);
        };
    };
    const bool holds = holdsRows(stores_, u"xuanticaigu"_s);
    co_await scan(u"根据选中的主题补充股票"_s, holds, make, stop);
}

QCoro::Task<> SelectionScan::addFallenStocks(std::stop_token stop) {
    const MakeJob make = [stores = stores_, shelf = shelf_](bool replaces) {
        return [=](ResearchWork& work, Activity& activity) {
            Scan scan(stores, shelf, work, activity, true, replaces);
            return scan.addStocks(
                [&scan](const QString& dm, DayNumber day) { return scan.dayAfterFall(dm, day); });
        };
    };
    const bool holds = holdsRows(stores_, u"xuanticaigu"_s);
    const bool complete = co_await scan(u"选后2天跌7%的"_s, holds, make, stop);
    if (complete) {
        dialogs_.tell(u"完成!"_s, u"听涛阁"_s);
    }
}

QCoro::Task<bool> SelectionScan::scan(QString name, bool holds, MakeJob make,
                                      std::stop_token stop) {
    if (refusesWhileWriting(globals_, dialogs_, u"选股"_s)) {
        co_return false;
    }
    Existing answer = Existing::add;
    if (holds && !run_.running()) {
        answer = co_await dialogs_.askToReplace(stop, whatBecomesOfRows);
    }
    if (answer == Existing::leave) {
        co_return false;
    }
    const ResearchRun::Job job = make(answer == Existing::replace);
    const bool complete = co_await run_.run(name, job, stop);
    co_return complete;
}

}  // namespace guanchao

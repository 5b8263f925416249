#include "tests/support/test_history.h"

#include <QDate>
#include <QFile>
#include <algorithm>
#include <cmath>
#include <random>

#include "store/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString dayColumns =
    u"(shijian text,kp integer,zg integer,zd integer,sp integer,qiansp integer,chengjiaol numeric,"
    u"chengjiaoe numeric,fuquanyz real)"_s;

// Half of the stocks keep their days with a time.
QString rowValues(const QString& dm, const HistoryRow& row) {
    const bool withTime = dm.back().unicode() % 2 == 0;
    return u"'%1',%2,%3,%4,%5,%6,%7,0,%8"_s
        .arg(withTime ? row.day + u" 00:00:00"_s : QString(row.day))
        .arg(row.kp)
        .arg(row.zg)
        .arg(row.zd)
        .arg(row.sp)
        .arg(row.qiansp)
        .arg(row.chengjiaol)
        .arg(row.fuquanyz);
}

void addStock(Connection& store, const QString& dm, const QList<HistoryRow>& rows) {
    store.execute(u"create table "_s + dm + dayColumns);
    for (const HistoryRow& row : rows) {
        store.execute(u"insert into "_s + dm + u" values("_s + rowValues(dm, row) + u")"_s);
    }
}

void addIndex(Connection& store, const QString& table, const QString& terms) {
    store.execute(u"create index i_"_s + table + u" on "_s + table + u"("_s + terms + u")"_s);
}

void writeFirst(Connection& store, const MarketHistory& history, bool indexed) {
    store.execute(u"create table geguhq(dm text,"_s + dayColumns.sliced(1));
    store.execute(u"create table dzhzhuti(zhutiname text,dm text)"_s);
    for (const auto& [theme, dm] : history.members) {
        store.execute(u"insert into dzhzhuti values('%1','%2')"_s.arg(zhuanyisql(theme), dm));
    }
    for (auto stock = history.stocks.begin(); stock != history.stocks.end(); ++stock) {
        addStock(store, stock.key(), stock.value());
        for (const HistoryRow& row : stock.value()) {
            store.execute(u"insert into geguhq values('"_s + stock.key() + u"',"_s +
                          rowValues(stock.key(), row) + u")"_s);
        }
    }
    if (indexed) {
        addIndex(store, u"geguhq"_s, u"date(shijian)"_s);
        addIndex(store, u"dzhzhuti"_s, u"dm"_s);
        store.execute(u"create index i_name on dzhzhuti(zhutiname)"_s);
    }
}

void writeSecond(Connection& store, const MarketHistory& history, bool indexed) {
    store.execute(u"create table nishihq2"_s + dayColumns);
    for (auto stock = history.stocks.begin(); stock != history.stocks.end(); ++stock) {
        addStock(store, stock.key(), stock.value());
        if (indexed) {
            addIndex(store, stock.key(), u"date(shijian)"_s);
        }
    }
}

class RandomMarket {
public:
    explicit RandomMarket(unsigned seed) : random_(seed) {}

    MarketHistory make() {
        MarketHistory history;
        for (int theme = 0; theme < 6; ++theme) {
            for (int member = pick(8) + 5; member > 0; --member) {
                history.members << qMakePair(u"主题%1"_s.arg(theme), code(theme * 7 + member));
            }
        }
        for (const auto& [theme, dm] : history.members) {
            if (!history.stocks.contains(dm)) {
                history.stocks[dm] = stock(theme.back().digitValue());
            }
        }
        for (const QString& day : days_) {
            history.stocks[u"SH000001"_s] << HistoryRow{.day = day, .sp = 1000 + pick(40)};
        }
        return history;
    }

private:
    int pick(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
    static QString code(int number) { return u"SH%1"_s.arg(600000 + number); }

    QList<HistoryRow> stock(int theme) {
        QList<HistoryRow> rows;
        int close = 2000 + pick(3000);
        for (int at = pick(3) == 0 ? pick(60) : 0; at < days_.size(); ++at) {
            if (pick(12) == 0) {
                continue;
            }
            HistoryRow row{.day = days_[at], .qiansp = close, .chengjiaol = 1 + pick(90000)};
            const bool hot = at % 6 == theme && pick(3) > 0;
            close = hot ? static_cast<int>(std::lround(close * 1.1))
                        : close + close * (pick(1200) - 600) / 10000;
            row.sp = close;
            row.kp = close - pick(50);
            row.zg = close + (hot && pick(8) > 0 ? 0 : pick(30));
            row.zd = hot && pick(3) == 0 ? row.zg : std::min(row.kp, close) - pick(30);
            row.fuquanyz = 1 + pick(3) * 0.3;
            rows << row;
        }
        return rows;
    }

    std::mt19937 random_;
    QStringList days_ = tradingDays(70);
};

void makeStore(const StoreFile& file) {
    QFile::remove(file.path);
    createStore(file.path, file.key, {});
}

}  // namespace

QStringList tradingDays(int count) {
    QStringList days;
    for (QDate day(2017, 3, 1); days.size() < count; day = day.addDays(1)) {
        if (day.dayOfWeek() <= Qt::Friday) {
            days << dateText(day);
        }
    }
    return days;
}

MarketHistory randomHistory(unsigned seed) {
    return RandomMarket(seed).make();
}

void writeHistory(const MarketHistory& history, const StoreFile& first, const StoreFile& second,
                  bool indexed) {
    makeStore(first);
    makeStore(second);
    Connection firstStore = first.open();
    Transaction firstRows(firstStore);
    writeFirst(firstStore, history, indexed);
    firstRows.commit();
    Connection secondStore = second.open();
    Transaction secondRows(secondStore);
    writeSecond(secondStore, history, indexed);
    secondRows.commit();
}

}  // namespace guanchao

#include "tools/market_scale/history_scale.h"

#include <QDate>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <random>
#include <set>
#include <vector>

#include "store/values.h"
#include "tools/history_builder/history_builder.h"
#include "tools/market_scale/market_scale.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QDate firstDay(2017, 4, 7);

class History {
public:
    explicit History(const HistoryScale& scale) : scale_(scale) {
        for (QDate day = firstDay; days_.size() < scale.days; day = day.addDays(1)) {
            if (day.dayOfWeek() <= Qt::Friday) {
                days_ << dateText(day);
            }
        }
        for (int at = 0; at < scale.stocks; ++at) {
            codes_ << marketCode(at);
        }
        pickMembers();
        pickHotDays();
    }

    void fillFirst(Connection& store, bool indexed) {
        store.execute(u"create table geguhq (dm text,"_s + dayColumns + u")"_s);
        store.execute(u"create table dzhzhuti (zhutiname text,dm text)"_s);
        for (const auto& [theme, stock] : members_) {
            store.execute(u"insert into dzhzhuti values('"_s + marketTheme(theme) + u"','"_s +
                          codes_[stock] + u"')"_s);
        }
        addTable(store, u"SH000001"_s, values(std::nullopt), indexed);
        for (int stock = 0; stock < scale_.stocks; ++stock) {
            store.execute(u"create table day ("_s + dayColumns + u")"_s);
            store.execute(u"insert into day values"_s + values(stock));
            store.execute(u"insert into geguhq select '"_s + codes_[stock] + u"',* from day"_s);
            store.execute(u"drop table day"_s);
        }
        if (indexed) {
            store.execute(u"create index geguhq_shijian on geguhq (date(shijian))"_s);
            store.execute(u"create index dzhzhuti_dm on dzhzhuti (dm,zhutiname)"_s);
            store.execute(u"create index dzhzhuti_zhutiname on dzhzhuti (zhutiname)"_s);
        }
    }

    void fillSecond(Connection& store, bool indexed) {
        store.execute(u"create table nishihq2 ("_s + dayColumns + u")"_s);
        for (int stock = 0; stock < scale_.stocks; ++stock) {
            addTable(store, codes_[stock], values(stock), indexed);
        }
    }

private:
    int pick(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }

    void pickMembers() {
        while (members_.size() < static_cast<size_t>(scale_.memberships)) {
            members_.insert({pick(scale_.themes), pick(scale_.stocks)});
        }
    }

    // Every other day four in ten stocks of a theme reach their limit.
    void pickHotDays() {
        std::vector<QList<int>> ofTheme(static_cast<size_t>(scale_.themes));
        for (const auto& [theme, stock] : members_) {
            ofTheme[static_cast<size_t>(theme)] << stock;
        }
        for (int day = 0; day < scale_.days; day += 2) {
            for (const int stock : ofTheme[static_cast<size_t>(pick(scale_.themes))]) {
                if (pick(10) < 4) {
                    atLimit_.insert({day, stock});
                }
            }
        }
    }

    // The rows of a stock, or of the index. A seed for each, so that both files hold the same.
    QString values(std::optional<int> stock) {
        random_.seed(20170407U + static_cast<unsigned>(stock.value_or(-1)));
        int close = 500 + pick(5000);
        QString text;
        for (int day = 0; day < scale_.days; ++day) {
            const int former = close;
            const bool limit = stock && atLimit_.contains({day, *stock});
            const int open = former + former * (pick(600) - 300) / 10000;
            close = limit ? static_cast<int>(std::lround(former * 1.1))
                          : former + former * (pick(800) - 400) / 10000;
            const int high = std::max(open, close) + (limit ? 0 : pick(20));
            const int low = limit && pick(3) == 0 ? high : std::min(open, close) - pick(20);
            text += (day == 0 ? QString() : u","_s) +
                    u"('%1',%2,%3,%4,%5,%6,%7,%8,%9)"_s.arg(days_[day])
                        .arg(open)
                        .arg(high)
                        .arg(low)
                        .arg(close)
                        .arg(former)
                        .arg(10000 + pick(90000000))
                        .arg(1000000 + pick(900000000))
                        .arg(1 + pick(3) * 0.125);
        }
        return text;
    }

    static void addTable(Connection& store, const QString& dm, const QString& rows, bool indexed) {
        store.execute(u"create table "_s + dm + u" ("_s + dayColumns + u")"_s);
        store.execute(u"insert into "_s + dm + u" values"_s + rows);
        if (indexed) {
            store.execute(u"create index "_s + dm + u"_shijian on "_s + dm + u" (date(shijian))"_s);
        }
    }

    HistoryScale scale_;
    QStringList days_;
    QStringList codes_;
    std::set<std::pair<int, int>> members_;  // theme and stock
    std::set<std::pair<int, int>> atLimit_;  // day and stock
    std::mt19937 random_{20170407};
};

void makeStore(const StoreFile& file, const std::function<void(Connection&)>& fill) {
    createStore(file.path, file.key, {});
    Connection store = file.open();
    Transaction transaction(store);
    fill(store);
    transaction.commit();
}

}  // namespace

void makeHistoryScale(const StoreFile& first, const StoreFile& second, const HistoryScale& scale,
                      bool indexed) {
    History history(scale);
    makeStore(first, [&](Connection& store) { history.fillFirst(store, indexed); });
    makeStore(second, [&](Connection& store) { history.fillSecond(store, indexed); });
}

}  // namespace guanchao

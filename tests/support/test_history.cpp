#include "tests/support/test_history.h"

#include <QDate>
#include <QFile>
#include <algorithm>
#include <cmath>
#include <random>

#include "base/values.h"
#include "tools/history_builder/history_builder.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

void execute(const StoreFile& store, const QStringList& statements) {
    Connection connection = store.open();
    Transaction transaction(connection);
    for (const QString& statement : statements) {
        connection.execute(statement);
    }
    transaction.commit();
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
    QList<DayRow> days;
    QStringList withTime;
    for (auto stock = history.stocks.begin(); stock != history.stocks.end(); ++stock) {
        for (const HistoryRow& row : stock.value()) {
            days << DayRow{stock.key(), QDate::fromString(row.day, Qt::ISODate),
                           row.kp,      row.zg,
                           row.zd,      row.sp,
                           row.qiansp,  double(row.chengjiaol),
                           0,           row.fuquanyz};
        }
        if (stock.key().endsWith(u'3')) {
            withTime << u"update "_s + stock.key() + u" set shijian=shijian||' 00:00:00'"_s;
        }
    }
    QList<ThemeMember> members;
    for (const auto& [theme, dm] : history.members) {
        members << ThemeMember{theme, dm};
    }
    for (const StoreFile& file : {first, second}) {
        QFile::remove(file.path);
    }
    addToHistory({first.path, second.path}, days, members);
    for (const StoreFile& file : {first, second}) {
        execute(file, withTime);
        if (!indexed) {
            dropIndexes(file.path);
        }
    }
}

}  // namespace guanchao

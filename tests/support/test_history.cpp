#include "tests/support/test_history.h"

#include <QDate>
#include <QFile>

#include "base/values.h"
#include "research/history_store.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QStringList tradingDays(int count) {
    QStringList days;
    for (QDate day(2017, 3, 1); days.size() < count; day = day.addDays(1)) {
        if (day.dayOfWeek() <= Qt::Friday) {
            days << dateText(day);
        }
    }
    return days;
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
        Connection connection = file.open();
        for (const QString& statement : withTime) {
            connection.execute(statement);
        }
        if (!indexed) {
            dropIndexes(file.path);
        }
    }
}

void writeQuietHistory(Stores& stores, const QString& folder) {
    stores.firstHistory = {folder + u"first"_s, {}};
    stores.secondHistory = {folder + u"second"_s, {}};
    MarketHistory history;
    history.stocks[u"SH000001"_s] = {{.day = u"2017-05-02"_s}, {.day = u"2017-05-03"_s}};
    writeHistory(history, stores.firstHistory, stores.secondHistory, true);
}

}  // namespace guanchao

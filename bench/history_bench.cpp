// The history databases from a file of days, 2,600 stocks of 500 days, beside bare inserts of the
// same days into the same tables with the same indexes and as much of the library's memory.
#include <QDate>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <random>

#include "bench/compare.h"
#include "research/day_insert.h"
#include "research/history_store.h"
#include "tools/history_builder/day_source.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int stocks = 2600;
constexpr int daysOfStock = 500;

QList<DayRow> manyDays() {
    std::mt19937 random(20261126);
    const auto pick = [&](int below) {
        return static_cast<int>(random() % static_cast<unsigned>(below));
    };
    QList<DayRow> rows;
    for (int stock = 0; stock < stocks; ++stock) {
        const QString dm = u"SH%1"_s.arg(600000 + stock);
        QDate day(2020, 1, 1);
        int close = 5000 + pick(5000);
        for (int at = 0; at < daysOfStock; ++at, day = day.addDays(1)) {
            const int former = close;
            close = std::clamp(former + pick(400) - 200, 100, 100000);
            rows << DayRow{.dm = dm,
                           .day = day,
                           .open = former,
                           .high = std::max(former, close) + pick(20),
                           .low = std::min(former, close) - pick(20),
                           .close = close,
                           .formerClose = former,
                           .volume = 10000.0 + pick(90000000),
                           .turnover = 1000000.0 + pick(900000000),
                           .factor = 1.125};
        }
    }
    return rows;
}

void writeCsv(const QString& path, const QList<DayRow>& rows) {
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write("dm,shijian,kp,zg,zd,sp,qiansp,chengjiaol,chengjiaoe,fuquanyz\n");
    const auto yuan = [](qint64 price) {
        return QByteArray::number(static_cast<double>(price) / 100, 'f', 2);
    };
    for (const DayRow& row : rows) {
        const QByteArrayList fields = {row.dm.toLatin1(),
                                       row.day.toString(Qt::ISODate).toLatin1(),
                                       yuan(row.open),
                                       yuan(row.high),
                                       yuan(row.low),
                                       yuan(row.close),
                                       yuan(row.formerClose),
                                       QByteArray::number(row.volume, 'f', 0),
                                       QByteArray::number(row.turnover, 'f', 0),
                                       QByteArray::number(row.factor)};
        file.write(fields.join(',') + '\n');
    }
}

// Both files anew, with a statement a table.
void insertBare(const QString& path, const QList<DayRow>& rows, bool ofMarket) {
    QFile::remove(path);
    createStore(path, {}, {});
    Connection store(path, {});
    store.execute(u"pragma cache_size=-65536"_s);
    store.execute(u"begin immediate"_s);
    std::optional<DayInsert> market;
    if (ofMarket) {
        store.execute(u"create table geguhq (dm text,"_s + dayColumnsOfTables + u")"_s);
        store.execute(u"create index geguhq_shijian on geguhq (date(shijian))"_s);
        store.execute(u"create index geguhq_dm on geguhq (dm,date(shijian))"_s);
        market.emplace(store, u"geguhq"_s, DayInsert::Code::with);
    }
    QString dm;
    std::optional<DayInsert> ofCode;
    for (const DayRow& row : rows) {
        if (row.dm != dm) {
            dm = row.dm;
            store.execute(u"create table "_s + dm + u" ("_s + dayColumnsOfTables + u")"_s);
            store.execute(u"create index "_s + dm + u"_shijian on "_s + dm + u" (date(shijian))"_s);
            ofCode.emplace(store, dm, DayInsert::Code::without);
        }
        ofCode->row(row);
        if (market) {
            market->row(row);
        }
    }
    store.execute(u"commit"_s);
}

void historyFromDays(benchmark::State& state) {
    const QTemporaryDir folder;
    const QString csv = folder.filePath(u"days.csv"_s);
    const HistoryFiles made{folder.filePath(u"first"_s), folder.filePath(u"second"_s)};
    const QString bare = folder.filePath(u"bare"_s);
    const QList<DayRow> rows = manyDays();
    writeCsv(csv, rows);
    compare(
        state,
        [&] {
            insertBare(bare, rows, true);
            insertBare(bare, rows, false);
        },
        [&] {
            QFile::remove(made.first);
            QFile::remove(made.second);
            DaySource source(csv, {}, QDate::currentDate());
            readIntoHistory(made, [&](const TakeDay& take) { source.read(take); }, {});
        });
}
BENCHMARK(historyFromDays)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

}  // namespace guanchao

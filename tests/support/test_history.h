// Small history databases: what they hold, one made up from a seed, and their files.
#pragma once

#include <QList>
#include <QMap>
#include <QPair>
#include <QStringList>

#include "store/stores.h"

namespace guanchao {

// A trading day of a stock, prices in hundredths of a yuan.
struct HistoryRow {
    QString day;  // yyyy-MM-dd
    int kp = 1000;
    int zg = 1000;
    int zd = 1000;
    int sp = 1000;
    int qiansp = 1000;
    int chengjiaol = 100;
    double fuquanyz = 1;
};

struct MarketHistory {
    QMap<QString, QList<HistoryRow>> stocks;  // by code, oldest day first; SH000001 among them
    QList<QPair<QString, QString>> members;   // theme and code
};

// That many weekdays from 2017-03-01 on.
QStringList tradingDays(int count);

// Stocks with gaps and beginnings of their own, in themes that now and then reach their limit.
MarketHistory randomHistory(unsigned seed);

// Makes both databases anew. Some stocks keep their days with a time.
void writeHistory(const MarketHistory& history, const StoreFile& first, const StoreFile& second,
                  bool indexed);

}  // namespace guanchao

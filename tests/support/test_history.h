// Small history databases: what they hold, and their files.
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

// Makes both databases anew. Some stocks keep their days with a time.
void writeHistory(const MarketHistory& history, const StoreFile& first, const StoreFile& second,
                  bool indexed);

// Both databases in the folder, with two days of the index, 2 and 3 May 2017, and nothing else.
void writeQuietHistory(Stores& stores, const QString& folder);

}  // namespace guanchao

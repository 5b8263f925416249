// Looks through a whole store for who looks for a fault: whether it opens, whether all its pages
// and indexes are sound, and how many rows its tables have. Only reads.
#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <stop_token>

#include "store/stores.h"

namespace guanchao {

struct ExaminedTable {
    QString name;
    qint64 rows = 0;
};

struct ExaminedStore {
    QString state;   // 完好, or what is wrong with it
    QString faults;  // of one that is damaged, in the library's words
    bool isSound = false;
    // Those that the program knows; others are only counted, since their names may tell something.
    QList<ExaminedTable> tables;
    int stockTables = 0;  // of the second history, one a stock
    int otherTables = 0;
};

// `show` is called every so often with the bytes that have been read. Raises Cancelled once the
// stop is requested, and nothing else.
ExaminedStore examineStore(const StoreFile& file, std::stop_token stop,
                           const std::function<void(qint64 bytes)>& show);

// SQLite 3.40.1，SQLCipher 4.5.3
QString storeLibraryWords();

}  // namespace guanchao

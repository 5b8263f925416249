// What the main store says of whom a history is kept: the codes of the code table and the themes.
#pragma once

#include <QList>
#include <QString>

#include "research/day_row.h"
#include "store/stores.h"

namespace guanchao {

struct HistoryCode {
    QString dm;  // with its exchange, in upper case
    QString jc;
};

struct HistoryLibrary {
    QList<HistoryCode> codes;  // each once, by code, without the leading index
    QList<ThemeMember> members;
};

// Raises StoreError.
HistoryLibrary readHistoryLibrary(const StoreFile& main);

}  // namespace guanchao

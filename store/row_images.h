// What stands in the rows that an edit touches, before it and after it, and how one takes the place
// of the other. Failed statements raise StoreError.
#pragma once

#include <QList>
#include <QString>

#include "store/stores.h"
#include "store/way.h"

namespace guanchao {

// The rows of a table that an edit may touch. The table has no column of whole numbers as its key.
struct RowScope {
    QString table;
    QString condition;  // where …
    // The one that changes, in rows that stay; empty: rows come and go as a whole.
    QString column = {};
    // Others write there at any time, and nobody misses it: what isn't as it was left stays.
    bool isScratch = false;
};

struct RowImage {
    qint64 rowid = 0;
    QString values;  // as SQL words: 'SH600519',null,7

    bool operator==(const RowImage&) const = default;
};
using RowImages = QList<RowImage>;

// In the order of the rows; none of a table that the store lacks.
RowImages readImages(Connection& connection, const QString& schema, const RowScope& scope);

// What one step of an edit has done to a scope.
struct EditedRows {
    StoreFile store;
    RowScope scope;
    RowImages before;
    RowImages after;
};

// Takes the edited rows back, or does them again, in one transaction over their stores, of which
// there are two at most. Rows come to their old places, or behind all others where those are taken.
// False if the rows aren't as they were left; nothing is written then.
bool exchangeRows(const QList<EditedRows>& edited, Way way);

// At the start of the program: takes away the file (-mj…) that the library leaves beside the first
// store where a commit over both was killed. Once both stores can be held, it is of no use to them.
void dropCommitLeftovers(const StoreFile& first, const StoreFile& beside);

}  // namespace guanchao

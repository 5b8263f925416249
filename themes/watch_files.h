// 导入 and 导出: a list of the watchlist from and into the block files of other programs. Raises
// OperationError for a file that can't be read or written, and StoreError, which leaves nothing.
#pragma once

#include <QString>
#include <QStringList>

#include "store/stores.h"
#include "themes/block_file.h"

namespace guanchao {

struct WatchImport {
    int added = 0;
    int present = 0;      // on the list before
    int repeated = 0;     // in what is brought itself
    QStringList unknown;  // to the code table, as they stand in the file
    QList<int> unread;    // lines
    QString encoding;     // as of TextFile

    // What became of the file, for the user.
    QString words(const QString& list) const;
};

// Adds what the code table knows behind the list, in the order of the file, and the notes of stocks
// that have none. For a worker.
WatchImport importBlock(const Stores& stores, const QString& path, const QString& list);

// The same of lines that were copied somewhere, such as the cells of a spreadsheet.
WatchImport importLines(const Stores& stores, const QStringList& lines, const QString& list);

// Under which a list is offered to be saved.
QString offeredBlockName(const QString& list);
QStringList blockFilters();

}  // namespace guanchao

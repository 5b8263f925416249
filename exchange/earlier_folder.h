// 接管文件夹: what the application folder of an earlier program, of another computer or of a copy
// holds, and whether its stores can take the place of those that are here.
#pragma once

#include "exchange/restore.h"
#include "exchange/store_check.h"

namespace guanchao {

struct EarlierFolder {
    QString path;            // with its separator
    QString refusal;         // why it can't be taken over and what to do; empty if it can
    QString age;             // which program has made it, by the tables that it has
    StoreContents contents;  // of the stores that are there

    // Those that can be read. Of a folder that isn't refused the main store is among them.
    CopyChoice choice() const;
};

// For a worker: the quick look. Refused are the own folder, one without a main store or with one
// that lacks a table, one for practice, one in which a program runs, and any while another program
// holds a store that is here.
EarlierFolder lookIntoFolder(const Stores& stores, const QString& own, const QString& path);

// What would take the place of what, in numbers of both, and which files of the user's come along,
// for a question. `present` are all stores.
QString takeOverQuestion(const EarlierFolder& folder, const StoreContents& present);

}  // namespace guanchao

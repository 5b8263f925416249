// Where each store lies and by which key it opens; both are fixed once the program has started.
#pragma once

#include <QString>

#include "store/connection.h"

namespace guanchao {

struct StoreFile {
    QString path;
    QString key;  // empty: a plain file

    // Raises StoreError if the file is missing, locked away or opened by the wrong key.
    Connection open() const { return Connection(path, key); }
};

struct Stores {
    StoreFile main;            // 主库, dzhzhuti.mzdat
    StoreFile firstHistory;    // hangqing2006-2017dan.db3, the user's or the folder's own
    StoreFile secondHistory;   // hangqing2006-2017.db3, beside it
    StoreFile article;         // 文章库, wenzhang.mzdat
    StoreFile pinyin;          // 拼音库, py.mzdat
    StoreFile heat;            // 采集库, caijiqi.mzdat
    StoreFile backupTemplate;  // 空白主题库, yzhutibackup.mzdat
    QString backupKey;         // of exported theme libraries and their template
};

// The application folder (yingyongmulu) of a program path: it ends in exactly one separator.
QString applicationFolder(const QString& programFolder);

// The stores of an application folder, with their keys built.
Stores storesIn(const QString& yingyongmulu);

}  // namespace guanchao

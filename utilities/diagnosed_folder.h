// What the diagnosis tells of this computer, of the application folder and of the stores.
#pragma once

#include <QStringList>
#include <functional>
#include <stop_token>

#include "store/stores.h"

namespace guanchao {

// Versions of the program, its libraries and the system.
QStringList systemLines();

// Of the program's own files with their sizes and times; others are only counted, since their
// names are the user's.
QStringList folderLines(const QString& path);

struct DiagnosedStore {
    QString name;  // 主库
    StoreFile file;
    bool isHistory = false;

    qint64 bytes() const;
};
QList<DiagnosedStore> diagnosedStores(const Stores& stores);

// Whether the store is sound, and the rows of its tables: store/store_examination.
QStringList storeLines(const DiagnosedStore& store, const std::stop_token& stop,
                       const std::function<void(qint64 bytes)>& show);
// The first of them, with that state.
QString storeLine(const DiagnosedStore& store, const QString& state);

}  // namespace guanchao

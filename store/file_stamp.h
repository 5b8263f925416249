// When a store's file was written last, as far as its folder tells.
#pragma once

#include <QDateTime>
#include <QString>

#include "store/stores.h"

namespace guanchao {

struct FileStamp {
    QString path;
    qint64 size = 0;
    QDateTime written;

    bool operator==(const FileStamp&) const = default;
};

FileStamp stampOf(const StoreFile& file);

}  // namespace guanchao

// The files of a backup. A target is replaced only by a complete one, which is written beside it; a
// failure raises StoreError or OperationError and leaves an older target as it was.
#pragma once

#include <QString>
#include <functional>

#include "store/stores.h"

namespace guanchao {

// `write` is given the path beside the target, at which no file is, and leaves a whole one there.
void replaceFile(const QString& target, const std::function<void(const QString& path)>& write);

// Where no file is yet; the copy may be written to.
void copyFile(const QString& source, const QString& target);

void copyOver(const QString& source, const QString& target);

// Copies a store file while its lock is held, so that no other process is in the middle of a write.
void copyStore(const StoreFile& source, const QString& target);

}  // namespace guanchao

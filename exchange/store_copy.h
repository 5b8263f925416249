// The files of a backup. A failure raises StoreError or OperationError.
#pragma once

#include <QString>

#include "store/stores.h"

namespace guanchao {

// Where no file is yet; the copy may be written to.
void copyFile(const QString& source, const QString& target);

// Copies a store over an older copy while its lock is held, so that no other process is in the
// middle of a write.
void copyStore(const StoreFile& source, const QString& target);

}  // namespace guanchao

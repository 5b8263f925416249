// Copies of files for the backup. The target is replaced only by a complete copy; a failure raises
// StoreError or OperationError and leaves an older target as it was.
#pragma once

#include <QString>

#include "store/stores.h"

namespace guanchao {

void copyOver(const QString& source, const QString& target);

// Copies a store file while its lock is held, so that no other process is in the middle of a write.
void copyStore(const StoreFile& source, const QString& target);

}  // namespace guanchao

// The files of a backup. A failure raises StoreError or OperationError.
#pragma once

#include <QString>
#include <functional>

#include "store/stores.h"

namespace guanchao {

// A file that is no store in use, to where no file is yet; the copy may be written to.
void copyFile(const QString& source, const QString& target);

// Copies a store over an older copy, block by block, while its lock is held, so that nobody is in
// the middle of a write. `blockDone` may end it by raising.
void copyStore(const StoreFile& source, const QString& target,
               const std::function<void()>& blockDone);

int blocksOf(const StoreFile& store);

}  // namespace guanchao
